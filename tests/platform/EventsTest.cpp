#include <gtest/gtest.h>

#include <vector>

#include "CAccelerometerSvc.h"
#include "CButtonSvc.h"
#include "CEventSvc.h"
#include "CPowerSvc.h"
#include "CTouchMessage.h"
#include "solva/Device.h"
#include "solva/Events.h"

namespace {

using Vantrel::Solva::CAccelerometerSvc;
using Vantrel::Solva::CButtonSvc;
using Vantrel::Solva::CEventSvc;

// Writes down the types it is told.
struct Recorder : IEventListener {
  explicit Recorder(const tEventType* word) : IEventListener(word, 1) {}
  tErrType Notify(const IEventMessage& msg) override {
    types.push_back(msg.GetEventType());
    if (msg.GetEventType() == kButtonStateChanged) {
      masks.push_back(static_cast<const CButtonMessage&>(msg).GetButtonState().buttonState);
      changes.push_back(static_cast<const CButtonMessage&>(msg).GetButtonState().buttonTransition);
    }
    return kNoErr;
  }
  std::vector<tEventType> types;
  std::vector<U32> masks, changes;
};

const tEventType kButtonsWord = 0x10000FFF;
const tEventType kPowerWord = 0x10003BFF;
const tEventType kTouchWord = 0x10004BFF;
const tEventType kTiltWord = 0x100057FF;

class EventsTest : public testing::Test {
 protected:
  void SetUp() override { solva::ResetDevice(); }
  void TearDown() override { solva::ResetDevice(); }
  CEventSvc events;
  CButtonSvc buttons;
};

TEST_F(EventsTest, HandledTypeWordsCoverTheirGroupOnly) {
  Recorder power(&kPowerWord), touch(&kTouchWord), tilt(&kTiltWord);
  EXPECT_TRUE(power.HandlesType(kPowerStateChanged));
  EXPECT_FALSE(power.HandlesType(kTouchStateChanged));
  EXPECT_TRUE(touch.HandlesType(kTouchStateChanged));
  EXPECT_FALSE(touch.HandlesType(kOrientationChanged));
  EXPECT_TRUE(tilt.HandlesType(kOrientationChanged));
  EXPECT_TRUE(tilt.HandlesType(kAccelerometerDataChanged));
  EXPECT_FALSE(tilt.HandlesType(kPowerStateChanged));
  const tEventType usbWord = 0x100043FF;
  Recorder usb(&usbWord);
  EXPECT_TRUE(usb.HandlesType(0x10004001));
  EXPECT_FALSE(usb.HandlesType(kTouchStateChanged));  // same group, bits outside the word
}

TEST_F(EventsTest, QueuedEventsWaitForDeliveryAndGoToTheirListenersInOrder) {
  Recorder power(&kPowerWord), touch(&kTouchWord), tilt(&kTiltWord);
  ASSERT_EQ(kNoErr, events.RegisterEventListener(&power, 0));
  ASSERT_EQ(kNoErr, events.RegisterEventListener(&touch, 0));
  ASSERT_EQ(kNoErr, events.RegisterEventListener(&tilt, 0));
  solva::QueueTouch(true, 1, 2);
  solva::QueuePowerState(3);
  solva::QueueOrientation(1);
  EXPECT_EQ(3, solva::QueuedEventCount());
  EXPECT_TRUE(power.types.empty());
  EXPECT_EQ(0, solva::Orientation());  // the level changes at delivery
  EXPECT_EQ(3, solva::DeliverEvents());
  EXPECT_EQ(0, solva::QueuedEventCount());
  EXPECT_EQ(std::vector<tEventType>{kPowerStateChanged}, power.types);
  EXPECT_EQ(std::vector<tEventType>{kTouchStateChanged}, touch.types);
  EXPECT_EQ(std::vector<tEventType>{kOrientationChanged}, tilt.types);
  EXPECT_EQ(1, solva::Orientation());
  EXPECT_EQ(3, Vantrel::Solva::CPowerSvc().GetPowerState());
}

TEST_F(EventsTest, ButtonEventsGoToTheButtonServiceWithEveryButtonNowDown) {
  Recorder recorder(&kButtonsWord);
  ASSERT_EQ(kNoErr, buttons.RegisterEventListener(&recorder));
  Recorder onEvents(&kButtonsWord);
  ASSERT_EQ(kNoErr, events.RegisterEventListener(&onEvents, 0));
  solva::QueueButtons(0x1);
  solva::QueueButtons(0x1 | 0x20);
  solva::QueueButtons(0x20);
  solva::DeliverEvents();
  EXPECT_EQ((std::vector<U32>{0x1, 0x21, 0x20}), recorder.masks);
  EXPECT_EQ((std::vector<U32>{0x1, 0x20, 0x1}), recorder.changes);
  EXPECT_TRUE(onEvents.types.empty());
  EXPECT_EQ(0x20u, buttons.GetButtonState().buttonState);
}

TEST_F(EventsTest, UnregisteredListenersHearNothingMore) {
  Recorder touch(&kTouchWord);
  events.RegisterEventListener(&touch, 0);
  EXPECT_EQ(1, solva::RegisteredEventListeners());
  EXPECT_EQ(kNoErr, events.UnregisterEventListener(&touch));
  EXPECT_EQ(kNotFoundErr, events.UnregisterEventListener(&touch));
  solva::QueueTouch(true, 0, 0);
  EXPECT_EQ(0, solva::DeliverEvents());
  EXPECT_TRUE(touch.types.empty());
}

TEST_F(EventsTest, UnregisteringFromAServiceThatDoesNotHoldTheListenerIsReported) {
  Recorder touch(&kTouchWord);
  CButtonSvc buttons;
  events.RegisterEventListener(&touch, 0);
  EXPECT_TRUE(solva::ListenerRegistered(&touch));
  EXPECT_EQ(0, solva::UnknownUnregistrations());
  testing::internal::CaptureStderr();
  EXPECT_EQ(kNotFoundErr, buttons.UnregisterEventListener(&touch));  // the wrong service
  EXPECT_NE(std::string::npos, testing::internal::GetCapturedStderr().find("not registered"));
  EXPECT_EQ(1, solva::UnknownUnregistrations());
  EXPECT_TRUE(solva::ListenerRegistered(&touch));
  EXPECT_EQ(kNoErr, events.UnregisterEventListener(&touch));
  EXPECT_FALSE(solva::ListenerRegistered(&touch));
  EXPECT_EQ(1, solva::UnknownUnregistrations());
}

TEST_F(EventsTest, RegisteringTwiceKeepsOneEntry) {
  Recorder touch(&kTouchWord);
  events.RegisterEventListener(&touch, 0);
  events.RegisterEventListener(&touch, 0);
  EXPECT_EQ(1, solva::RegisteredEventListeners());
  EXPECT_EQ(kInvalidParamErr, events.RegisterEventListener(nullptr, 0));
}

TEST_F(EventsTest, TheNthRegistrationFailsOnceWhateverTheService) {
  Recorder a(&kTouchWord), b(&kButtonsWord), c(&kPowerWord);
  solva::FailRegistration(2);
  EXPECT_EQ(kNoErr, events.RegisterEventListener(&a, 0));
  EXPECT_EQ(kRegistrationErr, buttons.RegisterEventListener(&b));
  EXPECT_EQ(kNoErr, events.RegisterEventListener(&c, 0));
  EXPECT_EQ(0, solva::RegisteredButtonListeners());
  EXPECT_EQ(kNoErr, buttons.RegisterEventListener(&b));
}

TEST_F(EventsTest, WithoutAnAccelerometerTurnsAreNotReportedButTheDeviceTurns) {
  Recorder tilt(&kTiltWord);
  events.RegisterEventListener(&tilt, 0);
  solva::SetAccelerometerPresent(false);
  CAccelerometerSvc accelerometer;
  EXPECT_FALSE(accelerometer.IsAccelerometerPresent());
  solva::QueueOrientation(2);
  solva::DeliverEvents();
  EXPECT_TRUE(tilt.types.empty());
  EXPECT_EQ(2, accelerometer.GetOrientation());
}

TEST_F(EventsTest, AccelerometerKeepsItsRateAndMode) {
  CAccelerometerSvc accelerometer;
  EXPECT_EQ(kNoErr, accelerometer.SetAccelerometerRate(3));
  EXPECT_EQ(kNoErr, accelerometer.SetAccelerometerMode(3));
  EXPECT_EQ(3u, CAccelerometerSvc().GetAccelerometerRate());
  EXPECT_EQ(3u, CAccelerometerSvc().GetAccelerometerMode());
}

TEST_F(EventsTest, TouchCarriesSignedCoordinates) {
  struct TouchReader : IEventListener {
    TouchReader() : IEventListener(&kTouchWord, 1) {}
    tErrType Notify(const IEventMessage& msg) override {
      data = static_cast<const CTouchMessage&>(msg).GetTouchState();
      return kNoErr;
    }
    tTouchData data{};
  } reader;
  events.RegisterEventListener(&reader, 0);
  solva::QueueTouch(true, -3, 300);
  solva::DeliverEvents();
  EXPECT_EQ(1, reader.data.touchState);
  EXPECT_EQ(-3, reader.data.x);
  EXPECT_EQ(300, reader.data.y);
}

}  // namespace
