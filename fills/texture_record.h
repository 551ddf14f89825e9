// The parameters of a generated texture. The record stands in the Material
// file and in texture groups as it stands in memory, so every offset is fixed.
#pragma once

#include <cstddef>
#include <cstdint>

#include "raster/dib.h"

constexpr int kTextureLayers = 5;
constexpr int kTextureCurvePoints = 4;

#pragma pack(push, 1)
struct TextureRecord {
  std::int32_t TextureType;  // row of TextureTypes, 0 to 5
  DibRect rectangle;         // target; the generator takes its size from it
  std::uint8_t reserved0[20];
  std::uint32_t reservedOne;  // 1 after TextureDefaults, read by nothing
  std::uint32_t reserved1;
  float reservedFloats[6];  // kept at their defaults; nothing drawn reads them
  std::int32_t MatrixSize;  // mesh of the fractal types, detail of Perturbation
  std::uint32_t ForeColour[kTextureLayers];  // ForeColour1 to ForeColour5
  std::uint32_t BackColour;
  float Power[kTextureLayers];           // Power1 to Power5
  std::int32_t SeedValue[kTextureLayers];  // SeedValue1 to SeedValue5
  float Dimension[kTextureLayers];       // Dimension1 to Dimension5
  std::int32_t CreaterCount;  // craters, in tens
  float CreaterDepth;
  float ColorRed[kTextureCurvePoints];  // ColorRed0 to ColorRed3: tone curves
  float ColorGreen[kTextureCurvePoints];
  float ColorBlue[kTextureCurvePoints];
  std::int32_t BubbleCount;
  std::int32_t BubbleSize;
  float BubblePower;
  float PerturbationPower;
  std::int32_t BubbleShape;  // 0 ellipse, 1 fuzzy, 2 luminous, 3 sphere
  std::uint8_t reserved2[32];
};
#pragma pack(pop)

static_assert(offsetof(TextureRecord, rectangle) == 4 && offsetof(TextureRecord, reserved0) == 20);
static_assert(offsetof(TextureRecord, reservedOne) == 40 && offsetof(TextureRecord, reserved1) == 44);
static_assert(offsetof(TextureRecord, reservedFloats) == 48 && offsetof(TextureRecord, MatrixSize) == 72);
static_assert(offsetof(TextureRecord, ForeColour) == 76 && offsetof(TextureRecord, BackColour) == 96);
static_assert(offsetof(TextureRecord, Power) == 100 && offsetof(TextureRecord, SeedValue) == 120);
static_assert(offsetof(TextureRecord, Dimension) == 140 && offsetof(TextureRecord, CreaterCount) == 160);
static_assert(offsetof(TextureRecord, CreaterDepth) == 164 && offsetof(TextureRecord, ColorRed) == 168);
static_assert(offsetof(TextureRecord, ColorGreen) == 184 && offsetof(TextureRecord, ColorBlue) == 200);
static_assert(offsetof(TextureRecord, BubbleCount) == 216 && offsetof(TextureRecord, BubbleSize) == 220);
static_assert(offsetof(TextureRecord, BubblePower) == 224 && offsetof(TextureRecord, PerturbationPower) == 228);
static_assert(offsetof(TextureRecord, BubbleShape) == 232 && offsetof(TextureRecord, reserved2) == 236);
static_assert(sizeof(TextureRecord) == 268);

// Writes the defaults that are not zero; a record comes zeroed from its
// allocation, which supplies the rest.
inline void TextureDefaults(TextureRecord* texture) {
  static constexpr float kReservedFloats[6] = {12.0f, 60.0f, 2.0f, 3.1f, 100.0f, 650.0f};
  static constexpr std::uint32_t kForeColours[kTextureLayers] = {0xFFFFFF, 0xFFE0E0, 0xFFA0A0, 0xFF8080, 0xFF6060};
  static constexpr float kCurve[kTextureCurvePoints] = {0.0f, 0.33f, 0.67f, 1.0f};
  texture->reservedOne = 1;
  for (int i = 0; i < 6; ++i) texture->reservedFloats[i] = kReservedFloats[i];
  texture->MatrixSize = 64;
  for (int i = 0; i < kTextureLayers; ++i) {
    texture->ForeColour[i] = kForeColours[i];
    texture->Power[i] = 0.75f;
    texture->SeedValue[i] = 10000 + i;
    texture->Dimension[i] = 2.15f;
  }
  texture->BackColour = 0xFF0000;
  texture->CreaterCount = 5000;
  texture->CreaterDepth = 1.5f;
  for (int i = 0; i < kTextureCurvePoints; ++i) {
    texture->ColorRed[i] = kCurve[i];
    texture->ColorGreen[i] = kCurve[i];
    texture->ColorBlue[i] = kCurve[i];
  }
  texture->BubbleCount = 64;
  texture->BubbleSize = 4;
  texture->BubblePower = 0.25f;
  texture->PerturbationPower = 1.0f;
}
