// A test program's allocator that can be told to fail one call.
#pragma once

// From here on, calls to malloc, calloc and realloc are counted from 0, and
// the one numbered failingCall returns null (none for -1).
void AllocationsStart(long failingCall);

// Stops counting; the number of calls counted.
long AllocationsStop();
