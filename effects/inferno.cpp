#include "effects/inferno.h"

#include <new>

#include "effects/fire.h"
#include "effects/fire_still.h"
#include "effects/text_frame.h"
#include "plugin/host_call.h"
#include "raster/resample.h"

namespace {

// The panel has no fill opacity: the letters are drawn at full strength.
constexpr PanelLookIds kInfernoLook = {300, 317, 0, 305, 307, 309, 311, 315};
constexpr int kBackgroundId = 301;
constexpr int kShadowFillId = 303;
constexpr int kFramesId = 313;
constexpr int kSmokeId = 318;
constexpr int kFlamesId = 320;
constexpr int kHeatId = 322;

struct FireColours {
  std::uint32_t black, red, yellow;
};

FireColours ReadFireColours(const Controls* dialog) {
  return {static_cast<std::uint32_t>(ReadControlNumber(dialog, kSmokeId)),
          static_cast<std::uint32_t>(ReadControlNumber(dialog, kFlamesId)),
          static_cast<std::uint32_t>(ReadControlNumber(dialog, kHeatId))};
}

// The canvas's height from a call with no fire; 0 if there is no frame.
int CanvasSize(EffectContext* context, int* width, int* height) {
  DibHandle sizing = ComposeInfernoFrame(context);
  if (sizing == nullptr) return 0;
  int sized = DibSizeOf(sizing, width, height);
  MemFree(sizing);
  return sized;
}

// A fire picture brought to the canvas: resampled for a fire simulated
// larger, else a plain copy. Null for a null picture.
DibHandle FireForCanvas(DibHandle picture, const FireGeometry& geometry) {
  if (picture == nullptr) return nullptr;
  return geometry.scaled != 0 ? DibResize(picture, geometry.percent, geometry.percent) : DibClone(picture);
}

// The still in the user's colours: its palette overwritten with their ramp.
void RecolourStill(DibHandle still, const FireColours& colours) {
  DibLock lock(still);
  if (lock.head == nullptr || lock.head->biBitCount > 8) return;
  std::uint8_t ramp[kFireRampSize][3];
  BuildRamp(ramp, colours.black, colours.red, colours.yellow);
  auto* table = reinterpret_cast<std::uint8_t*>(lock.head) + kDibHeadSize;
  for (int i = 0; i < 1 << lock.head->biBitCount; ++i) {
    table[i * 4] = ramp[i][2];
    table[i * 4 + 1] = ramp[i][1];
    table[i * 4 + 2] = ramp[i][0];
  }
}

int AppendFireFrame(EffectContext* context, InfernoState* state, DibHandle recorded, const FireGeometry& geometry,
                    std::uint32_t delay) {
  state->fireFrame = FireForCanvas(recorded, geometry);
  if (state->fireFrame == nullptr) return 0;
  int appended = AppendGeneratedFrame(context, ComposeInfernoFrame, delay);
  state->fireFrame = MemFree(state->fireFrame);
  return appended;
}

int BuildFrames(EffectContext* context, InfernoState* state) {
  const Controls* dialog = context->dialog;
  int frames = ReadControlInt(dialog, kFramesId);
  FireColours colours = ReadFireColours(dialog);
  BuildTiming timing = ReadBuildTiming(dialog);

  context->flags |= kEffectFlagStill;
  int width = 0;
  int height = 0;
  if (CanvasSize(context, &width, &height) == 0) return 0;
  FireGeometry geometry = FireGeometryFor(width, height);
  if (InitFire(state, geometry.width, geometry.height, colours.black, colours.red, colours.yellow) == 0) return 0;

  int count = frames < state->period ? frames : state->period;
  if (timing.rolling == 0) return AppendFireFrame(context, state, state->frames[0], geometry, timing.delay);
  context->flags &= ~kEffectFlagStill;
  int* plan = new (std::nothrow) int[count];
  if (plan == nullptr) return 0;
  FireFramePlan(count, state->period, plan);
  int result = 1;
  for (int i = 0; i < count && result != 0; ++i) {
    result = AppendFireFrame(context, state, state->frames[plan[i]], geometry, timing.delay);
    if (result != 0) HostProgress(context->host, i, count);
  }
  delete[] plan;
  return result;
}

}  // namespace

DibHandle ComposeInfernoFrame(EffectContext* context) {
  const Controls* dialog = context->dialog;
  const auto* state = static_cast<const InfernoState*>(context->extra);
  TextFrame frame;
  if (TextFrameMeasure(dialog, kInfernoLook, &frame) == 0) return nullptr;
  DibOwner picture(RenderFillOf(dialog, kBackgroundId, frame.size.width, frame.size.height));
  DibLock pictureLock(picture.get());
  if (pictureLock.head == nullptr) return nullptr;
  if (TextFrameCompositeRestingShadow(dialog, frame, pictureLock.head, kShadowFillId, kShadowFillFixed) == 0)
    return nullptr;
  int textX = frame.pad + frame.place.textX;
  int textY = frame.pad + frame.place.textY;
  // The fire stands still, its left top at the canvas's corner; with no
  // fire the letters stay unpainted.
  if (state->fireFrame != nullptr) {
    DibLock fireLock(state->fireFrame);
    if (fireLock.head == nullptr || TextFrameCompositeText(frame, pictureLock.head, fireLock.head, textX, textY) == 0)
      return nullptr;
  }
  if (frame.look.outlineOn != 0 && TextFrameCompositeOutlineLeft(frame, pictureLock.head, textX, textY) == 0)
    return nullptr;
  return picture.release();
}

int InfernoPreview(EffectContext* context) {
  FireColours colours = ReadFireColours(context->dialog);
  InfernoState state{};
  context->extra = &state;
  int width = 0;
  int height = 0;
  if (CanvasSize(context, &width, &height) == 0) return 0;
  FireGeometry geometry = FireGeometryFor(width, height);
  DibOwner still(FireStillLoad());
  if (still == nullptr) return 0;
  RecolourStill(still.get(), colours);
  DibOwner trueColour(DibToTrueColour(still.get()));
  state.fireFrame = FireForCanvas(trueColour.get(), geometry);
  context->flags |= kEffectFlagPreview;
  context->previewBitmap = ComposeInfernoFrame(context);
  state.fireFrame = MemFree(state.fireFrame);
  return 1;
}

int InfernoBuild(EffectContext* context) {
  InfernoState state{};
  context->extra = &state;
  int result = BuildFrames(context, &state);
  MemFree(state.fireFrame);
  FreeFire(&state);
  return result;
}
