// The random stream of the Microsoft C runtime, reproduced bit for bit so
// that equal seeds give equal frames on every platform. The platform's own
// rand is never used.
#pragma once

constexpr int kCrtRandMax = 0x7FFF;

// Restarts the stream; before any call the stream stands as after CrtSrand(1).
void CrtSrand(unsigned seed);
// The next number of the stream, 0 to 32767.
int CrtRand();
