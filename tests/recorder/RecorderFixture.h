#pragma once
// The whole recorder title, in-process, on a fresh simulated device with a virtual
// clock: a title folder in a temporary place with small layouts (the control names
// the panel binds), the progress bar's pictures and a sound project whose cues
// are short tones, and a device root of its own.
#include <gtest/gtest.h>
#include <unistd.h>

#include <boost/shared_ptr.hpp>
#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "BaseFramework/InputManager.h"
#include "CJSonFile.h"
#include "MediaCenter/Archive.h"
#include "MediaCenter/MediaCenter.h"
#include "MicManager.h"
#include "MicrophoneStateTree/MicroPhoneOperateScene/MemoryFullScene.h"
#include "MicrophoneStateTree/MicroPhoneOperateScene/NoMicrophoneScene.h"
#include "MicrophoneStateTree/MicroPhoneOperateScene/RawImageProgressBar.h"
#include "MicrophoneStateTree/MicroPhoneOperateScene/RecordVoiceScene.h"
#include "MicrophoneStateTree/MicrophoneState.h"
#include "RenderSystem/XFontManager.h"
#include "Sound/AudioDevice.h"
#include "VT/ZvMicrophoneWidgetInstance.h"
#include "YGUI/YGUIControl.h"
#include "YGUI/YGUIMessage.h"
#include "ZvMicrophone.h"
#include "solva/AppManager.h"
#include "solva/Audio.h"
#include "solva/Capture.h"
#include "solva/Clock.h"
#include "solva/Device.h"
#include "solva/Events.h"
#include "support/TestSupport.h"
#include "support/sound/SoundFiles.h"

namespace recorder {

// Where the test layouts put things (grid coordinates). The panel's anchor
// "mic_time_flat" is moved to the launch position, so what counts is the
// distance of each control to it.
struct Layout {
  int flatX, flatY, flatW, flatH;
  int backX, backY;
  int playX, playY;  // pause lies on play
  int recordX, recordY;  // stop lies on record
  int barRedX, barRedY;
};
const Layout kHorizontal = {20, 180, 440, 80, 30, 200, 80, 200, 130, 200, 400, 205};
const Layout kVertical = {10, 300, 252, 160, 20, 330, 70, 330, 200, 330, 150, 420};
const int kButton = 40;     // buttons are square
const int kBarWidth = 210;  // mic_time_blue
const int kBarHeight = 14;

// A 32-bit uncompressed TGA of one colour, top-left origin.
inline void WriteTga(const std::string& path, int w, int h, uint32_t rgba) {
  zvtest::Bytes out;
  const uint8_t head[] = {0, 0, 2, 0, 0, 0, 0, 0, 0, 0, 0, 0};
  for (uint8_t b : head) zvtest::PutU8(out, b);
  zvtest::PutU16(out, uint16_t(w));
  zvtest::PutU16(out, uint16_t(h));
  zvtest::PutU8(out, 32);
  zvtest::PutU8(out, 0x28);
  for (int i = 0; i < w * h; ++i) {
    zvtest::PutU8(out, uint8_t(rgba >> 8));   // B
    zvtest::PutU8(out, uint8_t(rgba >> 16));  // G
    zvtest::PutU8(out, uint8_t(rgba >> 24));  // R
    zvtest::PutU8(out, uint8_t(rgba));        // A
  }
  zvtest::WriteBytes(path, out);
}

inline std::string Button(const char* name, int id, int x, int y) {
  return "  <ImageButton Id='" + std::to_string(id) + "' Name='" + name + "' x='" + std::to_string(x) + "' y='" +
         std::to_string(y) + "' Width='40' Height='40' NormalBackground='btn_normal' SelectedBackground='btn_focus'" +
         " FocusBackground='btn_disabled' />\n";
}
inline std::string Image(const char* name, int x, int y, int w, int h, const char* picture) {
  return "  <Image Name='" + std::string(name) + "' x='" + std::to_string(x) + "' y='" + std::to_string(y) +
         "' Width='" + std::to_string(w) + "' Height='" + std::to_string(h) + "' NormalBackground='" + picture +
         "' />\n";
}

inline std::string PanelLayout(const Layout& l, int width, int height) {
  std::string xml = "<?xml version='1.0' encoding='utf-8'?>\n<Grid x='0' y='0' Width='" + std::to_string(width) +
                    "' Height='" + std::to_string(height) + "' AnimSetNum='2'>\n" +
                    "  <AnimationSet KeyFrameNum='2' Name='recording'><KeyFrame Time='0' Opacity='1' />"
                    "<KeyFrame Time='0.5' Opacity='1' /></AnimationSet>\n"
                    "  <AnimationSet KeyFrameNum='2' Name='stop'><KeyFrame Time='0' Opacity='1' />"
                    "<KeyFrame Time='0.2' Opacity='1' /></AnimationSet>\n";
  xml += Image("mic_time_flat", l.flatX, l.flatY, l.flatW, l.flatH, "flat");
  xml += Image("bar_blue", l.flatX + 5, l.flatY + 5, 100, 10, "flat");
  xml += Image("bar_yellow", l.flatX + 5, l.flatY + 5, 100, 10, "flat");
  xml += Image("bar", l.flatX + 5, l.flatY + 5, 100, 10, "flat");
  xml += Button("back", 1, l.backX, l.backY);
  xml += Button("play", 2, l.playX, l.playY);
  xml += Button("pause", 3, l.playX, l.playY);
  xml += Button("record", 4, l.recordX, l.recordY);
  xml += Button("stop", 5, l.recordX, l.recordY);
  xml += Image("bar_red", l.barRedX, l.barRedY, 20, 20, "red");
  return xml + "</Grid>\n";
}

inline std::string PopupLayout(const char* button, int width, int height) {
  return "<?xml version='1.0' encoding='utf-8'?>\n<Grid x='0' y='0' Width='" + std::to_string(width) +
         "' Height='" + std::to_string(height) + "'>\n" + Image("panel", 0, 0, width, height, "popup") +
         Button(button, 1, 100, 100) + "</Grid>\n";
}

// Cue name and the length of its tone in seconds.
struct CueSpec {
  const char* name;
  double seconds;
};
const CueSpec kCues[] = {
    {"HL_ToRecord", 0.5}, {"HL_ToSave", 2.0}, {"SFX_RECORD", 0.3}, {"SFX_STOP", 0.2},
    {"SFX_PLAY", 0.1},    {"SFX_PAUSE", 0.1}, {"SFX_BACK", 0.2},   {"h_BN_OopsYrOtOfMmryVstYrGllryT_3", 0.5},
};

// Makes the title folder under `root`.
inline void MakeTitleFolder(const std::string& root) {
  namespace fs = std::filesystem;
  fs::create_directories(root + "/res/UI/Page");
  fs::create_directories(root + "/res/UI/UITexture");
  fs::create_directories(root + "/res/Sound");
  fs::copy_file(std::string(ZV_SOURCE_DIR) + "/res/CamCfg.xml", root + "/res/CamCfg.xml");
  fs::copy_file(std::string(ZV_SOURCE_DIR) + "/res/CamCfg.par", root + "/res/CamCfg.par");

  const std::string page = root + "/res/UI/Page/";
  zvtest::WriteText(page + "menu_mic_widget.xml", PanelLayout(kHorizontal, 480, 272));
  zvtest::WriteText(page + "menu_mic_widget_vert.xml", PanelLayout(kVertical, 272, 480));
  zvtest::WriteText(page + "menu_paint_save.xml", PopupLayout("ok", 480, 272));
  zvtest::WriteText(page + "menu_pop_up_gall_full_hori.xml", PopupLayout("back", 480, 272));
  zvtest::WriteText(page + "menu_pop_up_gall_full_vert.xml", PopupLayout("back", 272, 480));

  const std::string tex = root + "/res/UI/UITexture/";
  WriteTga(tex + "mic_time_blue.tga", kBarWidth, kBarHeight, 0x2040FFFF);
  WriteTga(tex + "mic_time_yellow.tga", kBarWidth, kBarHeight, 0xFFE020FF);
  WriteTga(tex + "mic_time_glide_button.tga", 12, 24, 0xFFFFFFFF);
  WriteTga(tex + "btn_normal.tga", kButton, kButton, 0x40A040FF);
  WriteTga(tex + "btn_focus.tga", kButton, kButton, 0x80FF80FF);
  WriteTga(tex + "btn_disabled.tga", kButton, kButton, 0x808080FF);
  WriteTga(tex + "flat.tga", 8, 8, 0x303030FF);
  WriteTga(tex + "red.tga", 8, 8, 0xFF0000FF);
  WriteTga(tex + "popup.tga", 8, 8, 0x6060C0FF);

  std::string project = "<SoundProject>\n<G>\n";
  int n = 0;
  for (const CueSpec& cue : kCues) {
    const std::string file = "cue" + std::to_string(n++) + ".wav";
    zvtest::WriteTone(root + "/res/Sound/" + file, 22050, cue.seconds, 600 + 100 * n, 0.3);
    project += std::string("<C Name='") + cue.name + "'><N Name='Wave' FileName='" + file + "'/></C>\n";
  }
  zvtest::WriteText(root + "/res/Sound/MicrophoneWidget.soundproject", project + "</G>\n</SoundProject>\n");
}

// A canonical 44-byte WAV header with these fields and `dataBytes` of silence.
inline void WriteWavHeader(const std::string& path, uint16_t channels, uint32_t rate, uint16_t bits,
                           uint32_t dataBytes, uint32_t riff = 0x46464952) {
  zvtest::Bytes out;
  zvtest::PutU32(out, riff);
  zvtest::PutU32(out, 36 + dataBytes);
  zvtest::PutU32(out, 0x45564157);
  zvtest::PutU32(out, 0x20746d66);
  zvtest::PutU32(out, 16);
  zvtest::PutU16(out, 1);
  zvtest::PutU16(out, channels);
  zvtest::PutU32(out, rate);
  zvtest::PutU32(out, (uint32_t(channels) * bits * rate) / 8);
  zvtest::PutU16(out, uint16_t(channels * bits / 8));
  zvtest::PutU16(out, bits);
  zvtest::PutU32(out, 0x61746164);
  zvtest::PutU32(out, dataBytes);
  out.resize(out.size() + dataBytes, 0);
  zvtest::WriteBytes(path, out);
}

class RecorderTest : public testing::Test {
 protected:
  void SetUp() override {
    char here[1000] = {0};
    mWorkingPath = getcwd(here, sizeof here) ? here : "";
    solva::ResetDevice();
    ASSERT_TRUE(solva::SetDeviceRoot(mRoot.path()));
    MakeTitleFolder(mTitle.path());
    solva::SetTitlePath(mTitle.path());
    solva::SetClockMode(solva::ClockMode::Virtual, 1000000);
    solva::SetMicSource(solva::MicSource::Tone);
  }
  void TearDown() override {
    if (mApp && mEntered && !mExited) mApp->Exit();
    mApp.reset();
    delete XFontManager::instance_;
    XFontManager::instance_ = nullptr;
    ASSERT_EQ(0, chdir(mWorkingPath.c_str()));
    solva::SetClockMode(solva::ClockMode::Real);
    solva::ResetDevice();
  }

  // Launch parameters to give the title; set before Start.
  Catalog::Value& Params() {
    if (!mParams) {
      mParams.reset(new Catalog::CJSonFile());
      mParams->GetRoot() = Catalog::Value::Object();
    }
    return mParams->GetRoot();
  }

  // Creates and enters the title, and runs its first frame.
  void Start() {
    mApp.reset(new ZvMicrophoneWidgetInstance(mParams ? &mParams : nullptr));
    mApp->Enter();
    mEntered = true;
    // The state is launched at the first update and pushes its first scene,
    // which enters at the next.
    Frame();
    for (int i = 0; i < 5 && (MicManager::sInstance().GetMicrophoneState() == nullptr || Top() == nullptr); ++i)
      Frame();
  }
  void Exit() {
    mApp->Exit();
    mExited = true;
  }
  // Ends this run of the title so that another can start on the same device.
  void EndRun() {
    if (!mExited) Exit();
    mApp.reset();
    delete XFontManager::instance_;
    XFontManager::instance_ = nullptr;
    ASSERT_EQ(0, chdir(mWorkingPath.c_str()));
    mEntered = mExited = false;
  }

  // One frame of `ms`, as the application manager runs it.
  void Frame(int ms = 33) {
    solva::AdvanceClock(ms);
    solva::DeliverEvents();
    solva::PumpCapture();
    solva::PumpAudio();
    mApp->Update();
  }
  void Frames(int count, int ms = 33) {
    for (int i = 0; i < count; ++i) Frame(ms);
  }
  // Frames until `done` holds, at most `limit` of them; false if it never did.
  template <class Pred>
  bool RunUntil(Pred done, int limit = 2000, int ms = 33) {
    for (int i = 0; i < limit; ++i) {
      if (done()) return true;
      Frame(ms);
    }
    return done();
  }

  MicrophoneState& State() { return *MicManager::sInstance().GetMicrophoneState(); }
  RecordVoiceScene& Scene() { return *static_cast<RecordVoiceScene*>(State().GetScene(kSceneRecordVoice)); }
  IScene* Top() {
    if (MicManager::sInstance().GetMicrophoneState() == nullptr) return nullptr;
    const auto& stack = State().GetSceneStack();
    return stack.empty() ? nullptr : stack.front().scene;
  }
  YGUIControl& Control(const char* name) {
    YGUIControl* control = Scene().GetControl(name);
    EXPECT_NE(nullptr, control) << name;
    return *control;
  }

  // A screen point for a point of the current grid, undoing the menu's mapping.
  static void ToScreen(int orientation, int gx, int gy, int* x, int* y) {
    switch (orientation) {
      case 1: *x = 480 - gy; *y = gx; break;
      case 2: *x = 480 - gx; *y = 272 - gy; break;
      case 3: *x = gy; *y = 272 - gx; break;
      default: *x = gx; *y = gy; break;
    }
  }
  // Presses at a grid point for one frame and lets go over the next.
  void TapGrid(int gx, int gy) {
    int x = 0, y = 0;
    YGUIMenu* menu = dynamic_cast<YGUIMenu*>(Top());
    ToScreen(menu ? int(menu->mOrientation) : solva::Orientation(), gx, gy, &x, &y);
    solva::QueueTouch(true, x, y);
    Frame();
    solva::QueueTouch(false, x, y);
    Frame();
    Frame();
  }
  // Taps the middle of the named control where it stands now.
  void Tap(const char* name) {
    YGUIControl& control = Control(name);
    TapGrid(control.GetPositionX() + control.GetWidth() / 2, control.GetPositionY() + control.GetHeight() / 2);
  }
  void WaitCueEnd(const char* cue) {
    ASSERT_TRUE(RunUntil([&] { return !MicManager::sInstance().GetAudioDevice()->isSoundCuePlaying(cue); }));
  }
  // From the start to a recording under way.
  void StartRecording() {
    Tap("record");
    ASSERT_TRUE(RunUntil([&] { return Scene().mRecordState == RecordVoiceScene::kRecordRecording; }));
    Frame();
  }
  int CountEvents(solva::AudioEventKind kind, const std::string& pathPart) {
    int n = 0;
    for (const solva::AudioEvent& e : solva::AudioEvents())
      if (e.kind == kind && e.path.find(pathPart) != std::string::npos) ++n;
    return n;
  }
  std::string CuePath(const char* cue) {
    int n = 0;
    for (const CueSpec& spec : kCues) {
      if (std::string(spec.name) == cue) return "cue" + std::to_string(n) + ".wav";
      ++n;
    }
    return "?";
  }
  std::string MusicPath() { return MicManager::sInstance().GetArchiver().mMusicPath; }

  zvtest::TempDir mRoot;
  zvtest::TempDir mTitle;
  boost::shared_ptr<Catalog::CJSonFile> mParams;
  std::unique_ptr<ZvMicrophoneWidgetInstance> mApp;
  bool mEntered = false;
  bool mExited = false;
  std::string mWorkingPath;
};

}  // namespace recorder
