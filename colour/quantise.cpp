// Octree colour quantisation: classify every pixel into a colour cube, prune
// nodes by rising error until few enough colours are left, then give each
// node that holds pixels of its own one palette entry, the mean of them.
#include "colour/quantise.h"

#include <cstdlib>
#include <cstring>

#include "colour/exact_colours.h"
#include "plugin/host_interface.h"

namespace {

constexpr int kNodesPerBlock = 1536;
constexpr int kNodeLimit = 266817;
constexpr int kDeepestLevel = 8;
constexpr int kShallowestLevel = 2;

struct ColourNode {
  double uniqueCount;  // pixels that end here, children not counted
  double totalRed;
  double totalGreen;
  double totalBlue;
  double quantizeError;  // squared distance from the centre of every pixel passing through
  std::uint32_t colourNumber;
  std::uint8_t id;  // child number in the parent
  std::uint8_t level;
  std::uint8_t census;  // bit i set while child i exists
  ColourNode* parent;   // the root's is the root
  ColourNode* child[8];
};

struct NodeBlock {
  NodeBlock* previous;
  ColourNode nodes[kNodesPerBlock];
};

struct ColourCube {
  ColourNode* root;
  int depth;
  int colours;
  std::uint8_t* palette;
  double pruningThreshold;
  double nextThreshold;
  int nodeCount;
  int freeNodes;
  ColourNode* nextFreeNode;
  NodeBlock* blocks;
};

void CubeFreeBlocks(ColourCube* cube) {
  while (cube->blocks != nullptr) {
    NodeBlock* previous = cube->blocks->previous;
    std::free(cube->blocks);
    cube->blocks = previous;
  }
}

// Pruned nodes are never handed out again.
ColourNode* NodeNew(ColourCube* cube, ColourNode* parent, int id, int level) {
  if (cube->freeNodes == 0) {
    auto* block = static_cast<NodeBlock*>(std::calloc(1, sizeof(NodeBlock)));
    if (block == nullptr) return nullptr;
    block->previous = cube->blocks;
    cube->blocks = block;
    cube->nextFreeNode = block->nodes;
    cube->freeNodes = kNodesPerBlock;
  }
  ColourNode* node = cube->nextFreeNode++;
  cube->freeNodes -= 1;
  node->id = static_cast<std::uint8_t>(id);
  node->level = static_cast<std::uint8_t>(level);
  node->parent = parent == nullptr ? node : parent;
  cube->nodeCount += 1;
  return node;
}

bool HasChild(const ColourNode* node, int id) { return (node->census & (1 << id)) != 0; }

// Gives the node's pixels to its parent and unhooks it. The root folds into
// itself, doubling its counts, which leaves its mean as it was.
void NodeFold(ColourCube* cube, ColourNode* node) {
  ColourNode* parent = node->parent;
  parent->census = static_cast<std::uint8_t>(parent->census & ~(1 << node->id));
  parent->uniqueCount += node->uniqueCount;
  parent->totalRed += node->totalRed;
  parent->totalGreen += node->totalGreen;
  parent->totalBlue += node->totalBlue;
  cube->nodeCount -= 1;
}

void PruneChild(ColourCube* cube, ColourNode* node) {
  for (int id = 0; id < 8; ++id) {
    if (HasChild(node, id)) PruneChild(cube, node->child[id]);
  }
  NodeFold(cube, node);
}

void PruneChildren(ColourCube* cube, ColourNode* node) {
  for (int id = 0; id < 8; ++id) {
    if (HasChild(node, id)) PruneChild(cube, node->child[id]);
  }
}

// Folds every node of the deepest level into its parent.
void PruneLevel(ColourCube* cube, ColourNode* node) {
  for (int id = 0; id < 8; ++id) {
    if (HasChild(node, id)) PruneLevel(cube, node->child[id]);
  }
  if (node->level == cube->depth) {
    PruneChildren(cube, node);
    NodeFold(cube, node);
  }
}

// The squared distance of each component value from the centre of its box
// at each level, the centre moving as the walk down the tree moves it.
struct OffsetSquares {
  double at[kDeepestLevel + 1][256];
};

constexpr OffsetSquares MakeOffsetSquares() {
  OffsetSquares squares{};
  for (int value = 0; value < 256; ++value) {
    double centre = 127.5;
    double bisect = 128.0;
    for (int level = 1, shift = 7; level <= kDeepestLevel; ++level, --shift) {
      bisect *= 0.5;
      centre += ((value >> shift) & 1) != 0 ? bisect : -bisect;
      double offset = value - centre;
      squares.at[level][value] = offset * offset;
    }
  }
  return squares;
}

constexpr OffsetSquares kOffsetSquares = MakeOffsetSquares();

// One run of count equal pixels, one walk down the tree. Every level's
// distance goes to the root's error as well, in rootError, which the caller
// keeps out of memory while a frame is classified.
int ClassifyRun(ColourCube* cube, const int component[3], int count, double* rootError) {
  ColourNode* node = cube->root;
  for (int level = 1, shift = 7; level <= cube->depth; ++level, --shift) {
    int id = ((component[0] >> shift) & 1) << 2 | ((component[1] >> shift) & 1) << 1 | ((component[2] >> shift) & 1);
    if (!HasChild(node, id)) {
      ColourNode* child = NodeNew(cube, node, id, level);
      if (child == nullptr) return 0;
      node->census = static_cast<std::uint8_t>(node->census | (1 << id));
      node->child[id] = child;
      if (level == cube->depth) cube->colours += 1;
    }
    node = node->child[id];
    const double* squares = kOffsetSquares.at[level];
    double distance = 0.0;
#pragma GCC unroll 3
    for (int c = 0; c < 3; ++c) distance += count * squares[component[c]];
    node->quantizeError += distance;
    *rootError += distance;
  }
  node->uniqueCount += count;
  node->totalRed += static_cast<double>(component[0] * count);
  node->totalGreen += static_cast<double>(component[1] * count);
  node->totalBlue += static_cast<double>(component[2] * count);
  return 1;
}

// The length of the run of pixels equal to the first, at most left. Through
// a run every byte equals the one three bytes on, so the bytes are compared
// eight at a time.
int RunLength(const std::uint8_t* pixel, int left) {
  int bytes = (left - 1) * 3;
  int same = 0;
  while (same + 8 <= bytes && std::memcmp(pixel + same, pixel + same + 3, 8) == 0) same += 8;
  while (same < bytes && pixel[same] == pixel[same + 3]) ++same;
  return 1 + same / 3;
}

// Raw stored rows, blue, green, red; bottom row first.
int ClassifyRows(ColourCube* cube, const DibHead* head, double* rootError) {
  int stride = DibStride(24, head->biWidth);
  const std::uint8_t* rows = DibRows(head);
  for (int y = 0; y < head->biHeight; ++y) {
    if (cube->nodeCount > kNodeLimit) {
      PruneLevel(cube, cube->root);
      cube->depth -= 1;
    }
    const std::uint8_t* row = rows + static_cast<std::ptrdiff_t>(y) * stride;
    for (int x = 0; x < head->biWidth;) {
      const std::uint8_t* pixel = row + x * 3;
      int count = RunLength(pixel, head->biWidth - x);
      const int component[3] = {pixel[2], pixel[1], pixel[0]};
      if (ClassifyRun(cube, component, count, rootError) == 0) return 0;
      x += count;
    }
  }
  return 1;
}

int ClassifyFrame(ColourCube* cube, const DibHead* head) {
  double rootError = cube->root->quantizeError;
  int classified = ClassifyRows(cube, head, &rootError);
  cube->root->quantizeError = rootError;
  return classified;
}

void Reduce(ColourCube* cube, ColourNode* node) {
  for (int id = 0; id < 8; ++id) {
    if (HasChild(node, id)) Reduce(cube, node->child[id]);
  }
  if (node->quantizeError <= cube->pruningThreshold) {
    PruneChildren(cube, node);
    NodeFold(cube, node);
    return;
  }
  if (node->uniqueCount > 0) cube->colours += 1;
  if (node->quantizeError < cube->nextThreshold) cube->nextThreshold = node->quantizeError;
}

// Raises the pruning threshold pass by pass until at most target colours stay.
void ReduceColours(ColourCube* cube, int target) {
  cube->nextThreshold = 0.0;
  if (cube->colours <= target) return;
  do {
    cube->pruningThreshold = cube->nextThreshold;
    cube->nextThreshold = cube->root->quantizeError - 1.0;
    cube->colours = 0;
    Reduce(cube, cube->root);  // the children in id order, then the root itself
  } while (cube->colours > target);
}

std::uint8_t MeanComponent(double total, double count) { return static_cast<std::uint8_t>((count / 2 + total) / count); }

void Assign(ColourCube* cube, ColourNode* node) {
  for (int id = 0; id < 8; ++id) {
    if (HasChild(node, id)) Assign(cube, node->child[id]);
  }
  if (node->uniqueCount == 0 || cube->colours == 256) return;
  std::uint8_t* entry = cube->palette + cube->colours * 3;
  entry[0] = MeanComponent(node->totalRed, node->uniqueCount);
  entry[1] = MeanComponent(node->totalGreen, node->uniqueCount);
  entry[2] = MeanComponent(node->totalBlue, node->uniqueCount);
  node->colourNumber = static_cast<std::uint32_t>(cube->colours);
  cube->colours += 1;
}

int DepthForLimit(int limit) {
  int depth = 0;
  for (int rest = limit; rest != 0; rest >>= 2) ++depth;
  if (depth > kDeepestLevel) return kDeepestLevel;
  return depth < kShallowestLevel ? kShallowestLevel : depth;
}

// Both passes over one frame: the exact list, then the tree.
int QuantiseFrame(ColourCube* cube, ExactColours* exact, const FrameList* frames, int index) {
  FrameRecord record;
  if (FrameRecordRead(frames, index, &record) == 0) return 0;
  DibLock lock(record.image);
  if (lock.head == nullptr || lock.head->biBitCount != 24) return 0;
  ExactColoursScan(exact, lock.head);
  return ClassifyFrame(cube, lock.head);
}

// Owns the node blocks of a run.
struct CubeOwner {
  ColourCube cube{};
  ~CubeOwner() { CubeFreeBlocks(&cube); }
};

}  // namespace

int OctreeQuantise(int* colourLimit, std::uint8_t* palette, const FrameList* frames) {
  std::memset(palette, 0, kPaletteBytes);
  int limit = *colourLimit;
  if (limit <= 0 || limit > 256) limit = 256;

  CubeOwner owner;
  ColourCube* cube = &owner.cube;
  cube->palette = palette;
  cube->depth = DepthForLimit(limit);
  cube->root = NodeNew(cube, nullptr, 0, 0);
  if (cube->root == nullptr) return 0;

  ExactColours exact{};
  for (int index = 0; index < frames->count; ++index) {
    if (QuantiseFrame(cube, &exact, frames, index) == 0) return 0;
  }

  if (exact.distinct <= limit) {
    ExactColoursToPalette(&exact, palette);
    *colourLimit = static_cast<int>(exact.distinct);
    return 1;
  }
  ReduceColours(cube, limit);
  std::memset(palette, 0, kPaletteBytes);
  cube->colours = 0;
  Assign(cube, cube->root);
  *colourLimit = cube->colours;
  return 1;
}
