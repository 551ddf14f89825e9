#include "effects/pixel_scatter.h"

#include <cstring>

#include "raster/crt_random.h"

namespace {

constexpr unsigned kScatterSeed = 13204;

}  // namespace

DibHandle PixelScatter(DibHandle bitmap, const ChaosExtra& extra) {
  if (extra.scatter == 0) return DibClone(bitmap);
  DibLock source(bitmap);
  if (source.head == nullptr) return nullptr;
  const DibHead* in = source.head;
  if (in->biBitCount != 8 && in->biBitCount != 24 && in->biBitCount != 32) return nullptr;
  int bytes = in->biBitCount / 8;
  int width = in->biWidth;
  int height = in->biHeight;
  DibOwner scattered(DibNewLike(in, width, height));
  DibLock target(scattered.get());
  if (target.head == nullptr) return nullptr;

  CrtSrand(kScatterSeed);
  const int reach = extra.scatter;
  const int back = reach >> 1;
  for (int y = 0; y < height; ++y) {
    std::uint8_t* out = DibRow(target.head, y);
    for (int x = 0; x < width; ++x) {
      int sx = CrtRand() % reach - back + x;
      int sy = CrtRand() % reach - back + y;
      bool inside = sx >= 0 && sx < width && sy >= 0 && sy < height;
      const std::uint8_t* from = inside ? DibRow(in, sy) + sx * bytes : DibRow(in, y) + x * bytes;
      std::memcpy(out + x * bytes, from, bytes);
    }
  }
  return scattered.release();
}
