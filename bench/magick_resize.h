// ImageMagick's resize behind a small interface, so that the resize
// benchmark need not see ImageMagick's headers (their names clash with ours).
#pragma once

#include <cstdint>

struct MagickPicture;

// A picture of the given top-down blue, green, red bytes, or null.
// ImageMagick is started on the first call and held to one thread.
MagickPicture* MagickPictureNew(const std::uint8_t* bgr, int width, int height);
void MagickPictureFree(MagickPicture* picture);
// Resize with the Mitchell cubic (mitchell = 1) or the three-lobe Lanczos and
// discard the result; 1 if ImageMagick made one.
int MagickPictureResize(MagickPicture* picture, int width, int height, int mitchell);
