// Frame differencing for palette animations: every frame after the first
// gets a 1-bit mask of the pixels that equal the running picture, which the
// remap stage then turns into one transparent index.
#pragma once

#include <cstdint>

#include "plugin/host_interface.h"

// Walks the 24-bit frames in order. The first is cloned into *previousImage
// and gets no mask; each later one gets a mask (set bit: unchanged) and the
// transparentIndex deltaColour, and its changed pixels go into the running
// picture. Sends status text and progress to the host when host is not null.
// Returns 1, or 0 on a failed lock or allocation. *previousImage belongs to
// the caller in both cases; a half-made mask is freed here.
int Supercompress(FrameList* frames, DibHandle* previousImage, std::int32_t deltaColour, const HostRecord* host);

// Puts deltaIndex, cut to the pixel width, at every set bit of mask in the
// remapped image, then writes deltaColour as the colour-table entry at
// deltaIndex (index -1 lands in the last field of the head). 1, or 0 when a
// lock fails.
int SupercompressApplyMask(DibHandle image, DibHandle mask, int deltaIndex, std::int32_t deltaColour);
