// sprite-builder: PNG frames and a description in, an animated sprite out, in
// the files the framework reads (".anim", ".tal", UDI pages, the sprite list).
#include <CLI/CLI.hpp>
#include <cstdio>
#include <optional>

#include "ParseCommandLine.h"
#include "SpriteBuilder.h"

int main(int argc, char** argv) {
  spritebuilder::Options options;
  CLI::App app{
      "sprite-builder: cuts PNG frames into 16 x 16 tiles, stores each distinct tile once on UDI pages, and "
      "writes the sprite's .anim, .tal, pages and its line in AnimatedSpritesList.txt"};
  app.add_option("description", options.description, "the sprite's description (see tools/sprite-builder/README.md)")
      ->required();
  app.add_option("--out", options.out, "the sprites' root folder; the sprite goes in OUT/NAME/")->capture_default_str();
  app.add_option("--page-size", options.pageSize, "side of a page in pixels, a power of two from 16 to 4096")
      ->capture_default_str();

  if (std::optional<int> status = ParseCommandLine(app, argc, argv)) return *status;

  spritebuilder::Report report;
  std::string error;
  if (!spritebuilder::Build(options, &report, &error)) {
    fprintf(stderr, "sprite-builder: %s\n", error.c_str());
    return 1;
  }
  for (const std::string& warning : report.warnings) fprintf(stderr, "sprite-builder: warning: %s\n", warning.c_str());
  printf("%s\n", report.summary.c_str());
  return 0;
}
