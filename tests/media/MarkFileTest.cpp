// The mods' mark file: its bytes, where it lies, how it is read back (with the
// buffer that is not cleared between records), and its replacement as a whole.
#include <gtest/gtest.h>
#include <signal.h>

#include <string>
#include <vector>

#include "MicroModFixture.h"
#include "solva/FaultInjection.h"

namespace {

using mediatest::CaptureOut;
using mediatest::MarkFile;
using mediatest::MicroModTest;
using mediatest::TestGame;
using zvtest::Bytes;
using zvtest::PutI32;
using zvtest::PutText;
using zvtest::PutU32;
using zvtest::ReadBytes;
using zvtest::WriteBytes;

class MarkFileTest : public MicroModTest {};

TEST_F(MarkFileTest, WriteMdlInformationLaysOutTheMarkFileByteForByte) {
  Download("a", "pkg.cards", "Notewright");
  Download("b", "z", "Pewzone");
  Download("c", "pkg.brushes", "Wigglo");
  TestGame game;
  std::vector<MicroMod*> mods = Load(game.archive());
  ASSERT_EQ(3u, mods.size());
  mods[0]->mMark = 0x01020304;
  mods[2]->mMark = -2;
  game.archive().WriteMdlInformation();

  // From the table: count; per record length, bytes without a terminator, mark.
  Bytes expected;
  PutU32(expected, 3);
  PutU32(expected, 9);
  PutText(expected, "pkg.cards");
  PutI32(expected, 0x01020304);
  PutU32(expected, 1);
  PutText(expected, "z");
  PutI32(expected, 1);
  PutU32(expected, 11);
  PutText(expected, "pkg.brushes");
  PutI32(expected, -2);
  EXPECT_EQ(expected, ReadBytes(MarkPath()));
  EXPECT_EQ((Bytes{3, 0, 0, 0, 9, 0, 0, 0, 'p'}), Bytes(expected.begin(), expected.begin() + 9));
}

TEST_F(MarkFileTest, WithoutModsTheFileHoldsACountOfZero) {
  TestGame game;
  Load(game.archive());
  game.archive().WriteMdlInformation();
  EXPECT_EQ((Bytes{0, 0, 0, 0}), ReadBytes(MarkPath()));
}

TEST_F(MarkFileTest, AShorterIdentifierAfterALongerOneKeepsTheOldTailAndFindsNoMatch) {
  Download("a", "ab", "Notewright");
  Download("b", "wxyz12", "Notewright");
  // "wxyz12" first leaves "ab" followed by "yz12" in the buffer.
  WriteBytes(MarkPath(), MarkFile({{"wxyz12", 4}, {"ab", 3}}));
  TestGame game;
  const std::vector<MicroMod*> mods = Load(game.archive());
  ASSERT_EQ(2u, mods.size());
  EXPECT_EQ("ab", mods[0]->mPackageId);
  EXPECT_EQ(1, mods[0]->mMark) << "the shorter identifier found no match";
  EXPECT_EQ(4, mods[1]->mMark);
}

TEST_F(MarkFileTest, AShorterIdentifierThatBeginsTheOneBeforeItGivesItsMarkToThatOne) {
  Download("a", "ab", "Notewright");
  Download("b", "abcdef", "Notewright");
  // "ab" over "abcdef" leaves "abcdef": the second record is read as the first's.
  WriteBytes(MarkPath(), MarkFile({{"abcdef", 4}, {"ab", 3}}));
  TestGame game;
  const std::vector<MicroMod*> mods = Load(game.archive());
  EXPECT_EQ(1, mods[0]->mMark);
  EXPECT_EQ(3, mods[1]->mMark);
}

TEST_F(MarkFileTest, AShorterIdentifierFirstAndALongerOneAfterItBothMatch) {
  Download("a", "ab", "Notewright");
  Download("b", "abcdef", "Notewright");
  WriteBytes(MarkPath(), MarkFile({{"ab", 3}, {"abcdef", 4}}));
  TestGame game;
  const std::vector<MicroMod*> mods = Load(game.archive());
  EXPECT_EQ(3, mods[0]->mMark);
  EXPECT_EQ(4, mods[1]->mMark);
}

TEST_F(MarkFileTest, TheFirstModWithTheIdentifierGetsTheMark) {
  Download("a", "same", "Notewright");
  Download("b", "same", "Pewzone");
  WriteBytes(MarkPath(), MarkFile({{"same", 8}}));
  TestGame game;
  const std::vector<MicroMod*> mods = Load(game.archive());
  EXPECT_EQ(8, mods[0]->mMark);
  EXPECT_EQ(1, mods[1]->mMark);
}

TEST_F(MarkFileTest, AFileCutShortKeepsTheRecordsReadBeforeTheCut) {
  Download("a", "one", "Notewright");
  Download("b", "two", "Notewright");
  Bytes file = MarkFile({{"one", 6}, {"two", 7}});
  file.resize(file.size() - 2);  // the second mark is cut
  WriteBytes(MarkPath(), file);
  TestGame game;
  const std::vector<MicroMod*> mods = Load(game.archive());
  EXPECT_EQ(6, mods[0]->mMark);
  EXPECT_EQ(1, mods[1]->mMark);
}

TEST_F(MarkFileTest, AnIdentifierLongerThanTheBufferMatchesNothingAndTheNextRecordStillReads) {
  const std::string longest(3000, 'q');
  const std::string filling(1023, 'z');  // fills the buffer but for its last byte
  Download("a", filling, "Notewright");
  Download("b", longest, "Notewright");
  WriteBytes(MarkPath(), MarkFile({{longest, 2}, {filling, 6}}));
  TestGame game;
  const std::vector<MicroMod*> mods = Load(game.archive());
  EXPECT_EQ(6, mods[0]->mMark) << "the record after the long one is read in step";
  EXPECT_EQ(1, mods[1]->mMark) << "the buffer holds only the start of the long identifier";
}

TEST_F(MarkFileTest, TheFileIsNamedByArchiveDataFileNameInTheArchiveSection) {
  std::string name;
  ASSERT_TRUE(CameraConfig::sInstance().getProperty_String("Archive.ArchiveDataFileName", name));
  EXPECT_EQ("MicroModMarks.bin", name);

  zvtest::WriteText(work + "cfg.xml",
                    "<Cfg><Node name=\"Archive\" nodeType=\"childNode\"><P nodeType=\"nodeProperty\">"
                    "<Property name=\"ArchiveDataFileName\" type=\"string\" value=\"marks.dat\"/>"
                    "</P></Node></Cfg>");
  CameraConfig::sInstance().ReleaseConfig();
  ASSERT_TRUE(CameraConfig::sInstance().load((work + "cfg.xml").c_str()));
  CameraConfig::sInstance().setCurrentPath("Recorder");
  Download("a", "one", "Notewright");
  WriteBytes(Index("marks.dat"), MarkFile({{"one", 9}}));
  TestGame game;
  EXPECT_EQ(9, Load(game.archive())[0]->mMark);
  game.archive().WriteMdlInformation();
  EXPECT_EQ(MarkFile({{"one", 9}}), ReadBytes(Index("marks.dat")));
  EXPECT_FALSE(zvtest::Exists(MarkPath()));
  EXPECT_EQ("Recorder", CameraConfig::sInstance().getCurrentPath()) << "the tree's current path is kept";
}

TEST_F(MarkFileTest, AConfigurationWithoutTheNameKeepsNoMarksAndSaysSo) {
  CameraConfig::sInstance().ReleaseConfig();
  Download("a", "one", "Notewright");
  WriteBytes(MarkPath(), MarkFile({{"one", 9}}));
  TestGame game;
  std::vector<MicroMod*> mods;
  const std::string out = CaptureOut([&] { mods = Load(game.archive()); });
  EXPECT_EQ(1, mods[0]->mMark);
  EXPECT_EQ("[ZvArchive] res/CamCfg.xml has no Archive.ArchiveDataFileName; the mods' marks are not kept.\n", out);
  CaptureOut([&] { game.archive().WriteMdlInformation(); });
  EXPECT_EQ(MarkFile({{"one", 9}}), ReadBytes(MarkPath()));
}

TEST_F(MarkFileTest, AFolderThatCannotBeWrittenLeavesNoFileAndSaysSo) {
  Download("a", "one", "Notewright");
  TestGame game;
  Load(game.archive());
  game.archive().mFileIndexPath = dir.path() + "/no-such-folder/";
  const std::string out = CaptureOut([&] { game.archive().WriteMdlInformation(); });
  EXPECT_EQ("[ZvArchive] cannot write the mods' marks to " + dir.path() + "/no-such-folder/MicroModMarks.bin\n", out);
  EXPECT_FALSE(zvtest::Exists(dir.path() + "/no-such-folder"));
}

TEST_F(MarkFileTest, APowerCutWhileTheMarkFileIsWrittenLeavesTheOldFileWhole) {
  Download("a", "pkg.one", "Notewright");
  Download("b", "pkg.two", "Wigglo");
  const Bytes before = MarkFile({{"pkg.one", 3}, {"pkg.two", 4}});
  const Bytes after = MarkFile({{"pkg.one", 30}, {"pkg.two", 40}});
  bool finished = false;
  for (int cut = 1; cut <= 8 && !finished; ++cut) {
    SCOPED_TRACE("power cut after file operation " + std::to_string(cut));
    WriteBytes(MarkPath(), before);
    const zvtest::ChildResult child = zvtest::RunInChild([&] {
      TestGame game;
      std::vector<MicroMod*> mods = Load(game.archive());
      mods[0]->mMark = 30;
      mods[1]->mMark = 40;
      solva::SetPowerCutAfter(cut);
      game.archive().WriteMdlInformation();
      solva::SetPowerCutAfter(0);
    });
    if (child.exited) {
      ASSERT_EQ(0, child.exitCode) << child.out;
      EXPECT_EQ(after, ReadBytes(MarkPath()));
      EXPECT_GT(cut, 1) << "writing the file is more than one operation";
      finished = true;
    } else {
      ASSERT_EQ(SIGKILL, child.signal) << child.out;
      const Bytes found = ReadBytes(MarkPath());
      EXPECT_TRUE(found == before || found == after) << "a mix of the two files";
      TestGame restarted;
      const std::vector<MicroMod*> mods = Load(restarted.archive());
      EXPECT_EQ(found == before ? 3 : 30, mods[0]->mMark);
    }
  }
  EXPECT_TRUE(finished);
}

}  // namespace
