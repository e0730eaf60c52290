#pragma once
// Shared by the toolkit's tests: a working folder to run in, picture writers, the
// texture manager that UDI loading asks for, and an observer that records what a
// grid reports.
#include <gtest/gtest.h>
#include <limits.h>
#include <unistd.h>

#include <cstdint>
#include <string>
#include <vector>

#include "RenderSystem/GLTextureManager.h"
#include "YGUI/YGUIControl.h"
#include "YGUI/YGUIEventObserver.h"
#include "YGUI/YGUIMessage.h"
#include "images/ImageTestSupport.h"
#include "support/TestSupport.h"

namespace ygtest {

using zvtest::Bytes;

struct RGBA {
  uint8_t r, g, b, a;
};

// The test layout and its pictures: res/UI/Page and res/UI/UITexture below it.
inline std::string LayoutRoot() { return std::string(ZV_SOURCE_DIR) + "/tests/ygui/layouts"; }

// Runs the test inside `folder` and goes back afterwards.
class ScopedWorkDir {
 public:
  explicit ScopedWorkDir(const std::string& folder) {
    char here[PATH_MAX];
    mOld = getcwd(here, sizeof(here)) ? here : ".";
    EXPECT_EQ(0, chdir(folder.c_str())) << folder;
  }
  ~ScopedWorkDir() { EXPECT_EQ(0, chdir(mOld.c_str())); }

 private:
  std::string mOld;
};

// UDI loading asks for the texture manager, as in a running title.
class ScopedTextureManager {
 public:
  ScopedTextureManager() { GLTextureManager::sCreate(); }
  ~ScopedTextureManager() {
    delete GLTextureManager::instance_;
    GLTextureManager::instance_ = 0;
  }
};

// A 32-bit TGA with top-left origin; file pixels are B, G, R, A.
inline void WriteTga32(const std::string& path, int width, int height, const std::vector<RGBA>& pixels) {
  Bytes out = {0, 0, 2, 0, 0, 0, 0, 0, 0, 0, 0, 0};
  zvtest::PutU16(out, uint16_t(width));
  zvtest::PutU16(out, uint16_t(height));
  zvtest::PutU8(out, 32);
  zvtest::PutU8(out, 0x28);
  for (const RGBA& p : pixels) {
    out.push_back(p.b);
    out.push_back(p.g);
    out.push_back(p.r);
    out.push_back(p.a);
  }
  zvtest::WriteBytes(path, out);
}

inline void WriteSolidTga(const std::string& path, int width, int height, RGBA colour) {
  WriteTga32(path, width, height, std::vector<RGBA>(size_t(width) * height, colour));
}

// A stored UDI of the given pixel format and payload.
using zvtest::WriteUdi;

inline void WriteSolidUdi(const std::string& path, int width, int height, RGBA colour) {
  Bytes payload;
  for (int i = 0; i < width * height; ++i) payload.insert(payload.end(), {colour.r, colour.g, colour.b, colour.a});
  WriteUdi(path, width, height, 1, 32, 0, payload);
}

// One report of a grid, with what its data pointed to at the time.
struct Report {
  ENotifyEventType type;
  std::string name;             // animation name for type 0 and 1 (empty otherwise)
  const void* control = 0;      // type 2 and 3: the control; type 0 input: the handler
  bool isMessage = false;       // type 0 carrying a YGUIMessage
  YGUIMessage message;
};

class RecordingObserver : public YGUIEventObserver {
 public:
  void NotifyEventYGUI(ENotifyEventType type, void* data, void* control) override {
    Report report;
    report.type = type;
    if (type == eNotify_Message) {
      // The first word tells an input message (mType 0) from a string.
      if (*static_cast<int*>(data) == 0) {
        report.isMessage = true;
        report.message = *static_cast<YGUIMessage*>(data);
        report.control = control;
      } else {
        report.name = *static_cast<std::string*>(data);
      }
    } else if (type == eNotify_AnimeFinished) {
      report.name = *static_cast<std::string*>(data);
    } else {
      report.control = data;
    }
    reports.push_back(report);
  }
  // Reports other than the idle "all finished" ones.
  std::vector<Report> Significant() const {
    std::vector<Report> out;
    for (const Report& r : reports)
      if (!(r.type == eNotify_AnimeFinished && r.name.empty())) out.push_back(r);
    return out;
  }
  std::vector<Report> reports;
};

inline YGUIMessage Stylus(int event, int x, int y) {
  YGUIMessage message;
  message.mEvent = event;
  message.mX = short(x);
  message.mY = short(y);
  return message;
}

inline YGUIMessage Button(int key) {
  YGUIMessage message;
  message.mEvent = YGUIMessage::eEvent_Button;
  message.mKey = key;
  return message;
}

}  // namespace ygtest
