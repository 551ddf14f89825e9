#include "bench/magick_quantise.h"

#include "bench/magick_start.h"

struct MagickFrames {
  Image* list;  // null while empty
  ExceptionInfo* exception;
};

MagickFrames* MagickFramesNew() {
  MagickStartOnce();
  return new MagickFrames{nullptr, AcquireExceptionInfo()};
}

void MagickFramesFree(MagickFrames* frames) {
  if (frames == nullptr) return;
  if (frames->list != nullptr) DestroyImageList(frames->list);
  DestroyExceptionInfo(frames->exception);
  delete frames;
}

int MagickFramesAppend(MagickFrames* frames, const std::uint8_t* bgr, int width, int height) {
  Image* image = ConstituteImage(width, height, "BGR", CharPixel, bgr, frames->exception);
  if (image == nullptr) return 0;
  AppendImageToList(&frames->list, image);
  return 1;
}

int MagickFramesCount(const MagickFrames* frames) {
  return static_cast<int>(GetImageListLength(frames->list));
}

MagickFrames* MagickFramesClone(const MagickFrames* frames) {
  ExceptionInfo* exception = AcquireExceptionInfo();
  Image* copy = CloneImageList(frames->list, exception);
  if (copy == nullptr) {
    DestroyExceptionInfo(exception);
    return nullptr;
  }
  return new MagickFrames{copy, exception};
}

int MagickFramesQuantise(MagickFrames* frames, int colours) {
  QuantizeInfo* options = AcquireQuantizeInfo(nullptr);
  options->number_colors = static_cast<size_t>(colours);
  options->dither = MagickTrue;
  options->dither_method = FloydSteinbergDitherMethod;
  MagickBooleanType done = QuantizeImages(options, frames->list);
  DestroyQuantizeInfo(options);
  return done == MagickTrue ? 1 : 0;
}
