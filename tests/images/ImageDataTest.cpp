// ImageData: a loaded or created picture and what it keeps on failure.
#include <gtest/gtest.h>

#include "ImageTestSupport.h"
#include "RenderSystem/ImageData.h"

namespace {

using imgtest::Bytes;

TEST(ImageData, LoadTakesThePixelsAndTheirSize) {
  ImageData image;
  const std::string path = imgtest::Fixture("tga32_raw_bottomleft.tga");
  ASSERT_EQ(1, image.Load(path.c_str()));
  EXPECT_EQ(path, image.mName);
  EXPECT_EQ(37, image.mWidth);
  EXPECT_EQ(23, image.mHeight);
  EXPECT_EQ(32, image.mBitsPerPixel);
  EXPECT_EQ(1, image.mValid);
  EXPECT_EQ(37 * 4, image.mRowBytes);
  EXPECT_EQ(23 * 37 * 4, image.mDataSize);
  EXPECT_EQ(0, image.mPaletteType);
  EXPECT_EQ(0, image.GetFormat());
  const Bytes expected = imgtest::Reorder(imgtest::Dump("tga32_raw_bottomleft.tga"), 37, 23, {3, 0, 1, 2});
  EXPECT_EQ(expected, imgtest::Span(image.mData, expected.size()));
}

TEST(ImageData, LoadOfAMissingFileKeepsThePreviousPixels) {
  ImageData image;
  ASSERT_EQ(1, image.Load(imgtest::Fixture("bmp24_36x23.bmp").c_str()));
  const unsigned char* before = image.mData;
  const Bytes pixels = imgtest::Span(image.mData, size_t(image.mDataSize));
  EXPECT_EQ(0, image.Load("/no/such/picture.tga"));
  EXPECT_EQ(before, image.mData);
  EXPECT_EQ(pixels, imgtest::Span(image.mData, pixels.size()));
  EXPECT_EQ(imgtest::Fixture("bmp24_36x23.bmp"), image.mName);
  EXPECT_EQ(36, image.mWidth);
  EXPECT_EQ(1, image.mValid);
}

TEST(ImageData, CreateWithAZeroSizeReturnsZero) {
  ImageData image;
  EXPECT_EQ(0, image.Create(0, 10, 32));
  EXPECT_EQ(0, image.Create(10, 0, 32));
  EXPECT_EQ(0, image.Create(10, 10, 0));
  EXPECT_EQ(nullptr, image.mData);
  EXPECT_EQ(0, image.mValid);
}

TEST(ImageData, CreateMakesANonamePicture) {
  ImageData image;
  ASSERT_EQ(1, image.Create(5, 3, 24));
  EXPECT_EQ("noname", image.mName);
  EXPECT_EQ(15, image.mRowBytes);
  EXPECT_EQ(45, image.mDataSize);
  EXPECT_EQ(1, image.mValid);
  EXPECT_NE(nullptr, image.mData);
}

TEST(ImageData, UnloadClearsEverythingButPaletteAndFormat) {
  ImageData image;
  ASSERT_EQ(1, image.Create(4, 4, 32));
  image.mFormat = 3;
  image.mPaletteType = 1;
  image.Unload();
  EXPECT_EQ(nullptr, image.mData);
  EXPECT_EQ("", image.mName);
  EXPECT_EQ(0, image.mWidth);
  EXPECT_EQ(0, image.mHeight);
  EXPECT_EQ(0, image.mBitsPerPixel);
  EXPECT_EQ(0, image.mValid);
  EXPECT_EQ(0, image.mRowBytes);
  EXPECT_EQ(0, image.mDataSize);
  EXPECT_EQ(3, image.GetFormat());
  EXPECT_EQ(1, image.mPaletteType);
}

TEST(ImageData, SaveBmpWritesThroughTheBmpWriter) {
  zvtest::TempDir dir;
  ImageData image;
  ASSERT_EQ(1, image.Create(2, 1, 24));
  for (int i = 0; i < 6; ++i) image.mData[i] = uint8_t(i + 1);
  ASSERT_EQ(1, image.SaveBMP(dir.file("o.bmp").c_str()));
  const Bytes file = zvtest::ReadBytes(dir.file("o.bmp"));
  ASSERT_EQ(14u + 40u + 6u, file.size());
  EXPECT_EQ('B', file[0]);
  EXPECT_EQ('B', file[14]);  // the file header again
  EXPECT_EQ(Bytes({1, 2, 3, 4, 5, 6}), Bytes(file.end() - 6, file.end()));
}

}  // namespace
