// One 512 by 512 texture of each type on its default record, with the mesh
// the primary group's designs use: the cost a texture fill adds to every
// frame that shows it.
#include <benchmark/benchmark.h>

#include "fills/texture_types.h"

namespace {

void Texture(benchmark::State& state) {
  TextureRecord texture{};
  TextureDefaults(&texture);
  texture.TextureType = static_cast<int>(state.range(0));
  texture.MatrixSize = static_cast<int>(state.range(1));
  texture.rectangle = {0, 0, 512, 512};
  state.SetLabel(TextureTypes[texture.TextureType].name);
  for (auto _ : state) {
    DibOwner picture(TextureGenerate(&texture));
    if (picture == nullptr) state.SkipWithError("no texture");
  }
}

}  // namespace

BENCHMARK(Texture)
    ->ArgsProduct({{0, 1, 2, 3, 4, 5}, {64, 256}})
    ->ArgNames({"type", "mesh"})
    ->Unit(benchmark::kMillisecond);
