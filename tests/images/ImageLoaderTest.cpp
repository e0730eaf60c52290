// LoadImageFromFile: the choice of decoder by extension and the codes it returns.
#include <gtest/gtest.h>
#include <string.h>
#include <unistd.h>

#include <climits>

#include "ImageTestSupport.h"
#include "RenderSystem/GLTextureManager.h"
#include "RenderSystem/ImageLoader.h"

namespace {

using imgtest::Bytes;

struct Loaded {
  BMPData data;
  Loaded() { memset(&data, 0, sizeof data); }
  ~Loaded() { UnloadBMPData(&data); }
};

class ImageLoader : public testing::Test {
 protected:
  std::string Copy(const std::string& fixture, const std::string& name) {
    const std::string path = dir.file(name);
    zvtest::WriteBytes(path, zvtest::ReadBytes(imgtest::Fixture(fixture)));
    return path;
  }
  zvtest::TempDir dir;
};

TEST_F(ImageLoader, TgaExtensionInAnyCaseLoads) {
  for (const char* name : {"a.TGA", "b.Tga", "c.tga", "d.tGa"}) {
    Loaded image;
    EXPECT_EQ(0, LoadImageFromFile(Copy("tga32_rle_topleft.tga", name).c_str(), &image.data)) << name;
    EXPECT_EQ(37, image.data.width) << name;
    EXPECT_EQ(32, image.data.bitsPerPixel) << name;
  }
}

TEST_F(ImageLoader, ExtensionOfTwoLettersGivesMinusFour) {
  Loaded image;
  EXPECT_EQ(-4, LoadImageFromFile(Copy("tga32_rle_topleft.tga", "a.tg").c_str(), &image.data));
  EXPECT_EQ(-4, LoadImageFromFile("picture.", &image.data));
}

TEST_F(ImageLoader, UnknownExtensionGivesMinusFive) {
  Loaded image;
  EXPECT_EQ(-5, LoadImageFromFile(Copy("tga32_rle_topleft.tga", "a.xyz").c_str(), &image.data));
  EXPECT_EQ(-5, LoadImageFromFile(Copy("jpeg_colour_37x23.jpg", "a.jpg").c_str(), &image.data));
}

TEST_F(ImageLoader, NullTargetOrEmptyPathGivesMinusSix) {
  Loaded image;
  EXPECT_EQ(-6, LoadImageFromFile(Copy("tga32_rle_topleft.tga", "a.tga").c_str(), nullptr));
  EXPECT_EQ(-6, LoadImageFromFile("", &image.data));
  EXPECT_EQ(-6, LoadImageFromFile(nullptr, &image.data));
}

TEST_F(ImageLoader, OnlyThreeLettersAfterTheDotCount) {
  Loaded image;
  EXPECT_EQ(0, LoadImageFromFile(Copy("bmp32_37x23.bmp", "a.bmpx").c_str(), &image.data));
  EXPECT_EQ(32, image.data.bitsPerPixel);
}

TEST_F(ImageLoader, WithoutADotThePathsFirstThreeLettersCount) {
  const Bytes tga = zvtest::ReadBytes(imgtest::Fixture("tga24_raw_topleft.tga"));
  char here[PATH_MAX];
  ASSERT_NE(nullptr, getcwd(here, sizeof here));
  ASSERT_EQ(0, chdir(dir.path().c_str()));
  zvtest::WriteBytes("tgapicture", tga);
  zvtest::WriteBytes("picture", tga);
  Loaded a, b;
  const int named = LoadImageFromFile("tgapicture", &a.data);
  const int other = LoadImageFromFile("picture", &b.data);
  ASSERT_EQ(0, chdir(here));
  EXPECT_EQ(0, named);
  EXPECT_EQ(24, a.data.bitsPerPixel);
  EXPECT_EQ(-5, other);
}

TEST_F(ImageLoader, BmpCodes) {
  Loaded image;
  EXPECT_EQ(-5, LoadImageFromFile(dir.file("missing.bmp").c_str(), &image.data));
  zvtest::WriteBytes(dir.file("other.bmp"), Bytes(80, 'x'));
  EXPECT_EQ(-5, LoadImageFromFile(dir.file("other.bmp").c_str(), &image.data));
  // A 16-bit BMP is read, but only 24 and 32 bits are converted.
  Bytes sixteen = zvtest::ReadBytes(imgtest::Fixture("bmp24_36x23.bmp"));
  sixteen[28] = 16;
  zvtest::WriteBytes(dir.file("sixteen.bmp"), sixteen);
  EXPECT_EQ(-2, LoadImageFromFile(dir.file("sixteen.bmp").c_str(), &image.data));
  EXPECT_EQ(nullptr, image.data.pixels);
  EXPECT_EQ(0, LoadImageFromFile(Copy("bmp24_36x23.bmp", "ok.BMP").c_str(), &image.data));
  EXPECT_EQ(24, image.data.bitsPerPixel);
}

TEST_F(ImageLoader, TgaCodes) {
  Loaded image;
  EXPECT_EQ(-3, LoadImageFromFile(dir.file("missing.tga").c_str(), &image.data));
  zvtest::WriteBytes(dir.file("empty.tga"), Bytes());
  EXPECT_EQ(-2, LoadImageFromFile(dir.file("empty.tga").c_str(), &image.data));
}

TEST_F(ImageLoader, UdiFailureGivesMinusTwo) {
  Loaded image;
  zvtest::WriteBytes(dir.file("bad.udi"), Bytes(40, 0));
  GLTextureManager::sCreate();
  EXPECT_EQ(-2, LoadImageFromFile(dir.file("bad.udi").c_str(), &image.data));
  delete GLTextureManager::instance_;
  GLTextureManager::instance_ = nullptr;
}

}  // namespace
