#include "host/memory_budget.h"

#include <cstdio>

#include "raster/dib.h"

std::uint64_t FramesBytesNeeded(int width, int height, int frames) {
  if (width <= 0 || height <= 0 || frames <= 0) return 0;
  std::uint64_t trueColour = kDibHeadSize + static_cast<std::uint64_t>(DibStride(24, width)) * height;
  std::uint64_t indexed = kDibHeadSize + DibColourTableBytes(8) + static_cast<std::uint64_t>(DibStride(8, width)) * height;
  std::uint64_t output = static_cast<std::uint64_t>(width) * height;
  return (trueColour + indexed + output) * static_cast<std::uint64_t>(frames);
}

std::string MemoryText(std::uint64_t bytes) {
  char text[32];
  constexpr double kMega = 1024.0 * 1024.0;
  double mega = static_cast<double>(bytes) / kMega;
  if (mega < 1024.0) std::snprintf(text, sizeof text, "%.0f MB", mega < 1.0 ? 1.0 : mega);
  else std::snprintf(text, sizeof text, "%.1f GB", mega / 1024.0);
  return text;
}
