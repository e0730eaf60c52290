#include "CFontSvc.h"

#include <ft2build.h>
#include FT_FREETYPE_H

#include <cstdio>
#include <map>

namespace Vantrel {
namespace Solva {

struct CFontSvc::Fonts {
  FT_Library library = nullptr;
  std::map<tFontHndl, FT_Face> faces;
  tFontHndl next = 1;
  tFontHndl selected = kInvalidFontHndl;
  tColor color = 0xFFFFFFFFu;

  FT_Face Selected() const {
    auto found = faces.find(selected);
    return found == faces.end() ? nullptr : found->second;
  }
};

CFontSvc::CFontSvc() : mFonts(new Fonts()) {
  if (FT_Init_FreeType(&mFonts->library) != 0) {
    printf("[CFontSvc] FreeType cannot start; no text will be drawn.\n");
    mFonts->library = nullptr;
  }
}

CFontSvc::~CFontSvc() {
  for (auto& entry : mFonts->faces) FT_Done_Face(entry.second);
  if (mFonts->library) FT_Done_FreeType(mFonts->library);
  delete mFonts;
}

tFontHndl CFontSvc::LoadFont(const Glib::ustring& path, U8 size) {
  if (!mFonts->library || size == 0) return kInvalidFontHndl;
  FT_Face face = nullptr;
  if (FT_New_Face(mFonts->library, path.c_str(), 0, &face) != 0) {
    printf("[CFontSvc] cannot load the font %s\n", path.c_str());
    return kInvalidFontHndl;
  }
  if (FT_Set_Pixel_Sizes(face, 0, size) != 0) {
    printf("[CFontSvc] the font %s has no size %u\n", path.c_str(), unsigned(size));
    FT_Done_Face(face);
    return kInvalidFontHndl;
  }
  const tFontHndl hndl = mFonts->next++;
  mFonts->faces[hndl] = face;
  return hndl;
}

Boolean CFontSvc::UnloadFont(tFontHndl hndl) {
  auto found = mFonts->faces.find(hndl);
  if (found == mFonts->faces.end()) return 0;
  FT_Done_Face(found->second);
  mFonts->faces.erase(found);
  if (mFonts->selected == hndl) mFonts->selected = kInvalidFontHndl;
  return 1;
}

Boolean CFontSvc::SelectFont(tFontHndl hndl) {
  if (mFonts->faces.count(hndl) == 0) return 0;
  mFonts->selected = hndl;
  return 1;
}

Boolean CFontSvc::SetFontColor(tColor color) {
  mFonts->color = color;
  return 1;
}

tColor CFontSvc::GetFontColor() const { return mFonts->color; }

namespace {

// Walks the line glyph by glyph: `glyph(face, penX)` after each glyph is rendered.
template <typename Glyph>
void EachGlyph(FT_Face face, const Glib::ustring& str, Glyph glyph) {
  long pen = 0;  // 26.6
  FT_UInt previous = 0;
  const bool kerning = FT_HAS_KERNING(face);
  for (Glib::ustring::const_iterator it = str.begin(); it != str.end(); ++it) {
    const FT_UInt index = FT_Get_Char_Index(face, *it);
    if (kerning && previous && index) {
      FT_Vector delta;
      if (FT_Get_Kerning(face, previous, index, FT_KERNING_DEFAULT, &delta) == 0) pen += delta.x;
    }
    if (FT_Load_Glyph(face, index, FT_LOAD_RENDER) != 0) continue;
    glyph(face->glyph, pen >> 6);
    pen += face->glyph->advance.x;
    previous = index;
  }
  glyph(nullptr, pen >> 6);
}

}  // namespace

Boolean CFontSvc::DrawString(Glib::ustring* str, S32 x, S32 y, tFontSurf* surf) {
  FT_Face face = mFonts->Selected();
  if (!face || !str || !surf || !surf->buffer || surf->format != kPixelFormatARGB8888) return 0;
  const tColor color = mFonts->color;
  const int colour[4] = {int(color & 0xFF), int((color >> 8) & 0xFF), int((color >> 16) & 0xFF), int(color >> 24)};
  const long baseline = y + (face->size->metrics.ascender >> 6);
  EachGlyph(face, *str, [&](FT_GlyphSlot slot, long penX) {
    if (!slot) return;
    const FT_Bitmap& bitmap = slot->bitmap;
    if (bitmap.pixel_mode != FT_PIXEL_MODE_GRAY) return;
    const long left = x + penX + slot->bitmap_left;
    const long top = baseline - slot->bitmap_top;
    for (unsigned row = 0; row < bitmap.rows; ++row) {
      const long sy = top + row;
      if (sy < 0 || sy >= surf->height) continue;
      const unsigned char* cover = bitmap.buffer + long(row) * bitmap.pitch;
      U8* line = surf->buffer + sy * long(surf->pitch);
      for (unsigned col = 0; col < bitmap.width; ++col) {
        const long sx = left + col;
        if (sx < 0 || sx >= surf->width || cover[col] == 0) continue;
        // Premultiplied "over": the glyph's coverage times the colour's alpha.
        const int weight = (cover[col] * colour[3] + 127) / 255;
        U8* pixel = line + sx * 4;
        for (int c = 0; c < 3; ++c) {
          pixel[c] = U8((colour[c] * weight + pixel[c] * (255 - weight) + 127) / 255);
        }
        pixel[3] = U8(weight + (pixel[3] * (255 - weight) + 127) / 255);
      }
    }
  });
  return 1;
}

Boolean CFontSvc::GetStringSize(const Glib::ustring& str, S32* width, S32* height) {
  FT_Face face = mFonts->Selected();
  if (!face) return 0;
  long end = 0;
  EachGlyph(face, str, [&](FT_GlyphSlot slot, long penX) {
    if (!slot) end = penX;
  });
  if (width) *width = S32(end);
  if (height) *height = S32((face->size->metrics.ascender - face->size->metrics.descender) >> 6);
  return 1;
}

}  // namespace Solva
}  // namespace Vantrel
