// Truncation of a double to int as the x86-64 conversion does it: toward
// zero, and the "integer indefinite" INT_MIN for NaN and anything outside the
// int range, where a plain cast would be undefined. Values from hand-edited
// files can be anything, and the pictures must still not depend on the
// compiler.
#pragma once

#include <climits>

inline int FloatToInt(double value) {
  if (!(value > -2147483649.0 && value < 2147483648.0)) return INT_MIN;
  return static_cast<int>(value);
}
