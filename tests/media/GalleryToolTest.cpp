// solva-gallery's examination and repair, on galleries left by each cut point of
// the power-cut matrix and on galleries damaged in other ways.
#include <gtest/gtest.h>
#include <signal.h>

#include <filesystem>
#include <functional>
#include <map>

#include "CutGallery.h"
#include "Gallery.h"

namespace {

using mediatest::GalleryState;
using mediatest::kMostOperations;
using mediatest::TestGame;
using zvtest::Bytes;
using zvtest::Exists;
using zvtest::ReadText;
using zvtest::WriteText;

namespace fs = std::filesystem;

class GalleryToolTest : public mediatest::CutGalleryTest {
 protected:
  gallery::Report Examine() {
    gallery::Options options;
    options.root = root;
    gallery::Report report;
    std::string error;
    EXPECT_TRUE(gallery::Examine(options, &report, &error)) << error;
    return report;
  }

  gallery::Report Repair() {
    gallery::Options options;
    options.root = root;
    gallery::Report before, after;
    std::string error;
    EXPECT_TRUE(gallery::Repair(options, &before, &after, &error)) << error;
    return after;
  }

  // Every file under `folder` by its path below it, with its bytes, in which the
  // folder's own path reads "ROOT/". A whole-file replacement cut short leaves its
  // temporary file under a name of chance: "NAME.tmp-*" here.
  static std::map<std::string, std::string> Files(const std::string& folder) {
    std::map<std::string, std::string> files;
    for (const auto& entry : fs::recursive_directory_iterator(folder)) {
      if (!entry.is_regular_file()) continue;
      std::string name = entry.path().string().substr(folder.size());
      const size_t tmp = name.rfind(".tmp-");
      if (tmp != std::string::npos) name = name.substr(0, tmp) + ".tmp-*";
      std::string text = ReadText(entry.path().string());
      for (size_t at = text.find(folder); at != std::string::npos; at = text.find(folder, at)) {
        text.replace(at, folder.size(), "ROOT/");
      }
      files[name] = text;
    }
    return files;
  }

  // The faults of a report, as "type kind path".
  static std::vector<std::string> Faults(const gallery::Report& report) {
    std::vector<std::string> faults;
    for (const gallery::Finding& f : report.findings) {
      if (f.fault) faults.push_back(f.type + " " + f.kind + " " + f.path);
    }
    return faults;
  }
  static std::vector<std::string> Notes(const gallery::Report& report) {
    std::vector<std::string> notes;
    for (const gallery::Finding& f : report.findings) {
      if (!f.fault) notes.push_back(f.type + " " + f.kind + " " + f.path);
    }
    return notes;
  }
  static const gallery::Finding* FindingOf(const gallery::Report& report, const std::string& kind) {
    for (const gallery::Finding& f : report.findings) {
      if (f.kind == kind) return &f;
    }
    return nullptr;
  }

  // After a cut left `root`, and its twin `twinRoot` the same: repair on the one,
  // the title's start on the other, must leave the same files, and a clean check.
  void RepairLeavesWhatTheNextStartLeaves(const std::string& twinRoot) {
    const gallery::Report after = Repair();
    EXPECT_EQ(0, after.Faults()) << testing::PrintToString(Faults(after));
    const std::string repairedRoot = root;
    root = twinRoot;
    ASSERT_TRUE(solva::SetDeviceRoot(root));
    {
      TestGame restarted;
      restarted.store().InitResInfo(eRT_Audio, "");
      restarted.store().InitResInfo(eRT_SpecificFolderAudio, "");
    }
    EXPECT_EQ(Files(twinRoot), Files(repairedRoot));
    root = repairedRoot;
    ASSERT_TRUE(solva::SetDeviceRoot(root));
    EXPECT_EQ(0, Examine().Faults()) << "check passes after the repair";
  }

  // Cuts a sequence (`cutAt`, on a gallery and on its twin) after each of its file
  // operations in turn; `judge` gets the row of the table that each cut left and
  // the examination of it, then the repair is held against the next start. The
  // rows seen come back.
  std::set<std::string> EveryCut(const std::function<zvtest::ChildResult(int, const std::string&)>& cutAt,
                                 const std::function<std::string(const GalleryState&)>& rowOf,
                                 const std::function<void(const std::string&, const gallery::Report&)>& judge) {
    std::set<std::string> rowsSeen;
    for (int cut = 1; cut <= kMostOperations; ++cut) {
      SCOPED_TRACE("power cut after file operation " + std::to_string(cut));
      const zvtest::ChildResult twin = cutAt(cut, "-twin");
      const std::string twinRoot = root;
      const zvtest::ChildResult child = cutAt(cut, "");
      EXPECT_EQ(child.exited, twin.exited);
      if (child.exited) return rowsSeen;
      const std::string row = rowOf(Read());
      rowsSeen.insert(row);
      SCOPED_TRACE(row);
      judge(row, Examine());
      RepairLeavesWhatTheNextStartLeaves(twinRoot);
    }
    ADD_FAILURE() << "the sequence has more than " << kMostOperations << " file operations";
    return rowsSeen;
  }
};

TEST_F(GalleryToolTest, OnEveryCutOfTheRecordersSaveCheckFindsTheRowsFaultAndRepairLeavesWhatTheNextStartLeaves) {
  const std::set<std::string> rowsSeen = EveryCut(
      [&](int cut, const std::string& twin) { return CutSave(cut, twin); }, SaveRow,
      [&](const std::string& row, const gallery::Report& found) {
        if (row == "not begun" || row == "finished") {
          EXPECT_EQ(std::vector<std::string>(), Faults(found));
        } else {
          EXPECT_EQ(std::vector<std::string>{"Audio interrupted operation " + Index("AudioCheck.bin")}, Faults(found));
          const gallery::Finding* interrupted = FindingOf(found, "interrupted operation");
          ASSERT_NE(nullptr, interrupted);
          EXPECT_TRUE(interrupted->repairable);
          const char* effect = row == "check file, record, no media file" ? "removes record 2 (its file never arrived)"
                                                                          : "only removes the check file";
          EXPECT_NE(std::string::npos, interrupted->what.find(effect)) << interrupted->what;
        }
        // The capture not yet moved into place is only a note.
        for (const std::string& note : Notes(found)) EXPECT_EQ("Audio temporary file " + Music("audio.tmp"), note);
      });
  EXPECT_EQ(5u, rowsSeen.size()) << "every row of the table was cut into";
}

TEST_F(GalleryToolTest, OnEveryCutOfADeletionCheckFindsTheRowsFaultAndRepairLeavesWhatTheNextStartLeaves) {
  const std::set<std::string> rowsSeen = EveryCut(
      [&](int cut, const std::string& twin) { return CutDelete(cut, twin); }, DeleteRow,
      [&](const std::string& row, const gallery::Report& found) {
        if (row == "not begun" || row == "finished") {
          EXPECT_EQ(std::vector<std::string>(), Faults(found));
          EXPECT_EQ(std::vector<std::string>(), Notes(found));
          return;
        }
        EXPECT_EQ(std::vector<std::string>{"Audio interrupted operation " + Index("AudioCheck.bin")}, Faults(found));
        const gallery::Finding* interrupted = FindingOf(found, "interrupted operation");
        ASSERT_NE(nullptr, interrupted);
        if (row == "check file, record, media files") {
          EXPECT_NE(std::string::npos, interrupted->what.find("removes record 2 and deletes vtwgaudio_2.wav"))
              << interrupted->what;
          EXPECT_EQ(std::vector<std::string>(), Notes(found));
        } else if (row == "check file, no record, media files") {
          EXPECT_NE(std::string::npos, interrupted->what.find("only removes the check file")) << interrupted->what;
          // The file stays as an orphan, which the store never gives out again: a note.
          EXPECT_EQ(std::vector<std::string>{"Audio file without a record " + Music("vtwgaudio_2.wav")}, Notes(found));
        }
      });
  EXPECT_TRUE(rowsSeen.count("check file, record, media files"));
  EXPECT_TRUE(rowsSeen.count("check file, no record, media files"));
  EXPECT_TRUE(rowsSeen.count("finished"));
}

TEST_F(GalleryToolTest, ListShowsEveryRecordWithItsFileAndSizeAndChangesNothing) {
  FreshGallery("list", 2);
  ASSERT_EQ(0, remove(Music("vtwgaudio_1.wav").c_str()));
  const auto before = Files(root);
  const gallery::Report report = Examine();
  EXPECT_EQ(before, Files(root)) << "looking changes nothing";
  ASSERT_EQ(1u, report.types.size());
  const gallery::Listing& audio = report.types[0];
  EXPECT_EQ("Audio", audio.type);
  EXPECT_EQ(Index("vtwgAudioResInfo.bin"), audio.index);
  EXPECT_EQ("whole", audio.read);
  EXPECT_EQ(2u, audio.maxGiven);
  EXPECT_FALSE(audio.checkFile);
  ASSERT_EQ(2u, audio.records.size());
  EXPECT_EQ(1, audio.records[0].id);
  EXPECT_EQ("vtwgaudio_1.wav", audio.records[0].name);
  EXPECT_FALSE(audio.records[0].present);
  EXPECT_EQ(0, audio.records[0].size);
  EXPECT_EQ(Music("vtwgaudio_2.wav"), audio.records[1].path);
  EXPECT_TRUE(audio.records[1].present);
  EXPECT_EQ(6, audio.records[1].size);  // "clip 2"
  // A clip without its file stays listed by the store: a fault repair cannot mend.
  EXPECT_EQ(std::vector<std::string>{"Audio missing file " + Music("vtwgaudio_1.wav")}, Faults(report));
  EXPECT_FALSE(report.findings[0].repairable);
  EXPECT_EQ(1, Repair().Faults());
}

TEST_F(GalleryToolTest, APhotoWithoutItsThumbnailIsDroppedByTheRepairAsByTheNextStart) {
  TestGame game;
  ResInfo* photo = game.store().CreateNewRes(eRT_Photo);
  uint8 rgb[4 * 4 * 3] = {0};
  ASSERT_TRUE(game.store().StoreImageToDisk(photo, rgb, 4, 4, 1.0f));
  game.store().SaveResInfo(eRT_Photo);
  const std::string thumb = game.store().GetThumbImageName(Shared("Photos/vtwgphoto_1.jpg"));
  ASSERT_EQ(0, remove(thumb.c_str()));
  const gallery::Report found = Examine();
  EXPECT_EQ(std::vector<std::string>{"Photo dropped at the next start " + Shared("Photos/vtwgphoto_1.jpg")},
            Faults(found));
  EXPECT_EQ(0, Repair().Faults());
  EXPECT_EQ(8u, zvtest::ReadBytes(Index("vtwgPhotoResInfo.bin")).size()) << "the record went";
}

TEST_F(GalleryToolTest, AResidBinBehindItsIndexIsBroughtUpByTheStoresSave) {
  FreshGallery("resid", 3);
  const uint32_t behind[9] = {0, 1, 0, 0, 0, 0, 0, 0, 0};
  zvtest::WriteBytes(Index("resid.bin"), mediatest::ResIdFile(behind));
  EXPECT_EQ(std::vector<std::string>{"Shared resid.bin behind " + Index("resid.bin")}, Faults(Examine()));
  EXPECT_EQ(0, Repair().Faults());
  EXPECT_EQ(3u, mediatest::U32At(zvtest::ReadBytes(Index("resid.bin")), 8));
  ASSERT_EQ(0, remove(Index("resid.bin").c_str()));
  const gallery::Report missing = Examine();
  ASSERT_EQ(1, missing.Faults());
  EXPECT_NE(std::string::npos, missing.findings[0].what.find("resid.bin is missing"));
}

TEST_F(GalleryToolTest, AFileAboveEveryNumberGivenIsAFaultTheRepairKeepsFromComingBack) {
  FreshGallery("above", 1);
  WriteText(Music("vtwgaudio_7.wav"), "from elsewhere");
  WriteText(Music("notes.txt"), "not the store's");
  EXPECT_EQ(std::vector<std::string>{"Audio number given again " + Music("vtwgaudio_7.wav")}, Faults(Examine()));
  const gallery::Report after = Repair();
  EXPECT_EQ(0, after.Faults());
  EXPECT_EQ(std::vector<std::string>{"Audio file without a record " + Music("vtwgaudio_7.wav")}, Notes(after));
  TestGame game;
  game.store().InitResInfo(eRT_Audio, "");
  EXPECT_EQ(8, game.store().CreateNewRes(eRT_Audio)->mResId);
}

TEST_F(GalleryToolTest, ADamagedIndexIsWrittenWholeAndOneOfAnotherVersionIsLeftAlone) {
  FreshGallery("damaged", 2);
  Bytes index = zvtest::ReadBytes(Index("vtwgAudioResInfo.bin"));
  index.resize(index.size() - 3);
  zvtest::WriteBytes(Index("vtwgAudioResInfo.bin"), index);
  const gallery::Report damaged = Examine();
  EXPECT_EQ(std::vector<std::string>{"Audio damaged index " + Index("vtwgAudioResInfo.bin")}, Faults(damaged));
  EXPECT_EQ(1u, damaged.types[0].records.size());
  EXPECT_EQ(0, Repair().Faults());
  EXPECT_EQ(8u + 16u, zvtest::ReadBytes(Index("vtwgAudioResInfo.bin")).size());

  index[0] ^= 1;
  zvtest::WriteBytes(Index("vtwgAudioResInfo.bin"), index);
  const gallery::Report other = Examine();
  EXPECT_EQ("other version", other.types[0].read);
  EXPECT_EQ(std::vector<std::string>{"Audio index of another version " + Index("vtwgAudioResInfo.bin")},
            Faults(other));
  EXPECT_EQ(1, Repair().Faults());
  EXPECT_EQ(index, zvtest::ReadBytes(Index("vtwgAudioResInfo.bin"))) << "the store keeps what it cannot read";
}

TEST_F(GalleryToolTest, ACheckFileOfAnotherSizeIsAFaultTheStoreLeaves) {
  FreshGallery("eleven", 1);
  zvtest::WriteBytes(Index("AudioCheck.bin"), Bytes(11, 0));
  EXPECT_EQ(std::vector<std::string>{"Audio unreadable check file " + Index("AudioCheck.bin")}, Faults(Examine()));
  EXPECT_EQ(1, Repair().Faults());
  EXPECT_TRUE(Exists(Index("AudioCheck.bin")));
}

TEST_F(GalleryToolTest, ACheckFileTheStoreAssertsOnIsReportedWithTheAssertion) {
  FreshGallery("assert", 1);
  Bytes check;
  zvtest::PutI32(check, 7);  // no such operation
  zvtest::PutI32(check, eRT_Audio);
  zvtest::PutI32(check, 1);
  zvtest::WriteBytes(Index("AudioCheck.bin"), check);
  gallery::Options options;
  options.root = root;
  gallery::Report report;
  std::string error;
  EXPECT_FALSE(gallery::Examine(options, &report, &error));
  EXPECT_NE(std::string::npos, error.find("the media store stopped on this gallery: "));
  EXPECT_NE(std::string::npos, error.find("Assertion `operType > ePOT_Invalid && operType < ePOT_Num' failed."))
      << error;
}

TEST_F(GalleryToolTest, AFolderThatIsNoDeviceRootIsRefused) {
  gallery::Options options;
  options.root = work;
  gallery::Report report;
  std::string error;
  EXPECT_FALSE(gallery::Examine(options, &report, &error));
  EXPECT_EQ(work + " is not a device root: it has no LocalData/Shared/FileIndex/", error);
  options.root = work + "nothing";
  EXPECT_FALSE(gallery::Examine(options, &report, &error));
  EXPECT_EQ("no device root at " + work + "nothing: No such file or directory", error);
}

}  // namespace
