// The player's profile: badges by title, kept in the player's folder.
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdio>
#include <nlohmann/json.hpp>
#include <string>
#include <vector>

#include "CPlayerProfile.h"
#include "solva/Device.h"
#include "solva/FaultInjection.h"
#include "support/TestSupport.h"

namespace {

using Badges = std::vector<U16>;
using Json = nlohmann::ordered_json;
using zvtest::Exists;
using zvtest::ReadText;
using zvtest::WriteText;

class PlayerProfileTest : public testing::Test {
 protected:
  void SetUp() override {
    solva::ResetDevice();
    ASSERT_TRUE(solva::SetDeviceRoot(dir.path() + "/root"));
    root = dir.path() + "/root/";
    solva::SetPackageId("Puzzles");
  }
  void TearDown() override { solva::ResetDevice(); }
  zvtest::TempDir dir;
  std::string root;
};

TEST_F(PlayerProfileTest, ProfileIsThePlayersProfileJson) {
  EXPECT_EQ(root + "LocalData/Player1/profile.json", Catalog::CPlayerProfile(1).GetPath());
  EXPECT_EQ(root + "LocalData/Player3/profile.json", Catalog::CPlayerProfile(3).GetPath());
  EXPECT_EQ(3, Catalog::CPlayerProfile(3).GetPlayerID());
}

TEST_F(PlayerProfileTest, NewPlayerHasNoBadgesAndNothingIsWrittenByReading) {
  {
    Catalog::CPlayerProfile profile(1);
    EXPECT_EQ(Badges{}, profile.GetBadges());
    EXPECT_FALSE(profile.HasBadge(1));
  }
  EXPECT_FALSE(Exists(root + "LocalData/Player1/profile.json"));
}

TEST_F(PlayerProfileTest, SavedBadgeSurvivesANewProfileObject) {
  {
    Catalog::CPlayerProfile profile(1);
    EXPECT_TRUE(profile.AddBadge(40));
    EXPECT_TRUE(profile.AddBadge(7));
    EXPECT_FALSE(profile.AddBadge(40));
    ASSERT_TRUE(profile.Save());
  }
  Catalog::CPlayerProfile again(1);
  EXPECT_EQ((Badges{7, 40}), again.GetBadges());
  EXPECT_TRUE(again.HasBadge(40));
  EXPECT_FALSE(again.HasBadge(8));
}

TEST_F(PlayerProfileTest, BadgeNotSavedIsDropped) {
  {
    Catalog::CPlayerProfile profile(1);
    profile.AddBadge(5);
  }
  EXPECT_EQ(Badges{}, Catalog::CPlayerProfile(1).GetBadges());
}

TEST_F(PlayerProfileTest, FileHoldsTheBadgesByPackage) {
  Catalog::CPlayerProfile profile(1);
  profile.AddBadge(2);
  ASSERT_TRUE(profile.Save());
  const Json json = Json::parse(ReadText(profile.GetPath()));
  EXPECT_EQ(Json::parse("{\"badges\": {\"Puzzles\": [2]}}"), json);
}

TEST_F(PlayerProfileTest, EachTitleSeesOnlyItsOwnBadgesAndSavingKeepsTheOthers) {
  {
    Catalog::CPlayerProfile profile(1);
    profile.AddBadge(1);
    profile.Save();
  }
  solva::SetPackageId("Painting");
  {
    Catalog::CPlayerProfile profile(1);
    EXPECT_EQ(Badges{}, profile.GetBadges());
    profile.AddBadge(9);
    profile.Save();
  }
  EXPECT_EQ(Badges{9}, Catalog::CPlayerProfile(1).GetBadges());
  solva::SetPackageId("Puzzles");
  EXPECT_EQ(Badges{1}, Catalog::CPlayerProfile(1).GetBadges());
}

TEST_F(PlayerProfileTest, PartsOfTheFileItDoesNotKnowAreKept) {
  const std::string path = root + "LocalData/Player1/profile.json";
  WriteText(path, "{\"name\": \"Sam\", \"badges\": {\"Other\": [4]}, \"avatar\": {\"hat\": 3}}");
  Catalog::CPlayerProfile profile(1);
  profile.AddBadge(6);
  ASSERT_TRUE(profile.Save());
  const Json json = Json::parse(ReadText(path));
  EXPECT_EQ("Sam", json["name"]);
  EXPECT_EQ(3, json["avatar"]["hat"]);
  EXPECT_EQ(Json::parse("{\"Other\": [4], \"Puzzles\": [6]}"), json["badges"]);
}

TEST_F(PlayerProfileTest, UnreadableProfileIsMovedAsideAtSaveSoNothingIsLost) {
  const std::string path = root + "LocalData/Player1/profile.json";
  WriteText(path, "{broken");
  zvtest::ChildResult child = zvtest::RunInChild([] {
    Catalog::CPlayerProfile profile(1);
    profile.AddBadge(3);
    profile.Save();
  });
  EXPECT_FALSE(child.died());
  EXPECT_NE(std::string::npos, child.out.find("[CPlayerProfile] " + path + " is not readable")) << child.out;
  EXPECT_NE(std::string::npos, child.out.find("kept as " + path + ".unreadable")) << child.out;
  EXPECT_EQ("{broken", ReadText(path + ".unreadable"));
  EXPECT_EQ(Badges{3}, Catalog::CPlayerProfile(1).GetBadges());
}

TEST_F(PlayerProfileTest, BadgesOfAnotherShapeMakeTheProfileUnreadable) {
  const std::string path = root + "LocalData/Player1/profile.json";
  WriteText(path, "{\"badges\": {\"Puzzles\": [70000]}}");
  Catalog::CPlayerProfile profile(1);
  EXPECT_EQ(Badges{}, profile.GetBadges());
  ASSERT_TRUE(profile.Save());
  EXPECT_EQ("{\"badges\": {\"Puzzles\": [70000]}}", ReadText(path + ".unreadable"));
}

TEST_F(PlayerProfileTest, SaveMakesAMissingPlayerFolder) {
  EXPECT_FALSE(Exists(root + "LocalData/Player8"));
  Catalog::CPlayerProfile profile(8);
  profile.AddBadge(1);
  ASSERT_TRUE(profile.Save());
  EXPECT_EQ(Badges{1}, Catalog::CPlayerProfile(8).GetBadges());
}

TEST_F(PlayerProfileTest, SaveWhereThePlayersFolderCannotBeMadeSaysSoAndWritesNothing) {
  // A file stands where the player's folder should be.
  WriteText(root + "LocalData/Player9", "in the way");
  const zvtest::ChildResult child = zvtest::RunInChild([] {
    Catalog::CPlayerProfile profile(9);
    profile.AddBadge(2);
    printf("saved=%d\n", profile.Save() ? 1 : 0);
  });
  EXPECT_FALSE(child.died());
  EXPECT_NE(std::string::npos, child.out.find("saved=0")) << child.out;
  EXPECT_NE(std::string::npos, child.out.find("the profile is not saved")) << child.out;
  EXPECT_EQ("in the way", ReadText(root + "LocalData/Player9"));
}

TEST_F(PlayerProfileTest, PowerCutDuringSaveLeavesTheOldProfileOrTheNewOneNeverAMix) {
  {
    Catalog::CPlayerProfile profile(1);
    profile.AddBadge(1);
    ASSERT_TRUE(profile.Save());
  }
  const std::string path = root + "LocalData/Player1/profile.json";
  const std::string before = ReadText(path);
  bool sawOld = false, sawNew = false;
  for (int cut = 1; cut <= 6; ++cut) {
    WriteText(path, before);
    const zvtest::ChildResult child = zvtest::RunInChild([cut] {
      Catalog::CPlayerProfile profile(1);
      profile.AddBadge(2);
      solva::SetPowerCutAfter(cut);
      profile.Save();
      solva::SetPowerCutAfter(0);
    });
    const Badges badges = Catalog::CPlayerProfile(1).GetBadges();
    EXPECT_TRUE(badges == Badges{1} || badges == (Badges{1, 2})) << "cut after operation " << cut;
    if (child.died()) {
      sawOld = sawOld || badges == Badges{1};
    } else {
      sawNew = sawNew || badges == (Badges{1, 2});
    }
  }
  EXPECT_TRUE(sawOld) << "some cut fell before the new profile replaced the old one";
  EXPECT_TRUE(sawNew) << "late enough cuts found the save finished";
}

}  // namespace
