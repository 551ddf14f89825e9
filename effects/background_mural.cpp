#include "effects/background_mural.h"

#include <algorithm>
#include <memory>
#include <new>

#include "effects/text_frame.h"
#include "fills/matrix_tile.h"
#include "plugin/host_call.h"

namespace {

// No fill opacity: the text is drawn whole.
constexpr PanelLookIds kMuralLook = {356, 375, 0, 363, 365, 367, 369, 373};
constexpr int kTileId = 357;
constexpr int kFillId = 359;
constexpr int kShadowFillId = 361;
constexpr int kFramesId = 371;
constexpr int kScrollId = 376;

// The tile button's record, or a zero one, which draws the built-in tile.
MatrixRecord TileRecordOf(const Controls* dialog) {
  MatrixRecord record{};
  MemHandle block = ControlData(dialog, kTileId);
  if (const auto* held = static_cast<const MatrixRecord*>(block != nullptr ? MemLock(block) : nullptr)) {
    record = *held;
    MemUnlock(block);
  }
  return record;
}

DibHandle WallFor(const Controls* dialog, const MuralExtra& extra, const FrameSize& size) {
  MatrixRecord record = TileRecordOf(dialog);
  record.rectangle = {0, 0, extra.wallWidth != 0 ? extra.wallWidth : size.width,
                      extra.wallHeight != 0 ? extra.wallHeight : size.height};
  DibOwner wall(MatrixTileRender(&record));
  if (wall == nullptr) return nullptr;
  return MuralTurn(wall.get(), ReadControlNumber(dialog, kScrollId), extra.offsetX, extra.offsetY);
}

// Shadow, text and outline on the turned wall, which may be larger than
// the frame: the masks are of the frame's size.
int CompositeText(const Controls* dialog, const TextFrame& frame, DibHead* wall) {
  DibOwner fill(RenderFillOf(dialog, kFillId, frame.size.width, frame.size.height));
  DibLock fillLock(fill.get());
  if (fillLock.head == nullptr) return 0;
  if (TextFrameCompositeRestingShadow(dialog, frame, wall, kShadowFillId, kShadowFillFixed) == 0) return 0;
  int textX = frame.pad + frame.place.textX;
  int textY = frame.pad + frame.place.textY;
  if (TextFrameCompositeText(frame, wall, fillLock.head, textX, textY) == 0) return 0;
  return frame.look.outlineOn == 0 || TextFrameCompositeOutlineLeft(frame, wall, textX, textY) != 0;
}

int TileSize(const Controls* dialog, int* width, int* height) {
  MatrixRecord record = TileRecordOf(dialog);
  return record.tile != nullptr && DibSizeOf(record.tile, width, height) != 0 && *width > 0 && *height > 0;
}

}  // namespace

int MuralWallSize(int size, int tileSize) { return size % tileSize != 0 ? size + tileSize - size % tileSize : size; }

DibHandle MuralTurn(DibHandle wall, int direction, int offsetX, int offsetY) {
  if (direction == 1) return DibRotateRight(wall, offsetX);
  if (direction == 2) return DibRotateLeft(wall, offsetX);
  DibLock source(wall);
  if (source.head == nullptr) return nullptr;
  int width = source.head->biWidth;
  int height = source.head->biHeight;
  if (direction != 0 && direction != 3) return DibClone(wall);
  DibOwner turned(DibNewLike(source.head, width, height));
  DibLock target(turned.get());
  if (target.head == nullptr) return nullptr;
  int y = offsetY;
  if (direction == 0) {
    DibRegionCopy(target.head, 0, 0, source.head, 0, height - y, width, y);
    DibRegionCopy(target.head, 0, y, source.head, 0, 0, width, height - y);
  } else {
    DibRegionCopy(target.head, 0, 0, source.head, 0, y, width, height - y);
    DibRegionCopy(target.head, 0, height - y, source.head, 0, 0, width, y);
  }
  return turned.release();
}

int MuralScrollPlan(int direction, int wallWidth, int wallHeight, int frames, MuralStep* steps) {
  bool vertical = direction == 0 || direction == 3;
  int span = vertical ? wallHeight : wallWidth;
  int count = std::min(frames, span);
  double step = static_cast<double>(span) / count;
  double t = vertical ? span : 0;
  for (int i = 0; i < count; ++i) {
    t = vertical ? t - step : t + step;
    steps[i] = vertical ? MuralStep{0, static_cast<int>(t)} : MuralStep{static_cast<int>(t), 0};
  }
  return count;
}

DibHandle MuralGenerate(EffectContext* context) {
  const Controls* dialog = context->dialog;
  const auto* extra = static_cast<const MuralExtra*>(context->extra);
  TextFrame frame;
  if (TextFrameMeasure(dialog, kMuralLook, &frame) == 0) return nullptr;
  DibOwner wall(WallFor(dialog, *extra, frame.size));
  DibLock wallLock(wall.get());
  if (wallLock.head == nullptr || CompositeText(dialog, frame, wallLock.head) == 0) return nullptr;
  DibHandle crop = DibCrop(wall.get(), {0, 0, frame.size.width, frame.size.height});
  return crop != nullptr ? crop : wall.release();
}

int MuralPreview(EffectContext* context) {
  MuralExtra extra{};
  return RunEffectPreview(context, &extra, MuralGenerate);
}

int MuralBuild(EffectContext* context) {
  const Controls* dialog = context->dialog;
  BuildTiming timing = ReadBuildTiming(dialog);
  int rolling = timing.rolling;
  std::uint32_t delay = timing.delay;
  int frames = ReadControlInt(dialog, kFramesId);
  int direction = ReadControlNumber(dialog, kScrollId);

  MuralExtra extra{};
  context->extra = &extra;
  context->flags |= kEffectFlagStill;
  DibHandle first = MuralGenerate(context);
  if (first == nullptr) return 0;
  if (rolling == 0) return AppendEffectFrame(context, first, delay);
  int width = 0, height = 0, tileWidth = 0, tileHeight = 0;
  int sized = DibSizeOf(first, &width, &height);
  MemFree(first);
  if (sized == 0 || TileSize(dialog, &tileWidth, &tileHeight) == 0) return 0;

  extra.wallWidth = MuralWallSize(width, tileWidth);
  extra.wallHeight = MuralWallSize(height, tileHeight);
  std::unique_ptr<MuralStep[]> steps(new (std::nothrow) MuralStep[frames]);
  if (steps == nullptr) return 0;
  int count = MuralScrollPlan(direction, extra.wallWidth, extra.wallHeight, frames, steps.get());
  for (int i = 0; i < count; ++i) {
    extra.offsetX = steps[i].offsetX;
    extra.offsetY = steps[i].offsetY;
    if (AppendGeneratedFrame(context, MuralGenerate, delay) == 0) return 0;
    HostProgress(context->host, i, count);
  }
  return 1;
}
