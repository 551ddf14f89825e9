// Any bytes as the noise swatch's file: loaded as the swatch loads it, its
// map made at a small size, and written back.
#include <cstdint>
#include <cstdio>

#include "fills/noise_record.h"
#include "tests/fuzz/fuzz_input.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  NoiseRecord record;
  NoiseDefaults(&record, "");
  NoiseRecordLoad(&record, FuzzInputFile(data, size), 1);
  DibOwner map(MakeNoise(23, 17, record));
  std::snprintf(record.path, sizeof record.path, "%s", FuzzOutputFile());
  NoiseRecordSave(record);
  return 0;
}
