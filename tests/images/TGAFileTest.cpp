// TGA reading (raw and run-length, both origins) and the 32-bit writer.
#include <gtest/gtest.h>
#include <string.h>

#include "ImageTestSupport.h"
#include "RenderSystem/TGAFile.h"

namespace {

using imgtest::Bytes;

struct Loaded {
  BMPData data;
  Loaded() { memset(&data, 0, sizeof data); }
  ~Loaded() { UnloadBMPData(&data); }
};

Bytes Header(int type, int width, int height, int bits, int descriptor) {
  Bytes out = {0, 0, uint8_t(type), 0, 0, 0, 0, 0, 0, 0, 0, 0};
  zvtest::PutU16(out, uint16_t(width));
  zvtest::PutU16(out, uint16_t(height));
  zvtest::PutU8(out, uint8_t(bits));
  zvtest::PutU8(out, uint8_t(descriptor));
  return out;
}

Bytes Cat(Bytes a, const Bytes& b) {
  a.insert(a.end(), b.begin(), b.end());
  return a;
}

class TGAFixture : public testing::TestWithParam<const char*> {};

TEST_P(TGAFixture, DecodesToThePixelsImageMagickReports) {
  const std::string name = GetParam();
  const bool alpha = name.find("tga32") == 0;
  Loaded tga;
  ASSERT_EQ(0, LoadTGAFile(imgtest::Fixture(name).c_str(), &tga.data));
  EXPECT_EQ(37, tga.data.width);
  EXPECT_EQ(23, tga.data.height);
  EXPECT_EQ(alpha ? 32 : 24, tga.data.bitsPerPixel);
  const Bytes expected =
      imgtest::Reorder(imgtest::Dump(name), 37, 23, alpha ? std::vector<int>{3, 0, 1, 2} : std::vector<int>{0, 1, 2});
  EXPECT_EQ(expected, imgtest::Span(tga.data.pixels, expected.size()));
}

INSTANTIATE_TEST_SUITE_P(Fixtures, TGAFixture,
                         testing::Values("tga24_raw_bottomleft.tga", "tga24_raw_topleft.tga", "tga24_rle_bottomleft.tga",
                                         "tga24_rle_topleft.tga", "tga32_raw_bottomleft.tga", "tga32_raw_topleft.tga",
                                         "tga32_rle_bottomleft.tga", "tga32_rle_topleft.tga"));

TEST(TGAFile, RunLengthOfExactlyTheImageSizeDecodes) {
  // 3 x 2 pixels: a run of 4, then a raw packet of 2.
  const Bytes body = {0x83, 10, 20, 30, 0x01, 1, 2, 3, 4, 5, 6};
  const Bytes file = Cat(Header(10, 3, 2, 24, 0x20), body);
  Loaded tga;
  ASSERT_EQ(0, LoadTGAFromMemory(file.data(), unsigned(file.size()), &tga.data));
  EXPECT_EQ(Bytes({30, 20, 10, 30, 20, 10, 30, 20, 10, 30, 20, 10, 3, 2, 1, 6, 5, 4}), imgtest::Span(tga.data.pixels, 18));
}

TEST(TGAFile, APictureLargerThanTheDevicesMemoryIsNoMemory) {
  // 65535 x 65535 at 32 bits: a header of a few bytes asking for 16 GiB.
  const Bytes file = Header(2, 65535, 65535, 32, 0x20);
  Loaded tga;
  EXPECT_EQ(-1, LoadTGAFromMemory(file.data(), unsigned(file.size()), &tga.data));
  EXPECT_EQ(nullptr, tga.data.pixels);
}

TEST(TGAFile, OneExtraPixelInTheLastRunPacketGivesMinusTwo) {
  const Bytes file = Cat(Header(10, 3, 2, 24, 0x20), {0x81, 1, 1, 1, 0x84, 2, 2, 2});
  Loaded tga;
  EXPECT_EQ(-2, LoadTGAFromMemory(file.data(), unsigned(file.size()), &tga.data));
  EXPECT_EQ(nullptr, tga.data.pixels);
}

TEST(TGAFile, OneExtraPixelInTheLastRawPacketGivesMinusTwo) {
  const Bytes file = Cat(Header(10, 2, 1, 32, 0x28), {0x02, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12});
  Loaded tga;
  EXPECT_EQ(-2, LoadTGAFromMemory(const_cast<unsigned char*>(file.data()), &tga.data));
  EXPECT_EQ(nullptr, tga.data.pixels);
}

TEST(TGAFile, TopLeftOriginIsNotFlippedAndBottomLeftIs) {
  const Bytes rows = {1, 2, 3, 4, 5, 6, 7, 8};  // two rows of one 32-bit pixel
  Loaded top, bottom;
  const Bytes topFile = Cat(Header(2, 1, 2, 32, 0x28), rows);
  const Bytes bottomFile = Cat(Header(2, 1, 2, 32, 0x08), rows);
  ASSERT_EQ(0, LoadTGAFromMemory(topFile.data(), unsigned(topFile.size()), &top.data));
  ASSERT_EQ(0, LoadTGAFromMemory(bottomFile.data(), unsigned(bottomFile.size()), &bottom.data));
  EXPECT_EQ(Bytes({4, 3, 2, 1, 8, 7, 6, 5}), imgtest::Span(top.data.pixels, 8));
  EXPECT_EQ(Bytes({8, 7, 6, 5, 4, 3, 2, 1}), imgtest::Span(bottom.data.pixels, 8));
}

TEST(TGAFile, ColourMapOrOtherHeaderFieldPassesSilentlyWithUnfilledPixels) {
  Bytes withMap = Cat(Header(2, 2, 2, 24, 0x20), Bytes(12, 0x55));
  withMap[1] = 1;  // colour map present
  Bytes withId = Cat(Header(10, 2, 2, 24, 0x20), Bytes(12, 0x55));
  withId[0] = 3;  // an image id of three bytes
  Bytes withOrigin = Cat(Header(2, 2, 2, 24, 0x20), Bytes(12, 0x55));
  withOrigin[8] = 9;  // x origin
  for (const Bytes* file : {&withMap, &withId, &withOrigin}) {
    Loaded tga;
    ASSERT_EQ(0, LoadTGAFromMemory(file->data(), unsigned(file->size()), &tga.data));
    EXPECT_EQ(2, tga.data.width);
    EXPECT_EQ(2, tga.data.height);
    EXPECT_EQ(24, tga.data.bitsPerPixel);
    ASSERT_NE(nullptr, tga.data.pixels);
    EXPECT_EQ(Bytes(12, 0), imgtest::Span(tga.data.pixels, 12)) << "nothing of the 0x55 payload is taken";
  }
}

TEST(TGAFile, RunLengthDataThatEndsEarlyLeavesTheRestClear) {
  const Bytes file = Cat(Header(10, 2, 2, 24, 0x20), {0x81, 9, 8, 7});
  Loaded tga;
  ASSERT_EQ(0, LoadTGAFromMemory(file.data(), unsigned(file.size()), &tga.data));
  EXPECT_EQ(Bytes({7, 8, 9, 7, 8, 9, 0, 0, 0, 0, 0, 0}), imgtest::Span(tga.data.pixels, 12));
}

TEST(TGAFile, FileCodes) {
  zvtest::TempDir dir;
  Loaded tga;
  EXPECT_EQ(-3, LoadTGAFile(dir.file("missing.tga").c_str(), &tga.data));
  zvtest::WriteBytes(dir.file("empty.tga"), Bytes());
  EXPECT_EQ(-2, LoadTGAFile(dir.file("empty.tga").c_str(), &tga.data));
}

TEST(TGAFile, WriterPutsATopLeftHeaderAndThePixelsAsTheyLie) {
  zvtest::TempDir dir;
  unsigned char pixels[8] = {1, 2, 3, 4, 5, 6, 7, 8};
  BMPData bmp = {2, 1, 32, 0, 0, pixels};
  ASSERT_EQ(1, SaveTGA32Data(dir.file("out.tga").c_str(), &bmp));
  const Bytes expected = Cat(Header(2, 2, 1, 32, 0x28), Bytes(pixels, pixels + 8));
  EXPECT_EQ(expected, zvtest::ReadBytes(dir.file("out.tga")));

  // Read back, each pixel comes out reversed: the writer does not swap.
  Loaded back;
  ASSERT_EQ(0, LoadTGAFile(dir.file("out.tga").c_str(), &back.data));
  EXPECT_EQ(Bytes({4, 3, 2, 1, 8, 7, 6, 5}), imgtest::Span(back.data.pixels, 8));
}

TEST(TGAFile, WriterTakesOnlyThirtyTwoBits) {
  zvtest::TempDir dir;
  unsigned char pixels[6] = {1, 2, 3, 4, 5, 6};
  BMPData bmp = {2, 1, 24, 0, 0, pixels};
  EXPECT_EQ(0, SaveTGA32Data(dir.file("out.tga").c_str(), &bmp));
  EXPECT_FALSE(zvtest::Exists(dir.file("out.tga")));
}

}  // namespace
