#pragma once
// Galleries cut short by a power loss: the recorder's save of a clip and a
// deletion, cut after each file operation in turn, and what the disk then holds,
// read without the store.
#include <gtest/gtest.h>

#include <algorithm>
#include <set>
#include <string>
#include <vector>

#include "MediaFixture.h"
#include "solva/FaultInjection.h"

namespace mediatest {

using zvtest::Exists;
using zvtest::ReadBytes;
using zvtest::ReadText;
using zvtest::WriteText;

// More cuts than any of the sequences has file operations.
const int kMostOperations = 200;

inline uint32_t U32At(const Bytes& bytes, size_t at) {
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

class CutGalleryTest : public MediaTest {
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

  // The recorder's save of clip 2 beside clip 1 on a fresh device named after
  // `cut` and `twin`, cut after file operation `cut` (in a child, which the cut
  // ends); the child marks how far each step got (MarkedAt).
  zvtest::ChildResult CutSave(int cut, const std::string& twin = "") {
    FreshGallery("create-" + std::to_string(cut) + twin, 1);
    return zvtest::RunInChild([&] {
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
  }

  // The deletion of clip 2 of two, cut after file operation `cut`.
  zvtest::ChildResult CutDelete(int cut, const std::string& twin = "") {
    FreshGallery("delete-" + std::to_string(cut) + twin, 2);
    return zvtest::RunInChild([&] {
      TestGame game;
      game.store().InitResInfo(eRT_Audio, "");
      solva::SetPowerCutAfter(cut);
      game.store().DeleteRes(eRT_Audio, 2, true);
    });
  }

  // The row of the recovery table that a cut save of clip 2 left.
  static std::string SaveRow(const GalleryState& found) {
    if (!found.checkFile) return found.Indexed(2) ? "finished" : "not begun";
    EXPECT_EQ(12u, found.check.size());
    if (!found.Indexed(2)) return "check file, no record";
    if (found.mediaIds.count(2) == 0) return "check file, record, no media file";
    return "check file, record, media file";
  }

  // The row that a cut deletion of clip 2 left.
  static std::string DeleteRow(const GalleryState& found) {
    if (!found.checkFile) return found.Indexed(2) ? "not begun" : "finished";
    EXPECT_EQ(12u, found.check.size());
    if (found.Indexed(2)) return "check file, record, media files";
    if (found.mediaIds.count(2)) return "check file, no record, media files";
    return "check file, no record, some files";
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

}  // namespace mediatest
