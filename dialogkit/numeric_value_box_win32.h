// The numeric value box, dialog "GetNumericValueBox": one whole number with
// a label and a range that the caller sets, the number in edit 101 with its
// up-down 10101.
#pragma once

#include <windows.h>

inline constexpr char kNumericValueBoxTemplate[] = "GetNumericValueBox";
constexpr int kNumericValueLabelId = 100;
constexpr int kNumericValueEditId = 101;
constexpr int kNumericValueUpDownId = 10101;

struct NumericValueRequest {
  const char* label;
  int minimum;
  int maximum;
  int value;  // in: shown; out: the confirmed value, held to the range
};

// 1 on OK with request->value set, 0 on Cancel.
int NumericValueBox(HWND owner, NumericValueRequest* request);
INT_PTR CALLBACK NumericValueBoxProc(HWND dialog, UINT message, WPARAM wParam, LPARAM lParam);
