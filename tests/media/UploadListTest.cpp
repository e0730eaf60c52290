// The upload lists and the metadata of the upload folders.
#include <gtest/gtest.h>

#include <string>

#include "CMetaInfo.h"
#include "MediaFixture.h"

namespace {

using mediatest::AssertRegex;
using mediatest::CaptureOut;
using mediatest::MediaTest;
using mediatest::Occurrences;
using mediatest::TestGame;
using zvtest::Exists;
using zvtest::ReadText;
using zvtest::WriteText;

class UploadListTest : public MediaTest {
 protected:
  std::string AudioList() const { return Upload("MusicPkg/UploadAudioList.txt"); }
  std::string MusicMeta() const { return Upload("MusicPkg/meta.json"); }
  ResInfo Clip(int id) const {
    ResInfo clip;
    clip.mResType = eRT_Audio;
    clip.mResId = id;
    clip.mName = "vtwgaudio_" + std::to_string(id) + ".wav";
    return clip;
  }
};

TEST_F(UploadListTest, FirstStoredClipAddsALineAndClaimsTheUploadFolder) {
  TestGame game;
  const ResInfo clip = Clip(1);
  const std::string out = CaptureOut([&] { game.store().WriteUploadFileIncreased(&clip); });
  EXPECT_EQ("Path:" + Music("vtwgaudio_1.wav") + "\nName:" + AudioList() + "\n", out);
  EXPECT_EQ(Music("vtwgaudio_1.wav") + "\n", ReadText(AudioList()));
  Catalog::CMetaInfo meta(Upload("MusicPkg"));
  ASSERT_TRUE(meta.IsValid());
  EXPECT_EQ("MicrophoneWidget", meta.GetPackageId().raw());
  EXPECT_EQ(4097u, meta.GetProductId());
  EXPECT_EQ("Handheld", meta.GetDeviceType().raw());
  EXPECT_EQ("Audio", meta.GetPackageType().Name().raw());
  EXPECT_TRUE(meta.GetPackageType().IsKnown());
  EXPECT_EQ(AudioList(), meta.GetTagString("PathToUploadContentList").raw());
  EXPECT_EQ("1", meta.GetTagString("OptionalUpload").raw());
}

TEST_F(UploadListTest, StoringTheSameResourceTwiceLeavesOneLineAndClaimsTheFolderOnce) {
  TestGame game;
  const ResInfo clip = Clip(1);
  game.store().WriteUploadFileIncreased(&clip);
  // Another program takes the folder over; a second store of the clip must not
  // take it back, as no line is added.
  {
    Catalog::CMetaInfo meta(Upload("MusicPkg"));
    meta.SetPackageId("OtherTitle");
  }
  game.store().WriteUploadFileIncreased(&clip);
  EXPECT_EQ(Music("vtwgaudio_1.wav") + "\n", ReadText(AudioList()));
  EXPECT_EQ("OtherTitle", Catalog::CMetaInfo(Upload("MusicPkg")).GetPackageId().raw());
  const ResInfo next = Clip(2);
  game.store().WriteUploadFileIncreased(&next);
  EXPECT_EQ("MicrophoneWidget", Catalog::CMetaInfo(Upload("MusicPkg")).GetPackageId().raw());
}

TEST_F(UploadListTest, ListWithCarriageReturnLineEndsStillMatchesItsItems) {
  TestGame game;
  WriteText(AudioList(), Music("vtwgaudio_1.wav") + "\r\n" + Music("vtwgaudio_2.wav") + "\r\n");
  const ResInfo clip = Clip(2);
  game.store().WriteUploadFileIncreased(&clip);
  EXPECT_EQ(Music("vtwgaudio_1.wav") + "\r\n" + Music("vtwgaudio_2.wav") + "\r\n", ReadText(AudioList()));
  EXPECT_FALSE(Exists(MusicMeta())) << "nothing was added, so the metadata step did not run";
}

TEST_F(UploadListTest, AddingComparesWholeLinesSoAShorterItemIsStillAdded) {
  TestGame game;
  ResInfo longer = Clip(1);
  longer.mName = "vtwgaudio_1.wav.bak";
  ResInfo shorter = Clip(1);
  game.store().WriteUploadFileIncreased(&longer);
  game.store().WriteUploadFileIncreased(&shorter);
  EXPECT_EQ(Music("vtwgaudio_1.wav.bak") + "\n" + Music("vtwgaudio_1.wav") + "\n", ReadText(AudioList()));
}

TEST_F(UploadListTest, DeletingMatchesSubstringsSoTheShorterItemTakesTheLongerAlong) {
  TestGame game;
  WriteText(AudioList(), Music("vtwgaudio_1.wav.bak") + "\n" + Music("vtwgaudio_1.wav") + "\n" +
                             Music("vtwgaudio_12.wav") + "\n");
  game.store().UploadFileDeleteItem(eRT_Audio, Music("vtwgaudio_1.wav"));
  EXPECT_EQ(Music("vtwgaudio_12.wav") + "\n", ReadText(AudioList())) << "photo 1 does not match the line of 12";
}

TEST_F(UploadListTest, DeleteItemForUnsharedPhotosPrintsAndLeavesAllListsAlone) {
  TestGame game(15);
  WriteText(AudioList(), "/a_1.wav\n");
  const std::string out = CaptureOut([&] { game.store().UploadFileDeleteItem(eRT_UnSharePhoto, "/a_1.wav"); });
  EXPECT_EQ("Delete item in type 5 is not supported.\n", out);
  EXPECT_EQ("/a_1.wav\n", ReadText(AudioList()));
  EXPECT_FALSE(Exists(Upload("PhotosPkg/UploadPhotoList.txt")));
}

TEST_F(UploadListTest, DeletingFromAMissingListCreatesItEmpty) {
  TestGame game;
  ASSERT_FALSE(Exists(AudioList()));
  game.store().UploadFileDeleteItem(eRT_Audio, Music("vtwgaudio_1.wav"));
  ASSERT_TRUE(Exists(AudioList()));
  EXPECT_EQ("", ReadText(AudioList()));
}

TEST_F(UploadListTest, FolderWhoseMetadataNamesTheTitlesPackageIsLeftUntouchedThoughItsTagsDiffer) {
  const std::string meta = "{\"packageId\": \"MicrophoneWidget\", \"tags\": {\"OptionalUpload\": \"0\"}}\n";
  WriteText(MusicMeta(), meta);
  TestGame game;
  game.store().WriteUploadPath("Audio");
  EXPECT_EQ(meta, ReadText(MusicMeta()));
}

TEST_F(UploadListTest, FolderOfAnotherPackageIsTakenOverKeepingItsOtherTags) {
  WriteText(MusicMeta(), "{\"packageId\": \"Paint\", \"tags\": {\"Owner\": \"paint\", \"OptionalUpload\": \"0\"}}\n");
  TestGame game;
  game.store().WriteUploadPath("Audio");
  Catalog::CMetaInfo meta(Upload("MusicPkg"));
  EXPECT_EQ("MicrophoneWidget", meta.GetPackageId().raw());
  EXPECT_EQ("1", meta.GetTagString("OptionalUpload").raw());
  EXPECT_EQ("paint", meta.GetTagString("Owner").raw());
}

TEST_F(UploadListTest, KindWithoutUploadPathUsesTheWorkingDirectory) {
  TestGame game(4);
  ResInfo photo;
  photo.mResType = eRT_Photo;
  photo.mResId = 3;
  photo.mName = "vtwgphoto_3.jpg";
  game.store().WriteUploadFileIncreased(&photo);
  EXPECT_EQ(Shared("Photos/vtwgphoto_3.jpg") + "\n", ReadText(work + "UploadPhotoList.txt"));
  EXPECT_FALSE(Exists(Upload("PhotosPkg/UploadPhotoList.txt")));
  Catalog::CMetaInfo meta(work);
  EXPECT_EQ("UploadPhotoList.txt", meta.GetTagString("PathToUploadContentList").raw());
}

TEST_F(UploadListTest, StoryListIsRelativeUntilAStoryHasBeenNamed) {
  TestGame game;
  game.store().UploadFileDeleteItem(eRT_ScrapBook, "x");
  EXPECT_TRUE(Exists(work + "UploadScrapBookList.txt"));
  EXPECT_FALSE(Exists(Upload("StoryBooks/UploadScrapBookList.txt")));
}

TEST_F(UploadListTest, StoringAStoryNamesItFirstAndListsItsFolder) {
  TestGame game;
  ResInfo story;
  story.mResType = eRT_ScrapBook;
  story.mResId = 6;
  story.mName = "/stories/SD-1-6/";
  const std::string out = CaptureOut([&] { game.store().StoreStoryBookUploadInfo(&story); });
  EXPECT_EQ(0u, out.find("ttt\n\n\n\n"));
  EXPECT_EQ("/stories/SD-1-6/\n", ReadText(Upload("StoryBooks/UploadScrapBookList.txt")));
  EXPECT_EQ(root + "LocalData/Player1/MicrophoneWidget/SD-1-6/", game.archive().mScrapBookPath);
  EXPECT_EQ("StoryBooks", Catalog::CMetaInfo(Upload("StoryBooks")).GetPackageType().Name().raw());
}

TEST_F(UploadListTest, TypesWithoutAListPrintAndWriteNothing) {
  TestGame game(31);
  ResInfo art;
  art.mResType = eRT_SpecificFolderArt;
  art.mResId = 1;
  art.mName = "/card/a.jpg";
  const std::string out = CaptureOut([&] { game.store().WriteUploadFileIncreased(&art); });
  EXPECT_EQ("Path:\nName:\n", out);
  EXPECT_EQ(std::vector<std::string>{}, zvtest::ListFolder(work));
}

TEST_F(UploadListTest, UnknownKindFailsTheAssertion) {
  TestGame game;
  EXPECT_DEATH(game.store().WriteUploadPath("Music"), AssertRegex("Src/MediaCenter/MediaCenter.cpp", "false"));
  EXPECT_DEATH(game.store().WriteUploadFileIncreased(nullptr),
               AssertRegex("Src/MediaCenter/MediaCenter.cpp", "inResInfo"));
}

TEST_F(UploadListTest, EveryKindHasItsOwnListAndFolder) {
  TestGame game(15);
  const struct {
    EResType type;
    const char* name;
    const char* media;
    const char* list;
    const char* kind;
  } kinds[] = {
      {eRT_Photo, "vtwgphoto_1.jpg", "Photos/", "PhotosPkg/UploadPhotoList.txt", "Photos"},
      {eRT_Video, "vtwgvideo_1.avi", "Videos/", "VideosPkg/UploadVideoList.txt", "Videos"},
      {eRT_Art, "vtwgart_1.jpg", "Art/", "ArtPkg/UploadArtList.txt", "Art"},
      {eRT_Audio, "vtwgaudio_1.wav", "Music/", "MusicPkg/UploadAudioList.txt", "Audio"},
  };
  for (const auto& kind : kinds) {
    ResInfo record;
    record.mResType = kind.type;
    record.mResId = 1;
    record.mName = kind.name;
    game.store().WriteUploadFileIncreased(&record);
    EXPECT_EQ(Shared(kind.media) + kind.name + "\n", ReadText(Upload(kind.list))) << kind.kind;
    const std::string folder = Upload(kind.list).substr(0, Upload(kind.list).rfind('/'));
    EXPECT_EQ(kind.kind, Catalog::CMetaInfo(folder).GetPackageType().Name().raw());
    game.store().UploadFileDeleteItem(kind.type, Shared(kind.media) + kind.name);
    EXPECT_EQ("", ReadText(Upload(kind.list))) << kind.kind;
  }
}

}  // namespace
