// The field of rising, swaying bubbles that Bubbles fills its letters with
// and Background Bubbles lays behind them. The field is drawn at twice the
// output size and halved at the end, which smooths the bubbles' rings.
#pragma once

#include <cstdint>

#include "effects/effect.h"

struct Bubble {
  std::int32_t x;  // home of the centre, doubled pixels
  std::int32_t y;
  std::int32_t size;       // diameter, doubled pixels
  std::int32_t speed;      // rises through the field this many times a loop: 1, 2 or 4
  std::int32_t intensity;  // how much clearer the centre is than the rim: 255, 160 or 128
  double angle;            // phase of the sideways sway, degrees
};

// The effect's extra record; it lives across the frames of one build.
struct BubbleField {
  std::int32_t textOffsetX;  // always 0 here
  std::int32_t textOffsetY;
  Bubble* bubbles;
  std::int32_t count;
  std::int32_t fieldWidth;  // doubled pixels
  std::int32_t fieldHeight;
  std::int32_t largeSize;  // base diameters of the three classes, doubled pixels
  std::int32_t mediumSize;
  std::int32_t smallSize;
  std::int32_t frames;  // the loop's length
  DibHandle ground;     // the doubled fill under the bubbles
  std::int32_t ready;   // set once the field is initialised
  std::int32_t loopFrames;
  std::int32_t frame;  // the frame to draw
};

// Ids of one effect's bubble controls.
struct BubbleControlIds {
  int ground;  // the fill under the bubbles
  int colour;
  int drift;
  int size;
  int density;
  int seed;
};

// Seeds the field for a picture of width by height: the doubled ground and
// the bubbles, from the effect's seed. 1, or 0 with nothing left allocated.
int InitBubbleField(BubbleField* field, const Controls* dialog, const BubbleControlIds& ids, int width, int height,
                    int frames);
// The field at frame f of the loop, at the output size (doubled if the
// halving fails), or null. Every call advances each bubble's sway.
DibHandle DrawBubbleField(const Controls* dialog, const BubbleControlIds& ids, BubbleField* field, int f);
void FreeBubbleField(BubbleField* field);

// An n by n 24-bit mask of one bubble: grey rings from 255 at the rim falling
// by intensity towards the centre. Null if it cannot be drawn.
DibHandle BubbleMask(int n, int intensity);
