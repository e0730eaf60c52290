// An achievement goes to the player's profile as a badge, not to a log.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "CPlayerProfile.h"
#include "UsageLogSupport.h"
#include "solva/Device.h"

namespace {

using logtest::UsageLogTest;
using Records = std::vector<std::string>;
using Badges = std::vector<U16>;

class AchievementTest : public UsageLogTest {};

TEST_F(AchievementTest, AchievementAddsABadgeToTheCurrentPlayersProfileAndWritesNoRecord) {
  log.logTitleStart();
  TakeConsole();
  log.logAchievementEarned(12);
  EXPECT_EQ("\tAchievementEarned id: 12\n", TakeConsole());
  EXPECT_EQ(1u, UsageLog().size()) << "only the title's start";
  EXPECT_EQ(Records{}, AppManagerLog());
  Catalog::CPlayerProfile profile(1);
  EXPECT_EQ(Badges{12}, profile.GetBadges());
  EXPECT_TRUE(zvtest::Exists(root + "LocalData/Player1/profile.json"));
}

TEST_F(AchievementTest, AchievementWithoutAnOpenTitleDoesNothing) {
  log.logAchievementEarned(12);
  EXPECT_EQ("", TakeConsole());
  EXPECT_FALSE(zvtest::Exists(root + "LocalData/Player1/profile.json"));
  EXPECT_EQ(Badges{}, Catalog::CPlayerProfile(1).GetBadges());
}

TEST_F(AchievementTest, BadgesGoToThePlayerWhoIsCurrentAtTheTime) {
  log.logTitleStart();
  log.logAchievementEarned(1);
  solva::SetCurrentPlayer(2);
  log.logAchievementEarned(2);
  log.logAchievementEarned(1);
  EXPECT_EQ(Badges{1}, Catalog::CPlayerProfile(1).GetBadges());
  EXPECT_EQ((Badges{1, 2}), Catalog::CPlayerProfile(2).GetBadges());
}

TEST_F(AchievementTest, EarningABadgeTwiceKeepsOne) {
  log.logTitleStart();
  log.logAchievementEarned(300);
  log.logAchievementEarned(300);
  log.logAchievementEarned(65535);
  log.logAchievementEarned(0);
  EXPECT_EQ((Badges{0, 300, 65535}), Catalog::CPlayerProfile(1).GetBadges());
}

}  // namespace
