// The variable-width LZW coder of GIF images: a plain coder, and two that
// choose between two values a pixel may show.
#include "host/gif_lzw.h"

namespace {

constexpr int kLzwMaxBits = 12;
constexpr int kLzwTableSize = 1 << kLzwMaxBits;  // 4096 codes

// Codes in least-significant-bit-first order, as GIF packs them, four bytes
// at a time into a buffer that grows by doubling.
struct BitPacker {
  std::vector<std::uint8_t>* out;
  std::size_t written = 0;
  std::uint64_t pending = 0;
  int pendingBits = 0;

  // Most images code to well under a quarter of their pixels in bytes.
  BitPacker(std::vector<std::uint8_t>* buffer, std::size_t pixels) : out(buffer) { out->resize(pixels / 4 + 64); }
  void Put(int code, int width) {
    pending |= static_cast<std::uint64_t>(code) << pendingBits;
    pendingBits += width;
    if (pendingBits >= 32) {
      if (written + 4 > out->size()) out->resize(2 * out->size());
      std::uint8_t* next = out->data() + written;
      for (int byte = 0; byte < 4; ++byte) next[byte] = static_cast<std::uint8_t>(pending >> 8 * byte);
      written += 4;
      pending >>= 32;
      pendingBits -= 32;
    }
  }
  // Whole bytes so far.
  std::size_t Size() const { return written + static_cast<std::size_t>(pendingBits / 8); }
  void Finish() {
    out->resize(Size() + (pendingBits % 8 != 0 ? 1 : 0));
    for (std::size_t at = written; pendingBits > 0; ++at, pendingBits -= 8, pending >>= 8)
      (*out)[at] = static_cast<std::uint8_t>(pending);
  }
};

// The string table: the code of each string one index longer than a code's
// own, looked up directly by prefix code and index; 0 where there is none,
// since no added code is that low. It is kept from one image to the next
// (each thread its own) with every entry 0, and clearing resets only the
// entries that were filled, which costs far less than clearing the whole table.
struct LzwDictionary {
  std::vector<std::uint16_t> next;
  std::vector<std::uint32_t> filled;
  int indexBits = 0;

  // Indices must be below 2^minimumCodeSize.
  void Start(int minimumCodeSize) {
    indexBits = minimumCodeSize;
    std::size_t size = std::size_t{kLzwTableSize} << minimumCodeSize;
    if (next.size() < size) next.resize(size);
    filled.reserve(kLzwTableSize);
  }
  std::size_t SlotOf(int prefix, int index) const { return static_cast<std::size_t>(prefix) << indexBits | index; }
  int Find(int prefix, int index) const { return next[SlotOf(prefix, index)]; }
  void Add(int prefix, int index, int code) {
    std::size_t slot = SlotOf(prefix, index);
    next[slot] = static_cast<std::uint16_t>(code);
    filled.push_back(static_cast<std::uint32_t>(slot));
  }
  void Clear() {
    for (std::uint32_t slot : filled) next[slot] = 0;
    filled.clear();
  }
};

LzwDictionary& ThreadDictionary() {
  thread_local LzwDictionary dictionary;
  return dictionary;
}

// The code the dictionary has for the string of code grown by the pixel at
// position, taking its index or else its other value; 0 where neither grows it.
int Grow(const LzwDictionary& dictionary, const std::uint8_t* indices, const std::uint8_t* others,
         std::size_t position, int code) {
  int grown = dictionary.Find(code, indices[position]);
  return grown != 0 ? grown : dictionary.Find(code, others[position]);
}

// Whether, from start on, the strings in the dictionary reach further from
// code than from rival, each pixel taking its index or else its other value.
// The two are followed side by side, only as far as the shorter goes.
bool ReachesFurther(const LzwDictionary& dictionary, const std::uint8_t* indices, const std::uint8_t* others,
                    std::size_t start, std::size_t count, int code, int rival) {
  for (std::size_t position = start; position < count; ++position) {
    code = Grow(dictionary, indices, others, position, code);
    if (code == 0) return false;
    rival = Grow(dictionary, indices, others, position, rival);
    if (rival == 0) return true;
  }
  return false;
}

// The plain coder, and the growing one. When choosing, a pixel whose other
// value makes the current string longer takes it, and chosen records the
// value each pixel took.
template <bool kChoosing>
std::vector<std::uint8_t> LzwCode(const std::uint8_t* indices, const std::uint8_t* others, std::uint8_t* chosen,
                                  std::size_t count, int minimumCodeSize, std::size_t limit, GifFullTable full,
                                  bool* filled) {
  std::vector<std::uint8_t> out;
  BitPacker packer(&out, count);
  const int clearCode = 1 << minimumCodeSize;
  const int endCode = clearCode + 1;
  int nextCode = endCode + 1;
  int width = minimumCodeSize + 1;
  packer.Put(clearCode, width);
  if (count == 0) {
    packer.Put(endCode, width);
    packer.Finish();
    return out;
  }

  LzwDictionary& dictionary = ThreadDictionary();
  dictionary.Start(minimumCodeSize);
  int prefix = indices[0];
  for (std::size_t position = 1; position < count; ++position) {
    int index = indices[position];
    int extended = dictionary.Find(prefix, index);
    if (kChoosing && others[position] != index) {
      // Where both values grow the string, the one that grows it further.
      int alternative = dictionary.Find(prefix, others[position]);
      if (alternative != 0 &&
          (extended == 0 || ReachesFurther(dictionary, indices, others, position + 1, count, alternative, extended))) {
        extended = alternative;
        chosen[position] = others[position];
      }
    }
    if (extended != 0) {
      prefix = extended;
      continue;
    }
    packer.Put(prefix, width);
    // A pixel that starts a string takes the value that starts the longer one.
    if (kChoosing && others[position] != index &&
        ReachesFurther(dictionary, indices, others, position + 1, count, others[position], index)) {
      index = others[position];
      chosen[position] = others[position];
    }
    if (nextCode < kLzwTableSize) {
      dictionary.Add(prefix, index, nextCode);
      // The decoder adds each entry one code later than we do, so it widens
      // its reads exactly when our newest code no longer fits.
      if (nextCode == 1 << width) ++width;
      ++nextCode;
    } else {
      *filled = true;
      if (full == GifFullTable::kClear) {
        // Start over, as the decoder will on this code.
        packer.Put(clearCode, width);
        dictionary.Clear();
        nextCode = endCode + 1;
        width = minimumCodeSize + 1;
      }
    }
    prefix = index;
    if (packer.Size() > limit) break;
  }
  dictionary.Clear();
  packer.Put(prefix, width);
  // Reading that last code, the decoder adds its own entry, which may widen
  // the end code.
  if (nextCode == 1 << width && width < kLzwMaxBits) ++width;
  packer.Put(endCode, width);
  packer.Finish();
  return out;
}


// The coder that takes the longest strings, where each pixel may take either
// of two values. Among strings of one length a pixel keeps the value of the
// pixel before it, so that runs stay runs and the strings the dictionary
// gains are those that grow runs; after that it keeps its index.
struct LongestCoder {
  // A string of the dictionary over the pixels before end.
  struct Match {
    int code;
    std::size_t end;
  };
  // What the coder knows of each string it added.
  struct Strings {
    std::uint16_t parent[kLzwTableSize];  // the string one value shorter
    std::uint8_t first[kLzwTableSize];
    std::uint8_t last[kLzwTableSize];
  };

  std::uint8_t* indices;
  const std::uint8_t* others;
  std::size_t count;
  int minimumCodeSize;
  LzwDictionary& dictionary = ThreadDictionary();
  Strings& strings = ThreadStrings();

  static Strings& ThreadStrings() {
    thread_local Strings threadStrings;
    return threadStrings;
  }
  int ClearCode() const { return 1 << minimumCodeSize; }
  int First(int code) const { return code < ClearCode() ? code : strings.first[code]; }
  int Last(int code) const { return code < ClearCode() ? code : strings.last[code]; }

  // The values the pixel at position may take, the one equal to after (the
  // value of the pixel before) first; how many there are (1 or 2).
  int Values(std::size_t position, int after, std::uint8_t values[2]) const {
    values[0] = indices[position];
    values[1] = others[position];
    if (values[0] == values[1]) return 1;
    if (values[1] == after) std::swap(values[0], values[1]);
    return 2;
  }

  bool Takes(std::size_t position, int value) const {
    return indices[position] == value || others[position] == value;
  }

  // Whether the pixels from position on may take the values of the string
  // code, of the length given, and then value.
  bool Fits(int code, std::size_t position, std::size_t length, int value) const {
    std::size_t at = position + length;
    if (at >= count || !Takes(at, value)) return false;
    for (; code >= ClearCode(); code = strings.parent[code])
      if (!Takes(--at, strings.last[code])) return false;
    return Takes(--at, code);
  }

  // The longest string that grows the string code, which ends before
  // position. The search goes depth first, preferred values first, and a
  // string found later replaces the one found first only when it is longer.
  // It follows one path down at a time and keeps the strings of the other
  // values it passed to come back to. Each string of the dictionary is met
  // at most once, so the dictionary's size bounds the search.
  Match Extend(int code, std::size_t position) const {
    struct Pending {
      int code;
      std::size_t end;
      int last;
    };
    thread_local Pending pending[kLzwTableSize];
    int waiting = 0;
    Match best{code, position};
    std::size_t at = position;
    int last = Last(code);
    while (true) {
      for (; at < count; ++at) {
        std::uint8_t values[2];
        if (Values(at, last, values) == 2) {
          int other = dictionary.Find(code, values[1]);
          if (other != 0) pending[waiting++] = {other, at + 1, values[1]};
        }
        int grown = dictionary.Find(code, values[0]);
        if (grown == 0) break;
        code = grown;
        last = values[0];
        if (at + 1 > best.end) best = {code, at + 1};
      }
      if (waiting == 0) return best;
      const Pending& next = pending[--waiting];
      code = next.code;
      at = next.end;
      last = next.last;
      if (at > best.end) best = {code, at};
    }
  }

  // The longest string from position, where the pixel before has the value after.
  Match LongestFrom(std::size_t position, int after) const {
    std::uint8_t values[2];
    int choices = Values(position, after, values);
    Match best = Extend(values[0], position + 1);
    if (choices == 2) {
      Match other = Extend(values[1], position + 1);
      if (other.end > best.end) best = other;
    }
    return best;
  }

  void Add(int code, int value, int nextCode) {
    dictionary.Add(code, value, nextCode);
    strings.parent[nextCode] = static_cast<std::uint16_t>(code);
    strings.first[nextCode] = static_cast<std::uint8_t>(First(code));
    strings.last[nextCode] = static_cast<std::uint8_t>(value);
  }

  // The values the string's pixels took, written back to indices.
  void WriteChosen(const Match& match) {
    std::size_t position = match.end;
    int code = match.code;
    for (; code >= ClearCode(); code = strings.parent[code]) indices[--position] = strings.last[code];
    indices[--position] = static_cast<std::uint8_t>(code);
  }

  std::vector<std::uint8_t> Code(std::size_t limit, GifFullTable full, bool* filled) {
    std::vector<std::uint8_t> out;
    BitPacker packer(&out, count);
    const int endCode = ClearCode() + 1;
    int nextCode = endCode + 1;
    int width = minimumCodeSize + 1;
    packer.Put(ClearCode(), width);
    dictionary.Start(minimumCodeSize);
    Match match{0, 0};
    std::size_t start = 0;  // where match begins
    if (count > 0) match = LongestFrom(0, -1);
    while (count > 0) {
      WriteChosen(match);
      packer.Put(match.code, width);
      if (match.end == count || packer.Size() > limit) break;
      if (nextCode == kLzwTableSize) {
        *filled = true;
        if (full == GifFullTable::kClear) {
          // Start over, as the decoder will on this code.
          packer.Put(ClearCode(), width);
          dictionary.Clear();
          nextCode = endCode + 1;
          width = minimumCodeSize + 1;
        }
        start = match.end;
        match = LongestFrom(match.end, Last(match.code));
        continue;
      }
      Match next = LongestFrom(match.end, Last(match.code));
      int value = First(next.code);
      Add(match.code, value, nextCode);
      // The string added now, this one and the next one's first value, is
      // the one string the next one could not use so far, and nothing grows
      // it yet. The next one may be it only where both start alike.
      std::size_t length = match.end - start;
      if (First(match.code) == value && length + 1 > next.end - match.end &&
          Fits(match.code, match.end, length, value))
        next = {nextCode, match.end + length + 1};
      if (nextCode == 1 << width) ++width;
      ++nextCode;
      start = match.end;
      match = next;
    }
    dictionary.Clear();
    if (nextCode == 1 << width && width < kLzwMaxBits) ++width;
    packer.Put(endCode, width);
    packer.Finish();
    return out;
  }
};

}  // namespace

std::vector<std::uint8_t> GifLzwEncode(const std::uint8_t* indices, std::size_t count, int minimumCodeSize,
                                       std::size_t limit, GifFullTable full, bool* filled) {
  bool ignored = false;
  filled = filled != nullptr ? filled : &ignored;
  *filled = false;
  return LzwCode<false>(indices, nullptr, nullptr, count, minimumCodeSize, limit, full, filled);
}

std::vector<std::uint8_t> GifLzwEncodeChoosing(std::uint8_t* indices, const std::uint8_t* others, std::size_t count,
                                               int minimumCodeSize, std::size_t limit, GifChoosing how,
                                               GifFullTable full, bool* filled) {
  bool ignored = false;
  filled = filled != nullptr ? filled : &ignored;
  *filled = false;
  if (how == GifChoosing::kGrowing)
    return LzwCode<true>(indices, others, indices, count, minimumCodeSize, limit, full, filled);
  LongestCoder coder{indices, others, count, minimumCodeSize};
  return coder.Code(limit, full, filled);
}
