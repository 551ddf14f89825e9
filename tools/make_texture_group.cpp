// Designs the primary texture group, lwmotio3.fft: a read-only group of our
// own textures, at least one of every type. Writes the group file and a C++
// source that holds its text, from which the hosts install it.
//
//   make_texture_group GROUP.fft SOURCE.cpp
#include <cstdio>
#include <cstring>
#include <string>

#include "fills/texture_group.h"

namespace {

struct Design {
  const char* name;
  void (*shape)(TextureRecord* texture);
};

void Curves(TextureRecord* t, const float (&red)[4], const float (&green)[4], const float (&blue)[4]) {
  for (int k = 0; k < 4; ++k) {
    t->ColorRed[k] = red[k];
    t->ColorGreen[k] = green[k];
    t->ColorBlue[k] = blue[k];
  }
}

// Colours are red low: 0xBBGGRR.
const Design kDesigns[] = {
    {"Blue Sky", [](TextureRecord* t) {
       t->TextureType = 0;
       t->MatrixSize = 128;
       t->BackColour = 0xC07830;
       t->ForeColour[0] = 0xFFFFFF;
     }},
    {"Storm Front", [](TextureRecord* t) {
       t->TextureType = 0;
       t->BackColour = 0x585050;
       t->ForeColour[0] = 0xD8D0D0;
       t->Power[0] = 1.0f;
       t->Dimension[0] = 2.6f;
       t->SeedValue[0] = 2417;
     }},
    {"Sunset Clouds", [](TextureRecord* t) {
       t->TextureType = 1;
       t->MatrixSize = 128;
       t->BackColour = 0x502068;
       t->ForeColour[0] = 0x2078F8;
       t->ForeColour[1] = 0x90E8FF;
       t->SeedValue[0] = 5150;
       t->SeedValue[1] = 777;
     }},
    {"Green Marble", [](TextureRecord* t) {
       t->TextureType = 2;
       t->MatrixSize = 256;
       t->BackColour = 0x204018;
       t->ForeColour[0] = 0x58A040;
       t->ForeColour[1] = 0xA0E0A0;
       t->ForeColour[2] = 0xF0FFF0;
       for (float& d : t->Dimension) d = 2.45f;
     }},
    {"Nebula", [](TextureRecord* t) {
       t->TextureType = 3;
       t->MatrixSize = 256;
       t->BackColour = 0x200408;
       t->ForeColour[0] = 0x802048;
       t->ForeColour[1] = 0xB060D0;
       t->ForeColour[2] = 0xFFB070;
       t->ForeColour[3] = 0xFFFFFF;
       t->SeedValue[3] = 31337;
       t->Power[3] = 1.4f;
     }},
    {"Moonscape", [](TextureRecord* t) {
       t->TextureType = 4;
       t->BackColour = 0x383838;
       t->ForeColour[0] = 0xE8E8E8;
       t->CreaterCount = 4000;
       t->CreaterDepth = 2.0f;
     }},
    {"Red Planet", [](TextureRecord* t) {
       t->TextureType = 4;
       t->BackColour = 0x102068;
       t->ForeColour[0] = 0x60B8FF;
       t->SeedValue[0] = 1969;
       t->CreaterCount = 2000;
       t->CreaterDepth = 1.2f;
     }},
    {"Lava Bubbles", [](TextureRecord* t) {
       t->TextureType = 5;
       t->MatrixSize = 512;
       Curves(t, {0.05f, 0.8f, 1.0f, 1.0f}, {0.0f, 0.2f, 0.6f, 1.0f}, {0.0f, 0.0f, 0.1f, 0.6f});
       t->BubbleCount = 48;
       t->BubbleSize = 10;
       t->BubblePower = 0.3f;
       t->BubbleShape = 1;
     }},
    {"Deep Sea", [](TextureRecord* t) {
       t->TextureType = 5;
       t->MatrixSize = 256;
       Curves(t, {0.0f, 0.05f, 0.2f, 0.7f}, {0.05f, 0.25f, 0.6f, 0.95f}, {0.15f, 0.5f, 0.85f, 1.0f});
       t->BubbleCount = 128;
       t->BubbleSize = 6;
       t->BubblePower = 0.5f;
       t->BubbleShape = 3;
       t->PerturbationPower = 0.6f;
     }},
    {"Static", [](TextureRecord* t) {
       t->TextureType = 5;
       t->MatrixSize = 1024;
       t->BubbleCount = 0;
       t->PerturbationPower = 1.5f;
     }},
};

// The group's text as a C++ string literal, one source line per line.
bool WriteSource(const char* path, const std::string& text) {
  std::FILE* out = std::fopen(path, "w");
  if (out == nullptr) return false;
  std::fprintf(out, "// Made by tools/make_texture_group.cpp: the primary texture group.\n");
  std::fprintf(out, "#include \"host/primary_groups.h\"\n\nconst char kPrimaryTextureGroupText[] =\n");
  std::size_t start = 0;
  while (start < text.size()) {
    std::size_t end = text.find('\n', start);
    std::string line = text.substr(start, end - start);
    std::string escaped;
    for (char c : line) {
      if (c == '"' || c == '\\') escaped += '\\';
      escaped += c;
    }
    std::fprintf(out, "    \"%s\\n\"\n", escaped.c_str());
    start = end + 1;
  }
  std::fprintf(out, "    ;\n");
  return std::fclose(out) == 0;
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 3) {
    std::fprintf(stderr, "usage: make_texture_group GROUP.fft SOURCE.cpp\n");
    return 2;
  }
  TextureGroup group{};
  for (const Design& design : kDesigns) {
    TextureRecord texture{};
    TextureDefaults(&texture);
    design.shape(&texture);
    if (TextureGroupAdd(&group, design.name, texture) < 0) return 1;
  }
  // A primary group cannot be edited, only saved under another name. The
  // date is fixed so that every build makes the same file.
  std::FILE* out = std::fopen(argv[1], "w");
  if (out == nullptr) return 1;
  TextureGroupPrint(out, group, TextureFileStamp{0, "Sat Nov 21 12:00:00 2026", "", "Brindle Foundries"});
  std::fclose(out);
  std::FILE* in = std::fopen(argv[1], "r");
  if (in == nullptr) return 1;
  std::string text;
  char buffer[4096];
  std::size_t length;
  while ((length = std::fread(buffer, 1, sizeof buffer, in)) > 0) text.append(buffer, length);
  std::fclose(in);
  TextureGroupClear(&group);
  return WriteSource(argv[2], text) ? 0 : 1;
}
