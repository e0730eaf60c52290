// The software decoder of block-compressed textures, held against a texel-by-texel
// reading of the block layout written here, and against ImageMagick's decoding of
// the same files where the two definitions agree.
#include <gtest/gtest.h>
#include <stdlib.h>

#include <array>

#include "ImageTestSupport.h"
#include "RenderSystem/DDSDecoder.h"

namespace {

using imgtest::Bytes;
using Texel = std::array<int, 4>;

uint32_t Le(const unsigned char* p, int bytes) {
  uint32_t v = 0;
  for (int i = bytes - 1; i >= 0; --i) v = (v << 8) | p[i];
  return v;
}

// One texel as the block layout defines it: 5:6:5 endpoints widened by shifting
// (low bits zero), two-bit colour codes, and per format the alpha.
Texel Reference(const unsigned char* blocks, int format, int width, int x, int y, int* alphaCode = nullptr) {
  const int size = (format == 4 || format == 6) ? 16 : 8;
  const unsigned char* block = blocks + size_t((y / 4) * ((width + 3) / 4) + x / 4) * size;
  const int texel = (y % 4) * 4 + x % 4;
  const unsigned char* colour = block + size - 8;
  const uint32_t c0 = Le(colour, 2), c1 = Le(colour + 2, 2);
  const int code = int(Le(colour + 4, 4) >> (2 * texel)) & 3;
  auto widen = [](uint32_t c) { return Texel{int((c >> 11) & 31) << 3, int((c >> 5) & 63) << 2, int(c & 31) << 3, 0}; };
  const Texel e0 = widen(c0), e1 = widen(c1);
  Texel out{0, 0, 0, 255};
  for (int k = 0; k < 3; ++k) {
    switch (code) {
      case 0: out[k] = e0[k]; break;
      case 1: out[k] = e1[k]; break;
      case 2: out[k] = c0 > c1 ? (e0[k] * 2 + e1[k]) / 3 : (e0[k] + e1[k]) / 2; break;
      default: out[k] = c0 > c1 ? (e0[k] + e1[k] * 2) / 3 : 0; break;
    }
  }
  if (format == 2 && c0 <= c1 && code == 3) out[3] = 0;
  if (format == 4) {
    uint64_t bits = 0;
    for (int i = 7; i >= 0; --i) bits = bits * 256 + block[i];
    out[3] = int((bits >> (4 * texel)) & 15) * 16;
  }
  if (format == 6) {
    const int a0 = block[0], a1 = block[1];
    uint64_t bits = 0;
    for (int i = 7; i >= 2; --i) bits = bits * 256 + block[i];
    const int i = int((bits >> (3 * texel)) & 7);
    if (alphaCode) *alphaCode = i;
    if (i == 0) out[3] = a0;
    else if (i == 1) out[3] = a1;
    else if (a0 > a1) out[3] = ((((8 - i) * a0 + (i - 1) * a1)) % 256) / 7;
    else if (i <= 5) out[3] = ((((6 - i) * a0 + (i - 1) * a1)) % 256) / 5;
    else out[3] = i == 6 ? 0 : 255;
  }
  return out;
}

Bytes Decode(int format, unsigned char* src, int width, int height) {
  Bytes out(size_t(width) * height * 4, 0xEE);
  char* dst = reinterpret_cast<char*>(out.data());
  EXPECT_EQ(1, DECODEDDSFormat(format, src, width, height, &dst));
  return out;
}

struct DdsFile {
  Bytes bytes;
  int width, height;
  unsigned char* blocks() { return bytes.data() + 128; }
};

DdsFile ReadDds(const std::string& name, const char* fourcc) {
  DdsFile f{zvtest::ReadBytes(imgtest::Fixture(name)), 0, 0};
  EXPECT_EQ(std::string(fourcc), std::string(reinterpret_cast<const char*>(&f.bytes[84]), 4));
  f.height = int(Le(&f.bytes[12], 4));
  f.width = int(Le(&f.bytes[16], 4));
  return f;
}

// Our texels against the reference, and the colours against ImageMagick's within
// what its widening of 5- and 6-bit values (low bits copied from the high ones)
// and its rounding of the mixed colours can make of them.
void CheckFixture(const std::string& name, const char* fourcc, int format) {
  DdsFile dds = ReadDds(name, fourcc);
  ASSERT_EQ(37, dds.width);
  ASSERT_EQ(23, dds.height);
  const Bytes ours = Decode(format, dds.blocks(), dds.width, dds.height);
  const Bytes im = imgtest::Dump(name);
  int compared = 0;
  for (int y = 0; y < dds.height; ++y) {
    for (int x = 0; x < dds.width; ++x) {
      int code = -1;
      const Texel ref = Reference(dds.blocks(), format, dds.width, x, y, &code);
      const unsigned char* got = &ours[(size_t(y) * dds.width + x) * 4];
      const unsigned char* theirs = &im[(size_t(y) * dds.width + x) * 4];
      for (int k = 0; k < 4; ++k) ASSERT_EQ(ref[k], got[k]) << name << " at " << x << "," << y << " channel " << k;
      for (int k = 0; k < 3; ++k) EXPECT_LE(abs(int(got[k]) - int(theirs[k])), 8) << name << " " << x << "," << y;
      if (format == 2) {
        EXPECT_EQ(theirs[3], got[3]);
      }
      // ImageMagick widens the 4-bit alpha by 17; ours is the nibble times 16.
      if (format == 4) {
        EXPECT_EQ(theirs[3] / 17 * 16, got[3]);
      }
      // Where an endpoint is taken as it is, the DXT5 alphas are the same numbers.
      if (format == 6 && code <= 1) {
        EXPECT_EQ(theirs[3], got[3]) << x << "," << y;
      }
      ++compared;
    }
  }
  EXPECT_EQ(37 * 23, compared);
}

TEST(DDSDecoder, Dxt1FixtureDecodesAsTheBlocksDefine) { CheckFixture("dxt1_37x23.dds", "DXT1", 2); }
TEST(DDSDecoder, Dxt3FixtureDecodesAsTheBlocksDefine) { CheckFixture("dxt3_37x23.dds", "DXT3", 4); }
TEST(DDSDecoder, Dxt5FixtureDecodesAsTheBlocksDefine) { CheckFixture("dxt5_37x23.dds", "DXT5", 6); }

TEST(DDSDecoder, Dxt1ThreeColourBlockMakesCodeThreeBlackAndClear) {
  // c0 = 0x001F (blue) <= c1 = 0xF800 (red); codes 0, 1, 2, 3 in the first row.
  unsigned char block[8] = {0x1F, 0x00, 0x00, 0xF8, 0xE4, 0, 0, 0};
  const Bytes out = Decode(2, block, 4, 1);
  EXPECT_EQ(Bytes({0, 0, 248, 255, 248, 0, 0, 255, 124, 0, 124, 255, 0, 0, 0, 0}), out);
}

TEST(DDSDecoder, Dxt1FourColourBlockMixesThirds) {
  unsigned char block[8] = {0x00, 0xF8, 0x1F, 0x00, 0xE4, 0, 0, 0};  // c0 red > c1 blue
  const Bytes out = Decode(2, block, 4, 1);
  EXPECT_EQ(Bytes({248, 0, 0, 255, 0, 0, 248, 255, 165, 0, 82, 255, 82, 0, 165, 255}), out);
}

TEST(DDSDecoder, OtherFormatNumbersDecodeColourWithOpaqueAlpha) {
  unsigned char block[8] = {0x1F, 0x00, 0x00, 0xF8, 0xE4, 0, 0, 0};
  const Bytes out = Decode(3, block, 4, 1);
  EXPECT_EQ(Bytes({0, 0, 248, 255, 248, 0, 0, 255, 124, 0, 124, 255, 0, 0, 0, 255}), out);
}

TEST(DDSDecoder, Dxt5AlphaSumIsCutToEightBitsBeforeTheDivision) {
  // a0 = 200 > a1 = 100; texels 0..7 of the first two rows take codes 0..7.
  unsigned char block[16] = {200, 100, 0, 0, 0, 0, 0, 0, 0xFF, 0xFF, 0xFF, 0xFF, 0, 0, 0, 0};
  uint64_t codes = 0;
  for (int t = 0; t < 8; ++t) codes |= uint64_t(t) << (3 * t);
  for (int i = 0; i < 6; ++i) block[2 + i] = uint8_t(codes >> (8 * i));
  const Bytes out = Decode(6, block, 4, 2);
  // 2: (6*200 + 100) = 1300, cut to 20, / 7 = 2; the uncut ramp would give 185.
  const int expected[8] = {200, 100, 2, 25, 10, 33, 18, 4};
  for (int t = 0; t < 8; ++t) EXPECT_EQ(expected[t], out[t * 4 + 3]) << "code " << t;
}

TEST(DDSDecoder, Dxt5SixValueModeEndsInZeroAndFull) {
  unsigned char block[16] = {10, 20, 0, 0, 0, 0, 0, 0, 0xFF, 0xFF, 0xFF, 0xFF, 0, 0, 0, 0};
  uint64_t codes = 0;
  for (int t = 0; t < 8; ++t) codes |= uint64_t(t) << (3 * t);
  for (int i = 0; i < 6; ++i) block[2 + i] = uint8_t(codes >> (8 * i));
  const Bytes out = Decode(6, block, 4, 2);
  const int expected[8] = {10, 20, 12, 14, 16, 18, 0, 255};
  for (int t = 0; t < 8; ++t) EXPECT_EQ(expected[t], out[t * 4 + 3]) << "code " << t;
}

TEST(DDSDecoder, Dxt3AlphaIsTheNibbleShiftedWithoutWidening) {
  unsigned char block[16] = {0x10, 0xF2, 0, 0, 0, 0, 0, 0, 0xFF, 0xFF, 0, 0, 0, 0, 0, 0};
  const Bytes out = Decode(4, block, 4, 1);
  EXPECT_EQ(0, out[3]);
  EXPECT_EQ(16, out[7]);
  EXPECT_EQ(32, out[11]);
  EXPECT_EQ(240, out[15]);
}

TEST(DDSDecoder, PartialBlocksWriteNothingOutsideThePicture) {
  unsigned char block[8] = {0xFF, 0xFF, 0xFF, 0xFF, 0, 0, 0, 0};
  Bytes out(size_t(5) * 4 * 4, 0xEE);  // a 3 x 1 picture inside a larger buffer
  char* dst = reinterpret_cast<char*>(out.data());
  EXPECT_EQ(1, DECODEDDSFormat(2, block, 3, 1, &dst));
  EXPECT_EQ(Bytes({248, 252, 248, 255}), Bytes(out.begin(), out.begin() + 4));
  EXPECT_EQ(Bytes(out.size() - 12, 0xEE), Bytes(out.begin() + 12, out.end()));
}

TEST(DDSDecoder, RgbRowsGetAnOpaqueAlpha) {
  unsigned char rgb[6] = {1, 2, 3, 4, 5, 6};
  const Bytes out = Decode(0, rgb, 2, 1);
  EXPECT_EQ(Bytes({1, 2, 3, 255, 4, 5, 6, 255}), out);
  EXPECT_EQ(1, rgb[0]);  // still ours
}

TEST(DDSDecoder, RgbaRowsAreCopiedAndTheSourceIsFreed) {
  unsigned char* rgba = new unsigned char[8]{1, 2, 3, 4, 5, 6, 7, 8};
  const Bytes out = Decode(1, rgba, 2, 1);  // frees rgba: the sanitizer build sees a leak otherwise
  EXPECT_EQ(Bytes({1, 2, 3, 4, 5, 6, 7, 8}), out);
}

}  // namespace
