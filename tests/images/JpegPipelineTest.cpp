// JPEG in and out, with plain libjpeg and ImageMagick as judges.
#include <gtest/gtest.h>

#include "ImageTestSupport.h"

namespace {

using imgtest::Bytes;

TEST(ExtractJpgToRGB8, ColourFixtureDecodesToWhatImageMagickReports) {
  std::string path = imgtest::Fixture("jpeg_colour_37x23.jpg");
  uint8* buf = nullptr;
  int width = 0, height = 0;
  ASSERT_TRUE(imgtest::Store().ExtractJpgToRGB8(path, buf, width, height, 1));
  EXPECT_EQ(37, width);
  EXPECT_EQ(23, height);
  const Bytes expected = imgtest::Reorder(imgtest::Dump("jpeg_colour_37x23.jpg"), 37, 23, {0, 1, 2});
  EXPECT_EQ(expected, imgtest::Span(buf, expected.size()));
  delete[] buf;
}

TEST(ExtractJpgToRGB8, DenominatorTwoIsTheLibrarysHalfSize) {
  zvtest::TempDir dir;
  std::string path = dir.file("p.jpg");
  imgtest::EncodeWithLibjpeg(path, imgtest::Gradient(101, 67), 101, 67);
  uint8* buf = nullptr;
  int width = 0, height = 0;
  ASSERT_TRUE(imgtest::Store().ExtractJpgToRGB8(path, buf, width, height, 2));
  const imgtest::Decoded judge = imgtest::DecodeWithLibjpeg(path, 2);
  EXPECT_EQ(51, width);
  EXPECT_EQ(34, height);
  EXPECT_EQ(judge.width, width);
  EXPECT_EQ(judge.height, height);
  EXPECT_EQ(judge.pixels, imgtest::Span(buf, judge.pixels.size()));
  delete[] buf;
}

TEST(ExtractJpgToRGB8, DenominatorSixteenOnEightyOneBySixtyOneGivesFortyByThirtyFromEvenRowsAndColumns) {
  zvtest::TempDir dir;
  std::string path = dir.file("p.jpg");
  // 641 x 481: the library's one-eighth is 81 x 61.
  imgtest::EncodeWithLibjpeg(path, imgtest::Gradient(641, 481), 641, 481);
  const imgtest::Decoded eighth = imgtest::DecodeWithLibjpeg(path, 8);
  ASSERT_EQ(81, eighth.width);
  ASSERT_EQ(61, eighth.height);

  uint8* buf = nullptr;
  int width = 0, height = 0;
  testing::internal::CaptureStdout();
  ASSERT_TRUE(imgtest::Store().ExtractJpgToRGB8(path, buf, width, height, 16));
  EXPECT_EQ("[MediaCenter][ExtractJpgToRGB8] ScaleRationDenom is 16. More Operation.\n",
            testing::internal::GetCapturedStdout());
  EXPECT_EQ(40, width);
  EXPECT_EQ(30, height);
  Bytes expected;
  for (int y = 0; y < 30; ++y)
    for (int x = 0; x < 40; ++x)
      for (int k = 0; k < 3; ++k) expected.push_back(eighth.pixels[(size_t(y * 2) * 81 + x * 2) * 3 + k]);
  EXPECT_EQ(expected, imgtest::Span(buf, expected.size()));
  delete[] buf;
}

TEST(ExtractJpgToRGB8, MissingFileReturnsFalseAndLeavesTheArgumentsAlone) {
  std::string path = "/no/such/picture.jpg";
  uint8 marker = 0;
  uint8* buf = &marker;
  int width = 7, height = 9;
  testing::internal::CaptureStdout();
  testing::internal::CaptureStderr();
  EXPECT_FALSE(imgtest::Store().ExtractJpgToRGB8(path, buf, width, height, 1));
  EXPECT_EQ("[MediaCenter][ExtractJpgToRGB8] Problem :: No such file or directory\n",
            testing::internal::GetCapturedStderr());
  EXPECT_EQ("[MediaCenter][ExtractJpgToRGB8] Extract jpg file failed. Cann't open file /no/such/picture.jpg.\n",
            testing::internal::GetCapturedStdout());
  EXPECT_EQ(&marker, buf);
  EXPECT_EQ(7, width);
  EXPECT_EQ(9, height);
  testing::internal::CaptureStdout();
  EXPECT_FALSE(imgtest::Store().ExtractJpgToRGBA8(path, buf, width, height, 1));
  testing::internal::GetCapturedStdout();
  EXPECT_EQ(&marker, buf);
}

TEST(ExtractJpgToRGB8DeathTest, GreyScaleFileFailsTheAssertion) {
  std::string path = imgtest::Fixture("jpeg_grey_37x23.jpg");
  uint8* buf = nullptr;
  int width = 0, height = 0;
  EXPECT_DEATH(imgtest::Store().ExtractJpgToRGB8(path, buf, width, height, 1),
               zvtest::Literal("Src/MediaCenter/MediaCenter.cpp:") + "[0-9]+" +
                   zvtest::Literal(": BOOL MediaCenter::ExtractJpgToRGB8(std::string&, uint8*&, int&, int&, "
                                   "int): Assertion `Cinfo.num_components == 3' failed."));
}

TEST(ExtractJpgToRGBA8, AddsAnOpaqueAlpha) {
  std::string path = imgtest::Fixture("jpeg_colour_37x23.jpg");
  uint8* buf = nullptr;
  int width = 0, height = 0;
  ASSERT_TRUE(imgtest::Store().ExtractJpgToRGBA8(path, buf, width, height, 1));
  EXPECT_EQ(37, width);
  EXPECT_EQ(23, height);
  const Bytes im = imgtest::Dump("jpeg_colour_37x23.jpg");  // opaque: alpha 255 throughout
  EXPECT_EQ(im, imgtest::Span(buf, im.size()));
  delete[] buf;
}

TEST(ExtractTgaToRGBA8, ThirtyTwoBitFileGivesRGBA) {
  for (const char* name : {"tga32_raw_bottomleft.tga", "tga32_rle_topleft.tga"}) {
    std::string path = imgtest::Fixture(name);
    uint8* buf = nullptr;
    int width = 0, height = 0;
    ASSERT_TRUE(imgtest::Store().ExtractTgaToRGBA8(path, buf, width, height)) << name;
    EXPECT_EQ(37, width);
    EXPECT_EQ(23, height);
    const Bytes im = imgtest::Dump(name);
    EXPECT_EQ(im, imgtest::Span(buf, im.size())) << name;
    delete[] buf;
  }
}

TEST(ExtractTgaToRGBA8, TwentyFourBitFileIsReadFourBytesAPixelUntilItsPixelsEnd) {
  std::string path = imgtest::Fixture("tga24_raw_topleft.tga");
  uint8* buf = nullptr;
  int width = 0, height = 0;
  ASSERT_TRUE(imgtest::Store().ExtractTgaToRGBA8(path, buf, width, height));
  const Bytes rgb = imgtest::Reorder(imgtest::Dump("tga24_raw_topleft.tga"), 37, 23, {0, 1, 2});
  const size_t count = 37 * 23;
  Bytes expected(count * 4, 0);
  for (size_t i = 0; i * 4 + 4 <= rgb.size(); ++i) {
    expected[i * 4 + 0] = rgb[i * 4 + 1];
    expected[i * 4 + 1] = rgb[i * 4 + 2];
    expected[i * 4 + 2] = rgb[i * 4 + 3];
    expected[i * 4 + 3] = rgb[i * 4 + 0];
  }
  EXPECT_EQ(expected, imgtest::Span(buf, expected.size()));
  delete[] buf;
}

TEST(ExtractTgaToRGBA8, MissingFileReturnsFalse) {
  std::string path = "/no/such/picture.tga";
  uint8* buf = nullptr;
  int width = 3, height = 4;
  EXPECT_FALSE(imgtest::Store().ExtractTgaToRGBA8(path, buf, width, height));
  EXPECT_EQ(nullptr, buf);
  EXPECT_EQ(3, width);
}

class GenerateJpgScale : public testing::TestWithParam<float> {};

TEST_P(GenerateJpgScale, ReadsBackWithLibjpegAtTheScaledSize) {
  const float scale = GetParam();
  const int width = 37, height = 23;
  const Bytes rgb = imgtest::Reorder(zvtest::ReadBytes(imgtest::Fixture("source.rgba")), width, height, {0, 1, 2});
  zvtest::TempDir dir;
  std::string path = dir.file("out.jpg");
  testing::internal::CaptureStdout();
  ASSERT_TRUE(imgtest::Store().GenerateJpgFromRGB8(path, rgb.data(), width, height, scale));
  const int outWidth = scale == 0.5f ? 19 : scale == 2.0f ? 74 : 37;
  const int outHeight = scale == 0.5f ? 12 : scale == 2.0f ? 46 : 23;
  EXPECT_EQ("[MediaCenter] Generate POOL_NEW jpg file " + path + ", with " + std::to_string(outWidth) + ", height " +
                std::to_string(outHeight) + ".\n",
            testing::internal::GetCapturedStdout());

  const imgtest::Decoded back = imgtest::DecodeWithLibjpeg(path);
  EXPECT_EQ(outWidth, back.width);
  EXPECT_EQ(outHeight, back.height);
  EXPECT_EQ(3, back.components);

  // The picture is the source at that size: half size averages 2 x 2 squares (an
  // odd last row or column stands for itself), double size repeats each pixel.
  // Encoded by plain libjpeg at quality 80, those rows give the very same file.
  auto source = [&](int x, int y, int k) {
    return int(rgb[(size_t(std::min(y, height - 1)) * width + std::min(x, width - 1)) * 3 + k]);
  };
  Bytes scaled;
  for (int y = 0; y < outHeight; ++y)
    for (int x = 0; x < outWidth; ++x)
      for (int k = 0; k < 3; ++k) {
        if (scale == 0.5f) {
          scaled.push_back(uint8_t((source(2 * x, 2 * y, k) + source(2 * x + 1, 2 * y, k) + source(2 * x, 2 * y + 1, k) +
                                    source(2 * x + 1, 2 * y + 1, k) + 2) / 4));
        } else {
          scaled.push_back(uint8_t(source(int(x / scale), int(y / scale), k)));
        }
      }
  imgtest::EncodeWithLibjpeg(dir.file("judge.jpg"), scaled, outWidth, outHeight, 80);
  EXPECT_EQ(zvtest::ReadBytes(dir.file("judge.jpg")), zvtest::ReadBytes(path));
}

INSTANTIATE_TEST_SUITE_P(Scales, GenerateJpgScale, testing::Values(0.5f, 1.0f, 2.0f));

TEST(GenerateJpgFromRGB8, WritesBaselineAtQualityEighty) {
  const Bytes rgb = imgtest::Gradient(16, 16);
  zvtest::TempDir dir;
  std::string path = dir.file("q.jpg");
  testing::internal::CaptureStdout();
  ASSERT_TRUE(imgtest::Store().GenerateJpgFromRGB8(path, rgb.data(), 16, 16, 1.0f));
  testing::internal::GetCapturedStdout();
  const Bytes file = zvtest::ReadBytes(path);
  bool baseline = false;
  for (size_t i = 0; i + 1 < file.size(); ++i)
    if (file[i] == 0xFF && file[i + 1] == 0xC0) baseline = true;
  EXPECT_TRUE(baseline) << "a baseline frame (SOF0)";

  FILE* input = fopen(path.c_str(), "rb");
  ASSERT_NE(nullptr, input);
  jpeg_decompress_struct cinfo;
  jpeg_error_mgr errors;
  cinfo.err = jpeg_std_error(&errors);
  jpeg_create_decompress(&cinfo);
  jpeg_stdio_src(&cinfo, input);
  jpeg_read_header(&cinfo, TRUE);
  EXPECT_FALSE(cinfo.progressive_mode);
  // Quality 80 scales the standard tables by 40 %: luminance 16 and 11 become 6
  // and 4, chrominance 17 becomes 7.
  ASSERT_NE(nullptr, cinfo.quant_tbl_ptrs[0]);
  EXPECT_EQ(6, cinfo.quant_tbl_ptrs[0]->quantval[0]);
  EXPECT_EQ(4, cinfo.quant_tbl_ptrs[0]->quantval[1]);
  ASSERT_NE(nullptr, cinfo.quant_tbl_ptrs[1]);
  EXPECT_EQ(7, cinfo.quant_tbl_ptrs[1]->quantval[0]);
  jpeg_destroy_decompress(&cinfo);
  fclose(input);
}

TEST(GenerateJpgFromRGB8, UnopenableFileReturnsFalse) {
  const Bytes rgb = imgtest::Gradient(4, 4);
  std::string path = "/no/such/folder/q.jpg";
  testing::internal::CaptureStderr();
  EXPECT_FALSE(imgtest::Store().GenerateJpgFromRGB8(path, rgb.data(), 4, 4, 1.0f));
  EXPECT_EQ(0u, testing::internal::GetCapturedStderr().find("Problem :: "));
}

TEST(GenerateJpgFromRGB8DeathTest, ScaleOfAQuarterFailsTheAssertion) {
  const Bytes rgb = imgtest::Gradient(4, 4);
  zvtest::TempDir dir;
  std::string path = dir.file("q.jpg");
  EXPECT_DEATH(imgtest::Store().GenerateJpgFromRGB8(path, rgb.data(), 4, 4, 0.25f),
               zvtest::Literal("Src/MediaCenter/MediaCenter.cpp:") + "[0-9]+" +
                   zvtest::Literal(": BOOL MediaCenter::GenerateJpgFromRGB8(std::string&, const uint8*, int, "
                                   "int, float): Assertion `scale == 0.5f || scale == 1.0f || scale == 2.0f' failed."));
}

TEST(GetJpgInfo, ReadsTheSizeFromTheHeader) {
  std::string path = imgtest::Fixture("jpeg_grey_37x23.jpg");
  int width = 0, height = 0;
  EXPECT_TRUE(imgtest::Store().GetJpgInfo(path, width, height));
  EXPECT_EQ(37, width);
  EXPECT_EQ(23, height);
}

TEST(GetJpgInfo, MissingFileReturnsFalseWithItsMessage) {
  std::string path = "/no/such/picture.jpg";
  int width = 5, height = 6;
  testing::internal::CaptureStdout();
  EXPECT_FALSE(imgtest::Store().GetJpgInfo(path, width, height));
  EXPECT_EQ("[MediaCenter][GetJpgInfo] Extract jpg file failed. Cann't open file /no/such/picture.jpg.\n",
            testing::internal::GetCapturedStdout());
  EXPECT_EQ(5, width);
  EXPECT_EQ(6, height);
}

}  // namespace
