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

// The box with its corners in order, less the right column and bottom row.
DibRect NullPenBox(const DibRect& box) {
  DibRect inner{std::min(box.left, box.right), std::min(box.top, box.bottom), std::max(box.left, box.right),
                std::max(box.top, box.bottom)};
  inner.right -= 1;
  inner.bottom -= 1;
  return inner;
}

}  // namespace

void ShapeFillPolygon(DibHead* target, const std::int32_t* points, int count, std::uint32_t colour) {
  if (target->biBitCount != 24 || count < 3) return;
  int top = points[1];
  int bottom = points[1];
  for (int i = 1; i < count; ++i) {
    top = std::min(top, points[2 * i + 1]);
    bottom = std::max(bottom, points[2 * i + 1]);
  }
  top = std::max(top, 0);
  bottom = std::min(bottom, static_cast<int>(target->biHeight));
  std::vector<double> crossings;
  crossings.reserve(static_cast<std::size_t>(count));
  for (int y = top; y < bottom; ++y) {
    // Vertices are whole numbers and the sample line runs through the
    // pixels' centres, so no vertex ever lies on it.
    const double centre = y + 0.5;
    crossings.clear();
    for (int i = 0; i < count; ++i) {
      const std::int32_t* a = points + 2 * i;
      const std::int32_t* b = points + 2 * ((i + 1) % count);
      if ((a[1] < centre) == (b[1] < centre)) continue;
      crossings.push_back(a[0] + (centre - a[1]) * (b[0] - a[0]) / (b[1] - a[1]));
    }
    std::sort(crossings.begin(), crossings.end());
    for (std::size_t i = 0; i + 1 < crossings.size(); i += 2)
      FillSpan(target, y, FirstCentreFrom(crossings[i]), FirstCentreFrom(crossings[i + 1]), colour);
  }
}

void ShapeFillRectangle(DibHead* target, const DibRect& box, std::uint32_t colour) {
  if (target->biBitCount != 24) return;
  DibRect inner = NullPenBox(box);
  for (int y = inner.top; y < inner.bottom; ++y) FillSpan(target, y, inner.left, inner.right, colour);
}

void ShapeFillEllipse(DibHead* target, const DibRect& box, std::uint32_t colour) {
  if (target->biBitCount != 24) return;
  DibRect inner = NullPenBox(box);
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
