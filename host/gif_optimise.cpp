// The optimiser works on a model of the decoder's screen: one cell per
// pixel holding a palette index, or kClear where nothing is shown (before the
// first image, and where a background disposal cleared an image). It replays
// the plain animation to know the picture wanted after every image, and
// builds each new image against the screen its own images leave behind.
#include "host/gif_optimise.h"

#include <algorithm>
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

// The screen, and the new number of each plain index. Indices of one colour
// share a number, since a decoder shows them alike; the colours are numbered
// from the most used, so that the table is only as large as the colours
// shown and small images can be coded with fewer bits.
struct Geometry {
  int width, height;
  std::uint8_t renumber[256];
  std::size_t At(int x, int y) const { return static_cast<std::size_t>(y) * width + x; }
};

void Draw(Screen* screen, const Geometry& geometry, const GifFrame& frame, bool plainIndices = true);
void Dispose(Screen* screen, const Geometry& geometry, const GifFrame& frame);

// Fills the renumbering and the optimised palette and depth. Colours are
// numbered by the last picture that changes pixels to them, latest first, so
// that the small images at the end of an animation need few bits; then by
// how many pixels change to them, then by how often they are shown.
void RenumberColours(const GifAnimation& plain, Geometry* geometry, GifAnimation* optimised) {
  for (int index = 0; index < 256; ++index) {
    int first = 0;
    while (std::memcmp(plain.palette + 3 * first, plain.palette + 3 * index, 3) != 0) ++first;
    geometry->renumber[index] = static_cast<std::uint8_t>(first);
  }
  std::size_t changes[256] = {};
  std::size_t uses[256] = {};
  std::size_t lastChange[256] = {};
  std::size_t number = 0;
  bool seeThrough = false;
  Screen before(static_cast<std::size_t>(geometry->width) * geometry->height, kClear);
  Screen picture = before;
  for (const GifFrame& frame : plain.frames) {
    seeThrough = seeThrough || frame.transparentIndex >= 0;
    Draw(&picture, *geometry, frame);
    for (std::size_t at = 0; at < picture.size(); ++at) {
      if (picture[at] == kClear) continue;
      ++uses[picture[at]];
      if (picture[at] == before[at]) continue;
      ++changes[picture[at]];
      lastChange[picture[at]] = number;
    }
    ++number;
    before = picture;
    Dispose(&picture, *geometry, frame);
  }
  int order[256];
  for (int index = 0; index < 256; ++index) order[index] = index;
  std::stable_sort(order, order + 256, [&](int a, int b) {
    if (lastChange[a] != lastChange[b]) return lastChange[a] > lastChange[b];
    return changes[a] != changes[b] ? changes[a] > changes[b] : uses[a] > uses[b];
  });
  int shown = 0;
  std::uint8_t numberOf[256] = {};
  std::memset(optimised->palette, 0, sizeof optimised->palette);
  for (; shown < 256 && uses[order[shown]] > 0; ++shown) {
    numberOf[order[shown]] = static_cast<std::uint8_t>(shown);
    std::memcpy(optimised->palette + 3 * shown, plain.palette + 3 * order[shown], 3);
  }
  for (int index = 0; index < 256; ++index) geometry->renumber[index] = numberOf[geometry->renumber[index]];
  // One more entry, free for transparency, where the pictures need it.
  int entries = std::min(256, shown + (seeThrough ? 1 : 0));
  optimised->depth = 1;
  while ((1 << optimised->depth) < entries) ++optimised->depth;
}

// An image drawn on the screen: its opaque pixels replace what is there. A
// plain image's indices are renumbered on the way.
void Draw(Screen* screen, const Geometry& geometry, const GifFrame& frame, bool plainIndices) {
  for (int y = 0; y < frame.height; ++y) {
    const std::uint8_t* row = frame.indices.data() + static_cast<std::size_t>(y) * frame.width;
    std::int16_t* cell = screen->data() + geometry.At(frame.left, frame.top + y);
    for (int x = 0; x < frame.width; ++x)
      if (row[x] != frame.transparentIndex) cell[x] = plainIndices ? geometry.renumber[row[x]] : row[x];
  }
}

// What the image's disposal leaves for the next one.
void Dispose(Screen* screen, const Geometry& geometry, const GifFrame& frame) {
  if (frame.disposal != kGifDisposalBackground) return;
  for (int y = 0; y < frame.height; ++y)
    std::fill_n(screen->begin() + static_cast<std::ptrdiff_t>(geometry.At(frame.left, frame.top + y)), frame.width, kClear);
}

// The plain animation replayed one image ahead: wanted is the picture after
// the current image, next the picture after the one that follows. The loop
// starts over, so the first picture follows the last.
struct PlainReplay {
  const GifAnimation& plain;
  Geometry geometry;
  Screen after;  // the screen once the current image is disposed of
  Screen wanted;
  Screen next;
  Screen first;
  std::size_t current = 0;

  void Start() {
    after.assign(static_cast<std::size_t>(geometry.width) * geometry.height, kClear);
    wanted = after;
    Draw(&wanted, geometry, plain.frames[0]);
    first = wanted;
    LookAhead();
  }
  void LookAhead() {
    if (current + 1 >= plain.frames.size()) {
      next = first;
      return;
    }
    after = wanted;
    Dispose(&after, geometry, plain.frames[current]);
    next = after;
    Draw(&next, geometry, plain.frames[current + 1]);
  }
  void Advance() {
    ++current;
    std::swap(wanted, next);
    LookAhead();
  }
};

// Pixels the image must change, and pixels that must be cleared after it
// because the next picture shows nothing there. False when the wanted
// picture shows nothing where the screen still shows something, which no
// image can draw.
bool FindChanges(const PlainReplay& replay, const Screen& screen, Box* changed, Box* toClear) {
  const Geometry& geometry = replay.geometry;
  for (int y = 0; y < geometry.height; ++y)
    for (int x = 0; x < geometry.width; ++x) {
      std::size_t at = geometry.At(x, y);
      std::int16_t want = replay.wanted[at];
      if (want != screen[at]) {
        if (want == kClear) return false;
        changed->Add(x, y);
      }
      if (want != kClear && replay.next[at] == kClear) toClear->Add(x, y);
    }
  return true;
}

// How an image treats the pixels the screen already shows: drawn again, or
// transparent, or transparent unless drawing lets the coder's current string
// grow.
enum class Unchanged { kDrawn, kTransparent, kTransparentOrDrawn };

// Whether two screens agree within the box.
bool SameInside(const Screen& a, const Screen& b, const Geometry& geometry, const Box& box) {
  for (int y = box.top; y < box.bottom; ++y) {
    std::size_t at = geometry.At(box.left, y);
    if (!std::equal(a.begin() + at, a.begin() + at + (box.right - box.left), b.begin() + at)) return false;
  }
  return true;
}

// The image over box, coded: the wanted indices, with the transparent index
// where the rule for unchanged pixels chooses it and wherever the picture
// shows nothing. The size of its codes, or more than limit once they pass it.
std::size_t CutImage(const PlainReplay& replay, const Screen& screen, const Box& box, std::int32_t transparent,
                     Unchanged rule, std::size_t limit, GifFrame* image) {
  const Geometry& geometry = replay.geometry;
  *image = GifFrame{};
  image->left = box.left;
  image->top = box.top;
  image->width = box.right - box.left;
  image->height = box.bottom - box.top;
  image->transparentIndex = rule == Unchanged::kDrawn ? -1 : transparent;
  std::size_t count = static_cast<std::size_t>(image->width) * image->height;
  image->indices.resize(count);
  std::vector<std::uint8_t> others(count);
  // The code size is that of the pixels as first chosen; an unchanged pixel
  // may be drawn instead only with an index that fits it.
  int highest = std::max(1, image->transparentIndex);
  std::size_t at = 0;
  for (int y = box.top; y < box.bottom; ++y)
    for (int x = box.left; x < box.right; ++x, ++at) {
      int want = replay.wanted[geometry.At(x, y)];
      int see = want == kClear ? transparent : want;
      bool unchanged = want == screen[geometry.At(x, y)] && rule != Unchanged::kDrawn;
      image->indices[at] = static_cast<std::uint8_t>(unchanged ? transparent : see);
      others[at] = static_cast<std::uint8_t>(see);
      highest = std::max<int>(highest, image->indices[at]);
    }
  int bits = 1;
  while ((1 << bits) <= highest) ++bits;
  for (std::size_t i = 0; i < count; ++i)
    if (others[i] >= 1 << bits || rule == Unchanged::kTransparent) others[i] = image->indices[i];
  image->codeSize = GifCodeSizeFor(bits);
  image->codes = GifLzwEncodeChoosing(image->indices.data(), others.data(), count, image->codeSize, limit);
  return image->codes.size();
}

// The lowest index of the table that no changed pixel of the box needs, or -1.
std::int32_t FreeIndex(const PlainReplay& replay, const Screen& screen, const Box& box, int tableEntries) {
  bool used[256] = {};
  for (int y = box.top; y < box.bottom; ++y)
    for (int x = box.left; x < box.right; ++x) {
      std::size_t at = replay.geometry.At(x, y);
      if (replay.wanted[at] != screen[at]) used[replay.wanted[at]] = true;
    }
  for (int index = 0; index < tableEntries; ++index)
    if (!used[index]) return index;
  return -1;
}

bool NeedsTransparency(const PlainReplay& replay, const Box& box) {
  for (int y = box.top; y < box.bottom; ++y)
    for (int x = box.left; x < box.right; ++x)
      if (replay.wanted[replay.geometry.At(x, y)] == kClear) return true;
  return false;
}

// The smaller of the image drawn whole and the image with its unchanged
// pixels transparent; false when neither can show the wanted picture.
bool ChooseImage(const PlainReplay& replay, const Screen& screen, const Box& box, int tableEntries, GifFrame* chosen) {
  bool mustSeeThrough = NeedsTransparency(replay, box);
  std::int32_t transparent = FreeIndex(replay, screen, box, tableEntries);
  if (transparent < 0 && mustSeeThrough) return false;
  // Drawing first: when drawing every pixel codes smaller than leaving the
  // unchanged ones to choice, leaving them all transparent is not tried.
  std::size_t best = SIZE_MAX;
  bool drawnBest = false;
  for (Unchanged rule : {Unchanged::kDrawn, Unchanged::kTransparentOrDrawn, Unchanged::kTransparent}) {
    if (rule == Unchanged::kDrawn ? mustSeeThrough : transparent < 0) continue;
    if (rule == Unchanged::kTransparent && drawnBest) continue;
    GifFrame image;
    std::size_t size = CutImage(replay, screen, box, transparent, rule, best, &image);
    if (size < best) {
      best = size;
      drawnBest = rule == Unchanged::kDrawn;
      *chosen = std::move(image);
    }
  }
  return true;
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
  *optimised = plain;
  optimised->frames.clear();
  optimised->width = geometry.width;
  optimised->height = geometry.height;
  RenumberColours(plain, &geometry, optimised);

  PlainReplay replay{plain, geometry, {}, {}, {}, {}, 0};
  replay.Start();
  Screen screen(static_cast<std::size_t>(geometry.width) * geometry.height, kClear);
  for (const GifFrame& frame : plain.frames) {
    Box changed;
    Box toClear;
    if (!FindChanges(replay, screen, &changed, &toClear)) return 0;
    // Clearing what the next picture leaves empty takes a background
    // disposal over a box that covers it; otherwise the image stays.
    Box box = changed;
    box.Add(toClear);
    if (box.Empty()) box = {0, 0, 1, 1};  // a picture like the last still needs its image and delay
    GifFrame image;
    if (!ChooseImage(replay, screen, box, 1 << optimised->depth, &image)) return 0;
    image.delay = frame.delay;
    image.disposal = toClear.Empty() ? kGifDisposalKeep : kGifDisposalBackground;
    Draw(&screen, geometry, image, false);
    // Outside the box the screen already showed the picture.
    if (!SameInside(screen, replay.wanted, geometry, box)) return 0;
    Dispose(&screen, geometry, image);
    optimised->frames.push_back(std::move(image));
    replay.Advance();
  }
  return 1;
}
