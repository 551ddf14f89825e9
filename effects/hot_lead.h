// Hot Lead: the text typed out one letter a frame as embossed metal. The
// letters' mask goes through an emboss convolution and the result is the
// opacity with which the fill is laid over the background.
#pragma once

#include "effects/effect.h"
#include "effects/generator_common.h"

int HotLeadPreview(EffectContext* context);
int HotLeadBuild(EffectContext* context);

struct HotLeadExtra {
  SharedControls shared;
  char fullText[kEffectTextLimit + 16];   // the text and one blank
  char shownText[kEffectTextLimit + 16];  // the part this frame shows
  int radius;      // the kernel's sigma in tenths
  int embossSize;  // the kernel's side before it is made odd
};

// One frame showing extra->shownText, placed as in the full text. Null for
// an empty text, or when the picture is smaller than the kernel.
DibHandle HotLeadGenerate(EffectContext* context);
