// The logging interface itself: its reasons and a fresh logger's levels.
#include <gtest/gtest.h>

#include "BaseFramework/Logging.h"
#include "BaseFramework/ZvLogging.h"

namespace {

TEST(Logging, ReasonsTheFrameworkGivesCarryTheirNumbers) {
  EXPECT_EQ(3, eTitleExit_Restarted);
  EXPECT_EQ(5, eActivityExit_Closed);
}

TEST(Logging, NewLoggerHasEveryLevelClosed) {
  ZvLogging log;
  EXPECT_FALSE(log.IsTitleOpen());
  EXPECT_FALSE(log.IsGameOpen());
  EXPECT_FALSE(log.IsAreaOpen());
  EXPECT_FALSE(log.IsActivityOpen());
  EXPECT_FALSE(log.IsCyoOpen());
}

TEST(Logging, LevelsAreFiveBytesAfterTheVirtualTable) {
  // Five one-byte flags and no field of the device form's own.
  EXPECT_EQ(sizeof(void*) + 8, sizeof(Logging));
  EXPECT_EQ(sizeof(Logging), sizeof(ZvLogging));
}

}  // namespace
