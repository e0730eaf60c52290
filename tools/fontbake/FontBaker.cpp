#include "FontBaker.h"

#include <ft2build.h>
#include FT_FREETYPE_H
#include <zlib.h>

#include <algorithm>
#include <cerrno>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>

namespace {

typedef std::vector<unsigned char> Bytes;

const int kPadding = 1;         // clear texels between glyphs in the sheet
const int kLargestSheet = 4096;
const int kUdiHeader = 36;
const int kPixelFormatL8A8 = 5;

void Fail(const std::string& message) { fprintf(stderr, "fontbake: %s\n", message.c_str()); }

struct Glyph {
  int code = 0;
  int width = 0, height = 0;
  int offsetX = 0, offsetY = 0;  // from the pen at the line's top
  int advance = 0;
  int sheetX = 0, sheetY = 0;
  Bytes coverage;  // width x height, rows from the top
};

// The offset bytes hold -127 to 128 (129 to 255 read as negative).
bool FitsOffset(int value) { return value >= -127 && value <= 128; }

std::string Describe(int code) {
  char text[32];
  if (code > 32 && code < 127) {
    snprintf(text, sizeof text, "'%c' (%d)", code, code);
  } else {
    snprintf(text, sizeof text, "%d", code);
  }
  return text;
}

// Renders every requested code the font has; false with a message when a glyph
// does not fit the table's one-byte fields.
bool Render(FT_Face face, const std::vector<int>& codes, int ascender, std::vector<Glyph>& glyphs) {
  for (int code : codes) {
    const FT_UInt index = FT_Get_Char_Index(face, FT_ULong(code));
    if (index == 0) continue;  // the font has no such character: the record stays empty
    if (FT_Load_Glyph(face, index, FT_LOAD_RENDER) != 0) {
      Fail("cannot render character " + Describe(code));
      return false;
    }
    const FT_GlyphSlot slot = face->glyph;
    const FT_Bitmap& bitmap = slot->bitmap;
    Glyph glyph;
    glyph.code = code;
    glyph.width = int(bitmap.width);
    glyph.height = int(bitmap.rows);
    glyph.offsetX = slot->bitmap_left;
    glyph.offsetY = ascender - slot->bitmap_top;
    glyph.advance = int((slot->advance.x + 32) >> 6);
    if (glyph.width > 255 || glyph.height > 255 || !FitsOffset(glyph.offsetX) || !FitsOffset(glyph.offsetY) ||
        glyph.advance < 0 || glyph.advance > 255) {
      Fail("character " + Describe(code) + " is too large for the glyph table (" + std::to_string(glyph.width) +
           " x " + std::to_string(glyph.height) + " pixels, offset " + std::to_string(glyph.offsetX) + ", " +
           std::to_string(glyph.offsetY) + ", advance " + std::to_string(glyph.advance) +
           "; sizes and advances up to 255, offsets -127 to 128): choose a smaller size");
      return false;
    }
    glyph.coverage.assign(size_t(glyph.width) * glyph.height, 0);
    for (int y = 0; y < glyph.height; ++y) {
      const unsigned char* row = bitmap.buffer + ptrdiff_t(y) * bitmap.pitch;
      for (int x = 0; x < glyph.width; ++x) {
        const unsigned char value =
            bitmap.pixel_mode == FT_PIXEL_MODE_MONO ? ((row[x / 8] >> (7 - x % 8)) & 1 ? 255 : 0) : row[x];
        glyph.coverage[size_t(y) * glyph.width + x] = value;
      }
    }
    glyphs.push_back(glyph);
  }
  return true;
}

int PowerOfTwo(int value) {
  int result = 1;
  while (result < value) result *= 2;
  return result;
}

// Shelves of glyphs, tallest first, in a sheet `width` wide; the height used.
int Pack(std::vector<Glyph*>& order, int width) {
  int x = 0, y = 0, shelf = 0;
  for (Glyph* glyph : order) {
    if (glyph->width == 0) continue;
    if (x + glyph->width > width) {
      x = 0;
      y += shelf + kPadding;
      shelf = 0;
    }
    glyph->sheetX = x;
    glyph->sheetY = y;
    x += glyph->width + kPadding;
    shelf = std::max(shelf, glyph->height);
  }
  return y + shelf;
}

// The narrowest power-of-two square or wider sheet that holds every glyph.
bool Place(std::vector<Glyph>& glyphs, int& sheetWidth, int& sheetHeight) {
  std::vector<Glyph*> order;
  int widest = 1;
  for (Glyph& glyph : glyphs) {
    order.push_back(&glyph);
    widest = std::max(widest, glyph.width);
  }
  std::stable_sort(order.begin(), order.end(), [](const Glyph* a, const Glyph* b) { return a->height > b->height; });
  for (int width = PowerOfTwo(widest); width <= kLargestSheet; width *= 2) {
    const int height = PowerOfTwo(std::max(1, Pack(order, width)));
    if (height <= width) {
      sheetWidth = width;
      sheetHeight = height;
      return true;
    }
  }
  Fail("the glyphs do not fit a sheet of " + std::to_string(kLargestSheet) + " x " + std::to_string(kLargestSheet));
  return false;
}

void PutU16(Bytes& out, int value) {
  out.push_back(static_cast<unsigned char>(value & 0xFF));
  out.push_back(static_cast<unsigned char>((value >> 8) & 0xFF));
}
void PutU32(Bytes& out, uint32_t value) {
  for (int i = 0; i < 4; ++i) out.push_back(static_cast<unsigned char>(value >> (8 * i)));
}

// The glyph table: header, then 256 records of 9 bytes, character 0 first.
Bytes Table(const BakeOptions& options, int fontHeight, int sheetWidth, int sheetHeight,
            const std::vector<Glyph>& glyphs) {
  Bytes out;
  out.push_back(static_cast<unsigned char>(options.size));
  out.push_back(static_cast<unsigned char>(options.spacing));
  out.push_back(static_cast<unsigned char>(fontHeight));
  PutU16(out, sheetWidth);
  PutU16(out, sheetHeight);
  Bytes records(256 * 9, 0);
  for (const Glyph& glyph : glyphs) {
    unsigned char* record = &records[size_t(glyph.code) * 9];
    record[0] = static_cast<unsigned char>(glyph.sheetX & 0xFF);
    record[1] = static_cast<unsigned char>(glyph.sheetX >> 8);
    record[2] = static_cast<unsigned char>(glyph.sheetY & 0xFF);
    record[3] = static_cast<unsigned char>(glyph.sheetY >> 8);
    record[4] = static_cast<unsigned char>(glyph.width);
    record[5] = static_cast<unsigned char>(glyph.height);
    record[6] = static_cast<unsigned char>(glyph.offsetX & 0xFF);  // -1 is 255
    record[7] = static_cast<unsigned char>(glyph.offsetY & 0xFF);
    record[8] = static_cast<unsigned char>(glyph.advance);
  }
  out.insert(out.end(), records.begin(), records.end());
  return out;
}

// The sheet as a UDI picture: white everywhere, the glyphs' coverage as alpha.
bool Sheet(int width, int height, const std::vector<Glyph>& glyphs, Bytes& out) {
  Bytes pixels(size_t(width) * height * 2, 0);
  for (size_t i = 0; i < pixels.size(); i += 2) pixels[i] = 255;
  for (const Glyph& glyph : glyphs) {
    for (int y = 0; y < glyph.height; ++y) {
      for (int x = 0; x < glyph.width; ++x) {
        pixels[(size_t(glyph.sheetY + y) * width + glyph.sheetX + x) * 2 + 1] =
            glyph.coverage[size_t(y) * glyph.width + x];
      }
    }
  }
  uLongf packedSize = compressBound(uLong(pixels.size()));
  Bytes packed(packedSize);
  if (compress2(packed.data(), &packedSize, pixels.data(), uLong(pixels.size()), Z_BEST_COMPRESSION) != Z_OK) {
    Fail("zlib cannot pack the sheet");
    return false;
  }
  packed.resize(packedSize);
  out.clear();
  out.insert(out.end(), {'U', 'D', 'I', 0});
  PutU32(out, 0);                                          // 4: not read
  PutU32(out, uint32_t(kUdiHeader + pixels.size()));      // 8: header and unpacked pixels
  PutU32(out, uint32_t(kUdiHeader + packed.size()));      // 12: the file's length
  PutU16(out, width);                                      // 16
  PutU16(out, height);                                     // 18
  out.insert(out.end(), {1, 0, 0, 0});                     // 20: zlib
  out.insert(out.end(), {kPixelFormatL8A8, 16, 0, 0});     // 24: format, bits, -, no palette
  out.insert(out.end(), 8, 0);                             // 28: carried along
  out.insert(out.end(), packed.begin(), packed.end());
  return true;
}

bool WriteFile(const std::string& path, const Bytes& bytes) {
  FILE* file = fopen(path.c_str(), "wb");
  if (file == nullptr) {
    Fail("cannot write " + path);
    return false;
  }
  const bool written = fwrite(bytes.data(), 1, bytes.size(), file) == bytes.size();
  if (fclose(file) != 0 || !written) {
    Fail("cannot write " + path);
    remove(path.c_str());
    return false;
  }
  return true;
}

}  // namespace

bool ParseCodes(const std::string& text, std::vector<int>& codes, std::string& error) {
  codes.clear();
  size_t at = 0;
  while (at <= text.size()) {
    const size_t comma = std::min(text.find(',', at), text.size());
    const std::string item = text.substr(at, comma - at);
    const size_t dash = item.find('-');
    const std::string first = item.substr(0, dash), last = dash == std::string::npos ? first : item.substr(dash + 1);
    char* end1 = nullptr;
    char* end2 = nullptr;
    const long from = strtol(first.c_str(), &end1, 10), to = strtol(last.c_str(), &end2, 10);
    if (first.empty() || last.empty() || *end1 != 0 || *end2 != 0 || from < 0 || to > 255 || from > to) {
      error = "bad character range \"" + item + "\": ranges of codes 0 to 255, as 32-126,160-255";
      return false;
    }
    for (long code = from; code <= to; ++code) codes.push_back(int(code));
    at = comma + 1;
  }
  std::sort(codes.begin(), codes.end());
  codes.erase(std::unique(codes.begin(), codes.end()), codes.end());
  return true;
}

int Bake(const BakeOptions& options) {
  FT_Library library = nullptr;
  if (FT_Init_FreeType(&library) != 0) {
    Fail("cannot start FreeType");
    return 1;
  }
  FILE* probe = fopen(options.font.c_str(), "rb");
  if (probe == nullptr) {
    Fail("cannot open the font " + options.font + ": " + strerror(errno));
    FT_Done_FreeType(library);
    return 1;
  }
  fclose(probe);
  FT_Face face = nullptr;
  if (FT_New_Face(library, options.font.c_str(), 0, &face) != 0) {
    Fail(options.font + " is no font FreeType reads");
    FT_Done_FreeType(library);
    return 1;
  }
  int result = 1;
  std::vector<Glyph> glyphs;
  int sheetWidth = 0, sheetHeight = 0;
  if (FT_Set_Pixel_Sizes(face, 0, FT_UInt(options.size)) != 0) {
    Fail("the font " + options.font + " has no size of " + std::to_string(options.size) + " pixels");
  } else {
    const int ascender = int((face->size->metrics.ascender + 63) >> 6);
    const int fontHeight = int((face->size->metrics.height + 63) >> 6);
    if (fontHeight > 255) {
      Fail("a line of " + std::to_string(fontHeight) + " pixels does not fit the table's byte: choose a smaller size");
    } else if (Render(face, options.codes, ascender, glyphs) && Place(glyphs, sheetWidth, sheetHeight)) {
      Bytes sheet;
      const std::string bin = options.out + ".bin", udi = options.out + ".udi";
      if (Sheet(sheetWidth, sheetHeight, glyphs, sheet) &&
          WriteFile(bin + ".part", Table(options, fontHeight, sheetWidth, sheetHeight, glyphs))) {
        if (!WriteFile(udi + ".part", sheet)) {
          remove((bin + ".part").c_str());
        } else if (rename((bin + ".part").c_str(), bin.c_str()) != 0 ||
                   rename((udi + ".part").c_str(), udi.c_str()) != 0) {
          Fail("cannot replace " + bin + " and " + udi);
        } else {
          printf("%s, %s: %zu glyphs, line %d pixels, sheet %d x %d\n", bin.c_str(), udi.c_str(), glyphs.size(),
                 fontHeight, sheetWidth, sheetHeight);
          result = 0;
        }
      }
    }
  }
  FT_Done_Face(face);
  FT_Done_FreeType(library);
  return result;
}
