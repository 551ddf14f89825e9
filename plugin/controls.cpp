#include "plugin/controls.h"

#include <cerrno>
#include <cstdint>
#include <cstdio>
#include <cstdlib>

int ControlText(const Controls* dialog, int id, char* buffer, int size) {
  return dialog->ops->text(dialog->impl, id, buffer, size);
}

int ControlChecked(const Controls* dialog, int id) { return dialog->ops->checked(dialog->impl, id); }

int ControlSelection(const Controls* dialog, int id) { return dialog->ops->selection(dialog->impl, id); }

MemHandle ControlData(const Controls* dialog, int id) { return dialog->ops->data(dialog->impl, id); }

void ControlSetText(const Controls* dialog, int id, const char* text) { dialog->ops->setText(dialog->impl, id, text); }

void ControlSetCheck(const Controls* dialog, int id, int checked) {
  dialog->ops->setCheck(dialog->impl, id, checked);
}

void ControlSetSelection(const Controls* dialog, int id, int index) {
  dialog->ops->setSelection(dialog->impl, id, index);
}

void ControlSelectText(const Controls* dialog, int id, const char* text) {
  dialog->ops->selectText(dialog->impl, id, text);
}

void ControlClearList(const Controls* dialog, int id) { dialog->ops->clearList(dialog->impl, id); }

void ControlAddItem(const Controls* dialog, int id, const char* text) { dialog->ops->addItem(dialog->impl, id, text); }

void ControlShowMessage(const Controls* dialog, const char* text) { dialog->ops->showMessage(dialog->impl, text); }

void* ControlWaitCursor(const Controls* dialog, int wait, void* previous) {
  return dialog->ops->waitCursor(dialog->impl, wait, previous);
}

namespace {

constexpr int kUpDownOffset = 10000;

// An edit's number as the edit control's number getter reads it: leading
// blanks, then digits (with a sign only when signed); a text that does not
// start with a number, or a value that does not fit 32 bits, reads as 0.
long long ReadEditNumber(const char* text, bool isSigned) {
  errno = 0;
  char* end = nullptr;
  long long value = isSigned ? std::strtoll(text, &end, 10) : static_cast<long long>(std::strtoull(text, &end, 10));
  if (end == text || errno == ERANGE) return 0;
  bool fits = isSigned ? value >= INT32_MIN && value <= INT32_MAX : value >= 0 && value <= UINT32_MAX;
  return fits ? value : 0;
}

}  // namespace

int ReadControlInt(const Controls* dialog, int id) {
  int minimum = 0;
  int maximum = 100;
  int defaultValue = 0;
  char range[64];
  ControlText(dialog, id + kUpDownOffset, range, sizeof range);
  std::sscanf(range, "%d,%d,%d", &minimum, &maximum, &defaultValue);

  char text[64];
  ControlText(dialog, id, text, sizeof text);
  long long value = ReadEditNumber(text, minimum < 0);
  if (value < minimum) value = minimum;
  if (value > maximum) value = maximum;
  return static_cast<int>(value);
}

int ReadControlNumber(const Controls* dialog, int id) {
  char text[64];
  ControlText(dialog, id, text, sizeof text);
  return std::atoi(text);
}
