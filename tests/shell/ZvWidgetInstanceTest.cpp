#include "Tamarin/ZvWidgetInstance.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <boost/shared_ptr.hpp>
#include <cstring>
#include <string>
#include <vector>

#include "BaseFramework/InputManager.h"
#include "RenderSystem/XFontManager.h"
#include "CAccelerometerMessage.h"
#include "CButtonMessage.h"
#include "CPowerMessage.h"
#include "CTouchMessage.h"
#include "Tamarin/ShellListeners.h"
#include "Tamarin/SolvaServices.h"
#include "solva/AppManager.h"
#include "solva/Clock.h"
#include "solva/Device.h"
#include "solva/Events.h"
#include "support/ShellTitle.h"
#include "support/TestSupport.h"

namespace {

using shelltitle::CallLog;
using shelltitle::ListenersAtManagerDestroy;
using shelltitle::ShellTitleInstance;
using shelltitle::ShellTitleManager;
using Log = std::vector<std::string>;

std::string CurrentFolder() {
  char here[1000] = {0};
  return getcwd(here, sizeof here) ? here : "";
}

// A title on a fresh simulated device, on the virtual clock.
class ShellTest : public testing::Test {
 protected:
  void SetUp() override {
    mWorkingPath = CurrentFolder();
    solva::ResetDevice();
    ASSERT_TRUE(solva::SetDeviceRoot(mRoot.path()));
    solva::SetTitlePath(ZV_SOURCE_DIR);  // where res/CamCfg.xml is
    solva::SetClockMode(solva::ClockMode::Virtual, 1000000);
    CallLog().clear();
  }
  void TearDown() override {
    if (mApp && mEntered && !mExited) mApp->Exit();
    mApp.reset();
    // Without 3D the font manager outlives the title, as on the device, where the
    // process ends with it; here the next test starts another title.
    delete XFontManager::instance_;
    XFontManager::instance_ = nullptr;
    ASSERT_EQ(0, chdir(mWorkingPath.c_str()));
    solva::SetClockMode(solva::ClockMode::Real);
    solva::ResetDevice();
  }

  ShellTitleInstance& Create(boost::shared_ptr<Catalog::CJSonFile>* params = nullptr) {
    mApp.reset(new ShellTitleInstance(params));
    return *mApp;
  }
  void Enter() {
    mApp->Enter();
    mEntered = true;
  }
  void Exit() {
    mApp->Exit();
    mExited = true;
  }
  // One frame, as the application manager runs it.
  Log Frame(uint32_t ms = 33) {
    solva::AdvanceClock(ms);
    solva::DeliverEvents();
    CallLog().clear();
    mApp->Update();
    return CallLog();
  }
  shelltitle::MainScene* Main() { return ShellTitleManager::sInstance().state()->main(); }

  zvtest::TempDir mRoot;
  std::string mWorkingPath;
  boost::shared_ptr<ShellTitleInstance> mApp;
  bool mEntered = false;
  bool mExited = false;
};

TEST_F(ShellTest, CreateAppWithoutParametersHasNone) {
  ShellTitleInstance& app = Create(nullptr);
  EXPECT_EQ(nullptr, app.GetParams());
  EXPECT_EQ(&app, ZvWidgetInstance::GetActiveInstance());
}

TEST_F(ShellTest, CreateAppSharesTheLaunchParameters) {
  boost::shared_ptr<Catalog::CJSonFile> params(new Catalog::CJSonFile());
  params->GetRoot()["limittime"] = 30;
  ShellTitleInstance& app = Create(&params);
  EXPECT_EQ(params.get(), app.GetParams());
  EXPECT_EQ(2, params.use_count());
}

TEST_F(ShellTest, EnterBringsUpServicesThenTheManagerThenTheListenersInOrder) {
  Create();
  testing::internal::CaptureStdout();
  Enter();
  const std::string out = testing::internal::GetCapturedStdout();
  EXPECT_EQ(
      "Register gPowerListener \nRegister gEventListerner \nRegister gTouchListener \n"
      "Register gAccelerometerListener \n",
      out);
  EXPECT_EQ((Log{"manager.Initialize"}), CallLog());
  EXPECT_NE(nullptr, gKernelSvc);
  EXPECT_NE(nullptr, gPowerSvc);
  EXPECT_NE(nullptr, gEventSvc);
  EXPECT_NE(nullptr, gButtonSvc);
  EXPECT_NE(nullptr, gDisplaySvc);
  EXPECT_NE(nullptr, gAccelerometerSvc);
  EXPECT_NE(nullptr, gVideoSvc);
  EXPECT_EQ(3, solva::RegisteredEventListeners());
  EXPECT_EQ(1, solva::RegisteredButtonListeners());
  EXPECT_EQ(1000u, mApp->GetLastFrameTime());
  EXPECT_FALSE(mApp->getTimer().isStopped());
  // The working directory is the title's from here on.
  EXPECT_EQ(std::string(ZV_SOURCE_DIR), CurrentFolder());
  EXPECT_EQ(mWorkingPath, mApp->GetWorkingPath());
}

TEST_F(ShellTest, TheThirdFrameIsTheFirstThatDraws) {
  Create();
  Enter();
  EXPECT_EQ((Log{"state.Enter"}), Frame());  // enters the state; nothing to render yet
  EXPECT_EQ((Log{}), Frame());                // finishes the transition
  EXPECT_EQ((Log{"main.Enter", "main.Update", "main.Render"}), Frame());
  EXPECT_EQ((Log{"main.Update", "main.Render"}), Frame());
}

TEST_F(ShellTest, DtIsTheClockDifferenceInSeconds) {
  Create();
  Enter();
  Frame();
  Frame();
  Frame(250);
  EXPECT_FLOAT_EQ(0.25f, Main()->lastDt);
}

TEST_F(ShellTest, ALongStallWithoutSuspendIsOneFrameWithTheWholeStall) {
  Create();
  Enter();
  for (int i = 0; i < 3; ++i) Frame();
  Frame(45000);
  EXPECT_FLOAT_EQ(45.0f, Main()->lastDt);
}

TEST_F(ShellTest, ASuspendOfTenMinutesLeavesTheNextDtAsItWasBefore) {
  Create();
  Enter();
  for (int i = 0; i < 4; ++i) Frame();
  solva::AdvanceClock(20);  // 20 ms into the next frame
  mApp->Suspend();
  solva::AdvanceClock(600000);
  mApp->Resume();
  Frame(13);
  EXPECT_FLOAT_EQ(0.033f, Main()->lastDt);
}

TEST_F(ShellTest, TheFrameworksResumeRestartsTheFrameClock) {
  Create();
  Enter();
  for (int i = 0; i < 4; ++i) Frame();
  mApp->ZvWidgetInstance::Suspend();
  EXPECT_EQ(mWorkingPath, CurrentFolder());  // suspended at the manager's folder
  solva::AdvanceClock(600000);
  mApp->ZvWidgetInstance::Resume();
  EXPECT_EQ(std::string(ZV_SOURCE_DIR), CurrentFolder());
  Frame(40);
  EXPECT_FLOAT_EQ(0.04f, Main()->lastDt);
}

TEST_F(ShellTest, TheFrameThatFinishesTheGameStillUpdatesAndRendersBeforePopApp) {
  Create();
  Enter();
  for (int i = 0; i < 3; ++i) Frame();
  bool popBeforeRender = true;
  Main()->onUpdate = [&](shelltitle::LoggingScene&, float) {
    ShellTitleManager::sInstance().SetGameFinished(1);
    popBeforeRender = solva::PopAppRequested();
  };
  EXPECT_EQ((Log{"main.Update", "main.Render"}), Frame());
  EXPECT_FALSE(popBeforeRender);
  EXPECT_TRUE(solva::PopAppRequested());
}

TEST_F(ShellTest, ExitTearsDownTheManagerBeforeTheListenersAndServices) {
  Create();
  Enter();
  const IEventListener* const listeners[] = {&gPowerListener, &gEventListerner, &gTouchListener,
                                             &gAccelerometerListener};
  for (const IEventListener* listener : listeners) EXPECT_TRUE(solva::ListenerRegistered(listener));
  for (int i = 0; i < 3; ++i) Frame();
  CallLog().clear();
  ListenersAtManagerDestroy().clear();
  Exit();
  EXPECT_EQ((Log{"manager.Destroy", "main.Exit"}), CallLog());
  // The manager went while every listener was still registered; then each went,
  // from the service it was registered with.
  EXPECT_EQ(std::vector<bool>(4, true), ListenersAtManagerDestroy());
  for (const IEventListener* listener : listeners) EXPECT_FALSE(solva::ListenerRegistered(listener));
  EXPECT_EQ(0, solva::UnknownUnregistrations());
  EXPECT_EQ(0, solva::RegisteredEventListeners());
  EXPECT_EQ(0, solva::RegisteredButtonListeners());
  EXPECT_EQ(nullptr, gKernelSvc);
  EXPECT_EQ(nullptr, gEventSvc);
  EXPECT_EQ(nullptr, gVideoSvc);
  EXPECT_EQ(nullptr, ZvWidgetInstance::GetActiveInstance());
  EXPECT_EQ(nullptr, mApp->GetGameManager());
  EXPECT_EQ(nullptr, InputManager::instance_);
  EXPECT_EQ(mWorkingPath, CurrentFolder());
}

TEST_F(ShellTest, ADeviceWithoutAnAccelerometerGetsNoAccelerometerListener) {
  solva::SetAccelerometerPresent(false);
  Create();
  testing::internal::CaptureStdout();
  Enter();
  const std::string out = testing::internal::GetCapturedStdout();
  EXPECT_NE(std::string::npos, out.find("Register gAccelerometerListener \n"));
  EXPECT_EQ(2, solva::RegisteredEventListeners());
  EXPECT_FALSE(mApp->getTimer().isStopped());
  Exit();
  EXPECT_EQ(0, solva::RegisteredEventListeners());
}

struct FailedRegistration {
  int nth;
  const char* failure;
  int eventListeners;
  int buttonListeners;
};

void PrintTo(const FailedRegistration& value, std::ostream* out) { *out << "registration " << value.nth; }

class FailedRegistrationTest : public ShellTest, public testing::WithParamInterface<FailedRegistration> {};

TEST_P(FailedRegistrationTest, LeavesEnterEarlyWithoutTheLaterListenersAndWithoutTheClock) {
  solva::FailRegistration(GetParam().nth);
  Create();
  testing::internal::CaptureStdout();
  Enter();
  const std::string out = testing::internal::GetCapturedStdout();
  EXPECT_NE(std::string::npos, out.find(std::string(GetParam().failure) + "\n")) << out;
  // Nothing after the failure was printed or done.
  EXPECT_EQ(out.size(), out.find(std::string(GetParam().failure) + "\n") + strlen(GetParam().failure) + 1);
  EXPECT_EQ(GetParam().eventListeners, solva::RegisteredEventListeners());
  EXPECT_EQ(GetParam().buttonListeners, solva::RegisteredButtonListeners());
  EXPECT_TRUE(mApp->getTimer().isStopped());
  EXPECT_EQ(0u, mApp->GetLastFrameTime());
  // The title runs on all the same.
  for (int i = 0; i < 3; ++i) Frame();
  EXPECT_EQ(1, Main()->updates);
}

std::string RegistrationName(const testing::TestParamInfo<FailedRegistration>& info) {
  static const char* const kNames[] = {"", "Power", "Button", "Touch", "Accelerometer"};
  return kNames[info.param.nth];
}

INSTANTIATE_TEST_SUITE_P(EachListener, FailedRegistrationTest,
                         testing::Values(FailedRegistration{1, "FAILURE to load event manager!", 0, 0},
                                         FailedRegistration{2, "FAILURE to load button server!", 1, 0},
                                         FailedRegistration{3, "FAILURE to load touch server!", 1, 1},
                                         FailedRegistration{4, "FAILURE to load Acclerometer!", 2, 1}),
                         RegistrationName);

TEST(ExitReason, TableForEveryPendingExitCode) {
  for (int code = 0; code < 256; ++code) {
    const int expected = code == 0 ? 0 : (code == 2 || code == 3 || code == 6) ? 3 : 1;
    EXPECT_EQ(expected, ZvWidgetInstance::ExitReason(code, false, true)) << code;
    // An unfinished game turns reason 1 into 3; a low battery turns any into 3.
    EXPECT_EQ(expected == 1 ? 3 : expected, ZvWidgetInstance::ExitReason(code, false, false)) << code;
    EXPECT_EQ(3, ZvWidgetInstance::ExitReason(code, true, true)) << code;
    EXPECT_EQ(3, ZvWidgetInstance::ExitReason(code, true, false)) << code;
  }
}

struct ExitCase {
  int code;
  bool finished;
  bool lowBattery;
  int reason;
};

void PrintTo(const ExitCase& value, std::ostream* out) { *out << "code " << value.code; }

class ExitReasonTest : public ShellTest, public testing::WithParamInterface<ExitCase> {};

TEST_P(ExitReasonTest, ExitStoresTheReasonInTheGameManager) {
  Create();
  Enter();
  for (int i = 0; i < 3; ++i) Frame();
  if (GetParam().finished) ShellTitleManager::sInstance().SetGameFinished(1);
  if (GetParam().lowBattery) {
    solva::QueuePowerState(kPowerLow);
    Frame();
  }
  solva::SetPendingExitCode(uint8_t(GetParam().code));
  Exit();
  // The manager is gone after Exit; the title noted the reason it was given.
  EXPECT_EQ(GetParam().reason, shelltitle::LastExitReason());
}

INSTANTIATE_TEST_SUITE_P(Cases, ExitReasonTest,
                         testing::Values(ExitCase{1, true, false, 1}, ExitCase{1, false, false, 3},
                                         ExitCase{0, false, true, 3}, ExitCase{0, false, false, 0},
                                         ExitCase{6, true, false, 3}, ExitCase{4, true, false, 1},
                                         ExitCase{200, false, false, 3}),
                         [](const testing::TestParamInfo<ExitCase>& info) {
                           return "Code" + std::to_string(info.param.code) +
                                  (info.param.finished ? "Finished" : "Unfinished") +
                                  (info.param.lowBattery ? "LowBattery" : "");
                         });

TEST_F(ShellTest, PowerListenerFollowsTheBatteryAndPrints) {
  Create();
  Enter();
  testing::internal::CaptureStdout();
  solva::QueuePowerState(kPowerLow);
  solva::DeliverEvents();
  EXPECT_EQ(1, gIsLowBattery);
  solva::QueuePowerState(kPowerExternal);  // other states leave the flag
  solva::DeliverEvents();
  EXPECT_EQ(1, gIsLowBattery);
  solva::QueuePowerState(kPowerNormal);
  solva::DeliverEvents();
  EXPECT_EQ(0, gIsLowBattery);
  EXPECT_EQ("kPowerStateChanged!\nkPowerStateChanged!\nkPowerStateChanged!\n", testing::internal::GetCapturedStdout());
  EXPECT_EQ(kPowerStateChanged, gPowerListener.mLastEventType);
}

TEST_F(ShellTest, SetGameManagerSaysSoWhenGivenNone) {
  ShellTitleInstance& app = Create();
  testing::internal::CaptureStdout();
  app.SetGameManager(nullptr);
  EXPECT_EQ("gameManager is NULL\n", testing::internal::GetCapturedStdout());
  EXPECT_EQ(nullptr, app.GetGameManager());
}

TEST_F(ShellTest, ElapseTimeIsTheDeviceClockInMilliseconds) {
  solva::AdvanceClock(234);
  EXPECT_DOUBLE_EQ(1234.0, ZvWidgetInstance::elapseTime());
}

TEST_F(ShellTest, OpenGLStaysDormantForATitleThatDoesNotUseIt) {
  Create();
  EXPECT_EQ(0, ZvWidgetInstance::GetIsUseOgl());
  testing::internal::CaptureStdout();
  Enter();
  Frame();
  mApp->SwapRenderBuffer();
  const std::string out = testing::internal::GetCapturedStdout();
  EXPECT_EQ(std::string::npos, out.find("[SolvaOpenGL create]"));
}

TEST_F(ShellTest, ListenersAfterExitSayItInsteadOfTouchingInput) {
  Create();
  Enter();
  Exit();
  testing::internal::CaptureStdout();
  const tButtonData data = {kButtonB, kButtonB};
  gEventListerner.Notify(CButtonMessage(data));
  gTouchListener.Notify(CTouchMessage(tTouchData{1, 5, 5}));
  gAccelerometerListener.Notify(CAccelerometerMessage(kOrientationChanged, 3));
  EXPECT_EQ(
      "receive Button message after exit!\nreceive Touch message after exit!\n"
      "receive Accelerometer message after exit!\n",
      testing::internal::GetCapturedStdout());
}

using ShellDeathTest = ShellTest;

TEST_F(ShellDeathTest, OpenGLWithoutAContextFailsTheAssertion) {
  ZvWidgetInstance::SetIsUseOgl(1);
  Create();
  EXPECT_DEATH(mApp->InitSolvaOpenGL(),
               zvtest::Literal(zvtest::AssertText("Src/Tamarin/ZvWidgetInstance.cpp", 538,
                                                  "virtual void ZvWidgetInstance::InitSolvaOpenGL()",
                                                  "mOpenGLConfig != 0")));
  ZvWidgetInstance::SetIsUseOgl(0);
}

}  // namespace
