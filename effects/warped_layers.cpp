#include "effects/warped_layers.h"

namespace {

// Replaces the layer by its transformed picture; 0 if either is missing.
int Transform(const WarpedLayers& layers, DibOwner* layer) {
  if (*layer == nullptr) return 0;
  layer->reset(layers.transform(layer->get(), layers.parameters));
  return *layer != nullptr ? 1 : 0;
}

int CompositeShadow(const Controls* dialog, const TextFrame& frame, const WarpedLayers& layers, DibHead* picture) {
  int x = layers.originX + frame.place.shadowX;
  int y = layers.originY + frame.place.shadowY;
  DibOwner fill(RenderFillOf(dialog, layers.ids.shadowFill, frame.size.width, frame.size.height));
  DibOwner mask(TextFrameMask(frame, x, y, frame.look.shadowLevel));
  bool fillKept = layers.keepsSolid != 0 && FillIsSolid(dialog, layers.ids.shadowFill) != 0;
  if ((!fillKept && Transform(layers, &fill) == 0) || Transform(layers, &mask) == 0) return 0;
  if (SoftenShadowMask(&mask, frame.look.softness) == 0) return 0;
  DibLock fillLock(fill.get());
  DibLock maskLock(mask.get());
  if (fillLock.head == nullptr || maskLock.head == nullptr) return 0;
  FillWalk walk{0, 0, 0, 0, layers.layerLevel};
  if (layers.shadowFromPlace != 0) walk.firstX = x, walk.firstY = y;
  if (layers.shadowFillFollows != 0) walk.fillX = x, walk.fillY = y;
  CompositeFillScaled(picture, fillLock.head, maskLock.head, walk);
  return 1;
}

int CompositeText(const Controls* dialog, const TextFrame& frame, const WarpedLayers& layers, DibHead* picture) {
  int x = layers.originX + frame.place.textX;
  int y = layers.originY + frame.place.textY;
  DibOwner fill(RenderFillOf(dialog, layers.ids.fill, frame.size.width, frame.size.height));
  // A solid fill of the text skips the transform.
  if (FillIsSolid(dialog, layers.ids.fill) == 0 && Transform(layers, &fill) == 0) return 0;
  DibOwner mask(TextFrameMask(frame, x, y, frame.look.fillLevel));
  if (Transform(layers, &mask) == 0) return 0;
  DibLock fillLock(fill.get());
  DibLock maskLock(mask.get());
  if (fillLock.head == nullptr || maskLock.head == nullptr) return 0;
  CompositeFillScaled(picture, fillLock.head, maskLock.head, {0, 0, 0, 0, layers.layerLevel});
  return 1;
}

int CompositeOutlineOf(const TextFrame& frame, const WarpedLayers& layers, DibHead* picture) {
  int x = layers.originX + frame.place.textX;
  int y = layers.originY + frame.place.textY;
  DibOwner mask(TextOutlineMask(frame.style, x, y, frame.text, frame.size.width, frame.size.height, frame.advances));
  if (Transform(layers, &mask) == 0) return 0;
  DibLock maskLock(mask.get());
  if (maskLock.head == nullptr) return 0;
  CompositeOutlineFaded(picture, frame.look.outlineColour, maskLock.head, layers.outlineLevel);
  return 1;
}

}  // namespace

DibHandle WarpedLayersCompose(const Controls* dialog, const TextFrame& frame, const WarpedLayers& layers) {
  DibOwner picture(RenderFillOf(dialog, layers.ids.background, frame.size.width, frame.size.height));
  DibLock pictureLock(picture.get());
  if (pictureLock.head == nullptr) return nullptr;
  if (frame.look.shadowOn != 0 && CompositeShadow(dialog, frame, layers, pictureLock.head) == 0) return nullptr;
  if (CompositeText(dialog, frame, layers, pictureLock.head) == 0) return nullptr;
  if (frame.look.outlineOn != 0 && CompositeOutlineOf(frame, layers, pictureLock.head) == 0) return nullptr;
  return picture.release();
}
