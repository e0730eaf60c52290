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

#include "CutGallery.h"

namespace {

using mediatest::GalleryState;
using mediatest::kMostOperations;
using mediatest::TestGame;
using zvtest::ReadText;
using zvtest::WriteText;

class PowerCutTest : public mediatest::CutGalleryTest {};

TEST_F(PowerCutTest, CutAfterEachFileOperationOfTheRecordersSaveRecoversByTheRules) {
  std::map<int, std::string> rowAt;
  std::map<int, std::string> listAt;
  int boundaries[4] = {-1, -1, -1, -1};
  bool finished = false;
  for (int cut = 1; cut <= kMostOperations && !finished; ++cut) {
    SCOPED_TRACE("power cut after file operation " + std::to_string(cut));
    const zvtest::ChildResult child = CutSave(cut);
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
    const std::string row = SaveRow(found);
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
    const zvtest::ChildResult child = CutDelete(cut);
    if (child.exited) {
      ASSERT_EQ(0, child.exitCode) << child.out;
      finished = true;
      break;
    }
    ASSERT_EQ(SIGKILL, child.signal) << child.out;

    const GalleryState found = Read();
    const std::string row = DeleteRow(found);
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
