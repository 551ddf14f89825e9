#include "dialogkit/dialog_host.h"

#include "colour/palette.h"
#include "plugin/host_call.h"

namespace {

HostRecord* g_dialogHost = nullptr;

constexpr int kOrthogonal256Row = 6;  // the palette row whose swatches the colour box shows
constexpr std::uint64_t kPickBits = 24;

}  // namespace

HostRecord* DialogHost() { return g_dialogHost; }

void DialogHostSet(HostRecord* host) { g_dialogHost = host; }

int ColourPick(void* window, std::uint32_t* colour) {
  std::uint8_t palette[kPaletteBytes];
  FixedPaletteBuild(palette, nullptr, kOrthogonal256Row);
  ColourPickRecord record{};
  record.size = sizeof record;
  record.version = kInterfaceVersion;
  record.palette = palette;
  record.bits = kPickBits;
  record.colour = *colour;
  record.ownerWindow = window;
  if (HostCall(DialogHost(), kHostPickColour, 0, reinterpret_cast<std::int64_t>(&record)) == 0) return 0;
  *colour = record.colour;
  return 1;
}
