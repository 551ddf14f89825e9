#include "effects/hot_lead_emboss.h"

#include <cmath>
#include <memory>
#include <new>

namespace {

// Wrapped index of position + offset in [0, count), for offsets no larger
// than count.
int Wrap(int position, int count) {
  if (position < 0) return position + count;
  if (position >= count) return position - count;
  return position;
}

double ClampedLevel(double sum) {
  if (sum < 0.0) return 0.0;
  if (sum > 255.0) return 255.0;
  return std::trunc(sum + 0.5);
}

// Every channel of every pixel, in storage order, rows bottom first. 0 when
// the column table cannot be had.
int Convolve(const DibHead* source, DibHead* target, int size, const double* kernel) {
  const int width = source->biWidth;
  const int height = source->biHeight;
  const int channels = source->biBitCount / 8;
  const int stride = DibStride(source->biBitCount, width);
  const int half = size / 2;
  double total = 0.0;
  for (int k = 0; k < size * size; ++k) total += kernel[k];
  const bool divide = total != 0.0 && total != 1.0;

  std::unique_ptr<int[]> columns(new (std::nothrow) int[static_cast<std::size_t>(width) * size]);
  if (columns == nullptr) return 0;
  for (int x = 0; x < width; ++x)
    for (int j = 0; j < size; ++j) columns[static_cast<std::size_t>(x) * size + j] = Wrap(x + j - half, width) * channels;

  const std::uint8_t* rows = DibRows(source);
  std::uint8_t* out = DibRows(target);
  for (int y = 0; y < height; ++y) {
    for (int x = 0; x < width; ++x) {
      const int* column = &columns[static_cast<std::size_t>(x) * size];
      for (int c = 0; c < channels; ++c) {
        double sum = 0.0;
        for (int i = 0; i < size; ++i) {
          const std::uint8_t* row = rows + static_cast<std::ptrdiff_t>(Wrap(y + i - half, height)) * stride + c;
          const double* weights = kernel + i * size;
          for (int j = 0; j < size; ++j) sum += row[column[j]] * weights[j];
        }
        if (divide) sum /= total;
        out[static_cast<std::ptrdiff_t>(y) * stride + x * channels + c] = static_cast<std::uint8_t>(ClampedLevel(sum));
      }
    }
  }
  return 1;
}

}  // namespace

int HotLeadKernelSize(int embossSize) { return embossSize % 2 == 0 ? embossSize + 1 : embossSize; }

std::vector<double> HotLeadKernel(int radius, int embossSize) {
  const int size = HotLeadKernelSize(embossSize);
  const int half = size / 2;
  const double sigma = radius / 10.0;
  std::vector<double> kernel;
  kernel.reserve(static_cast<std::size_t>(size) * size);
  for (int y = -half; y <= half; ++y) {
    for (int x = -half; x <= half; ++x) {
      const int squares = x * x + y * y;
      double value = std::exp(-squares / (sigma * sigma));
      value *= x >= 0 && y >= 0 ? 8.0 : -8.0;
      // The whole anti-diagonal, centre included, carries no weight.
      if (x + y == 0) value = 0.0;
      kernel.push_back(value);
    }
  }
  return kernel;
}

DibHandle HotLeadConvolve(DibHandle mask, int size, const double* kernel) {
  DibLock source(mask);
  if (source.head == nullptr) return nullptr;
  if (size % 2 == 0 || size > source.head->biWidth || size > source.head->biHeight) return nullptr;
  DibOwner result(DibNewLike(source.head, source.head->biWidth, source.head->biHeight));
  DibLock target(result.get());
  if (target.head == nullptr) return nullptr;
  const int depth = source.head->biBitCount;
  if ((depth == 8 || depth == 24) && Convolve(source.head, target.head, size, kernel) == 0) return nullptr;
  return result.release();
}
