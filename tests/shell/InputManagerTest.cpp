#include "BaseFramework/InputManager.h"

#include <gtest/gtest.h>

#include <vector>

#include "CAccelerometerMessage.h"
#include "CButtonMessage.h"
#include "CButtonSvc.h"
#include "CEventSvc.h"
#include "CTouchMessage.h"
#include "Tamarin/ShellListeners.h"
#include "Tamarin/SolvaServices.h"
#include "solva/Device.h"
#include "solva/Events.h"

namespace {

// The input manager with the shell's listeners registered on the device, as
// between Enter and Exit.
class InputManagerTest : public testing::Test {
 protected:
  void SetUp() override {
    solva::ResetDevice();
    gEventSvc = new Vantrel::Solva::CEventSvc();
    buttons = new Vantrel::Solva::CButtonSvc();
    ASSERT_EQ(kNoErr, buttons->RegisterEventListener(&gEventListerner));
    ASSERT_EQ(kNoErr, gEventSvc->RegisterEventListener(&gTouchListener, 0));
    ASSERT_EQ(kNoErr, gEventSvc->RegisterEventListener(&gAccelerometerListener, 0));
    InputManager::sCreate();
    input = &InputManager::sInstance();
  }
  void TearDown() override {
    delete InputManager::instance_;
    InputManager::instance_ = nullptr;
    buttons->UnregisterEventListener(&gEventListerner);
    gEventSvc->UnregisterEventListener(&gTouchListener);
    gEventSvc->UnregisterEventListener(&gAccelerometerListener);
    delete buttons;
    delete gEventSvc;
    gEventSvc = nullptr;
    solva::ResetDevice();
  }
  // One frame: events delivered between frames, then the per-frame sample.
  void Frame() {
    solva::DeliverEvents();
    input->Update(0.033f);
  }

  Vantrel::Solva::CButtonSvc* buttons = nullptr;
  InputManager* input = nullptr;
};

TEST_F(InputManagerTest, ConstructorFillsTheKeyLettersAndResets) {
  const int expected[17] = {'W', 'S', 'D', 'A', 'J', 'K', 'U', 'I', 'V', 'C', 'P', 0, 'M', 'H', 'P', 'O', 0};
  for (int i = 0; i < 17; ++i) EXPECT_EQ(expected[i], input->mKeyCodes[i]) << i;
  EXPECT_EQ(0, input->mDisabled);
  EXPECT_EQ(0.0f, input->mBlockTime);
  for (int i = 0; i < 17; ++i) EXPECT_EQ(0, input->mButtonState[i]);
}

TEST_F(InputManagerTest, ButtonHeldForThreeFramesGivesPressedHeldHeldThenReleasedThenUp) {
  solva::QueueButtons(kButtonRight);
  Frame();
  EXPECT_EQ(InputManager::eBS_JustPressed, input->mButtonState[2]);
  EXPECT_EQ(1, input->mAnyPressed);
  Frame();
  EXPECT_EQ(InputManager::eBS_Held, input->mButtonState[2]);
  EXPECT_EQ(0, input->mAnyPressed);
  Frame();
  EXPECT_EQ(InputManager::eBS_Held, input->mButtonState[2]);
  solva::QueueButtons(0);
  Frame();
  EXPECT_EQ(InputManager::eBS_JustReleased, input->mButtonState[2]);
  Frame();
  EXPECT_EQ(InputManager::eBS_Up, input->mButtonState[2]);
}

TEST_F(InputManagerTest, TwoButtonsAtOnceAndReleasingOneLeavesTheOtherHeldWithoutANewEdge) {
  solva::QueueButtons(kButtonA | kButtonB);
  Frame();
  EXPECT_EQ(InputManager::eBS_JustPressed, input->mButtonState[4]);
  EXPECT_EQ(InputManager::eBS_JustPressed, input->mButtonState[5]);
  solva::QueueButtons(kButtonB);  // A let go: the event carries B alone
  Frame();
  EXPECT_EQ(InputManager::eBS_JustReleased, input->mButtonState[4]);
  EXPECT_EQ(InputManager::eBS_Held, input->mButtonState[5]);
  EXPECT_EQ(0, input->mAnyPressed);
}

TEST_F(InputManagerTest, EachMaskBitRaisesItsIndices) {
  struct Bit {
    U32 mask;
    std::vector<int> indices;
  };
  const Bit bits[] = {{0x1, {0, 15}}, {0x2, {1}},    {0x4, {2}},    {0x8, {3}},   {0x10, {4}},     {0x20, {5}},
                      {0x40, {6}},    {0x80, {7}},   {0x100, {12}}, {0x200, {13}}, {0x10000, {16}}};
  for (const Bit& bit : bits) {
    solva::QueueButtons(bit.mask);
    solva::DeliverEvents();
    std::vector<int> raised;
    for (int i = 0; i < 17; ++i) {
      if (input->mButtonRaw[i]) raised.push_back(i);
    }
    EXPECT_EQ(bit.indices, raised) << std::hex << bit.mask;
  }
  // Bits without a button raise nothing.
  solva::QueueButtons(0x400 | 0x800 | 0x20000);
  solva::DeliverEvents();
  for (int i = 0; i < 17; ++i) EXPECT_EQ(0, input->mButtonRaw[i]) << i;
}

TEST_F(InputManagerTest, ButtonListenerPrintsTheMaskAndTheDirectionNames) {
  testing::internal::CaptureStdout();
  solva::QueueButtons(kButtonUp | kButtonLeft | kButtonA);
  solva::DeliverEvents();
  EXPECT_EQ("BUTTON:19!\nBUTTON UP!\nBUTTON LEFT!\n", testing::internal::GetCapturedStdout());
}

TEST_F(InputManagerTest, PressAndReleaseBetweenTwoFramesLeaveNoTrace) {
  solva::QueueButtons(kButtonDown);
  solva::QueueButtons(0);
  Frame();
  EXPECT_EQ(InputManager::eBS_Up, input->mButtonState[1]);
  EXPECT_EQ(0, input->mAnyPressed);
}

TEST_F(InputManagerTest, TouchGoesDownHeldUpThenNothing) {
  solva::QueueTouch(true, 10, 20);
  Frame();
  EXPECT_EQ(InputManager::eTP_JustDown, input->mTouchPhase);
  EXPECT_EQ(1, input->mAnyPressed);
  EXPECT_EQ(10, input->mTouchNow.x);
  EXPECT_EQ(20, input->mTouchNow.y);
  solva::QueueTouch(true, 15, 25);
  Frame();
  EXPECT_EQ(InputManager::eTP_Held, input->mTouchPhase);
  EXPECT_EQ(10, input->mTouchLast.x);
  EXPECT_EQ(15, input->mTouchNow.x);
  solva::QueueTouch(false, 15, 25);
  Frame();
  EXPECT_EQ(InputManager::eTP_JustUp, input->mTouchPhase);
  Frame();
  EXPECT_EQ(InputManager::eTP_None, input->mTouchPhase);
}

TEST_F(InputManagerTest, TouchDownAndUpWithinOneFrameGivesNoPhaseAtAll) {
  solva::QueueTouch(true, 100, 100);
  solva::QueueTouch(false, 100, 100);
  Frame();
  EXPECT_EQ(InputManager::eTP_None, input->mTouchPhase);
  EXPECT_EQ(0, input->mAnyPressed);
}

TEST_F(InputManagerTest, TouchCoordinatesAreNotRotated) {
  solva::QueueOrientation(1);
  solva::QueueTouch(true, 400, 30);
  Frame();
  EXPECT_EQ(eOS_Vertical, input->mOrientation);
  EXPECT_EQ(400, input->mTouchNow.x);
  EXPECT_EQ(30, input->mTouchNow.y);
}

TEST_F(InputManagerTest, NegativeTouchCoordinatesArriveSigned) {
  solva::QueueTouch(true, -5, -7);
  Frame();
  EXPECT_EQ(-5, input->mTouchNow.x);
  EXPECT_EQ(-7, input->mTouchNow.y);
}

TEST_F(InputManagerTest, OrientationIsNotSampledReadersWithinAFrameMaySeeBothValues) {
  Frame();
  const EOrientationStatus early = input->mOrientation;
  solva::QueueOrientation(2);
  solva::DeliverEvents();  // a delivery in the middle of the frame
  const EOrientationStatus late = input->mOrientation;
  EXPECT_EQ(eOS_Horizontal, early);
  EXPECT_EQ(eOS_HorizontalUpsideDown, late);
  EXPECT_EQ(1, input->mOrientationChanged);
  input->Update(0.033f);
  EXPECT_EQ(0, input->mOrientationChanged);  // cleared at the start of each update
  EXPECT_EQ(eOS_HorizontalUpsideDown, input->mOrientation);
}

TEST_F(InputManagerTest, AfterResetTheButtonStatesAreZeroUntilTheNextUpdate) {
  solva::QueueButtons(kButtonA);
  Frame();
  input->Reset();
  for (int i = 0; i < 17; ++i) EXPECT_EQ(0, input->mButtonState[i]) << i;
  Frame();
  EXPECT_EQ(InputManager::eBS_Up, input->mButtonState[4]);  // the raw level went too
  EXPECT_EQ(InputManager::eBS_Up, input->mButtonState[0]);
}

TEST_F(InputManagerTest, ResetReadsTheTrueOrientationFromTheDevice) {
  solva::QueueOrientation(3);
  solva::DeliverEvents();
  input->mOrientation = eOS_Horizontal;
  input->Reset();
  EXPECT_EQ(eOS_VerticalUpsideDown, input->mOrientation);
}

TEST_F(InputManagerTest, BlockTimeSuppressesInputUntilItRunsOut) {
  input->mBlockTime = 0.05f;
  solva::QueueButtons(kButtonA);
  solva::DeliverEvents();
  input->Update(0.033f);
  EXPECT_EQ(0, input->mButtonState[4]);
  EXPECT_FLOAT_EQ(0.0f, input->mBlockTime);  // Reset clears what was left of it
}

TEST_F(InputManagerTest, DisabledInputResetsEveryFrame) {
  input->mDisabled = 1;
  solva::QueueTouch(true, 1, 1);
  Frame();
  EXPECT_EQ(InputManager::eTP_None, input->mTouchPhase);
  EXPECT_EQ(0, input->mTouchNow.down);
  EXPECT_EQ(1, input->mDisabled);
}

TEST_F(InputManagerTest, ButtonAndTouchInOneFrameBothCountAsPressed) {
  solva::QueueButtons(kButtonHint);
  solva::QueueTouch(true, 3, 4);
  Frame();
  EXPECT_EQ(InputManager::eBS_JustPressed, input->mButtonState[13]);
  EXPECT_EQ(InputManager::eTP_JustDown, input->mTouchPhase);
  EXPECT_EQ(1, input->mAnyPressed);
}

TEST(InputManagerAfterExit, ListenersWithoutAnInputManagerSayItAndTouchNothing) {
  ASSERT_EQ(nullptr, InputManager::instance_);
  testing::internal::CaptureStdout();
  const tButtonData data = {kButtonA, kButtonA};
  gEventListerner.Notify(CButtonMessage(data));
  gAccelerometerListener.Notify(CAccelerometerMessage(kOrientationChanged, 1));
  gAccelerometerListener.Notify(CAccelerometerMessage(kAccelerometerDataChanged, 1));  // not its business
  gTouchListener.Notify(CTouchMessage(tTouchData{1, 2, 3}));  // no event service either
  EXPECT_EQ(
      "receive Button message after exit!\nreceive Accelerometer message after exit!\n"
      "receive Touch message after exit!\n",
      testing::internal::GetCapturedStdout());
  EXPECT_EQ(kButtonStateChanged, gEventListerner.mLastEventType);
  EXPECT_EQ(kAccelerometerDataChanged, gAccelerometerListener.mLastEventType);
  EXPECT_EQ(kTouchStateChanged, gTouchListener.mLastEventType);
}

TEST(InputManagerAfterExit, TouchWithAnEventServiceButNoInputManagerIsDroppedSilently) {
  gEventSvc = new Vantrel::Solva::CEventSvc();
  testing::internal::CaptureStdout();
  gTouchListener.Notify(CTouchMessage(tTouchData{1, 2, 3}));
  EXPECT_EQ("", testing::internal::GetCapturedStdout());
  delete gEventSvc;
  gEventSvc = nullptr;
}

}  // namespace
