// A gradient's colour line: its ramp, its strip, and the bookkeeping of its
// markers.
#include <new>

#include "fills/fountain.h"

namespace {

constexpr std::uint32_t kColourMask = 0xFFFFFF;
constexpr int kSearchLimit = 1024;  // far more steps than any search that ends

int PositionOf(std::uint32_t marker) { return static_cast<int>(marker >> 24); }

// The edge pad in per cent. Its control allows 0 to 45; a file may hold
// anything, and past 50 the two pads would run over each other and off the
// ramp, so a larger value holds half the ramp flat at each end.
int EdgePadOf(const FountainSpec* spec) { return spec->edgePad > 50 ? 50 : spec->edgePad; }

// Each channel trunc(to * f + from * (1 - f)).
std::uint32_t MixColours(std::uint32_t from, std::uint32_t to, double f) {
  std::uint32_t colour = 0;
  for (int shift = 0; shift < 24; shift += 8) {
    double channel = (to >> shift & 0xFF) * f + (from >> shift & 0xFF) * (1 - f);
    colour |= static_cast<std::uint32_t>(channel) << shift;
  }
  return colour;
}

// The midpoint's line: a start marker at the pad, the half-way colour at the
// midpoint's share of what the two pads leave, and no end marker in play.
void MidpointLine(const FountainSpec* spec, FountainRecord* line) {
  *line = FountainRecord{};
  line->startColour = spec->startColour;
  line->endColour = spec->endColour;
  const int q = static_cast<int>(EdgePadOf(spec) / 100.0 * 255);
  std::uint32_t half = 0;
  for (int shift = 0; shift < 24; shift += 8) {
    double channel = (spec->startColour >> shift & 0xFF) * 0.5 + (spec->endColour >> shift & 0xFF) * 0.5;
    half |= static_cast<std::uint32_t>(channel) << shift;
  }
  line->markers[0] = static_cast<std::uint32_t>(q) << 24 | (spec->startColour & kColourMask);
  line->markers[1] = static_cast<std::uint32_t>((255 - 2 * q) * spec->midpoint / 100) << 24 | half;
  line->markers[2] = static_cast<std::uint32_t>(255 - q) << 24 | (spec->endColour & kColourMask);
  line->markerCount = 2;
}

// The record's strip at width by 1, read into colours. 0 on failure.
int ReadStrip(const FountainRecord* record, int width, std::uint32_t* colours) {
  DibOwner strip(FountainStrip(record, width, 1));
  DibLock lock(strip.get());
  if (lock.head == nullptr) return 0;
  for (int x = 0; x < width; ++x) colours[x] = static_cast<std::uint32_t>(DibGetPixel(lock.head, x, 0));
  return 1;
}

// One segment of a strip, from colour on its left to next on its right.
int PaintSegment(DibHead* strip, int left, int width, std::uint32_t colour, std::uint32_t next) {
  DibOwner segment(FountainLinear(colour, next, width, strip->biHeight, 90, nullptr));
  DibLock lock(segment.get());
  if (lock.head == nullptr) return 0;
  return DibRegionCopy(strip, left, 0, lock.head, 0, 0, width, strip->biHeight);
}

bool MarkerStandsAt(const FountainRecord* record, int position) {
  for (int i = 0; i < record->markerCount && i < kFountainMaxMarkers; ++i)
    if (PositionOf(record->markers[i]) == position) return true;
  return false;
}

}  // namespace

void FountainRampFree(FountainRampBlock ramp) { delete[] ramp; }

FountainRampBlock FountainRamp(const FountainSpec* spec, int count) {
  if (count < 0) count = 0;
  auto* ramp = new (std::nothrow) std::uint32_t[static_cast<std::size_t>(count) + 1]();
  if (ramp == nullptr) return nullptr;
  ramp[0] = static_cast<std::uint32_t>(count);
  std::uint32_t* colours = FountainRampColours(ramp);
  const std::uint32_t start = spec->startColour & kColourMask;
  const std::uint32_t end = spec->endColour & kColourMask;
  int pad = 0;
  if (spec->edgePad > 0) {
    pad = static_cast<int>(EdgePadOf(spec) / 100.0 * count);
    for (int i = 0; i < pad; ++i) {
      colours[i] = start;
      colours[count - 1 - i] = end;
    }
  }
  const int inner = count - 2 * pad;
  int painted = 1;
  if (spec->twoColour != 0 && spec->midpoint == 50) {
    for (int i = 0; i < inner; ++i) colours[pad + i] = MixColours(start, end, static_cast<double>(i) / inner);
  } else if (spec->twoColour != 0) {
    // The strip covers the whole ramp here: the end pad is not kept.
    FountainRecord line;
    MidpointLine(spec, &line);
    painted = count < 1 || ReadStrip(&line, count, colours);
  } else if (inner > 0) {
    painted = ReadStrip(&spec->record, inner, colours + pad);
  }
  if (painted == 0) {
    FountainRampFree(ramp);
    return nullptr;
  }
  if (spec->twoColour != 0 && count > 0) {
    colours[0] = start;
    colours[count - 1] = end;
  }
  return ramp;
}

DibHandle FountainStrip(const FountainRecord* record, int width, int height) {
  DibOwner strip(DibNew(width, height, nullptr, 24));
  DibLock lock(strip.get());
  if (lock.head == nullptr) return nullptr;
  int positions[kFountainMaxMarkers];
  FountainMarkerPositions(record, width, positions);
  int left = 0;
  std::uint32_t colour = record->startColour & kColourMask;
  for (int i = 0; i < record->markerCount && i < kFountainMaxMarkers; ++i) {
    const std::uint32_t next = record->markers[i] & kColourMask;
    if (positions[i] - left > 0 && PaintSegment(lock.head, left, positions[i] - left, colour, next) == 0)
      return nullptr;
    left = positions[i];
    colour = next;
  }
  const bool looped = (record->flags & kFountainFlagLooped) != 0;
  const std::uint32_t last = (looped ? record->startColour : record->endColour) & kColourMask;
  if (width - left >= 1 && PaintSegment(lock.head, left, width - left, colour, last) == 0) return nullptr;
  return strip.release();
}

void FountainMarkerPositions(const FountainRecord* record, int width, int positions[kFountainMaxMarkers]) {
  for (int i = 0; i < kFountainMaxMarkers; ++i)
    positions[i] = static_cast<int>(PositionOf(record->markers[i]) / 255.0 * width);
}

int FountainMarkerCompare(const void* a, const void* b) {
  const int first = PositionOf(*static_cast<const std::uint32_t*>(a));
  const int second = PositionOf(*static_cast<const std::uint32_t*>(b));
  if (first == 0) return 1;
  if (second == 0) return -1;
  return first - second;
}

// The search swings about the wish, and only downwards from 63. Where the
// wish and the place below it are both taken it would swing between the two
// for ever; it gives up with 0 instead.
int FountainFreePosition(const FountainRecord* record, int* position) {
  if (record->markerCount >= kFountainMaxMarkers) return 0;
  int step = -1;
  bool low = false;
  bool high = false;
  for (int round = 0; round < kSearchLimit; ++round) {
    if (low && high) return 0;
    if (record->markerCount <= 0 || !MarkerStandsAt(record, *position)) return 1;
    if (*position < 1) {
      step = 1;
      low = true;
    }
    if (*position >= 63) {
      high = true;
      step = -1;
    }
    *position += step;
    step = -step;
  }
  return 0;
}
