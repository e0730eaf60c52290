// A sprite's pages on the device's real 3D context: loaded through the texture
// manager, counted there, given back with the sprite, and drawn tile by tile.
#include <gtest/gtest.h>

#include "RenderSystem/AnimatedSpriteData.h"
#include "RenderSystem/AnimatedSpriteDataManager.h"
#include "RenderSystem/GLTextureManager.h"
#include "SpriteFolder.h"
#include "SpriteGL.h"
#include "support/UdiFile.h"

namespace {

using spritetest::Bytes;
using spritetest::SpriteFolder;
using spritetest::TalLayout;

// The colour of pixel (x, y) of the test pages, 0xAARRGGBB; `seed` tells pages apart.
uint32_t PagePixel(int x, int y, int seed) {
  const uint32_t r = uint32_t(x * 7 + seed) & 0xFF, g = uint32_t(y * 13) & 0xFF, b = uint32_t(200 - x) & 0xFF;
  const uint32_t a = uint32_t(128 + y + seed) & 0xFF;
  return a << 24 | r << 16 | g << 8 | b;
}

class SpritePagesTest : public testing::Test {
 protected:
  void SetUp() override { ASSERT_TRUE(gl.gl.ok()) << gl.gl.error(); }

  // Page `page` of sprite "hero", layer "base", as an R8G8B8A8 UDI file.
  void WritePage(int page, int width, int height, int seed) {
    Bytes rgba;
    for (int y = 0; y < height; ++y) {
      for (int x = 0; x < width; ++x) {
        const uint32_t p = PagePixel(x, y, seed);
        rgba.insert(rgba.end(), {uint8_t(p >> 16), uint8_t(p >> 8), uint8_t(p), uint8_t(p >> 24)});
      }
    }
    folder.Folder("hero");
    zvtest::WriteUdi(Page(page) + ".udi", width, height, 1, 32, 0, rgba);
  }
  // Where page `page` of "hero" is, without its extension (the folder is the
  // working directory).
  static std::string Page(int page) { return AnimatedSpriteData::PagePath("hero", "base", page); }
  // An atlas of one frame with a cell on each of `pages` pages.
  static TalLayout OneCellPerPage(int pages) {
    TalLayout tal;
    tal.frames.resize(1);
    tal.frames[0].width = 16 * pages;
    for (int p = 0; p < pages; ++p) tal.frames[0].cells.push_back({uint8_t(p), 0, 0, uint8_t(p), 0});
    return tal;
  }
  GLTextureManager& Textures() { return *gxGetTextureManager(); }

  spritetest::SpriteGL gl;
  SpriteFolder folder;
};

TEST_F(SpritePagesTest, PagesLoadThroughTheTextureManagerAndOneNotFoundIsNull) {
  folder.WriteSprite("hero", OneCellPerPage(3));
  WritePage(0, 32, 16, 0);
  // Page 1 is missing; page 2 is a TGA, found after no UDI was.
  std::vector<ygtest::RGBA> tga(16 * 16, ygtest::RGBA{10, 20, 30, 255});
  ygtest::WriteTga32(Page(2) + ".tga", 16, 16, tga);

  AnimatedSpriteData sprite("hero");
  ASSERT_EQ(1, sprite.Load("hero"));
  ASSERT_EQ(3u, sprite.mLayerTextures[0].size());
  GLTexture* first = sprite.GetLayerTexture(eImageLayer_Base, 0);
  ASSERT_NE(nullptr, first);
  EXPECT_EQ(AnimatedSpriteData::PagePath("hero", "base", 0) + ".udi", first->mName);
  EXPECT_EQ(32u, first->mWidth);
  EXPECT_EQ(16u, first->mHeight);
  EXPECT_EQ(1u, first->mRefCount);
  EXPECT_EQ(first, Textures().FindTextureByName(first->mName));
  EXPECT_EQ(nullptr, sprite.GetLayerTexture(eImageLayer_Base, 1));
  GLTexture* third = sprite.GetLayerTexture(eImageLayer_Base, 2);
  ASSERT_NE(nullptr, third);
  EXPECT_EQ(AnimatedSpriteData::PagePath("hero", "base", 2) + ".tga", third->mName);
  EXPECT_EQ(2u, Textures().mIDToTexture.size());
}

TEST_F(SpritePagesTest, TheSpriteGivesItsPagesBackWhenItGoesAndASecondLoadCountsThemOnce) {
  folder.WriteSprite("hero", OneCellPerPage(2));
  WritePage(0, 16, 16, 0);
  WritePage(1, 16, 16, 1);
  unsigned ids[2];
  {
    AnimatedSpriteData sprite("hero");
    ASSERT_EQ(1, sprite.Load("hero"));
    ASSERT_EQ(1, sprite.Load("hero"));
    for (int p = 0; p < 2; ++p) {
      ASSERT_NE(nullptr, sprite.GetLayerTexture(eImageLayer_Base, p));
      EXPECT_EQ(1u, sprite.GetLayerTexture(eImageLayer_Base, p)->mRefCount) << p;
      ids[p] = sprite.GetLayerTexture(eImageLayer_Base, p)->mTextureID;
      EXPECT_EQ(GL_TRUE, glIsTexture(ids[p]));
    }
    EXPECT_EQ(2u, Textures().mIDToTexture.size());
  }
  EXPECT_TRUE(Textures().mIDToTexture.empty());
  EXPECT_TRUE(Textures().mNameToID.empty());
  EXPECT_EQ(GL_FALSE, glIsTexture(ids[0]));
  EXPECT_EQ(GL_FALSE, glIsTexture(ids[1]));
}

TEST_F(SpritePagesTest, GetLayerTextureOfLayer9GivesNullThoughTheSlotExists) {
  folder.WriteSprite("hero", OneCellPerPage(1));
  WritePage(0, 16, 16, 0);
  AnimatedSpriteData sprite("hero");
  ASSERT_EQ(1, sprite.Load("hero"));
  GLTexture* page = sprite.GetLayerTexture(eImageLayer_Base, 0);
  ASSERT_NE(nullptr, page);
  // The same page in the two last slots, which Load never fills.
  sprite.mLayerTextures[8].assign(1, page);
  sprite.mLayerTextures[9].assign(1, page);
  sprite.mLayerSprites[9].assign(1, sprite.mLayerSprites[0][0]);
  EXPECT_EQ(page, sprite.GetLayerTexture(eImageLayerDefine(8), 0));
  EXPECT_EQ(nullptr, sprite.GetLayerTexture(eImageLayerDefine(9), 0));
  EXPECT_EQ(nullptr, sprite.GetSpriteInfo(eImageLayerDefine(9), 0));
  EXPECT_EQ(nullptr, sprite.GetLayerTexture(eImageLayerDefine(-1), 0));
  EXPECT_EQ(nullptr, sprite.GetLayerTexture(eImageLayer_Base, -1));
  EXPECT_EQ(nullptr, sprite.GetLayerTexture(eImageLayer_Base, 1));
  // Layer 0 holds the page and the frame; the borrowed slots let go of them.
  sprite.mLayerTextures[8].clear();
  sprite.mLayerTextures[9].clear();
  sprite.mLayerSprites[9].clear();
}

TEST_F(SpritePagesTest, TheManagersLastDelGivesThePagesBack) {
  folder.WriteSprite("hero", OneCellPerPage(1));
  WritePage(0, 16, 16, 0);
  AnimatedSpriteDataManager manager;
  const unsigned id = manager.add("hero");
  ASSERT_NE(0u, id);
  ASSERT_EQ(id, manager.add("hero"));
  const std::string page = AnimatedSpriteData::PagePath("hero", "base", 0) + ".udi";
  ASSERT_NE(nullptr, Textures().FindTextureByName(page));
  EXPECT_EQ(1u, Textures().FindTextureByName(page)->mRefCount);  // one sprite, however many users
  manager.del(id);
  EXPECT_NE(nullptr, Textures().FindTextureByName(page));
  manager.del(id);
  EXPECT_EQ(nullptr, Textures().FindTextureByName(page));
}

// A compact frame of 2 x 2 cells: the second tile of page 0 top left, the first
// bottom right, a tile of a missing page top right, and bottom left nothing.
TEST_F(SpritePagesTest, AFrameDrawsAsTheTilesOfItsCellsAndAMissingPageDrawsNothing) {
  TalLayout tal;
  tal.frames.resize(1);
  tal.frames[0].width = 32;
  tal.frames[0].height = 32;
  tal.frames[0].cells = {{0, 1, 0, 0, 0}, {0, 0, 0, 1, 1}, {1, 0, 0, 1, 0}};
  folder.WriteSprite("hero", tal);
  WritePage(0, 32, 16, 5);
  AnimatedSpriteData sprite("hero");
  ASSERT_EQ(1, sprite.Load("hero"));
  ASSERT_EQ(2u, sprite.mLayerTextures[0].size());
  ASSERT_EQ(nullptr, sprite.GetLayerTexture(eImageLayer_Base, 1));

  spritetest::ClearScreen();
  EXPECT_EQ(2, spritetest::DrawFrame(sprite, 0, 10, 20));
  std::vector<uint32_t> expected(32 * 32, 0);
  for (int y = 0; y < 16; ++y) {
    for (int x = 0; x < 16; ++x) {
      expected[size_t(y) * 32 + x] = PagePixel(16 + x, y, 5);
      expected[size_t(16 + y) * 32 + 16 + x] = PagePixel(x, y, 5);
    }
  }
  EXPECT_TRUE(zvtest::SamePixels("sprite_cells", expected, zvtest::ReadPixels(10, 20, 32, 32), 32, 32));
}

}  // namespace
