// Draws the tiles that ship with the plug-in and writes them as C++ sources
// of 24-bit bitmap blocks (40-byte head, bottom-up rows, strides rounded to
// 4 bytes): the built-in tile that stands in when no group can be read, and
// the tiles of the primary group, which our hosts write to the data folder
// as an installer would. Every tile is periodic, so it repeats seamlessly.
// Runs on the build machine.
//
//   make_tiles <builtin_tile.cpp> <primary_tiles.cpp>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <functional>
#include <string>
#include <vector>

namespace {

constexpr double kPi = 3.14159265358979323846;

struct Colour {
  double r, g, b;
};

Colour Mix(Colour a, Colour b, double t) {
  t = t < 0 ? 0 : t > 1 ? 1 : t;
  return {a.r + (b.r - a.r) * t, a.g + (b.g - a.g) * t, a.b + (b.b - a.b) * t};
}

struct Tile {
  const char* name;
  int width;
  int height;
  std::function<Colour(double x, double y)> paint;  // x, y in pixels from the top left
};

// Smooth periodic noise: a few sine waves whose periods divide the tile.
double Waves(double x, double y, int width, int height, int seed) {
  double sum = 0;
  for (int k = 1; k <= 4; ++k) {
    double fx = 2 * kPi * ((seed + k) % 3 + k) / width;
    double fy = 2 * kPi * ((seed * 7 + k) % 4 + 1) / height;
    sum += std::sin(fx * x + fy * y + seed * 1.7 + k) / k;
  }
  return sum;
}

Colour Lattice(double x, double y) {
  // Soft blue diamonds on pale grey: the built-in tile.
  double u = std::fabs(std::fmod(x + y, 45.0) - 22.5) / 22.5;
  double v = std::fabs(std::fmod(x - y + 90.0, 45.0) - 22.5) / 22.5;
  double edge = std::fmin(u, v);
  return Mix({60, 90, 150}, {215, 222, 232}, std::pow(edge, 0.6));
}

Colour Bricks(double x, double y) {
  int row = static_cast<int>(y) / 16;
  double shifted = std::fmod(x + (row % 2) * 16.0, 32.0);
  double inRow = std::fmod(y, 16.0);
  bool mortar = inRow < 2 || shifted < 2;
  if (mortar) return {190, 185, 175};
  double grain = 0.5 + 0.5 * std::sin(x * 0.9 + y * 2.3 + row);
  return Mix({150, 50, 35}, {185, 80, 55}, grain);
}

Colour Checks(double x, double y) {
  bool dark = (static_cast<int>(x) / 24 + static_cast<int>(y) / 24) % 2 == 0;
  return dark ? Colour{40, 40, 48} : Colour{230, 230, 220};
}

Colour Ripples(double x, double y) {
  double dx = x - 32, dy = y - 32;
  double ring = std::sin(std::sqrt(dx * dx + dy * dy) * 2 * kPi / 16.0);
  double across = std::sin(2 * kPi * x / 64) * std::sin(2 * kPi * y / 64);
  return Mix({10, 60, 120}, {120, 200, 240}, 0.5 + 0.3 * ring + 0.2 * across);
}

Colour Dots(double x, double y) {
  double d = 1e9;
  for (double centre : {10.0, 30.0}) {
    double dx = std::fabs(x - centre), dy = std::fabs(y - centre);
    d = std::fmin(d, std::hypot(std::fmin(dx, 40 - dx), std::fmin(dy, 40 - dy)));
  }
  return Mix({30, 140, 70}, {235, 245, 225}, (d - 5.0) / 2.0);
}

Colour Wood(double x, double y) {
  double grain = y + 4.0 * std::sin(2 * kPi * x / 96.0) + 2.0 * Waves(x, y, 96, 48, 3);
  double ring = 0.5 + 0.5 * std::sin(2 * kPi * grain / 8.0);
  return Mix({120, 72, 35}, {196, 142, 86}, ring * ring);
}

Colour Stripes(double x, double y) {
  double t = std::fmod(x + y, 32.0) / 32.0;
  double band = 0.5 + 0.5 * std::cos(2 * kPi * t);
  return Mix({110, 80, 10}, {245, 205, 80}, band);
}

Colour Weave(double x, double y) {
  int cellX = static_cast<int>(x) / 12, cellY = static_cast<int>(y) / 12;
  bool overX = (cellX + cellY) % 2 == 0;
  double along = overX ? std::fmod(y, 12.0) : std::fmod(x, 12.0);
  double shade = std::sin(kPi * along / 12.0);
  Colour thread = overX ? Colour{120, 60, 150} : Colour{200, 150, 220};
  return Mix({40, 20, 50}, thread, 0.35 + 0.65 * shade);
}

Colour Marble(double x, double y) {
  double turbulence = Waves(x, y, 80, 80, 11) + 0.5 * Waves(2 * x, 2 * y, 80, 80, 5);
  double vein = std::fabs(std::sin(2 * kPi * (x + y) / 80.0 + 1.6 * turbulence));
  return Mix({90, 90, 100}, {240, 238, 232}, std::pow(vein, 0.35));
}

const Tile kBuiltin = {"lattice", 90, 90, Lattice};

const std::vector<Tile> kPrimaryGroup = {
    {"bricks", 64, 32, Bricks},   {"checks", 48, 48, Checks},   {"ripples", 64, 64, Ripples},
    {"dots", 40, 40, Dots},       {"wood", 96, 48, Wood},       {"stripes", 32, 32, Stripes},
    {"weave", 48, 48, Weave},     {"marble", 80, 80, Marble},
};

std::uint8_t Channel(double value) {
  return static_cast<std::uint8_t>(value < 0 ? 0 : value > 255 ? 255 : value + 0.5);
}

void Put32(std::vector<std::uint8_t>& bytes, std::uint32_t value) {
  for (int i = 0; i < 4; ++i) bytes.push_back(static_cast<std::uint8_t>(value >> (8 * i)));
}

void Put16(std::vector<std::uint8_t>& bytes, std::uint16_t value) {
  bytes.push_back(static_cast<std::uint8_t>(value));
  bytes.push_back(static_cast<std::uint8_t>(value >> 8));
}

// The bitmap block: the information head, then the rows bottom-up, blue,
// green, red, each sample the mean of 4 by 4 points in the pixel.
std::vector<std::uint8_t> BitmapBlock(const Tile& tile) {
  int stride = (24 * tile.width + 31) / 32 * 4;
  std::vector<std::uint8_t> bytes;
  Put32(bytes, 40);
  Put32(bytes, static_cast<std::uint32_t>(tile.width));
  Put32(bytes, static_cast<std::uint32_t>(tile.height));
  Put16(bytes, 1);
  Put16(bytes, 24);
  Put32(bytes, 0);
  Put32(bytes, static_cast<std::uint32_t>(stride * tile.height));
  for (int i = 0; i < 4; ++i) Put32(bytes, 0);
  for (int row = tile.height - 1; row >= 0; --row) {
    std::size_t start = bytes.size();
    for (int x = 0; x < tile.width; ++x) {
      Colour sum{0, 0, 0};
      for (int sy = 0; sy < 4; ++sy)
        for (int sx = 0; sx < 4; ++sx) {
          Colour c = tile.paint(x + (sx + 0.5) / 4, row + (sy + 0.5) / 4);
          sum = {sum.r + c.r / 16, sum.g + c.g / 16, sum.b + c.b / 16};
        }
      bytes.push_back(Channel(sum.b));
      bytes.push_back(Channel(sum.g));
      bytes.push_back(Channel(sum.r));
    }
    bytes.resize(start + static_cast<std::size_t>(stride), 0);
  }
  return bytes;
}

void WriteArray(std::FILE* out, const char* name, const std::vector<std::uint8_t>& bytes) {
  std::fprintf(out, "alignas(8) const std::uint8_t %s[] = {", name);
  for (std::size_t i = 0; i < bytes.size(); ++i) std::fprintf(out, "%s%u,", i % 24 == 0 ? "\n    " : "", bytes[i]);
  std::fprintf(out, "\n};\n");
}

bool WriteBuiltin(const char* path) {
  std::FILE* out = std::fopen(path, "w");
  if (out == nullptr) return false;
  std::fprintf(out, "// Made by tools/make_tiles: the built-in tile.\n#include \"fills/matrix_tile.h\"\n\n");
  std::vector<std::uint8_t> block = BitmapBlock(kBuiltin);
  WriteArray(out, "kBuiltinTileBlock", block);
  std::fprintf(out, "const std::size_t kBuiltinTileBlockSize = %zu;\n", block.size());
  return std::fclose(out) == 0;
}

bool WritePrimaryGroup(const char* path) {
  std::FILE* out = std::fopen(path, "w");
  if (out == nullptr) return false;
  std::fprintf(out, "// Made by tools/make_tiles: the tiles of the primary group.\n#include \"host/primary_groups.h\"\n\n"
                    "namespace {\n\n");
  std::string table;
  for (std::size_t i = 0; i < kPrimaryGroup.size(); ++i) {
    std::string name = "k" + std::string(kPrimaryGroup[i].name);
    std::vector<std::uint8_t> block = BitmapBlock(kPrimaryGroup[i]);
    WriteArray(out, name.c_str(), block);
    table += "    {" + name + ", " + std::to_string(block.size()) + "},\n";
  }
  std::fprintf(out, "\n}  // namespace\n\nconst PrimaryTile kPrimaryTiles[] = {\n%s};\n", table.c_str());
  std::fprintf(out, "const int kPrimaryTileCount = %zu;\n", kPrimaryGroup.size());
  return std::fclose(out) == 0;
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 3) {
    std::fprintf(stderr, "usage: make_tiles <builtin_tile.cpp> <primary_tiles.cpp>\n");
    return 2;
  }
  if (!WriteBuiltin(argv[1]) || !WritePrimaryGroup(argv[2])) {
    std::fprintf(stderr, "make_tiles: cannot write the tile sources\n");
    return 1;
  }
  return 0;
}
