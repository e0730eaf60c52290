#pragma once
// The recorder title on a fresh simulated device, in process: a device root and a
// title folder in temporary folders, the virtual clock, a tone at the microphone.
#include <gtest/gtest.h>
#include <unistd.h>

#include <string>

#include "MicManager.h"
#include "RenderSystem/XFontManager.h"
#include "VT/ZvMicrophoneWidgetInstance.h"
#include "ZvMicrophone.h"
#include "solva/Audio.h"
#include "solva/Capture.h"
#include "solva/Clock.h"
#include "solva/Device.h"
#include "solva/Events.h"
#include "support/TestSupport.h"

namespace rectest {

class RecorderTest : public testing::Test {
 protected:
  void SetUp() override {
    char here[4096] = {0};
    ASSERT_NE(nullptr, getcwd(here, sizeof here));
    mWorkingPath = here;
    solva::ResetDevice();
    root = mDir.path() + "/root/";
    title = mDir.path() + "/title/";
    ASSERT_TRUE(solva::SetDeviceRoot(root));
    ASSERT_EQ(0, mkdir(title.c_str(), 0755));
    ASSERT_EQ(0, mkdir((title + "res").c_str(), 0755));
    ASSERT_EQ(0, mkdir((title + "res/Sound").c_str(), 0755));
    zvtest::WriteText(title + "res/CamCfg.xml", zvtest::ReadText(ZV_SOURCE_DIR "/res/CamCfg.xml"));
    // The title's cues are not what these tests are about: a project without any.
    zvtest::WriteText(title + "res/Sound/MicrophoneWidget.soundproject", "<Project><Group/></Project>\n");
    solva::SetTitlePath(title);
    solva::SetClockMode(solva::ClockMode::Virtual, 1000000);
    solva::SetFreeBytes(1000000000);
    ASSERT_TRUE(solva::SetMicSource(solva::MicSource::Tone));
  }

  void TearDown() override {
    if (mApp != nullptr) {
      testing::internal::CaptureStdout();
      mApp->Exit();
      testing::internal::GetCapturedStdout();
      delete mApp;
      mApp = nullptr;
    }
    // Without 3D the font manager outlives the title, as on the device where the
    // process ends with it; here the next test starts another title.
    delete XFontManager::instance_;
    XFontManager::instance_ = nullptr;
    ASSERT_EQ(0, chdir(mWorkingPath.c_str()));
    solva::SetClockMode(solva::ClockMode::Real);
    solva::ResetDevice();
  }

  // CreateApp and Enter, as the application manager does; output kept quiet.
  void Start() {
    mApp = new ZvMicrophoneWidgetInstance(nullptr);
    testing::internal::CaptureStdout();
    mApp->Enter();
    testing::internal::GetCapturedStdout();
  }

  // Device time passes; the capture writes what it heard.
  void Pass(uint32_t millis) {
    solva::AdvanceClock(millis);
    solva::PumpCapture();
  }

  ZvMicrophone& Mic() { return *MicManager::sInstance().GetMicrophone(); }
  MediaCenter& Store() { return MicManager::sInstance().GetMediaCenter(); }

  std::string Music(const std::string& name) const { return root + "LocalData/Shared/Music/" + name; }
  std::string Index(const std::string& name) const { return root + "LocalData/Shared/FileIndex/" + name; }

  std::string root;
  std::string title;
  ZvMicrophoneWidgetInstance* mApp = nullptr;

 private:
  zvtest::TempDir mDir;
  std::string mWorkingPath;
};

// Remembers what it was told and what the microphone held at that moment.
struct Observer : MicStateObserver {
  explicit Observer(Microphone* mic) : mMic(mic) {}
  void Notify(EMicStateEvent event) override {
    events.push_back(event);
    resDuringNotify = mMic->GetCurrentAudioRes();
    stateDuringNotify = mMic->GetState();
  }
  Microphone* mMic;
  std::vector<EMicStateEvent> events;
  int resDuringNotify = -2;
  int stateDuringNotify = -2;
};

}  // namespace rectest
