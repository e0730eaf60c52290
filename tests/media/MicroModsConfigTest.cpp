// The three schemes of a mod's MicroModsConfig.xml, and GetTextElementValue.
#include <gtest/gtest.h>
#include <tinyxml.h>

#include <string>

#include "External/tinyXml/tinyxmlAdd.h"
#include "MediaCenter/MicroMods.h"
#include "MediaFixture.h"
#include "support/TestSupport.h"

namespace {

using mediatest::AssertRegex;
using mediatest::CaptureOut;
using zvtest::WriteText;

class MicroModsConfigTest : public testing::Test {
 protected:
  // A mod folder whose MicroModsConfig.xml is `xml`; the path ends in a slash.
  std::string Folder(const std::string& xml) {
    WriteText(dir.file("MicroModsConfig.xml"), xml);
    return dir.path() + "/";
  }
  zvtest::TempDir dir;
};

TEST_F(MicroModsConfigTest, AMissionListWithoutChildrenGivesAnEmptyListAndTrue) {
  MicroModScoopcam mod;
  mod.mMissions.resize(2);  // emptied first
  mod.SetMicroModPath(Folder("<MissionList></MissionList>"));
  EXPECT_TRUE(mod.LoadMicroModFromFile());
  EXPECT_EQ(0, mod.GetMissionNum());
}

TEST_F(MicroModsConfigTest, ANonNumericBrushNumberStillGivesTrueFromGetTextElementValue) {
  TiXmlDocument document;
  document.Parse("<MicroMods><BrushNumber>many</BrushNumber></MicroMods>");
  int brushes = 17;
  EXPECT_TRUE(GetTextElementValue(document.RootElement(), "BrushNumber", brushes));
  EXPECT_EQ(0, brushes);  // what the string stream leaves after a failed read

  MicroModWigglo mod;
  mod.SetMicroModPath(Folder("<MicroMods><BrushNumber>many</BrushNumber><StampNumber>4</StampNumber></MicroMods>"));
  EXPECT_TRUE(mod.LoadMicroModFromFile());
  EXPECT_EQ(0, mod.GetBrushNum());
  EXPECT_EQ(4, mod.GetStampNum());
}

TEST_F(MicroModsConfigTest, GetTextElementValueWithoutTheChildOrItsTextIsFalseAndLeavesTheValue) {
  TiXmlDocument document;
  document.Parse("<MicroMods><StampNumber/><FrameNumber> 12 </FrameNumber></MicroMods>");
  int value = 5;
  EXPECT_FALSE(GetTextElementValue(document.RootElement(), "BrushNumber", value));
  EXPECT_FALSE(GetTextElementValue(document.RootElement(), "StampNumber", value));
  EXPECT_EQ(5, value);
  EXPECT_TRUE(GetTextElementValue(document.RootElement(), "FrameNumber", value));
  EXPECT_EQ(12, value);
  std::string word;
  EXPECT_TRUE(GetTextElementValue(document.RootElement(), "FrameNumber", word));
  EXPECT_EQ("12", word);
}

TEST(MicroModsConfigDeathTest, GetTextElementValueAssertsItsElementAndKey) {
  TiXmlDocument document;
  document.Parse("<MicroMods/>");
  int value = 0;
  EXPECT_DEATH(GetTextElementValue(static_cast<TiXmlElement*>(nullptr), "BrushNumber", value),
               AssertRegex("Src/External/tinyXml/tinyxmlAdd.h", "elementToGet"));
  EXPECT_DEATH(GetTextElementValue(document.RootElement(), static_cast<const char*>(nullptr), value),
               AssertRegex("Src/External/tinyXml/tinyxmlAdd.h", "keyName"));
}

TEST_F(MicroModsConfigTest, ScoopcamReadsEveryChildOfTheRootInDocumentOrderWhateverItsName) {
  MicroModScoopcam mod;
  mod.SetMicroModPath(Folder(
      "<?xml version=\"1.0\"?>\n<MissionList>\n"
      "  <Mission><MissionName>Red bus</MissionName><ElementNumber>3</ElementNumber></Mission>\n"
      "  <Other><ElementNumber>8</ElementNumber><MissionName>Blue</MissionName></Other>\n"
      "  <Mission><MissionName>Kite</MissionName></Mission>\n"
      "</MissionList>\n"));
  ASSERT_TRUE(mod.LoadMicroModFromFile());
  ASSERT_EQ(3, mod.GetMissionNum());
  EXPECT_EQ("Red bus", mod.GetMissionVec()[0].mMissionName);
  EXPECT_EQ(3, mod.GetMissionVec()[0].mElementNumber);
  EXPECT_EQ("Blue", mod.GetMissionVec()[1].mMissionName);
  EXPECT_EQ(8, mod.GetMissionVec()[1].mElementNumber);
  EXPECT_EQ("Kite", mod.GetMissionVec()[2].mMissionName);
  EXPECT_EQ(0, mod.GetMissionVec()[2].mElementNumber);
}

TEST_F(MicroModsConfigTest, FablewrightReadsItsStoriesAndALoadReplacesTheList) {
  MicroModFablewright mod;
  mod.SetMicroModPath(Folder("<StoryList><S><StoryName>Moon</StoryName><PageNumber>12</PageNumber></S>"
                             "<S><StoryName>Sea</StoryName><PageNumber>4</PageNumber></S></StoryList>"));
  ASSERT_TRUE(mod.LoadMicroModFromFile());
  ASSERT_TRUE(mod.LoadMicroModFromFile());
  ASSERT_EQ(2, mod.GetStoryNum());
  EXPECT_EQ("Moon", mod.GetStoryVec()[0].mStoryName);
  EXPECT_EQ(12, mod.GetStoryVec()[0].mPageNumber);
  EXPECT_EQ("Sea", mod.GetStoryVec()[1].mStoryName);
  EXPECT_EQ(4, mod.GetStoryVec()[1].mPageNumber);
}

TEST_F(MicroModsConfigTest, WiggloLeavesANumberWhoseElementIsMissingUnchanged) {
  MicroModWigglo mod;
  mod.mFrameNumber = 6;
  mod.SetMicroModPath(Folder("<MicroMods><BrushNumber>10</BrushNumber><StampNumber>20</StampNumber></MicroMods>"));
  EXPECT_TRUE(mod.LoadMicroModFromFile());
  EXPECT_EQ(10, mod.GetBrushNum());
  EXPECT_EQ(20, mod.GetStampNum());
  EXPECT_EQ(6, mod.GetFrameNum());
}

TEST_F(MicroModsConfigTest, AMissingFileOrAnotherSchemesRootGivesFalse) {
  MicroModWigglo wigglo;
  wigglo.SetMicroModPath(dir.path() + "/");
  EXPECT_FALSE(wigglo.LoadMicroModFromFile());

  const std::string folder = Folder("<StoryList><S><StoryName>Moon</StoryName></S></StoryList>");
  MicroModScoopcam scoopcam;
  scoopcam.SetMicroModPath(folder);
  EXPECT_FALSE(scoopcam.LoadMicroModFromFile());
  wigglo.SetMicroModPath(folder);
  EXPECT_FALSE(wigglo.LoadMicroModFromFile());
  MicroModFablewright fablewright;
  fablewright.SetMicroModPath(folder);
  EXPECT_TRUE(fablewright.LoadMicroModFromFile());
}

TEST_F(MicroModsConfigTest, AnItemWithoutItsNameIsKeptNamelessWithALine) {
  MicroModScoopcam mod;
  mod.SetMicroModPath(Folder("<MissionList><Mission><ElementNumber>2</ElementNumber></Mission></MissionList>"));
  bool loaded = false;
  const std::string out = CaptureOut([&] { loaded = mod.LoadMicroModFromFile(); });
  EXPECT_TRUE(loaded);
  ASSERT_EQ(1, mod.GetMissionNum());
  EXPECT_EQ("", mod.GetMissionVec()[0].mMissionName);
  EXPECT_EQ(2, mod.GetMissionVec()[0].mElementNumber);
  EXPECT_EQ("[MicroMods] an item <Mission> has no <MissionName>; it is kept without a name.\n", out);
}

TEST_F(MicroModsConfigTest, APathLongerThanTheNameBufferIsCutNotOverrun) {
  MicroModWigglo mod;
  mod.SetMicroModPath(dir.path() + "/" + std::string(300, 'x') + "/");
  EXPECT_FALSE(mod.LoadMicroModFromFile());
}

}  // namespace
