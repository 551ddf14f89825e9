// ImageMagick started once per program and held to one thread, so that it is
// timed on the same footing as our single-threaded code.
#pragma once

#include <magick/MagickCore.h>

inline void MagickStartOnce() {
  static const bool started = [] {
    MagickCoreGenesis(nullptr, MagickFalse);
    SetMagickResourceLimit(ThreadResource, 1);
    return true;
  }();
  (void)started;
}
