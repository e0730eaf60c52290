// The recorder's application object across suspend, resume and its assertion.
#include <gtest/gtest.h>
#include <unistd.h>

#include "CKernelSvc.h"
#include "Tamarin/SolvaServices.h"
#include "recorder/RecorderFixture.h"

namespace {

using recorder::RecorderTest;

std::string CurrentFolder() {
  char here[4096] = {0};
  return getcwd(here, sizeof here) ? here : "";
}

TEST_F(RecorderTest, ASuspendOfTenMinutesLeavesTheNextFrameAnOrdinaryOne) {
  Start();
  Frames(10);
  solva::AdvanceClock(20);  // 20 ms into the next frame
  mApp->Suspend();
  EXPECT_EQ(20u, mApp->GetSuspendElapsed());
  solva::AdvanceClock(600000);
  mApp->Resume();
  // The clock is given back the 20 ms: the next frame sees them, not ten minutes.
  EXPECT_EQ(20u, gKernelSvc->GetElapsedTimeAsMSecs() - mApp->GetLastFrameTime());
}

TEST_F(RecorderTest, ResumeLeavesTheWorkingFolderWhereSuspendPutIt) {
  const std::string started = CurrentFolder();
  Start();
  EXPECT_NE(started, CurrentFolder());  // the title's own folder while it runs
  mApp->Suspend();
  EXPECT_EQ(started, CurrentFolder());
  mApp->Resume();
  EXPECT_EQ(started, CurrentFolder());  // unlike the framework's own Resume
}

using RecorderDeathTest = RecorderTest;

TEST_F(RecorderDeathTest, ResumeWithoutAGameManagerFailsTheAssertion) {
  Start();
  mApp->SetGameManager(nullptr);
  EXPECT_DEATH(mApp->Resume(), zvtest::Literal(zvtest::AssertText("src/VT/ZvMicrophoneWidgetInstance.cpp", 84,
                                                                   "virtual void ZvMicrophoneWidgetInstance::Resume()",
                                                                   "MyManager")));
  mApp->SetGameManager(&MicManager::sInstance());
}

}  // namespace
