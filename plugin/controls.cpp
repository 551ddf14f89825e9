#include "plugin/controls.h"

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

// Unsigned read of an edit's text, as the edit control's number getter does:
// leading digits only, anything else stops the number.
long long ReadUnsigned(const char* text) {
  long long value = 0;
  while (*text == ' ') ++text;
  for (; *text >= '0' && *text <= '9'; ++text) value = value * 10 + (*text - '0');
  return value;
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
  long long value = minimum < 0 ? std::atoll(text) : ReadUnsigned(text);
  if (value < minimum) value = minimum;
  if (value > maximum) value = maximum;
  return static_cast<int>(value);
}

int ReadControlNumber(const Controls* dialog, int id) {
  char text[64];
  ControlText(dialog, id, text, sizeof text);
  return std::atoi(text);
}
