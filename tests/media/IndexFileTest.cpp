// The .bin index files, byte by byte, for every type: what the store writes and
// what it reads from bytes laid out here.
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <string>
#include <vector>

#include "MediaFixture.h"

namespace {

using mediatest::MediaTest;
using mediatest::PutF32;
using mediatest::PutName;
using mediatest::TestGame;
using zvtest::Bytes;
using zvtest::PutI32;
using zvtest::PutU32;
using zvtest::ReadBytes;
using zvtest::WriteBytes;
using zvtest::WriteText;

// The gallery's own tables, as other programs on the device know them.
const char* const kIndexBase[9] = {
    "vtwgPhotoResInfo",     "vtwgAudioResInfo", "vtwgVideoResInfo",        "vtwgArtResInfo",
    "vtwgScrapBookResInfo", "vtwgUnSharePhoto", "vtwgSpecificFolderPhoto", "vtwgSpecificFolderArt",
    "vtwgSpecificFolderAudio"};
const uint32_t kVersion[9] = {9213426, 9213426, 9213426, 9213426, 9213426, 9213426, 9213426, 0, 0};

bool NamePersisted(int type) { return type == 4 || type == 5 || type == 7 || type == 8; }

class IndexFileTest : public MediaTest, public testing::WithParamInterface<int> {
 protected:
  EResType type() const { return static_cast<EResType>(GetParam()); }

  std::string IndexPath() const {
    const std::string folder = type() == eRT_ScrapBook ? root + "LocalData/Player1/" : Index("");
    return folder + kIndexBase[GetParam()] + ".bin";
  }

  // Two records with every field set, as a caller of the store would leave them.
  std::vector<ResInfo> Records() const {
    std::vector<ResInfo> records(2);
    const int ids[2] = {type() == eRT_SpecificFolderPhoto ? 0 : 3, type() == eRT_SpecificFolderPhoto ? 1 : 7};
    for (int i = 0; i < 2; ++i) {
      ResInfo& r = records[i];
      r.mResType = type();
      r.mResId = ids[i];
      r.mViewMode = i;
      r.mImgWidth = i == 0 ? 640 : 240;
      r.mImgHeight = i == 0 ? 480 : 320;
      r.mLength = i == 0 ? 2.5f : 99.75f;
      r.mSSVersion = i == 0 ? 2 : 5;
      switch (type()) {
        case eRT_ScrapBook:
          r.mName = root + "LocalData/Player1/MicrophoneWidget/SD-1-" + std::to_string(ids[i]) + "/";
          break;
        case eRT_UnSharePhoto:
        case eRT_SpecificFolderArt:
          r.mName = "/media/card/picture_" + std::to_string(ids[i]) + ".jpg";
          break;
        case eRT_SpecificFolderAudio:
          r.mName = "/media/card/voice/clip_" + std::to_string(ids[i]) + ".wav";
          break;
        default:
          break;
      }
    }
    return records;
  }

  // The file laid out from the layout tables: version, count, then per record the
  // head (number, type, orientation) and the tail of the type.
  Bytes Layout(const std::vector<ResInfo>& records) const {
    Bytes out;
    PutU32(out, kVersion[GetParam()]);
    PutI32(out, int32_t(records.size()));
    for (const ResInfo& r : records) {
      PutI32(out, r.mResId);
      PutI32(out, r.mResType);
      PutI32(out, r.mViewMode);
      switch (GetParam()) {
        case 0:
        case 3:
          PutI32(out, r.mImgWidth);
          PutI32(out, r.mImgHeight);
          break;
        case 1:
        case 2:
          PutF32(out, r.mLength);
          break;
        case 4:
          PutI32(out, r.mSSVersion);
          PutName(out, r.mName);
          break;
        case 5:
        case 7:
          PutI32(out, r.mImgWidth);
          PutI32(out, r.mImgHeight);
          PutName(out, r.mName);
          break;
        case 6:
          break;
        case 8:
          PutName(out, r.mName);
          break;
      }
    }
    return out;
  }

  // The media files without which a record of the type is dropped at load.
  void MakeMediaFiles(const std::vector<ResInfo>& records) const {
    for (const ResInfo& r : records) {
      const std::string n = std::to_string(r.mResId);
      switch (type()) {
        case eRT_Photo:
          WriteText(Shared("Photos/vtwgphoto_" + n + ".jpg"), "p");
          WriteText(Shared("Photos/Thumb/vtwgphoto_thumb_" + n + ".jpg"), "t");
          break;
        case eRT_Video:
          WriteText(Shared("Videos/vtwgvideo_" + n + ".avi"), "v");
          WriteText(Shared("Videos/Thumb/vtwgvideo_thumb_" + n + ".jpg"), "t");
          WriteText(Shared("Videos/Cover/vtwgvideo_cover_" + n + ".jpg"), "c");
          break;
        case eRT_Art:
          WriteText(Shared("Art/vtwgart_" + n + ".jpg"), "a");
          WriteText(Shared("Art/Thumb/vtwgart_thumb_" + n + ".jpg"), "t");
          break;
        case eRT_ScrapBook:
          mkdir((root + "LocalData/Player1/MicrophoneWidget").c_str(), 0755);
          mkdir(r.mName.c_str(), 0755);
          WriteText(r.mName + "dataFile.json", "{}");
          break;
        default:
          break;
      }
    }
  }

  static std::string GeneratedName(int type, int id) {
    const std::string n = std::to_string(id);
    switch (type) {
      case 0: return "vtwgphoto_" + n + ".jpg";
      case 1: return "vtwgaudio_" + n + ".wav";
      case 2: return "vtwgvideo_" + n + ".avi";
      case 3: return "vtwgart_" + n + ".jpg";
      default: return "";
    }
  }
};

TEST_P(IndexFileTest, WrittenIndexMatchesTheLayoutByteForByte) {
  TestGame game;
  const std::vector<ResInfo> records = Records();
  for (const ResInfo& r : records) game.store().GetResInfoList(type()).push_back(r);
  game.store().SaveResInfoToBin(type());
  EXPECT_EQ(Layout(records), ReadBytes(IndexPath()));
}

TEST_P(IndexFileTest, EmptyListIsAnEightByteFile) {
  TestGame game;
  game.store().SaveResInfoToBin(type());
  Bytes expected;
  PutU32(expected, kVersion[GetParam()]);
  PutI32(expected, 0);
  EXPECT_EQ(expected, ReadBytes(IndexPath()));
}

TEST_P(IndexFileTest, LaidOutIndexLoadsIntoTheExpectedRecords) {
  const std::vector<ResInfo> records = Records();
  WriteBytes(IndexPath(), Layout(records));
  MakeMediaFiles(records);
  TestGame game;
  game.store().LoadResInfoFromBin(type());
  const ResInfoList& list = game.store().GetResInfoList(type());
  ASSERT_EQ(2u, list.size());
  auto loaded = list.begin();
  for (const ResInfo& r : records) {
    SCOPED_TRACE(r.mResId);
    EXPECT_EQ(r.mResId, loaded->mResId);
    EXPECT_EQ(r.mResType, loaded->mResType);
    EXPECT_EQ(r.mViewMode, loaded->mViewMode);
    const bool image = GetParam() == 0 || GetParam() == 3 || GetParam() == 5 || GetParam() == 7;
    EXPECT_EQ(image ? r.mImgWidth : 0, loaded->mImgWidth);
    EXPECT_EQ(image ? r.mImgHeight : 0, loaded->mImgHeight);
    EXPECT_EQ(GetParam() == 1 || GetParam() == 2 ? r.mLength : 0.0f, loaded->mLength);
    EXPECT_EQ(GetParam() == 4 ? r.mSSVersion : 1, loaded->mSSVersion);
    EXPECT_EQ(NamePersisted(GetParam()) ? r.mName : GeneratedName(GetParam(), r.mResId), loaded->mName);
    EXPECT_EQ(nullptr, loaded->mMediaBuffer);
    EXPECT_EQ(nullptr, loaded->mThumbBuffer);
    ++loaded;
  }
  EXPECT_EQ(unsigned(records[1].mResId), game.store().GetMaxResId(type()));
}

TEST_P(IndexFileTest, SaveThenLoadGivesTheSameBytesAgain) {
  const std::vector<ResInfo> records = Records();
  MakeMediaFiles(records);
  {
    TestGame game;
    for (const ResInfo& r : records) game.store().GetResInfoList(type()).push_back(r);
    game.store().SaveResInfo(type());
  }
  const Bytes first = ReadBytes(IndexPath());
  TestGame game;
  game.store().LoadResInfo(type());
  game.store().SaveResInfoToBin(type());
  EXPECT_EQ(first, ReadBytes(IndexPath()));
}

std::string TypeName(const testing::TestParamInfo<int>& info) {
  static const char* const names[9] = {"Photo",        "Audio",
                                       "Video",        "Art",
                                       "ScrapBook",    "UnSharePhoto",
                                       "SpecificFolderPhoto", "SpecificFolderArt",
                                       "SpecificFolderAudio"};
  return names[info.param];
}

INSTANTIATE_TEST_SUITE_P(AllNineTypes, IndexFileTest, testing::Range(0, 9), TypeName);

}  // namespace
