// Loading, saving and repairing the lists: resid.bin, corrupted records, the check
// file, story order, lookups and the XML form.
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <tinyxml.h>

#include <string>
#include <vector>

#include "MediaFixture.h"

namespace {

using mediatest::CaptureOut;
using mediatest::MediaTest;
using mediatest::Occurrences;
using mediatest::PutF32;
using mediatest::PutName;
using mediatest::ResIdFile;
using mediatest::TestGame;
using zvtest::Bytes;
using zvtest::Exists;
using zvtest::PutI32;
using zvtest::PutU32;
using zvtest::ReadBytes;
using zvtest::ReadText;
using zvtest::WriteBytes;
using zvtest::WriteText;

const uint32_t kVersion = 9213426;

class RecordsTest : public MediaTest {
 protected:
  // An index of photos with the given numbers, all landscape 640 x 480.
  Bytes PhotoIndex(const std::vector<int>& ids) {
    Bytes out;
    PutU32(out, kVersion);
    PutI32(out, int32_t(ids.size()));
    for (int id : ids) {
      PutI32(out, id);
      PutI32(out, eRT_Photo);
      PutI32(out, 0);
      PutI32(out, 640);
      PutI32(out, 480);
    }
    return out;
  }
  void MakePhoto(int id, bool withThumb = true) {
    WriteText(Shared("Photos/vtwgphoto_" + std::to_string(id) + ".jpg"), "jpeg");
    if (withThumb) WriteText(Shared("Photos/Thumb/vtwgphoto_thumb_" + std::to_string(id) + ".jpg"), "thumb");
  }
  Bytes AudioIndex(const std::vector<int>& ids) {
    Bytes out;
    PutU32(out, kVersion);
    PutI32(out, int32_t(ids.size()));
    for (int id : ids) {
      PutI32(out, id);
      PutI32(out, eRT_Audio);
      PutI32(out, 0);
      PutF32(out, 1.5f);
    }
    return out;
  }
  Bytes CheckFile(int oper, int type, int id) {
    Bytes out;
    PutI32(out, oper);
    PutI32(out, type);
    PutI32(out, id);
    return out;
  }
  std::string StoryFolder(int id) { return root + "LocalData/Player1/MicrophoneWidget/SD-1-" + std::to_string(id) + "/"; }
};

// --- resid.bin ---------------------------------------------------------------

TEST_F(RecordsTest, MissingIndexGivesAnEmptyListAndMaximaFromResIdAlone) {
  const uint32_t maxima[9] = {4, 9, 0, 0, 0, 0, 0, 0, 0};
  WriteBytes(Index("resid.bin"), ResIdFile(maxima));
  TestGame game;
  const std::string out = CaptureOut([&] { game.store().LoadResInfo(eRT_Audio); });
  EXPECT_EQ("Open File Failed:" + Index("vtwgAudioResInfo.bin") + "\n", out);
  EXPECT_TRUE(game.store().GetResInfoList(eRT_Audio).empty());
  EXPECT_EQ(9u, game.store().GetMaxResId(eRT_Audio));
  EXPECT_EQ(4u, game.store().GetMaxResId(eRT_Photo));
  EXPECT_EQ(10, game.store().CreateNewRes(eRT_Audio)->mResId);
}

TEST_F(RecordsTest, SaveResInfoWritesAResIdFileOfFortyBytesWithAllNineMaxima) {
  TestGame game;
  game.store().RefreshMaxIdIndex(eRT_Photo, 12);
  game.store().RefreshMaxIdIndex(eRT_Video, 3);
  game.store().RefreshMaxIdIndex(eRT_SpecificFolderAudio, 70000);
  game.store().CreateNewRes(eRT_Audio);
  game.store().SaveResInfo(eRT_Audio);
  const uint32_t maxima[9] = {12, 1, 3, 0, 0, 0, 0, 0, 70000};
  const Bytes bytes = ReadBytes(Index("resid.bin"));
  EXPECT_EQ(40u, bytes.size());
  EXPECT_EQ(ResIdFile(maxima), bytes);
  EXPECT_EQ(Bytes({'R', 'I', 'D', 0}), Bytes(bytes.begin(), bytes.begin() + 4));
}

TEST_F(RecordsTest, ResIdOfSixteenBytesRaisesTheFirstThreeMaximaAndLeavesTheRest) {
  Bytes shortFile;
  PutU32(shortFile, 0x00444952u);
  PutU32(shortFile, 5);
  PutU32(shortFile, 6);
  PutU32(shortFile, 7);
  ASSERT_EQ(16u, shortFile.size());
  WriteBytes(Index("resid.bin"), shortFile);
  TestGame game;
  game.store().RefreshMaxIdIndex(eRT_Art, 2);
  game.store().RefreshMaxIdIndex(eRT_Audio, 8);
  game.store().LoadResInfo(eRT_Audio);
  EXPECT_EQ(5u, game.store().GetMaxResId(eRT_Photo));
  EXPECT_EQ(8u, game.store().GetMaxResId(eRT_Audio)) << "a smaller number never lowers a maximum";
  EXPECT_EQ(7u, game.store().GetMaxResId(eRT_Video));
  EXPECT_EQ(2u, game.store().GetMaxResId(eRT_Art));
  EXPECT_EQ(0u, game.store().GetMaxResId(eRT_SpecificFolderAudio));
}

TEST_F(RecordsTest, ResIdOfFortyBytesRaisesAllNineMaxima) {
  const uint32_t maxima[9] = {1, 2, 3, 4, 5, 6, 7, 8, 0xFFFFFFF0u};
  WriteBytes(Index("resid.bin"), ResIdFile(maxima));
  TestGame game;
  game.store().LoadResInfo(eRT_Audio);
  for (int i = 0; i < 9; ++i) EXPECT_EQ(maxima[i], game.store().GetMaxResId(EResType(i))) << i;
}

TEST_F(RecordsTest, ResIdWhoseFirstFourBytesAreNotTheMagicIsIgnoredWhole) {
  uint32_t maxima[9] = {50, 50, 50, 50, 50, 50, 50, 50, 50};
  Bytes foreign = ResIdFile(maxima);
  foreign[3] = 1;  // "RID\1"
  WriteBytes(Index("resid.bin"), foreign);
  TestGame game;
  game.store().LoadResInfo(eRT_Audio);
  for (int i = 0; i < 9; ++i) EXPECT_EQ(0u, game.store().GetMaxResId(EResType(i))) << i;
}

TEST_F(RecordsTest, StoryIndexAndItsResIdLiveInThePlayersRoot) {
  TestGame game;
  game.store().SaveResInfo(eRT_ScrapBook);
  EXPECT_TRUE(Exists(root + "LocalData/Player1/vtwgScrapBookResInfo.bin"));
  EXPECT_TRUE(Exists(root + "LocalData/Player1/resid.bin"));
  EXPECT_FALSE(Exists(Index("resid.bin")));
}

// --- versions ----------------------------------------------------------------

TEST_F(RecordsTest, SpecificFolderArtRefusesVersion9213426AndAcceptsVersionZero) {
  Bytes index;
  PutU32(index, kVersion);
  PutI32(index, 1);
  PutI32(index, 4);
  PutI32(index, eRT_SpecificFolderArt);
  PutI32(index, 0);
  PutI32(index, 80);
  PutI32(index, 60);
  PutName(index, "/card/a_4.jpg");
  WriteBytes(Index("vtwgSpecificFolderArt.bin"), index);
  {
    TestGame game;
    const std::string out = CaptureOut([&] { game.store().LoadResInfoFromBin(eRT_SpecificFolderArt); });
    EXPECT_EQ("File version is not same:" + Index("vtwgSpecificFolderArt.bin") + "\n", out);
    EXPECT_TRUE(game.store().GetResInfoList(eRT_SpecificFolderArt).empty());
  }
  index[0] = index[1] = index[2] = index[3] = 0;
  WriteBytes(Index("vtwgSpecificFolderArt.bin"), index);
  TestGame game;
  game.store().LoadResInfoFromBin(eRT_SpecificFolderArt);
  ASSERT_EQ(1u, game.store().GetResInfoList(eRT_SpecificFolderArt).size());
  EXPECT_EQ("/card/a_4.jpg", game.store().GetResInfoList(eRT_SpecificFolderArt).front().mName);
}

TEST_F(RecordsTest, RefusedIndexIsLeftUntilTheNextSaveOverwritesIt) {
  Bytes index = AudioIndex({1, 2});
  index[0] ^= 0xFF;
  WriteBytes(Index("vtwgAudioResInfo.bin"), index);
  TestGame game;
  game.store().LoadResInfo(eRT_Audio);
  EXPECT_EQ(index, ReadBytes(Index("vtwgAudioResInfo.bin")));
  game.store().CreateNewRes(eRT_Audio);
  game.store().SaveResInfo(eRT_Audio);
  EXPECT_EQ(AudioIndex({1}).size(), ReadBytes(Index("vtwgAudioResInfo.bin")).size()) << "the old records are lost";
}

// --- numbers ------------------------------------------------------------------

TEST_F(RecordsTest, AfterDeletingTheNewestPhotoARestartStillNumbersAboveIt) {
  MakePhoto(1);
  MakePhoto(2);
  WriteBytes(Index("vtwgPhotoResInfo.bin"), PhotoIndex({1, 2}));
  {
    TestGame game;
    game.store().InitResInfo(eRT_Photo, "");
    game.store().DeleteRes(eRT_Photo, 2, true);
  }
  EXPECT_EQ(PhotoIndex({1}), ReadBytes(Index("vtwgPhotoResInfo.bin"))) << "the index no longer has number 2";
  TestGame game;
  game.store().InitResInfo(eRT_Photo, "");
  EXPECT_EQ(3, game.store().CreateNewRes(eRT_Photo)->mResId);
}

TEST_F(RecordsTest, ADamagedRecordStillRaisesTheMaximum) {
  Bytes index = AudioIndex({4});
  PutI32(index, 40);  // the second record's number, then the file ends
  index[4] = 2;
  WriteBytes(Index("vtwgAudioResInfo.bin"), index);
  TestGame game;
  game.store().LoadResInfoFromBin(eRT_Audio);
  EXPECT_EQ(1u, game.store().GetResInfoList(eRT_Audio).size());
  EXPECT_EQ(40u, game.store().GetMaxResId(eRT_Audio));
}

TEST_F(RecordsTest, ACountBeyondTheDataStopsAtTheEndKeepingWholeRecords) {
  Bytes index = AudioIndex({1, 2, 3});
  index[4] = 100;
  WriteBytes(Index("vtwgAudioResInfo.bin"), index);
  TestGame game;
  game.store().LoadResInfoFromBin(eRT_Audio);
  EXPECT_EQ(3u, game.store().GetResInfoList(eRT_Audio).size());
}

// --- corrupted records --------------------------------------------------------

TEST_F(RecordsTest, PhotoWithoutItsThumbnailIsDroppedAtLoadOnceAndTheFilesAreRewritten) {
  MakePhoto(1);
  MakePhoto(2, false);
  MakePhoto(3);
  WriteBytes(Index("vtwgPhotoResInfo.bin"), PhotoIndex({1, 2, 3}));
  TestGame game;
  const std::string out = CaptureOut([&] { game.store().LoadResInfo(eRT_Photo); });
  EXPECT_EQ(1, Occurrences(out, "Res Corrupted, Refresh the *.bin file\n"));
  ASSERT_EQ(2u, game.store().GetResInfoList(eRT_Photo).size());
  EXPECT_EQ(1, game.store().GetResInfoList(eRT_Photo).front().mResId);
  EXPECT_EQ(3, game.store().GetResInfoList(eRT_Photo).back().mResId);
  EXPECT_EQ(PhotoIndex({1, 3}), ReadBytes(Index("vtwgPhotoResInfo.bin")));
  const uint32_t maxima[9] = {3, 0, 0, 0, 0, 0, 0, 0, 0};
  EXPECT_EQ(ResIdFile(maxima), ReadBytes(Index("resid.bin")));
}

// The save after a dropped record comes before resid.bin is read: it must not
// lower what the file holds, for this type or any other, or numbers of deleted
// resources would be given out again.
TEST_F(RecordsTest, DroppingACorruptedRecordAtLoadLowersNoNumberInResId) {
  MakePhoto(1);
  WriteBytes(Index("vtwgPhotoResInfo.bin"), PhotoIndex({1, 2}));  // 2 has no files
  const uint32_t held[9] = {9, 4, 7, 0, 0, 0, 0, 0, 2};
  WriteBytes(Index("resid.bin"), ResIdFile(held));
  TestGame game;
  CaptureOut([&] { game.store().LoadResInfo(eRT_Photo); });
  EXPECT_EQ(PhotoIndex({1}), ReadBytes(Index("vtwgPhotoResInfo.bin")));
  EXPECT_EQ(ResIdFile(held), ReadBytes(Index("resid.bin")));
  EXPECT_EQ(9u, game.store().GetMaxResId(eRT_Photo));
  EXPECT_EQ(10, game.store().CreateNewRes(eRT_Photo)->mResId);
}

TEST_F(RecordsTest, PhotoWithoutItsMainFileIsDroppedToo) {
  WriteText(Shared("Photos/Thumb/vtwgphoto_thumb_1.jpg"), "thumb");
  WriteBytes(Index("vtwgPhotoResInfo.bin"), PhotoIndex({1}));
  TestGame game;
  game.store().LoadResInfo(eRT_Photo);
  EXPECT_TRUE(game.store().GetResInfoList(eRT_Photo).empty());
}

TEST_F(RecordsTest, AudioRecordWhoseFileIsGoneStaysInTheList) {
  WriteBytes(Index("vtwgAudioResInfo.bin"), AudioIndex({1, 2}));
  TestGame game;
  const std::string out = CaptureOut([&] { game.store().LoadResInfo(eRT_Audio); });
  EXPECT_EQ(2u, game.store().GetResInfoList(eRT_Audio).size());
  EXPECT_EQ(0, Occurrences(out, "Res Corrupted"));
  EXPECT_EQ("vtwgaudio_2.wav", game.store().GetResInfoList(eRT_Audio).back().mName);
}

TEST_F(RecordsTest, VideoNeedsItsFileThumbnailAndCover) {
  TestGame game;
  ResInfo video;
  video.mResType = eRT_Video;
  video.mResId = 3;
  video.mName = "vtwgvideo_3.avi";
  EXPECT_TRUE(game.store().IsResCorrupted(video));
  WriteText(Shared("Videos/vtwgvideo_3.avi"), "v");
  WriteText(Shared("Videos/Thumb/vtwgvideo_thumb_3.jpg"), "t");
  EXPECT_TRUE(game.store().IsResCorrupted(video)) << "the cover is missing";
  WriteText(Shared("Videos/Cover/vtwgvideo_cover_3.jpg"), "c");
  EXPECT_FALSE(game.store().IsResCorrupted(video));
}

TEST_F(RecordsTest, StoryIsKeptWhileItsDataFileExistsThoughTheSlashDoublesUp) {
  const std::string kept = StoryFolder(1);
  const std::string gone = StoryFolder(2);
  mkdir((root + "LocalData/Player1/MicrophoneWidget").c_str(), 0755);
  mkdir(kept.c_str(), 0755);
  WriteText(kept + "dataFile.json", "{}");
  Bytes index;
  PutU32(index, kVersion);
  PutI32(index, 2);
  for (int id : {1, 2}) {
    PutI32(index, id);
    PutI32(index, eRT_ScrapBook);
    PutI32(index, 0);
    PutI32(index, 1);
    PutName(index, StoryFolder(id));
  }
  WriteBytes(root + "LocalData/Player1/vtwgScrapBookResInfo.bin", index);
  TestGame game;
  game.store().LoadResInfo(eRT_ScrapBook);
  ASSERT_EQ(1u, game.store().GetResInfoList(eRT_ScrapBook).size());
  EXPECT_EQ(kept, game.store().GetResInfoList(eRT_ScrapBook).front().mName);
  EXPECT_EQ('/', kept.back()) << "so the data file is asked for as ...//dataFile.json";
  EXPECT_FALSE(Exists(gone));
}

TEST_F(RecordsTest, AStoryNamedWithoutATrailingSlashHasItsDataFileLookedForInsideItsFolder) {
  const std::string base = root + "LocalData/Player1/MicrophoneWidget/";
  mkdir(base.c_str(), 0755);
  mkdir((base + "SD-1-3").c_str(), 0755);
  WriteText(base + "SD-1-3/dataFile.json", "{}");
  // Beside the second folder, a file whose name is the folder's and the data
  // file's run together: not the story's data file.
  mkdir((base + "SD-1-4").c_str(), 0755);
  WriteText(base + "SD-1-4dataFile.json", "{}");
  Bytes index;
  PutU32(index, kVersion);
  PutI32(index, 2);
  for (int id : {3, 4}) {
    PutI32(index, id);
    PutI32(index, eRT_ScrapBook);
    PutI32(index, 0);
    PutI32(index, 1);
    PutName(index, base + "SD-1-" + std::to_string(id));
  }
  WriteBytes(root + "LocalData/Player1/vtwgScrapBookResInfo.bin", index);
  TestGame game;
  CaptureOut([&] { game.store().LoadResInfo(eRT_ScrapBook); });
  ASSERT_EQ(1u, game.store().GetResInfoList(eRT_ScrapBook).size());
  EXPECT_EQ(base + "SD-1-3", game.store().GetResInfoList(eRT_ScrapBook).front().mName);
}

// --- the check file -----------------------------------------------------------

TEST_F(RecordsTest, StartOperProtectedWritesACheckFileOfTwelveBytes) {
  TestGame game;
  const std::string out = CaptureOut([&] { game.store().StartOperProtected(eRT_Audio, 5, MediaCenter::ePOT_Create); });
  EXPECT_EQ("Open Filee OK:" + Index("AudioCheck.bin"), out);
  EXPECT_EQ(CheckFile(1, 1, 5), ReadBytes(Index("AudioCheck.bin")));
  game.store().EndOperProtected(eRT_Audio);
  EXPECT_FALSE(Exists(Index("AudioCheck.bin")));
}

TEST_F(RecordsTest, CheckFileOfFolderAudioKeepsItsIrregularName) {
  TestGame game;
  game.store().StartOperProtected(eRT_SpecificFolderAudio, 2, MediaCenter::ePOT_Delete);
  EXPECT_EQ(CheckFile(2, 8, 2), ReadBytes(Index("SpecificFolderArtAudio.bin")));
  game.store().EndOperProtected(eRT_SpecificFolderAudio);
}

TEST_F(RecordsTest, CheckFileOfElevenBytesIsIgnoredAndStaysOnDisk) {
  Bytes check = CheckFile(1, 1, 1);
  check.pop_back();
  ASSERT_EQ(11u, check.size());
  WriteBytes(Index("AudioCheck.bin"), check);
  WriteBytes(Index("vtwgAudioResInfo.bin"), AudioIndex({1}));
  TestGame game;
  game.store().InitResInfo(eRT_Audio, "");
  EXPECT_EQ(1u, game.store().GetResInfoList(eRT_Audio).size());
  EXPECT_EQ(check, ReadBytes(Index("AudioCheck.bin")));
}

TEST_F(RecordsTest, CreateCheckForARecordThatNeverReachedTheIndexRemovesOnlyTheCheckFile) {
  WriteBytes(Index("vtwgAudioResInfo.bin"), AudioIndex({1}));
  WriteText(Music("vtwgaudio_1.wav"), "clip");
  WriteBytes(Index("AudioCheck.bin"), CheckFile(1, 1, 2));
  const Bytes index = ReadBytes(Index("vtwgAudioResInfo.bin"));
  TestGame game;
  game.store().InitResInfo(eRT_Audio, "");
  EXPECT_FALSE(Exists(Index("AudioCheck.bin")));
  EXPECT_EQ(index, ReadBytes(Index("vtwgAudioResInfo.bin")));
  EXPECT_FALSE(Exists(Index("resid.bin"))) << "nothing was saved";
  EXPECT_TRUE(Exists(Music("vtwgaudio_1.wav")));
  EXPECT_EQ(1u, game.store().GetResInfoList(eRT_Audio).size());
}

TEST_F(RecordsTest, CreateCheckWithTheMediaInPlaceKeepsTheResource) {
  WriteBytes(Index("vtwgAudioResInfo.bin"), AudioIndex({1}));
  WriteText(Music("vtwgaudio_1.wav"), "clip");
  WriteBytes(Index("AudioCheck.bin"), CheckFile(1, 1, 1));
  TestGame game;
  game.store().InitResInfo(eRT_Audio, "");
  EXPECT_FALSE(Exists(Index("AudioCheck.bin")));
  EXPECT_EQ(1u, game.store().GetResInfoList(eRT_Audio).size());
  EXPECT_TRUE(Exists(Music("vtwgaudio_1.wav")));
}

TEST_F(RecordsTest, CreateCheckWithoutTheMediaDeletesTheRecordAndSavesTheIndex) {
  WriteBytes(Index("vtwgAudioResInfo.bin"), AudioIndex({1, 2}));
  WriteText(Music("vtwgaudio_1.wav"), "clip");
  WriteBytes(Index("AudioCheck.bin"), CheckFile(1, 1, 2));
  TestGame game;
  game.store().InitResInfo(eRT_Audio, "");
  EXPECT_FALSE(Exists(Index("AudioCheck.bin")));
  EXPECT_EQ(AudioIndex({1}), ReadBytes(Index("vtwgAudioResInfo.bin")));
  const uint32_t maxima[9] = {0, 2, 0, 0, 0, 0, 0, 0, 0};
  EXPECT_EQ(ResIdFile(maxima), ReadBytes(Index("resid.bin")));
  EXPECT_EQ(3, game.store().CreateNewRes(eRT_Audio)->mResId);
}

TEST_F(RecordsTest, CreateCheckOfAPhotoWithoutItsThumbnailUndoesTheCreation) {
  // The photo's load drops it already, so the journal finds no record: a photo
  // made of its main file alone never survives a start.
  MakePhoto(1, false);
  WriteBytes(Index("vtwgPhotoResInfo.bin"), PhotoIndex({1}));
  WriteBytes(Index("PhotoCheck.bin"), CheckFile(1, 0, 1));
  TestGame game;
  game.store().InitResInfo(eRT_Photo, "");
  EXPECT_TRUE(game.store().GetResInfoList(eRT_Photo).empty());
  EXPECT_FALSE(Exists(Index("PhotoCheck.bin")));
}

TEST_F(RecordsTest, DeleteCheckRunsTheDeletionAgain) {
  WriteBytes(Index("vtwgAudioResInfo.bin"), AudioIndex({1, 2}));
  WriteText(Music("vtwgaudio_1.wav"), "clip one");
  WriteText(Music("vtwgaudio_2.wav"), "clip two");
  WriteBytes(Index("AudioCheck.bin"), CheckFile(2, 1, 2));
  TestGame game;
  game.store().InitResInfo(eRT_Audio, "");
  EXPECT_FALSE(Exists(Index("AudioCheck.bin")));
  EXPECT_FALSE(Exists(Music("vtwgaudio_2.wav")));
  EXPECT_TRUE(Exists(Music("vtwgaudio_1.wav")));
  EXPECT_EQ(AudioIndex({1}), ReadBytes(Index("vtwgAudioResInfo.bin")));
}

TEST_F(RecordsTest, DeleteCheckWithTheRecordGoneLeavesTheFilesAsOrphans) {
  WriteBytes(Index("vtwgAudioResInfo.bin"), AudioIndex({1}));
  WriteText(Music("vtwgaudio_2.wav"), "clip two");
  WriteBytes(Index("AudioCheck.bin"), CheckFile(2, 1, 2));
  TestGame game;
  game.store().InitResInfo(eRT_Audio, "");
  EXPECT_FALSE(Exists(Index("AudioCheck.bin")));
  EXPECT_TRUE(Exists(Music("vtwgaudio_2.wav")));
}

TEST_F(RecordsTest, CheckFileOfAnotherTypeFailsTheAssertion) {
  WriteBytes(Index("AudioCheck.bin"), CheckFile(1, 0, 1));
  TestGame game;
  EXPECT_DEATH(game.store().CheckResInfo(eRT_Audio),
               mediatest::AssertRegex("Src/MediaCenter/MediaCenter.cpp", "(int)resType == type"));
}

TEST_F(RecordsTest, CheckFileWithAnUnknownOperationFailsTheAssertion) {
  WriteBytes(Index("AudioCheck.bin"), CheckFile(3, 1, 1));
  TestGame game;
  EXPECT_DEATH(game.store().CheckResInfo(eRT_Audio),
               mediatest::AssertRegex("Src/MediaCenter/MediaCenter.cpp", "operType > ePOT_Invalid && operType < ePOT_Num"));
}

TEST_F(RecordsTest, CheckFileWithoutANumberFailsTheAssertion) {
  WriteBytes(Index("AudioCheck.bin"), CheckFile(1, 1, -1));
  TestGame game;
  EXPECT_DEATH(game.store().CheckResInfo(eRT_Audio),
               mediatest::AssertRegex("Src/MediaCenter/MediaCenter.cpp", "resId != -1"));
}

// --- stories ------------------------------------------------------------------

TEST_F(RecordsTest, TwoStoriesOfEqualVersionKeepTheirOrderThroughSaveAndLoad) {
  mkdir((root + "LocalData/Player1/MicrophoneWidget").c_str(), 0755);
  const int ids[4] = {1, 2, 3, 4};
  const int versions[4] = {3, 2, 3, 1};
  TestGame game;
  for (int i = 0; i < 4; ++i) {
    ResInfo story;
    story.mResType = eRT_ScrapBook;
    story.mResId = ids[i];
    story.mSSVersion = versions[i];
    story.mName = StoryFolder(ids[i]);
    mkdir(story.mName.c_str(), 0755);
    WriteText(story.mName + "dataFile.json", "{}");
    game.store().GetResInfoList(eRT_ScrapBook).push_back(story);
  }
  game.store().SaveResInfo(eRT_ScrapBook);
  TestGame again;
  again.store().LoadResInfo(eRT_ScrapBook);
  std::vector<int> order;
  for (const ResInfo& r : again.store().GetResInfoList(eRT_ScrapBook)) order.push_back(r.mResId);
  EXPECT_EQ((std::vector<int>{4, 2, 1, 3}), order);
  EXPECT_EQ(1, again.store().GetStoryStudioResInfoIt(3)->mResId);
  EXPECT_EQ(again.store().GetResInfoList(eRT_ScrapBook).end(), again.store().GetStoryStudioResInfoItEnd(3));
  EXPECT_EQ(1, again.store().GetStoryStudioResInfoItEnd(2)->mResId);
  EXPECT_EQ(again.store().GetResInfoList(eRT_ScrapBook).end(), again.store().GetStoryStudioResInfoIt(9));
}

// --- loading one type at start -----------------------------------------------

TEST_F(RecordsTest, FolderPhotosAreListedFromTheFolderNumberedFromZero) {
  const std::string folder = dir.path() + "/camera";
  mkdir(folder.c_str(), 0755);
  WriteText(folder + "/b.jpg", "b");
  WriteText(folder + "/a.jpg", "a");
  WriteText(folder + "/readme.txt", "t");
  TestGame game;
  game.store().InitResInfo(eRT_SpecificFolderPhoto, folder);
  const ResInfoList& list = game.store().GetResInfoList(eRT_SpecificFolderPhoto);
  ASSERT_EQ(3u, list.size());
  int expectedId = 0;
  const char* names[3] = {"a.jpg", "b.jpg", "readme.txt"};
  for (const ResInfo& r : list) {
    EXPECT_EQ(eRT_SpecificFolderPhoto, r.mResType);
    EXPECT_EQ(expectedId, r.mResId);
    EXPECT_EQ(folder + "/" + names[expectedId], r.mName);
    ++expectedId;
  }
  EXPECT_FALSE(Exists(Index("vtwgSpecificFolderPhoto.bin"))) << "nothing of this list is saved";
}

// --- lookups ------------------------------------------------------------------

TEST_F(RecordsTest, LookupsFindTheFirstRecordByNumberOrName) {
  TestGame game;
  MediaCenter& store = game.store();
  EXPECT_EQ(nullptr, store.getLastPhotoRes());
  ResInfo* first = store.CreateNewRes(eRT_Photo);
  ResInfo* second = store.CreateNewRes(eRT_Photo);
  EXPECT_EQ(first, store.GetResInfo(eRT_Photo, 1, false));
  EXPECT_EQ(second, store.GetResInfo(eRT_Photo, std::string("vtwgphoto_2.jpg"), false));
  EXPECT_EQ(nullptr, store.GetResInfo(eRT_Photo, std::string("vtwgphoto_2.jp"), false));
  EXPECT_EQ(nullptr, store.GetResInfo(eRT_Photo, 9, false));
  EXPECT_EQ(second, store.getLastPhotoRes());
  EXPECT_EQ(store.GetResInfoList(eRT_Photo).end(), store.GetResInfoIt(eRT_Photo, 9));
  EXPECT_EQ(1, store.GetResInfoIt(eRT_Photo, 1)->mResId);
}

TEST_F(RecordsTest, LookupOfATypeOutOfRangeFailsTheAssertion) {
  TestGame game;
  EXPECT_DEATH(game.store().GetResInfo(eRT_Num, 1, false),
               mediatest::AssertRegex("Src/MediaCenter/MediaCenter.cpp", "type > eRT_Invalid && type < eRT_Num"));
  EXPECT_DEATH(game.store().SaveResInfo(eRT_Invalid),
               mediatest::AssertRegex("Src/MediaCenter/MediaCenter.cpp", "resType > eRT_Invalid && resType < eRT_Num"));
  EXPECT_DEATH(game.store().LoadResInfoFromBin(eRT_Num),
               mediatest::AssertRegex("Src/MediaCenter/MediaCenter.cpp", "resType > eRT_Invalid && resType < eRT_Num"));
}

TEST_F(RecordsTest, InitializeTakesTheMediaFoldersFromTheArchive) {
  TestGame game;
  EXPECT_EQ(Shared("Photos/"), game.store().GetResPath(eRT_Photo));
  EXPECT_EQ(Shared("Music/"), game.store().GetResPath(eRT_Audio));
  EXPECT_EQ(Shared("Videos/"), game.store().GetResPath(eRT_Video));
  EXPECT_EQ(Shared("Art/"), game.store().GetResPath(eRT_Art));
  for (int type = 4; type < 9; ++type) EXPECT_EQ("", game.store().GetResPath(EResType(type))) << type;
  EXPECT_EQ(eRT_Invalid, game.store().GetOperResType());
}

// --- the XML form -------------------------------------------------------------

TEST_F(RecordsTest, XmlIndexHasTheRootVersionAndOneItemPerRecordWithoutDeclaration) {
  TestGame game;
  ResInfo* clip = game.store().CreateNewRes(eRT_Audio);
  clip->mLength = 2.5f;
  clip->mViewMode = 1;
  game.store().CreateNewRes(eRT_Audio)->mLength = 10.0f;
  game.store().SaveResInfoToXml(eRT_Audio);
  const std::string text = ReadText(Index("vtwgAudioResInfo.xml"));
  EXPECT_EQ(0u, text.find("<WidgetAudio Version=\"9213426\">")) << text;
  TiXmlDocument document;
  document.Parse(text.c_str());
  const TiXmlElement* rootElement = document.FirstChildElement("WidgetAudio");
  ASSERT_NE(nullptr, rootElement);
  const TiXmlElement* item = rootElement->FirstChildElement();
  ASSERT_NE(nullptr, item);
  EXPECT_STREQ("AudioItem", item->Value());
  EXPECT_STREQ("1", item->Attribute("ResID"));
  EXPECT_STREQ("1", item->Attribute("Type"));
  EXPECT_STREQ("1", item->Attribute("ViewMode"));
  double length = 0;
  EXPECT_EQ(TIXML_SUCCESS, item->QueryDoubleAttribute("Length", &length));
  EXPECT_DOUBLE_EQ(2.5, length);
  EXPECT_EQ(nullptr, item->Attribute("Name"));
  ASSERT_NE(nullptr, item->NextSiblingElement());
  EXPECT_EQ(nullptr, item->NextSiblingElement()->NextSiblingElement());
}

TEST_F(RecordsTest, XmlIndexOfFolderAudioCarriesTheNameAndVersionZero) {
  TestGame game;
  ResInfo* clip = game.store().CreateNewRes(eRT_SpecificFolderAudio);
  clip->mName = "/card/voice/hello.wav";
  game.store().SaveResInfoToXml(eRT_SpecificFolderAudio);
  TiXmlDocument document;
  ASSERT_TRUE(document.LoadFile(Index("vtwgSpecificFolderAudio.xml").c_str()));
  const TiXmlElement* rootElement = document.FirstChildElement("WidgetSpecificFolderAudio");
  ASSERT_NE(nullptr, rootElement);
  EXPECT_STREQ("0", rootElement->Attribute("Version"));
  const TiXmlElement* item = rootElement->FirstChildElement("SpecificFolderAudioItem");
  ASSERT_NE(nullptr, item);
  EXPECT_STREQ("/card/voice/hello.wav", item->Attribute("Name"));
  EXPECT_EQ(nullptr, item->Attribute("Length"));
}

TEST_F(RecordsTest, XmlIndexLoadsBackSkippingForeignItems) {
  WriteText(Index("vtwgPhotoResInfo.xml"),
            "<WidgetPhoto Version=\"9213426\">\n"
            "  <PhotoItem ResID=\"4\" Type=\"0\" ViewMode=\"1\" ImgWidth=\"240\" ImgHeight=\"320\" />\n"
            "  <Other ResID=\"99\" Type=\"0\" />\n"
            "  <PhotoItem ResID=\"6\" Type=\"0\" ViewMode=\"0\" ImgWidth=\"640\" ImgHeight=\"480\" />\n"
            "</WidgetPhoto>\n");
  TestGame game;
  game.store().LoadResInfoFromXml(eRT_Photo);
  const ResInfoList& list = game.store().GetResInfoList(eRT_Photo);
  ASSERT_EQ(2u, list.size());
  EXPECT_EQ(4, list.front().mResId);
  EXPECT_EQ(1, list.front().mViewMode);
  EXPECT_EQ(240, list.front().mImgWidth);
  EXPECT_EQ(320, list.front().mImgHeight);
  EXPECT_EQ("vtwgphoto_4.jpg", list.front().mName);
  EXPECT_EQ(6, list.back().mResId);
  EXPECT_EQ(6u, game.store().GetMaxResId(eRT_Photo));
}

TEST_F(RecordsTest, XmlIndexOfAnotherVersionIsRefused) {
  WriteText(Index("vtwgAudioResInfo.xml"), "<WidgetAudio Version=\"7\"><AudioItem ResID=\"1\" Type=\"1\" /></WidgetAudio>");
  TestGame game;
  const std::string out = CaptureOut([&] { game.store().LoadResInfoFromXml(eRT_Audio); });
  EXPECT_EQ("File version is not same:" + Index("vtwgAudioResInfo.xml") + "\n", out);
  EXPECT_TRUE(game.store().GetResInfoList(eRT_Audio).empty());
}

TEST_F(RecordsTest, XmlItemOfAnInvalidTypeFailsTheAssertion) {
  WriteText(Index("vtwgAudioResInfo.xml"), "<WidgetAudio Version=\"9213426\"><AudioItem ResID=\"1\" Type=\"9\" /></WidgetAudio>");
  TestGame game;
  EXPECT_DEATH(game.store().LoadResInfoFromXml(eRT_Audio),
               mediatest::AssertRegex("Src/MediaCenter/MediaCenter.cpp",
                                      "newResInfo.mResType > eRT_Invalid && newResInfo.mResType < eRT_Num"));
}

TEST_F(RecordsTest, XmlRoundTripKeepsTheRecords) {
  TestGame game;
  for (int i = 0; i < 3; ++i) {
    ResInfo* art = game.store().CreateNewRes(eRT_UnSharePhoto);
    art->mName = "/card/p" + std::to_string(i) + ".jpg";
    art->mImgWidth = 100 + i;
    art->mImgHeight = 200 + i;
  }
  game.store().SaveResInfoToXml(eRT_UnSharePhoto);
  TestGame again;
  again.store().LoadResInfoFromXml(eRT_UnSharePhoto);
  const ResInfoList& list = again.store().GetResInfoList(eRT_UnSharePhoto);
  ASSERT_EQ(3u, list.size());
  EXPECT_EQ("/card/p2.jpg", list.back().mName);
  EXPECT_EQ(102, list.back().mImgWidth);
  EXPECT_EQ(202, list.back().mImgHeight);
}

}  // namespace
