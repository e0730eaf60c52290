// BMP reading: headers, depth conversions, rows as the file keeps them, and the
// writer that leaves out the information header.
#include <gtest/gtest.h>
#include <string.h>

#include "ImageTestSupport.h"
#include "RenderSystem/BMPFile.h"

namespace {

using imgtest::Bytes;

// A BMP of the given depth: the two headers, for 8 bits a palette of 256 entries
// of B, G, R, x, then `pixels` as given.
Bytes MakeBmp(int width, int height, int bits, const Bytes& pixels, const Bytes& palette = Bytes()) {
  Bytes out;
  zvtest::PutText(out, "BM");
  zvtest::PutU32(out, 0);
  zvtest::PutU32(out, 0);
  zvtest::PutU32(out, 54);  // pixel offset: not used by the reader
  zvtest::PutU32(out, 40);
  zvtest::PutI32(out, width);
  zvtest::PutI32(out, height);
  zvtest::PutU16(out, 1);
  zvtest::PutU16(out, uint16_t(bits));
  for (int i = 0; i < 6; ++i) zvtest::PutU32(out, 0);
  out.insert(out.end(), palette.begin(), palette.end());
  out.insert(out.end(), pixels.begin(), pixels.end());
  return out;
}

struct LoadedFile {
  BMPFile file;
  LoadedFile() { memset(&file, 0, sizeof file); }
  ~LoadedFile() { UnloadBMPFile(&file); }
};

struct LoadedData {
  BMPData data;
  LoadedData() { memset(&data, 0, sizeof data); }
  ~LoadedData() { UnloadBMPData(&data); }
};

TEST(BMPFile, TwentyFourBitFixtureGivesRGBRowsBottomUp) {
  LoadedData bmp;
  ASSERT_EQ(0, LoadBMPFile(imgtest::Fixture("bmp24_36x23.bmp").c_str(), &bmp.data));
  EXPECT_EQ(36, bmp.data.width);
  EXPECT_EQ(23, bmp.data.height);
  EXPECT_EQ(24, bmp.data.bitsPerPixel);
  const Bytes expected = imgtest::Reorder(imgtest::Dump("bmp24_36x23.bmp"), 36, 23, {0, 1, 2}, true);
  EXPECT_EQ(expected, imgtest::Span(bmp.data.pixels, expected.size()));
}

TEST(BMPFile, ThirtyTwoBitFixtureGivesARGBRowsBottomUp) {
  LoadedData bmp;
  ASSERT_EQ(0, LoadBMPFile(imgtest::Fixture("bmp32_37x23.bmp").c_str(), &bmp.data));
  EXPECT_EQ(37, bmp.data.width);
  EXPECT_EQ(23, bmp.data.height);
  EXPECT_EQ(32, bmp.data.bitsPerPixel);
  const Bytes expected = imgtest::Reorder(imgtest::Dump("bmp32_37x23.bmp"), 37, 23, {3, 0, 1, 2}, true);
  EXPECT_EQ(expected, imgtest::Span(bmp.data.pixels, expected.size()));
}

TEST(BMPFile, WidthThreeTwentyFourBitWithPaddedRowsDecodesSkewed) {
  // Rows of 9 bytes are padded to 12 in the file; the reader takes the pixel bytes
  // as one run, so every row after the first starts one pixel later.
  const int width = 3, height = 5;
  LoadedData bmp;
  ASSERT_EQ(0, LoadBMPFile(imgtest::Fixture("bmp24_3x5_padded.bmp").c_str(), &bmp.data));
  ASSERT_EQ(3, bmp.data.width);
  ASSERT_EQ(5, bmp.data.height);
  const Bytes im = imgtest::Dump("bmp24_3x5_padded.bmp");
  Bytes expected;
  for (int i = 0; i < width * height; ++i) {
    const int at = i * 3;  // byte within the file's pixel area
    const int fileRow = at / 12;
    const int column = (at % 12) / 3;
    if (column == 3) {  // the padding, zeros
      expected.insert(expected.end(), {0, 0, 0});
      continue;
    }
    const int y = height - 1 - fileRow;
    for (int k = 0; k < 3; ++k) expected.push_back(im[(size_t(y) * width + column) * 4 + k]);
  }
  EXPECT_EQ(expected, imgtest::Span(bmp.data.pixels, expected.size()));
  // And it is not the picture: the second row differs from ImageMagick's.
  EXPECT_NE(imgtest::Reorder(im, width, height, {0, 1, 2}, true), imgtest::Span(bmp.data.pixels, expected.size()));
}

TEST(BMPFile, LoadFromMemoryRejectsAnotherType) {
  Bytes bytes = MakeBmp(1, 1, 24, {1, 2, 3});
  bytes[0] = 'X';
  LoadedFile bmp;
  EXPECT_EQ(-4, LoadBMPFromMemory(bytes.data(), &bmp.file));
  EXPECT_EQ(-4, LoadBMPFromMemory(bytes.data(), unsigned(bytes.size()), &bmp.file));
  EXPECT_EQ(nullptr, bmp.file.pixels);
}

TEST(BMPFile, LoadFromMemoryKeepsHeadersAsStored) {
  const Bytes bytes = MakeBmp(2, -1, 24, {1, 2, 3, 4, 5, 6});
  LoadedFile bmp;
  ASSERT_EQ(0, LoadBMPFromMemory(const_cast<unsigned char*>(bytes.data()), &bmp.file));
  EXPECT_EQ(0x4D42, int(bmp.file.fileHeader.bfType));
  EXPECT_EQ(2, int(bmp.file.infoHeader.biWidth));
  EXPECT_EQ(-1, int(bmp.file.infoHeader.biHeight));
  EXPECT_EQ(24, int(bmp.file.infoHeader.biBitCount));
  EXPECT_EQ(Bytes({1, 2, 3, 4, 5, 6}), imgtest::Span(bmp.file.pixels, 6));
}

TEST(BMPFile, EightBitPaletteIsSwappedAndMarkedAndPixelsFollowIt) {
  Bytes palette(1024, 0);
  for (int i = 0; i < 256; ++i) {
    palette[i * 4 + 0] = uint8_t(i);        // B
    palette[i * 4 + 1] = uint8_t(i + 1);    // G
    palette[i * 4 + 2] = uint8_t(255 - i);  // R
    palette[i * 4 + 3] = 0x77;
  }
  const Bytes bytes = MakeBmp(2, 2, 8, {0, 5, 200, 255}, palette);
  LoadedFile bmp;
  ASSERT_EQ(0, LoadBMPFromMemory(bytes.data(), unsigned(bytes.size()), &bmp.file));
  EXPECT_EQ(255, bmp.file.palette[0][0]);
  EXPECT_EQ(1, bmp.file.palette[0][1]);
  EXPECT_EQ(0, bmp.file.palette[0][2]);
  EXPECT_EQ(4, bmp.file.palette[0][3]);
  EXPECT_EQ(4, bmp.file.palette[200][3]);
  EXPECT_EQ(Bytes({0, 5, 200, 255}), imgtest::Span(bmp.file.pixels, 4));

  LoadedData data;
  ASSERT_EQ(1, LoadBMPDataBit8_To_24(&bmp.file, &data.data));
  EXPECT_EQ(24, data.data.bitsPerPixel);
  EXPECT_EQ(Bytes({255, 1, 0, 250, 6, 5, 55, 201, 200, 0, 0, 255}), imgtest::Span(data.data.pixels, 12));
}

TEST(BMPFile, SixteenBitConversionKeepsOnlyTheTopSevenBitsInTheThirdByte) {
  const Bytes bytes = MakeBmp(2, 1, 16, {0xFF, 0xFF, 0x00, 0x02});
  LoadedFile bmp;
  ASSERT_EQ(0, LoadBMPFromMemory(bytes.data(), unsigned(bytes.size()), &bmp.file));
  LoadedData data;
  ASSERT_EQ(1, LoadBMPDataBit16_To_24(&bmp.file, &data.data));
  EXPECT_EQ(Bytes({0, 0, 0x7F, 0, 0, 0x01}), imgtest::Span(data.data.pixels, 6));
}

TEST(BMPFile, ConversionsRefuseTheWrongDepth) {
  const Bytes bytes = MakeBmp(1, 1, 24, {1, 2, 3});
  LoadedFile bmp;
  ASSERT_EQ(0, LoadBMPFromMemory(bytes.data(), unsigned(bytes.size()), &bmp.file));
  LoadedData data;
  EXPECT_EQ(0, LoadBMPDataBit32(&bmp.file, &data.data));
  EXPECT_EQ(0, LoadBMPDataBit16_To_24(&bmp.file, &data.data));
  EXPECT_EQ(0, LoadBMPDataBit8_To_24(&bmp.file, &data.data));
  EXPECT_EQ(nullptr, data.data.pixels);
  EXPECT_EQ(1, LoadBMPDataBit24(&bmp.file, &data.data));
  EXPECT_EQ(Bytes({3, 2, 1}), imgtest::Span(data.data.pixels, 3));
}

TEST(BMPFile, ShortFileReadsAsIfItEndedThere) {
  Bytes bytes = MakeBmp(2, 2, 24, {1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12});
  bytes.resize(bytes.size() - 5);
  LoadedFile bmp;
  ASSERT_EQ(0, LoadBMPFromMemory(bytes.data(), unsigned(bytes.size()), &bmp.file));
  EXPECT_EQ(Bytes({1, 2, 3, 4, 5, 6, 7, 0, 0, 0, 0, 0}), imgtest::Span(bmp.file.pixels, 12));
}

TEST(BMPFile, FileCodes) {
  zvtest::TempDir dir;
  LoadedFile bmp;
  EXPECT_EQ(-3, LoadBMPFile(dir.file("missing.bmp").c_str(), &bmp.file));
  zvtest::WriteBytes(dir.file("empty.bmp"), Bytes());
  EXPECT_EQ(-2, LoadBMPFile(dir.file("empty.bmp").c_str(), &bmp.file));
  zvtest::WriteBytes(dir.file("other.bmp"), Bytes(60, 'x'));
  EXPECT_EQ(-4, LoadBMPFile(dir.file("other.bmp").c_str(), &bmp.file));

  LoadedData data;
  EXPECT_EQ(-2, LoadBMPFile(dir.file("missing.bmp").c_str(), &data.data));
  zvtest::WriteBytes(dir.file("eight.bmp"), MakeBmp(1, 1, 8, {0}, Bytes(1024, 0)));
  EXPECT_EQ(-5, LoadBMPFile(dir.file("eight.bmp").c_str(), &data.data));
  EXPECT_EQ(nullptr, data.data.pixels);
}

TEST(BMPFile, UnloadToleratesNull) {
  UnloadBMPFile(nullptr);
  LoadedFile bmp;
  const Bytes bytes = MakeBmp(1, 1, 24, {1, 2, 3});
  ASSERT_EQ(0, LoadBMPFromMemory(bytes.data(), unsigned(bytes.size()), &bmp.file));
  UnloadBMPFile(&bmp.file);
  EXPECT_EQ(nullptr, bmp.file.pixels);
}

TEST(BMPData, FlipTurnsTheRowsOver) {
  LoadedData bmp;
  bmp.data.width = 2;
  bmp.data.height = 3;
  bmp.data.bitsPerPixel = 8;
  bmp.data.pixels = new unsigned char[6]{1, 2, 3, 4, 5, 6};
  EXPECT_EQ(1, FlipBMPData(&bmp.data));
  EXPECT_EQ(Bytes({5, 6, 3, 4, 1, 2}), imgtest::Span(bmp.data.pixels, 6));
  UnloadBMPData(&bmp.data);
  EXPECT_EQ(nullptr, bmp.data.pixels);
}

TEST(BMPFile, WriterRepeatsTheFileHeaderWhereTheInformationHeaderBelongs) {
  zvtest::TempDir dir;
  unsigned char pixels[12] = {1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12};
  BMPData bmp = {2, 2, 24, 0, 0, pixels};
  ASSERT_EQ(1, SaveBMPData(dir.file("out.bmp").c_str(), &bmp));
  Bytes header;
  zvtest::PutText(header, "BM");
  zvtest::PutU32(header, 12 + 54);
  zvtest::PutU32(header, 0);
  zvtest::PutU32(header, 54);
  Bytes expected = header;
  expected.insert(expected.end(), header.begin(), header.end());
  expected.insert(expected.end(), 26, 0);
  expected.insert(expected.end(), pixels, pixels + 12);
  EXPECT_EQ(expected, zvtest::ReadBytes(dir.file("out.bmp")));
  EXPECT_EQ(0, SaveBMPData(dir.file("no/such/folder.bmp").c_str(), &bmp));
}

}  // namespace
