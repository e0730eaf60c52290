// Decoding a record's pictures on demand into its buffers, and releasing them.
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <string>

#include "MediaFixture.h"
#include "images/ImageTestSupport.h"

namespace {

using mediatest::AssertRegex;
using mediatest::CaptureOut;
using mediatest::MediaTest;
using mediatest::Occurrences;
using mediatest::TestGame;
using zvtest::Bytes;

const char kSource[] = "Src/MediaCenter/MediaCenter.cpp";

std::string StoreAssert(const std::string& function, const std::string& expr) {
  return zvtest::Literal(std::string(kSource) + ":") + "[0-9]+" +
         zvtest::Literal(": " + function + ": Assertion `" + expr + "' failed.");
}

const char kExtractThumb[] = "ResInfo* MediaCenter::ExtractThumb(ResInfo*)";

std::string OpenFailure(const std::string& path) {
  return "[MediaCenter][ExtractJpgToRGB8] Extract jpg file failed. Cann't open file " + path + ".\n";
}

class PictureDecodeTest : public MediaTest {
 protected:
  // A JPEG at `path` made by plain libjpeg; its pixels as libjpeg reads them back.
  imgtest::Decoded Jpeg(const std::string& path, int width, int height, int denom = 1) {
    imgtest::EncodeWithLibjpeg(path, imgtest::Gradient(width, height), width, height);
    return imgtest::DecodeWithLibjpeg(path, denom);
  }
  // A photo record with its picture and thumbnail files in the gallery.
  ResInfo* Photo(TestGame& game, int width, int height, EResType type = eRT_Photo) {
    ResInfo* record = nullptr;
    CaptureOut([&] { record = game.store().CreateNewRes(type); });
    record->mImgWidth = width;
    record->mImgHeight = height;
    const std::string main = game.store().GetResPath(type) + record->mName;
    Jpeg(main, width, height);
    Jpeg(game.store().GetThumbImageName(main), 80, 80);
    return record;
  }
  static Bytes Pixels(const uint8_t* buf, int width, int height) {
    return Bytes(buf, buf + size_t(width) * height * 3);
  }
};

// --- thumbnails -----------------------------------------------------------------------

TEST_F(PictureDecodeTest, GetResInfoWithThumbDecodesTheThumbnailFile) {
  TestGame game;
  ResInfo* photo = Photo(game, 64, 48);
  const imgtest::Decoded judge = imgtest::DecodeWithLibjpeg(Shared("Photos/Thumb/vtwgphoto_thumb_1.jpg"));
  ResInfo* found = game.store().GetResInfo(eRT_Photo, photo->mResId, true);
  ASSERT_EQ(photo, found);
  ASSERT_NE(nullptr, found->mThumbBuffer);
  EXPECT_EQ(80, found->mThumbWidth);
  EXPECT_EQ(80, found->mThumbHeight);
  EXPECT_EQ(judge.pixels, Pixels(found->mThumbBuffer, 80, 80));
  EXPECT_EQ(nullptr, found->mMediaBuffer);

  ResInfo* byName = game.store().GetResInfo(eRT_Photo, std::string("vtwgphoto_1.jpg"), true);
  EXPECT_EQ(photo, byName);
}

TEST_F(PictureDecodeTest, GetResInfoByNameWithThumbDecodesTheThumbnailToo) {
  TestGame game;
  Photo(game, 30, 20, eRT_Art);
  ResInfo* found = game.store().GetResInfo(eRT_Art, std::string("vtwgart_1.jpg"), true);
  ASSERT_NE(nullptr, found);
  EXPECT_NE(nullptr, found->mThumbBuffer);
  EXPECT_EQ(80, found->mThumbWidth);
}

TEST_F(PictureDecodeTest, ExtractThumbOnARecordThatAlreadyHasABufferDecodesNothing) {
  TestGame game;
  ResInfo* photo = Photo(game, 64, 48);
  uint8_t* own = new uint8_t[3 * 2 * 3]();
  photo->mThumbBuffer = own;
  photo->mThumbWidth = 3;
  photo->mThumbHeight = 2;
  // Not even a missing file is noticed.
  unlink(Shared("Photos/Thumb/vtwgphoto_thumb_1.jpg").c_str());
  ResInfo* result = nullptr;
  const std::string out = CaptureOut([&] { result = game.store().ExtractThumb(photo); });
  EXPECT_EQ(photo, result);
  EXPECT_EQ("", out);
  EXPECT_EQ(own, photo->mThumbBuffer);
  EXPECT_EQ(3, photo->mThumbWidth);
  EXPECT_EQ(2, photo->mThumbHeight);
}

TEST_F(PictureDecodeTest, ExtractThumbWithAMissingFileLeavesTheBufferNull) {
  TestGame game;
  ResInfo* photo = Photo(game, 64, 48);
  const std::string thumb = Shared("Photos/Thumb/vtwgphoto_thumb_1.jpg");
  unlink(thumb.c_str());
  testing::internal::CaptureStderr();
  const std::string out = CaptureOut([&] { EXPECT_EQ(photo, game.store().ExtractThumb(photo)); });
  testing::internal::GetCapturedStderr();
  EXPECT_EQ(OpenFailure(thumb), out);
  EXPECT_EQ(nullptr, photo->mThumbBuffer);
  EXPECT_EQ(0, photo->mThumbWidth);
}

TEST_F(PictureDecodeTest, ThumbnailsOfArtUnsharedPhotoAndVideoComeFromTheirThumbFiles) {
  TestGame game;
  ResInfo* art = Photo(game, 20, 20, eRT_Art);
  ResInfo* video = nullptr;
  ResInfo* unshared = nullptr;
  CaptureOut([&] {
    video = game.store().CreateNewRes(eRT_Video);
    unshared = game.store().CreateNewRes(eRT_UnSharePhoto);
  });
  const imgtest::Decoded videoThumb = Jpeg(Shared("Videos/Thumb/vtwgvideo_thumb_1.jpg"), 80, 80);
  ASSERT_EQ(0, mkdir((work + "Thumb").c_str(), 0755));
  unshared->mName = work + "mine_2.jpg";
  const imgtest::Decoded unsharedThumb = Jpeg(work + "Thumb/mine_thumb_2.jpg", 40, 30);

  game.store().ExtractThumb(art);
  game.store().ExtractThumb(video);
  game.store().ExtractThumb(unshared);
  EXPECT_NE(nullptr, art->mThumbBuffer);
  ASSERT_NE(nullptr, video->mThumbBuffer);
  EXPECT_EQ(videoThumb.pixels, Pixels(video->mThumbBuffer, 80, 80));
  ASSERT_NE(nullptr, unshared->mThumbBuffer);
  EXPECT_EQ(40, unshared->mThumbWidth);
  EXPECT_EQ(30, unshared->mThumbHeight);
  EXPECT_EQ(unsharedThumb.pixels, Pixels(unshared->mThumbBuffer, 40, 30));
}

TEST_F(PictureDecodeTest, StoryThumbnailIsPresetToNinetyBySixtyAndReplacedByTheFilesSize) {
  TestGame game;
  ResInfo story;
  story.mResType = eRT_ScrapBook;
  story.mResId = 1;
  story.mName = work + "SD-0-1/";
  ASSERT_EQ(0, mkdir(story.mName.c_str(), 0755));
  testing::internal::CaptureStderr();
  const std::string out = CaptureOut([&] { game.store().ExtractThumb(&story); });
  testing::internal::GetCapturedStderr();
  EXPECT_EQ(OpenFailure(story.mName + "Page1_thumb.jpg"), out);
  EXPECT_EQ(nullptr, story.mThumbBuffer);
  EXPECT_EQ(90, story.mThumbWidth);
  EXPECT_EQ(160, story.mThumbHeight);

  const imgtest::Decoded page = Jpeg(story.mName + "Page1_thumb.jpg", 160, 91);
  game.store().ExtractThumb(&story);
  ASSERT_NE(nullptr, story.mThumbBuffer);
  EXPECT_EQ(160, story.mThumbWidth);
  EXPECT_EQ(91, story.mThumbHeight);
  EXPECT_EQ(page.pixels, Pixels(story.mThumbBuffer, 160, 91));
}

TEST_F(PictureDecodeTest, FolderPhotoThumbnailIsMadeFromThePictureAndSetsTheViewMode) {
  TestGame game;
  const std::string folder = work + "pictures";
  ASSERT_EQ(0, mkdir(folder.c_str(), 0755));
  const imgtest::Decoded landscape = Jpeg(folder + "/a.jpg", 320, 240);
  const imgtest::Decoded portrait = Jpeg(folder + "/b.jpg", 240, 320);
  Jpeg(folder + "/c.jpg", 100, 100);
  game.store().InitResInfo(eRT_SpecificFolderPhoto, folder);
  ResInfoList& list = game.store().GetResInfoList(eRT_SpecificFolderPhoto);
  ASSERT_EQ(3u, list.size());
  for (ResInfo& record : list) record.mViewMode = 7;

  ResInfo* a = game.store().GetResInfo(eRT_SpecificFolderPhoto, folder + "/a.jpg", true);
  ResInfo* b = game.store().GetResInfo(eRT_SpecificFolderPhoto, folder + "/b.jpg", true);
  ResInfo* c = game.store().GetResInfo(eRT_SpecificFolderPhoto, folder + "/c.jpg", true);
  ASSERT_TRUE(a && b && c);
  EXPECT_EQ(0, a->mViewMode);
  EXPECT_EQ(1, b->mViewMode);
  EXPECT_EQ(7, c->mViewMode);

  ASSERT_NE(nullptr, a->mMediaBuffer);
  EXPECT_EQ(320, a->mMediaWidth);
  EXPECT_EQ(240, a->mMediaHeight);
  EXPECT_EQ(landscape.pixels, Pixels(a->mMediaBuffer, 320, 240));
  EXPECT_EQ(80, a->mThumbWidth);
  EXPECT_EQ(80, a->mThumbHeight);
  Bytes source = landscape.pixels;
  uint8_t* expected = game.store().ScaleBuffer(80, 80, 1, 320, 240, source.data());
  EXPECT_EQ(Pixels(expected, 80, 80), Pixels(a->mThumbBuffer, 80, 80));
  delete[] expected;
  EXPECT_EQ(portrait.pixels, Pixels(b->mMediaBuffer, 240, 320));
}

TEST_F(PictureDecodeTest, FolderPhotoShorterThanEightyRowsIsScaledWithoutReadingPastIt) {
  TestGame game;
  const std::string folder = work + "pictures";
  ASSERT_EQ(0, mkdir(folder.c_str(), 0755));
  const imgtest::Decoded strip = Jpeg(folder + "/strip.jpg", 90, 20);
  game.store().InitResInfo(eRT_SpecificFolderPhoto, folder);
  ResInfo* record = game.store().GetResInfo(eRT_SpecificFolderPhoto, 0, true);
  ASSERT_NE(nullptr, record);
  ASSERT_NE(nullptr, record->mThumbBuffer);
  // What ScaleBuffer gives when the row past the picture repeats its last row.
  Bytes padded = strip.pixels;
  padded.insert(padded.end(), strip.pixels.end() - 90 * 3, strip.pixels.end());
  uint8_t* expected = game.store().ScaleBuffer(80, 80, 1, 90, 20, padded.data());
  EXPECT_EQ(Pixels(expected, 80, 80), Pixels(record->mThumbBuffer, 80, 80));
  delete[] expected;
}

TEST_F(PictureDecodeTest, FolderPhotoWhoseFileIsGoneLeavesBothBuffersNull) {
  TestGame game;
  const std::string folder = work + "pictures";
  ASSERT_EQ(0, mkdir(folder.c_str(), 0755));
  Jpeg(folder + "/gone.jpg", 32, 32);
  game.store().InitResInfo(eRT_SpecificFolderPhoto, folder);
  unlink((folder + "/gone.jpg").c_str());
  ResInfo* record = nullptr;
  testing::internal::CaptureStderr();
  const std::string out = CaptureOut([&] { record = game.store().GetResInfo(eRT_SpecificFolderPhoto, 0, true); });
  testing::internal::GetCapturedStderr();
  ASSERT_NE(nullptr, record);
  EXPECT_EQ(OpenFailure(folder + "/gone.jpg"), out);
  EXPECT_EQ(nullptr, record->mMediaBuffer);
  EXPECT_EQ(nullptr, record->mThumbBuffer);
  EXPECT_EQ(0, record->mThumbWidth);
}

TEST_F(PictureDecodeTest, ExtractThumbAssertsRecordAndType) {
  TestGame game;
  ResInfo clip;
  clip.mResType = eRT_Audio;
  clip.mResId = 1;
  clip.mName = "vtwgaudio_1.wav";
  ResInfo invalid;
  EXPECT_DEATH(game.store().ExtractThumb(nullptr), StoreAssert(kExtractThumb, "InResInfo"));
  EXPECT_DEATH(game.store().ExtractThumb(&invalid),
               StoreAssert(kExtractThumb, "InResInfo->mResType > eRT_Invalid && InResInfo->mResType < eRT_Num"));
  EXPECT_DEATH(game.store().ExtractThumb(&clip), StoreAssert(kExtractThumb, "0"));
  clip.mResType = eRT_SpecificFolderAudio;
  EXPECT_DEATH(game.store().ExtractThumb(&clip), StoreAssert(kExtractThumb, "0"));
  clip.mResType = eRT_SpecificFolderArt;
  EXPECT_DEATH(game.store().ExtractThumb(&clip), StoreAssert(kExtractThumb, "0"));
}

// --- full pictures --------------------------------------------------------------------

TEST_F(PictureDecodeTest, ExtractMediaDecodesAPhotoWholeAndItsThumbnailToo) {
  TestGame game;
  ResInfo* photo = Photo(game, 100, 75);
  const std::string main = Shared("Photos/vtwgphoto_1.jpg");
  const imgtest::Decoded judge = imgtest::DecodeWithLibjpeg(main);
  ResInfo* result = nullptr;
  const std::string out = CaptureOut([&] { result = game.store().ExtractMedia(eRT_Photo, photo->mResId); });
  ASSERT_EQ(photo, result);
  EXPECT_EQ("[MediaCenter][ExtractMedia] Extract Photo Res " + main + " success.\n", out);
  EXPECT_EQ(100, photo->mMediaWidth);
  EXPECT_EQ(75, photo->mMediaHeight);
  EXPECT_EQ(judge.pixels, Pixels(photo->mMediaBuffer, 100, 75));
  EXPECT_NE(nullptr, photo->mThumbBuffer);

  // A second call reuses the buffer and still says so.
  uint8_t* first = photo->mMediaBuffer;
  const std::string again = CaptureOut([&] { game.store().ExtractMedia(eRT_Photo, photo->mResId); });
  EXPECT_EQ(out, again);
  EXPECT_EQ(first, photo->mMediaBuffer);
}

TEST_F(PictureDecodeTest, CameraSizedPhotosAreDecodedAtHalfSize) {
  TestGame game;
  ResInfo* vga = Photo(game, 640, 480);
  ResInfo* wide = Photo(game, 960, 544);
  ResInfo* other = Photo(game, 640, 360);
  CaptureOut([&] {
    game.store().ExtractMedia(eRT_Photo, vga->mResId);
    game.store().ExtractMedia(eRT_Photo, wide->mResId);
    game.store().ExtractMedia(eRT_Photo, other->mResId);
  });
  EXPECT_EQ(320, vga->mMediaWidth);
  EXPECT_EQ(240, vga->mMediaHeight);
  EXPECT_EQ(imgtest::DecodeWithLibjpeg(Shared("Photos/vtwgphoto_1.jpg"), 2).pixels,
            Pixels(vga->mMediaBuffer, 320, 240));
  EXPECT_EQ(480, wide->mMediaWidth);
  EXPECT_EQ(272, wide->mMediaHeight);
  EXPECT_EQ(640, other->mMediaWidth);
  EXPECT_EQ(360, other->mMediaHeight);
}

TEST_F(PictureDecodeTest, UnsharedPhotoDecodesUnderItsOwnName) {
  TestGame game;
  ResInfo* photo = nullptr;
  CaptureOut([&] { photo = game.store().CreateNewRes(eRT_UnSharePhoto); });
  ASSERT_EQ(0, mkdir((work + "Thumb").c_str(), 0755));
  photo->mName = work + "mine_1.jpg";
  const imgtest::Decoded judge = Jpeg(photo->mName, 50, 40);
  Jpeg(work + "Thumb/mine_thumb_1.jpg", 80, 80);
  const std::string out = CaptureOut([&] { game.store().ExtractMedia(eRT_UnSharePhoto, photo->mResId); });
  EXPECT_EQ("[MediaCenter][ExtractMedia] Extract Photo Res " + photo->mName + " success.\n", out);
  EXPECT_EQ(judge.pixels, Pixels(photo->mMediaBuffer, 50, 40));
}

TEST_F(PictureDecodeTest, ArtSaysSoOnEveryCall) {
  TestGame game;
  ResInfo* art = Photo(game, 64, 64, eRT_Art);
  const std::string line = "[MediaCenter][ExtractMedia] Extract Atr Res " + Shared("Art/vtwgart_1.jpg") + " success.\n";
  const std::string out = CaptureOut([&] {
    game.store().ExtractMedia(eRT_Art, art->mResId);
    game.store().ExtractMedia(eRT_Art, art->mResId);
  });
  EXPECT_EQ(line + line, out);
  EXPECT_EQ(64, art->mMediaWidth);
}

TEST_F(PictureDecodeTest, StorySaysSoOnlyAfterADecoding) {
  TestGame game;
  ResInfo story;
  story.mResType = eRT_ScrapBook;
  story.mResId = 3;
  story.mName = work + "SD-0-3/";
  ASSERT_EQ(0, mkdir(story.mName.c_str(), 0755));
  const imgtest::Decoded page = Jpeg(story.mName + "Page1.jpg", 48, 27);
  Jpeg(story.mName + "Page1_thumb.jpg", 16, 9);
  game.store().GetResInfoList(eRT_ScrapBook).push_back(story);
  ResInfo* record = nullptr;
  const std::string out = CaptureOut([&] {
    record = game.store().ExtractMedia(eRT_ScrapBook, 3);
    game.store().ExtractMedia(eRT_ScrapBook, 3);
  });
  ASSERT_NE(nullptr, record);
  EXPECT_EQ("[MediaCenter][ExtractMedia] Extract Story Res " + story.mName + "Page1.jpg success.\n", out);
  EXPECT_EQ(page.pixels, Pixels(record->mMediaBuffer, 48, 27));
  EXPECT_EQ(16, record->mThumbWidth);
}

TEST_F(PictureDecodeTest, FolderPhotoIsDecodedByItsThumbnailSoExtractMediaSaysNothing) {
  TestGame game;
  const std::string folder = work + "pictures";
  ASSERT_EQ(0, mkdir(folder.c_str(), 0755));
  Jpeg(folder + "/a.jpg", 320, 240);
  game.store().InitResInfo(eRT_SpecificFolderPhoto, folder);
  ResInfo* record = nullptr;
  const std::string out = CaptureOut([&] { record = game.store().ExtractMedia(eRT_SpecificFolderPhoto, 0); });
  ASSERT_NE(nullptr, record);
  EXPECT_EQ("", out);
  EXPECT_NE(nullptr, record->mMediaBuffer);
}

TEST_F(PictureDecodeTest, FolderPhotoWhoseFileIsGoneIsTriedAgainAndSaysSuccessAnyway) {
  TestGame game;
  const std::string folder = work + "pictures";
  ASSERT_EQ(0, mkdir(folder.c_str(), 0755));
  Jpeg(folder + "/a.jpg", 32, 32);
  game.store().InitResInfo(eRT_SpecificFolderPhoto, folder);
  unlink((folder + "/a.jpg").c_str());
  ResInfo* record = nullptr;
  testing::internal::CaptureStderr();
  const std::string out = CaptureOut([&] { record = game.store().ExtractMedia(eRT_SpecificFolderPhoto, 0); });
  testing::internal::GetCapturedStderr();
  ASSERT_NE(nullptr, record);
  EXPECT_EQ(2, Occurrences(out, OpenFailure(folder + "/a.jpg")));
  EXPECT_NE(std::string::npos,
            out.find("[MediaCenter][ExtractMedia] Extract Specific Photo Res " + folder + "/a.jpg success.\n"));
  EXPECT_EQ(nullptr, record->mMediaBuffer);
}

TEST_F(PictureDecodeTest, VideoGivesNullButItsThumbnailIsDecoded) {
  TestGame game;
  ResInfo* video = nullptr;
  CaptureOut([&] { video = game.store().CreateNewRes(eRT_Video); });
  Jpeg(Shared("Videos/Thumb/vtwgvideo_thumb_1.jpg"), 80, 80);
  ResInfo* result = video;
  const std::string out = CaptureOut([&] { result = game.store().ExtractMedia(eRT_Video, video->mResId); });
  EXPECT_EQ(nullptr, result);
  EXPECT_EQ("", out);
  EXPECT_NE(nullptr, video->mThumbBuffer);
  EXPECT_EQ(nullptr, video->mMediaBuffer);
}

TEST_F(PictureDecodeTest, ExtractMediaOfNumberMinusOneOrAnUnknownNumberGivesNull) {
  TestGame game;
  Photo(game, 8, 8);
  std::string out = CaptureOut([&] {
    EXPECT_EQ(nullptr, game.store().ExtractMedia(eRT_Photo, -1));
    EXPECT_EQ(nullptr, game.store().ExtractMedia(eRT_Photo, 5));
    // No record is looked at, so not even a sound fails.
    EXPECT_EQ(nullptr, game.store().ExtractMedia(eRT_Audio, -1));
  });
  EXPECT_EQ("", out);
}

TEST_F(PictureDecodeTest, ExtractMediaOfSoundsAndFolderArtFailsTheThumbnailsAssertion) {
  TestGame game;
  ResInfo* clip = nullptr;
  ResInfo* art = nullptr;
  ResInfo* folderClip = nullptr;
  CaptureOut([&] {
    clip = game.store().CreateNewRes(eRT_Audio);
    art = game.store().CreateNewRes(eRT_SpecificFolderArt);
    folderClip = game.store().CreateNewRes(eRT_SpecificFolderAudio);
  });
  EXPECT_DEATH(game.store().ExtractMedia(eRT_Audio, clip->mResId), StoreAssert(kExtractThumb, "0"));
  EXPECT_DEATH(game.store().ExtractMedia(eRT_SpecificFolderArt, art->mResId), StoreAssert(kExtractThumb, "0"));
  EXPECT_DEATH(game.store().ExtractMedia(eRT_SpecificFolderAudio, folderClip->mResId),
               StoreAssert(kExtractThumb, "0"));
  EXPECT_DEATH(game.store().ExtractMedia(eRT_Num, 1),
               StoreAssert("ResInfo* MediaCenter::ExtractMedia(EResType, int)", "type > eRT_Invalid && type < eRT_Num"));
}

// --- releasing ------------------------------------------------------------------------

TEST_F(PictureDecodeTest, ReturnThumbWithNumberMinusOneDoesNothing) {
  TestGame game;
  ResInfo* photo = Photo(game, 16, 16);
  game.store().ExtractThumb(photo);
  uint8_t* thumb = photo->mThumbBuffer;
  ASSERT_NE(nullptr, thumb);
  const std::string out = CaptureOut([&] {
    game.store().ReturnThumb(eRT_Photo, -1);
    game.store().ReturnMedia(eRT_Photo, -1);
    // Not even a type whose thumbnail would fail is looked at.
    game.store().ReturnThumb(eRT_Audio, -1);
  });
  EXPECT_EQ("", out);
  EXPECT_EQ(thumb, photo->mThumbBuffer);
  EXPECT_EQ(80, photo->mThumbWidth);
}

TEST_F(PictureDecodeTest, ReturnThumbOfARecordFreesTheBufferAndZeroesItsSize) {
  TestGame game;
  ResInfo* photo = Photo(game, 16, 16);
  game.store().ExtractThumb(photo);
  game.store().ReturnThumb(photo);
  EXPECT_EQ(nullptr, photo->mThumbBuffer);
  EXPECT_EQ(0, photo->mThumbWidth);
  EXPECT_EQ(0, photo->mThumbHeight);
  // Released, it is decoded anew on the next request.
  game.store().ExtractThumb(photo);
  EXPECT_NE(nullptr, photo->mThumbBuffer);
  EXPECT_DEATH(game.store().ReturnThumb(nullptr),
               StoreAssert("void MediaCenter::ReturnThumb(ResInfo*)", "InResInfo"));
}

TEST_F(PictureDecodeTest, ReturnThumbByNumberDecodesAThumbnailNotYetThereBeforeFreeingIt) {
  TestGame game;
  ResInfo* photo = Photo(game, 16, 16);
  const std::string thumb = Shared("Photos/Thumb/vtwgphoto_thumb_1.jpg");
  unlink(thumb.c_str());
  testing::internal::CaptureStderr();
  const std::string out = CaptureOut([&] { game.store().ReturnThumb(eRT_Photo, photo->mResId); });
  testing::internal::GetCapturedStderr();
  EXPECT_EQ(OpenFailure(thumb), out) << "the decoding was tried first";
  EXPECT_EQ(nullptr, photo->mThumbBuffer);

  Photo(game, 16, 16);
  game.store().ReturnThumb(eRT_Photo, 2);
  ResInfo* second = game.store().GetResInfo(eRT_Photo, 2, false);
  EXPECT_EQ(nullptr, second->mThumbBuffer);
  EXPECT_EQ(0, second->mThumbWidth);
  // An unknown number is no error.
  game.store().ReturnThumb(eRT_Photo, 9);
  EXPECT_DEATH(game.store().ReturnThumb(eRT_Invalid, 1),
               StoreAssert("void MediaCenter::ReturnThumb(EResType, int)", "type > eRT_Invalid && type < eRT_Num"));
}

TEST_F(PictureDecodeTest, ReturnMediaFreesThePictureAndKeepsItsSize) {
  TestGame game;
  ResInfo* photo = Photo(game, 40, 30);
  CaptureOut([&] { game.store().ExtractMedia(eRT_Photo, photo->mResId); });
  ASSERT_NE(nullptr, photo->mMediaBuffer);
  game.store().ReturnMedia(eRT_Photo, photo->mResId);
  EXPECT_EQ(nullptr, photo->mMediaBuffer);
  EXPECT_EQ(40, photo->mMediaWidth);
  EXPECT_EQ(30, photo->mMediaHeight);
  EXPECT_NE(nullptr, photo->mThumbBuffer) << "the thumbnail stays";
  EXPECT_DEATH(game.store().ReturnMedia(eRT_Num, 1),
               StoreAssert("void MediaCenter::ReturnMedia(EResType, int)", "type > eRT_Invalid && type < eRT_Num"));
}

TEST_F(PictureDecodeTest, ReturnMediaLeavesAVideosBufferAlone) {
  TestGame game;
  ResInfo* video = nullptr;
  CaptureOut([&] { video = game.store().CreateNewRes(eRT_Video); });
  Jpeg(Shared("Videos/Thumb/vtwgvideo_thumb_1.jpg"), 80, 80);
  uint8_t* frame = new uint8_t[12]();
  video->mMediaBuffer = frame;  // the record frees it at its end
  game.store().ReturnMedia(eRT_Video, video->mResId);
  EXPECT_EQ(frame, video->mMediaBuffer);
  EXPECT_NE(nullptr, video->mThumbBuffer);
}

TEST_F(PictureDecodeTest, ReturnMediaOfASoundFailsTheThumbnailsAssertion) {
  TestGame game;
  ResInfo* clip = nullptr;
  CaptureOut([&] { clip = game.store().CreateNewRes(eRT_Audio); });
  EXPECT_DEATH(game.store().ReturnMedia(eRT_Audio, clip->mResId), StoreAssert(kExtractThumb, "0"));
}

}  // namespace
