#include "effects/in_out_build.h"

#include "plugin/host_call.h"

int InOutBuild(EffectContext* context, EffectGenerator generate, InOutPhase setPhase, int framesId) {
  const BuildTiming timing = ReadBuildTiming(context->dialog);
  const std::uint32_t delay = timing.delay;
  const std::uint32_t pause = timing.pause;
  const int half = ReadControlInt(context->dialog, framesId) / 2;
  if (timing.rolling == 0) {
    context->flags |= kEffectFlagStill;
    return AppendGeneratedFrame(context, generate, delay);
  }

  const int total = 2 * half + 1;
  for (int position = -half; position <= half; ++position) {
    setPhase(context->extra, position, half);
    if (AppendGeneratedFrame(context, generate, position == 0 ? delay + pause : delay) == 0) return 0;
    HostProgress(context->host, context->frames->count - 1, total);
  }
  return FramePatchDelay(context->frames, delay + pause);
}
