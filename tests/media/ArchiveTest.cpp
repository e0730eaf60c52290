#include <gtest/gtest.h>
#include <sys/stat.h>

#include <string>
#include <vector>

#include "BaseUtils.h"
#include "MediaFixture.h"

namespace {

using mediatest::MediaTest;
using mediatest::TestGame;
using zvtest::Exists;
using zvtest::ListFolder;
using zvtest::WriteText;

class ArchiveTest : public MediaTest {};

TEST_F(ArchiveTest, InitializeFillsTheGalleryFoldersFromTheDevice) {
  TestGame game;
  ZvArchive& archive = game.archive();
  const std::string shared = root + "LocalData/Shared/";
  EXPECT_EQ(title, archive.mTitlePath);
  EXPECT_EQ(root + "LocalData/Player1/MicrophoneWidget/", archive.mPlayerDataPath);
  EXPECT_EQ(shared + "FileIndex/", archive.mFileIndexPath);
  EXPECT_EQ(shared + "Photos/", archive.mPhotoPath);
  EXPECT_EQ(shared + "Photos/Thumb/", archive.mPhotoThumbPath);
  EXPECT_EQ(shared + "Videos/", archive.mVideoPath);
  EXPECT_EQ(shared + "Music/", archive.mMusicPath);
  EXPECT_EQ(shared + "Art/", archive.mArtPath);
  EXPECT_EQ(shared + "Art/Thumb/", archive.mArtThumbPath);
  EXPECT_EQ(root + "LocalData/Player1/", archive.mPlayerRootPath);
  EXPECT_EQ(1, archive.mCurrentPlayerId);
  EXPECT_EQ("en-US", archive.GetCountryLocaleId());
  EXPECT_NE(nullptr, archive.mKernelSvc);
  EXPECT_EQ("", archive.mScrapBookPath);
  EXPECT_EQ("", archive.mScrapBookAudioPath);
  EXPECT_EQ("", archive.mScrapBookImagePath);
  EXPECT_EQ("", archive.mUploadStoryPath);
}

TEST_F(ArchiveTest, VideoThumbnailFolderEndsAsThumbAndNoFieldHoldsTheCoverFolder) {
  TestGame game;
  EXPECT_EQ(root + "LocalData/Shared/Videos/Thumb/", game.archive().mVideoThumbPath);
  EXPECT_EQ("", game.archive().mVideoCoverPath);
}

TEST_F(ArchiveTest, MaskFourSetsOnlyTheMusicUploadPath) {
  TestGame game(4);
  EXPECT_EQ(root + "Upload/MusicPkg/", game.archive().mUploadMusicPath);
  EXPECT_EQ("", game.archive().mUploadPhotoPath);
  EXPECT_EQ("", game.archive().mUploadVideoPath);
  EXPECT_EQ("", game.archive().mUploadArtPath);
}

TEST_F(ArchiveTest, MaskZeroLeavesAllFourUploadPathsEmpty) {
  TestGame game(0);
  EXPECT_EQ("", game.archive().mUploadPhotoPath);
  EXPECT_EQ("", game.archive().mUploadVideoPath);
  EXPECT_EQ("", game.archive().mUploadMusicPath);
  EXPECT_EQ("", game.archive().mUploadArtPath);
}

TEST_F(ArchiveTest, MaskSixteenPassesTheGateButFillsNoUploadPath) {
  TestGame game(16);
  EXPECT_EQ("", game.archive().mUploadPhotoPath);
  EXPECT_EQ("", game.archive().mUploadVideoPath);
  EXPECT_EQ("", game.archive().mUploadMusicPath);
  EXPECT_EQ("", game.archive().mUploadArtPath);
}

TEST_F(ArchiveTest, MaskFifteenFillsAllFourUploadPaths) {
  TestGame game(15);
  EXPECT_EQ(root + "Upload/PhotosPkg/", game.archive().mUploadPhotoPath);
  EXPECT_EQ(root + "Upload/VideosPkg/", game.archive().mUploadVideoPath);
  EXPECT_EQ(root + "Upload/MusicPkg/", game.archive().mUploadMusicPath);
  EXPECT_EQ(root + "Upload/ArtPkg/", game.archive().mUploadArtPath);
}

TEST_F(ArchiveTest, UserTypeOfPlayerSevenIsThree) {
  solva::SetCurrentPlayer(7);
  TestGame game;
  EXPECT_EQ(3, game.archive().GetUserType());
}

TEST_F(ArchiveTest, UserTypeOfPlayerZeroIsZero) {
  solva::SetCurrentPlayer(0);
  TestGame game;
  EXPECT_EQ(0, game.archive().GetUserType());
}

TEST_F(ArchiveTest, UserTypesOfPlayersOneAndTwoAreThemselves) {
  solva::SetCurrentPlayer(2);
  TestGame two;
  EXPECT_EQ(2, two.archive().GetUserType());
  EXPECT_EQ(2, two.archive().getCurrentPlayID());
  solva::SetCurrentPlayer(1);
  TestGame one;
  EXPECT_EQ(1, one.archive().GetUserType());
}

TEST_F(ArchiveTest, GetAllFileNameInPathOnAnEmptyFolderIsFalseAndLeavesNamesUntouched) {
  TestGame game;
  const std::string empty = dir.path() + "/empty";
  ASSERT_EQ(0, mkdir(empty.c_str(), 0755));
  std::vector<std::string> names = {"/kept/as/it/is.jpg"};
  EXPECT_FALSE(game.archive().GetAllFileNameInPath(empty, "*.jpg", names, 0));
  EXPECT_EQ(std::vector<std::string>{"/kept/as/it/is.jpg"}, names);
}

TEST_F(ArchiveTest, GetAllFileNameInPathIgnoresThePatternAndReturnsATextFile) {
  TestGame game;
  const std::string folder = dir.path() + "/pictures";
  ASSERT_EQ(0, mkdir(folder.c_str(), 0755));
  WriteText(folder + "/notes.txt", "not a picture");
  std::vector<std::string> names;
  EXPECT_TRUE(game.archive().GetAllFileNameInPath(folder, "*.jpg", names, 0));
  EXPECT_EQ(std::vector<std::string>{"notes.txt"}, names);
}

TEST_F(ArchiveTest, GetAllFileNameInPathCutsEveryNameAlsoThoseThereBefore) {
  TestGame game;
  const std::string folder = dir.path() + "/pictures";
  ASSERT_EQ(0, mkdir(folder.c_str(), 0755));
  ASSERT_EQ(0, mkdir((folder + "/sub").c_str(), 0755));
  WriteText(folder + "/a.jpg", "a");
  WriteText(folder + "/sub/a.jpg", "b");
  std::vector<std::string> names = {"/old/x.jpg"};
  EXPECT_TRUE(game.archive().GetAllFileNameInPath(folder, "*.jpg", names, 0));
  EXPECT_EQ((std::vector<std::string>{"x.jpg", "a.jpg"}), names) << "without recursion the subfolder is skipped";
  names.clear();
  EXPECT_TRUE(game.archive().GetAllFileNameInPath(folder, "*.jpg", names, 1));
  EXPECT_EQ((std::vector<std::string>{"a.jpg", "a.jpg"}), names) << "files of two depths can no longer be told apart";
}

TEST_F(ArchiveTest, RecursiveToCreateDirectoryMakesEveryPieceButTheLast) {
  TestGame game;
  const std::string base = dir.path() + "/base/";
  ASSERT_EQ(0, mkdir(base.c_str(), 0755));
  game.archive().RecursiveToCreateDirectory(base, "a/b/c");
  EXPECT_TRUE(BaseUtils::Instance()->DirectoryExists(base + "a"));
  EXPECT_TRUE(BaseUtils::Instance()->DirectoryExists(base + "a/b"));
  EXPECT_FALSE(Exists(base + "a/b/c"));
}

TEST_F(ArchiveTest, RecursiveToCreateDirectoryFailingToMakeAFolderFailsTheAssertion) {
  TestGame game;
  const std::string base = dir.path() + "/missing/base/";
  EXPECT_DEATH(game.archive().RecursiveToCreateDirectory(base, "a/"),
               mediatest::AssertRegex("Src/MediaCenter/VT/ZvArchive.cpp", "0"));
}

TEST_F(ArchiveTest, CreateScrapBookSubFolderTouchesNoGalleryFolderAndLeavesTheDiskUnchanged) {
  TestGame game;
  ZvArchive& archive = game.archive();
  const std::string photos = archive.mPhotoPath;
  const std::string music = archive.mMusicPath;
  const std::vector<std::string> player = ListFolder(root + "LocalData/Player1");
  const std::vector<std::string> uploads = ListFolder(root + "Upload");
  archive.CreateScrapBookSubFolder("/SD-1-4/");
  EXPECT_EQ(photos, archive.mPhotoPath);
  EXPECT_EQ(music, archive.mMusicPath);
  EXPECT_EQ(root + "LocalData/Player1/MicrophoneWidget/SD-1-4/", archive.mScrapBookPath);
  EXPECT_EQ(root + "LocalData/Player1/MicrophoneWidget/SD-1-4/Audio/", archive.mScrapBookAudioPath);
  EXPECT_EQ(root + "LocalData/Player1/MicrophoneWidget/SD-1-4/Image/", archive.mScrapBookImagePath);
  EXPECT_EQ(root + "Upload/StoryBooks/", archive.mUploadStoryPath);
  EXPECT_EQ(player, ListFolder(root + "LocalData/Player1"));
  EXPECT_EQ(uploads, ListFolder(root + "Upload"));
  EXPECT_FALSE(Exists(archive.mScrapBookPath));
}

TEST_F(ArchiveTest, FileSizeOfAMissingFileIsZero) {
  TestGame game;
  WriteText(dir.file("five"), "12345");
  EXPECT_EQ(5, game.archive().GetFileSize(dir.file("five")));
  EXPECT_EQ(0, game.archive().GetFileSize(dir.file("absent")));
}

TEST_F(ArchiveTest, FileExistsWhenItOpensForReading) {
  TestGame game;
  WriteText(dir.file("here.wav"), "x");
  EXPECT_TRUE(game.archive().IsFileExist(dir.file("here.wav")));
  EXPECT_FALSE(game.archive().IsFileExist(dir.file("gone.wav")));
  EXPECT_TRUE(game.archive().IsFileInDirectory("here.wav", dir.path() + "/"));
  EXPECT_FALSE(game.archive().IsFileInDirectory("gone.wav", dir.path() + "/"));
}

TEST_F(ArchiveTest, FreeSpaceAndDeletionGoThroughTheDevice) {
  TestGame game;
  solva::SetFreeBytes(123456789);
  EXPECT_EQ(123456789u, game.archive().GetAvailableDiskSpace());
  WriteText(dir.file("old.wav"), "x");
  EXPECT_TRUE(game.archive().ArchiveDeleteFile(dir.file("old.wav")));
  EXPECT_FALSE(Exists(dir.file("old.wav")));
  EXPECT_FALSE(game.archive().ArchiveDeleteFile(dir.file("old.wav")));
}

TEST_F(ArchiveTest, OtherPlayersPrivateSizeIsNotComputedHere) {
  TestGame game;
  EXPECT_EQ(0u, game.archive().otherPlayerPrivateSize());
  EXPECT_EQ(0u, game.archive().otherPlayerPrivateSize());
  EXPECT_EQ(0u, game.archive().postCalcOtherPlayerPrivateSize());
}

TEST_F(ArchiveTest, DestroyLetsGoOfThePlatform) {
  TestGame game;
  game.archive().Destroy();
  EXPECT_EQ(nullptr, game.archive().mZvSysData);
  EXPECT_EQ(nullptr, game.archive().mBaseUtils);
  EXPECT_EQ(nullptr, game.archive().mKernelSvc);
  // A second Destroy, as the game's own shut-down does, is harmless.
  game.archive().Destroy();
}

TEST_F(ArchiveTest, BaseArchiveInitializeAndDestroyDoNothing) {
  // The base class only supplies what every archive shares.
  struct Bare : public Archive {
    void CreateScrapBookSubFolder(const std::string&) override {}
    bool GetAllFileNameInPath(const std::string&, const std::string&, std::vector<std::string>&, int) const override {
      return false;
    }
    unsigned GetAvailableDiskSpace() const override { return 0; }
    bool ArchiveDeleteFile(const std::string&) const override { return false; }
    int GetUserType() const override { return 0; }
    std::string GetCountryLocaleId() const override { return ""; }
    unsigned otherPlayerPrivateSize() override { return 0; }
  } bare;
  bare.Initialize(31);
  EXPECT_EQ("", bare.mMusicPath);
  EXPECT_EQ(0, bare.getCurrentPlayID());
  bare.Destroy();
}

}  // namespace
