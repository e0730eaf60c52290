#include "BaseFramework/GameManager.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include "Base/StringID.h"
#include "BaseFramework/GameState.h"
#include "BaseFramework/InputManager.h"
#include "Canvas/ColorBlendTable.h"
#include "ConfigSystem/CameraConfig.h"
#include "RenderSystem/GLTextureManager.h"
#include "RenderSystem/RenderStateStack.h"
#include "RenderSystem/XFontManager.h"
#include "Tamarin/ZvWidgetInstance.h"
#include "solva/Device.h"
#include "support/ShellTitle.h"
#include "support/TestSupport.h"

namespace {

using shelltitle::CallLog;
using Log = std::vector<std::string>;

// A state that logs its own life and can hold its transition open.
struct LoggingState : GameState {
  explicit LoggingState(const std::string& name) : mName(name) {}
  void EnterState() override { CallLog().push_back(mName + ".EnterState"); }
  void ExitState() override {
    CallLog().push_back(mName + ".ExitState");
    GameState::ExitState();
  }
  int ProcessTransition() override {
    CallLog().push_back(mName + ".ProcessTransition");
    return transitionDone;
  }
  void Update(float dt) override {
    CallLog().push_back(mName + ".Update");
    GameState::Update(dt);
  }
  void Render() override { CallLog().push_back(mName + ".Render"); }
  std::string mName;
  int transitionDone = 1;
};

struct LockableManager : GameManager {
  void Lock(int locked) { mStateLocked = locked; }
};

Log Frame(GameManager& manager) {
  CallLog().clear();
  manager.Update(0.033f);
  manager.Render();
  return CallLog();
}

TEST(GameManager, ConstructorFillsTheBlendTable) {
  gColorBlendTable[255 * 256 + 255] = 0;
  GameManager manager;
  EXPECT_EQ(255, gColorBlendTable[255 * 256 + 255]);
  EXPECT_EQ(1, manager.GetExitReason());
  EXPECT_EQ(0, manager.IsGameFinished());
  EXPECT_EQ(GameManager::eTP_Idle, manager.GetTransitionPhase());
}

TEST(GameManager, LaunchedStateEntersThenTransitionsThenUpdates) {
  GameManager manager;
  LoggingState state("s");
  EXPECT_EQ(1, manager.LaunchState(&state));
  EXPECT_EQ(GameManager::eTP_LaunchPending, manager.GetTransitionPhase());
  EXPECT_EQ((Log{"s.EnterState", "s.Render"}), Frame(manager));
  EXPECT_EQ(GameManager::eTP_InTransition, manager.GetTransitionPhase());
  EXPECT_EQ((Log{"s.ProcessTransition", "s.Render"}), Frame(manager));
  EXPECT_EQ(GameManager::eTP_Running, manager.GetTransitionPhase());
  EXPECT_EQ((Log{"s.Update", "s.Render"}), Frame(manager));
}

TEST(GameManager, TransitionWaitsWhileTheStateSaysItIsNotDone) {
  GameManager manager;
  LoggingState state("s");
  state.transitionDone = 0;
  manager.LaunchState(&state);
  Frame(manager);
  EXPECT_EQ((Log{"s.ProcessTransition", "s.Render"}), Frame(manager));
  EXPECT_EQ((Log{"s.ProcessTransition", "s.Render"}), Frame(manager));
  state.transitionDone = 1;
  Frame(manager);
  EXPECT_EQ((Log{"s.Update", "s.Render"}), Frame(manager));
}

TEST(GameManager, LaunchingASecondStateExitsTheFirst) {
  GameManager manager;
  LoggingState first("one"), second("two");
  manager.LaunchState(&first);
  Frame(manager);
  Frame(manager);
  manager.LaunchState(&second);
  EXPECT_EQ((Log{"one.ExitState", "two.EnterState", "two.Render"}), Frame(manager));
  EXPECT_EQ(&second, manager.GetCurrentState());
}

TEST(GameManager, LockedStateRefusesLaunchAndSkipsRender) {
  LockableManager manager;
  LoggingState state("s");
  manager.LaunchState(&state);
  Frame(manager);
  manager.Lock(1);
  LoggingState other("o");
  EXPECT_EQ(0, manager.LaunchState(&other));
  EXPECT_EQ((Log{"s.ProcessTransition"}), Frame(manager));
}

TEST(GameManager, ExitStateForgetsTheStateAndNeedRenderFollowsTheStack) {
  GameManager manager;
  EXPECT_FALSE(manager.needRender());
  LoggingState state("s");
  shelltitle::LoggingScene scene("scene");
  manager.LaunchState(&state);
  Frame(manager);
  EXPECT_FALSE(manager.needRender());
  state.PushScene(&scene, eRA_UpdateAndRender);
  Frame(manager);
  Frame(manager);
  EXPECT_TRUE(manager.needRender());
  CallLog().clear();
  manager.ExitState();
  EXPECT_EQ((Log{"s.ExitState", "scene.Exit"}), CallLog());
  EXPECT_EQ(nullptr, manager.GetCurrentState());
  EXPECT_FALSE(manager.needRender());
  manager.ExitState();  // nothing current: nothing happens
}

TEST(GameManager, GameFinishedIsReadAndWritten) {
  GameManager manager;
  manager.SetGameFinished(1);
  EXPECT_EQ(1, manager.IsGameFinished());
}

class GameManagerServicesTest : public testing::Test {
 protected:
  void SetUp() override {
    char here[1000] = {0};
    ASSERT_NE(nullptr, getcwd(here, sizeof here));
    mWorkingPath = here;
    ASSERT_EQ(0, chdir(ZV_SOURCE_DIR));  // res/CamCfg.xml resolves here
  }
  void TearDown() override {
    ASSERT_EQ(0, chdir(mWorkingPath.c_str()));
    // Without 3D the font manager outlives Destroy, as on the device.
    delete XFontManager::instance_;
    XFontManager::instance_ = nullptr;
    ZvWidgetInstance::SetIsUseOgl(0);
  }
  std::string mWorkingPath;
};

TEST_F(GameManagerServicesTest, InitializeBringsUpTheServicesAndDestroyTakesThemDown) {
  GameManager manager;
  manager.Initialize();
  EXPECT_NE(nullptr, CameraConfig::instance_);
  EXPECT_NE(nullptr, InputManager::instance_);
  EXPECT_NE(nullptr, XFontManager::instance_);
  EXPECT_NE(nullptr, GLTextureManager::instance_);
  EXPECT_NE(nullptr, manager.GetLogging());
  EXPECT_NE(nullptr, RenderStateStack::GetColorContainer());
  EXPECT_EQ(0, XFontManager::sInstance().mFontCount);  // 3D is off: no font loaded
  int seconds = 0;
  EXPECT_TRUE(CameraConfig::sInstance().getProperty_Int("Recorder.MaxSeconds", seconds));

  manager.Destroy();
  EXPECT_EQ(nullptr, CameraConfig::instance_);
  EXPECT_EQ(nullptr, InputManager::instance_);
  EXPECT_EQ(nullptr, GLTextureManager::instance_);
  EXPECT_EQ(nullptr, manager.GetLogging());
  EXPECT_NE(nullptr, XFontManager::instance_) << "without 3D the font manager stays allocated";
}

TEST_F(GameManagerServicesTest, WithOpenGLTheFontManagerIsInitialisedAndDeleted) {
  ZvWidgetInstance::SetIsUseOgl(1);
  GameManager manager;
  manager.Initialize();
  EXPECT_EQ(4, XFontManager::sInstance().mFontCount) << "the four system fonts were tried";
  manager.Destroy();
  EXPECT_EQ(nullptr, XFontManager::instance_);
}

TEST(GameManagerDeathTest, LaunchingNoStateFailsTheAssertion) {
  GameManager manager;
  EXPECT_DEATH(manager.LaunchState(nullptr),
               "Src/BaseFramework/GameManager\\.cpp:[0-9]+: int GameManager::LaunchState\\(GameState\\*\\): "
               "Assertion `InState != 0' failed\\.");
}

TEST(GameManagerDeathTest, ArchiverBeforeItIsMadeFailsTheAssertion) {
  GameManager manager;
  EXPECT_DEATH(manager.GetArchiver(), zvtest::Literal(zvtest::AssertText("Src/BaseFramework/GameManager.h", 42,
                                                                         "Archive& GameManager::GetArchiver()",
                                                                         "mArchiver")));
}

TEST(GameManagerDeathTest, MediaCenterBeforeItIsMadeFailsTheAssertion) {
  GameManager manager;
  EXPECT_DEATH(manager.GetMediaCenter(),
               zvtest::Literal(zvtest::AssertText("Src/BaseFramework/GameManager.h", 43,
                                                  "MediaCenter& GameManager::GetMediaCenter()", "mMediaCenter")));
}

}  // namespace
