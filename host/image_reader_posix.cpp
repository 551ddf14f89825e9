// PNG pictures through libpng's simplified reader.
#include <png.h>

#include <cstring>
#include <memory>
#include <new>

#include "host/image_reader.h"

DibHandle ImageRead(const char* path, std::string* error) {
  png_image image;
  std::memset(&image, 0, sizeof image);
  image.version = PNG_IMAGE_VERSION;
  if (png_image_begin_read_from_file(&image, path) == 0) {
    *error = image.message;
    return nullptr;
  }
  image.format = PNG_FORMAT_BGR;
  std::size_t size = PNG_IMAGE_SIZE(image);
  std::unique_ptr<png_byte[]> pixels(new (std::nothrow) png_byte[size]);
  DibOwner dib(pixels != nullptr ? DibNew(static_cast<int>(image.width), static_cast<int>(image.height), nullptr, 24)
                                 : nullptr);
  DibLock lock(dib.get());
  png_color white = {255, 255, 255};
  if (lock.head == nullptr) {
    png_image_free(&image);
    *error = "Memory error";
    return nullptr;
  }
  if (png_image_finish_read(&image, &white, pixels.get(), 0, nullptr) == 0) {
    *error = image.message;
    return nullptr;
  }
  int rowBytes = static_cast<int>(image.width) * 3;
  for (int y = 0; y < lock.head->biHeight; ++y) std::memcpy(DibRow(lock.head, y), &pixels[y * rowBytes], rowBytes);
  return dib.release();
}
