// LWMOTIO3.INI: read once when the dialog starts, rewritten once when it goes.
// A line is "key = value"; the key matches the first eligible row whose name
// starts with it, and there is no section handling.
#include <cctype>
#include <cstring>

#include "plugin/platform.h"
#include "plugin/settings.h"

namespace {

char g_explicitFile[kAppDataPathSize];

// The C runtime's atoi as the plug-in's runtime has it: leading white space,
// a sign, then digits accumulated with wrap-around instead of a clamp.
std::uint32_t SettingAtoi(const char* text) {
  while (std::isspace(static_cast<unsigned char>(*text))) ++text;
  bool negative = *text == '-';
  if (*text == '-' || *text == '+') ++text;
  std::uint32_t value = 0;
  for (; *text >= '0' && *text <= '9'; ++text) value = value * 10 + static_cast<std::uint32_t>(*text - '0');
  return negative ? 0u - value : value;
}

// First row, in table order, whose name begins with the key's len bytes.
// Write-only rows never match; an empty key matches the first row that may.
const SettingRow* SettingMatchPrefix(const char* key, size_t len) {
  for (const SettingRow& row : SettingTable) {
    if (row.flags & kSettingWriteOnly) continue;
    if (std::strncmp(row.name, key, len) == 0) return &row;
  }
  return nullptr;
}

void SettingsReadLine(char* line) {
  if (line[0] == ';') return;
  for (char* end = line; *end != '\0'; ++end) {
    if (static_cast<unsigned char>(*end) < 32) {
      *end = '\0';
      break;
    }
  }
  size_t keyLength = 0;
  while (static_cast<unsigned char>(line[keyLength]) > 32 && line[keyLength] != '=') ++keyLength;
  const SettingRow* row = SettingMatchPrefix(line, keyLength);
  if (row == nullptr) return;
  const char* rest = line + keyLength;
  while (*rest == ' ') ++rest;
  while (*rest == '=') ++rest;
  while (*rest == ' ') ++rest;
  SettingStore(row, rest);
}

}  // namespace

void SettingStore(const SettingRow* row, const char* text) {
  if (row->flags & (kSettingSwitch | kSettingNumber)) {
    *static_cast<std::uint32_t*>(row->value) = SettingAtoi(text);
  } else if (row->flags & kSettingString) {
    char* buffer = static_cast<char*>(row->value);
    std::memset(buffer, 0, kSettingStringSize);
    std::strncpy(buffer, text, kSettingStringSize - 1);
  }
}

void SettingsUseFile(const char* path) {
  g_explicitFile[0] = '\0';
  if (path != nullptr) std::snprintf(g_explicitFile, sizeof g_explicitFile, "%s", path);
}

const char* SettingsFilePath() {
  return g_explicitFile[0] != '\0' ? g_explicitFile : AppDataPath("LWMOTIO3.INI");
}

int SettingsLoadFile(const char* path, bool shiftHeld) {
  std::FILE* file = std::fopen(path, "rt");
  if (file == nullptr) return 0;
  char line[260];
  while (std::fgets(line, sizeof line, file) != nullptr) {
    if (!shiftHeld) SettingsReadLine(line);  // Shift: all defaults stand
  }
  int read = !std::ferror(file);
  std::fclose(file);
  return read;
}

void SettingsLoad() {
  bool shiftHeld = PlatformShiftHeld();
  const char* path = SettingsFilePath();
  if (path[0] != '\0') SettingsLoadFile(path, shiftHeld);
}

void SettingsDateText(const std::tm& when, char text[25]) {
  static const char kDays[7][4] = {"Sun", "Mon", "Tue", "Wed", "Thu", "Fri", "Sat"};
  static const char kMonths[12][4] = {"Jan", "Feb", "Mar", "Apr", "May", "Jun",
                                      "Jul", "Aug", "Sep", "Oct", "Nov", "Dec"};
  char full[64];  // room for any year; the file keeps the first 24 characters
  std::snprintf(full, sizeof full, "%.3s %.3s%3d %.2d:%.2d:%.2d %d", kDays[(when.tm_wday % 7 + 7) % 7],
                kMonths[(when.tm_mon % 12 + 12) % 12], when.tm_mday, when.tm_hour, when.tm_min, when.tm_sec,
                when.tm_year + 1900);
  std::snprintf(text, 25, "%.24s", full);
}

void SettingsWrite(std::FILE* out, std::time_t now) {
  const std::tm* local = std::localtime(&now);
  char date[25];
  SettingsDateText(local != nullptr ? *local : std::tm{}, date);
  std::fprintf(out, ";Brindle Foundries animtion plugin configuration file\n");
  std::fprintf(out, ";Edit this at your own risk\n");
  std::fprintf(out, ";Last updated %24.24s\n", date);
  std::fprintf(out, ";\n");
  std::fprintf(out, "[PlugIn]\n");
  for (const SettingRow& row : SettingTable) {
    if (row.flags & (kSettingSwitch | kSettingNumber)) {
      std::fprintf(out, "%s = %u\n", row.name, static_cast<unsigned>(*static_cast<std::uint32_t*>(row.value)));
    } else if (row.flags & kSettingString) {
      std::fprintf(out, "%s = %s\n", row.name, static_cast<const char*>(row.value));
    }
  }
}

int SettingsSaveFile(const char* path, std::time_t now) {
  std::FILE* file = std::fopen(path, "wt");
  if (file == nullptr) return 0;
  SettingsWrite(file, now);
  std::fclose(file);
  return 1;
}

void SettingsSave() {
  char path[kAppDataPathSize];
  std::snprintf(path, sizeof path, "%s", SettingsFilePath());
  if (path[0] != '\0') SettingsSaveFile(path, std::time(nullptr));
}
