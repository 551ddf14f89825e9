#include "raster/shape_fill.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <vector>

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

// The first pixel whose centre lies at or right of a crossing at x.
int FirstCentreFrom(double x) { return static_cast<int>(std::ceil(x - 0.5)); }

DibRect Ordered(const DibRect& box) {
  return {std::min(box.left, box.right), std::min(box.top, box.bottom), std::max(box.left, box.right),
          std::max(box.top, box.bottom)};
}

}  // namespace

void ShapeFillPolygon(DibHead* target, const std::int32_t* points, int count, std::uint32_t colour) {
  if (target->biBitCount != 24 || count < 3) return;
  // An edge holds its upper end and not its lower one, so a vertex on a row
  // is crossed once, and flat edges not at all.
  // The crossing is worked out from whole numbers each time, so that one
  // that falls on a pixel's corner is exact.
  struct Edge {
    int top, bottom;  // rows from top up to but not including bottom
    int x;            // x at row top
    double run;       // change of x over the edge's rows
  };
  std::vector<Edge> edges;
  edges.reserve(static_cast<std::size_t>(count));
  int first = target->biHeight, last = 0;
  for (int i = 0; i < count; ++i) {
    const std::int32_t* a = points + 2 * i;
    const std::int32_t* b = points + 2 * ((i + 1) % count);
    if (a[1] == b[1]) continue;
    if (a[1] > b[1]) std::swap(a, b);
    edges.push_back({a[1], b[1], a[0], static_cast<double>(b[0] - a[0])});
    first = std::min(first, a[1]);
    last = std::max(last, b[1]);
  }
  first = std::max(first, 0);
  last = std::min(last, static_cast<int>(target->biHeight));
  std::vector<double> crossings(edges.size());
  for (int y = first; y < last; ++y) {
    std::size_t found = 0;
    for (const Edge& edge : edges)
      if (edge.top <= y && y < edge.bottom) crossings[found++] = edge.x + (y - edge.top) * edge.run / (edge.bottom - edge.top);
    std::sort(crossings.begin(), crossings.begin() + static_cast<std::ptrdiff_t>(found));
    for (std::size_t i = 0; i + 1 < found; i += 2)
      FillSpan(target, y, static_cast<int>(std::ceil(crossings[i])), static_cast<int>(std::ceil(crossings[i + 1])),
               colour);
  }
}

void ShapeFillRectangle(DibHead* target, const DibRect& box, std::uint32_t colour) {
  if (target->biBitCount != 24) return;
  DibRect inner = Ordered(box);
  for (int y = inner.top; y < inner.bottom - 1; ++y) FillSpan(target, y, inner.left, inner.right - 1, colour);
}

void ShapeFillEllipse(DibHead* target, const DibRect& box, std::uint32_t colour) {
  if (target->biBitCount != 24) return;
  DibRect inner = Ordered(box);
  const double radiusX = (inner.right - inner.left) / 2.0;
  const double radiusY = (inner.bottom - inner.top) / 2.0;
  if (radiusX <= 0 || radiusY <= 0) return;
  const double centreX = inner.left + radiusX;
  const double centreY = inner.top + radiusY;
  const int first = std::max(inner.top, 0);
  const int last = std::min(inner.bottom, static_cast<int>(target->biHeight));
  for (int y = first; y < last; ++y) {
    const double v = (y + 0.5 - centreY) / radiusY;
    const double reach = 1.0 - v * v;
    if (reach <= 0) continue;
    const double half = radiusX * std::sqrt(reach);
    FillSpan(target, y, FirstCentreFrom(centreX - half), FirstCentreFrom(centreX + half), colour);
  }
}
