#include "dialogkit/message_box_win32.h"

#include <cstring>

#include "plugin/plugin_state_win32.h"

namespace {

constexpr int kStringBufferSize = 1024;
char g_stringBuffer[kStringBufferSize];

}  // namespace

const char* StringLookup(int id) {
  if (LoadStringA(g_module, static_cast<UINT>(id), g_stringBuffer, kStringBufferSize) == 0)
    std::strcpy(g_stringBuffer, "String table error - this application may be damaged");
  return g_stringBuffer;
}
