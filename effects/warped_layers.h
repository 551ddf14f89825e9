// The frame of the effects that pass every layer but the background through
// one picture-to-picture transform (ripple, scatter, smear): the shadow's
// fill and mask, the text's fill unless it is a solid colour, the text mask
// and the outline mask. Fills and masks go through the same transform with
// the same values, so they stay aligned.
#pragma once

#include "effects/text_frame.h"

// The transform, applied to a bitmap the caller keeps; a new bitmap or null.
using LayerTransform = DibHandle (*)(DibHandle source, const void* parameters);

// The effect's three fill controls.
struct WarpedFillIds {
  int fill;
  int shadowFill;
  int background;
};

struct WarpedLayers {
  WarpedFillIds ids;
  LayerTransform transform;
  const void* parameters;
  int originX;            // the margin left of and above the text and shadow places
  int originY;
  int layerLevel;         // scales shadow and text mask values (255 keeps them)
  int outlineLevel;       // scales outline mask values
  int shadowFromPlace;    // the shadow's loop starts at the mask's place, not at 0
  int shadowFillFollows;  // the shadow's fill is read relative to the mask's place
  int keepsSolid;         // the transform gives a solid colour back unchanged
};

// The background fill at frame size, then shadow, text and outline, each
// through the transform. The shadow mask is transformed before its blur. A
// solid fill of the text skips the transform; so does a solid fill of the
// shadow where the transform keeps solid colours, which changes no byte.
// A new 24-bit frame, or null.
DibHandle WarpedLayersCompose(const Controls* dialog, const TextFrame& frame, const WarpedLayers& layers);
