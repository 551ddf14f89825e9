#include "effects/plasma_arc.h"


#include "effects/text_frame.h"
#include "plugin/host_call.h"
#include "plugin/settings.h"
#include "raster/crt_random.h"
#include "raster/resample.h"

namespace {

constexpr PanelLookIds kArcLook = {193, 214, 196, 202, 204, 206, 208, 212};
constexpr int kGroundId = 194;
constexpr int kBackgroundId = 198;
constexpr int kShadowFillId = 200;
constexpr int kFramesId = 210;
constexpr int kArcColourId = 215;
constexpr int kDisturbanceId = 217;
constexpr int kEnergyId = 219;
constexpr int kComplexityId = 221;
constexpr int kSeedId = 223;
constexpr int kAfterimageId = 225;
constexpr int kFullStrength = 255;

double ArcTurn() { return ArcAngle / 10.0; }

struct Polyline {
  const ArcPoint* points;
  int count;
};

// The arc's mask: energy passes over the whole polyline, wide and dim to
// narrow and white, so that a stroke's profile has energy steps.
DibHandle ArcMask(int width, int height, Polyline line, int energy) {
  GdiCanvas* canvas = GdiCanvasOpen(width, height);
  if (canvas == nullptr) return nullptr;
  int drawn = 1;
  for (int k = 1; k <= energy && drawn != 0; ++k) {
    auto grey = static_cast<std::uint32_t>(255 * k / energy);
    for (int i = 1; i < line.count && drawn != 0; ++i)
      drawn = GdiCanvasLine(canvas, line.points[i - 1].x, line.points[i - 1].y, line.points[i].x, line.points[i].y,
                            2 * energy - 2 * (k - 1), grey << 16 | grey << 8 | grey);
  }
  DibOwner mask(GdiCanvasClose(canvas));
  return drawn != 0 ? mask.release() : nullptr;
}

// The arc blended into the picture in the arc colour through its mask, each
// mask value first scaled by strength out of 255. 0 when memory runs out.
int PaintPolyline(DibHead* picture, Polyline line, int energy, std::uint32_t colour, int strength) {
  DibOwner mask(ArcMask(picture->biWidth, picture->biHeight, line, energy));
  DibLock maskLock(mask.get());
  if (maskLock.head == nullptr) return 0;
  CompositeOutlineFaded(picture, colour, maskLock.head, strength);
  return 1;
}

void ReplacePoints(ArcPoint** slot, std::int32_t* count, ArcPoint* points, int pointCount) {
  delete[] *slot;
  *slot = points;
  *count = points != nullptr ? pointCount : 0;
}

void FreeArcExtra(ArcExtra* extra) {
  if (extra->ready == 0) return;
  extra->ground = MemFree(extra->ground);
  ReplacePoints(&extra->history.older, &extra->history.olderCount, nullptr, 0);
  ReplacePoints(&extra->history.newer, &extra->history.newerCount, nullptr, 0);
}

// Strikes an arc across the whole frame with the given steps and keeps its
// polyline in slot.
int StrikeIntoHistory(int width, int height, int complexity, ArcPoint** slot, std::int32_t* count) {
  int minStep = complexity + 16;
  int maxStep = minStep + minStep * 2 / 3;
  ArcTracer tracer;
  if (StrikeArc(&tracer, 0, height / 2, width, height / 2, DibRect{0, 0, width, height}, minStep, maxStep,
                ArcTurn()) == 0)
    return 0;
  ArcPoint* points = nullptr;
  int pointCount = ArcPoints(&points, &tracer);
  ReplacePoints(slot, count, points, pointCount);
  FreeArcTracer(&tracer);
  return 1;
}

// The sizing call, which seeds the stream and strikes a first arc, then two
// arcs with longer steps as the history the first frame shows.
int PrepareHistory(EffectContext* context, ArcExtra* extra) {
  DibHandle sizing = PlasmaArcGenerate(context);
  if (sizing == nullptr) return 0;
  int width = 0;
  int height = 0;
  DibSizeOf(sizing, &width, &height);
  MemFree(sizing);
  int complexity = ReadControlInt(context->dialog, kComplexityId);
  ArcHistory& history = extra->history;
  return StrikeIntoHistory(width, height, complexity, &history.newer, &history.newerCount) &&
         StrikeIntoHistory(width, height, complexity, &history.older, &history.olderCount);
}

int MakeGround(const Controls* dialog, ArcExtra* extra) {
  DibOwner fill(RenderFillOf(dialog, kGroundId, extra->width, extra->height));
  if (fill == nullptr) return 0;
  extra->ground = DibResize(fill.get(), 200, 200);
  return extra->ground != nullptr;
}

int BuildFrames(EffectContext* context, ArcExtra* extra) {
  const Controls* dialog = context->dialog;
  int disturbance = ReadControlInt(dialog, kDisturbanceId);
  BuildTiming timing = ReadBuildTiming(dialog);
  int frames = ReadControlInt(dialog, kFramesId);
  extra->frames = frames;
  context->flags |= kEffectFlagStill;
  if (PrepareHistory(context, extra) == 0) return 0;
  if (timing.rolling == 0) return AppendGeneratedFrame(context, PlasmaArcGenerate, timing.delay);
  context->flags &= ~kEffectFlagStill;
  for (int i = 0; i < frames; ++i) {
    extra->phase = i;
    DibHandle image = PlasmaArcGenerate(context);
    if (image == nullptr) return 0;
    // No disturbance is no jitter.
    int draw = CrtRand();
    int jitter = disturbance > 0 ? draw % disturbance : 0;
    if (AppendEffectFrame(context, image, timing.delay + static_cast<std::uint32_t>(jitter)) == 0) return 0;
    HostProgress(context->host, i, frames);
  }
  return 1;
}

}  // namespace

DibHandle RenderArcFrame(const Controls* dialog, ArcExtra* extra) {
  int energy = ReadControlInt(dialog, kEnergyId);
  int complexity = ReadControlInt(dialog, kComplexityId);
  auto colour = static_cast<std::uint32_t>(ReadControlNumber(dialog, kArcColourId));
  int afterimage = ControlChecked(dialog, kAfterimageId);
  const int w = extra->width;
  const int h = extra->height;

  DibOwner picture(DibNew(w + 2 * energy, h, nullptr, 24));
  DibLock pictureLock(picture.get());
  DibLock groundLock(extra->ground);
  if (pictureLock.head == nullptr || groundLock.head == nullptr) return nullptr;
  DibRegionCopy(pictureLock.head, 0, 0, groundLock.head, 0, 0, groundLock.head->biWidth, groundLock.head->biHeight);

  int minStep = complexity + 12;
  ArcTracer tracer;
  if (StrikeArc(&tracer, energy, h / 2, w + energy, h / 2, DibRect{energy, 0, w + energy, h}, minStep,
                minStep + minStep * 2 / 3, ArcTurn()) == 0)
    return nullptr;
  ArcHistory& history = extra->history;
  int painted = 1;
  if (afterimage != 0) {
    if (history.older != nullptr)
      painted = PaintPolyline(pictureLock.head, {history.older, history.olderCount}, energy, colour,
                              static_cast<int>(ArcAfterAfterImageIntensity));
    if (history.newer != nullptr && painted != 0)
      painted = PaintPolyline(pictureLock.head, {history.newer, history.newerCount}, energy, colour,
                              static_cast<int>(ArcAfterImageIntensity));
  }
  ArcPoint* drawn = nullptr;
  int drawnCount = ArcDrawnPoints(&drawn, &tracer);
  if (painted != 0) painted = PaintPolyline(pictureLock.head, {drawn, drawnCount}, energy, colour, kFullStrength);
  delete[] drawn;

  ReplacePoints(&history.older, &history.olderCount, history.newer, history.newerCount);
  history.newer = nullptr;
  ArcPoint* kept = nullptr;
  int keptCount = ArcPoints(&kept, &tracer);
  ReplacePoints(&history.newer, &history.newerCount, kept, keptCount);
  FreeArcTracer(&tracer);
  return painted != 0 ? picture.release() : nullptr;
}

DibHandle PlasmaArcGenerate(EffectContext* context) {
  const Controls* dialog = context->dialog;
  auto* extra = static_cast<ArcExtra*>(context->extra);
  TextFrame frame;
  if (TextFrameMeasure(dialog, kArcLook, &frame) == 0) return nullptr;
  if (extra->ready == 0) {
    CrtSrand(static_cast<unsigned>(ReadControlInt(dialog, kSeedId)));
    extra->width = frame.textWidth + 2 * frame.pad;
    extra->height = frame.textHeight + 2 * frame.pad;
    extra->ready = 1;
    if (MakeGround(dialog, extra) == 0) return nullptr;
  }
  DibOwner picture(RenderFillOf(dialog, kBackgroundId, frame.size.width, frame.size.height));
  DibLock pictureLock(picture.get());
  if (pictureLock.head == nullptr) return nullptr;
  int baseX = extra->textOffsetX + frame.pad;
  int baseY = extra->textOffsetY + frame.pad;
  int textX = baseX + frame.place.textX;
  int textY = baseY + frame.place.textY;
  // The arc is struck before the shadow is laid, as the fill is rendered first.
  DibOwner arc(RenderArcFrame(dialog, extra));
  DibLock arcLock(arc.get());
  if (arcLock.head == nullptr) return nullptr;
  if (frame.look.shadowOn != 0 &&
      TextFrameCompositeShadow(dialog, frame, pictureLock.head, kShadowFillId, baseX + frame.place.shadowX,
                               baseY + frame.place.shadowY, kShadowFillFixed) == 0)
    return nullptr;
  if (TextFrameCompositeText(frame, pictureLock.head, arcLock.head, textX, textY) == 0) return nullptr;
  if (frame.look.outlineOn != 0 && TextFrameCompositeOutlineLeft(frame, pictureLock.head, textX, textY) == 0)
    return nullptr;
  return picture.release();
}

int PlasmaArcPreview(EffectContext* context) {
  ArcExtra extra{};
  extra.frames = 1;
  context->extra = &extra;
  context->flags |= kEffectFlagPreview;
  int prepared = PrepareHistory(context, &extra);
  if (prepared != 0) context->previewBitmap = PlasmaArcGenerate(context);
  FreeArcExtra(&extra);
  return prepared;
}

int PlasmaArcBuild(EffectContext* context) {
  ArcExtra extra{};
  context->extra = &extra;
  int result = BuildFrames(context, &extra);
  FreeArcExtra(&extra);
  return result;
}
