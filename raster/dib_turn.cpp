// Quarter and half turns, pixel by pixel, keeping depth and colour table.
#include "raster/dib.h"

namespace {

struct Place {
  int x;
  int y;
};

// Makes a bitmap of the turned size and puts every source pixel (x, y) at
// move(x, y, new width, new height).
template <typename Move>
DibHandle DibTurn(DibHandle dib, bool swapSides, Move move) {
  DibLock source(dib);
  if (source.head == nullptr) return nullptr;
  int width = source.head->biWidth;
  int height = source.head->biHeight;
  int newWidth = swapSides ? height : width;
  int newHeight = swapSides ? width : height;
  DibOwner turned(DibNewLike(source.head, newWidth, newHeight));
  DibLock target(turned.get());
  if (target.head == nullptr) return nullptr;
  for (int y = 0; y < height; ++y) {
    for (int x = 0; x < width; ++x) {
      Place to = move(x, y, newWidth, newHeight);
      DibPutPixel(target.head, to.x, to.y, static_cast<std::uint32_t>(DibGetPixel(source.head, x, y)));
    }
  }
  return turned.release();
}

}  // namespace

DibHandle DibTurnRight(DibHandle dib) {
  return DibTurn(dib, true, [](int x, int y, int newWidth, int) { return Place{newWidth - y - 1, x}; });
}

DibHandle DibTurnAround(DibHandle dib) {
  return DibTurn(dib, false,
                 [](int x, int y, int newWidth, int newHeight) { return Place{newWidth - x - 1, newHeight - y - 1}; });
}

DibHandle DibTurnLeft(DibHandle dib) {
  return DibTurn(dib, true, [](int x, int y, int, int newHeight) { return Place{y, newHeight - x - 1}; });
}
