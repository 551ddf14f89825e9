// The drawing service's engine headless: faces found by fontconfig, glyphs
// measured and rasterised by FreeType, laid out as GDI+ lays out a string
// on Windows. A positive font height is the cell height (the em scaled so
// that the Windows ascent plus descent fill it); a measured string is padded
// by a sixth of the em on each side and its trailing blanks are left out.
#include <fontconfig/fontconfig.h>
#include <ft2build.h>
#include FT_FREETYPE_H
#include FT_TRUETYPE_TABLES_H

#include <cmath>
#include <cstring>
#include <string>
#include <vector>

#include "raster/code_page.h"
#include "raster/gdi_backend.h"

namespace {

constexpr int kDefaultCellHeight = 12;  // a font height of 0

struct CachedFace {
  std::string name;
  bool bold;
  bool italic;
  FT_Face face;
};

// Started engines share one library and one cache of opened faces, so a
// text mask does not search the font list once per character.
struct Engine {
  int users = 0;
  FT_Library library = nullptr;
  FcConfig* config = nullptr;
  std::vector<CachedFace> faces;
};
Engine g_engine;

FT_Face OpenMatchingFace(const std::string& name, bool bold, bool italic) {
  FcPattern* pattern = FcPatternCreate();
  FcPatternAddString(pattern, FC_FAMILY, reinterpret_cast<const FcChar8*>(name.c_str()));
  FcPatternAddInteger(pattern, FC_WEIGHT, bold ? FC_WEIGHT_BOLD : FC_WEIGHT_REGULAR);
  FcPatternAddInteger(pattern, FC_SLANT, italic ? FC_SLANT_ITALIC : FC_SLANT_ROMAN);
  FcPatternAddBool(pattern, FC_SCALABLE, FcTrue);
  FcConfigSubstitute(g_engine.config, pattern, FcMatchPattern);
  FcDefaultSubstitute(pattern);
  FcResult result = FcResultNoMatch;
  FcPattern* match = FcFontMatch(g_engine.config, pattern, &result);
  FcPatternDestroy(pattern);
  if (match == nullptr) return nullptr;

  FT_Face face = nullptr;
  FcChar8* file = nullptr;
  int index = 0;
  if (FcPatternGetString(match, FC_FILE, 0, &file) == FcResultMatch) {
    FcPatternGetInteger(match, FC_INDEX, 0, &index);
    if (FT_New_Face(g_engine.library, reinterpret_cast<const char*>(file), index, &face) != 0) face = nullptr;
  }
  FcPatternDestroy(match);
  return face;
}

FT_Face FindFace(const FontSpec& font) {
  std::string name(font.faceName, strnlen(font.faceName, sizeof font.faceName));
  bool bold = font.weight >= 600;
  bool italic = font.italic != 0;
  for (const CachedFace& cached : g_engine.faces)
    if (cached.bold == bold && cached.italic == italic && cached.name == name) return cached.face;
  FT_Face face = OpenMatchingFace(name, bold, italic);
  if (face != nullptr) g_engine.faces.push_back({name, bold, italic, face});
  return face;
}

// The ascent and descent that Windows sizes a font by, in font units.
void WindowsExtent(FT_Face face, double* ascent, double* descent) {
  auto* os2 = static_cast<const TT_OS2*>(FT_Get_Sfnt_Table(face, FT_SFNT_OS2));
  if (os2 != nullptr && os2->usWinAscent + os2->usWinDescent > 0) {
    *ascent = os2->usWinAscent;
    *descent = os2->usWinDescent;
  } else {
    *ascent = face->ascender;
    *descent = -face->descender;
  }
}

double EmPixels(FT_Face face, int height) {
  if (height == 0) height = kDefaultCellHeight;
  if (height < 0) return -height;
  double ascent = 0;
  double descent = 0;
  WindowsExtent(face, &ascent, &descent);
  return height * static_cast<double>(face->units_per_EM) / (ascent + descent);
}

// A face sized to the font's em; null if no face can be had.
FT_Face SizedFace(const FontSpec& font, double* em) {
  if (g_engine.users == 0) return nullptr;
  FT_Face face = FindFace(font);
  if (face == nullptr) return nullptr;
  *em = EmPixels(face, font.height);
  FT_F26Dot6 size = std::lround(*em * 64);
  if (FT_Set_Char_Size(face, size, size, 72, 72) != 0) return nullptr;
  return face;
}

// Whole-pixel advance of one byte of text, hinted as drawn. Control codes
// have no glyph and take no room.
int AdvanceOf(FT_Face face, unsigned char code) {
  if (code < 32) return 0;
  FT_UInt glyph = FT_Get_Char_Index(face, CodePageToUnicode(code));
  if (FT_Load_Glyph(face, glyph, FT_LOAD_DEFAULT) != 0) return 0;
  return static_cast<int>((face->glyph->advance.x + 32) >> 6);
}

// Coverage 0 to 255 of one pixel of a rendered glyph.
int CoverageAt(const FT_Bitmap& bitmap, unsigned row, unsigned column) {
  const unsigned char* line = bitmap.buffer + static_cast<std::ptrdiff_t>(row) * bitmap.pitch;
  if (bitmap.pixel_mode == FT_PIXEL_MODE_MONO) return (line[column >> 3] & (0x80 >> (column & 7))) != 0 ? 255 : 0;
  return line[column];
}

// Glyph coverage laid over the picture in colour, channel by channel.
void BlendGlyph(DibHead* head, const FT_Bitmap& bitmap, int left, int top, std::uint32_t colour) {
  for (unsigned row = 0; row < bitmap.rows; ++row) {
    for (unsigned column = 0; column < bitmap.width; ++column) {
      unsigned coverage = static_cast<unsigned>(CoverageAt(bitmap, row, column));
      if (coverage == 0) continue;
      int x = left + static_cast<int>(column);
      int y = top + static_cast<int>(row);
      std::int32_t under = DibGetPixel(head, x, y);
      if (under < 0) continue;
      std::uint32_t value = 0;
      for (int shift = 0; shift < 24; shift += 8) {
        unsigned over = (colour >> shift & 0xFF) * coverage / 255;
        unsigned below = (static_cast<std::uint32_t>(under) >> shift & 0xFF) * (255 - coverage) / 255;
        value |= (over + below) << shift;
      }
      DibPutPixel(head, x, y, value);
    }
  }
}

}  // namespace

struct GdiTextSession {
  FT_Face face;
  double em;
};

int GdiBackendStart(std::uint64_t* token) {
  if (g_engine.users == 0) {
    if (FT_Init_FreeType(&g_engine.library) != 0) return 0;
    g_engine.config = FcInitLoadConfigAndFonts();
    if (g_engine.config == nullptr) {
      FT_Done_FreeType(g_engine.library);
      return 0;
    }
  }
  ++g_engine.users;
  *token = reinterpret_cast<std::uintptr_t>(&g_engine);
  return 1;
}

void GdiBackendStop(std::uint64_t token) {
  if (token != reinterpret_cast<std::uintptr_t>(&g_engine) || g_engine.users == 0 || --g_engine.users > 0) return;
  for (const CachedFace& cached : g_engine.faces) FT_Done_Face(cached.face);
  g_engine.faces.clear();
  FcConfigDestroy(g_engine.config);
  FT_Done_FreeType(g_engine.library);
  g_engine.config = nullptr;
  g_engine.library = nullptr;
}

GdiTextSession* GdiTextOpen(const GdiOp* op) {
  double em = 0;
  FT_Face face = SizedFace(GdiOpFont(op), &em);
  return face != nullptr ? new GdiTextSession{face, em} : nullptr;
}

void GdiTextClose(GdiTextSession* session) { delete session; }

int GdiTextBox(GdiTextSession* session, const char* text, int* width, int* height) {
  std::size_t length = std::strlen(text);
  while (length > 0 && text[length - 1] == ' ') --length;
  int advance = 0;
  for (std::size_t i = 0; i < length; ++i) advance += AdvanceOf(session->face, static_cast<unsigned char>(text[i]));
  double padding = session->em / 6;
  *width = static_cast<int>(advance + 2 * padding);
  *height = static_cast<int>(session->em * session->face->height / session->face->units_per_EM);
  return 1;
}

DibHandle GdiTextPicture(GdiTextSession* session, const char* text, int width, int height, std::uint32_t colour,
                         int antialias) {
  if (width < 1 || height < 1) return nullptr;
  DibHandle picture = DibNew(width, height, nullptr, 24);
  DibLock lock(picture);
  if (lock.head == nullptr) return MemFree(picture);

  FT_Face face = session->face;
  double ascent = 0;
  double descent = 0;
  WindowsExtent(face, &ascent, &descent);
  int baseline = static_cast<int>(std::lround(session->em * ascent / face->units_per_EM));
  int pen = static_cast<int>(std::lround(session->em / 6));
  FT_Int32 loadFlags = antialias != 0 ? FT_LOAD_TARGET_NORMAL : FT_LOAD_TARGET_MONO;
  FT_Render_Mode renderMode = antialias != 0 ? FT_RENDER_MODE_NORMAL : FT_RENDER_MODE_MONO;
  for (const char* p = text; *p != '\0'; ++p) {
    unsigned char code = static_cast<unsigned char>(*p);
    if (code < 32) continue;
    FT_UInt glyph = FT_Get_Char_Index(face, CodePageToUnicode(code));
    if (FT_Load_Glyph(face, glyph, loadFlags) == 0 && FT_Render_Glyph(face->glyph, renderMode) == 0)
      BlendGlyph(lock.head, face->glyph->bitmap, pen + face->glyph->bitmap_left, baseline - face->glyph->bitmap_top,
                 colour);
    pen += AdvanceOf(face, code);
  }
  return picture;
}

int FontMetricsOf(const FontSpec* font, FontMetrics* metrics) {
  *metrics = FontMetrics{};
  double em = 0;
  FT_Face face = SizedFace(*font, &em);
  if (face == nullptr) return 0;
  double ascent = 0;
  double descent = 0;
  WindowsExtent(face, &ascent, &descent);
  double scale = em / face->units_per_EM;
  metrics->ascent = static_cast<std::int32_t>(std::lround(ascent * scale));
  metrics->height = font->height > 0 ? font->height
                                     : metrics->ascent + static_cast<std::int32_t>(std::lround(descent * scale));
  metrics->descent = metrics->height - metrics->ascent;
  return 1;
}
