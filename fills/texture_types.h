// The six kinds of generated texture: four fractal cloud types of one to four
// layers over a background, craters, and perturbation noise with bubbles.
// Every generator takes its size from the record's target rectangle and gives
// a new 24-bit bitmap, or null. None is re-entrant: they share module-wide
// state, and the perturbation noise keeps its tables for the process's life.
#pragma once

#include "fills/texture_record.h"
#include "raster/dib.h"

constexpr int kTextureTypeCount = 6;
constexpr int kTextureShownMax = 19;  // the longest list of shown controls, with its 0

struct TextureTypeRow {
  const char* name;
  DibHandle (*generate)(TextureRecord* texture);
  int shown[kTextureShownMax];  // the texture dialog's controls for the type, 0-ended
};
extern const TextureTypeRow TextureTypes[kTextureTypeCount];

// The cloud texture of the given number of layers (1 to 4).
DibHandle FractalTexture(TextureRecord* texture, int layers);
DibHandle CraterTexture(TextureRecord* texture);
DibHandle PerturbationTexture(TextureRecord* texture);

// A new 24-bit bitmap of the record's target size with BackColour in every
// pixel, or null: where the cloud and crater types start.
DibHandle TextureBackground(const TextureRecord& texture);

// The generator of the record's type at its target size; null for a type out
// of range or a failed generator.
DibHandle TextureGenerate(TextureRecord* texture);

// For tests: forgets the perturbation noise tables, so that the next texture
// that needs them builds them from its own seed, as the first one in a
// process does.
void TextureNoiseReset();

// The names of the bubble shapes, split at the semicolons by the dialog.
inline constexpr char kBubbleShapeNames[] = "Ellipse;Fuzzy;Luminous;Sphere";
