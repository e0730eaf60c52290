// fontbake: bakes a TrueType or OpenType font at one pixel size into a bitmap font
// of the framework: the glyph table OUT.bin and the glyph sheet OUT.udi.
#include <CLI/CLI.hpp>
#include <optional>
#include <string>

#include "FontBaker.h"
#include "ParseCommandLine.h"

int main(int argc, char** argv) {
  CLI::App app{
      "fontbake: bakes a font (TrueType or OpenType, through FreeType) at one pixel size into the glyph\n"
      "table OUT.bin (256 records, 2,311 bytes) and the glyph sheet OUT.udi (white, the glyphs' coverage\n"
      "as alpha, zlib-packed L8A8) that XFontManager reads. Character code c is baked from Unicode\n"
      "code point c (Latin-1); characters the font lacks stay empty.\n"
      "Exit status: 0 done, 1 the font cannot be read, a glyph does not fit the table or a file cannot be\n"
      "written, 2 bad usage."};
  BakeOptions options;
  std::string codes = "32-126";
  app.add_option("FONT", options.font, "the font file")->required();
  app.add_option("OUT", options.out, "the base name of the two files (OUT.bin and OUT.udi are replaced whole)")
      ->required();
  app.add_option("--size", options.size, "pixels per em (the table's em size)")->required()->check(CLI::Range(1, 255));
  app.add_option("--chars", codes, "the character codes to bake, as ranges")->capture_default_str();
  app.add_option("--spacing", options.spacing, "pixels added to every character's advance")
      ->check(CLI::Range(0, 255))
      ->capture_default_str();
  if (std::optional<int> status = ParseCommandLine(app, argc, argv)) return *status;
  std::string error;
  if (!ParseCodes(codes, options.codes, error)) {
    fprintf(stderr, "fontbake: %s\n", error.c_str());
    return 2;
  }
  return Bake(options);
}
