#include "raster/shape_raster.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr int kGrid = 4;  // samples per pixel and axis when smoothing

std::uint32_t Mix(std::uint32_t colour, std::uint32_t pixel, int covered, int samples) {
  std::uint32_t result = 0;
  for (int shift = 0; shift <= 16; shift += 8) {
    std::uint32_t c = colour >> shift & 0xFF;
    std::uint32_t p = pixel >> shift & 0xFF;
    result |= (c * covered + p * (samples - covered)) / samples << shift;
  }
  return result;
}

// Paints every pixel of the picture within the box whose samples fall inside
// the shape, in proportion to how many do.
template <typename Inside>
void Paint(DibHead* picture, double left, double top, double right, double bottom, std::uint32_t colour,
           int antialias, Inside inside) {
  int x0 = std::max(0, static_cast<int>(std::floor(left)));
  int y0 = std::max(0, static_cast<int>(std::floor(top)));
  int x1 = std::min(picture->biWidth, static_cast<int>(std::ceil(right)) + 1);
  int y1 = std::min(picture->biHeight, static_cast<int>(std::ceil(bottom)) + 1);
  int grid = antialias > 0 ? kGrid : 1;
  int samples = grid * grid;
  for (int y = y0; y < y1; ++y) {
    for (int x = x0; x < x1; ++x) {
      int covered = 0;
      for (int sy = 0; sy < grid; ++sy)
        for (int sx = 0; sx < grid; ++sx)
          covered += inside(x + (sx + 0.5) / grid, y + (sy + 0.5) / grid) ? 1 : 0;
      if (covered == 0) continue;
      auto pixel = static_cast<std::uint32_t>(DibGetPixel(picture, x, y));
      DibPutPixel(picture, x, y, Mix(colour, pixel, covered, samples));
    }
  }
}

// Where (x, y) lies against an ellipse: below 1 inside, scaled by the radii.
double EllipseMeasure(double x, double y, double cx, double cy, double rx, double ry) {
  double dx = (x - cx) / rx;
  double dy = (y - cy) / ry;
  return dx * dx + dy * dy;
}

// Square and round ends reach half a pen beyond the end point; flat ones stop there.
double CapReach(int cap, double half) { return cap == kShapeCapSquare || cap == kShapeCapRound ? half : 0; }

}  // namespace

void ShapeFillEllipse(DibHead* picture, int left, int top, int width, int height, std::uint32_t colour,
                      int antialias) {
  if (width <= 0 || height <= 0) return;
  double rx = width / 2.0;
  double ry = height / 2.0;
  double cx = left + rx;
  double cy = top + ry;
  Paint(picture, left, top, left + width, top + height, colour, antialias,
        [&](double x, double y) { return EllipseMeasure(x, y, cx, cy, rx, ry) <= 1.0; });
}

void ShapeStrokeEllipse(DibHead* picture, int left, int top, int width, int height, int penWidth,
                        std::uint32_t colour, int antialias) {
  if (width <= 0 || height <= 0) return;
  double half = std::max(penWidth, 1) / 2.0;
  double rx = width / 2.0;
  double ry = height / 2.0;
  double cx = left + rx;
  double cy = top + ry;
  Paint(picture, left - half, top - half, left + width + half, top + height + half, colour, antialias,
        [&](double x, double y) {
          bool insideOuter = EllipseMeasure(x, y, cx, cy, rx + half, ry + half) <= 1.0;
          bool insideInner = rx > half && ry > half && EllipseMeasure(x, y, cx, cy, rx - half, ry - half) < 1.0;
          return insideOuter && !insideInner;
        });
}

void ShapeStrokeLine(DibHead* picture, int x1, int y1, int x2, int y2, int penWidth, int startCap, int endCap,
                     std::uint32_t colour, int antialias) {
  double half = std::max(penWidth, 1) / 2.0;
  double dx = x2 - x1;
  double dy = y2 - y1;
  double length = std::sqrt(dx * dx + dy * dy);
  double ux = length > 0 ? dx / length : 1.0;
  double uy = length > 0 ? dy / length : 0.0;
  double before = CapReach(startCap, half);
  double after = CapReach(endCap, half);
  Paint(picture, std::min(x1, x2) - half, std::min(y1, y2) - half, std::max(x1, x2) + half, std::max(y1, y2) + half,
        colour, antialias, [&](double x, double y) {
          double along = (x - x1) * ux + (y - y1) * uy;
          double across = std::fabs((x - x1) * uy - (y - y1) * ux);
          if (across > half) return false;
          if (along >= 0 && along <= length) return true;
          if (along < 0) {
            if (along < -before) return false;
            return startCap != kShapeCapRound || along * along + across * across <= half * half;
          }
          if (along > length + after) return false;
          double beyond = along - length;
          return endCap != kShapeCapRound || beyond * beyond + across * across <= half * half;
        });
}
