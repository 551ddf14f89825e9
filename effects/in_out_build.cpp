#include "effects/in_out_build.h"

#include "plugin/host_call.h"

int InOutBuild(EffectContext* context, EffectGenerator generate, InOutPhase setPhase, int frames,
               std::uint32_t delay, std::uint32_t pause) {
  const int half = frames / 2;
  const int total = 2 * half + 1;
  for (int position = -half; position <= half; ++position) {
    setPhase(context->extra, position, half);
    if (AppendGeneratedFrame(context, generate, position == 0 ? delay + pause : delay) == 0) return 0;
    HostProgress(context->host, context->frames->count - 1, total);
  }
  return FramePatchDelay(context->frames, delay + pause);
}
