// A video's length: the byte-wise search for a four-character code, and the main
// AVI header it leads to, judged against ffprobe's reading of real clips.
#include <gtest/gtest.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <string>

#include "MediaFixture.h"
#include "RiffLayout.h"
#include "images/ImageTestSupport.h"

namespace {

using mediatest::AssertRegex;
using mediatest::CaptureOut;
using mediatest::MediaTest;
using mediatest::TestGame;
using namespace rifftest;
using zvtest::ReadBytes;
using zvtest::WriteBytes;

// --- DescendToSpecificFourCC ---------------------------------------------------------

class DescendTest : public testing::Test {
 protected:
  // Searches `bytes` for "avih"; `at` gets where the stream stands afterwards.
  bool Descend(const Bytes& bytes, long& at) {
    const std::string path = dir.file("search.bin");
    WriteBytes(path, bytes);
    FILE* stream = fopen(path.c_str(), "rb");
    EXPECT_NE(nullptr, stream);
    const bool found = store.DescendToSpecificFourCC(stream, kAvih);
    at = ftell(stream);
    fclose(stream);
    return found;
  }

  zvtest::TempDir dir;
  MediaCenter store{nullptr};
};

TEST_F(DescendTest, TheStreamIsLeftAtTheCodeItself) {
  long at = -1;
  EXPECT_TRUE(Descend(Cat({Text("RIFF...."), Word(kAvih), Word(56)}), at));
  EXPECT_EQ(8, at);
  EXPECT_TRUE(Descend(Word(kAvih), at));
  EXPECT_EQ(0, at);
}

TEST_F(DescendTest, ACodeThatBeginsInsideTheThreeBytesNotGivenBackIsMissed) {
  long at = -1;
  // "a" then "avih": the first "a" matches the low byte, "ava" is read with it and
  // not given back, and the search goes on at "ih".
  EXPECT_FALSE(Descend(Text("xaavihyyyy"), at));
  EXPECT_FALSE(Descend(Text("xa..avihyyyy"), at));
  // A code that begins past those three bytes is found.
  EXPECT_TRUE(Descend(Text("xa...avihyyyy"), at));
  EXPECT_EQ(5, at);
}

TEST_F(DescendTest, TheEndOfTheFileGivesFalse) {
  long at = -1;
  EXPECT_FALSE(Descend(Bytes(), at));
  EXPECT_FALSE(Descend(Text("no code here"), at));
  EXPECT_FALSE(Descend(Text("....avi"), at)) << "a code cut by the end of the file";
}

TEST_F(DescendTest, ANullStreamGivesFalse) { EXPECT_FALSE(store.DescendToSpecificFourCC(nullptr, kAvih)); }

TEST_F(DescendTest, AnyCodeCanBeSearchedFor) {
  const std::string path = dir.file("clip.avi");
  const Bytes clip = ReadBytes(Clip("clip_nojunk.avi"));
  WriteBytes(path, clip);
  FILE* stream = fopen(path.c_str(), "rb");
  ASSERT_NE(nullptr, stream);
  ASSERT_TRUE(store.DescendToSpecificFourCC(stream, kMovi));
  const long movi = ftell(stream);
  fclose(stream);
  EXPECT_EQ(Text("movi"), Bytes(clip.begin() + movi, clip.begin() + movi + 4));
  EXPECT_EQ(Text("LIST"), Bytes(clip.begin() + movi - 8, clip.begin() + movi - 4));
}

// --- GetVideoLengthByResId ------------------------------------------------------------

class VideoLengthTest : public MediaTest {
 protected:
  // Puts `file` into the gallery as a new video and returns its number.
  int AddVideo(TestGame& game, const Bytes& file) {
    ResInfo* video = nullptr;
    CaptureOut([&] { video = game.store().CreateNewRes(eRT_Video); });
    EXPECT_NE(nullptr, video);
    WriteBytes(Shared("Videos/") + video->mName, file);
    return video->mResId;
  }
  float Length(TestGame& game, int id) {
    float length = -1.0f;
    CaptureOut([&] { length = game.store().GetVideoLengthByResId(id); });
    return length;
  }
};

TEST_F(VideoLengthTest, AVideoOf10000FramesAt33333MicrosecondsPerFrameLasts333Point33Seconds) {
  TestGame game;
  const int id = AddVideo(game, Avi(Bytes(), Chunk(kFrame00, Text("frame")), 33333, 10000));
  EXPECT_FLOAT_EQ(333.33f, Length(game, id));
}

TEST_F(VideoLengthTest, AVideoWithoutFramesLastsNoTime) {
  TestGame game;
  EXPECT_EQ(0.0f, Length(game, AddVideo(game, Avi(Bytes(), Bytes(), 40000, 0))));
}

TEST_F(VideoLengthTest, NumberMinusOneOrANumberWithoutARecordGivesZero) {
  TestGame game;
  AddVideo(game, Avi(Bytes(), Bytes(), 40000, 250));
  EXPECT_EQ(0.0f, Length(game, -1));
  EXPECT_EQ(0.0f, Length(game, 2));
}

TEST_F(VideoLengthTest, AVideoWhoseFileIsMissingGivesZero) {
  TestGame game;
  ResInfo* video = nullptr;
  CaptureOut([&] { video = game.store().CreateNewRes(eRT_Video); });
  ASSERT_NE(nullptr, video);
  EXPECT_EQ(0.0f, Length(game, video->mResId));
}

TEST_F(VideoLengthTest, AFileWithoutAMainHeaderGivesZero) {
  TestGame game;
  EXPECT_EQ(0.0f, Length(game, AddVideo(game, Text("RIFF....AVI LIST....movi"))));
  EXPECT_EQ(0.0f, Length(game, AddVideo(game, Bytes())));
}

TEST_F(VideoLengthTest, AHeaderCodeThatBeginsInsideTheThreeBytesNotGivenBackIsMissedAndGivesZero) {
  // A list type that ends in "a" stands right before the header's code.
  TestGame game;
  const Bytes header = List(0x61726468u /* "hdra" */, Chunk(kAvih, MainHeader(40000, 25)));
  EXPECT_EQ(0.0f, Length(game, AddVideo(game, Riff(kAvi, header))));
  const Bytes found = List(0x6C726468u /* "hdrl" */, Chunk(kAvih, MainHeader(40000, 25)));
  EXPECT_FLOAT_EQ(1.0f, Length(game, AddVideo(game, Riff(kAvi, found))));
}

TEST_F(VideoLengthTest, AHeaderCodeAtAWrongPlaceFailsTheChunkSizeAssertion) {
  // "avih" as text inside another chunk, followed by anything but 56.
  TestGame game;
  const int id = AddVideo(game, Riff(kAvi, Chunk(kJunk, Cat({Text("note: avih"), Word(12), Bytes(60, 0)}))));
  EXPECT_DEATH(game.store().GetVideoLengthByResId(id),
               AssertRegex("Src/MediaCenter/MediaCenter.cpp", "ChunkSize == sizeof(MainAVIHeader)"));
}

TEST_F(VideoLengthTest, AFileThatEndsInsideTheHeaderReadsZerosForWhatIsMissing) {
  TestGame game;
  const Bytes whole = Riff(kAvi, Chunk(kAvih, MainHeader(40000, 25)));
  // Up to the frame count: the frame count reads as 0.
  const Bytes cut(whole.begin(), whole.begin() + 12 + 8 + 16);
  EXPECT_EQ(0.0f, Length(game, AddVideo(game, cut)));
  const Bytes withCount(whole.begin(), whole.begin() + 12 + 8 + 20);
  EXPECT_FLOAT_EQ(1.0f, Length(game, AddVideo(game, withCount)));
}

TEST_F(VideoLengthTest, TheVideosThumbnailIsDecodedOnTheWay) {
  TestGame game;
  const int id = AddVideo(game, ReadBytes(Clip("clip_nojunk.avi")));
  ResInfo* video = game.store().GetResInfo(eRT_Video, id, false);
  Bytes thumb = imgtest::Gradient(80, 80);
  CaptureOut([&] { game.store().StoreThumbToDisk(video, thumb.data(), 80, 80); });
  ASSERT_EQ(nullptr, video->mThumbBuffer);
  EXPECT_FLOAT_EQ(0.2f, Length(game, id));
  ASSERT_NE(nullptr, video->mThumbBuffer);
  EXPECT_EQ(80, video->mThumbWidth);
  EXPECT_EQ(80, video->mThumbHeight);
}

// ffprobe, the outside judge: its duration of the same file, and the frame rate
// that makes one frame's time.
class FfprobeTest : public VideoLengthTest, public testing::WithParamInterface<const char*> {
 protected:
  void SetUp() override {
    VideoLengthTest::SetUp();
    if (system("command -v ffprobe >/dev/null 2>&1") != 0) GTEST_SKIP() << "ffprobe is not installed";
  }
  static double Probe(const std::string& path, const std::string& entry) {
    const std::string text = zvtest::RunCommand("ffprobe -v error -select_streams v:0 -show_entries " + entry +
                                                " -of default=noprint_wrappers=1:nokey=1 '" + path + "'");
    EXPECT_FALSE(text.empty()) << entry;
    const size_t slash = text.find('/');
    if (slash != std::string::npos) return atof(text.substr(0, slash).c_str()) / atof(text.substr(slash + 1).c_str());
    return atof(text.c_str());
  }
};

TEST_P(FfprobeTest, TheLengthAgreesWithFfprobesDurationWithinOneFrame) {
  const std::string clip = Clip(std::string(GetParam()) + ".avi");
  const double duration = Probe(clip, "format=duration");
  const double frame = 1.0 / Probe(clip, "stream=r_frame_rate");
  ASSERT_GT(duration, 0.0);
  TestGame game;
  const float length = Length(game, AddVideo(game, ReadBytes(clip)));
  EXPECT_NEAR(duration, length, frame) << clip;
}

INSTANTIATE_TEST_SUITE_P(FfmpegClips, FfprobeTest, testing::Values("clip_info_junk", "clip_nojunk", "clip_oddframe"));

}  // namespace
