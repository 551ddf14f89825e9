// Hue, saturation and value adjustment. Everything is single precision: the
// rounding of float is part of the output.
#include "raster/dib.h"

#include <cmath>

namespace {

struct Hsv {
  float hue;  // degrees, -1 for black
  float saturation;
  float value;
};

struct Rgb {
  float red;
  float green;
  float blue;
};

Hsv ToHsv(std::uint32_t colour) {
  float red = static_cast<float>(colour & 0xFF) / 255.0f;
  float green = static_cast<float>(colour >> 8 & 0xFF) / 255.0f;
  float blue = static_cast<float>(colour >> 16 & 0xFF) / 255.0f;
  float largest = std::fmax(red, std::fmax(green, blue));
  float smallest = std::fmin(red, std::fmin(green, blue));
  if (largest == 0.0f) return {-1.0f, 0.0f, 0.0f};
  float spread = largest - smallest;
  float saturation = spread / largest;
  float divisor = spread == 0.0f ? 1.0f : spread;
  float hue;
  if (red == largest) {
    hue = (green - blue) / divisor;
  } else if (green == largest) {
    hue = 2.0f + (blue - red) / divisor;
  } else {
    hue = 4.0f + (red - green) / divisor;
  }
  hue *= 60.0f;
  if (hue < 0.0f) hue += 360.0f;
  return {hue, saturation, largest};
}

Rgb FromHsv(Hsv hsv) {
  float s = std::fmin(hsv.saturation, 1.0f);
  float v = std::fmin(hsv.value, 1.0f);
  if (s == 0.0f) return {v, v, v};
  float h = hsv.hue / 60.0f;
  float p = v * (1.0f - s);
  if (!(h >= 0.0f && h < 6.0f)) return {v, v, p};  // sextant outside 0 to 5
  int i = static_cast<int>(std::floor(h));
  float f = h - static_cast<float>(i);
  float q = v * (1.0f - f * s);
  float t = v * (1.0f - (1.0f - f) * s);
  switch (i) {
    case 0: return {v, t, p};
    case 1: return {q, v, p};
    case 2: return {p, v, t};
    case 3: return {p, q, v};
    case 4: return {t, p, v};
    default: return {v, p, q};
  }
}

std::uint32_t ChannelByte(float channel) {
  float scaled = channel * 255.0f;
  if (scaled < 0.0f) scaled = 0.0f;
  if (scaled > 255.0f) scaled = 255.0f;
  return static_cast<std::uint32_t>(scaled);
}

}  // namespace

DibHandle DibAdjustHsv(DibHandle dib, float hueAdd, float saturationFactor, float valueFactor) {
  DibLock source(dib);
  if (source.head == nullptr) return nullptr;
  int width = source.head->biWidth;
  int height = source.head->biHeight;
  bool keepAlpha = source.head->biBitCount == 32;
  DibOwner adjusted(DibNewLike(source.head, width, height));
  DibLock target(adjusted.get());
  if (target.head == nullptr) return nullptr;
  for (int y = 0; y < height; ++y) {
    for (int x = 0; x < width; ++x) {
      std::uint32_t pixel = static_cast<std::uint32_t>(DibGetPixel(source.head, x, y));
      Hsv hsv = ToHsv(pixel);
      hsv.hue += hueAdd;
      hsv.saturation *= saturationFactor;
      hsv.value *= valueFactor;
      Rgb rgb = FromHsv(hsv);
      std::uint32_t out = ChannelByte(rgb.red) | ChannelByte(rgb.green) << 8 | ChannelByte(rgb.blue) << 16;
      if (keepAlpha) out |= pixel & 0xFF000000u;
      DibPutPixel(target.head, x, y, out);
    }
  }
  return adjusted.release();
}
