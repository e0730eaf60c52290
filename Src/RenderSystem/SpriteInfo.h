#ifndef SRC_RENDERSYSTEM_SPRITEINFO_H
#define SRC_RENDERSYSTEM_SPRITEINFO_H
// One frame of an animated sprite, put together from 16 x 16 tiles of the pages.
#include <stdint.h>

class File;

// Where a tile of a page goes in a frame; 5 bytes, as in a compact ".tal" file.
struct SpriteCell {
  uint8_t mPage;
  uint8_t mTileColumn;  // in the page, in tiles
  uint8_t mTileRow;
  uint8_t mCellColumn;  // in the frame, in tiles
  uint8_t mCellRow;
};

class SpriteInfo {
 public:
  static constexpr int kTileSize = 16;
  // computeCellRect's starting minimum, and so the bound it keeps.
  static constexpr uint8_t kCellBound = 32;

  SpriteInfo();
  ~SpriteInfo();

  // A frame of a ".tal" file at the file's position, in one of its two forms;
  // `fileSize` bounds what is read.
  //   Wide: width, height, a word dropped, cell count (4 bytes each, low 16 bits
  //   kept), then per cell page, tile column, tile row (4 bytes each, low 8 bits
  //   kept). A cell's place in the frame follows from its index.
  //   Compact: width, height, cell count (2 bytes each), then 5 bytes a cell.
  void readWide(File& file, unsigned fileSize);
  void readCompact(File& file, unsigned fileSize);

  // The bounding box of the cells, in cells.
  void computeCellRect();

  SpriteCell* mCells;  // owned; null when there are none
  uint16_t mWidth;     // pixels
  uint16_t mHeight;
  uint16_t mCellCount;
  uint8_t mMinCellX;
  uint8_t mMinCellY;
  uint8_t mMaxCellX;
  uint8_t mMaxCellY;

 private:
  SpriteInfo(const SpriteInfo&);
  SpriteInfo& operator=(const SpriteInfo&);
};

#endif
