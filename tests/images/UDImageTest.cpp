// UDI pictures: the header, stored and zlib-packed payloads, palettes, and the
// preconditions of loading.
#include <gtest/gtest.h>
#include <string.h>

#include "ImageTestSupport.h"
#include "RenderSystem/GLTextureManager.h"
#include "RenderSystem/ImageLoader.h"
#include "RenderSystem/UDImage.h"

namespace {

using imgtest::Bytes;
using imgtest::UdiLayout;

// Loading UDI files needs the texture manager, as in a running title.
class UDImageTest : public testing::Test {
 protected:
  void SetUp() override { GLTextureManager::sCreate(); }
  void TearDown() override {
    delete GLTextureManager::instance_;
    GLTextureManager::instance_ = nullptr;
  }
  zvtest::TempDir dir;
};

struct Loaded {
  BMPData data;
  Loaded() { memset(&data, 0, sizeof data); }
  ~Loaded() { UnloadBMPData(&data); }
};

size_t PayloadSize(const UdiLayout& layout) {
  const size_t pixels = size_t(layout.width) * layout.height;
  if (layout.paletteType == 1) return size_t(layout.bitsPerPixel / 8) * 16 + pixels / 2;
  if (layout.paletteType == 2) return size_t(layout.bitsPerPixel / 8) * 256 + pixels;
  return pixels * layout.bitsPerPixel / 8;
}

TEST(UDImageTable, PixelFormatsByNumber) {
  const char* expected[6][2] = {
      {"A8R8G8B8", "Pixel=32,A=8,R=8,G=8,B=8"}, {"R8G8B8A8", "Pixel=32,R=8,G=8,B=8,A=8"},
      {"R5G5B5A1", "Pixel=16,R=5,G=5,B=5,A=1"}, {"R5G6B5", "Pixel=16,R=5,G=6,B=5,A=0"},
      {"R4G4B4A4", "Pixel=16,R=4,G=4,B=4,A=4"}, {"L8A8", "Pixel=16,L=8,A=8"},
  };
  for (int i = 0; i < 6; ++i) {
    EXPECT_STREQ(expected[i][0], UDImage::PreDefinePixelFormatTable[i][0]);
    EXPECT_STREQ(expected[i][1], UDImage::PreDefinePixelFormatTable[i][1]);
  }
  EXPECT_EQ(0, UDImage::ePixelFormat_A8R8G8B8);
  EXPECT_EQ(5, UDImage::ePixelFormat_L8A8);
  EXPECT_EQ(0, memcmp(UDImage::HEADER_TAG, "UDI\0", 4));
}

TEST_F(UDImageTest, EveryPixelFormatPaletteTypeAndCompressionLoads) {
  int cases = 0;
  for (int format = 0; format <= 5; ++format) {
    for (int palette = 0; palette <= 2; ++palette) {
      for (int compression = 0; compression <= 1; ++compression) {
        UdiLayout layout;
        layout.width = 7;
        layout.height = 5;
        layout.pixelFormat = uint8_t(format);
        layout.bitsPerPixel = format <= 1 ? 32 : 16;
        layout.paletteType = uint8_t(palette);
        layout.compression = uint8_t(compression);
        SCOPED_TRACE(testing::Message() << "format " << format << " palette " << palette << " compression "
                                        << compression);
        const Bytes payload = imgtest::Pattern(PayloadSize(layout), unsigned(format * 10 + palette));
        const std::string path = dir.file("p.udi");
        zvtest::WriteBytes(path, imgtest::MakeUdi(layout, payload));
        Loaded udi;
        ASSERT_EQ(0, LoadImageFromFile(path.c_str(), &udi.data));
        EXPECT_EQ(7, udi.data.width);
        EXPECT_EQ(5, udi.data.height);
        EXPECT_EQ(layout.bitsPerPixel, udi.data.bitsPerPixel);
        EXPECT_EQ(palette, udi.data.paletteType);
        EXPECT_EQ(format, udi.data.pixelFormat);
        EXPECT_EQ(payload, imgtest::Span(udi.data.pixels, payload.size()));
        ++cases;
      }
    }
  }
  EXPECT_EQ(36, cases);
}

TEST_F(UDImageTest, PaletteTypeOneWithSixteenBitColoursHasThirtyTwoPlusHalfThePixels) {
  // 6 x 3 and 7 x 5 pixels: 9 and 17 bytes of indices (half the pixels, rounded
  // down), stored plain and packed, each file holding four bytes more than that.
  const int sizes[2][2] = {{6, 3}, {7, 5}};
  for (const auto& size : sizes) {
    for (int compression = 0; compression <= 1; ++compression) {
      UdiLayout layout;
      layout.width = uint16_t(size[0]);
      layout.height = uint16_t(size[1]);
      layout.pixelFormat = UDImage::ePixelFormat_R5G6B5;
      layout.bitsPerPixel = 16;
      layout.paletteType = 1;
      layout.compression = uint8_t(compression);
      const size_t expected = 32 + size_t(size[0] * size[1]) / 2;
      const Bytes payload = imgtest::Pattern(expected + 4, unsigned(size[0] + compression));
      SCOPED_TRACE(testing::Message() << size[0] << " x " << size[1] << ", compression " << compression);
      zvtest::WriteBytes(dir.file("p.udi"), imgtest::MakeUdi(layout, payload));
      Loaded udi;
      ASSERT_EQ(0, LoadUDIFile(dir.file("p.udi").c_str(), &udi.data));
      // All of the copy, which is exactly that long (the sanitizer build checks the end).
      EXPECT_EQ(Bytes(payload.begin(), payload.begin() + expected), imgtest::Span(udi.data.pixels, expected));
    }
  }
}

TEST_F(UDImageTest, StoredLengthOffByOneFails) {
  for (int error : {-1, 1}) {
    UdiLayout layout;
    layout.storedLengthError = error;
    zvtest::WriteBytes(dir.file("p.udi"), imgtest::MakeUdi(layout, imgtest::Pattern(4 * 2 * 4)));
    Loaded udi;
    EXPECT_EQ(-2, LoadUDIFile(dir.file("p.udi").c_str(), &udi.data)) << error;
    EXPECT_EQ(nullptr, udi.data.pixels);
  }
}

TEST_F(UDImageTest, WrongTagShortFileAndMissingFileFail) {
  UdiLayout layout;
  Bytes file = imgtest::MakeUdi(layout, imgtest::Pattern(32));
  file[3] = 'X';
  zvtest::WriteBytes(dir.file("tag.udi"), file);
  zvtest::WriteBytes(dir.file("short.udi"), Bytes({'U', 'D', 'I'}));
  UDImage::UserDefineImage image;
  EXPECT_EQ(0, image.Load(dir.file("tag.udi").c_str()));
  EXPECT_EQ(0, image.Load(dir.file("short.udi").c_str()));
  EXPECT_EQ(0, image.Load(dir.file("missing.udi").c_str()));
  EXPECT_EQ(nullptr, image.mPixels);
}

TEST_F(UDImageTest, DamagedPackedPayloadFailsAndFreesEverything) {
  UdiLayout layout;
  layout.compression = 1;
  Bytes file = imgtest::MakeUdi(layout, imgtest::Pattern(32));
  file[40] ^= 0xFF;  // inside the zlib stream
  zvtest::WriteBytes(dir.file("bad.udi"), file);
  UDImage::UserDefineImage image;
  EXPECT_EQ(0, image.Load(dir.file("bad.udi").c_str()));
  EXPECT_EQ(nullptr, image.mPixels);

  // A stream that unpacks to fewer bytes than the header says fails too.
  Bytes shorter = imgtest::MakeUdi(layout, imgtest::Pattern(32));
  shorter[8] = 36 + 33;
  zvtest::WriteBytes(dir.file("short.udi"), shorter);
  EXPECT_EQ(0, image.Load(dir.file("short.udi").c_str()));
}

TEST_F(UDImageTest, LoadKeepsTheHeaderWordsInTheObject) {
  UdiLayout layout;
  layout.width = 3;
  layout.height = 2;
  layout.pixelFormat = UDImage::ePixelFormat_R4G4B4A4;
  layout.bitsPerPixel = 16;
  const Bytes payload = imgtest::Pattern(12);
  zvtest::WriteBytes(dir.file("p.udi"), imgtest::MakeUdi(layout, payload));
  UDImage::UserDefineImage image;
  ASSERT_EQ(1, image.Load(dir.file("p.udi").c_str()));
  EXPECT_EQ(3, image.mWidth);
  EXPECT_EQ(2, image.mHeight);
  EXPECT_EQ(0x00B61004u, image.mFormat[0]);  // format 4, 16 bits, junk, palette 0
  EXPECT_EQ(0xC3C2C1C0u, image.mFormat[1]);
  EXPECT_EQ(0xC7C6C5C4u, image.mFormat[2]);
  EXPECT_EQ(nullptr, image.mPalette);
  EXPECT_EQ(0u, image.mReserved);
  EXPECT_EQ(payload, imgtest::Span(image.mPixels, payload.size()));
  image.Clear();
  EXPECT_EQ(nullptr, image.mPixels);
}

TEST_F(UDImageTest, UnknownCompressionLoadsWithBlankPixels) {
  UdiLayout layout;
  layout.compression = 2;
  zvtest::WriteBytes(dir.file("p.udi"), imgtest::MakeUdi(layout, imgtest::Pattern(32)));
  Loaded udi;
  ASSERT_EQ(0, LoadUDIFile(dir.file("p.udi").c_str(), &udi.data));
  EXPECT_EQ(Bytes(32, 0), imgtest::Span(udi.data.pixels, 32));
}

TEST_F(UDImageTest, BackslashCountsAsAFolderSeparator) {
  // A name with a backslash but no slash passes the precondition; it is opened as
  // named.
  UDImage::UserDefineImage image;
  EXPECT_EQ(0, image.Load("no\\such.udi"));
}

TEST(UDImageDeathTest, PathWithoutFolderFailsTheAssertion) {
  GLTextureManager::sCreate();
  UDImage::UserDefineImage image;
  EXPECT_DEATH(image.Load("picture.udi"),
               zvtest::Literal("Src/RenderSystem/UDImage.cpp:") + "[0-9]+" +
                   zvtest::Literal(": int UDImage::UserDefineImage::Load(const char*): Assertion `pos_1 >= 0 || "
                                   "pos_2 >= 0' failed."));
  delete GLTextureManager::instance_;
  GLTextureManager::instance_ = nullptr;
}

TEST(UDImageDeathTest, LoadWithoutTextureManagerFailsTheSingletonAssertion) {
  ASSERT_EQ(nullptr, GLTextureManager::instance_);
  UDImage::UserDefineImage image;
  const std::string text = zvtest::AssertText(
      "Src/Base/singleton.h", 40, "static T& Singleton<T, Tag_Singleton_Manual>::sInstance() [with T = GLTextureManager]",
      "instance_");
  EXPECT_DEATH(image.Load("/tmp/picture.udi"), zvtest::Literal(text));
}

}  // namespace
