// Runs the fire once at the still's size with the default colours and keeps
// its last recorded canvas as the still that Inferno's preview shows:
// an 8-bit bitmap of the store with the default ramp as its palette,
// deflated behind the still's head. Runs on the build machine; the DLL's
// resource compiler embeds the .cpx file, and the headless build compiles the
// same bytes in from the .cpp file.
//
//   make_fire_still <still.cpx> <still.cpp>
#include <zlib.h>

#include <cstdio>
#include <cstring>
#include <vector>

#include "effects/fire.h"
#include "effects/fire_still.h"

namespace {

// The canvas as a bitmap block: head, the ramp as colour table, rows.
std::vector<std::uint8_t> CanvasBitmap(const InfernoState& state) {
  const DibHead* canvas = state.canvas;
  DibHead head{};
  head.biSize = kDibHeadSize;
  head.biWidth = canvas->biWidth;
  head.biHeight = canvas->biHeight;
  head.biPlanes = 1;
  head.biBitCount = 8;
  head.biSizeImage = static_cast<std::uint32_t>(DibStride(8, canvas->biWidth) * canvas->biHeight);
  head.biClrUsed = 256;
  head.biClrImportant = 256;
  std::vector<std::uint8_t> block(sizeof head);
  std::memcpy(block.data(), &head, sizeof head);
  for (const auto& entry : state.ramp) {
    const std::uint8_t quad[4] = {entry[2], entry[1], entry[0], 0};
    block.insert(block.end(), quad, quad + 4);
  }
  const std::uint8_t* rows = DibRows(canvas);
  block.insert(block.end(), rows, rows + head.biSizeImage);
  return block;
}

std::vector<std::uint8_t> Pack(const std::vector<std::uint8_t>& raw) {
  uLongf packedSize = compressBound(raw.size());
  std::vector<std::uint8_t> packed(packedSize);
  if (compress2(packed.data(), &packedSize, raw.data(), raw.size(), Z_BEST_COMPRESSION) != Z_OK) return {};
  packed.resize(packedSize);
  FireStillHead head{};
  std::memcpy(head.magic, kFireStillMagic, sizeof head.magic);
  head.rawSize = static_cast<std::uint32_t>(raw.size());
  head.packedSize = static_cast<std::uint32_t>(packed.size());
  head.version = 1;
  std::vector<std::uint8_t> still(sizeof head);
  std::memcpy(still.data(), &head, sizeof head);
  still.insert(still.end(), packed.begin(), packed.end());
  return still;
}

bool WriteStill(const char* path, const std::vector<std::uint8_t>& still) {
  std::FILE* file = std::fopen(path, "wb");
  if (file == nullptr) return false;
  bool written = std::fwrite(still.data(), 1, still.size(), file) == still.size();
  return std::fclose(file) == 0 && written;
}

bool WriteSource(const char* path, const std::vector<std::uint8_t>& still) {
  std::FILE* file = std::fopen(path, "w");
  if (file == nullptr) return false;
  std::fprintf(file, "// Written by make_fire_still at build time: the still of fire.\n");
  std::fprintf(file, "#include \"plugin/resource_data.h\"\n\nnamespace {\n\nconst std::uint8_t kFireStill[] = {");
  for (std::size_t i = 0; i < still.size(); ++i) std::fprintf(file, "%s%u,", i % 24 == 0 ? "\n" : "", still[i]);
  std::fprintf(file, "\n};\n\n}  // namespace\n\n");
  std::fprintf(file, "extern const BuiltResource kBuiltResources[] = {{\"CPX\", %d, kFireStill, sizeof kFireStill}};\n",
               kFireStillId);
  std::fprintf(file, "extern const int kBuiltResourceCount = 1;\n");
  return std::fclose(file) == 0;
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 3) {
    std::fprintf(stderr, "usage: make_fire_still <still.cpx> <still.cpp>\n");
    return 2;
  }
  InfernoState state{};
  if (InitFire(&state, kFireStillWidth, kFireStillHeight, kFireBlack, kFireRed, kFireYellow) == 0) return 1;
  std::vector<std::uint8_t> still = Pack(CanvasBitmap(state));
  FreeFire(&state);
  if (still.empty() || !WriteStill(argv[1], still) || !WriteSource(argv[2], still)) {
    std::fprintf(stderr, "make_fire_still: cannot write the still\n");
    return 1;
  }
  return 0;
}
