#pragma once
// The font service: TrueType fonts drawn as text into a caller's surface.
#include <glibmm/ustring.h>

#include "CDisplaySvc.h"
#include "PlatformTypes.h"

namespace Vantrel {
namespace Solva {

// A loaded font of one service instance; 0 is none.
typedef U32 tFontHndl;
const tFontHndl kInvalidFontHndl = 0;

// A colour as the 32-bit word 0xAARRGGBB.
typedef U32 tColor;

// Where DrawString draws: `pitch` bytes from one row to the next. Only
// kPixelFormatARGB8888 surfaces, whose colour is premultiplied, are drawn into.
struct tFontSurf {
  S32 width;
  S32 height;
  S32 pitch;
  U8* buffer;
  tPixelFormat format;
};

class CFontSvc {
 public:
  CFontSvc();
  virtual ~CFontSvc();

  // The font file at `path` at a size of `size` pixels, or kInvalidFontHndl when
  // it cannot be read as a font. Its fonts go with the service.
  tFontHndl LoadFont(const Glib::ustring& path, U8 size);
  Boolean UnloadFont(tFontHndl hndl);
  // The font DrawString uses; false for an unknown handle.
  Boolean SelectFont(tFontHndl hndl);
  // White (0xFFFFFFFF) until set.
  Boolean SetFontColor(tColor color);
  tColor GetFontColor() const;

  // Draws `str` in one line with the selected font and colour, the line's top-left
  // corner at (x, y); what falls outside the surface is cut off. False when no font
  // is selected or the surface cannot be drawn into.
  Boolean DrawString(Glib::ustring* str, S32 x, S32 y, tFontSurf* surf);
  // The size of the line DrawString would draw; false when no font is selected.
  Boolean GetStringSize(const Glib::ustring& str, S32* width, S32* height);

 private:
  CFontSvc(const CFontSvc&);
  CFontSvc& operator=(const CFontSvc&);
  struct Fonts;
  Fonts* mFonts;
};

}  // namespace Solva
}  // namespace Vantrel
