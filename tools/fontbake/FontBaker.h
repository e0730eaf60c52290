#pragma once
// Bakes one font at one pixel size into what XFontManager reads: OUT.bin, the
// table of 256 glyph records (2,311 bytes), and OUT.udi, the glyph sheet, white
// with the glyphs' coverage as alpha (L8A8), zlib-packed, power-of-two sized.
#include <string>
#include <vector>

struct BakeOptions {
  std::string font;         // a font file FreeType reads
  std::string out;          // OUT.bin and OUT.udi are written
  int size = 0;             // pixels per em, 1 to 255
  int spacing = 0;          // the table's character spacing, 0 to 255
  std::vector<int> codes;   // character codes to bake (0 to 255), each the same Unicode code point
};

// "32-126,160-255" into codes; false with a message for anything else.
bool ParseCodes(const std::string& text, std::vector<int>& codes, std::string& error);

// 0 done; 1 with a message on standard error when the font cannot be read, a
// glyph does not fit the table's bytes, or a file cannot be written. Both files
// are written through temporaries beside them, so a failure leaves older ones.
int Bake(const BakeOptions& options);
