#include "effects/arc_tracer.h"

#include <cmath>
#include <new>

#include "raster/crt_random.h"

namespace {

constexpr double kRadiansPerDegree = 0.017453292519943295;

void FreeTree(ArcNode* node) {
  if (node == nullptr) return;
  FreeTree(node->first);
  FreeTree(node->second);
  delete node;
}

int StepLength(const ArcTracer* tracer) {
  return CrtRand() % (tracer->maxStep - tracer->minStep) + tracer->minStep;
}

int Turn(const ArcTracer* tracer) { return static_cast<int>(CrtRand() / 32767.0 * tracer->angle); }

ArcPoint StepFrom(int x, int y, int step, int turn) {
  double radians = turn * kRadiansPerDegree;
  return {x + static_cast<int>(step * std::cos(radians)), y + static_cast<int>(step * std::sin(radians))};
}

// The new point must lie within the bounds, and the present x within their
// columns: it is the present x that keeps the right tree a lone root.
bool MayGrow(const DibRect& bounds, int presentX, ArcPoint next) {
  bool inside = next.x >= bounds.left && next.x < bounds.right && next.y >= bounds.top && next.y < bounds.bottom;
  return inside && presentX >= bounds.left && presentX <= bounds.right - 1;
}

// Grows a child at next if the test allows; false only when memory ran out.
bool GrowChild(ArcNode** slot, ArcNode* node, ArcPoint next, const DibRect& bounds, ArcTracer* tracer, int mode) {
  if (!MayGrow(bounds, node->x, next)) return true;
  *slot = GrowArc(next.x, next.y, bounds, tracer, node, mode);
  return *slot != nullptr;
}

int CountChain(const ArcNode* root, bool withTip) {
  int count = 0;
  for (const ArcNode* node = root; node != nullptr; node = node->first)
    if (withTip || node->first != nullptr) ++count;
  return count;
}

int CollectPoints(ArcPoint** points, const ArcTracer* tracer, bool withTip) {
  *points = nullptr;
  int count = CountChain(tracer->leftRoot, withTip);
  bool joined = tracer->tip != nullptr && tracer->closest != nullptr;
  if (joined)
    for (const ArcNode* node = tracer->closest; node != nullptr; node = node->parent) ++count;
  if (count == 0) return 0;
  *points = new (std::nothrow) ArcPoint[count]();
  if (*points == nullptr) return 0;
  int next = 0;
  for (const ArcNode* node = tracer->leftRoot; node != nullptr; node = node->first)
    if (withTip || node->first != nullptr) (*points)[next++] = {node->x, node->y};
  if (joined)
    for (const ArcNode* node = tracer->closest; node != nullptr; node = node->parent)
      (*points)[next++] = {node->x, node->y};
  return count;
}

}  // namespace

ArcNode* GrowArc(int x, int y, const DibRect& bounds, ArcTracer* tracer, ArcNode* parent, int mode) {
  auto* node = new (std::nothrow) ArcNode{parent, nullptr, nullptr, x, y};
  if (node == nullptr) return nullptr;
  bool grown = true;
  if (mode == kArcChainRightward) {
    int step = StepLength(tracer);
    bool positive = (CrtRand() & 1) != 0;
    int turn = Turn(tracer);
    grown = GrowChild(&node->first, node, StepFrom(x, y, step, positive ? turn : -turn), bounds, tracer, mode);
  } else {
    int turn = Turn(tracer);
    int step = StepLength(tracer);
    grown = GrowChild(&node->first, node, StepFrom(x, y, -step, turn), bounds, tracer, mode) &&
            GrowChild(&node->second, node, StepFrom(x, y, -step, -turn), bounds, tracer, mode);
  }
  if (grown) return node;
  FreeTree(node);
  return nullptr;
}

void FindClosest(ArcNode* node, ArcTracer* tracer) {
  for (ArcNode* walk = node; walk != nullptr; walk = walk->second) {
    if (walk->first != nullptr) FindClosest(walk->first, tracer);
    if (walk->first != nullptr && walk->second != nullptr) continue;
    int distance = std::abs(walk->y - tracer->tip->y);
    if (distance < tracer->bestDistance) {
      tracer->bestDistance = distance;
      tracer->closest = walk;
    }
  }
}

int StrikeArc(ArcTracer* tracer, int startX, int startY, int endX, int endY, const DibRect& bounds, int minStep,
              int maxStep, double angle) {
  *tracer = ArcTracer{startX, startY, endX, endY, nullptr, nullptr, nullptr, nullptr, bounds, minStep, maxStep,
                      angle, 0};
  CrtRand();
  CrtRand();
  DibRect right = bounds;
  right.left = bounds.right - (bounds.right - bounds.left) / 2;
  tracer->rightRoot = GrowArc(endX, endY, right, tracer, nullptr, kArcTreeLeftward);
  DibRect left = bounds;
  left.right = (bounds.right - bounds.left) / 2 + bounds.left;
  if (tracer->rightRoot != nullptr)
    tracer->leftRoot = GrowArc(startX, startY, left, tracer, nullptr, kArcChainRightward);
  if (tracer->rightRoot == nullptr || tracer->leftRoot == nullptr) {
    FreeArcTracer(tracer);
    return 0;
  }
  tracer->tip = tracer->leftRoot;
  while (tracer->tip->first != nullptr) tracer->tip = tracer->tip->first;
  tracer->bestDistance = 0xFFFFFFF;
  FindClosest(tracer->rightRoot, tracer);
  return 1;
}

int ArcPoints(ArcPoint** points, const ArcTracer* tracer) { return CollectPoints(points, tracer, false); }
int ArcDrawnPoints(ArcPoint** points, const ArcTracer* tracer) { return CollectPoints(points, tracer, true); }

void FreeArcTracer(ArcTracer* tracer) {
  FreeTree(tracer->leftRoot);
  FreeTree(tracer->rightRoot);
  tracer->leftRoot = nullptr;
  tracer->rightRoot = nullptr;
  tracer->tip = nullptr;
  tracer->closest = nullptr;
}
