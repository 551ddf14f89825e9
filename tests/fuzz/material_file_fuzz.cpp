// Any bytes as a fill's Material file: loaded as the swatch would load it,
// rendered at a small size and saved again.
#include <cstdint>

#include "fills/material.h"
#include "tests/fuzz/fuzz_input.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  MemOwner block(MaterialLoad(FuzzInputFile(data, size), 0x808080, 1));
  if (block == nullptr) return 0;
  auto* record = static_cast<MaterialRecord*>(MemLock(block.get()));
  if (record != nullptr) {
    DibOwner picture(MaterialRender(record, 37, 19));
    if (picture != nullptr) record->averageColour = MaterialAverageColour(picture.get());
    MemUnlock(block.get());
  }
  MaterialSave(block.get(), FuzzOutputFile());
  return 0;
}
