#include "effects/bubble_field.h"

#include <cmath>
#include <new>

#include "effects/generator_common.h"
#include "effects/text_frame.h"
#include "raster/crt_random.h"
#include "raster/resample.h"
#include "raster/gdi_command.h"

namespace {

constexpr double kPi = 3.141592653589793;

struct BubbleClass {
  int count;
  int base;
  int speed;
  int intensity;
};

// Five draws a bubble, always in this order; the third is not used.
Bubble SeedBubble(const BubbleField& field, const BubbleClass& kind) {
  Bubble bubble{};
  int across = field.fieldWidth - kind.base;
  bubble.x = CrtRand() % (across > 0 ? across : 1) + kind.base / 2;
  bubble.y = CrtRand() % field.fieldHeight;
  CrtRand();
  int spread = kind.base / 9 > 1 ? kind.base / 9 : 1;
  bubble.size = kind.base - CrtRand() % spread;
  bubble.speed = kind.speed;
  bubble.intensity = kind.intensity;
  bubble.angle = CrtRand() % 360;
  return bubble;
}

// Lays one bubble's mask over the doubled field in the bubble colour. Rows
// above the top come in at the bottom; nothing else wraps.
void LayBubble(DibHead* surface, const DibHead* mask, int cx, int cy, int fieldHeight, std::uint32_t colour) {
  int n = mask->biWidth;
  int half = n / 2;
  for (int r = 0; r < n; ++r) {
    int y = cy - half + r;
    while (y < 0) y += fieldHeight;
    for (int c = 0; c < n; ++c) {
      int x = cx - half + c;
      std::int32_t pixel = DibGetPixel(surface, x, y);
      if (pixel == -1) continue;
      int m = DibGetPixel(mask, c, r) & 0xFF;
      DibPutPixel(surface, x, y, BlendPixel(colour, static_cast<std::uint32_t>(pixel), m));
    }
  }
}

// A bubble's mask follows from its size and intensity alone, which only a
// few dozen bubbles of a field differ in; each mask is drawn once for one
// drawing of the field and kept to its end.
class MaskShelf {
 public:
  MaskShelf() = default;
  MaskShelf(const MaskShelf&) = delete;
  MaskShelf& operator=(const MaskShelf&) = delete;
  ~MaskShelf() {
    for (int i = 0; i < count_; ++i) MemFree(entries_[i].mask);
    MemFree(spare_);
  }

  // The mask, owned by the shelf until its end; null if it cannot be drawn.
  DibHandle Get(int size, int intensity) {
    for (int i = 0; i < count_; ++i)
      if (entries_[i].size == size && entries_[i].intensity == intensity) return entries_[i].mask;
    DibHandle mask = BubbleMask(size, intensity);
    if (mask == nullptr || count_ == kShelfSize) {
      spare_ = MemFree(spare_);
      return spare_ = mask;
    }
    entries_[count_++] = {size, intensity, mask};
    return mask;
  }

 private:
  static constexpr int kShelfSize = 48;
  struct Entry {
    int size;
    int intensity;
    DibHandle mask;
  };
  Entry entries_[kShelfSize] = {};
  int count_ = 0;
  DibHandle spare_ = nullptr;  // the last mask that found no room
};

}  // namespace

int InitBubbleField(BubbleField* field, const Controls* dialog, const BubbleControlIds& ids, int width, int height,
                    int frames) {
  CrtSrand(static_cast<unsigned>(ReadControlInt(dialog, ids.seed)));
  int density = ReadControlInt(dialog, ids.density);
  const int large = density / 2;
  const int medium = density * 3 / 4;
  const int small = density;
  field->fieldWidth = 2 * width;
  field->fieldHeight = 2 * height;
  field->frames = frames;

  DibOwner fill(RenderFillOf(dialog, ids.ground, width, height));
  if (fill == nullptr) return 0;
  field->ground = DibResize(fill.get(), 200, 200);
  if (field->ground == nullptr) return 0;

  int size = ReadControlInt(dialog, ids.size);
  field->largeSize = 2 * size;
  field->mediumSize = size * 6 / 4;
  field->smallSize = size;
  field->count = large + medium + small;
  field->bubbles = new (std::nothrow) Bubble[field->count];
  if (field->bubbles == nullptr) {
    field->ground = MemFree(field->ground);
    return 0;
  }
  const BubbleClass classes[] = {{large, field->largeSize, 1, 255},
                                 {medium, field->mediumSize, 2, 160},
                                 {small, field->smallSize, 4, 128}};
  int next = 0;
  for (const BubbleClass& kind : classes)
    for (int i = 0; i < kind.count; ++i) field->bubbles[next++] = SeedBubble(*field, kind);
  return 1;
}

DibHandle BubbleMask(int n, int intensity) {
  GdiCanvas* canvas = GdiCanvasOpen(n, n);
  if (canvas == nullptr) return nullptr;
  int half = n / 2;
  int drawn = 1;
  for (int j = 0; j < half && drawn != 0; ++j) {
    auto g = static_cast<std::uint32_t>(255 - static_cast<int>(static_cast<double>(j) / half * intensity));
    drawn = GdiCanvasEllipse(canvas, DibRect{j, j, n - j, n - j}, g << 16 | g << 8 | g);
  }
  DibOwner mask(GdiCanvasClose(canvas));
  return drawn != 0 ? mask.release() : nullptr;
}

DibHandle DrawBubbleField(const Controls* dialog, const BubbleControlIds& ids, BubbleField* field, int f) {
  auto colour = static_cast<std::uint32_t>(ReadControlNumber(dialog, ids.colour));
  int drift = ReadControlInt(dialog, ids.drift);
  const int w2 = field->fieldWidth;
  const int h2 = field->fieldHeight;
  const int frames = field->frames;

  DibOwner surface(DibClone(field->ground));
  DibLock surfaceLock(surface.get());
  if (surfaceLock.head == nullptr) return nullptr;
  const int sway = static_cast<int>(drift / -100.0 * w2);
  const int rise = static_cast<int>(static_cast<double>(f) / frames * h2);
  MaskShelf masks;
  for (int i = 0; i < field->count; ++i) {
    Bubble& bubble = field->bubbles[i];
    int cx = bubble.x - static_cast<int>(std::sin(bubble.angle * kPi / 180.0) * sway);
    int cy = bubble.y - rise * bubble.speed;
    DibLock maskLock(masks.Get(bubble.size, bubble.intensity));
    if (maskLock.head == nullptr) return nullptr;
    LayBubble(surfaceLock.head, maskLock.head, cx, cy, h2, colour);
    bubble.angle += 1.0 / frames * 360.0;
  }
  DibHandle halved = DibResize(surface.get(), 50, 50);
  return halved != nullptr ? halved : surface.release();
}

void FreeBubbleField(BubbleField* field) {
  if (field->ready == 0) return;
  field->ground = MemFree(field->ground);
  delete[] field->bubbles;
  field->bubbles = nullptr;
  field->ready = 0;
}
