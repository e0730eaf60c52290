#pragma once
// The input manager with the shell's listeners registered on the simulated
// device, as between Enter and Exit, and a menu that records what it hears.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "BaseFramework/InputManager.h"
#include "CButtonMessage.h"
#include "CButtonSvc.h"
#include "CEventSvc.h"
#include "Tamarin/ShellListeners.h"
#include "Tamarin/SolvaServices.h"
#include "YGUI/YGUIMenu.h"
#include "YguiTestSupport.h"
#include "solva/Device.h"
#include "solva/Events.h"

namespace ygtest {

class DeviceInput {
 public:
  explicit DeviceInput(int orientation = 0) {
    solva::ResetDevice();
    gEventSvc = new Vantrel::Solva::CEventSvc();
    mButtons = new Vantrel::Solva::CButtonSvc();
    EXPECT_EQ(kNoErr, mButtons->RegisterEventListener(&gEventListerner));
    EXPECT_EQ(kNoErr, gEventSvc->RegisterEventListener(&gTouchListener, 0));
    EXPECT_EQ(kNoErr, gEventSvc->RegisterEventListener(&gAccelerometerListener, 0));
    InputManager::sCreate();
    Turn(orientation);
  }
  ~DeviceInput() {
    delete InputManager::instance_;
    InputManager::instance_ = nullptr;
    mButtons->UnregisterEventListener(&gEventListerner);
    gEventSvc->UnregisterEventListener(&gTouchListener);
    gEventSvc->UnregisterEventListener(&gAccelerometerListener);
    delete mButtons;
    delete gEventSvc;
    gEventSvc = nullptr;
    solva::ResetDevice();
  }
  void Turn(int orientation) {
    solva::QueueOrientation(orientation);
    solva::DeliverEvents();
  }
  InputManager& input() { return InputManager::sInstance(); }

 private:
  Vantrel::Solva::CButtonSvc* mButtons = nullptr;
};

// Records the input reports and the calls a screen gets.
class RecordingMenu : public YGUIMenu {
 public:
  RecordingMenu(const std::string& horizontal, const std::string& vertical) : YGUIMenu(nullptr, horizontal, vertical) {}
  void NotifyEventYGUI(ENotifyEventType type, void* data, void* control) override {
    Report report;
    report.type = type;
    if (type == eNotify_Message && *static_cast<int*>(data) == 0) {
      report.isMessage = true;
      report.message = *static_cast<YGUIMessage*>(data);
      report.control = control;
    } else if (type == eNotify_Message || type == eNotify_AnimeFinished) {
      report.name = *static_cast<std::string*>(data);
    } else {
      report.control = data;
    }
    reports.push_back(report);
  }
  void BindControls() override { ++binds; }
  void Out(std::string next) override { outs.push_back(next); }
  void UpdateInAnimation(float dt) override { inDts.push_back(dt); }

  std::vector<Report> Inputs() const {
    std::vector<Report> out;
    for (const Report& r : reports)
      if (r.isMessage) out.push_back(r);
    return out;
  }

  std::vector<Report> reports;
  std::vector<std::string> outs;
  std::vector<float> inDts;
  int binds = 0;
};

// One frame of the title: events delivered, input sampled, the menu ticked.
inline void Frame(YGUIMenu& menu, float dt = 0.033f) {
  solva::DeliverEvents();
  InputManager::sInstance().Update(dt);
  menu.Update(dt);
}

}  // namespace ygtest
