#pragma once
// Frames cut into 16 x 16 tiles: fully transparent tiles are left out, tiles
// with the same pixels are stored once, and the stored tiles are packed row by
// row into square pages of a power-of-two size (the last page only as high as it
// needs, still a power of two).
#include <cstdint>
#include <string>
#include <vector>

namespace spritebuilder {

const int kTile = 16;

// Pixels top row first, 4 bytes each: R, G, B, A.
struct Image {
  int width = 0;
  int height = 0;
  std::vector<uint8_t> rgba;
};

// Where a stored tile goes in a frame; the five bytes of a compact ".tal" cell.
struct Cell {
  uint8_t page, tileColumn, tileRow, cellColumn, cellRow;
};

struct AtlasFrame {
  uint16_t width = 0;
  uint16_t height = 0;
  std::vector<Cell> cells;
};

struct Atlas {
  std::vector<AtlasFrame> frames;  // one per source image, in order
  std::vector<Image> pages;
  size_t tileCount = 0;  // distinct tiles stored
  size_t cellCount = 0;  // cells of all frames
};

// Frames of at most 512 x 512 pixels (32 cells a side, the bound the framework's
// cell boxes keep); pageSize a power of two from 16 to 4096. False with a message
// when the frames don't fit the limits of the files.
bool BuildAtlas(const std::vector<Image>& frames, int pageSize, Atlas* out, std::string* error);

// Pixels whose alpha is 0 become (0, 0, 0, 0): their colour never shows, and
// tiles that differ only there are the same tile.
void ClearTransparentPixels(Image* image);

}  // namespace spritebuilder
