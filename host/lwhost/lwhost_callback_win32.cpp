// The host codes as this host answers them. Tasks, comments and the start of
// a Build go to the portable reference host, which writes the GIF; status
// and progress also show in the window; the colour box and the image file
// dialog are the system's, and pictures are read through GDI+.
#include <windows.h>

#include <commctrl.h>
#include <commdlg.h>

#include <cstdio>
#include <string>

#include "host/image_reader.h"
#include "host/lwhost/lwhost.h"
#include "host/reference_host.h"

namespace {

const HostWindow* g_window = nullptr;

constexpr int kCustomColourCount = 16;

void ShowStatus(const char* text) {
  std::printf("status: %s\n", text);
  std::fflush(stdout);
  if (g_window != nullptr) {
    SetWindowTextA(g_window->status, text);
    UpdateWindow(g_window->status);
  }
}

// Step of total; 0 of 0 clears the bar.
void ShowProgress(std::int64_t step, std::int64_t total) {
  if (g_window == nullptr) return;
  SendMessageA(g_window->progress, PBM_SETRANGE32, 0, static_cast<LPARAM>(total > 0 ? total : 1));
  SendMessageA(g_window->progress, PBM_SETPOS, static_cast<WPARAM>(step), 0);
  UpdateWindow(g_window->progress);
}

// The system's colour box, with sixteen of the offered swatches, evenly
// spaced, as its custom colours.
std::int64_t PickColour(ColourPickRecord* record) {
  if (record == nullptr) return 0;
  COLORREF custom[kCustomColourCount];
  for (int slot = 0; slot < kCustomColourCount; ++slot) {
    const std::uint8_t* entry = record->palette != nullptr ? record->palette + 3 * (slot * 16 + 15) : nullptr;
    custom[slot] = entry != nullptr ? RGB(entry[0], entry[1], entry[2]) : RGB(255, 255, 255);
  }
  CHOOSECOLORA choice{};
  choice.lStructSize = sizeof choice;
  choice.hwndOwner = static_cast<HWND>(record->ownerWindow);
  choice.rgbResult = record->colour & 0xFFFFFF;
  choice.lpCustColors = custom;
  choice.Flags = CC_RGBINIT | CC_FULLOPEN;
  if (!ChooseColorA(&choice)) return 0;
  record->colour = choice.rgbResult;
  return 1;
}

// The system's file dialog for a picture; the path goes into path, which
// holds MAX_PATH bytes.
std::int64_t PickImageFile(HWND owner, char* path) {
  if (path == nullptr) return 0;
  OPENFILENAMEA choice{};
  choice.lStructSize = sizeof choice;
  choice.hwndOwner = owner;
  choice.lpstrFilter = "Pictures\0*.png;*.bmp;*.gif;*.jpg;*.jpeg;*.tif;*.tiff\0All files\0*.*\0";
  choice.lpstrFile = path;
  choice.nMaxFile = MAX_PATH;
  choice.Flags = OFN_FILEMUSTEXIST | OFN_PATHMUSTEXIST | OFN_HIDEREADONLY;
  return GetOpenFileNameA(&choice) ? 1 : 0;
}

std::int64_t LoadImageFile(const char* path) {
  std::string error;
  DibHandle picture = path != nullptr ? ImageRead(path, &error) : nullptr;
  if (picture == nullptr && path != nullptr) std::printf("image: %s: %s\n", path, error.c_str());
  std::fflush(stdout);
  return reinterpret_cast<std::int64_t>(picture);
}

}  // namespace

void LwHostUseWindow(const HostWindow* window) { g_window = window; }

std::int64_t LwHostCallback(TaskRecord* task, std::uint32_t code, std::int64_t argument,
                            std::int64_t pointerArgument) {
  switch (code) {
    case kHostStatusText:
      if (pointerArgument != 0) ShowStatus(reinterpret_cast<const char*>(pointerArgument));
      break;
    case kHostProgress:
      ShowProgress(argument, pointerArgument);
      break;
    case kHostPickColour:
      ReferenceHostCurrent().codes.push_back(code);
      return PickColour(reinterpret_cast<ColourPickRecord*>(pointerArgument));
    case kHostPickImageFile:
      ReferenceHostCurrent().codes.push_back(code);
      return PickImageFile(reinterpret_cast<HWND>(argument), reinterpret_cast<char*>(pointerArgument));
    case kHostLoadImageFile:
      ReferenceHostCurrent().codes.push_back(code);
      return LoadImageFile(reinterpret_cast<const char*>(pointerArgument));
    default:
      break;
  }
  std::int64_t result = ReferenceHostCallback(task, code, argument, pointerArgument);
  if (code == kHostCloseTask) ShowStatus(ReferenceHostCurrent().lastStatus.c_str());
  return result;
}
