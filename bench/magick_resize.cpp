#include "bench/magick_resize.h"

#include "bench/magick_start.h"

struct MagickPicture {
  Image* image;
  ExceptionInfo* exception;
};

MagickPicture* MagickPictureNew(const std::uint8_t* bgr, int width, int height) {
  MagickStartOnce();
  ExceptionInfo* exception = AcquireExceptionInfo();
  Image* image = ConstituteImage(width, height, "BGR", CharPixel, bgr, exception);
  if (image == nullptr) {
    DestroyExceptionInfo(exception);
    return nullptr;
  }
  return new MagickPicture{image, exception};
}

void MagickPictureFree(MagickPicture* picture) {
  if (picture == nullptr) return;
  DestroyImage(picture->image);
  DestroyExceptionInfo(picture->exception);
  delete picture;
}

int MagickPictureResize(MagickPicture* picture, int width, int height, int mitchell) {
  Image* resized = ResizeImage(picture->image, width, height, mitchell != 0 ? MitchellFilter : LanczosFilter,
                               1.0, picture->exception);
  if (resized == nullptr) return 0;
  DestroyImage(resized);
  return 1;
}
