// The tracer of one electric arc: a wandering chain grown from the left end
// towards the middle, a tree grown from the right end, and the node of that
// tree that best meets the chain's tip. Every step takes its length and turn
// from the random stream, in a fixed order.
#pragma once

#include <cstdint>

#include "raster/dib.h"

struct ArcPoint {
  std::int32_t x;
  std::int32_t y;
};
static_assert(sizeof(ArcPoint) == 8);

struct ArcNode {
  ArcNode* parent;
  ArcNode* first;
  ArcNode* second;
  std::int32_t x;
  std::int32_t y;
};

struct ArcTracer {
  std::int32_t startX, startY, endX, endY;
  ArcNode* tip;      // the end of the left chain
  ArcNode* closest;  // the right tree's node that meets the tip best
  ArcNode* leftRoot;
  ArcNode* rightRoot;
  DibRect bounds;
  std::int32_t minStep, maxStep;
  double angle;  // the greatest turn of one step, degrees
  std::int32_t bestDistance;
};

// Grow modes: a branching tree running left, a single chain running right.
constexpr int kArcTreeLeftward = 0;
constexpr int kArcChainRightward = 3;

// Strikes one arc from start to end within bounds. 1, or 0 with both trees
// freed when a node cannot be had.
int StrikeArc(ArcTracer* tracer, int startX, int startY, int endX, int endY, const DibRect& bounds, int minStep,
              int maxStep, double angle);
// A node at (x, y) and, where the test allows, its children, depth first.
// Null when memory runs out, with nothing of it left allocated.
ArcNode* GrowArc(int x, int y, const DibRect& bounds, ArcTracer* tracer, ArcNode* parent, int mode);
void FindClosest(ArcNode* node, ArcTracer* tracer);
// The polyline that is kept for an afterimage: the left chain without its
// tip, then closest and its ancestors. A new array in *points, or null when
// it cannot be had or there is nothing; returns the number of points.
int ArcPoints(ArcPoint** points, const ArcTracer* tracer);
// The polyline that is drawn: the left chain to its tip, then closest and
// its ancestors. As ArcPoints.
int ArcDrawnPoints(ArcPoint** points, const ArcTracer* tracer);
void FreeArcTracer(ArcTracer* tracer);
