#include "RiffWriter.h"

#include <gtest/gtest.h>

#include "support/TestSupport.h"

namespace {

using zvtest::Bytes;

Bytes Riff(const std::function<void(RiffWriter&)>& body) {
  zvtest::TempDir dir;
  RiffWriter riff;
  std::string error;
  EXPECT_TRUE(riff.Open(dir.file("x.riff"), &error)) << error;
  body(riff);
  EXPECT_TRUE(riff.Close(&error)) << error;
  return zvtest::ReadBytes(dir.file("x.riff"));
}

Bytes Text(const std::string& text) { return Bytes(text.begin(), text.end()); }

TEST(RiffWriter, AListsSizeCountsItsTypeAndEverythingInside) {
  const Bytes file = Riff([](RiffWriter& riff) {
    riff.BeginList("RIFF", "TEST");
    riff.Chunk("abcd", "xyzw", 4);
    riff.End();
  });
  Bytes expected = Text("RIFF");
  zvtest::PutU32(expected, 4 + 8 + 4);
  zvtest::PutText(expected, "TESTabcd");
  zvtest::PutU32(expected, 4);
  zvtest::PutText(expected, "xyzw");
  EXPECT_EQ(expected, file);
}

TEST(RiffWriter, AChunkOfOddSizeGetsAPadByteThatItsSizeLeavesOut) {
  const Bytes file = Riff([](RiffWriter& riff) {
    riff.BeginList("RIFF", "TEST");
    riff.Chunk("odd ", "abc", 3);
    riff.Chunk("next", "", 0);
    riff.End();
  });
  Bytes expected = Text("RIFF");
  zvtest::PutU32(expected, 4 + 8 + 4 + 8);
  zvtest::PutText(expected, "TESTodd ");
  zvtest::PutU32(expected, 3);
  zvtest::PutText(expected, "abc");
  zvtest::PutU8(expected, 0);
  zvtest::PutText(expected, "next");
  zvtest::PutU32(expected, 0);
  EXPECT_EQ(expected, file);
}

TEST(RiffWriter, NumbersAreLittleEndianAndAPatchOverwritesInPlace) {
  const Bytes file = Riff([](RiffWriter& riff) {
    riff.BeginChunk("nums");
    riff.U16(0x0102);
    const uint64_t at = riff.Tell();
    riff.U32(0);
    riff.U32(0xA0B0C0D0u);
    riff.PatchU32(at, 0x11223344u);
    riff.End();
  });
  Bytes expected = Text("nums");
  zvtest::PutU32(expected, 10);
  zvtest::PutU16(expected, 0x0102);
  zvtest::PutU32(expected, 0x11223344u);
  zvtest::PutU32(expected, 0xA0B0C0D0u);
  EXPECT_EQ(expected, file);
}

TEST(RiffWriter, CloseEndsWhatIsStillOpen) {
  const Bytes file = Riff([](RiffWriter& riff) {
    riff.BeginList("RIFF", "TEST");
    riff.BeginList("LIST", "innr");
    riff.Chunk("data", "12", 2);
  });
  Bytes expected = Text("RIFF");
  zvtest::PutU32(expected, 4 + 12 + 10);
  zvtest::PutText(expected, "TESTLIST");
  zvtest::PutU32(expected, 4 + 10);
  zvtest::PutText(expected, "innrdata");
  zvtest::PutU32(expected, 2);
  zvtest::PutText(expected, "12");
  EXPECT_EQ(expected, file);
}

TEST(RiffWriter, AFileThatCannotBeMadeIsRefusedWithItsPath) {
  RiffWriter riff;
  std::string error;
  EXPECT_FALSE(riff.Open("/nonexistent-folder/x.avi", &error));
  EXPECT_EQ("cannot write /nonexistent-folder/x.avi: No such file or directory", error);
}

}  // namespace
