// Writing pictures into the gallery: the picture, its thumbnail, a video's cover,
// where they land, what the upload lists say, and what the writers assert.
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <string>

#include "CMetaInfo.h"
#include "MediaFixture.h"
#include "MediaCenter/VT/ZvArchive.h"
#include "images/ImageTestSupport.h"

namespace {

using mediatest::AssertRegex;
using mediatest::CaptureOut;
using mediatest::MediaTest;
using mediatest::TestGame;
using zvtest::Bytes;
using zvtest::Exists;
using zvtest::ReadBytes;
using zvtest::ReadText;

const char kSource[] = "Src/MediaCenter/MediaCenter.cpp";

// The C library's message for `expr` failing inside `function` of the store.
std::string StoreAssert(const std::string& function, const std::string& expr) {
  return zvtest::Literal(std::string(kSource) + ":") + "[0-9]+" +
         zvtest::Literal(": " + function + ": Assertion `" + expr + "' failed.");
}

const char kStoreImage[] = "bool MediaCenter::StoreImageToDisk(ResInfo*, uint8*, int, int, float)";
const char kStoreThumb[] = "void MediaCenter::StoreThumbToDisk(ResInfo*, uint8*, int, int)";
const char kStoreCover[] = "void MediaCenter::StoreCoverToDisk(ResInfo*, uint8*, int, int)";

std::string GenerateLine(const std::string& path, int width, int height) {
  return "[MediaCenter] Generate POOL_NEW jpg file " + path + ", with " + std::to_string(width) + ", height " +
         std::to_string(height) + ".\n";
}

class PictureStoreTest : public MediaTest {
 protected:
  // What the store's own encoder makes of `rgb`: the bytes a stored picture must
  // have when it was made from the same pixels.
  Bytes Encoded(MediaCenter& store, const uint8_t* rgb, int width, int height) {
    std::string path = work + "expected.jpg";
    CaptureOut([&] { EXPECT_TRUE(store.GenerateJpgFromRGB8(path, rgb, width, height, 1.0f)); });
    const Bytes bytes = ReadBytes(path);
    unlink(path.c_str());
    return bytes;
  }
  // The thumbnail ScaleBuffer makes of `rgb` when the row past its last is `extra`.
  Bytes ThumbWithExtraRow(MediaCenter& store, Bytes rgb, int width, int height, const Bytes& extra) {
    rgb.insert(rgb.end(), extra.begin(), extra.end());
    uint8_t* thumb = store.ScaleBuffer(80, 80, 1, width, height, rgb.data());
    const Bytes bytes = Encoded(store, thumb, 80, 80);
    delete[] thumb;
    return bytes;
  }
  static Bytes LastRow(const Bytes& rgb, int width, int height) {
    return Bytes(rgb.begin() + size_t(height - 1) * width * 3, rgb.begin() + size_t(height) * width * 3);
  }
};

// --- where pictures land ----------------------------------------------------------

TEST_F(PictureStoreTest, PhotoAndItsThumbnailLandInPhotosAndAreListedForUpload) {
  TestGame game(ZvArchive::eUpload_All);
  MediaCenter& store = game.store();
  ResInfo* photo = nullptr;
  CaptureOut([&] { photo = store.CreateNewRes(eRT_Photo); });
  ASSERT_NE(nullptr, photo);
  Bytes rgb = imgtest::Gradient(120, 90);

  bool stored = false;
  const std::string out = CaptureOut([&] { stored = store.StoreImageToDisk(photo, rgb.data(), 120, 90, 1.0f); });
  EXPECT_TRUE(stored);

  const std::string main = Shared("Photos/vtwgphoto_1.jpg");
  const std::string thumb = Shared("Photos/Thumb/vtwgphoto_thumb_1.jpg");
  const std::string list = Upload("PhotosPkg/UploadPhotoList.txt");
  EXPECT_EQ(GenerateLine(main, 120, 90) + GenerateLine(thumb, 80, 80) + "Path:" + main + "\nName:" + list + "\n", out);

  const imgtest::Decoded picture = imgtest::DecodeWithLibjpeg(main);
  EXPECT_EQ(120, picture.width);
  EXPECT_EQ(90, picture.height);
  EXPECT_EQ(3, picture.components);
  EXPECT_EQ(Encoded(store, rgb.data(), 120, 90), ReadBytes(main));

  const imgtest::Decoded small = imgtest::DecodeWithLibjpeg(thumb);
  EXPECT_EQ(80, small.width);
  EXPECT_EQ(80, small.height);
  uint8_t* scaled = store.ScaleBuffer(80, 80, 1, 120, 90, rgb.data());
  EXPECT_EQ(Encoded(store, scaled, 80, 80), ReadBytes(thumb));
  delete[] scaled;

  const std::string line = main + "\n";
  EXPECT_EQ(Bytes(line.begin(), line.end()), ReadBytes(list));
  Catalog::CMetaInfo meta(Upload("PhotosPkg"));
  EXPECT_EQ("Photos", meta.GetPackageType().Name().raw());
  EXPECT_EQ(list, meta.GetTagString("PathToUploadContentList").raw());
}

TEST_F(PictureStoreTest, ArtAndItsThumbnailLandInArtAndAreListedForUpload) {
  TestGame game(ZvArchive::eUpload_All);
  MediaCenter& store = game.store();
  ResInfo* art = nullptr;
  CaptureOut([&] {
    store.CreateNewRes(eRT_Art);
    art = store.CreateNewRes(eRT_Art);
  });
  ASSERT_NE(nullptr, art);
  Bytes rgb = imgtest::Gradient(100, 100);
  CaptureOut([&] { EXPECT_TRUE(store.StoreImageToDisk(art, rgb.data(), 100, 100, 1.0f)); });

  const std::string main = Shared("Art/vtwgart_2.jpg");
  EXPECT_EQ(100, imgtest::DecodeWithLibjpeg(main).width);
  EXPECT_EQ(80, imgtest::DecodeWithLibjpeg(Shared("Art/Thumb/vtwgart_thumb_2.jpg")).width);
  EXPECT_EQ(main + "\n", ReadText(Upload("ArtPkg/UploadArtList.txt")));
}

TEST_F(PictureStoreTest, VideoThumbnailAndCoverLandBesideTheVideoAndTheVideoIsListedForUpload) {
  TestGame game(ZvArchive::eUpload_All);
  MediaCenter& store = game.store();
  ResInfo* video = nullptr;
  CaptureOut([&] { video = store.CreateNewRes(eRT_Video); });
  ASSERT_NE(nullptr, video);
  zvtest::WriteText(store.temporaryVideoName(), "RIFF....AVI ");
  Bytes frame = imgtest::Gradient(640, 480);

  const std::string out = CaptureOut([&] {
    store.StoreThumbToDisk(video, frame.data(), 640, 480);
    store.StoreCoverToDisk(video, frame.data(), 640, 480);
    store.StoreVideoToDisk(video->mResId);
  });

  const std::string main = Shared("Videos/vtwgvideo_1.avi");
  const std::string thumb = Shared("Videos/Thumb/vtwgvideo_thumb_1.jpg");
  const std::string cover = Shared("Videos/Cover/vtwgvideo_cover_1.jpg");
  const std::string list = Upload("VideosPkg/UploadVideoList.txt");
  EXPECT_EQ(GenerateLine(thumb, 80, 80) + GenerateLine(cover, 320, 240) + "StoreVideo:" + main + " to Disk!\n" +
                "Path:" + main + "\nName:" + list + "\n",
            out);
  EXPECT_EQ("RIFF....AVI ", ReadText(main));
  EXPECT_EQ(80, imgtest::DecodeWithLibjpeg(thumb).height);
  const imgtest::Decoded coverPicture = imgtest::DecodeWithLibjpeg(cover);
  EXPECT_EQ(320, coverPicture.width);
  EXPECT_EQ(240, coverPicture.height);
  uint8_t* half = store.ScaleBuffer(320, 240, 1, 640, 480, frame.data());
  EXPECT_EQ(Encoded(store, half, 320, 240), ReadBytes(cover));
  delete[] half;
  EXPECT_EQ(main + "\n", ReadText(list));

  // With all three files the video counts as whole at the next start.
  CaptureOut([&] { store.SaveResInfo(eRT_Video); });
  TestGame again(ZvArchive::eUpload_All);
  CaptureOut([&] { again.store().InitResInfo(eRT_Video, ""); });
  EXPECT_EQ(1u, again.store().GetResInfoList(eRT_Video).size());
}

TEST_F(PictureStoreTest, CoverOfA320By240FrameIsTheFrameItself) {
  TestGame game;
  MediaCenter& store = game.store();
  ResInfo* video = nullptr;
  CaptureOut([&] { video = store.CreateNewRes(eRT_Video); });
  Bytes frame = imgtest::Gradient(320, 240);
  CaptureOut([&] { store.StoreCoverToDisk(video, frame.data(), 320, 240); });
  EXPECT_EQ(Encoded(store, frame.data(), 320, 240), ReadBytes(Shared("Videos/Cover/vtwgvideo_cover_1.jpg")));
}

TEST_F(PictureStoreTest, StoredPhotoIsFoundWholeAtTheNextStart) {
  TestGame game(ZvArchive::eUpload_All);
  ResInfo* photo = nullptr;
  Bytes rgb = imgtest::Gradient(64, 48);
  CaptureOut([&] {
    photo = game.store().CreateNewRes(eRT_Photo);
    photo->mImgWidth = 64;
    photo->mImgHeight = 48;
    game.store().StartOperProtected(eRT_Photo, photo->mResId, MediaCenter::ePOT_Create);
    game.store().SaveResInfo(eRT_Photo);
    game.store().StoreImageToDisk(photo, rgb.data(), 64, 48, 1.0f);
    game.store().EndOperProtected(eRT_Photo);
  });
  TestGame again(ZvArchive::eUpload_All);
  const std::string out = CaptureOut([&] { again.store().InitResInfo(eRT_Photo, ""); });
  EXPECT_EQ(std::string::npos, out.find("Res Corrupted")) << out;
  ASSERT_EQ(1u, again.store().GetResInfoList(eRT_Photo).size());
  EXPECT_EQ(64, again.store().GetResInfoList(eRT_Photo).front().mImgWidth);
}

TEST_F(PictureStoreTest, ScaleHalfAndDoubleChangeThePictureButNotTheThumbnail) {
  TestGame game(ZvArchive::eUpload_All);
  MediaCenter& store = game.store();
  ResInfo* first = nullptr;
  ResInfo* second = nullptr;
  CaptureOut([&] {
    first = store.CreateNewRes(eRT_Photo);
    second = store.CreateNewRes(eRT_Photo);
  });
  Bytes rgb = imgtest::Gradient(101, 61);
  const std::string out = CaptureOut([&] {
    EXPECT_TRUE(store.StoreImageToDisk(first, rgb.data(), 101, 61, 0.5f));
    EXPECT_TRUE(store.StoreImageToDisk(second, rgb.data(), 101, 61, 2.0f));
  });
  EXPECT_NE(std::string::npos, out.find(GenerateLine(Shared("Photos/vtwgphoto_1.jpg"), 51, 31)));
  EXPECT_NE(std::string::npos, out.find(GenerateLine(Shared("Photos/vtwgphoto_2.jpg"), 202, 122)));
  EXPECT_EQ(51, imgtest::DecodeWithLibjpeg(Shared("Photos/vtwgphoto_1.jpg")).width);
  EXPECT_EQ(122, imgtest::DecodeWithLibjpeg(Shared("Photos/vtwgphoto_2.jpg")).height);
  EXPECT_EQ(ReadBytes(Shared("Photos/Thumb/vtwgphoto_thumb_1.jpg")),
            ReadBytes(Shared("Photos/Thumb/vtwgphoto_thumb_2.jpg")));
  const std::string main1 = Shared("Photos/vtwgphoto_1.jpg");
  const std::string main2 = Shared("Photos/vtwgphoto_2.jpg");
  EXPECT_EQ(main1 + "\n" + main2 + "\n", ReadText(Upload("PhotosPkg/UploadPhotoList.txt")));
}

TEST_F(PictureStoreTest, UnsharedPhotoIsWrittenUnderItsOwnNameAndNotListedForUpload) {
  TestGame game(ZvArchive::eUpload_All);
  MediaCenter& store = game.store();
  ASSERT_EQ(0, mkdir((work + "mine").c_str(), 0755));
  ASSERT_EQ(0, mkdir((work + "mine/Thumb").c_str(), 0755));
  ResInfo* photo = nullptr;
  CaptureOut([&] { photo = store.CreateNewRes(eRT_UnSharePhoto); });
  photo->mName = work + "mine/secret_4.jpg";
  Bytes rgb = imgtest::Gradient(90, 90);
  const std::string out = CaptureOut([&] { EXPECT_TRUE(store.StoreImageToDisk(photo, rgb.data(), 90, 90, 1.0f)); });
  EXPECT_EQ(90, imgtest::DecodeWithLibjpeg(work + "mine/secret_4.jpg").width);
  EXPECT_EQ(80, imgtest::DecodeWithLibjpeg(work + "mine/Thumb/secret_thumb_4.jpg").width);
  EXPECT_NE(std::string::npos, out.find("Path:\nName:\n")) << out;
  EXPECT_FALSE(Exists(Upload("PhotosPkg/UploadPhotoList.txt")));
}

TEST_F(PictureStoreTest, PictureThatCannotBeWrittenGivesFalseAndNoThumbnailNorUploadLine) {
  TestGame game(ZvArchive::eUpload_All);
  MediaCenter& store = game.store();
  ResInfo* photo = nullptr;
  CaptureOut([&] { photo = store.CreateNewRes(eRT_UnSharePhoto); });
  photo->mName = work + "missing/pic_1.jpg";
  Bytes rgb = imgtest::Gradient(10, 10);
  bool stored = true;
  testing::internal::CaptureStderr();
  const std::string out = CaptureOut([&] { stored = store.StoreImageToDisk(photo, rgb.data(), 10, 10, 1.0f); });
  const std::string err = testing::internal::GetCapturedStderr();
  EXPECT_FALSE(stored);
  EXPECT_EQ("", out);
  EXPECT_EQ(0u, err.find("Problem :: ")) << err;
  EXPECT_FALSE(Exists(work + "missing"));
}

TEST_F(PictureStoreTest, ThumbnailThatCannotBeWrittenIsNotReported) {
  TestGame game;
  MediaCenter& store = game.store();
  ResInfo* art = nullptr;
  CaptureOut([&] { art = store.CreateNewRes(eRT_SpecificFolderArt); });
  ASSERT_EQ(0, mkdir((work + "art").c_str(), 0755));
  art->mName = work + "art/vtwspecificart_1.jpg";  // no Thumb folder beside it
  Bytes rgb = imgtest::Gradient(30, 30);
  bool stored = false;
  testing::internal::CaptureStderr();
  CaptureOut([&] { stored = store.StoreImageToDisk(art, rgb.data(), 30, 30, 1.0f); });
  testing::internal::GetCapturedStderr();
  EXPECT_TRUE(stored);
  EXPECT_TRUE(Exists(work + "art/vtwspecificart_1.jpg"));
  EXPECT_FALSE(Exists(work + "art/Thumb"));
}

// --- thumbnails of small pictures -------------------------------------------------

// A picture of fewer than 80 rows is enlarged, and scaling reads one row past
// the last; the store gives it the last row once more to read instead of
// whatever lies behind the array.
TEST_F(PictureStoreTest, ThumbnailOfAPictureShorterThanEightyRowsReadsNothingPastThePicture) {
  TestGame game;
  MediaCenter& store = game.store();
  ResInfo* photo = nullptr;
  CaptureOut([&] { photo = store.CreateNewRes(eRT_Photo); });
  const int width = 120, height = 30;
  // Smooth, so that the encoded thumbnail stays close to its pixels.
  Bytes rgb(size_t(width) * height * 3);
  for (int y = 0; y < height; ++y)
    for (int x = 0; x < width; ++x) {
      uint8_t* p = &rgb[(size_t(y) * width + x) * 3];
      p[0] = uint8_t(x * 2);
      p[1] = uint8_t(y * 8);
      p[2] = 128;
    }
  // The picture alone in an array of its exact size, so that AddressSanitizer sees
  // any read past it.
  uint8_t* exact = new uint8_t[rgb.size()];
  memcpy(exact, rgb.data(), rgb.size());
  CaptureOut([&] { store.StoreThumbToDisk(photo, exact, width, height); });
  delete[] exact;
  const std::string thumb = Shared("Photos/Thumb/vtwgphoto_thumb_1.jpg");
  EXPECT_EQ(ThumbWithExtraRow(store, rgb, width, height, LastRow(rgb, width, height)), ReadBytes(thumb));

  // The bottom rows end in the picture's last row, not in something else.
  const imgtest::Decoded judge = imgtest::DecodeWithLibjpeg(thumb);
  ASSERT_EQ(80, judge.height);
  for (int x = 0; x < 80; x += 7) {
    const uint8_t* got = &judge.pixels[(size_t(79) * 80 + x) * 3];
    const int sourceX = int(float(x) * (1.0f / (80.0f / float(width))));
    const uint8_t* want = &rgb[(size_t(height - 1) * width + sourceX) * 3];
    for (int k = 0; k < 3; ++k) EXPECT_NEAR(want[k], got[k], 24) << "x " << x << " channel " << k;
  }
}

TEST_F(PictureStoreTest, ThumbnailOfAPictureOfEightyRowsOrMoreIsScaleBufferAsItIs) {
  TestGame game;
  MediaCenter& store = game.store();
  ResInfo* photo = nullptr;
  CaptureOut([&] { photo = store.CreateNewRes(eRT_Photo); });
  // 80 rows: the last output row weighs the row past the picture with 0, so any
  // content of that row gives the same thumbnail.
  Bytes rgb = imgtest::Gradient(150, 80);
  CaptureOut([&] { store.StoreThumbToDisk(photo, rgb.data(), 150, 80); });
  const Bytes thumb = ReadBytes(Shared("Photos/Thumb/vtwgphoto_thumb_1.jpg"));
  EXPECT_EQ(ThumbWithExtraRow(store, rgb, 150, 80, imgtest::Pattern(150 * 3, 99)), thumb);
  EXPECT_EQ(ThumbWithExtraRow(store, rgb, 150, 80, Bytes(150 * 3, 0)), thumb);

  // Taller pictures never reach past their rows.
  Bytes tall = imgtest::Gradient(60, 81);
  CaptureOut([&] { store.StoreThumbToDisk(photo, tall.data(), 60, 81); });
  uint8_t* scaled = store.ScaleBuffer(80, 80, 1, 60, 81, tall.data());
  EXPECT_EQ(Encoded(store, scaled, 80, 80), ReadBytes(Shared("Photos/Thumb/vtwgphoto_thumb_1.jpg")));
  delete[] scaled;
}

TEST_F(PictureStoreTest, ThumbnailOfAOnePixelPictureIsThatColour) {
  TestGame game;
  MediaCenter& store = game.store();
  ResInfo* photo = nullptr;
  CaptureOut([&] { photo = store.CreateNewRes(eRT_Photo); });
  uint8_t* pixel = new uint8_t[3]{200, 100, 50};
  CaptureOut([&] { store.StoreThumbToDisk(photo, pixel, 1, 1); });
  delete[] pixel;
  const imgtest::Decoded judge = imgtest::DecodeWithLibjpeg(Shared("Photos/Thumb/vtwgphoto_thumb_1.jpg"));
  ASSERT_EQ(80 * 80 * 3, int(judge.pixels.size()));
  for (size_t i = 0; i < judge.pixels.size(); i += 3) {
    EXPECT_NEAR(200, judge.pixels[i], 3);
    EXPECT_NEAR(100, judge.pixels[i + 1], 3);
    EXPECT_NEAR(50, judge.pixels[i + 2], 3);
  }
}

// --- assertions ---------------------------------------------------------------------

TEST_F(PictureStoreTest, StoreImageToDiskAssertsBufferRecordAndType) {
  TestGame game;
  MediaCenter& store = game.store();
  ResInfo* clip = nullptr;
  ResInfo* video = nullptr;
  CaptureOut([&] {
    clip = store.CreateNewRes(eRT_Audio);
    video = store.CreateNewRes(eRT_Video);
  });
  uint8_t rgb[12] = {0};
  EXPECT_DEATH(store.StoreImageToDisk(clip, nullptr, 2, 2, 1.0f), StoreAssert(kStoreImage, "buf"));
  EXPECT_DEATH(store.StoreImageToDisk(nullptr, rgb, 2, 2, 1.0f), StoreAssert(kStoreImage, "inResInfo"));
  const std::string types =
      "inResInfo->mResType == eRT_Photo || inResInfo->mResType == eRT_Art || "
      "inResInfo->mResType == eRT_UnSharePhoto || inResInfo->mResType == eRT_ScrapBook || "
      "inResInfo->mResType == eRT_SpecificFolderArt";
  EXPECT_DEATH(store.StoreImageToDisk(clip, rgb, 2, 2, 1.0f), StoreAssert(kStoreImage, types));
  EXPECT_DEATH(store.StoreImageToDisk(video, rgb, 2, 2, 1.0f), StoreAssert(kStoreImage, types));
}

TEST_F(PictureStoreTest, StoreImageToDiskWithScaleQuarterFailsTheEncodersAssertion) {
  TestGame game;
  ResInfo* photo = nullptr;
  CaptureOut([&] { photo = game.store().CreateNewRes(eRT_Photo); });
  uint8_t rgb[12] = {0};
  EXPECT_DEATH(game.store().StoreImageToDisk(photo, rgb, 2, 2, 0.25f),
               AssertRegex(kSource, "scale == 0.5f || scale == 1.0f || scale == 2.0f"));
  EXPECT_FALSE(Exists(Shared("Photos/vtwgphoto_1.jpg")));
}

TEST_F(PictureStoreTest, StoreThumbToDiskAssertsBufferRecordAndTypeButTakesVideos) {
  TestGame game;
  MediaCenter& store = game.store();
  ResInfo* clip = nullptr;
  CaptureOut([&] { clip = store.CreateNewRes(eRT_Audio); });
  uint8_t rgb[12] = {0};
  EXPECT_DEATH(store.StoreThumbToDisk(clip, nullptr, 2, 2), StoreAssert(kStoreThumb, "buf"));
  EXPECT_DEATH(store.StoreThumbToDisk(nullptr, rgb, 2, 2), StoreAssert(kStoreThumb, "inResInfo"));
  EXPECT_DEATH(store.StoreThumbToDisk(clip, rgb, 2, 2),
               StoreAssert(kStoreThumb,
                           "inResInfo->mResType == eRT_Photo || inResInfo->mResType == eRT_Art || "
                           "inResInfo->mResType == eRT_UnSharePhoto || inResInfo->mResType == eRT_ScrapBook || "
                           "inResInfo->mResType == eRT_SpecificFolderArt || inResInfo->mResType == eRT_Video"));
  EXPECT_FALSE(Exists(Shared("Music/Thumb")));
}

TEST_F(PictureStoreTest, StoreCoverToDiskAssertsBufferRecordAndVideo) {
  TestGame game;
  MediaCenter& store = game.store();
  ResInfo* photo = nullptr;
  ResInfo* video = nullptr;
  CaptureOut([&] {
    photo = store.CreateNewRes(eRT_Photo);
    video = store.CreateNewRes(eRT_Video);
  });
  Bytes frame(320 * 240 * 3, 0);
  EXPECT_DEATH(store.StoreCoverToDisk(video, nullptr, 320, 240), StoreAssert(kStoreCover, "buf"));
  EXPECT_DEATH(store.StoreCoverToDisk(nullptr, frame.data(), 320, 240), StoreAssert(kStoreCover, "inResInfo"));
  EXPECT_DEATH(store.StoreCoverToDisk(photo, frame.data(), 320, 240),
               StoreAssert(kStoreCover, "inResInfo->mResType == eRT_Video"));
}

TEST_F(PictureStoreTest, PortraitCoverFailsTheAssertionAndWritesNothing) {
  TestGame game;
  MediaCenter& store = game.store();
  ResInfo* video = nullptr;
  CaptureOut([&] { video = store.CreateNewRes(eRT_Video); });
  Bytes frame(480 * 640 * 3, 0);
  EXPECT_DEATH(store.StoreCoverToDisk(video, frame.data(), 240, 320), StoreAssert(kStoreCover, "0"));
  EXPECT_DEATH(store.StoreCoverToDisk(video, frame.data(), 480, 640), StoreAssert(kStoreCover, "0"));
  EXPECT_FALSE(Exists(Shared("Videos/Cover/vtwgvideo_cover_1.jpg")));
}

TEST_F(PictureStoreTest, CoverOfAnyOtherSizeFailsTheAssertionAndWritesNothing) {
  TestGame game;
  MediaCenter& store = game.store();
  ResInfo* video = nullptr;
  CaptureOut([&] { video = store.CreateNewRes(eRT_Video); });
  Bytes frame(640 * 480 * 3, 0);
  EXPECT_DEATH(store.StoreCoverToDisk(video, frame.data(), 480, 640 / 2), StoreAssert(kStoreCover, "0"));
  EXPECT_DEATH(store.StoreCoverToDisk(video, frame.data(), 320, 241), StoreAssert(kStoreCover, "0"));
  EXPECT_FALSE(Exists(Shared("Videos/Cover/vtwgvideo_cover_1.jpg")));
}

TEST_F(PictureStoreTest, CoverThatCannotBeWrittenFailsTheAssertionSaveResult) {
  TestGame game;
  MediaCenter& store = game.store();
  ResInfo* video = nullptr;
  CaptureOut([&] { video = store.CreateNewRes(eRT_Video); });
  // A plain file where the cover folder belongs.
  ASSERT_EQ(0, rmdir(Shared("Videos/Cover").c_str()));
  zvtest::WriteText(Shared("Videos/Cover"), "not a folder");
  Bytes frame(320 * 240 * 3, 0);
  EXPECT_DEATH(store.StoreCoverToDisk(video, frame.data(), 320, 240), StoreAssert(kStoreCover, "saveResult"));
}

}  // namespace
