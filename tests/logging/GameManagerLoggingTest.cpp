// The game manager's own logger, made in Initialize and deleted in Destroy,
// writes to the device's logs.
#include <gtest/gtest.h>
#include <unistd.h>

#include <string>
#include <vector>

#include "BaseFramework/GameManager.h"
#include "BaseFramework/Logging.h"
#include "RenderSystem/XFontManager.h"
#include "UsageLogSupport.h"

namespace {

using logtest::UsageLogTest;
using Records = std::vector<std::string>;

class GameManagerLoggingTest : public UsageLogTest {
 protected:
  void SetUp() override {
    UsageLogTest::SetUp();
    char here[4096] = {0};
    ASSERT_NE(nullptr, getcwd(here, sizeof here));
    mWorkingPath = here;
    ASSERT_EQ(0, chdir(ZV_SOURCE_DIR));  // res/CamCfg.xml resolves here
  }
  void TearDown() override {
    ASSERT_EQ(0, chdir(mWorkingPath.c_str()));
    // Without 3D the font manager outlives Destroy, as on the device.
    delete XFontManager::instance_;
    XFontManager::instance_ = nullptr;
    UsageLogTest::TearDown();
  }
  std::string mWorkingPath;
};

TEST_F(GameManagerLoggingTest, TheManagersLoggerWritesToTheDevicesLogs) {
  GameManager manager;
  manager.Initialize();
  Logging* logging = manager.GetLogging();
  ASSERT_NE(nullptr, logging);
  EXPECT_FALSE(logging->IsTitleOpen());
  logging->logTitleStart();
  logging->logGameStart("maze");
  logging->logLevelUp("2");
  manager.Destroy();
  EXPECT_EQ(nullptr, manager.GetLogging());
  EXPECT_EQ((Records{"CTitleStart(productId=123456, partNumber=\"152-9001\", packageVersion=\"2.1.0.7\", kind=1)",
                     "CGameStart(id=\"maze\")"}),
            UsageLog());
  EXPECT_EQ((Records{"CLevelUp(newLevel=\"2\")"}), AppManagerLog());
  EXPECT_EQ("TitleStart\n\tGameStart id: maze\n\t\t\t\tLevelUp newLevel: 2\n", TakeConsole());
}

}  // namespace
