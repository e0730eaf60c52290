// ScaleBuffer, RotateBuf and KernelBSpline.
#include <gtest/gtest.h>

#include "ImageTestSupport.h"

namespace {

using imgtest::Bytes;

Bytes Take(uint8* buf, size_t size) {
  Bytes out(buf, buf + size);
  delete[] buf;
  return out;
}

TEST(ScaleBuffer, SameSizeReturnsAnExactCopyAlphaIncluded) {
  Bytes rgba = imgtest::Pattern(5 * 3 * 4);
  uint8* out = imgtest::Store().ScaleBuffer(5, 3, 2, 5, 3, rgba.data());
  ASSERT_NE(rgba.data(), out);
  EXPECT_EQ(rgba, Take(out, rgba.size()));
}

TEST(ScaleBuffer, ScaledAlphaIsOpaqueOnlyWhereAllFourSourcesAre) {
  // 4 x 4 to 2 x 2: each output pixel reads a 2 x 2 square of sources.
  Bytes rgba(4 * 4 * 4, 0);
  for (size_t i = 0; i < 16; ++i) {
    rgba[i * 4 + 0] = uint8_t(i * 10);
    rgba[i * 4 + 3] = 255;
  }
  rgba[(1 * 4 + 3) * 4 + 3] = 0;  // one source of the top right square is clear
  rgba[(2 * 4 + 0) * 4 + 3] = 0xF0;  // the bottom left square: 255 & 0xF0
  const Bytes out = Take(imgtest::Store().ScaleBuffer(2, 2, 2, 4, 4, rgba.data()), 2 * 2 * 4);
  EXPECT_EQ(255, out[0 * 4 + 3]);
  EXPECT_EQ(0, out[1 * 4 + 3]);
  EXPECT_EQ(0xF0, out[2 * 4 + 3]);
  EXPECT_EQ(255, out[3 * 4 + 3]);
  // With whole-numbered steps the colour is the top left source of each square.
  EXPECT_EQ(0, out[0]);
  EXPECT_EQ(20, out[4]);
  EXPECT_EQ(80, out[8]);
  EXPECT_EQ(100, out[12]);
}

TEST(ScaleBuffer, EnlargingMixesBilinearlyAndReadsOneRowPastTheSource) {
  // 2 x 2 grey as RGB, and a third row that only the clamp of y1 reaches.
  const int grid[3][2] = {{0, 100}, {200, 40}, {10, 20}};
  Bytes rgb;
  for (auto& row : grid)
    for (int v : row) rgb.insert(rgb.end(), {uint8_t(v), uint8_t(v), uint8_t(v)});
  const Bytes out = Take(imgtest::Store().ScaleBuffer(4, 4, 1, 2, 2, rgb.data()), 4 * 4 * 3);
  const int expected[4][4] = {{0, 50, 100, 100}, {100, 85, 70, 70}, {200, 120, 40, 40}, {105, 67, 30, 30}};
  for (int y = 0; y < 4; ++y)
    for (int x = 0; x < 4; ++x)
      for (int k = 0; k < 3; ++k) EXPECT_EQ(expected[y][x], out[(y * 4 + x) * 3 + k]) << x << "," << y;
}

TEST(ScaleBuffer, AnyFormatButTwoIsRGB) {
  Bytes rgb = imgtest::Pattern(6 * 6 * 3);
  const Bytes a = Take(imgtest::Store().ScaleBuffer(3, 3, 1, 6, 6, rgb.data()), 27);
  const Bytes b = Take(imgtest::Store().ScaleBuffer(3, 3, 0, 6, 6, rgb.data()), 27);
  EXPECT_EQ(a, b);
  for (int y = 0; y < 3; ++y)
    for (int x = 0; x < 3; ++x)
      for (int k = 0; k < 3; ++k) EXPECT_EQ(rgb[((y * 2) * 6 + x * 2) * 3 + k], a[(y * 3 + x) * 3 + k]);
}

TEST(ScaleBufferDeathTest, ZeroSizeFailsTheAssertion) {
  Bytes rgb(12, 0);
  EXPECT_DEATH(imgtest::Store().ScaleBuffer(0, 2, 1, 2, 2, rgb.data()),
               zvtest::Literal("Src/MediaCenter/MediaCenter.cpp:") + "[0-9]+" +
                   zvtest::Literal(": uint8* MediaCenter::ScaleBuffer(int, int, int, int, int, uint8*): "
                                   "Assertion `newWidth != 0 && newHeight != 0 && oldWidth != 0 && oldHeight != 0' "
                                   "failed."));
}

Bytes Rotate(const Bytes& src, int width, int height, int angle, int bpp, int* outWidth, int* outHeight) {
  Bytes dst(src.size(), 0);
  Bytes copy = src;
  imgtest::Store().RotateBuf(dst.data(), copy.data(), *outWidth, *outHeight, width, height, angle, bpp);
  return dst;
}

TEST(RotateBuf, QuarterTurnPutsEachPixelWhereTheTableSays) {
  const int width = 3, height = 2;
  const Bytes src = imgtest::Pattern(width * height * 3);
  for (int angle : {90, -270, -90, 270, 180, -180}) {
    int w = 0, h = 0;
    const Bytes out = Rotate(src, width, height, angle, 3, &w, &h);
    for (int y = 0; y < height; ++y) {
      for (int x = 0; x < width; ++x) {
        int nx, ny;
        if (angle == 90 || angle == -270) {
          nx = height - 1 - y, ny = x;
          EXPECT_EQ(height, w);
          EXPECT_EQ(width, h);
        } else if (angle == -90 || angle == 270) {
          nx = y, ny = width - 1 - x;
          EXPECT_EQ(height, w);
        } else {
          nx = width - 1 - x, ny = height - 1 - y;
          EXPECT_EQ(width, w);
          EXPECT_EQ(height, h);
        }
        for (int k = 0; k < 3; ++k)
          EXPECT_EQ(src[(y * width + x) * 3 + k], out[(ny * w + nx) * 3 + k]) << "angle " << angle;
      }
    }
  }
}

TEST(RotateBuf, OneEightyAndMinusOneEightyGiveTheSamePicture) {
  const Bytes src = imgtest::Pattern(5 * 4 * 4);
  int w1, h1, w2, h2;
  EXPECT_EQ(Rotate(src, 5, 4, 180, 4, &w1, &h1), Rotate(src, 5, 4, -180, 4, &w2, &h2));
  EXPECT_EQ(w1, w2);
  EXPECT_EQ(h1, h2);
}

TEST(RotateBuf, NinetyThenMinusNinetyGivesTheSourceBack) {
  const Bytes src = imgtest::Pattern(5 * 4 * 4);
  int w = 0, h = 0, w2 = 0, h2 = 0;
  const Bytes turned = Rotate(src, 5, 4, 90, 4, &w, &h);
  EXPECT_EQ(4, w);
  EXPECT_EQ(5, h);
  EXPECT_NE(src, turned);
  EXPECT_EQ(src, Rotate(turned, w, h, -90, 4, &w2, &h2));
  EXPECT_EQ(5, w2);
  EXPECT_EQ(4, h2);
}

TEST(RotateBuf, OtherPixelSizesCopyThreeBytesAtTheirOwnStep) {
  const Bytes src = imgtest::Pattern(2 * 1 * 5);
  int w = 0, h = 0;
  const Bytes out = Rotate(src, 2, 1, 180, 5, &w, &h);
  EXPECT_EQ(Bytes({src[5], src[6], src[7], 0, 0, src[0], src[1], src[2], 0, 0}), out);
}

TEST(RotateBufDeathTest, OtherAngleFailsTheAssertion) {
  Bytes src(12, 0), dst(12, 0);
  int w = 0, h = 0;
  EXPECT_DEATH(imgtest::Store().RotateBuf(dst.data(), src.data(), w, h, 2, 2, 45, 3),
               zvtest::Literal("Src/MediaCenter/MediaCenter.cpp:") + "[0-9]+" +
                   zvtest::Literal(": void MediaCenter::RotateBuf(uint8*, uint8*, int&, int&, int, int, int, "
                                   "int): Assertion `0' failed."));
}

TEST(RotateBufDeathTest, NullArrayFailsTheAssertion) {
  Bytes src(12, 0);
  int w = 0, h = 0;
  EXPECT_DEATH(imgtest::Store().RotateBuf(nullptr, src.data(), w, h, 2, 2, 90, 3),
               zvtest::Literal("Assertion `dst && src' failed."));
}

TEST(KernelBSpline, CubicBSplineWeights) {
  EXPECT_FLOAT_EQ(4.0f * 0.16666667f, imgtest::Store().KernelBSpline(0.0f));
  EXPECT_FLOAT_EQ(0.16666667f, imgtest::Store().KernelBSpline(1.0f));
  EXPECT_FLOAT_EQ(0.16666667f, imgtest::Store().KernelBSpline(-1.0f));
  EXPECT_FLOAT_EQ(0.125f * 0.16666667f, imgtest::Store().KernelBSpline(1.5f));
  EXPECT_FLOAT_EQ(0.125f * 0.16666667f, imgtest::Store().KernelBSpline(-1.5f));
  EXPECT_FLOAT_EQ(0.0f, imgtest::Store().KernelBSpline(2.0f));
  EXPECT_EQ(0.0f, imgtest::Store().KernelBSpline(2.0001f));
  EXPECT_EQ(0.0f, imgtest::Store().KernelBSpline(-2.5f));
}

}  // namespace
