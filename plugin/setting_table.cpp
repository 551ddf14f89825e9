// The setting globals with their compiled-in defaults, and the table over them.
#include <cstring>

#include "plugin/settings.h"

#define LW_DEFINE_NUMBER_SETTING(key, flags, extra, initial) std::uint32_t key = initial;
#define LW_DEFINE_TEXT_SETTING(key, flags, extra, initial) char key[kSettingStringSize] = initial;
LW_SETTING_ROWS(LW_DEFINE_NUMBER_SETTING, LW_DEFINE_TEXT_SETTING)
#undef LW_DEFINE_NUMBER_SETTING
#undef LW_DEFINE_TEXT_SETTING

#define LW_NUMBER_ROW(key, flags, extra, initial) {#key, &key, flags, extra, initial, nullptr},
#define LW_TEXT_ROW(key, flags, extra, initial) {#key, key, flags, extra, 0, initial},
const SettingRow SettingTable[kSettingCount] = {LW_SETTING_ROWS(LW_NUMBER_ROW, LW_TEXT_ROW)};
#undef LW_NUMBER_ROW
#undef LW_TEXT_ROW

#define LW_COUNT_ROW(key, flags, extra, initial) +1
static_assert(0 LW_SETTING_ROWS(LW_COUNT_ROW, LW_COUNT_ROW) == kSettingCount, "one row per setting");
#undef LW_COUNT_ROW

const SettingRow* SettingFind(const char* key) {
  for (const SettingRow& row : SettingTable) {
    if (std::strcmp(row.name, key) == 0) return &row;
  }
  return nullptr;
}

void SettingsReset() {
  for (const SettingRow& row : SettingTable) {
    if (row.flags & kSettingString) {
      std::memset(row.value, 0, kSettingStringSize);
      std::strcpy(static_cast<char*>(row.value), row.defaultText);
    } else {
      *static_cast<std::uint32_t*>(row.value) = row.defaultNumber;
    }
  }
}
