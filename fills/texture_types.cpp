#include "fills/texture_types.h"

const TextureTypeRow TextureTypes[kTextureTypeCount] = {
    {"2-color fractal", [](TextureRecord* texture) { return FractalTexture(texture, 1); },
     {502, 501, 512, 507, 518, 517, 0}},
    {"3-color fractal", [](TextureRecord* texture) { return FractalTexture(texture, 2); },
     {502, 503, 501, 512, 507, 513, 508, 518, 519, 517, 0}},
    {"4-color fractal", [](TextureRecord* texture) { return FractalTexture(texture, 3); },
     {502, 503, 504, 501, 512, 513, 514, 507, 508, 509, 518, 519, 520, 517, 0}},
    {"5-color fractal", [](TextureRecord* texture) { return FractalTexture(texture, 4); },
     {502, 503, 504, 505, 501, 512, 513, 514, 515, 507, 508, 509, 510, 518, 519, 520, 521, 517, 0}},
    {"Craters", CraterTexture, {502, 501, 512, 523, 524, 0}},
    {"Perturbation", PerturbationTexture, {525, 526, 527, 517, 529, 528, 530, 532, 531, 512, 0}},
};

DibHandle TextureGenerate(TextureRecord* texture) {
  if (texture->TextureType < 0 || texture->TextureType >= kTextureTypeCount) return nullptr;
  return TextureTypes[texture->TextureType].generate(texture);
}

DibHandle TextureBackground(const TextureRecord& texture) {
  int width = texture.rectangle.right - texture.rectangle.left;
  int height = texture.rectangle.bottom - texture.rectangle.top;
  DibOwner bitmap(DibNew(width, height, nullptr, 24));
  DibLock lock(bitmap.get());
  if (lock.head == nullptr) return nullptr;
  for (int y = 0; y < height; ++y)
    for (int x = 0; x < width; ++x) DibPutPixel(lock.head, x, y, texture.BackColour);
  return bitmap.release();
}
