// Numbers, names, room, protected operations, storing and deleting.
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <string>

#include "MediaFixture.h"

namespace {

using mediatest::AssertRegex;
using mediatest::CaptureOut;
using mediatest::MediaTest;
using mediatest::TestGame;
using zvtest::Exists;
using zvtest::ListFolder;
using zvtest::ReadText;
using zvtest::WriteText;

const char kSource[] = "Src/MediaCenter/MediaCenter.cpp";

class LifeCycleTest : public MediaTest {};

// --- room ---------------------------------------------------------------------

TEST_F(LifeCycleTest, CreateNewResBelowTheReserveGivesNullAndKeepsTheMaximum) {
  TestGame game;
  solva::SetFreeBytes(524287999);
  ResInfo* refused = nullptr;
  const std::string out = CaptureOut([&] { refused = game.store().CreateNewRes(eRT_Audio); });
  EXPECT_EQ(nullptr, refused);
  EXPECT_EQ("Not Enough Space to create ResInfo!\n", out);
  EXPECT_EQ(0u, game.store().GetMaxResId(eRT_Audio));
  EXPECT_TRUE(game.store().GetResInfoList(eRT_Audio).empty());
  EXPECT_EQ(eMedia_NoSpace, game.store().RequestResSpace(eRT_Audio));

  solva::SetFreeBytes(524288000);
  EXPECT_EQ(eMedia_Ok, game.store().RequestResSpace(eRT_Audio));
  ResInfo* made = game.store().CreateNewRes(eRT_Audio);
  ASSERT_NE(nullptr, made);
  EXPECT_EQ(1, made->mResId);
  EXPECT_EQ(1u, game.store().GetMaxResId(eRT_Audio));
}

TEST_F(LifeCycleTest, AvailableVideoDurationCountsWholeSecondsAboveTheVideoReserve) {
  TestGame game;
  solva::SetFreeBytes(20971519);
  EXPECT_EQ(0, game.store().availableVideoDuration());
  solva::SetFreeBytes(20971520);
  EXPECT_EQ(0, game.store().availableVideoDuration());
  solva::SetFreeBytes(20971520 + 5 * 262144 - 1);
  EXPECT_EQ(0, game.store().availableVideoDuration());
  solva::SetFreeBytes(20971520 + 5 * 262144);
  EXPECT_EQ(5, game.store().availableVideoDuration());
  solva::SetFreeBytes(20971520 + 600 * 262144 + 5);
  EXPECT_EQ(600, game.store().availableVideoDuration());
}

TEST_F(LifeCycleTest, MediaConsumedRatioIsOneAtTheReserveAndFallsToZeroAtTheDiskSize) {
  TestGame game;
  solva::SetFreeBytes(0);
  EXPECT_FLOAT_EQ(1.0f, game.store().MediaConsumedRatio());
  solva::SetFreeBytes(524288000);
  EXPECT_FLOAT_EQ(1.0f, game.store().MediaConsumedRatio());
  solva::SetFreeBytes(524288000 + (1825361100 - 524288000) / 2);
  EXPECT_NEAR(0.5f, game.store().MediaConsumedRatio(), 1e-6);
  solva::SetFreeBytes(1825361100);
  EXPECT_NEAR(0.0f, game.store().MediaConsumedRatio(), 1e-6);
  solva::SetFreeBytes(4000000000ll);
  EXPECT_LT(game.store().MediaConsumedRatio(), 0.0f) << "no lower clamp";
  EXPECT_EQ(4000000000u, game.store().availableMediaBytes());
}

TEST_F(LifeCycleTest, RequestResSpaceForFolderPhotosFailsTheAssertion) {
  TestGame game;
  EXPECT_DEATH(game.store().RequestResSpace(eRT_SpecificFolderPhoto), AssertRegex(kSource, "0"));
  EXPECT_DEATH(game.store().RequestResSpace(eRT_Num),
               AssertRegex(kSource, "resType > eRT_Invalid && resType < eRT_Num"));
}

// --- numbers and names --------------------------------------------------------

TEST_F(LifeCycleTest, NumbersStartAtOneAndGoUpPerType) {
  TestGame game;
  const std::string out = CaptureOut([&] {
    EXPECT_EQ(1, game.store().CreateNewRes(eRT_Audio)->mResId);
    EXPECT_EQ(2, game.store().CreateNewRes(eRT_Audio)->mResId);
    EXPECT_EQ(1, game.store().CreateNewRes(eRT_Video)->mResId);
  });
  EXPECT_EQ("New ResInfo:vtwgaudio_1.wav\nNew ResInfo:vtwgaudio_2.wav\nNew ResInfo:vtwgvideo_1.avi\n", out);
  ResInfo& last = game.store().GetResInfoList(eRT_Audio).back();
  EXPECT_EQ(eRT_Audio, last.mResType);
  EXPECT_EQ(0.0f, last.mLength);
  EXPECT_EQ(1, last.mSSVersion);
}

TEST_F(LifeCycleTest, RefreshMaxIdIndexComparesAsUnsigned) {
  TestGame game;
  game.store().RefreshMaxIdIndex(eRT_Art, 5);
  game.store().RefreshMaxIdIndex(eRT_Art, 3);
  EXPECT_EQ(5u, game.store().GetMaxResId(eRT_Art));
  game.store().RefreshMaxIdIndex(eRT_Art, -2);
  EXPECT_EQ(0xFFFFFFFEu, game.store().GetMaxResId(eRT_Art));
}

TEST_F(LifeCycleTest, AfterDeletingTheNewestTheNextNumberIsHigher) {
  TestGame game;
  game.store().CreateNewRes(eRT_Audio);
  const int newest = game.store().CreateNewRes(eRT_Audio)->mResId;
  game.store().DeleteRes(eRT_Audio, newest, true);
  EXPECT_EQ(newest + 1, game.store().CreateNewRes(eRT_Audio)->mResId);
}

TEST_F(LifeCycleTest, GenerateResNameOfFolderPhotosIsEmpty) {
  TestGame game;
  EXPECT_EQ("", game.store().GenerateResName(eRT_SpecificFolderPhoto, 3));
}

TEST_F(LifeCycleTest, PhotoTwelveIsVtwgphoto12WithItsThumbnailInThumb) {
  TestGame game;
  const std::string name = game.store().GenerateResName(eRT_Photo, 12);
  EXPECT_EQ("vtwgphoto_12.jpg", name);
  EXPECT_EQ(Shared("Photos/Thumb/vtwgphoto_thumb_12.jpg"),
            game.store().GetThumbImageName(game.store().GetResPath(eRT_Photo) + name));
}

TEST_F(LifeCycleTest, NamesOfEveryType) {
  TestGame game;
  MediaCenter& store = game.store();
  EXPECT_EQ("vtwgaudio_7.wav", store.GenerateResName(eRT_Audio, 7));
  EXPECT_EQ("vtwgvideo_7.avi", store.GenerateResName(eRT_Video, 7));
  EXPECT_EQ("vtwgart_7.jpg", store.GenerateResName(eRT_Art, 7));
  EXPECT_EQ("vtwgunsharephoto_7.jpg", store.GenerateResName(eRT_UnSharePhoto, 7));
  EXPECT_EQ("vtwspecificart_7.jpg", store.GenerateResName(eRT_SpecificFolderArt, 7));
  EXPECT_EQ("vtwspecificaudio_7.wav", store.GenerateResName(eRT_SpecificFolderAudio, 7));
  EXPECT_EQ("vtwgphoto_-5.jpg", store.GenerateResName(eRT_Photo, -5));
}

TEST_F(LifeCycleTest, StoryNameIsItsFolderAndPointsTheArchiveAtIt) {
  solva::SetCurrentPlayer(2);
  TestGame game;
  const std::string name = game.store().GenerateResName(eRT_ScrapBook, 4);
  EXPECT_EQ(root + "LocalData/Player2/MicrophoneWidget/SD-2-4/", name);
  EXPECT_EQ(name, game.archive().mScrapBookPath);
  EXPECT_EQ(name + "Audio/", game.archive().mScrapBookAudioPath);
  EXPECT_FALSE(Exists(name)) << "the story writer makes the folder";
}

TEST_F(LifeCycleTest, GenerateResNameAssertsTypeAndNumber) {
  TestGame game;
  EXPECT_DEATH(game.store().GenerateResName(eRT_Audio, -1), AssertRegex(kSource, "resId != -1"));
  EXPECT_DEATH(game.store().GenerateResName(eRT_Invalid, 1),
               AssertRegex(kSource, "type > eRT_Invalid && type < eRT_Num"));
}

TEST_F(LifeCycleTest, CreateNewResOfFolderPhotosFailsTheAssertion) {
  TestGame game;
  EXPECT_DEATH(game.store().CreateNewRes(eRT_SpecificFolderPhoto), AssertRegex(kSource, "0"));
  EXPECT_DEATH(game.store().CreateNewRes(eRT_Invalid),
               AssertRegex(kSource, "resType > eRT_Invalid && resType < eRT_Num"));
}

// --- derived picture names ------------------------------------------------------

TEST_F(LifeCycleTest, ThumbnailOfABareNameHasNoSubfolder) {
  TestGame game;
  EXPECT_EQ("vtwgaudio_thumb_7.jpg", game.store().GetThumbImageName("vtwgaudio_7.wav"));
}

TEST_F(LifeCycleTest, BackslashCountsOnlyWhereNoSlashExists) {
  TestGame game;
  EXPECT_EQ("a/Thumb\\b_thumb_1.jpg", game.store().GetThumbImageName("a\\b_1.jpg"));
  EXPECT_EQ("x\\y/Thumb/b_thumb_1.jpg", game.store().GetThumbImageName("x\\y/b_1.jpg"));
}

TEST_F(LifeCycleTest, VideoCoverAndThumbnailLieInTheirSubfolders) {
  TestGame game;
  EXPECT_EQ("/x/Videos/Thumb/vtwgvideo_thumb_3.jpg", game.store().GetThumbImageName("/x/Videos/vtwgvideo_3.avi"));
  EXPECT_EQ("/x/Videos/Cover/vtwgvideo_cover_3.jpg", game.store().GetCoverPhotoName("/x/Videos/vtwgvideo_3.avi"));
}

TEST_F(LifeCycleTest, ThumbnailOfAPathWithoutUnderscoreThrowsOutOfRange) {
  TestGame game;
  EXPECT_THROW(game.store().GetThumbImageName("/x/Photos/picture.jpg"), std::out_of_range);
}

// --- protected operations -----------------------------------------------------

TEST_F(LifeCycleTest, TwoStartOperProtectedInARowFailTheAssertion) {
  TestGame game;
  game.store().StartOperProtected(eRT_Audio, 1, MediaCenter::ePOT_Create);
  EXPECT_DEATH(game.store().StartOperProtected(eRT_Photo, 1, MediaCenter::ePOT_Create),
               AssertRegex(kSource, "mOperResType == eRT_Invalid"));
  game.store().EndOperProtected(eRT_Audio);
}

TEST_F(LifeCycleTest, ProtectedOperationArgumentsAreAsserted) {
  TestGame game;
  EXPECT_DEATH(game.store().StartOperProtected(eRT_Invalid, 1, MediaCenter::ePOT_Create),
               AssertRegex(kSource, "resType != eRT_Invalid"));
  EXPECT_DEATH(game.store().StartOperProtected(eRT_Audio, 1, MediaCenter::ePOT_Invalid),
               AssertRegex(kSource, "operType > ePOT_Invalid && operType < ePOT_Num"));
  EXPECT_DEATH(game.store().EndOperProtected(eRT_Audio), AssertRegex(kSource, "mOperResType == type"));
  EXPECT_DEATH(game.store().EndOperProtected(eRT_Invalid), AssertRegex(kSource, "type != eRT_Invalid"));
}

TEST_F(LifeCycleTest, UnwritableCheckFileLeavesTheOperationUnprotectedButOpen) {
  TestGame game;
  game.archive().mFileIndexPath = dir.path() + "/no/such/folder/";
  const std::string out =
      CaptureOut([&] { game.store().StartOperProtected(eRT_Audio, 1, MediaCenter::ePOT_Create); });
  EXPECT_EQ("Open Filee Error:" + dir.path() + "/no/such/folder/AudioCheck.bin", out);
  EXPECT_EQ(eRT_Audio, game.store().GetOperResType());
  game.store().EndOperProtected(eRT_Audio);
  EXPECT_EQ(eRT_Invalid, game.store().GetOperResType());
}

// --- storing ------------------------------------------------------------------

TEST_F(LifeCycleTest, RecorderSaveMovesTheTemporaryClipAndListsIt) {
  TestGame game;
  MediaCenter& store = game.store();
  ResInfo* clip = store.CreateNewRes(eRT_Audio);
  EXPECT_EQ(Music("audio.tmp"), store.temporaryAudioName());
  EXPECT_EQ(Shared("Videos/video.tmp"), store.temporaryVideoName());
  WriteText(store.temporaryAudioName(), "RIFF....WAVE");
  const std::string out = CaptureOut([&] {
    store.StartOperProtected(eRT_Audio, clip->mResId, MediaCenter::ePOT_Create);
    store.SaveResInfo(eRT_Audio);
    store.StoreAudioToDisk(eRT_Audio, clip->mResId);
    store.EndOperProtected(eRT_Audio);
  });
  EXPECT_NE(std::string::npos, out.find("Audio filename:" + Music("vtwgaudio_1.wav") + "\n"));
  EXPECT_EQ("RIFF....WAVE", ReadText(Music("vtwgaudio_1.wav")));
  EXPECT_FALSE(Exists(Music("audio.tmp")));
  EXPECT_FALSE(Exists(Index("AudioCheck.bin")));
  EXPECT_EQ(Music("vtwgaudio_1.wav") + "\n", ReadText(Upload("MusicPkg/UploadAudioList.txt")));
  TestGame again;
  again.store().InitResInfo(eRT_Audio, "");
  ASSERT_EQ(1u, again.store().GetResInfoList(eRT_Audio).size());
  EXPECT_EQ("vtwgaudio_1.wav", again.store().GetResInfoList(eRT_Audio).front().mName);
}

TEST_F(LifeCycleTest, FolderAudioIsStoredAtItsWholePathAndNotListed) {
  TestGame game;
  ResInfo* clip = game.store().CreateNewRes(eRT_SpecificFolderAudio);
  clip->mName = dir.path() + "/greeting.wav";
  WriteText(game.store().temporaryAudioName(), "voice");
  game.store().StoreAudioToDisk(eRT_SpecificFolderAudio, clip->mResId);
  EXPECT_EQ("voice", ReadText(dir.path() + "/greeting.wav"));
  EXPECT_EQ(std::vector<std::string>{}, ListFolder(root + "Upload/MusicPkg"));
}

TEST_F(LifeCycleTest, StoreAudioToDiskAssertsItsTypeAndRecord) {
  TestGame game;
  EXPECT_DEATH(game.store().StoreAudioToDisk(eRT_Video, 1),
               AssertRegex(kSource, "type == eRT_Audio || type == eRT_SpecificFolderAudio"));
  EXPECT_DEATH(game.store().StoreAudioToDisk(eRT_Audio, 1), AssertRegex(kSource, "resInfo"));
}

TEST_F(LifeCycleTest, StoreVideoToDiskMovesTheTemporaryVideo) {
  TestGame game(2);
  ResInfo* video = game.store().CreateNewRes(eRT_Video);
  WriteText(game.store().temporaryVideoName(), "AVI");
  const std::string out = CaptureOut([&] { game.store().StoreVideoToDisk(video->mResId); });
  EXPECT_NE(std::string::npos, out.find("StoreVideo:" + Shared("Videos/vtwgvideo_1.avi") + " to Disk!\n"));
  EXPECT_EQ("AVI", ReadText(Shared("Videos/vtwgvideo_1.avi")));
  EXPECT_EQ(Shared("Videos/vtwgvideo_1.avi") + "\n", ReadText(Upload("VideosPkg/UploadVideoList.txt")));
  EXPECT_DEATH(game.store().StoreVideoToDisk(9), AssertRegex(kSource, "resInfo"));
}

// --- deleting -----------------------------------------------------------------

TEST_F(LifeCycleTest, DeleteResOfAnUnknownNumberChangesNothingNotEvenTheCheckFile) {
  TestGame game;
  game.store().CreateNewRes(eRT_Audio);
  const std::vector<std::string> before = ListFolder(Index(""));
  const std::vector<std::string> uploads = ListFolder(Upload("MusicPkg"));
  game.store().DeleteRes(eRT_Audio, 9, true);
  EXPECT_EQ(before, ListFolder(Index("")));
  EXPECT_EQ(uploads, ListFolder(Upload("MusicPkg")));
  EXPECT_EQ(1u, game.store().GetResInfoList(eRT_Audio).size());
  EXPECT_EQ(eRT_Invalid, game.store().GetOperResType());
}

TEST_F(LifeCycleTest, DeletingAPhotoRemovesItsFilesIndexEntryAndListLine) {
  TestGame game(1);
  ResInfo* photo = game.store().CreateNewRes(eRT_Photo);
  const int id = photo->mResId;
  WriteText(Shared("Photos/vtwgphoto_1.jpg"), "p");
  WriteText(Shared("Photos/Thumb/vtwgphoto_thumb_1.jpg"), "t");
  game.store().WriteUploadFileIncreased(photo);
  game.store().SaveResInfo(eRT_Photo);
  game.store().DeleteRes(eRT_Photo, id, false);
  EXPECT_FALSE(Exists(Shared("Photos/vtwgphoto_1.jpg")));
  EXPECT_FALSE(Exists(Shared("Photos/Thumb/vtwgphoto_thumb_1.jpg")));
  EXPECT_FALSE(Exists(Index("PhotoCheck.bin")));
  EXPECT_EQ("", ReadText(Upload("PhotosPkg/UploadPhotoList.txt")));
  EXPECT_EQ(8u, zvtest::ReadBytes(Index("vtwgPhotoResInfo.bin")).size());
  EXPECT_TRUE(game.store().GetResInfoList(eRT_Photo).empty());
}

TEST_F(LifeCycleTest, DeletingAVideoRemovesItsCoverToo) {
  TestGame game(2);
  game.store().CreateNewRes(eRT_Video);
  WriteText(Shared("Videos/vtwgvideo_1.avi"), "v");
  WriteText(Shared("Videos/Thumb/vtwgvideo_thumb_1.jpg"), "t");
  WriteText(Shared("Videos/Cover/vtwgvideo_cover_1.jpg"), "c");
  game.store().DeleteRes(eRT_Video, &game.store().GetResInfoList(eRT_Video).front(), true);
  EXPECT_FALSE(Exists(Shared("Videos/vtwgvideo_1.avi")));
  EXPECT_FALSE(Exists(Shared("Videos/Thumb/vtwgvideo_thumb_1.jpg")));
  EXPECT_FALSE(Exists(Shared("Videos/Cover/vtwgvideo_cover_1.jpg")));
}

TEST_F(LifeCycleTest, DeletingFolderArtLeavesItsThumbnail) {
  TestGame game;
  ResInfo* art = game.store().CreateNewRes(eRT_SpecificFolderArt);
  art->mName = dir.path() + "/card_1.jpg";
  WriteText(art->mName, "a");
  ASSERT_EQ(0, mkdir((dir.path() + "/Thumb").c_str(), 0755));
  WriteText(dir.path() + "/Thumb/card_thumb_1.jpg", "t");
  game.store().DeleteRes(eRT_SpecificFolderArt, 1, true);
  EXPECT_FALSE(Exists(dir.path() + "/card_1.jpg"));
  EXPECT_TRUE(Exists(dir.path() + "/Thumb/card_thumb_1.jpg"));
}

TEST_F(LifeCycleTest, DeletingAStoryRemovesItsFolderInProcessAndKeepsItsListLine) {
  TestGame game;
  ResInfo* story = game.store().CreateNewRes(eRT_ScrapBook);
  const std::string folder = story->mName;
  mkdir((root + "LocalData/Player1/MicrophoneWidget").c_str(), 0755);
  mkdir(folder.c_str(), 0755);
  mkdir((folder + "Image").c_str(), 0755);
  WriteText(folder + "dataFile.json", "{}");
  WriteText(folder + "Image/Page1.jpg", "page");
  game.store().WriteUploadFileIncreased(story);
  game.store().DeleteRes(eRT_ScrapBook, story->mResId, true);
  EXPECT_FALSE(Exists(folder));
  EXPECT_TRUE(game.store().GetResInfoList(eRT_ScrapBook).empty());
  EXPECT_FALSE(Exists(root + "LocalData/Player1/ScrapBookCheck.bin")) << "no protected operation";
  EXPECT_EQ(folder + "\n", ReadText(Upload("StoryBooks/UploadScrapBookList.txt")))
      << "the list is searched with backslashes and keeps the line";
}

TEST_F(LifeCycleTest, DeleteResAssertsItsArguments) {
  TestGame game;
  EXPECT_DEATH(game.store().DeleteRes(eRT_Audio, ResID(-1), true), AssertRegex(kSource, "resid != -1"));
  EXPECT_DEATH(game.store().DeleteRes(eRT_Num, 1, true), AssertRegex(kSource, "type > eRT_Invalid && type < eRT_Num"));
  EXPECT_DEATH(game.store().DeleteRes(eRT_Audio, static_cast<ResInfo*>(nullptr), true), AssertRegex(kSource, "resInfo"));
}

}  // namespace
