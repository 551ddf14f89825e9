#include "fills/fountain_record.h"

#include <cstring>

namespace {

// The fields both forms keep, with the name cut so its last byte stays zero.
template <typename To, typename From>
void CopyFountainFields(To* to, const From& from) {
  std::memcpy(to->magic, from.magic, sizeof to->magic);
  to->version = from.version;
  to->flags = from.flags;
  std::memcpy(to->name, from.name, sizeof to->name - 1);
  to->markerCount = from.markerCount;
  to->startColour = from.startColour;
  to->endColour = from.endColour;
  std::memcpy(to->markers, from.markers, sizeof to->markers);
}

}  // namespace

void FountainInit(FountainRecord* record, int form) {
  static constexpr std::uint32_t kGrey[] = {0x80808080};
  static constexpr std::uint32_t kRainbow[] = {0x20FF0000, 0x40FFFF00, 0x6000FF00, 0x8000FFFF,
                                               0xA00000FF, 0xC0FF00FF, 0xE0CC0099};
  std::memset(record->name, 0, sizeof record->name);
  record->preview = nullptr;
  std::memset(record->markers, 0, sizeof record->markers);
  constexpr std::size_t kStateOffset = offsetof(FountainRecord, selectedMarker);
  std::memset(reinterpret_cast<char*>(record) + kStateOffset, 0, sizeof(FountainRecord) - kStateOffset);
  std::memcpy(record->magic, kFountainMagic, sizeof record->magic);
  record->version = kFountainVersion;
  record->size = kFountainLongSize;
  record->startColour = 0;
  record->endColour = 0xFFFFFFFF;
  int count = 0;
  if (form == 1) {
    count = 1;
    std::memcpy(record->markers, kGrey, sizeof kGrey);
  } else if (form == 2) {
    count = 7;
    std::memcpy(record->markers, kRainbow, sizeof kRainbow);
  }
  record->markerCount = count;
}

void FountainToShort(const FountainRecord* record, FountainShortRecord* image) {
  std::memset(image, 0, sizeof *image);
  CopyFountainFields(image, *record);
  image->size = kFountainShortSize;
}

void FountainFromShort(const FountainShortRecord* image, FountainRecord* record) {
  std::memset(record, 0, sizeof *record);
  CopyFountainFields(record, *image);
  record->size = kFountainLongSize;
}
