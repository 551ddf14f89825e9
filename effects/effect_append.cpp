#include "effects/effect.h"

int EffectAppendFrame(EffectContext* context, DibHandle image, std::uint32_t delay) {
  FrameRecord record{};
  record.image = image;
  record.delay = delay;
  record.transparentIndex = -1;
  if (FrameListAppend(context->frames, &record) == 1) return 1;
  MemFree(image);
  return 0;
}
