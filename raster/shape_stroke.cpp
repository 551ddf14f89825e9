#include "raster/shape_stroke.h"

#include <algorithm>
#include <cmath>

namespace {

// Whether a point lies on the pen: across the segment within half the pen,
// and along it between the ends, or within half a pen of an end when round.
struct Stroke {
  double x1, y1, ux, uy, length, half;
  bool round;

  bool Covers(double x, double y) const {
    double dx = x - x1;
    double dy = y - y1;
    double along = dx * ux + dy * uy;
    double across = std::fabs(dx * uy - dy * ux);
    if (across > half) return false;
    if (along >= 0 && along <= length) return true;
    if (!round) return false;
    double beyond = along < 0 ? along : along - length;
    return beyond * beyond + across * across <= half * half;
  }
};

}  // namespace

void ShapeStrokeLine(DibHead* target, int x1, int y1, int x2, int y2, int penWidth, int roundEnds,
                     std::uint32_t colour) {
  if (target->biBitCount != 24) return;
  double half = std::max(penWidth, 1) / 2.0;
  double dx = x2 - x1;
  double dy = y2 - y1;
  double length = std::sqrt(dx * dx + dy * dy);
  Stroke stroke{static_cast<double>(x1), static_cast<double>(y1), length > 0 ? dx / length : 1.0,
                length > 0 ? dy / length : 0.0, length, half, roundEnds != 0};
  int reach = static_cast<int>(std::ceil(half)) + 1;
  int left = std::max(std::min(x1, x2) - reach, 0);
  int right = std::min(std::max(x1, x2) + reach, static_cast<int>(target->biWidth) - 1);
  int top = std::max(std::min(y1, y2) - reach, 0);
  int bottom = std::min(std::max(y1, y2) + reach, static_cast<int>(target->biHeight) - 1);
  for (int y = top; y <= bottom; ++y)
    for (int x = left; x <= right; ++x)
      if (stroke.Covers(x + 0.5, y + 0.5)) DibPutPixel(target, x, y, colour);
}
