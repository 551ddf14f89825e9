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
#include <cstdlib>
#include <cstring>
#include <new>
#include <vector>

#include "raster/code_page.h"
#include "raster/font_config_freetype.h"
#include "raster/gdi_backend.h"

namespace {

constexpr int kDefaultCellHeight = 12;  // a font height of 0

struct CachedFace {
  char name[sizeof FontSpec{}.faceName + 1];  // as the font names it, ended by a zero
  bool bold;
  bool italic;
  FT_Face face;
  FT_F26Dot6 size;  // the character size last set, 0 for none
};

// A glyph as loaded with one set of flags at one size: its advance and, once
// drawn, its coverage. Text masks draw the same few characters frame after
// frame, so each is hinted and rendered once.
struct CachedGlyph {
  FT_Face face;
  FT_Fixed xScale, yScale;
  FT_UInt glyph;
  FT_Int32 flags;
  int advance;  // whole pixels; -1 when the glyph does not load
  bool drawn;
  FT_Bitmap bitmap;  // the buffer is owned here
  int left, top;
};
constexpr int kGlyphCacheSize = 512;

// Started engines share one library, one cache of opened faces, so a text
// mask does not search the font list once per character, and one of glyphs.
struct Engine {
  int users = 0;
  FT_Library library = nullptr;
  std::vector<CachedFace> faces;
  CachedGlyph glyphs[kGlyphCacheSize];
  int glyphCount = 0;
  bool outOfMemory = false;  // since it was last asked
};
Engine g_engine;

// True for a FreeType error; one that says memory ran out is noted.
bool Failed(FT_Error error) {
  if (error == FT_Err_Out_Of_Memory) g_engine.outOfMemory = true;
  return error != 0;
}

// Null, noting that memory ran out.
std::nullptr_t OutOfMemory() {
  g_engine.outOfMemory = true;
  return nullptr;
}

void GlyphCacheClear() {
  for (int i = 0; i < g_engine.glyphCount; ++i) delete[] g_engine.glyphs[i].bitmap.buffer;
  g_engine.glyphCount = 0;
}

// The cached glyph for the face at its current size, loaded on first use;
// null when the cache cannot take it (the caller then asks FreeType itself).
CachedGlyph* GlyphFind(FT_Face face, FT_UInt glyph, FT_Int32 flags) {
  for (int i = 0; i < g_engine.glyphCount; ++i) {
    CachedGlyph& cached = g_engine.glyphs[i];
    if (cached.face == face && cached.glyph == glyph && cached.flags == flags &&
        cached.xScale == face->size->metrics.x_scale && cached.yScale == face->size->metrics.y_scale)
      return &cached;
  }
  if (g_engine.glyphCount == kGlyphCacheSize) GlyphCacheClear();
  CachedGlyph& added = g_engine.glyphs[g_engine.glyphCount];
  added = CachedGlyph{face, face->size->metrics.x_scale, face->size->metrics.y_scale, glyph, flags, -1, false, {}, 0, 0};
  if (!Failed(FT_Load_Glyph(face, glyph, flags))) added.advance = static_cast<int>((face->glyph->advance.x + 32) >> 6);
  ++g_engine.glyphCount;
  return &added;
}

// Renders a cached glyph once and keeps a copy of its coverage; false when
// it cannot be drawn.
bool GlyphDraw(FT_Face face, CachedGlyph* cached, FT_Render_Mode mode) {
  if (cached->drawn) return true;
  if (cached->advance < 0 || Failed(FT_Load_Glyph(face, cached->glyph, cached->flags)) ||
      Failed(FT_Render_Glyph(face->glyph, mode)))
    return false;
  const FT_Bitmap& source = face->glyph->bitmap;
  std::size_t bytes = static_cast<std::size_t>(source.rows) * static_cast<unsigned>(std::abs(source.pitch));
  cached->bitmap = source;
  cached->bitmap.buffer = new (std::nothrow) unsigned char[bytes > 0 ? bytes : 1];
  if (cached->bitmap.buffer == nullptr) {
    OutOfMemory();
    return false;
  }
  if (bytes > 0) std::memcpy(cached->bitmap.buffer, source.buffer, bytes);
  cached->left = face->glyph->bitmap_left;
  cached->top = face->glyph->bitmap_top;
  cached->drawn = true;
  return true;
}

FT_Face OpenMatchingFace(const char* name, bool bold, bool italic) {
  FcPattern* match = nullptr;
  FontMatchResult result = FontConfigMatch(name, bold, italic, &match);
  if (result == FontMatchResult::kOutOfMemory) return OutOfMemory();
  if (result == FontMatchResult::kNoFont) return nullptr;

  FT_Face face = nullptr;
  FcChar8* file = nullptr;
  int index = 0;
  if (FcPatternGetString(match, FC_FILE, 0, &file) == FcResultMatch) {
    FcPatternGetInteger(match, FC_INDEX, 0, &index);
    if (Failed(FT_New_Face(g_engine.library, reinterpret_cast<const char*>(file), index, &face))) face = nullptr;
  }
  FcPatternDestroy(match);
  return face;
}

// A face that cannot be kept in the cache is closed again and not used, and
// memory is noted as having run out.
FT_Face FindFace(const FontSpec& font) {
  CachedFace wanted{{}, font.weight >= 600, font.italic != 0, nullptr, 0};
  std::memcpy(wanted.name, font.faceName, strnlen(font.faceName, sizeof font.faceName));
  for (const CachedFace& cached : g_engine.faces)
    if (cached.bold == wanted.bold && cached.italic == wanted.italic && std::strcmp(cached.name, wanted.name) == 0)
      return cached.face;
  wanted.face = OpenMatchingFace(wanted.name, wanted.bold, wanted.italic);
  if (wanted.face == nullptr) return nullptr;
  try {
    g_engine.faces.push_back(wanted);
  } catch (const std::bad_alloc&) {
    FT_Done_Face(wanted.face);
    return OutOfMemory();
  }
  return wanted.face;
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
  // Setting a size runs the font's hinting set-up, so it is done only when
  // the size changes.
  for (CachedFace& cached : g_engine.faces) {
    if (cached.face != face) continue;
    if (cached.size == size) return face;
    cached.size = 0;
    if (Failed(FT_Set_Char_Size(face, size, size, 72, 72))) return nullptr;
    cached.size = size;
  }
  return face;
}

// Whole-pixel advance of one byte of text, hinted as drawn. Control codes
// have no glyph and take no room.
int AdvanceOf(FT_Face face, unsigned char code) {
  if (code < 32) return 0;
  FT_UInt glyph = FT_Get_Char_Index(face, CodePageToUnicode(code));
  const CachedGlyph* cached = GlyphFind(face, glyph, FT_LOAD_DEFAULT);
  return cached->advance < 0 ? 0 : cached->advance;
}

// Coverage 0 to 255 of one pixel of a rendered glyph.
int CoverageAt(const FT_Bitmap& bitmap, unsigned row, unsigned column) {
  const unsigned char* line = bitmap.buffer + static_cast<std::ptrdiff_t>(row) * bitmap.pitch;
  if (bitmap.pixel_mode == FT_PIXEL_MODE_MONO) return (line[column >> 3] & (0x80 >> (column & 7))) != 0 ? 255 : 0;
  return line[column];
}

// Glyph coverage laid over the 24-bit picture in colour, channel by channel;
// what falls outside is dropped.
void BlendGlyph(DibHead* head, const FT_Bitmap& bitmap, int left, int top, std::uint32_t colour) {
  // Stored bytes run blue, green, red.
  const unsigned channel[3] = {colour >> 16 & 0xFF, colour >> 8 & 0xFF, colour & 0xFF};
  for (unsigned row = 0; row < bitmap.rows; ++row) {
    int y = top + static_cast<int>(row);
    if (y < 0 || y >= head->biHeight) continue;
    std::uint8_t* line = DibRow(head, y);
    for (unsigned column = 0; column < bitmap.width; ++column) {
      unsigned coverage = static_cast<unsigned>(CoverageAt(bitmap, row, column));
      int x = left + static_cast<int>(column);
      if (coverage == 0 || x < 0 || x >= head->biWidth) continue;
      std::uint8_t* pixel = line + x * 3;
      for (int c = 0; c < 3; ++c)
        pixel[c] = static_cast<std::uint8_t>(channel[c] * coverage / 255 + pixel[c] * (255 - coverage) / 255);
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
    if (FontConfig() == nullptr) {
      FT_Done_FreeType(g_engine.library);
      return 0;
    }
  }
  ++g_engine.users;
  *token = reinterpret_cast<std::uintptr_t>(&g_engine);
  return 1;
}

bool GdiBackendTakeOutOfMemory() {
  bool ran = g_engine.outOfMemory;
  g_engine.outOfMemory = false;
  return ran;
}

void GdiBackendStop(std::uint64_t token) {
  if (token != reinterpret_cast<std::uintptr_t>(&g_engine) || g_engine.users == 0 || --g_engine.users > 0) return;
  GlyphCacheClear();
  for (const CachedFace& cached : g_engine.faces) FT_Done_Face(cached.face);
  g_engine.faces.clear();
  FT_Done_FreeType(g_engine.library);
  g_engine.library = nullptr;
}

GdiTextSession* GdiTextOpen(const GdiOp* op) {
  double em = 0;
  FT_Face face = SizedFace(GdiOpFont(op), &em);
  if (face == nullptr) return nullptr;
  auto* session = new (std::nothrow) GdiTextSession{face, em};
  return session != nullptr ? session : OutOfMemory();
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
  if (lock.head == nullptr) {
    MemFree(picture);
    return OutOfMemory();
  }

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
    CachedGlyph* cached = GlyphFind(face, glyph, loadFlags);
    if (GlyphDraw(face, cached, renderMode))
      BlendGlyph(lock.head, cached->bitmap, pen + cached->left, baseline - cached->top, colour);
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
