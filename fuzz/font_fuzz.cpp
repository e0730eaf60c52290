// The font .bin reader: the first 2,311 bytes of the input are the glyph table
// (shorter inputs make a file that ends early), the rest a string that every
// measuring and wrapping function reads with it. A "^" escape below 1 is an
// assertion, the documented answer; nothing is drawn (no GL here).
#include <cstring>
#include <string>
#include <vector>

#include "FuzzSupport.h"
#include "RenderSystem/XFontManager.h"

namespace {
const size_t kTableBytes = 7 + 256 * 9;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  static bool once = (fuzz::ThrowOnAssertions(), true);
  (void)once;
  const size_t tableBytes = size < kTableBytes ? size : kTableBytes;
  const std::string path = fuzz::InputFile(data, tableBytes, ".bin");
  const std::string text(reinterpret_cast<const char*>(data) + tableBytes, size - tableBytes);
  const char* s = text.c_str();
  XFontManager fonts;
  fonts.createFont(0, path.c_str());
  const int width = fonts.getFontHeight(0) + 40;
  try {
    fonts.getStringWidth(0, s);
    fonts.getStringLenght(0, s);
    fonts.getWordLenght(0, s);
    for (size_t i = 0; i < text.size() && i < 64; ++i) fonts.getCharacterWidth(0, (unsigned char)text[i]);
    fonts.getTextHeight(0, s, width);
    fonts.getTextHeight(0, s, 0);
    fonts.getMaxSectionLengthInString(0, s, width);
    std::vector<std::string> words, lines;
    fonts.breakToWordListA(s, words);
    char buffer[64];
    fonts.breakToWordListA(s, buffer, sizeof buffer);
    fonts.makeTextLineList(0, width, words, lines, false);
    fonts.makeTextLineList(0, width, words, lines, true);
    fonts.makeTextLineList(0, width, s, lines);
  } catch (const fuzz::AssertionFailed&) {
  }
  return 0;
}
