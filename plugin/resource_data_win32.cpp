#include <windows.h>

#include "plugin/plugin_state_win32.h"
#include "plugin/resource_data.h"

const std::uint8_t* ResourceBytes(const char* type, int id, std::size_t* size) {
  *size = 0;
  HRSRC found = FindResourceA(g_module, MAKEINTRESOURCEA(id), type);
  if (found == nullptr) return nullptr;
  HGLOBAL loaded = LoadResource(g_module, found);
  if (loaded == nullptr) return nullptr;
  *size = SizeofResource(g_module, found);
  return static_cast<const std::uint8_t*>(LockResource(loaded));
}
