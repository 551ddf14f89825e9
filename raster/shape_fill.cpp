#include "raster/shape_fill.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <memory>
#include <new>

namespace {

// Pixels from x0 up to but not including x1 of row y, clipped.
void FillSpan(DibHead* target, int y, int x0, int x1, std::uint32_t colour) {
  if (y < 0 || y >= target->biHeight) return;
  x0 = std::max(x0, 0);
  x1 = std::min(x1, static_cast<int>(target->biWidth));
  if (x0 >= x1) return;
  std::uint8_t* p = DibRow(target, y) + x0 * 3;
  p[0] = static_cast<std::uint8_t>(colour >> 16);
  p[1] = static_cast<std::uint8_t>(colour >> 8);
  p[2] = static_cast<std::uint8_t>(colour);
  // The first pixel copied over the rest in doubling blocks.
  const std::size_t total = static_cast<std::size_t>(x1 - x0) * 3;
  for (std::size_t filled = 3; filled < total;) {
    const std::size_t block = std::min(filled, total - filled);
    std::memcpy(p + filled, p, block);
    filled += block;
  }
}

DibRect Ordered(const DibRect& box) {
  return {std::min(box.left, box.right), std::min(box.top, box.bottom), std::max(box.left, box.right),
          std::max(box.top, box.bottom)};
}

}  // namespace

int ShapeFillPolygon(DibHead* target, const std::int32_t* points, int count, std::uint32_t colour) {
  if (target->biBitCount != 24 || count < 3) return 1;
  // An edge holds its upper end and not its lower one, so a vertex on a row
  // is crossed once, and flat edges not at all. A crossing is worked out
  // from whole numbers each time, so that one on a pixel's corner is exact.
  struct Edge {
    int top, bottom;  // rows from top up to but not including bottom
    int x;            // x at row top
    double run;       // change of x over the edge's rows
  };
  std::unique_ptr<Edge[]> edges(new (std::nothrow) Edge[static_cast<std::size_t>(count)]);
  std::unique_ptr<double[]> crossings(new (std::nothrow) double[static_cast<std::size_t>(count)]);
  if (edges == nullptr || crossings == nullptr) return 0;
  int edgeCount = 0;
  int first = target->biHeight, last = 0;
  for (int i = 0; i < count; ++i) {
    const std::int32_t* a = points + 2 * i;
    const std::int32_t* b = points + 2 * ((i + 1) % count);
    if (a[1] == b[1]) continue;
    if (a[1] > b[1]) std::swap(a, b);
    edges[edgeCount++] = {a[1], b[1], a[0], static_cast<double>(b[0] - a[0])};
    first = std::min(first, a[1]);
    last = std::max(last, b[1]);
  }
  first = std::max(first, 0);
  last = std::min(last, static_cast<int>(target->biHeight));
  for (int y = first; y < last; ++y) {
    int found = 0;
    for (int i = 0; i < edgeCount; ++i) {
      const Edge& edge = edges[i];
      if (edge.top <= y && y < edge.bottom)
        crossings[found++] = edge.x + (y - edge.top) * edge.run / (edge.bottom - edge.top);
    }
    std::sort(crossings.get(), crossings.get() + found);
    for (int i = 0; i + 1 < found; i += 2)
      FillSpan(target, y, static_cast<int>(std::ceil(crossings[i])), static_cast<int>(std::ceil(crossings[i + 1])),
               colour);
  }
  return 1;
}

int ShapeFillRectangle(DibHead* target, const DibRect& box, std::uint32_t colour) {
  if (target->biBitCount != 24) return 1;
  DibRect inner = Ordered(box);
  for (int y = inner.top; y < inner.bottom - 1; ++y) FillSpan(target, y, inner.left, inner.right - 1, colour);
  return 1;
}

// The rim is traced pixel by pixel with whole-number error terms, from the
// middle of each side towards the ends, all four quarters at once; each row
// is then filled from its leftmost rim pixel to its rightmost. An ellipse
// less than two pixels across is not drawn.
int ShapeFillEllipse(DibHead* target, const DibRect& box, std::uint32_t colour) {
  if (target->biBitCount != 24) return 1;
  const DibRect outer = Ordered(box);
  const int width = outer.right - outer.left;
  const int height = outer.bottom - outer.top;
  if (width < 2 || height < 2) return 1;
  std::unique_ptr<int[]> left(new (std::nothrow) int[static_cast<std::size_t>(height)]);
  std::unique_ptr<int[]> right(new (std::nothrow) int[static_cast<std::size_t>(height)]);
  if (left == nullptr || right == nullptr) return 0;
  std::fill(left.get(), left.get() + height, width);
  std::fill(right.get(), right.get() + height, -1);
  auto mark = [&](int x, int y) {
    left[y] = std::min(left[y], x);
    right[y] = std::max(right[y], x);
  };
  const std::int64_t a = width - 1;
  const std::int64_t b = height - 1;
  const std::int64_t odd = b & 1;
  std::int64_t dx = 4 * (1 - a) * b * b;
  std::int64_t dy = 4 * (odd + 1) * a * a;
  std::int64_t err = dx + dy + odd * a * a;
  const std::int64_t stepX = 8 * b * b;
  const std::int64_t stepY = 8 * a * a;
  int x0 = 0, x1 = static_cast<int>(a);
  int y0 = static_cast<int>((b + 1) / 2), y1 = y0 - static_cast<int>(odd);
  do {
    mark(x0, y0);
    mark(x1, y0);
    mark(x0, y1);
    mark(x1, y1);
    const std::int64_t e2 = 2 * err;
    if (e2 <= dy) {
      ++y0;
      --y1;
      dy += stepY;
      err += dy;
    }
    if (e2 >= dx || 2 * err > dy) {
      ++x0;
      --x1;
      dx += stepX;
      err += dx;
    }
  } while (x0 <= x1);
  for (int y = 0; y < height; ++y)
    if (left[y] <= right[y]) FillSpan(target, outer.top + y, outer.left + left[y], outer.left + right[y] + 1, colour);
  return 1;
}
