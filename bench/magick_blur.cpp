#include "bench/magick_blur.h"

#include "bench/magick_start.h"

struct MagickMask {
  Image* image;
  ExceptionInfo* exception;
};

namespace {

int Discard(Image* blurred) {
  if (blurred == nullptr) return 0;
  DestroyImage(blurred);
  return 1;
}

}  // namespace

MagickMask* MagickMaskNew(const std::uint8_t* grey, int width, int height) {
  MagickStartOnce();
  ExceptionInfo* exception = AcquireExceptionInfo();
  Image* image = ConstituteImage(width, height, "I", CharPixel, grey, exception);
  if (image == nullptr) {
    DestroyExceptionInfo(exception);
    return nullptr;
  }
  return new MagickMask{image, exception};
}

void MagickMaskFree(MagickMask* mask) {
  if (mask == nullptr) return;
  DestroyImage(mask->image);
  DestroyExceptionInfo(mask->exception);
  delete mask;
}

int MagickMaskGaussianBlur(MagickMask* mask, double radius, double sigma) {
  return Discard(GaussianBlurImage(mask->image, radius, sigma, mask->exception));
}

int MagickMaskSeparableBlur(MagickMask* mask, double radius, double sigma) {
  return Discard(BlurImage(mask->image, radius, sigma, mask->exception));
}
