#include "RenderSystem/SpriteInfo.h"

#include <string.h>

#include "Base/File.h"
#include "Base/FileRecords.h"

namespace {
const unsigned kWideCellSize = 12;
const unsigned kCompactCellSize = 5;
}  // namespace

static_assert(sizeof(SpriteCell) == 5, "a cell is its five file bytes");

SpriteInfo::SpriteInfo()
    : mCells(0), mWidth(0), mHeight(0), mCellCount(0), mMinCellX(0), mMinCellY(0), mMaxCellX(0), mMaxCellY(0) {}

SpriteInfo::~SpriteInfo() { delete[] mCells; }

void SpriteInfo::readWide(File& file, unsigned fileSize) {
  mWidth = uint16_t(file.readUInt());
  mHeight = uint16_t(file.readUInt());
  file.readUInt();  // not used
  mCellCount = uint16_t(RecordsLeftInFile(file, fileSize, uint16_t(file.readUInt()), kWideCellSize));
  if (mCellCount == 0) return;
  mCells = new SpriteCell[mCellCount];
  // The row divides by the height in tiles where a row-major grid would take the
  // width: the two agree for square frames only, and that is how the form reads.
  // A frame under one tile wide or high counts as one tile, not as a division by 0.
  const unsigned columns = mWidth >> 4 != 0 ? mWidth >> 4 : 1;
  const unsigned rows = mHeight >> 4 != 0 ? mHeight >> 4 : 1;
  for (unsigned i = 0; i < mCellCount; ++i) {
    SpriteCell& cell = mCells[i];
    cell.mPage = uint8_t(file.readUInt());
    cell.mTileColumn = uint8_t(file.readUInt());
    cell.mTileRow = uint8_t(file.readUInt());
    cell.mCellColumn = uint8_t(i % columns);
    cell.mCellRow = uint8_t(i / rows);
  }
}

void SpriteInfo::readCompact(File& file, unsigned fileSize) {
  mWidth = file.readUShort();
  mHeight = file.readUShort();
  mCellCount = uint16_t(RecordsLeftInFile(file, fileSize, file.readUShort(), kCompactCellSize));
  if (mCellCount == 0) return;
  mCells = new SpriteCell[mCellCount];
  // What a short file leaves out reads as zeros.
  memset(mCells, 0, sizeof(SpriteCell) * mCellCount);
  file.read(mCells, sizeof(SpriteCell), mCellCount);
}

void SpriteInfo::computeCellRect() {
  mMinCellX = kCellBound;
  mMinCellY = kCellBound;
  mMaxCellX = 0;
  mMaxCellY = 0;
  if (mCellCount == 0) {
    mMinCellX = 0;
    mMinCellY = 0;
    return;
  }
  for (unsigned i = 0; i < mCellCount; ++i) {
    const SpriteCell& cell = mCells[i];
    if (cell.mCellColumn < mMinCellX) mMinCellX = cell.mCellColumn;
    if (cell.mCellRow < mMinCellY) mMinCellY = cell.mCellRow;
    if (cell.mCellColumn > mMaxCellX) mMaxCellX = cell.mCellColumn;
    if (cell.mCellRow > mMaxCellY) mMaxCellY = cell.mCellRow;
  }
}
