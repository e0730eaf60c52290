#include "SessionCheck.h"

#include <gtest/gtest.h>

#include "CEventSvc.h"
#include "solva/Device.h"
#include "support/TestSupport.h"

namespace {

// Stands in for a title that forgot to let go of its events.
struct Listener : IEventListener {
  Listener() : IEventListener(&kWord, 1) {}
  tErrType Notify(const IEventMessage&) override { return kNoErr; }
  static const tEventType kWord;
};
const tEventType Listener::kWord = 0x10003BFF;

class SessionCheckTest : public testing::Test {
 protected:
  void SetUp() override {
    solva::ResetDevice();
    ASSERT_TRUE(solva::SetDeviceRoot(mDir.path()));
  }
  void TearDown() override { solva::ResetDevice(); }
  std::string Music() const { return solva::DeviceRoot() + "LocalData/Shared/Music/"; }
  zvtest::TempDir mDir;
};

TEST_F(SessionCheckTest, AJsonAnswerAndASoundGalleryPass) {
  EXPECT_TRUE(SessionCheck::Problems("{\"filename\":\"\"}", solva::DeviceRoot(), 1).empty());
  EXPECT_TRUE(SessionCheck::Problems("null", solva::DeviceRoot(), 1).empty());
}

TEST_F(SessionCheckTest, AnAnswerThatIsNotJsonIsAProblem) {
  const std::vector<std::string> problems = SessionCheck::Problems("{\"filename\":", solva::DeviceRoot(), 1);
  ASSERT_EQ(1u, problems.size());
  EXPECT_EQ("the answer is not JSON: {\"filename\":", problems[0]);
}

TEST_F(SessionCheckTest, AFileTheStoreWouldWriteOverIsAProblemNamingIt) {
  zvtest::WriteText(Music() + "vtwgaudio_3.wav", "RIFF");
  const std::vector<std::string> problems = SessionCheck::Problems("{}", solva::DeviceRoot(), 1);
  ASSERT_EQ(1u, problems.size());
  EXPECT_EQ(0u, problems[0].find("solva-gallery check: Audio, ")) << problems[0];
  EXPECT_NE(std::string::npos, problems[0].find("vtwgaudio_3.wav")) << problems[0];
}

TEST_F(SessionCheckTest, ANoteOfTheGalleryIsNoProblem) {
  // A capture never stored: the next capture overwrites it.
  zvtest::WriteText(Music() + "audio.tmp", "RIFF");
  EXPECT_TRUE(SessionCheck::Problems("{}", solva::DeviceRoot(), 1).empty());
}

TEST_F(SessionCheckTest, AListenerLeftRegisteredAfterExitIsAProblem) {
  Vantrel::Solva::CEventSvc events;
  Listener listener;
  ASSERT_EQ(kNoErr, events.RegisterEventListener(&listener, 0));
  const std::vector<std::string> problems = SessionCheck::Problems("{}", solva::DeviceRoot(), 1);
  events.UnregisterEventListener(&listener);
  ASSERT_EQ(1u, problems.size());
  EXPECT_EQ("listeners still registered after Exit: 1", problems[0]);
}

}  // namespace
