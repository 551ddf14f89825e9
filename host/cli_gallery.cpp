// lwmotio3 gallery: every built effect rendered on the compiled-in settings
// (no settings file, no saved fills) into one folder, one GIF each, with an
// index.html that shows them in a table.
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cctype>
#include <cerrno>
#include <chrono>
#include <cstdio>
#include <cstring>
#include <string>
#include <vector>

#include "effects/effect.h"
#include "host/cli.h"
#include "fills/material.h"
#include "fills/texture_group.h"
#include "host/cli_output.h"
#include "host/data_folders.h"
#include "host/primary_groups.h"
#include "host/reference_host.h"
#include "host/render_setup.h"
#include "plugin/build_pipeline.h"
#include "plugin/host_call.h"
#include "plugin/settings.h"
#include "raster/gdi_command.h"

namespace {

struct GalleryEntry {
  std::string name;
  std::string file;
  int frames;
  long long bytes;
  double seconds;
};

void PrintGalleryUsage(std::FILE* out) {
  std::fprintf(out,
               "usage: lwmotio3 gallery DIR\n"
               "\n"
               "Renders every built effect on the compiled-in settings (your settings file\n"
               "and saved fills are not read; tiles come from the primary group) into DIR,\n"
               "one GIF each, then Simple's still with each texture of the primary group\n"
               "as its text fill, and writes\n"
               "DIR/index.html, a table of the effects with their frames, sizes and render\n"
               "times. DIR is made if missing; files of the same names are replaced.\n");
}

int Fail(const std::string& message) {
  std::fprintf(stderr, "lwmotio3 gallery: %s\n", message.c_str());
  return 1;
}

// "Z-Axis Fountain" -> "z-axis-fountain.gif".
std::string FileNameOf(const char* effectName) {
  std::string name;
  for (const char* c = effectName; *c != '\0'; ++c)
    name += *c == ' ' ? '-' : static_cast<char>(std::tolower(static_cast<unsigned char>(*c)));
  return name + ".gif";
}

long long FileBytes(const std::string& path) {
  struct stat status {};
  return stat(path.c_str(), &status) == 0 ? static_cast<long long>(status.st_size) : -1;
}

constexpr int kSimpleFillId = 101;

// The text fill of Simple's still made a texture of the primary group.
void DressWithTexture(ControlsSnapshot* snapshot, const TextureItem& item) {
  MaterialRecord* record = MaterialLock(&snapshot->controls, kSimpleFillId);
  if (record == nullptr) return;
  record->kind = kMaterialTexture;
  record->texture = item.texture;
  MaterialUnlock(&snapshot->controls, kSimpleFillId);
}

// One effect, as a render of it with built-in settings would make it; with
// a texture, Simple's still with that texture as its text fill. 1 if the
// GIF was written; otherwise what the run showed (Memory error), if
// anything, is in shown.
int RenderEffect(int row, const TextureItem* texture, const std::string& folder, GalleryEntry* entry,
                 std::string* shown) {
  SettingsReset();
  SettingStore(SettingFind("MainEffect"), std::to_string(row).c_str());
  if (texture != nullptr) SettingStore(SettingFind("MainRolling"), "0");
  ControlsSnapshot snapshot;
  SnapshotInit(&snapshot);
  HostRecord host = ReferenceHostRecord();
  RenderLoadDialog(&snapshot, host.hostFlags, 1, 90, 0);
  entry->name = EffectTable[row].name;
  entry->file = FileNameOf(EffectTable[row].name);
  if (texture != nullptr) {
    DressWithTexture(&snapshot, *texture);
    entry->name += std::string(", texture ") + texture->name;
    entry->file = FileNameOf((std::string(EffectTable[row].name) + " " + texture->name).c_str());
  }
  std::string path = folder + "/" + entry->file;
  ReferenceHostReset(path, false);
  auto start = std::chrono::steady_clock::now();
  HostCall(&host, kHostBuildStarted);
  int complete = BuildAnimation(&snapshot.controls, &host, 0);
  entry->seconds = std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
  const std::vector<std::uint32_t>& codes = ReferenceHostCurrent().codes;
  entry->frames = static_cast<int>(std::count(codes.begin(), codes.end(), kHostAddImage));
  entry->bytes = FileBytes(path);
  if (!snapshot.messages.empty()) *shown = snapshot.messages.back();
  SnapshotClear(&snapshot);
  return complete != 0 && ReferenceHostCurrent().filesWritten == 1 ? 1 : 0;
}

std::string IndexPage(const std::vector<GalleryEntry>& entries) {
  std::string page =
      "<!DOCTYPE html>\n<html lang=\"en\">\n<head>\n<meta charset=\"utf-8\">\n"
      "<title>lwmotio3 gallery</title>\n<style>\n"
      "body { font-family: sans-serif; margin: 2em; background: #fafafa; }\n"
      "table { border-collapse: collapse; }\n"
      "th, td { border: 1px solid #ccc; padding: 6px 10px; text-align: left; }\n"
      "td.n { text-align: right; }\n"
      "</style>\n</head>\n<body>\n<h1>lwmotio3 gallery</h1>\n"
      "<p>Every built effect on the compiled-in settings, then Simple's still with each texture of the primary\n"
      "group as its text fill, rendered by <code>lwmotio3 gallery</code>.</p>\n"
      "<table>\n<tr><th>effect</th><th>animation</th><th>frames</th><th>bytes</th><th>render ms</th></tr>\n";
  char row[1024];
  for (const GalleryEntry& entry : entries) {
    std::snprintf(row, sizeof row,
                  "<tr><td>%s</td><td><img src=\"%s\" alt=\"%s\"></td><td class=\"n\">%d</td>"
                  "<td class=\"n\">%lld</td><td class=\"n\">%.0f</td></tr>\n",
                  entry.name.c_str(), entry.file.c_str(), entry.name.c_str(), entry.frames, entry.bytes,
                  entry.seconds * 1000.0);
    page += row;
  }
  return page + "</table>\n</body>\n</html>\n";
}

// Written beside the target and moved over it, so an old page stays whole
// until the new one is.
int WriteWhole(const std::string& path, const std::string& text) {
  std::string temporary = path + ".tmp";
  std::FILE* file = std::fopen(temporary.c_str(), "wb");
  if (file == nullptr) return 0;
  bool written = std::fwrite(text.data(), 1, text.size(), file) == text.size();
  if (std::fclose(file) != 0 || !written || std::rename(temporary.c_str(), path.c_str()) != 0) {
    std::remove(temporary.c_str());
    return 0;
  }
  return 1;
}

// The primary group as our hosts install it.
int PrimaryTextures(TextureGroup* group) {
  std::FILE* text = std::tmpfile();
  if (text == nullptr) return 0;
  std::fputs(kPrimaryTextureGroupText, text);
  std::rewind(text);
  int read = TextureGroupParse(text, group);
  std::fclose(text);
  return read;
}

int RenderGallery(const std::string& folder) {
  std::string error;
  if (!HostMakeFolder(folder, &error) || !HostMakeDataFolders(&error)) return Fail(error);
  bool terminal = isatty(fileno(stderr)) != 0;
  std::vector<GalleryEntry> entries;
  GdiOp drawing{};
  drawing.op = kGdiStart;
  GdiCommand(&drawing);
  int status = 0;
  for (int row = 0; row < kEffectCount && status == 0; ++row) {
    if (EffectTable[row].build == nullptr) continue;
    if (terminal) std::fprintf(stderr, "\rrendering %-22s", EffectTable[row].name);
    GalleryEntry entry;
    std::string shown;
    if (RenderEffect(row, nullptr, folder, &entry, &shown) == 0)
      status = Fail(std::string("could not render '") + EffectTable[row].name + "' into " + folder +
                    (shown.empty() ? "" : ": " + shown));
    entries.push_back(entry);
  }
  TextureGroup textures{};
  if (status == 0 && PrimaryTextures(&textures) == 0) status = Fail("cannot read the primary texture group");
  for (int i = 0; i < textures.count && status == 0; ++i) {
    if (terminal) std::fprintf(stderr, "\rrendering %-22s", textures.items[i].name);
    GalleryEntry entry;
    std::string shown;
    if (RenderEffect(kEffectSimple, &textures.items[i], folder, &entry, &shown) == 0)
      status = Fail(std::string("could not render the texture '") + textures.items[i].name + "' into " + folder +
                    (shown.empty() ? "" : ": " + shown));
    entries.push_back(entry);
  }
  TextureGroupClear(&textures);
  drawing.op = kGdiStop;
  GdiCommand(&drawing);
  if (terminal) std::fprintf(stderr, "\r%40s\r", "");
  if (status != 0) return status;
  if (!WriteWhole(folder + "/index.html", IndexPage(entries)))
    return Fail("cannot write '" + folder + "/index.html': " + std::strerror(errno));
  if (terminal) std::fprintf(stderr, "wrote %zu effects and index.html to %s\n", entries.size(), folder.c_str());
  return 0;
}

}  // namespace

int CliGallery(int argc, char** argv) {
  if (argc == 2 && (std::strcmp(argv[1], "--help") == 0 || std::strcmp(argv[1], "-h") == 0)) {
    PrintGalleryUsage(stdout);
    return CliFinishOutput("gallery");
  }
  if (argc < 2) return CliUsage("gallery", "needs a folder");
  if (argv[1][0] == '-') return CliUsage("gallery", std::string("unknown option '") + argv[1] + "'");
  if (argc > 2) return CliUsage("gallery", std::string("unexpected argument '") + argv[2] + "'");
  return RenderGallery(argv[1]);
}
