// The optimiser works on a model of the decoder's screen: one cell per
// pixel holding a palette index, or kClear where nothing is shown (before the
// first image, and where a background disposal cleared an image). It replays
// the plain animation to know the picture wanted after every image, and
// builds each new image against the screen its own images leave behind.
#include "host/gif_optimise.h"

#include <algorithm>
#include <array>
#include <bitset>
#include <cstdint>
#include <cstring>

namespace {

constexpr std::int16_t kClear = -1;

using Screen = std::vector<std::int16_t>;

struct Box {
  int left = 0, top = 0, right = 0, bottom = 0;  // right and bottom exclusive
  bool Empty() const { return right <= left || bottom <= top; }
  void Add(int x, int y) {
    if (Empty()) {
      *this = {x, y, x + 1, y + 1};
      return;
    }
    left = std::min(left, x);
    top = std::min(top, y);
    right = std::max(right, x + 1);
    bottom = std::max(bottom, y + 1);
  }
  // The pixels from left to right (exclusive) on row y.
  void AddSpan(int y, int spanLeft, int spanRight) {
    Add(spanLeft, y);
    Add(spanRight - 1, y);
  }
  void Add(const Box& other) {
    if (other.Empty()) return;
    if (Empty()) {
      *this = other;
      return;
    }
    left = std::min(left, other.left);
    top = std::min(top, other.top);
    right = std::max(right, other.right);
    bottom = std::max(bottom, other.bottom);
  }
};

// The screen, and the new number of each plain index. Only the colours
// shown are numbered, so that the table is only as large as they need.
struct Geometry {
  int width, height;
  std::uint8_t renumber[256];
  std::size_t At(int x, int y) const { return static_cast<std::size_t>(y) * width + x; }
};

// What the replayed pictures say about each colour (numbered as the first
// palette entry of its colour), and about each picture: the colours its
// changed pixels take and how many pixels the box around them holds.
struct ColourStats {
  std::size_t changes[256] = {};
  std::size_t uses[256] = {};
  std::size_t firstChange[256];
  std::size_t lastChange[256] = {};
  struct Picture {
    std::bitset<256> changedTo;
    std::size_t boxPixels;
  };
  std::vector<Picture> pictures;
  bool seeThrough = false;
};

// Draws the plain image on the picture and counts what changed; box gets the
// pixels that changed.
void CountChanges(const GifFrame& frame, const Geometry& geometry, const Screen* beforeDisposal, std::size_t number,
                  Screen* picture, std::size_t shown[257], ColourStats* stats, Box* box) {
  ColourStats::Picture& counted = stats->pictures.back();
  for (int y = 0; y < frame.height; ++y) {
    const std::uint8_t* row = frame.indices.data() + static_cast<std::size_t>(y) * frame.width;
    std::size_t start = geometry.At(frame.left, frame.top + y);
    std::int16_t* cell = picture->data() + start;
    const std::int16_t* before = beforeDisposal != nullptr ? beforeDisposal->data() + start : cell;
    int left = -1, right = -1;
    for (int x = 0; x < frame.width; ++x) {
      if (row[x] == frame.transparentIndex) continue;
      std::int16_t now = geometry.renumber[row[x]];
      if (now != before[x]) {
        ++stats->changes[now];
        counted.changedTo.set(static_cast<std::size_t>(now));
        left = left < 0 ? x : left;
        right = x;
      }
      if (now == cell[x]) continue;
      --shown[cell[x] + 1];
      ++shown[now + 1];
      cell[x] = now;
    }
    if (left >= 0) box->AddSpan(frame.top + y, left, right + 1);
  }
  for (int index = 0; index < 256; ++index) {
    if (!counted.changedTo.test(static_cast<std::size_t>(index))) continue;
    stats->firstChange[index] = std::min(stats->firstChange[index], number);
    stats->lastChange[index] = number;
  }
}

ColourStats CountColours(const GifAnimation& plain, const Geometry& geometry) {
  ColourStats stats;
  std::fill_n(stats.firstChange, 256, SIZE_MAX);
  // How many pixels of the picture show each colour, kept as pixels change,
  // so that counting what each picture shows costs nothing per pixel.
  std::size_t shown[257] = {};  // the clear pixels first
  shown[0] = static_cast<std::size_t>(geometry.width) * geometry.height;
  Screen picture(shown[0], kClear);
  // A change is counted against the picture before, not against what its
  // disposal left, so the pixels a disposal cleared keep their old values here.
  Screen beforeDisposal;
  bool disposed = false;
  for (const GifFrame& frame : plain.frames) {
    stats.seeThrough = stats.seeThrough || frame.transparentIndex >= 0;
    stats.pictures.push_back({});
    Box box;
    CountChanges(frame, geometry, disposed ? &beforeDisposal : nullptr, stats.pictures.size() - 1, &picture, shown,
                 &stats, &box);
    stats.pictures.back().boxPixels =
        box.Empty() ? 1 : static_cast<std::size_t>(box.right - box.left) * (box.bottom - box.top);
    for (int index = 0; index < 256; ++index) stats.uses[index] += shown[index + 1];
    disposed = frame.disposal == kGifDisposalBackground;
    if (!disposed) continue;
    beforeDisposal = picture;
    for (int y = 0; y < frame.height; ++y)
      for (std::int16_t* cell = picture.data() + geometry.At(frame.left, frame.top + y), *end = cell + frame.width;
           cell < end; ++cell) {
        --shown[*cell + 1];
        ++shown[0];
        *cell = kClear;
      }
  }
  return stats;
}

// Colours from the first to be numbered to the last.
using ColourOrder = std::array<int, 256>;

template <typename Before>
ColourOrder OrderColours(const ColourStats& stats, Before before) {
  ColourOrder order;
  for (int index = 0; index < 256; ++index) order[index] = index;
  std::stable_sort(order.begin(), order.end(), [&](int a, int b) {
    if (before(a, b) != before(b, a)) return before(a, b);
    return stats.changes[a] != stats.changes[b] ? stats.changes[a] > stats.changes[b] : stats.uses[a] > stats.uses[b];
  });
  return order;
}

// The LZW code size of an image whose highest index is highest.
int ImageCodeSize(int highest) {
  int bits = 1;
  while ((1 << bits) <= highest) ++bits;
  return GifCodeSizeFor(bits);
}

// An estimate of what a numbering costs: each image's pixels times the bits
// its codes start at, which the highest number its changed pixels need (and
// one more, for transparency) decides.
std::size_t NumberingCost(const ColourStats& stats, const ColourOrder& order) {
  int numberOf[256];
  for (int number = 0; number < 256; ++number) numberOf[order[number]] = number;
  std::size_t cost = 0;
  for (const ColourStats::Picture& picture : stats.pictures) {
    int highest = 1;
    for (int index = 0; index < 256; ++index)
      if (picture.changedTo.test(static_cast<std::size_t>(index))) highest = std::max(highest, numberOf[index] + 1);
    cost += picture.boxPixels * static_cast<std::size_t>(ImageCodeSize(highest));
  }
  return cost;
}

// Fills the renumbering and the optimised palette and depth from the order
// of the colours.
void RenumberColours(const ColourStats& stats, const ColourOrder& order, const GifAnimation& plain,
                     Geometry* geometry, GifAnimation* optimised) {
  int shownColours = 0;
  std::uint8_t numberOf[256] = {};
  std::memset(optimised->palette, 0, sizeof optimised->palette);
  for (; shownColours < 256 && stats.uses[order[shownColours]] > 0; ++shownColours) {
    numberOf[order[shownColours]] = static_cast<std::uint8_t>(shownColours);
    std::memcpy(optimised->palette + 3 * shownColours, plain.palette + 3 * order[shownColours], 3);
  }
  for (int index = 0; index < 256; ++index) geometry->renumber[index] = numberOf[geometry->renumber[index]];
  // One more entry, free for transparency, where the pictures need it.
  int entries = std::min(256, shownColours + (stats.seeThrough ? 1 : 0));
  optimised->depth = 1;
  while ((1 << optimised->depth) < entries) ++optimised->depth;
}

// A plain image drawn on the screen, its indices renumbered: its opaque
// pixels replace what is there. Returns how many clear pixels it covered.
std::size_t Draw(Screen* screen, const Geometry& geometry, const GifFrame& frame) {
  std::size_t covered = 0;
  for (int y = 0; y < frame.height; ++y) {
    const std::uint8_t* row = frame.indices.data() + static_cast<std::size_t>(y) * frame.width;
    std::int16_t* cell = screen->data() + geometry.At(frame.left, frame.top + y);
    for (int x = 0; x < frame.width; ++x) {
      if (row[x] == frame.transparentIndex) continue;
      covered += cell[x] == kClear ? 1 : 0;
      cell[x] = geometry.renumber[row[x]];
    }
  }
  return covered;
}

// What the image's disposal leaves for the next one. Returns how many
// pixels it cleared that were not clear.
std::size_t Dispose(Screen* screen, const Geometry& geometry, const GifFrame& frame) {
  if (frame.disposal != kGifDisposalBackground) return 0;
  std::size_t cleared = 0;
  for (int y = 0; y < frame.height; ++y) {
    std::int16_t* cell = screen->data() + geometry.At(frame.left, frame.top + y);
    cleared += static_cast<std::size_t>(frame.width - std::count(cell, cell + frame.width, kClear));
    std::fill_n(cell, frame.width, kClear);
  }
  return cleared;
}

// The plain animation replayed one image ahead: wanted is the picture after
// the current image, next the picture after the one that follows, each with
// its count of clear pixels. The loop starts over, so the first picture
// follows the last.
struct PlainReplay {
  const GifAnimation& plain;
  Geometry geometry;
  Screen wanted;
  Screen next;
  Screen first;
  std::size_t wantedClear = 0, nextClear = 0, firstClear = 0;
  std::size_t current = 0;

  void Start() {
    wanted.assign(static_cast<std::size_t>(geometry.width) * geometry.height, kClear);
    wantedClear = wanted.size() - Draw(&wanted, geometry, plain.frames[0]);
    first = wanted;
    firstClear = wantedClear;
    LookAhead();
  }
  void LookAhead() {
    if (current + 1 >= plain.frames.size()) {
      next = first;
      nextClear = firstClear;
      return;
    }
    next = wanted;
    nextClear = wantedClear + Dispose(&next, geometry, plain.frames[current]);
    nextClear -= Draw(&next, geometry, plain.frames[current + 1]);
  }
  void Advance() {
    ++current;
    std::swap(wanted, next);
    wantedClear = nextClear;
    LookAhead();
  }
};

// Pixels the image must change, and pixels that must be cleared after it
// because the next picture shows nothing there. False when the wanted
// picture shows nothing where the screen still shows something, which no
// image can draw.
bool FindChanges(const PlainReplay& replay, const Screen& screen, Box* changed, Box* toClear) {
  const Geometry& geometry = replay.geometry;
  bool anyClear = replay.wantedClear > 0 || replay.nextClear > 0;
  const std::size_t rowBytes = static_cast<std::size_t>(geometry.width) * sizeof(std::int16_t);
  for (int y = 0; y < geometry.height; ++y) {
    const std::int16_t* want = replay.wanted.data() + geometry.At(0, y);
    const std::int16_t* seen = screen.data() + geometry.At(0, y);
    if (!anyClear) {
      // Every pixel shows something: only the span of the row that differs matters.
      if (std::memcmp(want, seen, rowBytes) == 0) continue;
      int left = 0;
      while (want[left] == seen[left]) ++left;
      int right = geometry.width;
      while (want[right - 1] == seen[right - 1]) --right;
      changed->AddSpan(y, left, right);
      continue;
    }
    const std::int16_t* next = replay.next.data() + geometry.At(0, y);
    for (int x = 0; x < geometry.width; ++x) {
      if (want[x] != seen[x]) {
        if (want[x] == kClear) return false;
        changed->Add(x, y);
      }
      if (want[x] != kClear && next[x] == kClear) toClear->Add(x, y);
    }
  }
  return true;
}

// How an image treats the pixels the screen already shows: drawn again, or
// transparent, or either as the coder chooses (two ways), or transparent only
// where they run long along a row. Long runs of the transparent index code
// into few long strings, while a few such pixels scattered among changed
// ones only break the strings that drawing them would continue.
enum class Unchanged { kDrawn, kTransparent, kChosenGrowing, kChosenLongest, kTransparentInLongRuns };

// The pixels of the box as every image over it starts them: the index each
// must show (unset where the picture shows nothing), and which of them the
// screen already shows.
struct BoxPixels {
  Box box;
  std::vector<std::uint8_t> see;
  std::vector<std::uint8_t> shown;  // 0xFF where the screen shows the pixel already, or nothing is to be shown
  std::vector<std::uint8_t> clear;  // 0xFF where nothing is to be shown
  bool mustSeeThrough = false;      // some pixel shows nothing
  int highestSeen = 0;              // the highest index of the picture in the box
  int highestChanged = 0;           // the highest index a changed pixel needs
  static constexpr int kUnused = 256;
  bool used[kUnused + 1] = {};      // indices that changed pixels need

  void Read(const PlainReplay& replay, const Screen& screen) {
    std::size_t count = static_cast<std::size_t>(box.right - box.left) * (box.bottom - box.top);
    see.resize(count);
    shown.resize(count);
    clear.resize(count);
    std::size_t at = 0;
    for (int y = box.top; y < box.bottom; ++y) {
      const std::int16_t* want = replay.wanted.data() + replay.geometry.At(box.left, y);
      const std::int16_t* seen = screen.data() + replay.geometry.At(box.left, y);
      for (int x = 0; x < box.right - box.left; ++x, ++at) {
        see[at] = static_cast<std::uint8_t>(want[x]);
        clear[at] = want[x] == kClear ? 0xFF : 0;
        shown[at] = want[x] == seen[x] ? 0xFF : 0;
        // A changed pixel is never clear: no image can clear the screen.
        used[want[x] == seen[x] ? kUnused : see[at]] = true;
        highestChanged = std::max(highestChanged, want[x] == seen[x] ? 0 : see[at]);
        highestSeen = std::max<int>(highestSeen, want[x]);
        mustSeeThrough = mustSeeThrough || want[x] == kClear;
      }
    }
  }
  // The lowest index of the table that no changed pixel needs, or -1.
  std::int32_t FreeIndex(int tableEntries) const {
    for (int index = 0; index < tableEntries; ++index)
      if (!used[index]) return index;
    return -1;
  }
};

constexpr int kLongRun = 16;  // pixels; found the best of 4 to 64 on supercompressed builds

// The wanted indices with the transparent one over every run of at least
// kLongRun pixels along a row that the screen already shows, and wherever
// the picture shows nothing.
void HideLongRuns(const BoxPixels& pixels, std::uint8_t transparent, GifFrame* image) {
  image->indices = pixels.see;
  const int width = image->width;
  for (std::size_t row = 0; row < pixels.see.size(); row += static_cast<std::size_t>(width)) {
    const std::uint8_t* shown = pixels.shown.data() + row;
    for (int x = 0; x < width;) {
      int end = x;
      while (end < width && shown[end] != 0) ++end;
      for (int at = x; at < end; ++at)
        if (end - x >= kLongRun || pixels.clear[row + at] != 0) image->indices[row + at] = transparent;
      x = end + 1;
    }
  }
}

// The indices coded, each pixel choosing between its index and its value in
// others where others is given.
std::vector<std::uint8_t> Code(std::vector<std::uint8_t>* indices, const std::vector<std::uint8_t>& others,
                               GifChoosing how, int codeSize, std::size_t limit, GifFullTable full, bool* filled) {
  if (others.empty()) return GifLzwEncode(indices->data(), indices->size(), codeSize, limit, full, filled);
  return GifLzwEncodeChoosing(indices->data(), others.data(), indices->size(), codeSize, limit, how, full, filled);
}

// The image coded. Where the coder's table fills, the rest of the image is
// coded both ways, the table started over and the table kept, and the
// smaller is kept. The size of the codes, or more than limit once they pass it.
std::size_t CodeImage(GifFrame* image, const std::vector<std::uint8_t>& others, GifChoosing how, std::size_t limit) {
  GifFrame kept = *image;
  bool filled = false;
  image->codes = Code(&image->indices, others, how, image->codeSize, limit, GifFullTable::kClear, &filled);
  if (!filled || image->codes.size() > limit) return image->codes.size();
  kept.codes = Code(&kept.indices, others, how, kept.codeSize, image->codes.size() - 1, GifFullTable::kKeep, nullptr);
  if (kept.codes.size() < image->codes.size()) *image = std::move(kept);
  return image->codes.size();
}

// The image over the box, coded: the wanted indices, with the transparent
// index where the rule for unchanged pixels chooses it and wherever the
// picture shows nothing. The size of its codes, or more than limit once they
// pass it.
std::size_t CutImage(const BoxPixels& pixels, std::int32_t transparent, Unchanged rule, std::size_t limit,
                     GifFrame* image) {
  const Box& box = pixels.box;
  *image = GifFrame{};
  image->left = box.left;
  image->top = box.top;
  image->width = box.right - box.left;
  image->height = box.bottom - box.top;
  std::size_t count = pixels.see.size();
  // The code size is that of the pixels as first chosen; an unchanged pixel
  // may be drawn instead only with an index that fits it.
  int highest = 1;
  const std::uint8_t hidden = static_cast<std::uint8_t>(transparent);
  if (rule == Unchanged::kDrawn) {
    image->transparentIndex = -1;
    image->indices = pixels.see;
    highest = std::max(highest, pixels.highestSeen);
  } else if (rule == Unchanged::kTransparentInLongRuns) {
    image->transparentIndex = transparent;
    HideLongRuns(pixels, hidden, image);
    highest = std::max({highest, static_cast<int>(transparent), pixels.highestSeen});
  } else {
    image->transparentIndex = transparent;
    image->indices.resize(count);
    for (std::size_t i = 0; i < count; ++i)
      image->indices[i] = static_cast<std::uint8_t>((pixels.see[i] & ~pixels.shown[i]) | (hidden & pixels.shown[i]));
    highest = std::max({highest, static_cast<int>(transparent), pixels.highestChanged});
  }
  int bits = 1;
  while ((1 << bits) <= highest) ++bits;
  image->codeSize = GifCodeSizeFor(bits);
  if (rule != Unchanged::kChosenGrowing && rule != Unchanged::kChosenLongest)
    return CodeImage(image, {}, GifChoosing{}, limit);
  // A pixel the screen shows may be drawn instead, with an index that fits.
  std::vector<std::uint8_t> others(count);
  const int fits = 1 << bits;
  for (std::size_t i = 0; i < count; ++i) {
    std::uint8_t drawable = static_cast<std::uint8_t>(~pixels.clear[i] & (pixels.see[i] < fits ? 0xFF : 0));
    others[i] = static_cast<std::uint8_t>((pixels.see[i] & drawable) | (image->indices[i] & ~drawable));
  }
  return CodeImage(image, others, rule == Unchanged::kChosenGrowing ? GifChoosing::kGrowing : GifChoosing::kLongest,
                   limit);
}

// Whether leaving pixels the screen shows transparent may code smaller than
// drawing them all. The coder's strings break where the value changes from
// one pixel to the next, so this counts the changes of the drawn image, and
// the fewest that choosing for each such pixel its drawn value or the
// transparent index can leave. Where choice removes few of them and the
// codes would be no narrower, drawing wins, or loses by only a few bytes.
bool TransparencyMayPay(const BoxPixels& pixels, std::uint8_t transparent) {
  int narrowest = ImageCodeSize(std::max<int>(transparent, pixels.highestChanged));
  if (narrowest < ImageCodeSize(pixels.highestSeen)) return true;
  constexpr std::uint32_t kNever = 1u << 30;
  std::uint32_t drawnChanges = 0;
  // The fewest changes so far with the last pixel drawn, and with it transparent.
  std::uint32_t endingDrawn = pixels.clear[0] != 0 ? kNever : 0;
  std::uint32_t endingHidden = pixels.shown[0] != 0 ? 0 : kNever;
  for (std::size_t i = 1; i < pixels.see.size(); ++i) {
    const std::uint32_t changed = pixels.see[i - 1] != pixels.see[i] ? 1 : 0;
    const std::uint32_t leavesHidden = pixels.see[i] != transparent ? 1 : 0;
    const std::uint32_t entersHidden = pixels.see[i - 1] != transparent ? 1 : 0;
    drawnChanges += changed;
    std::uint32_t drawn = std::min(endingDrawn + changed, endingHidden + leavesHidden);
    std::uint32_t hidden = std::min(endingDrawn + entersHidden, endingHidden);
    endingDrawn = pixels.clear[i] != 0 ? kNever : drawn;
    endingHidden = pixels.shown[i] != 0 ? hidden : kNever;
  }
  // Measured over every effect in six colour modes: where choice removed
  // fewer than one change in 50, the other rules won a few bytes in all.
  std::uint64_t fewest = std::min(endingDrawn, endingHidden);
  return 50 * fewest < 49 * static_cast<std::uint64_t>(drawnChanges);
}

// The smallest of the images the rules for unchanged pixels make; false
// when none can show the wanted picture.
bool ChooseImage(const BoxPixels& pixels, int tableEntries, GifFrame* chosen) {
  std::int32_t transparent = pixels.FreeIndex(tableEntries);
  if (transparent < 0 && pixels.mustSeeThrough) return false;
  std::size_t best = SIZE_MAX;
  if (!pixels.mustSeeThrough) {
    best = CutImage(pixels, transparent, Unchanged::kDrawn, best, chosen);
    if (transparent < 0 || !TransparencyMayPay(pixels, static_cast<std::uint8_t>(transparent))) return true;
  }
  // When drawing every pixel codes smaller than leaving the unchanged ones
  // to choice, the other rules for them are not tried.
  bool drawnBest = !pixels.mustSeeThrough;
  for (Unchanged rule : {Unchanged::kChosenLongest, Unchanged::kChosenGrowing, Unchanged::kTransparent,
                         Unchanged::kTransparentInLongRuns}) {
    if (drawnBest && rule != Unchanged::kChosenLongest && rule != Unchanged::kChosenGrowing) continue;
    GifFrame image;
    std::size_t size = CutImage(pixels, transparent, rule, best, &image);
    if (size < best) {
      best = size;
      drawnBest = false;
      *chosen = std::move(image);
    }
  }
  return true;
}

// The optimised animation with the colours numbered in the order given;
// false where no image can show a wanted picture.
bool OptimiseInOrder(const GifAnimation& plain, Geometry geometry, const ColourStats& stats, const ColourOrder& order,
                     GifAnimation* optimised) {
  optimised->width = geometry.width;
  optimised->height = geometry.height;
  optimised->comments = plain.comments;
  optimised->frames.clear();
  optimised->frames.reserve(plain.frames.size());
  RenumberColours(stats, order, plain, &geometry, optimised);

  PlainReplay replay{plain, geometry, {}, {}, {}};
  replay.Start();
  Screen screen(static_cast<std::size_t>(geometry.width) * geometry.height, kClear);
  for (const GifFrame& frame : plain.frames) {
    Box changed;
    Box toClear;
    if (!FindChanges(replay, screen, &changed, &toClear)) return false;
    // Clearing what the next picture leaves empty takes a background
    // disposal over a box that covers it; otherwise the image stays.
    BoxPixels pixels;
    pixels.box = changed;
    pixels.box.Add(toClear);
    if (pixels.box.Empty()) pixels.box = {0, 0, 1, 1};  // a picture like the last still needs its image and delay
    pixels.Read(replay, screen);
    GifFrame image;
    if (!ChooseImage(pixels, 1 << optimised->depth, &image)) return false;
    image.delay = frame.delay;
    image.disposal = toClear.Empty() ? kGifDisposalKeep : kGifDisposalBackground;
    // Whichever image was chosen, it leaves the wanted picture inside its
    // box, and outside the box the screen showed it already; so the screen
    // the next image meets depends only on the boxes, not on the codes.
    for (int y = pixels.box.top; y < pixels.box.bottom; ++y) {
      std::size_t at = geometry.At(pixels.box.left, y);
      std::copy_n(replay.wanted.begin() + static_cast<std::ptrdiff_t>(at), pixels.box.right - pixels.box.left,
                  screen.begin() + static_cast<std::ptrdiff_t>(at));
    }
    Dispose(&screen, geometry, image);
    optimised->frames.push_back(std::move(image));
    replay.Advance();
  }
  return true;
}

// The bytes in which two optimisations of one animation can differ: the
// colour table and the coded images in their sub-blocks.
std::size_t VaryingBytes(const GifAnimation& optimised) {
  std::size_t bytes = std::size_t{3} << optimised.depth;
  for (const GifFrame& frame : optimised.frames) bytes += frame.codes.size() + (frame.codes.size() + 254) / 255;
  return bytes;
}

}  // namespace

int GifOptimise(const GifAnimation& plain, GifAnimation* optimised) {
  if (plain.frames.empty()) return 0;
  Geometry geometry{plain.width, plain.height, {}};
  for (const GifFrame& frame : plain.frames) {
    if (frame.transparentIndex >= 256 || frame.left != 0 || frame.top != 0) return 0;
    geometry.width = std::max(geometry.width, frame.width);
    geometry.height = std::max(geometry.height, frame.height);
  }
  // Colours of one colour share a number, since a decoder shows them alike.
  for (int index = 0; index < 256; ++index) {
    int first = 0;
    while (std::memcmp(plain.palette + 3 * first, plain.palette + 3 * index, 3) != 0) ++first;
    geometry.renumber[index] = static_cast<std::uint8_t>(first);
  }
  // The colours an image needs are best numbered low, so that it is coded
  // with few bits. Numbered by the last picture that changes pixels to them,
  // latest first, they suit the small images at the end of an animation;
  // numbered by the first, earliest first, those at its start. Either way
  // ties go to the colours more pixels change to, then to those shown more.
  ColourStats stats = CountColours(plain, geometry);
  ColourOrder latest = OrderColours(stats, [&](int a, int b) { return stats.lastChange[a] > stats.lastChange[b]; });
  if (!OptimiseInOrder(plain, geometry, stats, latest, optimised)) return 0;
  ColourOrder earliest =
      OrderColours(stats, [&](int a, int b) { return stats.firstChange[a] < stats.firstChange[b]; });
  if (NumberingCost(stats, earliest) >= NumberingCost(stats, latest)) return 1;
  // The estimate is only an estimate: where it favours the earliest first,
  // both are coded and the smaller kept.
  GifAnimation other;
  if (OptimiseInOrder(plain, geometry, stats, earliest, &other) && VaryingBytes(other) < VaryingBytes(*optimised))
    *optimised = std::move(other);
  return 1;
}
