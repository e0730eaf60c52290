// Power cuts during the recorder's save and during a deletion: the process is cut
// after each file operation in turn, and a new store on the same folders must
// leave the gallery as the recovery rules say.
#include <gtest/gtest.h>
#include <signal.h>

#include <algorithm>
#include <map>
#include <set>
#include <string>
#include <vector>

#include "MediaFixture.h"
#include "solva/FaultInjection.h"

namespace {

using mediatest::MediaTest;
using mediatest::TestGame;
using zvtest::Bytes;
using zvtest::Exists;
using zvtest::ReadBytes;
using zvtest::ReadText;
using zvtest::WriteText;

// More cuts than any of the sequences has file operations.
const int kMostOperations = 200;

uint32_t U32At(const Bytes& bytes, size_t at) {
  return uint32_t(bytes[at]) | uint32_t(bytes[at + 1]) << 8 | uint32_t(bytes[at + 2]) << 16 |
         uint32_t(bytes[at + 3]) << 24;
}

// What the disk holds about the audio gallery, read without the store.
struct GalleryState {
  bool checkFile = false;
  Bytes check;
  std::vector<int> indexIds;
  uint32_t residAudio = 0;
  std::set<int> mediaIds;
  std::string uploadList;

  bool Indexed(int id) const { return std::find(indexIds.begin(), indexIds.end(), id) != indexIds.end(); }
  // The highest number that anything on the disk refers to.
  int HighestReferenced() const {
    int highest = int(residAudio);
    for (int id : indexIds) highest = std::max(highest, id);
    for (int id : mediaIds) highest = std::max(highest, id);
    return highest;
  }
};

class PowerCutTest : public MediaTest {
 protected:
  GalleryState Read() const {
    GalleryState state;
    state.checkFile = Exists(Index("AudioCheck.bin"));
    if (state.checkFile) state.check = ReadBytes(Index("AudioCheck.bin"));
    if (Exists(Index("vtwgAudioResInfo.bin"))) {
      const Bytes index = ReadBytes(Index("vtwgAudioResInfo.bin"));
      EXPECT_GE(index.size(), 8u);
      EXPECT_EQ(9213426u, U32At(index, 0));
      const uint32_t count = U32At(index, 4);
      EXPECT_EQ(8u + 16u * count, index.size()) << "an index is always whole";
      for (uint32_t i = 0; i < count && 8 + 16 * i + 4 <= index.size(); ++i) {
        state.indexIds.push_back(int(U32At(index, 8 + 16 * i)));
      }
    }
    if (Exists(Index("resid.bin"))) {
      const Bytes resid = ReadBytes(Index("resid.bin"));
      EXPECT_EQ(40u, resid.size()) << "resid.bin is always whole";
      if (resid.size() >= 12) state.residAudio = U32At(resid, 8);
    }
    for (const std::string& name : zvtest::ListFolder(Shared("Music"))) {
      int id = 0;
      if (sscanf(name.c_str(), "vtwgaudio_%d.wav", &id) == 1 && name == "vtwgaudio_" + std::to_string(id) + ".wav") {
        state.mediaIds.insert(id);
      }
    }
    if (Exists(Upload("MusicPkg/UploadAudioList.txt"))) state.uploadList = ReadText(Upload("MusicPkg/UploadAudioList.txt"));
    return state;
  }

  // The recorder's save of one new clip, as Microphone::StopRecord does it.
  static void SaveNewClip(MediaCenter& store, const std::string& content) {
    ResInfo* clip = store.CreateNewRes(eRT_Audio);
    WriteText(store.temporaryAudioName(), content);
    store.StartOperProtected(eRT_Audio, clip->mResId, MediaCenter::ePOT_Create);
    store.SaveResInfo(eRT_Audio);
    store.StoreAudioToDisk(eRT_Audio, clip->mResId);
    store.EndOperProtected(eRT_Audio);
  }

  // A fresh device under its own folder, with `clips` clips saved the normal way.
  void FreshGallery(const std::string& name, int clips) {
    root = dir.path() + "/" + name + "/";
    ASSERT_TRUE(solva::SetDeviceRoot(root));
    TestGame game;
    game.store().InitResInfo(eRT_Audio, "");
    for (int i = 1; i <= clips; ++i) SaveNewClip(game.store(), "clip " + std::to_string(i));
  }

  static void Mark(const char* step) {
    printf("@@%s %d\n", step, solva::FileOperationCount());
    fflush(stdout);
  }
  // The number of file operations done when `step` was finished, or -1.
  static int MarkedAt(const std::string& out, const std::string& step) {
    const size_t at = out.find("@@" + step + " ");
    return at == std::string::npos ? -1 : atoi(out.c_str() + at + step.size() + 3);
  }
};

TEST_F(PowerCutTest, CutAfterEachFileOperationOfTheRecordersSaveRecoversByTheRules) {
  std::map<int, std::string> rowAt;
  std::map<int, std::string> listAt;
  int boundaries[4] = {-1, -1, -1, -1};
  bool finished = false;
  for (int cut = 1; cut <= kMostOperations && !finished; ++cut) {
    SCOPED_TRACE("power cut after file operation " + std::to_string(cut));
    FreshGallery("create-" + std::to_string(cut), 1);
    const zvtest::ChildResult child = zvtest::RunInChild([&] {
      TestGame game;
      MediaCenter& store = game.store();
      store.InitResInfo(eRT_Audio, "");
      ResInfo* clip = store.CreateNewRes(eRT_Audio);
      WriteText(store.temporaryAudioName(), "clip 2");
      solva::SetPowerCutAfter(cut);
      store.StartOperProtected(eRT_Audio, clip->mResId, MediaCenter::ePOT_Create);
      Mark("start");
      store.SaveResInfo(eRT_Audio);
      Mark("save");
      store.StoreAudioToDisk(eRT_Audio, clip->mResId);
      Mark("store");
      store.EndOperProtected(eRT_Audio);
      Mark("end");
    });
    if (child.exited) {
      // The whole save ran: the cut would have come after its last operation.
      ASSERT_EQ(0, child.exitCode) << child.out;
      const char* steps[4] = {"start", "save", "store", "end"};
      for (int i = 0; i < 4; ++i) boundaries[i] = MarkedAt(child.out, steps[i]);
      EXPECT_EQ(cut - 1, boundaries[3]);
      finished = true;
      break;
    }
    ASSERT_EQ(SIGKILL, child.signal) << child.out;

    const GalleryState found = Read();
    std::string row;
    if (!found.checkFile) {
      row = found.Indexed(2) ? "finished" : "not begun";
    } else {
      EXPECT_EQ(12u, found.check.size());
      if (!found.Indexed(2)) row = "check file, no record";
      else if (found.mediaIds.count(2) == 0) row = "check file, record, no media file";
      else row = "check file, record, media file";
    }
    rowAt[cut] = row;
    listAt[cut] = found.uploadList;
    SCOPED_TRACE(row);

    TestGame restarted;
    MediaCenter& store = restarted.store();
    store.InitResInfo(eRT_Audio, "");
    const GalleryState after = Read();
    EXPECT_FALSE(after.checkFile);
    // No clip is lost whose entry and file both reached the gallery.
    for (int id : found.indexIds) {
      if (found.mediaIds.count(id) == 0) continue;
      EXPECT_NE(nullptr, store.GetResInfo(eRT_Audio, id, false)) << "clip " << id;
      EXPECT_TRUE(after.mediaIds.count(id)) << "clip " << id;
    }
    EXPECT_NE(nullptr, store.GetResInfo(eRT_Audio, 1, false));
    EXPECT_EQ("clip 1", ReadText(Music("vtwgaudio_1.wav")));

    if (row == "check file, no record" || row == "not begun") {
      EXPECT_EQ(std::vector<int>{1}, after.indexIds);
      EXPECT_EQ(1u, store.GetResInfoList(eRT_Audio).size());
    } else if (row == "check file, record, no media file") {
      EXPECT_EQ(std::vector<int>{1}, after.indexIds) << "record deleted, index saved";
      EXPECT_EQ(nullptr, store.GetResInfo(eRT_Audio, 2, false));
      EXPECT_EQ(2u, after.residAudio) << "the number stays used";
    } else {
      EXPECT_EQ((std::vector<int>{1, 2}), after.indexIds) << "resource kept";
      EXPECT_EQ("clip 2", ReadText(Music("vtwgaudio_2.wav")));
      // A cut between the move and the list's line leaves the clip unlisted: the
      // recovery keeps the resource and does not touch the list.
      EXPECT_EQ(found.uploadList, after.uploadList);
    }

    // Numbers are never given twice: the next one is above all the disk knows.
    ResInfo* next = store.CreateNewRes(eRT_Audio);
    ASSERT_NE(nullptr, next);
    EXPECT_GT(next->mResId, found.HighestReferenced());
    EXPECT_GT(next->mResId, after.HighestReferenced());
  }
  ASSERT_TRUE(finished) << "the save has more than " << kMostOperations << " file operations";
  for (const auto& cut : rowAt) printf("[power cut] save, after operation %d: %s\n", cut.first, cut.second.c_str());
  // A cut right after each of the four steps finds exactly its row.
  EXPECT_EQ("check file, no record", rowAt[boundaries[0]]) << "cut after StartOperProtected";
  EXPECT_EQ("check file, record, no media file", rowAt[boundaries[1]]) << "cut after SaveResInfo";
  EXPECT_EQ("check file, record, media file", rowAt[boundaries[2]]) << "cut after StoreAudioToDisk";
  EXPECT_NE(std::string::npos, listAt[boundaries[2]].find("vtwgaudio_2.wav")) << "listed once stored";
  EXPECT_EQ("finished", rowAt[boundaries[3]]) << "cut after EndOperProtected";
  EXPECT_EQ("not begun", rowAt[1]) << "cut inside StartOperProtected";
}

TEST_F(PowerCutTest, CutAfterEachFileOperationOfADeletionRecoversByTheRules) {
  std::set<std::string> rowsSeen;
  bool finished = false;
  for (int cut = 1; cut <= kMostOperations && !finished; ++cut) {
    SCOPED_TRACE("power cut after file operation " + std::to_string(cut));
    FreshGallery("delete-" + std::to_string(cut), 2);
    const zvtest::ChildResult child = zvtest::RunInChild([&] {
      TestGame game;
      game.store().InitResInfo(eRT_Audio, "");
      solva::SetPowerCutAfter(cut);
      game.store().DeleteRes(eRT_Audio, 2, true);
    });
    if (child.exited) {
      ASSERT_EQ(0, child.exitCode) << child.out;
      finished = true;
      break;
    }
    ASSERT_EQ(SIGKILL, child.signal) << child.out;

    const GalleryState found = Read();
    std::string row;
    if (!found.checkFile) {
      row = found.Indexed(2) ? "not begun" : "finished";
    } else {
      EXPECT_EQ(12u, found.check.size());
      if (found.Indexed(2)) row = "check file, record, media files";
      else if (found.mediaIds.count(2)) row = "check file, no record, media files";
      else row = "check file, no record, some files";
    }
    rowsSeen.insert(row);
    printf("[power cut] deletion, after operation %d: %s\n", cut, row.c_str());
    SCOPED_TRACE(row);

    TestGame restarted;
    MediaCenter& store = restarted.store();
    store.InitResInfo(eRT_Audio, "");
    const GalleryState after = Read();
    EXPECT_FALSE(after.checkFile);
    EXPECT_NE(nullptr, store.GetResInfo(eRT_Audio, 1, false)) << "the other clip is never lost";
    EXPECT_EQ("clip 1", ReadText(Music("vtwgaudio_1.wav")));

    if (row == "not begun") {
      EXPECT_EQ((std::vector<int>{1, 2}), after.indexIds);
      EXPECT_EQ("clip 2", ReadText(Music("vtwgaudio_2.wav")));
    } else if (row == "check file, record, media files") {
      EXPECT_EQ(std::vector<int>{1}, after.indexIds) << "deletion run again";
      EXPECT_EQ(0u, after.mediaIds.count(2));
      EXPECT_EQ(std::string::npos, after.uploadList.find(Music("vtwgaudio_2.wav")));
    } else {
      EXPECT_EQ(std::vector<int>{1}, after.indexIds);
      EXPECT_EQ(nullptr, store.GetResInfo(eRT_Audio, 2, false));
      // Files still there stay as orphans; the check file is gone.
      EXPECT_EQ(found.mediaIds.count(2), after.mediaIds.count(2));
    }
    ResInfo* next = store.CreateNewRes(eRT_Audio);
    ASSERT_NE(nullptr, next);
    EXPECT_EQ(3, next->mResId) << "number 2 is never given again";
  }
  ASSERT_TRUE(finished) << "the deletion has more than " << kMostOperations << " file operations";
  EXPECT_TRUE(rowsSeen.count("check file, record, media files")) << "cut after StartOperProtected";
  EXPECT_TRUE(rowsSeen.count("check file, no record, media files")) << "cut after SaveResInfo";
  EXPECT_TRUE(rowsSeen.count("check file, no record, some files")) << "cut after the removal of files";
  EXPECT_TRUE(rowsSeen.count("not begun"));
  EXPECT_TRUE(rowsSeen.count("finished"));
}

}  // namespace
