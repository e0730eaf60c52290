// YGUIRawImage: the format order, the conversions, tiles and the scaled copy.
#include <gtest/gtest.h>
#include <string.h>

#include "YGUI/YGUITypes.h"
#include "YguiTestSupport.h"

namespace {

using ygtest::RGBA;
using zvtest::Bytes;

class RawImageTest : public testing::Test {
 protected:
  void TearDown() override { image.Release(); }
  std::string Folder() const { return dir.path() + "/"; }
  RGBA PixelAt(int x, int y) const {
    const unsigned char* p = image.mData + (size_t(y) * image.mWidth + x) * 4;
    return RGBA{p[0], p[1], p[2], p[3]};
  }

  zvtest::TempDir dir;
  ygtest::ScopedTextureManager textures;
  YGUIRawImage image;
};

#define EXPECT_RGBA(expected, actual)            \
  do {                                           \
    const RGBA e_ = (expected), a_ = (actual);   \
    EXPECT_EQ(e_.r, a_.r);                       \
    EXPECT_EQ(e_.g, a_.g);                       \
    EXPECT_EQ(e_.b, a_.b);                       \
    EXPECT_EQ(e_.a, a_.a);                       \
  } while (0)

TEST_F(RawImageTest, NameWithAnExtensionLoadsTheUdiOfTheSameStemFirst) {
  ygtest::WriteSolidUdi(dir.file("pic.udi"), 2, 2, {1, 2, 3, 4});
  ygtest::WriteSolidTga(dir.file("pic.tga"), 2, 2, {9, 9, 9, 9});
  image.LoadImage("pic.png", Folder());
  ASSERT_NE(nullptr, image.mData);
  EXPECT_RGBA((RGBA{1, 2, 3, 4}), PixelAt(1, 1));
}

TEST_F(RawImageTest, UdiIsTakenBeforeTgaOfTheSameStem) {
  ygtest::WriteSolidTga(dir.file("pic.tga"), 3, 1, {9, 8, 7, 255});
  image.LoadImage("pic", Folder());
  EXPECT_RGBA((RGBA{9, 8, 7, 255}), PixelAt(2, 0));
  ygtest::WriteSolidUdi(dir.file("pic.udi"), 1, 1, {1, 2, 3, 4});
  image.LoadImage("pic", Folder());
  EXPECT_EQ(1, image.mWidth);
  EXPECT_RGBA((RGBA{1, 2, 3, 4}), PixelAt(0, 0));
}

TEST_F(RawImageTest, TgaIsTakenBeforeBmpAndOnlyTheStemBeforeTheFirstDotCounts) {
  // A 32-bit BMP: its pixels arrive as A, R, G, B like a TGA's.
  Bytes bmp = {'B', 'M'};
  zvtest::PutU32(bmp, 54 + 4);
  zvtest::PutU32(bmp, 0);
  zvtest::PutU32(bmp, 54);
  zvtest::PutU32(bmp, 40);
  zvtest::PutI32(bmp, 1);
  zvtest::PutI32(bmp, 1);
  zvtest::PutU16(bmp, 1);
  zvtest::PutU16(bmp, 32);
  for (int i = 0; i < 6; ++i) zvtest::PutU32(bmp, 0);
  bmp.insert(bmp.end(), {30, 20, 10, 200});  // B, G, R, A
  zvtest::WriteBytes(dir.file("b.bmp"), bmp);
  image.LoadImage("b.x.y", Folder());
  ASSERT_NE(nullptr, image.mData);
  EXPECT_RGBA((RGBA{10, 20, 30, 200}), PixelAt(0, 0));
  ygtest::WriteSolidTga(dir.file("b.tga"), 1, 1, {1, 1, 1, 1});
  image.LoadImage("b", Folder());
  EXPECT_RGBA((RGBA{1, 1, 1, 1}), PixelAt(0, 0));
}

TEST_F(RawImageTest, MissingImageLeavesAnEmptyImage) {
  ygtest::WriteSolidTga(dir.file("pic.tga"), 2, 2, {1, 2, 3, 4});
  image.LoadImage("pic", Folder());
  ASSERT_NE(nullptr, image.mData);
  image.LoadImage("nothing", Folder());
  EXPECT_EQ(nullptr, image.mData);
  EXPECT_EQ(nullptr, image.mRenderBuffer);
  EXPECT_EQ(0, image.mWidth);
  EXPECT_EQ(0, image.mHeight);
  EXPECT_EQ(1, image.mDirty);
  EXPECT_EQ(nullptr, image.GetRenderBuffer(10, 10, eScale_Nearest));
}

TEST_F(RawImageTest, ThirtyTwoBitSourceBytes80_1_2_3GiveTarget1_2_3_80) {
  // UDI format 0 (A8R8G8B8) goes the same way as a 32-bit TGA or BMP.
  ygtest::WriteUdi(dir.file("argb.udi"), 1, 1, 0, 32, 0, Bytes{0x80, 1, 2, 3});
  image.LoadImage("argb", Folder());
  EXPECT_RGBA((RGBA{1, 2, 3, 0x80}), PixelAt(0, 0));
}

TEST_F(RawImageTest, TwentyFourBitSourceIsPackedRgbWithOne255BehindTheLastPixel) {
  ygtest::WriteUdi(dir.file("rgb.udi"), 2, 1, 0, 24, 0, Bytes{1, 2, 3, 4, 5, 6});
  image.LoadImage("rgb", Folder());
  const Bytes expected = {1, 2, 3, 4, 5, 6, 255, 0};
  EXPECT_EQ(expected, Bytes(image.mData, image.mData + 8));
}

TEST_F(RawImageTest, Rgba4444PixelFFFFGives240Everywhere) {
  ygtest::WriteUdi(dir.file("p.udi"), 1, 1, 4, 16, 0, Bytes{0xFF, 0xFF});
  image.LoadImage("p", Folder());
  EXPECT_RGBA((RGBA{240, 240, 240, 240}), PixelAt(0, 0));
}

TEST_F(RawImageTest, SixteenBitConversionsReplicateNoBits) {
  unsigned char out[4];
  const unsigned char white[2] = {0xFF, 0xFF};
  YGUIRawImage::RGB5551toRGBA8888(out, white, 1, 1);
  EXPECT_EQ((Bytes{248, 248, 248, 255}), Bytes(out, out + 4));
  YGUIRawImage::RGB565toRGBA8888(out, white, 1, 1);
  EXPECT_EQ((Bytes{248, 252, 248, 255}), Bytes(out, out + 4));
  const unsigned char noAlpha[2] = {0xFE, 0xFF};  // 0xFFFE: bit 0 clear
  YGUIRawImage::RGB5551toRGBA8888(out, noAlpha, 1, 1);
  EXPECT_EQ(0, out[3]);
  const unsigned char v4444[2] = {0x34, 0x12};  // 0x1234
  YGUIRawImage::RGBA4444toRGBA8888(out, v4444, 1, 1);
  EXPECT_EQ((Bytes{0x10, 0x20, 0x30, 0x40}), Bytes(out, out + 4));
  const unsigned char v565[2] = {0x1F, 0xF8};  // 0xF81F: red and blue full
  YGUIRawImage::RGB565toRGBA8888(out, v565, 1, 1);
  EXPECT_EQ((Bytes{248, 0, 248, 255}), Bytes(out, out + 4));
}

TEST_F(RawImageTest, RgbaPaletteOfSixteenLooksUpTwoIndicesAByteHighNibbleFirst) {
  Bytes payload;
  for (int i = 0; i < 16; ++i) payload.insert(payload.end(), {uint8_t(i), uint8_t(i * 2), uint8_t(i * 3), 255});
  payload.push_back(0x52);  // pixels 5 and 2
  ygtest::WriteUdi(dir.file("pal.udi"), 2, 1, 1, 32, 1, payload);
  image.LoadImage("pal", Folder());
  EXPECT_RGBA((RGBA{5, 10, 15, 255}), PixelAt(0, 0));
  EXPECT_RGBA((RGBA{2, 4, 6, 255}), PixelAt(1, 0));
}

TEST_F(RawImageTest, SixteenBitPaletteOf256IsConvertedByItsFormat) {
  Bytes payload(512, 0);
  payload[2 * 7] = 0xFF;  // entry 7: RGBA4444 0xFFFF
  payload[2 * 7 + 1] = 0xFF;
  payload.push_back(7);
  payload.push_back(0);
  ygtest::WriteUdi(dir.file("pal.udi"), 2, 1, 4, 16, 2, payload);
  image.LoadImage("pal", Folder());
  EXPECT_RGBA((RGBA{240, 240, 240, 240}), PixelAt(0, 0));
  EXPECT_RGBA((RGBA{0, 0, 0, 0}), PixelAt(1, 0));
}

TEST_F(RawImageTest, L8A8EndsInTheAssertion) {
  ygtest::WriteUdi(dir.file("la.udi"), 1, 1, 5, 16, 0, Bytes{1, 2});
  const std::string folder = Folder();
  EXPECT_DEATH(
      {
        YGUIRawImage raw;
        raw.LoadImage("la", folder);
      },
      "Src/YGUI/YGUITypes.cpp:[0-9]+: .*L8A8toRGBA8888.*Assertion `0' failed");
}

TEST_F(RawImageTest, UnknownPaletteTypeEndsInTheAssertion) {
  ygtest::WriteUdi(dir.file("pal.udi"), 1, 1, 1, 32, 3, Bytes(4, 0));
  const std::string folder = Folder();
  EXPECT_DEATH(
      {
        YGUIRawImage raw;
        raw.LoadImage("pal", folder);
      },
      "Src/YGUI/YGUITypes.cpp:[0-9]+: .*LoadPixelDataWithPalette.*Assertion `0' failed");
}

TEST_F(RawImageTest, OddBitDepthEndsInTheAssertion) {
  ygtest::WriteUdi(dir.file("odd.udi"), 1, 1, 0, 16, 0, Bytes{1, 2});
  const std::string folder = Folder();
  EXPECT_DEATH(
      {
        YGUIRawImage raw;
        raw.LoadImage("odd", folder);
      },
      "Src/YGUI/YGUITypes.cpp:[0-9]+: .*LoadTexture.*Assertion `0' failed");
}

TEST_F(RawImageTest, GetRenderBufferAtTheImagesOwnSizeCopies) {
  std::vector<RGBA> pixels;
  for (int i = 0; i < 6; ++i) pixels.push_back(RGBA{uint8_t(i), uint8_t(i + 10), uint8_t(i + 20), 255});
  ygtest::WriteTga32(dir.file("c.tga"), 3, 2, pixels);
  image.LoadImage("c", Folder());
  unsigned char* buffer = image.GetRenderBuffer(3, 2, eScale_Nearest);
  ASSERT_NE(nullptr, buffer);
  EXPECT_EQ(0, memcmp(buffer, image.mData, 24));
  EXPECT_NE(buffer, image.mData);
  EXPECT_EQ(0, image.mDirty);
}

TEST_F(RawImageTest, ScaleTypeOneReturnsNullForAnyOtherSizeAndWorksAtTheOwnSize) {
  ygtest::WriteSolidTga(dir.file("c.tga"), 4, 4, {1, 2, 3, 4});
  image.LoadImage("c", Folder());
  EXPECT_EQ(nullptr, image.GetRenderBuffer(2, 2, ESCALETYPE(1)));
  EXPECT_EQ(nullptr, image.GetRenderBuffer(8, 8, ESCALETYPE(1)));
  EXPECT_NE(nullptr, image.GetRenderBuffer(4, 4, ESCALETYPE(1)));
}

TEST_F(RawImageTest, ScalingAHundredWideImageToFiftyTakesTargetPixelOneFromSourcePixelTwo) {
  unsigned char* pixels = new unsigned char[100 * 1 * 4];
  for (int x = 0; x < 100; ++x) {
    pixels[x * 4] = uint8_t(x);
    pixels[x * 4 + 1] = pixels[x * 4 + 2] = pixels[x * 4 + 3] = 0;
  }
  image.SetImage(pixels, 100, 1, eImage_RGBA8888);
  unsigned char* buffer = image.GetRenderBuffer(50, 1, eScale_Nearest);
  ASSERT_NE(nullptr, buffer);
  EXPECT_EQ(0, buffer[0]);
  EXPECT_EQ(2, buffer[4]);
  EXPECT_EQ(4, buffer[8]);
  EXPECT_EQ(98, buffer[49 * 4]);
}

TEST_F(RawImageTest, ScalingUpRepeatsPixelsAndStaysInsideTheSource) {
  unsigned char* pixels = new unsigned char[2 * 2 * 3];
  for (int i = 0; i < 12; ++i) pixels[i] = uint8_t(i);
  image.SetImage(pixels, 2, 2, eImage_RGB888);
  unsigned char* buffer = image.GetRenderBuffer(4, 4, eScale_Nearest);
  ASSERT_NE(nullptr, buffer);
  // Rows 3 bytes a pixel: target x 0..3 from source 0, 1 (at 1: 0.5 + 0.5), 1, 1.
  const int expectedX[4] = {0, 1, 1, 1};
  const int expectedY[4] = {0, 1, 1, 1};
  for (int y = 0; y < 4; ++y)
    for (int x = 0; x < 4; ++x)
      EXPECT_EQ((expectedY[y] * 2 + expectedX[x]) * 3, buffer[(y * 4 + x) * 3]) << x << "," << y;
}

TEST_F(RawImageTest, HeightZeroReturnsTheBufferAsItIs) {
  ygtest::WriteSolidTga(dir.file("c.tga"), 4, 4, {1, 2, 3, 4});
  image.LoadImage("c", Folder());
  unsigned char* before = image.mRenderBuffer;
  EXPECT_EQ(before, image.GetRenderBuffer(2, 0, eScale_Nearest));
}

TEST_F(RawImageTest, SetImageOfTheSameSizeKeepsTheBufferAndAnotherSizeRenewsIt) {
  image.SetImage(new unsigned char[16](), 2, 2, eImage_RGBA8888);
  unsigned char* buffer = image.mRenderBuffer;
  ASSERT_NE(nullptr, buffer);
  image.SetImage(new unsigned char[16](), 2, 2, eImage_RGBA8888);
  EXPECT_EQ(buffer, image.mRenderBuffer);
  image.SetImage(new unsigned char[36](), 3, 3, eImage_RGB888);
  EXPECT_EQ(3, image.mWidth);
  EXPECT_EQ(eImage_RGB888, image.mType);
  EXPECT_EQ(1, image.mDirty);
}

// Found by fuzzing a tile description: 2^20 rows made the fixed-point height
// overflow to 0, and the ratio divided by it.
TEST_F(RawImageTest, AnImageOfAMillionRowsScalesWithoutAFault) {
  const int width = 4, height = 1 << 20;
  unsigned char* pixels = new unsigned char[size_t(width) * height * 4]();
  pixels[0] = 7;
  image.SetImage(pixels, width, height, eImage_RGBA8888);
  const unsigned char* buffer = image.GetRenderBuffer(2, 2, eScale_Nearest);
  ASSERT_NE(nullptr, buffer);
  // A shrink of more than 4096 times is a ratio of 0 in 20.12: every row comes from the first.
  EXPECT_EQ(7, buffer[0]);
  EXPECT_EQ(7, buffer[2 * 4]);
}

class Np2tTest : public RawImageTest {
 protected:
  void Describe(int width, int height, const std::vector<std::pair<int, int>>& tiles) {
    zvtest::RunCommand("mkdir -p '" + dir.file("NP2T_big") + "'");
    Bytes out;
    zvtest::PutU32(out, 0x4E503254);
    zvtest::PutI32(out, width);
    zvtest::PutI32(out, height);
    zvtest::PutI32(out, int(tiles.size()));
    for (const auto& tile : tiles) {
      zvtest::PutI32(out, tile.first);
      zvtest::PutI32(out, tile.second);
      zvtest::PutI32(out, 777);  // read and ignored
      zvtest::PutI32(out, 888);
    }
    zvtest::WriteBytes(dir.file("NP2T_big/big.np2t"), out);
  }
};

TEST_F(Np2tTest, TileAtHundredOfWidth64InAnImage120WideHasItsRowsCutToTwenty) {
  // The third tile also reaches two rows below the image: those rows are not
  // copied, past the end of the buffer (the sanitizers' build sees it).
  Describe(120, 4, {{0, 0}, {100, 0}, {100, 2}});
  ygtest::WriteSolidTga(dir.file("NP2T_big/big_Tile00.tga"), 64, 4, {1, 1, 1, 255});
  ygtest::WriteSolidUdi(dir.file("NP2T_big/big_Tile01.udi"), 64, 4, {2, 2, 2, 255});
  ygtest::WriteSolidTga(dir.file("NP2T_big/big_Tile02.tga"), 64, 4, {3, 3, 3, 255});
  image.LoadImage("big.png", Folder());
  ASSERT_EQ(120, image.mWidth);
  ASSERT_EQ(4, image.mHeight);
  // Every pixel: a row that ran on past x = 119 would land at the start of the next.
  for (int y = 0; y < 4; ++y) {
    for (int x = 0; x < 120; ++x) {
      RGBA expected = {0, 0, 0, 0};  // between the tiles: nothing
      if (x < 64) expected = {1, 1, 1, 255};
      if (x >= 100) expected = y < 2 ? RGBA{2, 2, 2, 255} : RGBA{3, 3, 3, 255};
      SCOPED_TRACE(testing::Message() << x << "," << y);
      EXPECT_RGBA(expected, PixelAt(x, y));
    }
  }
}

// Found by fuzzing: a tile at x = 2^31 - 1 made x + width wrap round past the cut.
TEST_F(Np2tTest, TilesAtTheEndsOfIntAreCutAwayWhole) {
  const int most = 2147483647, least = -2147483647 - 1;
  Describe(4, 2, {{most, 0}, {least, 0}, {0, most}, {0, least}, {1, 1}});
  for (int i = 0; i < 5; ++i) {
    ygtest::WriteSolidTga(dir.file("NP2T_big/big_Tile0" + std::to_string(i) + ".tga"), 16, 16,
                          {uint8_t(i + 1), 0, 0, 255});
  }
  image.LoadImage("big", Folder());
  ASSERT_EQ(4, image.mWidth);
  EXPECT_RGBA((RGBA{0, 0, 0, 0}), PixelAt(0, 0));  // none of the first four lands
  EXPECT_RGBA((RGBA{0, 0, 0, 0}), PixelAt(3, 0));
  EXPECT_RGBA((RGBA{5, 0, 0, 255}), PixelAt(1, 1));
  EXPECT_RGBA((RGBA{5, 0, 0, 255}), PixelAt(3, 1));
  EXPECT_RGBA((RGBA{0, 0, 0, 0}), PixelAt(0, 1));
}

TEST_F(Np2tTest, MissingTileLeavesItsAreaTransparentBlack) {
  Describe(4, 2, {{0, 0}, {2, 0}});
  ygtest::WriteSolidTga(dir.file("NP2T_big/big_Tile01.tga"), 2, 2, {5, 5, 5, 255});
  image.LoadImage("big", Folder());
  EXPECT_RGBA((RGBA{0, 0, 0, 0}), PixelAt(1, 1));
  EXPECT_RGBA((RGBA{5, 5, 5, 255}), PixelAt(2, 1));
}

TEST_F(Np2tTest, NameBehindTile99EndsIn100SinceTheFormatPadsToTwoDigitsOnly) {
  std::vector<std::pair<int, int>> tiles;
  for (int i = 0; i < 101; ++i) tiles.push_back({i, 0});
  Describe(101, 1, tiles);
  ygtest::WriteSolidTga(dir.file("NP2T_big/big_Tile07.tga"), 1, 1, {7, 7, 7, 255});
  ygtest::WriteSolidTga(dir.file("NP2T_big/big_Tile99.tga"), 1, 1, {99, 99, 99, 255});
  ygtest::WriteSolidTga(dir.file("NP2T_big/big_Tile100.tga"), 1, 1, {100, 100, 100, 255});
  image.LoadImage("big", Folder());
  EXPECT_RGBA((RGBA{7, 7, 7, 255}), PixelAt(7, 0));
  EXPECT_RGBA((RGBA{99, 99, 99, 255}), PixelAt(99, 0));
  EXPECT_RGBA((RGBA{100, 100, 100, 255}), PixelAt(100, 0));
}

TEST_F(Np2tTest, WrongTagIsNoDescription) {
  Describe(4, 2, {});
  Bytes bytes = zvtest::ReadBytes(dir.file("NP2T_big/big.np2t"));
  bytes[0] = 'X';
  zvtest::WriteBytes(dir.file("NP2T_big/big.np2t"), bytes);
  EXPECT_FALSE(image.IntegrateNp2Texture("big", Folder()));
  EXPECT_EQ(nullptr, image.mData);
}

TEST_F(Np2tTest, TiledImageGetsARenderBufferWhenAskedAtItsOwnSize) {
  Describe(2, 1, {{0, 0}});
  ygtest::WriteSolidTga(dir.file("NP2T_big/big_Tile00.tga"), 2, 1, {3, 4, 5, 6});
  image.LoadImage("big", Folder());
  EXPECT_EQ(nullptr, image.mRenderBuffer);
  unsigned char* buffer = image.GetRenderBuffer(2, 1, eScale_Nearest);
  ASSERT_NE(nullptr, buffer);
  EXPECT_EQ((Bytes{3, 4, 5, 6, 3, 4, 5, 6}), Bytes(buffer, buffer + 8));
}

}  // namespace
