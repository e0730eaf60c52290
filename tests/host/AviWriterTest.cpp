#include "AviWriter.h"

#include <gtest/gtest.h>

#include <cstring>

#include "support/TestSupport.h"

namespace {

using zvtest::Bytes;

uint32_t U32(const Bytes& b, size_t at) {
  return uint32_t(b[at]) | uint32_t(b[at + 1]) << 8 | uint32_t(b[at + 2]) << 16 | uint32_t(b[at + 3]) << 24;
}
uint16_t U16(const Bytes& b, size_t at) { return uint16_t(b[at] | b[at + 1] << 8); }
std::string Code(const Bytes& b, size_t at) { return std::string(b.begin() + long(at), b.begin() + long(at) + 4); }

class AviWriterTest : public testing::Test {
 protected:
  // Two frames of 480 x 272 at 30 frames per second, 22050 Hz: a picture of 3
  // bytes (odd, so padded) with 2 samples, then one of 4 bytes with none.
  Bytes TwoFrames() {
    AviWriter avi;
    AviWriter::Format format;
    format.width = 480;
    format.height = 272;
    format.fps = 30;
    format.sampleRate = 22050;
    std::string error;
    EXPECT_TRUE(avi.Open(dir.file("two.avi"), format, &error)) << error;
    const int16_t samples[2] = {1, -2};
    EXPECT_TRUE(avi.AddFrame({0xFF, 0xD8, 0xFF}, samples, 2));
    EXPECT_TRUE(avi.AddFrame({1, 2, 3, 4}, nullptr, 0));
    EXPECT_EQ(2u, avi.Frames());
    EXPECT_EQ(2u, avi.Samples());
    EXPECT_TRUE(avi.Close(&error)) << error;
    return zvtest::ReadBytes(dir.file("two.avi"));
  }
  zvtest::TempDir dir;
};

TEST_F(AviWriterTest, TheHeaderListHoldsTheMainHeaderAndTwoStreams) {
  const Bytes b = TwoFrames();
  EXPECT_EQ("RIFF", Code(b, 0));
  EXPECT_EQ(b.size() - 8, U32(b, 4));
  EXPECT_EQ("AVI ", Code(b, 8));
  EXPECT_EQ("LIST", Code(b, 12));
  EXPECT_EQ(294u, U32(b, 16));  // hdrl: its type, avih, two stream lists
  EXPECT_EQ("hdrl", Code(b, 20));
  EXPECT_EQ("avih", Code(b, 24));
  EXPECT_EQ(56u, U32(b, 28));
  EXPECT_EQ(33333u, U32(b, 32));           // microseconds per frame
  EXPECT_EQ(4u * 30 + 44100u, U32(b, 36));  // the largest picture at the frame rate, and the sound
  EXPECT_EQ(0u, U32(b, 40));
  EXPECT_EQ(0x110u, U32(b, 44));  // an index, interleaved
  EXPECT_EQ(2u, U32(b, 48));      // frames
  EXPECT_EQ(0u, U32(b, 52));
  EXPECT_EQ(2u, U32(b, 56));  // streams
  EXPECT_EQ(4u, U32(b, 60));  // the largest chunk
  EXPECT_EQ(480u, U32(b, 64));
  EXPECT_EQ(272u, U32(b, 68));
  for (size_t at = 72; at < 88; at += 4) EXPECT_EQ(0u, U32(b, at));
}

TEST_F(AviWriterTest, ThePictureStreamIsMotionJpegAtTheFrameRate) {
  const Bytes b = TwoFrames();
  EXPECT_EQ("LIST", Code(b, 88));
  EXPECT_EQ(116u, U32(b, 92));
  EXPECT_EQ("strl", Code(b, 96));
  EXPECT_EQ("strh", Code(b, 100));
  EXPECT_EQ(56u, U32(b, 104));
  EXPECT_EQ("vids", Code(b, 108));
  EXPECT_EQ("MJPG", Code(b, 112));
  EXPECT_EQ(1u, U32(b, 128));   // scale
  EXPECT_EQ(30u, U32(b, 132));  // rate
  EXPECT_EQ(0u, U32(b, 136));   // start
  EXPECT_EQ(2u, U32(b, 140));   // length in frames
  EXPECT_EQ(4u, U32(b, 144));   // the largest picture
  EXPECT_EQ(0xFFFFFFFFu, U32(b, 148));
  EXPECT_EQ(0u, U32(b, 152));  // pictures vary in size
  EXPECT_EQ(480u, U16(b, 160));
  EXPECT_EQ(272u, U16(b, 162));
  EXPECT_EQ("strf", Code(b, 164));
  EXPECT_EQ(40u, U32(b, 168));
  EXPECT_EQ(40u, U32(b, 172));
  EXPECT_EQ(480u, U32(b, 176));
  EXPECT_EQ(272u, U32(b, 180));
  EXPECT_EQ(1u, U16(b, 184));
  EXPECT_EQ(24u, U16(b, 186));
  EXPECT_EQ("MJPG", Code(b, 188));
  EXPECT_EQ(480u * 272 * 3, U32(b, 192));
}

TEST_F(AviWriterTest, TheSoundStreamIsSixteenBitMonoPcmCountedInSamples) {
  const Bytes b = TwoFrames();
  EXPECT_EQ("LIST", Code(b, 212));
  EXPECT_EQ(94u, U32(b, 216));
  EXPECT_EQ("strl", Code(b, 220));
  EXPECT_EQ("strh", Code(b, 224));
  EXPECT_EQ("auds", Code(b, 232));
  EXPECT_EQ(2u, U32(b, 252));      // scale: one sample of two bytes
  EXPECT_EQ(44100u, U32(b, 256));  // rate: bytes a second
  EXPECT_EQ(2u, U32(b, 264));      // length in samples
  EXPECT_EQ(4u, U32(b, 268));      // the largest sound chunk
  EXPECT_EQ(2u, U32(b, 276));      // sample size
  EXPECT_EQ("strf", Code(b, 288));
  EXPECT_EQ(18u, U32(b, 292));
  EXPECT_EQ(1u, U16(b, 296));  // PCM
  EXPECT_EQ(1u, U16(b, 298));  // mono
  EXPECT_EQ(22050u, U32(b, 300));
  EXPECT_EQ(44100u, U32(b, 304));
  EXPECT_EQ(2u, U16(b, 308));
  EXPECT_EQ(16u, U16(b, 310));
  EXPECT_EQ(0u, U16(b, 312));
}

TEST_F(AviWriterTest, EachFramesPictureComesBeforeItsSoundAndTheIndexFindsBoth) {
  const Bytes b = TwoFrames();
  EXPECT_EQ("LIST", Code(b, 314));
  EXPECT_EQ("movi", Code(b, 322));
  EXPECT_EQ("00dc", Code(b, 326));
  EXPECT_EQ(3u, U32(b, 330));
  EXPECT_EQ((Bytes{0xFF, 0xD8, 0xFF, 0}), Bytes(b.begin() + 334, b.begin() + 338));  // padded
  EXPECT_EQ("01wb", Code(b, 338));
  EXPECT_EQ(4u, U32(b, 342));
  EXPECT_EQ((Bytes{1, 0, 0xFE, 0xFF}), Bytes(b.begin() + 346, b.begin() + 350));  // little-endian samples
  EXPECT_EQ("00dc", Code(b, 350));
  EXPECT_EQ(4u, U32(b, 354));
  EXPECT_EQ(362u - 322u, U32(b, 318));  // movi: its type and three chunks
  EXPECT_EQ("idx1", Code(b, 362));
  EXPECT_EQ(48u, U32(b, 366));
  const struct {
    const char* id;
    uint32_t offset;
    uint32_t size;
  } entries[] = {{"00dc", 4, 3}, {"01wb", 16, 4}, {"00dc", 28, 4}};
  for (int i = 0; i < 3; ++i) {
    const size_t at = 370 + 16 * size_t(i);
    EXPECT_EQ(entries[i].id, Code(b, at));
    EXPECT_EQ(0x10u, U32(b, at + 4));  // every frame a key frame
    EXPECT_EQ(entries[i].offset, U32(b, at + 8));
    EXPECT_EQ(entries[i].size, U32(b, at + 12));
  }
  EXPECT_EQ(418u, b.size());
}

TEST_F(AviWriterTest, AFrameThatWouldPassTheLimitIsRefusedAndTheFileStaysWhole) {
  EXPECT_EQ(uint64_t(1) << 30, AviWriter::kMaxFileBytes);
  // Room for the headers (322 bytes to the movi code) and one small frame.
  AviWriter avi(400);
  AviWriter::Format format;
  format.width = 8;
  format.height = 8;
  std::string error;
  ASSERT_TRUE(avi.Open(dir.file("full.avi"), format, &error)) << error;
  EXPECT_TRUE(avi.AddFrame({1, 2}, nullptr, 0));
  EXPECT_FALSE(avi.AddFrame(std::vector<uint8_t>(40, 7), nullptr, 0));
  EXPECT_EQ(1u, avi.Frames());
  EXPECT_TRUE(avi.Close(&error)) << error;
  const Bytes b = zvtest::ReadBytes(dir.file("full.avi"));
  EXPECT_LE(b.size(), 400u);
  EXPECT_EQ(b.size() - 8, U32(b, 4));
  EXPECT_EQ(1u, U32(b, 48));
  EXPECT_EQ("idx1", Code(b, b.size() - 24));
}

}  // namespace
