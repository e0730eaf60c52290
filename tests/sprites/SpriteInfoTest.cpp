// A frame's bounding box in cells.
#include <gtest/gtest.h>

#include "RenderSystem/SpriteInfo.h"

namespace {

struct Frame {
  explicit Frame(std::vector<SpriteCell> cells) {
    info.mCellCount = uint16_t(cells.size());
    info.mCells = cells.empty() ? nullptr : new SpriteCell[cells.size()];
    for (size_t i = 0; i < cells.size(); ++i) info.mCells[i] = cells[i];
    info.computeCellRect();
  }
  std::vector<int> rect() const { return {info.mMinCellX, info.mMinCellY, info.mMaxCellX, info.mMaxCellY}; }
  SpriteInfo info;
};

TEST(SpriteInfo, AFrameWithoutCellsHasAnEmptyBoxAtZero) {
  Frame frame({});
  EXPECT_EQ(std::vector<int>({0, 0, 0, 0}), frame.rect());
}

TEST(SpriteInfo, TheBoxHoldsEveryCell) {
  Frame frame({{0, 0, 0, 3, 1}, {0, 0, 0, 1, 4}, {0, 0, 0, 2, 2}});
  EXPECT_EQ(std::vector<int>({1, 1, 3, 4}), frame.rect());
}

TEST(SpriteInfo, CellsAtColumn32OrBeyondKeepTheMinimumAt32) {
  Frame frame({{0, 0, 0, 40, 33}, {0, 0, 0, 35, 50}});
  EXPECT_EQ(std::vector<int>({32, 32, 40, 50}), frame.rect());
  Frame mixed({{0, 0, 0, 40, 5}});
  EXPECT_EQ(std::vector<int>({32, 5, 40, 5}), mixed.rect());
}

TEST(SpriteInfo, ACellIsItsFiveBytes) {
  EXPECT_EQ(5u, sizeof(SpriteCell));
  SpriteInfo info;
  EXPECT_EQ(nullptr, info.mCells);
  EXPECT_EQ(0, info.mCellCount);
}

}  // namespace
