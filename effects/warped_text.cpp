#include "effects/warped_text.h"

namespace {

// Replaces the picture by its warp; a null picture stays null.
void Warp(DibOwner& picture, const WarpSpec& spec) {
  if (picture != nullptr) picture.reset(spec.warp(picture.get(), spec.table, spec.amplitude, spec.count));
}

}  // namespace

int CompositeWarpedText(const Controls* dialog, const TextFrame& frame, DibHead* picture, int fillId, int x, int y,
                        int level, const WarpSpec& spec) {
  DibOwner fill(RenderFillOf(dialog, fillId, frame.size.width, frame.size.height));
  if (FillIsSolid(dialog, fillId) == 0) Warp(fill, spec);
  DibOwner mask(TextFrameMask(frame, x, y, level));
  Warp(mask, spec);
  DibLock fillLock(fill.get());
  DibLock maskLock(mask.get());
  if (fillLock.head == nullptr || maskLock.head == nullptr) return 0;
  CompositeFill(picture, fillLock.head, maskLock.head);
  return 1;
}

int CompositeWarpedOutline(const TextFrame& frame, DibHead* picture, int x, int y, int fade, const WarpSpec& spec) {
  DibOwner mask(
      TextOutlineMask(frame.style, x, y, frame.text, frame.size.width, frame.size.height, frame.advances));
  Warp(mask, spec);
  DibLock maskLock(mask.get());
  if (maskLock.head == nullptr) return 0;
  CompositeOutlineFaded(picture, frame.look.outlineColour, maskLock.head, fade);
  return 1;
}

DibHandle DrawWarpedText(const Controls* dialog, const TextFrame& frame, const WarpedTextPlan& plan) {
  DibOwner picture(RenderFillOf(dialog, plan.backgroundId, frame.size.width, frame.size.height));
  DibLock pictureLock(picture.get());
  if (pictureLock.head == nullptr || plan.spec.table == nullptr) return nullptr;
  if (CompositeWarpedText(dialog, frame, pictureLock.head, plan.fillId, plan.x, plan.y, plan.level, plan.spec) == 0)
    return nullptr;
  if (frame.look.outlineOn != 0 &&
      CompositeWarpedOutline(frame, pictureLock.head, plan.x, plan.y, plan.level, plan.spec) == 0)
    return nullptr;
  return picture.release();
}
