// A sprite read from its folder: the ".tal" atlas in both forms, byte by byte,
// the count of pages, accessors and damaged atlases.
#include <gtest/gtest.h>

#include "RenderSystem/AnimatedSpriteData.h"
#include "RenderSystem/AnimationSet.h"
#include "RenderSystem/SpriteInfo.h"
#include "SpriteFolder.h"

namespace {

using spritetest::Bytes;
using spritetest::FrameLayout;
using spritetest::SpriteFolder;
using spritetest::TalLayout;

std::vector<int> CellBytes(const SpriteCell& c) { return {c.mPage, c.mTileColumn, c.mTileRow, c.mCellColumn, c.mCellRow}; }

// Pages are looked for through the texture manager; none is found here (the
// textures themselves are tested on the GL context in SpritePagesTest).
class AnimatedSpriteDataTest : public testing::Test {
 protected:
  SpriteFolder folder;
  ygtest::ScopedTextureManager textures;
  AnimatedSpriteData sprite{"hero"};
};

TEST_F(AnimatedSpriteDataTest, FilesAreNamedAfterTheSpriteAndItsFirstLayer) {
  EXPECT_EQ("res/AnimatedSprites/hero/hero.anim", AnimatedSpriteData::AnimPath("hero"));
  EXPECT_EQ("res/AnimatedSprites/hero/hero_body.tal", AnimatedSpriteData::AtlasPath("hero", "body"));
  EXPECT_EQ("res/AnimatedSprites/hero/hero_body_page0", AnimatedSpriteData::PagePath("hero", "body", 0));
  EXPECT_EQ("res/AnimatedSprites/hero/hero_body_page12", AnimatedSpriteData::PagePath("hero", "body", 12));
  EXPECT_EQ("hero", sprite.mName);
  EXPECT_EQ(0, sprite.mRefCount);
}

TEST_F(AnimatedSpriteDataTest, ACompactAtlasIsReadByteByByte) {
  Bytes b;
  zvtest::PutText(b, "LATS");
  zvtest::PutU32(b, 2);           // frames
  zvtest::PutU32(b, 1);           // compact
  zvtest::PutU32(b, 0xDEADBEEF);  // reserved
  // Frame 0: 40 x 20, two cells.
  zvtest::PutU16(b, 40);
  zvtest::PutU16(b, 20);
  zvtest::PutU16(b, 2);
  b.insert(b.end(), {0, 3, 4, 1, 0});
  b.insert(b.end(), {2, 15, 15, 2, 1});
  // Frame 1: 16 x 16, no cells.
  zvtest::PutU16(b, 16);
  zvtest::PutU16(b, 16);
  zvtest::PutU16(b, 0);
  ASSERT_EQ(16u + 6 + 10 + 6, b.size());
  folder.WriteAnim("hero", SpriteFolder::OneAnimation("base"));
  folder.WriteTal("hero", "base", b);

  ASSERT_EQ(1, sprite.Load("hero"));
  EXPECT_EQ(AnimatedSpriteData::kMagic, sprite.mLayerHeaders[0].mMagic);
  EXPECT_EQ(2u, sprite.mLayerHeaders[0].mSpriteCount);
  EXPECT_EQ(1u, sprite.mLayerHeaders[0].mCompactCells);
  EXPECT_EQ(0xDEADBEEFu, sprite.mLayerHeaders[0].mReserved);
  ASSERT_EQ(2u, sprite.mLayerSprites[0].size());

  const SpriteInfo* f0 = sprite.GetSpriteInfo(eImageLayer_Base, 0);
  ASSERT_NE(nullptr, f0);
  EXPECT_EQ(40, f0->mWidth);
  EXPECT_EQ(20, f0->mHeight);
  ASSERT_EQ(2, f0->mCellCount);
  EXPECT_EQ(std::vector<int>({0, 3, 4, 1, 0}), CellBytes(f0->mCells[0]));
  EXPECT_EQ(std::vector<int>({2, 15, 15, 2, 1}), CellBytes(f0->mCells[1]));
  EXPECT_EQ(1, f0->mMinCellX);
  EXPECT_EQ(0, f0->mMinCellY);
  EXPECT_EQ(2, f0->mMaxCellX);
  EXPECT_EQ(1, f0->mMaxCellY);

  const SpriteInfo* f1 = sprite.GetSpriteInfo(eImageLayer_Base, 1);
  ASSERT_NE(nullptr, f1);
  EXPECT_EQ(0, f1->mCellCount);
  EXPECT_EQ(nullptr, f1->mCells);
  EXPECT_EQ(0, f1->mMinCellX);

  // Pages run to the highest page a cell uses.
  EXPECT_EQ(3u, sprite.mLayerTextures[0].size());
  EXPECT_EQ(nullptr, sprite.GetSpriteInfo(eImageLayer_Base, 2));
  EXPECT_EQ(nullptr, sprite.GetSpriteInfo(eImageLayer_Base, -1));
}

TEST_F(AnimatedSpriteDataTest, AWideAtlasIsReadByteByByte) {
  Bytes b;
  zvtest::PutText(b, "LATS");
  zvtest::PutU32(b, 1);
  zvtest::PutU32(b, 0);  // wide
  zvtest::PutU32(b, 0);
  zvtest::PutU32(b, 0x00070020);  // width 32, low 16 bits
  zvtest::PutU32(b, 0x00010020);  // height 32
  zvtest::PutU32(b, 0xFFFFFFFF);  // dropped
  zvtest::PutU32(b, 0x00030004);  // 4 cells
  for (uint32_t i = 0; i < 4; ++i) {
    zvtest::PutU32(b, 0x100 + i);        // page: low 8 bits
    zvtest::PutU32(b, 0xA00 + 2 * i);    // tile column
    zvtest::PutU32(b, 0xB00 + 3 * i);    // tile row
  }
  ASSERT_EQ(16u + 16 + 4 * 12, b.size());
  folder.WriteAnim("hero", SpriteFolder::OneAnimation("base"));
  folder.WriteTal("hero", "base", b);

  ASSERT_EQ(1, sprite.Load("hero"));
  const SpriteInfo* f = sprite.GetSpriteInfo(eImageLayer_Base, 0);
  ASSERT_NE(nullptr, f);
  EXPECT_EQ(32, f->mWidth);
  EXPECT_EQ(32, f->mHeight);
  ASSERT_EQ(4, f->mCellCount);
  // A square frame: cells row by row, two a row.
  EXPECT_EQ(std::vector<int>({0, 0, 0, 0, 0}), CellBytes(f->mCells[0]));
  EXPECT_EQ(std::vector<int>({1, 2, 3, 1, 0}), CellBytes(f->mCells[1]));
  EXPECT_EQ(std::vector<int>({2, 4, 6, 0, 1}), CellBytes(f->mCells[2]));
  EXPECT_EQ(std::vector<int>({3, 6, 9, 1, 1}), CellBytes(f->mCells[3]));
  EXPECT_EQ(4u, sprite.mLayerTextures[0].size());
}

TEST_F(AnimatedSpriteDataTest, AWideFrame32WideAnd16HighPlacesCell2InColumn0Row2) {
  TalLayout tal;
  tal.compact = 0;
  tal.frames.resize(1);
  tal.frames[0].width = 32;
  tal.frames[0].height = 16;
  tal.frames[0].cells = {{0, 0, 0, 0, 0}, {0, 1, 0, 0, 0}, {0, 2, 0, 0, 0}};
  folder.WriteSprite("hero", tal);
  ASSERT_EQ(1, sprite.Load("hero"));
  const SpriteInfo* f = sprite.GetSpriteInfo(eImageLayer_Base, 0);
  ASSERT_NE(nullptr, f);
  ASSERT_EQ(3, f->mCellCount);
  EXPECT_EQ(1, f->mCells[1].mCellColumn);
  EXPECT_EQ(1, f->mCells[1].mCellRow);
  EXPECT_EQ(0, f->mCells[2].mCellColumn);
  EXPECT_EQ(2, f->mCells[2].mCellRow);
  EXPECT_EQ(2, f->mMaxCellY);
}

TEST_F(AnimatedSpriteDataTest, AWideFrameUnderOneTileCountsAsOneTile) {
  TalLayout tal;
  tal.compact = 0;
  tal.frames.resize(1);
  tal.frames[0].width = 8;
  tal.frames[0].height = 12;
  tal.frames[0].cells = {{0, 5, 6, 0, 0}, {0, 7, 8, 0, 0}};
  folder.WriteSprite("hero", tal);
  ASSERT_EQ(1, sprite.Load("hero"));
  const SpriteInfo* f = sprite.GetSpriteInfo(eImageLayer_Base, 0);
  ASSERT_NE(nullptr, f);
  EXPECT_EQ(std::vector<int>({0, 5, 6, 0, 0}), CellBytes(f->mCells[0]));
  EXPECT_EQ(std::vector<int>({0, 7, 8, 0, 1}), CellBytes(f->mCells[1]));
}

TEST_F(AnimatedSpriteDataTest, ASpriteWithoutAnAtlasLoadsWithZeroPagesAndNoFrames) {
  folder.WriteAnim("hero", SpriteFolder::OneAnimation("base"));
  ASSERT_EQ(1, sprite.Load("hero"));
  EXPECT_EQ(0u, sprite.mLayerTextures[0].size());
  EXPECT_EQ(nullptr, sprite.GetSpriteInfo(eImageLayer_Base, 0));
  EXPECT_EQ(nullptr, sprite.GetLayerTexture(eImageLayer_Base, 0));
  ASSERT_NE(nullptr, sprite.mAnimationSet);
  EXPECT_EQ(0, sprite.mAnimationSet->GetAnimIndexByName("idle"));
}

TEST_F(AnimatedSpriteDataTest, WithoutItsAnimationsASpriteFailsToLoad) {
  TalLayout tal;
  tal.frames.resize(1);
  folder.WriteTal("hero", "base", spritetest::MakeTal(tal));
  EXPECT_EQ(0, sprite.Load("hero"));
  EXPECT_EQ(0, sprite.loadAnimationSet("hero"));
  EXPECT_EQ(nullptr, sprite.GetSpriteInfo(eImageLayer_Base, 0));
}

TEST_F(AnimatedSpriteDataTest, TheAtlasIsNamedByTheFirstLayerEvenWhenItFillsSixteenBytes) {
  folder.WriteAnim("hero", SpriteFolder::OneAnimation("abcdefghijklmnop"));
  TalLayout tal;
  tal.frames.resize(3);
  folder.WriteTal("hero", "abcdefghijklmnop", spritetest::MakeTal(tal));
  ASSERT_EQ(1, sprite.Load("hero"));
  EXPECT_EQ(3u, sprite.mLayerSprites[0].size());
}

TEST_F(AnimatedSpriteDataTest, AWrongMagicLeavesNoFramesAndLoadStillSucceeds) {
  TalLayout tal;
  tal.magic = 0x5354414D;
  tal.frames.resize(2);
  folder.WriteSprite("hero", tal);
  ASSERT_EQ(1, sprite.Load("hero"));
  EXPECT_EQ(0u, sprite.mLayerSprites[0].size());
  EXPECT_EQ(0u, sprite.mLayerTextures[0].size());
  EXPECT_EQ(0u, sprite.mLayerHeaders[0].mMagic);  // not stored
}

TEST_F(AnimatedSpriteDataTest, ASecondLoadReplacesTheFrames) {
  TalLayout tal;
  tal.frames.resize(3);
  folder.WriteSprite("hero", tal);
  ASSERT_EQ(1, sprite.Load("hero"));
  tal.frames.resize(1);
  folder.WriteSprite("hero", tal);
  ASSERT_EQ(1, sprite.Load("hero"));
  EXPECT_EQ(1u, sprite.mLayerSprites[0].size());
}

// Cut anywhere, an atlas in either form gives the frames that begin within it.
TEST_F(AnimatedSpriteDataTest, AnAtlasCutAnywhereReadsWhatIsThere) {
  for (uint32_t compact = 0; compact <= 1; ++compact) {
    TalLayout tal;
    tal.compact = compact;
    tal.frames.resize(3);
    for (int f = 0; f < 3; ++f) {
      tal.frames[f].width = 32;
      tal.frames[f].height = 32;
      for (int c = 0; c < 4; ++c) tal.frames[f].cells.push_back({uint8_t(f), uint8_t(c), 0, uint8_t(c % 2), uint8_t(c / 2)});
    }
    const Bytes whole = spritetest::MakeTal(tal);
    folder.WriteAnim("hero", SpriteFolder::OneAnimation("base"));
    for (size_t size = 0; size <= whole.size(); ++size) {
      SCOPED_TRACE(testing::Message() << "compact " << compact << " size " << size);
      folder.WriteTal("hero", "base", Bytes(whole.begin(), whole.begin() + size));
      AnimatedSpriteData cut("hero");
      ASSERT_EQ(1, cut.Load("hero"));
      ASSERT_LE(cut.mLayerSprites[0].size(), 3u);
      EXPECT_EQ(cut.mLayerSprites[0].size(), cut.mLayerHeaders[0].mSpriteCount);
      for (SpriteInfo* frame : cut.mLayerSprites[0]) ASSERT_LE(frame->mCellCount, 4);
      ASSERT_LE(cut.mLayerTextures[0].size(), 3u);
    }
    folder.WriteTal("hero", "base", whole);
    AnimatedSpriteData full("hero");
    ASSERT_EQ(1, full.Load("hero"));
    ASSERT_EQ(3u, full.mLayerSprites[0].size());
    EXPECT_EQ(3u, full.mLayerTextures[0].size());
    EXPECT_EQ(std::vector<int>({2, 3, 0, 1, 1}), CellBytes(full.mLayerSprites[0][2]->mCells[3]));
  }
}

TEST_F(AnimatedSpriteDataTest, CountsPastTheEndReadOnlyWhatIsThere) {
  TalLayout tal;
  tal.spriteCount = 0xFFFFFFFF;
  tal.frames.resize(2);
  tal.frames[1].cellCount = 0xFFFF;
  tal.frames[1].cells = {{4, 1, 2, 3, 4}};
  folder.WriteSprite("hero", tal);
  ASSERT_EQ(1, sprite.Load("hero"));
  ASSERT_EQ(2u, sprite.mLayerSprites[0].size());
  EXPECT_EQ(2u, sprite.mLayerHeaders[0].mSpriteCount);
  ASSERT_EQ(1, sprite.mLayerSprites[0][1]->mCellCount);
  EXPECT_EQ(5u, sprite.mLayerTextures[0].size());

  tal.compact = 0;
  folder.WriteSprite("hero", tal);
  ASSERT_EQ(1, sprite.Load("hero"));
  ASSERT_EQ(2u, sprite.mLayerSprites[0].size());
  ASSERT_EQ(1, sprite.mLayerSprites[0][1]->mCellCount);
}

}  // namespace
