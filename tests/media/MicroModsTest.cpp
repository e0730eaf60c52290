// Micro mods: which downloaded folders become which mods, in what order, with
// what marks, and what the three MicroModsConfig.xml schemes give.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "MicroModFixture.h"

namespace {

using mediatest::MarkFile;
using mediatest::MicroModTest;
using mediatest::TestGame;
using zvtest::WriteBytes;
using zvtest::WriteText;

class MicroModsTest : public MicroModTest {};

std::vector<std::string> Ids(const std::vector<MicroMod*>& mods) {
  std::vector<std::string> ids;
  for (MicroMod* mod : mods) ids.push_back(mod->mPackageId);
  return ids;
}

TEST_F(MicroModsTest, AFolderWhoseModKitTypeIsUnknownAddsNoMod) {
  Download("a", "pkg.cards", "Notewright");
  Download("b", "pkg.sketch", "Sketchpad");
  Download("c", "pkg.plain", "");
  TestGame game;
  const std::vector<MicroMod*> mods = Load(game.archive());
  ASSERT_EQ(1u, mods.size());
  EXPECT_EQ("pkg.cards", mods[0]->mPackageId);
  EXPECT_EQ(eMMT_Snipsy, mods[0]->mType);
}

TEST_F(MicroModsTest, AMarkFileWithAModNoLongerPresentLeavesTheOthersUnaffected) {
  Download("a", "pkg.first", "Notewright");
  Download("c", "pkg.third", "Pewzone");
  WriteBytes(MarkPath(), MarkFile({{"pkg.first", 5}, {"pkg.gone", 9}, {"pkg.third", 7}}));
  TestGame game;
  const std::vector<MicroMod*> mods = Load(game.archive());
  ASSERT_EQ(2u, mods.size());
  EXPECT_EQ(5, mods[0]->mMark);
  EXPECT_EQ(7, mods[1]->mMark);
}

TEST_F(MicroModsTest, TwoModsWhereTheFileStoresZeroForTheFirstGiveZeroAndOneForTheNewSecond) {
  Download("a", "pkg.known", "Wigglo");
  Download("b", "pkg.new", "Wigglo");
  WriteBytes(MarkPath(), MarkFile({{"pkg.known", 0}}));
  TestGame game;
  const std::vector<MicroMod*> mods = Load(game.archive());
  ASSERT_EQ(2u, mods.size());
  EXPECT_EQ(0, mods[0]->mMark);
  EXPECT_EQ(1, mods[1]->mMark);
}

TEST_F(MicroModsTest, GetMicroModesWithTypesSevenOneSevenGivesTheOneFirstThenBothSevensInTheirOrder) {
  Download("a", "pkg.brushes1", "Wigglo");
  Download("b", "pkg.cards", "Notewright");
  Download("c", "pkg.brushes2", "Wigglo");
  TestGame game;
  ASSERT_EQ((std::vector<std::string>{"pkg.brushes1", "pkg.cards", "pkg.brushes2"}), Ids(Load(game.archive())));
  std::vector<MicroMod*> mods;
  EXPECT_TRUE(game.archive().GetMicroModes(mods));
  EXPECT_EQ((std::vector<std::string>{"pkg.cards", "pkg.brushes1", "pkg.brushes2"}), Ids(mods));
}

TEST_F(MicroModsTest, GetMicroModsByTypeForATypeWithoutModsReturnsFalseAndAnEmptyVector) {
  Download("a", "pkg.cards", "Notewright");
  TestGame game;
  Load(game.archive());
  std::vector<MicroMod*> mods(3, nullptr);
  EXPECT_FALSE(game.archive().GetMicroModsByType(eMMT_Reelmarch, mods));
  EXPECT_TRUE(mods.empty());
}

TEST_F(MicroModsTest, GetMicroModsByTypeGivesTheModsOfTheTypeInLoadOrder) {
  Download("a", "pkg.ships1", "Pewzone");
  Download("b", "pkg.cards", "Notewright");
  Download("c", "pkg.ships2", "Pewzone");
  TestGame game;
  Load(game.archive());
  std::vector<MicroMod*> mods(1, nullptr);
  EXPECT_TRUE(game.archive().GetMicroModsByType(eMMT_Pewzone, mods));
  EXPECT_EQ((std::vector<std::string>{"pkg.ships1", "pkg.ships2"}), Ids(mods));
}

TEST_F(MicroModsTest, GetMicroModesWithoutModsReturnsFalseAndEmptiesTheVector) {
  TestGame game;
  EXPECT_TRUE(Load(game.archive()).empty());
  std::vector<MicroMod*> mods(2, nullptr);
  EXPECT_FALSE(game.archive().GetMicroModes(mods));
  EXPECT_TRUE(mods.empty());
}

TEST_F(MicroModsTest, WithoutAMarkFileEveryModIsNew) {
  Download("a", "pkg.one", "Notewright");
  Download("b", "pkg.two", "Reelmarch");
  TestGame game;
  for (MicroMod* mod : Load(game.archive())) EXPECT_EQ(1, mod->mMark) << mod->mPackageId;
  EXPECT_FALSE(zvtest::Exists(MarkPath()));
}

TEST_F(MicroModsTest, MarksWrittenAreReadBackAtTheNextStart) {
  Download("a", "pkg.one", "Notewright");
  Download("b", "pkg.two", "Wigglo");
  {
    TestGame game;
    std::vector<MicroMod*> mods = Load(game.archive());
    mods[0]->mMark = 42;
    mods[1]->mMark = -3;
    game.archive().WriteMdlInformation();
  }
  TestGame again;
  const std::vector<MicroMod*> mods = Load(again.archive());
  EXPECT_EQ(42, mods[0]->mMark);
  EXPECT_EQ(-3, mods[1]->mMark);
}

TEST_F(MicroModsTest, OnlyTheCurrentPlayersDownloadsAreSeen) {
  Download("a", "pkg.mine", "Notewright");
  Give(LayOut("b", "pkg.theirs", "Notewright"), 2);
  TestGame game;
  EXPECT_EQ(std::vector<std::string>{"pkg.mine"}, Ids(Load(game.archive())));
}

TEST_F(MicroModsTest, ASecondLoadRebuildsTheListWithNewObjects) {
  Download("a", "pkg.one", "Notewright");
  TestGame game;
  const std::vector<MicroMod*> first = Load(game.archive());
  Download("b", "pkg.two", "Pewzone");
  const std::vector<MicroMod*> second = Load(game.archive());
  ASSERT_EQ(2u, second.size());
  EXPECT_NE(first[0], second[0]);  // the first run's objects are left alone
  EXPECT_EQ("pkg.one", first[0]->mPackageId);
  EXPECT_EQ((std::vector<std::string>{"pkg.one", "pkg.two"}), Ids(second));
}

TEST_F(MicroModsTest, AScoopcamFolderWhoseConfigurationDoesNotParseIsStillListedEmpty) {
  const std::string folder = Download("a", "pkg.missions", "Scoopcam");
  WriteText(folder + "/MicroModsConfig.xml", "<MissionList><Mission>");
  TestGame game;
  const std::vector<MicroMod*> mods = Load(game.archive());
  ASSERT_EQ(1u, mods.size());
  MicroModScoopcam* missions = static_cast<MicroModScoopcam*>(mods[0]);
  EXPECT_EQ(eMMT_Scoopcam, missions->mType);
  EXPECT_EQ(0, missions->GetMissionNum());
  EXPECT_EQ(folder + "/", missions->GetMicroModPath());
}

TEST_F(MicroModsTest, AReelmarchFolderWithoutMusicsHasNoNames) {
  const std::string folder = Download("a", "pkg.music", "Reelmarch");
  TestGame game;
  const std::vector<MicroMod*> mods = Load(game.archive());
  ASSERT_EQ(1u, mods.size());
  EXPECT_EQ(folder + "/Musics/", static_cast<MicroModReelmarch*>(mods[0])->mMusicPath);
  EXPECT_TRUE(static_cast<MicroModReelmarch*>(mods[0])->mMusicNames.empty());
}

}  // namespace
