// Story books through the store: pages, the first page's thumbnail, the pages'
// sounds, the upload list, the index, and the stories' order by version.
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <string>
#include <vector>

#include "BaseUtils.h"
#include "MediaFixture.h"
#include "images/ImageTestSupport.h"

namespace {

using mediatest::CaptureOut;
using mediatest::MediaTest;
using mediatest::PutName;
using mediatest::TestGame;
using zvtest::Bytes;
using zvtest::Exists;
using zvtest::ListFolder;
using zvtest::PutI32;
using zvtest::PutU32;
using zvtest::ReadBytes;
using zvtest::ReadText;
using zvtest::WriteBytes;
using zvtest::WriteText;

class StoryBookTest : public MediaTest {
 protected:
  // What the story application does before it stores pages: a new record, and
  // the story's folder with its sound folder, made through the platform.
  ResInfo* NewStory(TestGame& game, int version) {
    ResInfo* story = nullptr;
    CaptureOut([&] { story = game.store().CreateNewRes(eRT_ScrapBook); });
    EXPECT_NE(nullptr, story);
    story->mSSVersion = version;
    // The title's own folder of the player, then the story's.
    EXPECT_TRUE(BaseUtils::Instance()->CreateDirectory(game.archive().mPlayerDataPath));
    EXPECT_TRUE(BaseUtils::Instance()->CreateDirectory(story->mName));
    EXPECT_TRUE(BaseUtils::Instance()->CreateDirectory(story->mName + "Audio/"));
    return story;
  }
  // A page's picture, different for every page.
  static Bytes Page(int page, int width = 480, int height = 272) {
    Bytes rgb = imgtest::Gradient(width, height);
    for (size_t i = 2; i < rgb.size(); i += 3) rgb[i] = uint8_t(rgb[i] + page * 50);
    return rgb;
  }
  // A sound the story application recorded for a page.
  std::string Sound(const std::string& name) {
    WriteText(work + name, "the sound of " + name);
    return work + name;
  }
  // Stores `page` of `story` with its sound; returns what the store printed.
  std::string Store(TestGame& game, ResInfo* story, int page, const std::string& sound, int ignored = 0) {
    story->mAudioSrcName = sound;
    Bytes rgb = Page(page);
    return CaptureOut([&] { game.store().StoreStoryBookToDisk(story, rgb.data(), 480, 272, ignored, page); });
  }
  // The bytes the store's own encoder makes of `rgb`.
  Bytes Encoded(MediaCenter& store, const uint8_t* rgb, int width, int height) {
    std::string path = dir.file("expected.jpg");
    CaptureOut([&] { EXPECT_TRUE(store.GenerateJpgFromRGB8(path, rgb, width, height, 1.0f)); });
    const Bytes bytes = ReadBytes(path);
    unlink(path.c_str());
    return bytes;
  }
  std::string StoryList() const { return Upload("StoryBooks/UploadScrapBookList.txt"); }
  std::string StoryIndex() const { return root + "LocalData/Player1/vtwgScrapBookResInfo.bin"; }
  static std::string Generated(const std::string& path, int width, int height) {
    return "[MediaCenter] Generate POOL_NEW jpg file " + path + ", with " + std::to_string(width) + ", height " +
           std::to_string(height) + ".\n";
  }
  std::string Listed(const ResInfo* story) const {
    return "ttt\n\n\n\nPath:" + story->mName + "\nName:" + StoryList() + "\n";
  }
  static std::vector<int> Order(MediaCenter& store) {
    std::vector<int> ids;
    for (const ResInfo& r : store.GetResInfoList(eRT_ScrapBook)) ids.push_back(r.mResId);
    return ids;
  }
};

// --- one page --------------------------------------------------------------------------

TEST_F(StoryBookTest, APagePictureOf480x272GetsAThumbnailOf160x90) {
  TestGame game;
  ResInfo* story = NewStory(game, 1);
  const std::string sound = Sound("page1.wav");
  const std::string out = Store(game, story, 1, sound);

  const std::string page = story->mName + "Page1.jpg";
  const std::string thumb = story->mName + "Page1_thumb.jpg";
  EXPECT_EQ(Generated(page, 480, 272) + Generated(thumb, 160, 90) + Listed(story) +
                "src audio name:" + sound + ", audio name:" + story->mName + "Audio/page1.wav\n",
            out);
  const imgtest::Decoded small = imgtest::DecodeWithLibjpeg(thumb);
  EXPECT_EQ(160, small.width);
  EXPECT_EQ(90, small.height);
  Bytes rgb = Page(1);
  EXPECT_EQ(Encoded(game.store(), rgb.data(), 480, 272), ReadBytes(page));
  uint8_t* scaled = game.store().ScaleBuffer(160, 90, 1, 480, 272, rgb.data());
  EXPECT_EQ(Encoded(game.store(), scaled, 160, 90), ReadBytes(thumb));
  delete[] scaled;
}

TEST_F(StoryBookTest, ThumbnailSidesAreAThirdInIntegerDivision) {
  TestGame game;
  ResInfo* story = NewStory(game, 1);
  story->mAudioSrcName = Sound("page1.wav");
  Bytes rgb = Page(1, 100, 50);
  CaptureOut([&] { game.store().StoreStoryBookToDisk(story, rgb.data(), 100, 50, 0, 1); });
  const imgtest::Decoded small = imgtest::DecodeWithLibjpeg(story->mName + "Page1_thumb.jpg");
  EXPECT_EQ(33, small.width);
  EXPECT_EQ(16, small.height);
}

TEST_F(StoryBookTest, StoreStoryBookToDiskWithPage2MakesNoThumbnail) {
  TestGame game;
  ResInfo* story = NewStory(game, 1);
  const std::string sound = Sound("page2.wav");
  const std::string out = Store(game, story, 2, sound);
  EXPECT_EQ(Generated(story->mName + "Page2.jpg", 480, 272) + Listed(story) + "src audio name:" + sound +
                ", audio name:" + story->mName + "Audio/page2.wav\n",
            out);
  EXPECT_EQ((std::vector<std::string>{"Audio", "Page2.jpg"}), ListFolder(story->mName));
}

TEST_F(StoryBookTest, ThePagesSoundMovesIntoAudioUnderTheNameBehindItsLastSlash) {
  TestGame game;
  ResInfo* story = NewStory(game, 1);
  ASSERT_EQ(0, mkdir((work + "takes").c_str(), 0755));
  const std::string sound = work + "takes/page_1.wav";
  WriteText(sound, "recorded");
  Store(game, story, 1, sound);
  EXPECT_FALSE(Exists(sound));
  EXPECT_EQ("recorded", ReadText(story->mName + "Audio/page_1.wav"));
}

TEST_F(StoryBookTest, ASoundNameWithBackslashesOnlyTakesThePartBehindTheLastOne) {
  TestGame game;
  ResInfo* story = NewStory(game, 1);
  // A file in the working folder whose name holds backslashes.
  WriteText(work + "takes\\day\\page.wav", "recorded");
  const std::string out = Store(game, story, 2, "takes\\day\\page.wav");
  EXPECT_NE(std::string::npos, out.find("src audio name:takes\\day\\page.wav, audio name:" + story->mName +
                                        "Audio/page.wav\n"));
  EXPECT_FALSE(Exists(work + "takes\\day\\page.wav"));
  EXPECT_EQ("recorded", ReadText(story->mName + "Audio/page.wav"));
}

TEST_F(StoryBookTest, ASoundNameWithoutSlashOrBackslashIsTakenAsEmptyAndTheSoundStays) {
  TestGame game;
  ResInfo* story = NewStory(game, 1);
  WriteText(work + "page.wav", "recorded");
  const std::string out = Store(game, story, 2, "page.wav");
  // The target is the sound folder itself, which no file can replace.
  EXPECT_NE(std::string::npos, out.find("src audio name:page.wav, audio name:" + story->mName + "Audio/\n"));
  EXPECT_EQ("recorded", ReadText(work + "page.wav"));
  EXPECT_TRUE(ListFolder(story->mName + "Audio").empty());
}

TEST_F(StoryBookTest, WithoutASoundFolderTheSoundStaysWhereItWas) {
  TestGame game;
  ResInfo* story = NewStory(game, 1);
  ASSERT_TRUE(BaseUtils::Instance()->RM(story->mName + "Audio"));
  const std::string sound = Sound("page1.wav");
  Store(game, story, 1, sound);
  EXPECT_EQ("the sound of page1.wav", ReadText(sound));
  EXPECT_EQ((std::vector<std::string>{"Page1.jpg", "Page1_thumb.jpg"}), ListFolder(story->mName));
}

TEST_F(StoryBookTest, APageThatCannotBeWrittenEndsTheOperation) {
  TestGame game;
  ResInfo* story = nullptr;
  CaptureOut([&] { story = game.store().CreateNewRes(eRT_ScrapBook); });
  ASSERT_NE(nullptr, story);
  // The caller has not made the folder.
  const std::string sound = Sound("page1.wav");
  EXPECT_EQ("", Store(game, story, 1, sound));
  EXPECT_FALSE(Exists(story->mName));
  EXPECT_FALSE(Exists(StoryList()));
  EXPECT_EQ("the sound of page1.wav", ReadText(sound));
}

TEST_F(StoryBookTest, TheRecordAndTheIndexAreLeftAsTheyWereAndTheFifthArgumentIsNotUsed) {
  TestGame game;
  ResInfo* story = NewStory(game, 3);
  const std::string name = story->mName;
  Store(game, story, 2, Sound("a.wav"), 0);
  const Bytes first = ReadBytes(story->mName + "Page2.jpg");
  Store(game, story, 2, Sound("b.wav"), 12345);
  EXPECT_EQ(first, ReadBytes(story->mName + "Page2.jpg"));
  EXPECT_EQ(name, story->mName);
  EXPECT_EQ(work + "b.wav", story->mAudioSrcName) << "the source's name is not changed to where it went";
  EXPECT_EQ((std::vector<std::string>{"a.wav", "b.wav"}), ListFolder(story->mName + "Audio"));
  EXPECT_FALSE(Exists(StoryIndex())) << "the caller saves the index";
}

// --- story order ------------------------------------------------------------------------

TEST_F(StoryBookTest, GetStoryStudioResInfoItWithAVersionThatNoStoryHasReturnsTheEnd) {
  TestGame game;
  MediaCenter& store = game.store();
  const ResInfoListIt end = store.GetResInfoList(eRT_ScrapBook).end();
  EXPECT_EQ(end, store.GetStoryStudioResInfoIt(1)) << "no story at all";
  NewStory(game, 1);
  NewStory(game, 3);
  store.SortStoryStudioResInfo();
  EXPECT_EQ(end, store.GetStoryStudioResInfoIt(2));
  EXPECT_EQ(end, store.GetStoryStudioResInfoItEnd(2));
  EXPECT_EQ(end, store.GetStoryStudioResInfoIt(0));
}

TEST_F(StoryBookTest, OneVersionsRunIsBoundedByItsFirstStoryAndTheFirstOfTheNextVersion) {
  TestGame game;
  MediaCenter& store = game.store();
  const int versions[5] = {5, -1, 2, 5, 2};
  for (int version : versions) NewStory(game, version);
  store.SortStoryStudioResInfo();
  EXPECT_EQ((std::vector<int>{2, 3, 5, 1, 4}), Order(store)) << "ascending, signed, stable";
  EXPECT_EQ(3, store.GetStoryStudioResInfoIt(2)->mResId);
  EXPECT_EQ(1, store.GetStoryStudioResInfoItEnd(2)->mResId);
  EXPECT_EQ(2, store.GetStoryStudioResInfoIt(-1)->mResId);
  EXPECT_EQ(3, store.GetStoryStudioResInfoItEnd(-1)->mResId);
  EXPECT_EQ(1, store.GetStoryStudioResInfoIt(5)->mResId);
  EXPECT_EQ(store.GetResInfoList(eRT_ScrapBook).end(), store.GetStoryStudioResInfoItEnd(5));
}

// --- a whole story, end to end ----------------------------------------------------------

TEST_F(StoryBookTest, AStoryOfThreePagesWithSoundsGoesThroughTheStoreAndComesBackInVersionOrder) {
  std::string folders[4];
  {
    TestGame game;
    MediaCenter& store = game.store();
    // Three pages with a sound each.
    ResInfo* tale = NewStory(game, 2);
    for (int page = 1; page <= 3; ++page) Store(game, tale, page, Sound("page" + std::to_string(page) + ".wav"));
    // An older story and a later one of the same version, one page each; and one
    // that its application never finished (no dataFile.json).
    ResInfo* older = NewStory(game, 1);
    Store(game, older, 1, Sound("older.wav"));
    ResInfo* later = NewStory(game, 2);
    Store(game, later, 1, Sound("later.wav"));
    ResInfo* unfinished = NewStory(game, 1);
    Store(game, unfinished, 1, Sound("unfinished.wav"));
    const ResInfo* stories[4] = {tale, older, later, unfinished};
    for (int i = 0; i < 4; ++i) folders[i] = stories[i]->mName;
    EXPECT_EQ(root + "LocalData/Player1/MicrophoneWidget/SD-1-1/", folders[0]);

    // The caller saves the index; the story application writes its data.
    CaptureOut([&] { store.SaveResInfo(eRT_ScrapBook); });
    for (int i = 0; i < 3; ++i) WriteText(folders[i] + "dataFile.json", "{\"pages\":" + std::to_string(i) + "}");

    // The three-page story's folder.
    EXPECT_EQ((std::vector<std::string>{"Audio", "Page1.jpg", "Page1_thumb.jpg", "Page2.jpg", "Page3.jpg",
                                        "dataFile.json"}),
              ListFolder(folders[0]));
    EXPECT_EQ((std::vector<std::string>{"page1.wav", "page2.wav", "page3.wav"}), ListFolder(folders[0] + "Audio"));
    for (int page = 1; page <= 3; ++page) {
      const std::string name = "page" + std::to_string(page) + ".wav";
      EXPECT_EQ("the sound of " + name, ReadText(folders[0] + "Audio/" + name));
      EXPECT_FALSE(Exists(work + name));
      Bytes rgb = Page(page);
      EXPECT_EQ(Encoded(store, rgb.data(), 480, 272), ReadBytes(folders[0] + "Page" + std::to_string(page) + ".jpg"));
    }
    const imgtest::Decoded thumb = imgtest::DecodeWithLibjpeg(folders[0] + "Page1_thumb.jpg");
    EXPECT_EQ(160, thumb.width);
    EXPECT_EQ(90, thumb.height);

    // One line a story, however many pages it has, in the order of storing.
    EXPECT_EQ(folders[0] + "\n" + folders[1] + "\n" + folders[2] + "\n" + folders[3] + "\n", ReadText(StoryList()));

    // The index, sorted by version, stable within one.
    Bytes index;
    PutU32(index, 9213426);
    PutI32(index, 4);
    const int order[4] = {1, 3, 0, 2};
    const int versions[4] = {2, 1, 2, 1};
    for (int i : order) {
      PutI32(index, i + 1);
      PutI32(index, eRT_ScrapBook);
      PutI32(index, 0);
      PutI32(index, versions[i]);
      PutName(index, folders[i]);
    }
    EXPECT_EQ(index, ReadBytes(StoryIndex()));
  }

  // The next start: the unfinished story is dropped, the others come back sorted.
  TestGame again;
  MediaCenter& store = again.store();
  const std::string out = CaptureOut([&] { store.InitResInfo(eRT_ScrapBook, ""); });
  EXPECT_NE(std::string::npos, out.find("Res Corrupted, Refresh the *.bin file\n"));
  EXPECT_EQ((std::vector<int>{2, 1, 3}), Order(store));
  EXPECT_EQ(folders[1], store.GetStoryStudioResInfoIt(1)->mName);
  EXPECT_EQ(1, store.GetStoryStudioResInfoItEnd(1)->mResId);
  EXPECT_EQ(1, store.GetStoryStudioResInfoIt(2)->mResId);
  EXPECT_EQ(store.GetResInfoList(eRT_ScrapBook).end(), store.GetStoryStudioResInfoItEnd(2));
  EXPECT_EQ(4u, store.GetMaxResId(eRT_ScrapBook)) << "the dropped story's number is not given again";

  // The store reads the thumbnail it wrote.
  ResInfo* tale = nullptr;
  CaptureOut([&] { tale = store.GetResInfo(eRT_ScrapBook, 1, true); });
  ASSERT_NE(nullptr, tale);
  ASSERT_NE(nullptr, tale->mThumbBuffer);
  EXPECT_EQ(160, tale->mThumbWidth);
  EXPECT_EQ(90, tale->mThumbHeight);
}

}  // namespace
