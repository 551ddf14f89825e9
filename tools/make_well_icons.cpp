// Writes the icon strips of the three direction wells as 32-bit BMP files
// with alpha: square icons side by side in cell order, each as high as the
// strip. Each icon is an arrow from the centre toward its cell's place in the
// 3 by 3 grid. Runs on the build machine; the resource compiler embeds the
// files.
//
//   make_well_icons <eight-way.bmp> <four-way.bmp> <two-way.bmp>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <vector>

namespace {

constexpr int kIconSize = 25;  // one cell of a well
constexpr int kSamples = 4;    // per pixel and axis, for smooth edges

// Arrow colour, red, green, blue: dark enough for the face and the shadow.
constexpr std::uint8_t kArrowRed = 20, kArrowGreen = 36, kArrowBlue = 92;

// Direction of each cell from the grid's centre, x to the right, y down.
struct Direction {
  int dx, dy;
};
const Direction kEightWay[] = {{-1, -1}, {0, -1}, {1, -1}, {1, 0}, {-1, 0}, {-1, 1}, {0, 1}, {1, 1}};
const Direction kFourWay[] = {{0, -1}, {1, 0}, {-1, 0}, {0, 1}};
const Direction kTwoWay[] = {{-1, 0}, {1, 0}};

// Whether (u, v) lies on an arrow pointing along +u, centred at the origin:
// a shaft from -7 to 1 and a head from 1 to 8, in pixels.
bool OnArrow(double u, double v) {
  if (u >= -7.0 && u <= 1.5 && std::fabs(v) <= 1.75) return true;
  if (u >= 1.0 && u <= 8.0) return std::fabs(v) <= (8.0 - u) * 0.85;
  return false;
}

// Coverage 0..255 of the arrow for pixel (x, y) of an icon.
int ArrowCover(const Direction& direction, int x, int y) {
  double length = std::sqrt(double(direction.dx * direction.dx + direction.dy * direction.dy));
  double ux = direction.dx / length, uy = direction.dy / length;
  int inside = 0;
  for (int sy = 0; sy < kSamples; ++sy) {
    for (int sx = 0; sx < kSamples; ++sx) {
      // Icon centre at 12.5, 12.5: the middle of a 25-pixel cell.
      double px = x + (sx + 0.5) / kSamples - kIconSize / 2.0;
      double py = y + (sy + 0.5) / kSamples - kIconSize / 2.0;
      if (OnArrow(px * ux + py * uy, -px * uy + py * ux)) ++inside;
    }
  }
  return inside * 255 / (kSamples * kSamples);
}

void PutLittle(std::vector<std::uint8_t>& out, std::uint32_t value, int bytes) {
  for (int i = 0; i < bytes; ++i) out.push_back(static_cast<std::uint8_t>(value >> (8 * i)));
}

// A whole BMP file: file head, 40-byte information head, bottom-up rows of
// blue, green, red, alpha with the colour premultiplied by nothing.
std::vector<std::uint8_t> StripBmp(const Direction* directions, int count) {
  int width = kIconSize * count, height = kIconSize;
  std::uint32_t pixelBytes = static_cast<std::uint32_t>(width * height * 4);
  std::vector<std::uint8_t> out;
  out.push_back('B');
  out.push_back('M');
  PutLittle(out, 14 + 40 + pixelBytes, 4);
  PutLittle(out, 0, 4);
  PutLittle(out, 14 + 40, 4);
  PutLittle(out, 40, 4);
  PutLittle(out, static_cast<std::uint32_t>(width), 4);
  PutLittle(out, static_cast<std::uint32_t>(height), 4);
  PutLittle(out, 1, 2);
  PutLittle(out, 32, 2);
  PutLittle(out, 0, 4);  // uncompressed
  PutLittle(out, pixelBytes, 4);
  PutLittle(out, 2835, 4);  // 72 dots per inch
  PutLittle(out, 2835, 4);
  PutLittle(out, 0, 4);
  PutLittle(out, 0, 4);
  for (int y = height - 1; y >= 0; --y) {
    for (int x = 0; x < width; ++x) {
      int alpha = ArrowCover(directions[x / kIconSize], x % kIconSize, y);
      out.push_back(kArrowBlue);
      out.push_back(kArrowGreen);
      out.push_back(kArrowRed);
      out.push_back(static_cast<std::uint8_t>(alpha));
    }
  }
  return out;
}

bool WriteFile(const char* path, const std::vector<std::uint8_t>& bytes) {
  std::FILE* file = std::fopen(path, "wb");
  if (file == nullptr) return false;
  bool written = std::fwrite(bytes.data(), 1, bytes.size(), file) == bytes.size();
  return std::fclose(file) == 0 && written;
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 4) {
    std::fprintf(stderr, "usage: make_well_icons <eight-way.bmp> <four-way.bmp> <two-way.bmp>\n");
    return 2;
  }
  bool ok = WriteFile(argv[1], StripBmp(kEightWay, 8)) && WriteFile(argv[2], StripBmp(kFourWay, 4)) &&
            WriteFile(argv[3], StripBmp(kTwoWay, 2));
  if (!ok) std::fprintf(stderr, "make_well_icons: cannot write the strips\n");
  return ok ? 0 : 1;
}
