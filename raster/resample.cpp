// The resampler. A pass computes the weights of every output position once,
// then sums whole lines of bytes: each channel of each pixel is one double,
// the source samples added in ascending order, exactly as a plain loop over
// the pixel functions would add them. Zero samples are not visited: a term of
// weight times zero leaves every partial sum as it was, so mostly empty
// pictures (a stamp, a mask) cost only their inked parts.
#include <algorithm>
#include <cstdint>
#include <memory>
#include <new>

#include "raster/resample.h"

namespace {

// The source samples that make one output position: count weights from
// first onwards, stored at offset in the pass's weight array.
struct SampleSpan {
  int first;
  int count;
  int offset;
};

struct PassWeights {
  std::unique_ptr<SampleSpan[]> spans;
  std::unique_ptr<double[]> weights;
};

struct PassShape {
  int sourceLength;
  int targetLength;
  double factor;
  double blur;
  int capacity;  // most samples one output position may take
};

void SpanWeights(const PassShape& shape, const ResampleFilter& filter, int position, double* weights,
                 SampleSpan* span) {
  double scale = std::max(1.0 / shape.factor, 1.0) * shape.blur;
  double support = scale * filter.support;
  if (!(support > 0.5)) {
    support = 0.500001;
    scale = 1.0;
  }
  double centre = (position + 0.5) / shape.factor;
  int first = static_cast<int>(std::max(centre - support + 0.5, 0.0));
  int stop = static_cast<int>(std::min(centre + support + 0.5, static_cast<double>(shape.sourceLength)));
  double density = 1.0 / scale;
  double sum = 0.0;
  int count = 0;
  for (int j = first; j < stop && count < shape.capacity; ++j, ++count) {
    weights[count] = filter.weight((j - centre + 0.5) * density, filter.support);
    sum += weights[count];
  }
  if (sum != 0.0 && sum != 1.0) {
    double normal = 1.0 / sum;
    for (int k = 0; k < count; ++k) weights[k] *= normal;
  }
  span->first = first;
  span->count = count;
}

int ComputePassWeights(const PassShape& shape, const ResampleFilter& filter, PassWeights* pass) {
  auto length = static_cast<std::size_t>(shape.targetLength);
  pass->spans.reset(new (std::nothrow) SampleSpan[length]);
  pass->weights.reset(new (std::nothrow) double[length * static_cast<std::size_t>(shape.capacity)]);
  if (pass->spans == nullptr || pass->weights == nullptr) return 0;
  for (int i = 0; i < shape.targetLength; ++i) {
    SampleSpan& span = pass->spans[i];
    span.offset = i * shape.capacity;
    SpanWeights(shape, filter, i, pass->weights.get() + span.offset, &span);
  }
  return 1;
}

inline std::uint8_t RoundChannel(double value) {
  if (value < 0.0) return 0;
  if (value > 255.0) return 255;
  return static_cast<std::uint8_t>(static_cast<int>(value + 0.5));
}

// The pixels of a row from the first to the last that has a non-zero byte;
// first == stop for a blank row.
struct InkSpan {
  int first;
  int stop;
};

std::unique_ptr<InkSpan[]> RowInk(const DibHead* image, int channels) {
  std::unique_ptr<InkSpan[]> inks(new (std::nothrow) InkSpan[image->biHeight]);
  if (inks == nullptr) return nullptr;
  const int bytes = image->biWidth * channels;
  for (int y = 0; y < image->biHeight; ++y) {
    int first = 0;
    int last = 0;
    DibRowInk(DibRow(image, y), bytes, &first, &last);
    inks[y] = first < last ? InkSpan{first / channels, (last - 1) / channels + 1} : InkSpan{0, 0};
  }
  return inks;
}

// The target is zeroed when made, so positions whose samples are all
// outside the ink are left as they are.
template <int channels>
void FilterRowsAcross(const PassWeights& pass, const DibHead* source, DibHead* target, const InkSpan* inks) {
  for (int y = 0; y < target->biHeight; ++y) {
    const InkSpan ink = inks[y];
    if (ink.first == ink.stop) continue;
    const std::uint8_t* in = DibRow(source, y);
    std::uint8_t* out = DibRow(target, y);
    for (int x = 0; x < target->biWidth; ++x) {
      const SampleSpan& span = pass.spans[x];
      if (span.first >= ink.stop || span.first + span.count <= ink.first) continue;
      const double* weights = pass.weights.get() + span.offset;
      const std::uint8_t* samples = in + static_cast<std::ptrdiff_t>(span.first) * channels;
      double sums[channels] = {};
      for (int k = 0; k < span.count; ++k)
        for (int c = 0; c < channels; ++c) sums[c] += weights[k] * samples[k * channels + c];
      for (int c = 0; c < channels; ++c) out[x * channels + c] = RoundChannel(sums[c]);
    }
  }
}

void FilterColumnsDown(const PassWeights& pass, const DibHead* source, DibHead* target, int channels,
                       double* line, const InkSpan* inks) {
  for (int y = 0; y < target->biHeight; ++y) {
    const SampleSpan& span = pass.spans[y];
    const double* weights = pass.weights.get() + span.offset;
    InkSpan reach = {target->biWidth, 0};
    for (int k = 0; k < span.count; ++k) {
      const InkSpan ink = inks[span.first + k];
      if (ink.first == ink.stop) continue;
      reach = {std::min(reach.first, ink.first), std::max(reach.stop, ink.stop)};
    }
    if (reach.first >= reach.stop) continue;
    std::fill(line + reach.first * channels, line + reach.stop * channels, 0.0);
    for (int k = 0; k < span.count; ++k) {
      const InkSpan ink = inks[span.first + k];
      const std::uint8_t* in = DibRow(source, span.first + k);
      double weight = weights[k];
      for (int i = ink.first * channels; i < ink.stop * channels; ++i) line[i] += weight * in[i];
    }
    std::uint8_t* out = DibRow(target, y);
    for (int i = reach.first * channels; i < reach.stop * channels; ++i) out[i] = RoundChannel(line[i]);
  }
}

int ChannelsOf(const DibHead* head) {
  switch (head->biBitCount) {
    case 8:
      return 1;
    case 24:
      return 3;
    case 32:
      return 4;
    default:
      return 0;
  }
}

// The pass that changes the width.
int ResampleColumns(const DibHead* source, DibHead* target, double factor, const ResampleFilter& filter,
                    double blur, int capacity) {
  PassWeights pass;
  PassShape shape{source->biWidth, target->biWidth, factor, blur, capacity};
  if (ComputePassWeights(shape, filter, &pass) == 0) return 0;
  const int channels = ChannelsOf(source);
  if (channels == 0) return 1;
  std::unique_ptr<InkSpan[]> inks(RowInk(source, channels));
  if (inks == nullptr) return 0;
  switch (channels) {
    case 1:
      FilterRowsAcross<1>(pass, source, target, inks.get());
      break;
    case 3:
      FilterRowsAcross<3>(pass, source, target, inks.get());
      break;
    case 4:
      FilterRowsAcross<4>(pass, source, target, inks.get());
      break;
    default:
      break;
  }
  return 1;
}

// The pass that changes the height.
int ResampleRows(const DibHead* source, DibHead* target, double factor, const ResampleFilter& filter, double blur,
                 int capacity) {
  PassWeights pass;
  PassShape shape{source->biHeight, target->biHeight, factor, blur, capacity};
  if (ComputePassWeights(shape, filter, &pass) == 0) return 0;
  int channels = ChannelsOf(source);
  if (channels == 0) return 1;
  std::unique_ptr<double[]> line(new (std::nothrow) double[static_cast<std::size_t>(target->biWidth) * 4 + 1]);
  std::unique_ptr<InkSpan[]> inks(RowInk(source, channels));
  if (line == nullptr || inks == nullptr) return 0;
  FilterColumnsDown(pass, source, target, channels, line.get(), inks.get());
  return 1;
}

double FactorOf(int target, int source) { return std::max(static_cast<double>(target) / source, 0.0001); }

}  // namespace

DibHandle DibResample(DibHandle source, int width, int height, double blur) {
  DibLock in(source);
  if (in.head == nullptr) return nullptr;
  int sourceWidth = in.head->biWidth;
  int sourceHeight = in.head->biHeight;
  if (width == sourceWidth && height == sourceHeight && blur == 1.0) return DibClone(source);
  DibOwner target(DibNewLike(in.head, width, height));
  DibLock out(target.get());
  if (out.head == nullptr) return nullptr;

  double xFactor = FactorOf(width, sourceWidth);
  double yFactor = FactorOf(height, sourceHeight);
  const ResampleFilter& filter = ResampleFilters[xFactor * yFactor > 1.0 ? kResampleMitchell : kResampleLanczos];
  double xSupport = std::max(1.0 / xFactor, 1.0) * blur * filter.support;
  double ySupport = std::max(1.0 / yFactor, 1.0) * blur * filter.support;
  int capacity = static_cast<int>(2.0 * std::max({xSupport, ySupport, filter.support, 0.5}) + 3.0);

  auto w0 = static_cast<std::uint32_t>(sourceWidth);
  auto h0 = static_cast<std::uint32_t>(sourceHeight);
  auto w1 = static_cast<std::uint32_t>(width);
  auto h1 = static_cast<std::uint32_t>(height);
  bool rowsFirst = (h0 + h1) * w1 <= (w0 + w1) * h1;
  DibOwner middle(rowsFirst ? DibNewLike(in.head, sourceWidth, height) : DibNewLike(in.head, width, sourceHeight));
  DibLock between(middle.get());
  if (between.head == nullptr) return nullptr;
  int done = rowsFirst ? ResampleRows(in.head, between.head, yFactor, filter, blur, capacity) &&
                             ResampleColumns(between.head, out.head, xFactor, filter, blur, capacity)
                       : ResampleColumns(in.head, between.head, xFactor, filter, blur, capacity) &&
                             ResampleRows(between.head, out.head, yFactor, filter, blur, capacity);
  if (done == 0) return nullptr;
  return target.release();
}

DibHandle DibResize(DibHandle source, int percentX, int percentY) {
  int width = 0;
  int height = 0;
  if (DibSizeOf(source, &width, &height) == 0) return nullptr;
  auto newWidth = static_cast<int>(width * static_cast<double>(percentX) / 100.0 + 0.5);
  auto newHeight = static_cast<int>(height * static_cast<double>(percentY) / 100.0 + 0.5);
  return DibResample(source, newWidth, newHeight, 1.0);
}
