// PNG frames through libpng.
#include <png.h>

#include <cstdio>
#include <vector>

#include "host/png_writer.h"

namespace {

// One picture row top-down in red, green, blue order.
void RowAsRgb(const DibHead* head, int y, png_byte* out) {
  for (int x = 0; x < head->biWidth; ++x) {
    std::uint32_t pixel = static_cast<std::uint32_t>(DibGetPixel(head, x, y));
    out[3 * x] = static_cast<png_byte>(pixel);
    out[3 * x + 1] = static_cast<png_byte>(pixel >> 8);
    out[3 * x + 2] = static_cast<png_byte>(pixel >> 16);
  }
}

int WriteStream(std::FILE* file, const DibHead* head) {
  png_structp png = png_create_write_struct(PNG_LIBPNG_VER_STRING, nullptr, nullptr, nullptr);
  png_infop info = png != nullptr ? png_create_info_struct(png) : nullptr;
  if (info == nullptr) {
    png_destroy_write_struct(&png, nullptr);
    return 0;
  }
  std::vector<png_byte> row(static_cast<std::size_t>(head->biWidth) * 3);
  if (setjmp(png_jmpbuf(png))) {
    png_destroy_write_struct(&png, &info);
    return 0;
  }
  png_init_io(png, file);
  png_set_IHDR(png, info, head->biWidth, head->biHeight, 8, PNG_COLOR_TYPE_RGB, PNG_INTERLACE_NONE,
               PNG_COMPRESSION_TYPE_DEFAULT, PNG_FILTER_TYPE_DEFAULT);
  png_write_info(png, info);
  for (int y = 0; y < head->biHeight; ++y) {
    RowAsRgb(head, y, row.data());
    png_write_row(png, row.data());
  }
  png_write_end(png, nullptr);
  png_destroy_write_struct(&png, &info);
  return 1;
}

}  // namespace

int PngWrite(const char* path, DibHandle image) {
  DibLock lock(image);
  if (lock.head == nullptr || lock.head->biBitCount != 24) return 0;
  std::FILE* file = std::fopen(path, "wb");
  if (file == nullptr) return 0;
  int written = WriteStream(file, lock.head);
  if (std::fclose(file) != 0) written = 0;
  if (written == 0) std::remove(path);
  return written;
}
