// The first frame of a video: the walk over the AVI file's chunks, its messages,
// and what it writes, judged against ffmpeg's own reading of real clips and
// against files laid out by hand.
#include <gtest/gtest.h>
#include <unistd.h>

#include <string>

#include "MediaFixture.h"
#include "RiffLayout.h"
#include "images/ImageTestSupport.h"

namespace {

using mediatest::CaptureOut;
using mediatest::MediaTest;
using mediatest::TestGame;
using namespace rifftest;
using zvtest::Exists;
using zvtest::ListFolder;
using zvtest::ReadBytes;
using zvtest::WriteBytes;

class AviFrameTest : public MediaTest {
 protected:
  // Runs the walk from `source` to work/frame.jpg; keeps what it printed.
  bool Extract(const std::string& source) {
    TestGame game;
    bool result = false;
    printed = CaptureOut([&] { result = game.store().ExtractAVIFrame(source, Output()); });
    return result;
  }
  bool ExtractBytes(const Bytes& file) {
    WriteBytes(work + "clip.avi", file);
    return Extract(work + "clip.avi");
  }
  std::string Output() const { return work + "frame.jpg"; }
  std::string Started(const std::string& source) const {
    return "[MediaCenter][ExtractAVIFrame]\nSource: " + source + "\nOutput: " + Output() + "\n";
  }
  std::string Failed(const std::string& source, const std::string& why) const {
    return Started(source) + "[MediaCenter][ExtractAVIFrame] Extract failed: " + why + "\n";
  }
  // A hand-laid file must fail with `why`, print it, and write nothing.
  void ExpectFailure(const Bytes& file, const std::string& why) {
    EXPECT_FALSE(ExtractBytes(file));
    EXPECT_EQ(Failed(work + "clip.avi", why), printed);
    EXPECT_FALSE(Exists(Output()));
  }
  // The frame chunk of an ffmpeg clip: the output must be the bytes ffmpeg takes
  // out as the first frame, and libjpeg must decode both to the same pixels.
  void ExpectFfmpegFirstFrame(const std::string& clip, int width, int height) {
    ASSERT_TRUE(Extract(Clip(clip + ".avi")));
    EXPECT_EQ(Started(Clip(clip + ".avi")), printed);
    const Bytes expected = ReadBytes(Clip(clip + ".first.jpg"));
    ASSERT_FALSE(expected.empty());
    EXPECT_EQ(expected, ReadBytes(Output()));
    const imgtest::Decoded ours = imgtest::DecodeWithLibjpeg(Output());
    const imgtest::Decoded theirs = imgtest::DecodeWithLibjpeg(Clip(clip + ".first.jpg"));
    EXPECT_EQ(width, ours.width);
    EXPECT_EQ(height, ours.height);
    EXPECT_EQ(3, ours.components);
    EXPECT_EQ(theirs.pixels, ours.pixels);
  }

  std::string printed;
};

// --- real clips ---------------------------------------------------------------------

TEST_F(AviFrameTest, AListOfAnotherTypeAndAJunkChunkBeforeTheFrameListArePassedOver) {
  // At the top level: the header list, an "INFO" list and a "JUNK" chunk.
  ExpectFfmpegFirstFrame("clip_info_junk", 96, 64);
}

TEST_F(AviFrameTest, AClipWithoutAJunkChunkGivesItsFirstFrame) { ExpectFfmpegFirstFrame("clip_nojunk", 96, 64); }

TEST_F(AviFrameTest, AnOddSizedFirstFrameIsCopiedWithoutThePadByteBehindIt) {
  ExpectFfmpegFirstFrame("clip_oddframe", 80, 60);
  EXPECT_EQ(1u, ReadBytes(Output()).size() % 2);
}

TEST_F(AviFrameTest, ATruncatedFileThatEndsInsideMoviBeforeAnyFrameFailsWithErrorReadingMoviItemType) {
  EXPECT_FALSE(Extract(Clip("clip_truncated.avi")));
  EXPECT_EQ(Failed(Clip("clip_truncated.avi"), "Error reading MOVI item type."), printed);
  EXPECT_FALSE(Exists(Output()));
}

TEST_F(AviFrameTest, ARiffFileOfAnotherFormTypeSuchAsAWaveFileFailsWithNotAnAviFile) {
  const std::string wave = std::string(ZV_SOURCE_DIR) + "/host/demo/voice-sample.wav";
  const Bytes head = ReadBytes(wave);
  ASSERT_GE(head.size(), 12u);
  ASSERT_EQ(Text("RIFF"), Bytes(head.begin(), head.begin() + 4));
  ASSERT_EQ(Text("WAVE"), Bytes(head.begin() + 8, head.begin() + 12));
  EXPECT_FALSE(Extract(wave));
  EXPECT_EQ(Failed(wave, "Not an AVI file."), printed);
  EXPECT_FALSE(Exists(Output()));
}

TEST_F(AviFrameTest, AFrameIsWrittenThroughTheDevicesWholeFileReplacement) {
  WriteBytes(Output(), Text("an older picture"));
  ASSERT_TRUE(Extract(Clip("clip_nojunk.avi")));
  EXPECT_EQ(ReadBytes(Clip("clip_nojunk.first.jpg")), ReadBytes(Output()));
  EXPECT_EQ((std::vector<std::string>{"frame.jpg"}), ListFolder(work)) << "no temporary is left beside it";
}

// --- the top level, laid out by hand ------------------------------------------------

TEST_F(AviFrameTest, AnyOtherChunkTypeAtTopLevelBeforeMoviFailsWithUnknownBlockType) {
  // An index chunk is a real chunk, but the walk knows only padding and lists.
  const Bytes index = Chunk(0x31786469u /* "idx1" */, Bytes(16, 0));
  ExpectFailure(Avi(index, Chunk(kFrame00, Text("frame"))), "Unknown block type. Expect JUNK or LIST.");
}

TEST_F(AviFrameTest, AMissingFileFailsWithCantOpenAviFile) {
  EXPECT_FALSE(Extract(work + "missing.avi"));
  EXPECT_EQ(Failed(work + "missing.avi", "Can't open AVI file."), printed);
}

TEST_F(AviFrameTest, AFileThatDoesNotBeginWithRiffFailsWithNotARiffFile) {
  ExpectFailure(ReadBytes(Clip("clip_nojunk.first.jpg")), "Not a RIFF file.");
  ExpectFailure(Text("RIF"), "Not a RIFF file.");
  ExpectFailure(Bytes(), "Not a RIFF file.");
}

TEST_F(AviFrameTest, AFileThatEndsBeforeItsFormTypeFailsWithNotAnAviFile) {
  ExpectFailure(Cat({Word(kRiff), Word(100)}), "Not an AVI file.");
  ExpectFailure(Cat({Word(kRiff), Word(100), Text("AV")}), "Not an AVI file.");
}

TEST_F(AviFrameTest, AFileThatEndsAtTheTopLevelFailsWithCantReadBlockType) {
  ExpectFailure(Cat({Word(kRiff), Word(4), Word(kAvi)}), "Can't read block type.");
  // The header list alone: the frame list never comes.
  const Bytes noMovi = Riff(kAvi, List(0x6C726468u, Chunk(kAvih, MainHeader(40000, 1))));
  ExpectFailure(noMovi, "Can't read block type.");
}

TEST_F(AviFrameTest, AJunkChunkWithoutItsSizeFailsWithErrorReadingJunkSize) {
  ExpectFailure(Cat({Word(kRiff), Word(8), Word(kAvi), Word(kJunk), Text("\x01\x02")}), "Error reading JUNK size.");
}

TEST_F(AviFrameTest, AListWithoutItsSizeFailsWithErrorReadingListSize) {
  ExpectFailure(Cat({Word(kRiff), Word(8), Word(kAvi), Word(kList)}), "Error reading LIST size.");
}

TEST_F(AviFrameTest, AListWithoutItsTypeFailsWithErrorReadingListItemType) {
  ExpectFailure(Cat({Word(kRiff), Word(16), Word(kAvi), Word(kList), Word(4), Text("mo")}),
                "Error reading LIST item type.");
}

TEST_F(AviFrameTest, AListOfAnotherTypeIsPassedOverByItsSizeAndItsWordsAreNotLookedAt) {
  // Inside a list of another type, a frame code and a "movi" word must not be taken.
  const Bytes other = List(0x4F464E49u /* "INFO" */, Cat({Chunk(kFrame00, Text("wrong")), Word(kList), Word(4),
                                                          Word(kMovi), Chunk(kFrame00, Text("wrong too"))}));
  const Bytes junk = Chunk(kJunk, Bytes(10, 0xEE));
  ASSERT_TRUE(ExtractBytes(Avi(Cat({other, junk, other}), Chunk(kFrame00, Text("first frame")))));
  EXPECT_EQ(Text("first frame"), ReadBytes(Output()));
}

TEST_F(AviFrameTest, ThePadByteAfterAnOddSizedChunkIsNotSkipped) {
  // Sizes are used as they stand: after a "JUNK" of 3 bytes the walk reads its pad
  // byte as the first byte of the next code.
  const Bytes oddJunk = Chunk(kJunk, Text("abc"));
  ASSERT_EQ(12u, oddJunk.size());
  ExpectFailure(Avi(oddJunk, Chunk(kFrame00, Text("frame"))), "Unknown block type. Expect JUNK or LIST.");
}

// --- inside the frame list ----------------------------------------------------------

TEST_F(AviFrameTest, AFrameChunkOfSize0CreatesAnEmptyOutputFileAndReturnsTrue) {
  ASSERT_TRUE(ExtractBytes(Avi(Bytes(), Cat({Chunk(kFrame00, Bytes()), Chunk(kFrame00, Text("second"))}))));
  EXPECT_EQ(Started(work + "clip.avi"), printed);
  ASSERT_TRUE(Exists(Output()));
  EXPECT_TRUE(ReadBytes(Output()).empty());
}

TEST_F(AviFrameTest, OtherChunksInTheFrameListAreWalkedWordByWordNotSkippedBySize) {
  // A sound chunk first; a word of its body that ends in "dc" is taken for a frame
  // code, and the word after it for the size.
  const Bytes sound = Chunk(kAudio01, Cat({Text("pcm."), Text("xxdc"), Word(4), Text("oops")}));
  ASSERT_TRUE(ExtractBytes(Avi(Bytes(), Cat({sound, Chunk(kFrame00, Text("real"))}))));
  EXPECT_EQ(Text("oops"), ReadBytes(Output()));
}

TEST_F(AviFrameTest, ASoundChunkBeforeTheFirstFrameIsWalkedOver) {
  const Bytes sound = Chunk(kAudio01, Text("12345678"));
  ASSERT_TRUE(ExtractBytes(Avi(Bytes(), Cat({sound, Chunk(kFrame00, Text("picture!"))}))));
  EXPECT_EQ(Text("picture!"), ReadBytes(Output()));
}

TEST_F(AviFrameTest, AFrameCodeWithoutItsSizeFailsWithErrorReadingImageContentSize) {
  const Bytes file = Riff(kAvi, Cat({Word(kList), Word(8), Word(kMovi), Word(kFrame00), Text("\x10")}));
  ExpectFailure(file, "Error reading image content size.");
}

TEST_F(AviFrameTest, AFrameLongerThanTheFileGivesAShortOutputAndNoError) {
  const Bytes body = imgtest::Gradient(40, 30);  // 3600 bytes: several blocks of 512
  const Bytes file = Riff(kAvi, Cat({Word(kList), Word(5000), Word(kMovi), ChunkHead(kFrame00, 100000), body}));
  ASSERT_TRUE(ExtractBytes(file));
  EXPECT_EQ(body, ReadBytes(Output()));
}

TEST_F(AviFrameTest, AFrameOfManyBlocksIsCopiedWhole) {
  Bytes body = imgtest::Gradient(37, 23);  // 2553 bytes: four whole blocks of 512 and a part
  ASSERT_TRUE(ExtractBytes(Avi(Bytes(), Chunk(kFrame00, body))));
  EXPECT_EQ(body, ReadBytes(Output()));
}

TEST_F(AviFrameTest, AnOutputThatCannotBeCreatedFailsWithErrorCreatingImageFileAndKeepsTheSource) {
  const Bytes file = Avi(Bytes(), Chunk(kFrame00, Text("frame")));
  WriteBytes(work + "clip.avi", file);
  TestGame game;
  bool result = true;
  const std::string output = work + "missing/frame.jpg";
  printed = CaptureOut([&] { result = game.store().ExtractAVIFrame(work + "clip.avi", output); });
  EXPECT_FALSE(result);
  EXPECT_EQ("[MediaCenter][ExtractAVIFrame]\nSource: " + work + "clip.avi\nOutput: " + output +
                "\n[MediaCenter][ExtractAVIFrame] Extract failed: Error creating image file.\n",
            printed);
  EXPECT_EQ(file, ReadBytes(work + "clip.avi"));
  EXPECT_EQ((std::vector<std::string>{"clip.avi"}), ListFolder(work));
}

TEST_F(AviFrameTest, AFailedWalkLeavesAnEarlierOutputAsItWas) {
  WriteBytes(Output(), Text("kept"));
  EXPECT_FALSE(ExtractBytes(Avi(Bytes(), Text("00"))));
  EXPECT_EQ(Failed(work + "clip.avi", "Error reading MOVI item type."), printed);
  EXPECT_EQ(Text("kept"), ReadBytes(Output()));
}

}  // namespace
