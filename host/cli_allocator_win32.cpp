// The Windows heap keeps freed blocks for reuse by itself.
#include "host/cli_allocator.h"

void CliKeepFreedMemory() {}
