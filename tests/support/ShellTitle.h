#pragma once
// A small title that exercises the shell from CreateApp to Exit: a game manager
// with one state whose scenes write what happens to them into a call log and
// answer the launcher with what they saw.
#include <functional>
#include <string>
#include <vector>

#include "Base/singleton.h"
#include "BaseFramework/GameManager.h"
#include "BaseFramework/GameState.h"
#include "BaseFramework/IScene.h"
#include "Tamarin/ZvWidgetInstance.h"

namespace shelltitle {

// Everything the scenes and the manager were asked to do, in order.
std::vector<std::string>& CallLog();
// Runs, when set, as the manager's Initialize begins; tests look at the device then.
std::function<void()>& InitializeHook();
// The exit reason the shell gave the manager at the last exit.
int& LastExitReason();
// Whether each of the shell's four listeners (power, buttons, touch, accelerometer)
// was still registered when the manager was last torn down.
std::vector<bool>& ListenersAtManagerDestroy();

class LoggingScene : public IScene {
 public:
  explicit LoggingScene(const std::string& name) : mName(name) {}
  void EnterScene() override;
  void SuspendScene() override;
  void ResumeScene() override;
  void ExitScene() override;
  void Update(float dt) override;
  void Render() override;

  const std::string& name() const { return mName; }
  // Runs at each Update after the call is logged; tests set it to drive the stack.
  std::function<void(LoggingScene&, float)> onUpdate;
  int updates = 0;
  int renders = 0;
  float lastDt = 0;

 private:
  std::string mName;
};

// The title's main screen: taps, buttons and turns are counted; "back" (button 5)
// ends the game; on exit it writes what it saw into the launch parameters.
class MainScene : public LoggingScene {
 public:
  MainScene() : LoggingScene("main") {}
  void Update(float dt) override;

  int taps = 0;
  int lastX = -1, lastY = -1;
  std::string buttons;
  float maxDt = 0;
  int frames = 0;
};

class ShellTitleState : public GameState {
 public:
  void EnterState() override;
  void ExitState() override;
  MainScene* main() const { return mMain; }

 private:
  MainScene* mMain = nullptr;
};

class ShellTitleManager : public GameManager, public Singleton<ShellTitleManager, Tag_Singleton_Manual> {
 public:
  void Initialize() override;
  void Destroy() override;
  void Update(float dt) override;
  void Render() override;
  ShellTitleState* state() const { return mState; }

 private:
  ShellTitleState* mState = nullptr;
};

// The application: Enter makes the manager, OnPreExit takes it down. Suspend and
// Resume keep the frame's progress, so that time away never reaches dt.
class ShellTitleInstance : public ZvWidgetInstance {
 public:
  explicit ShellTitleInstance(void* params) : ZvWidgetInstance(params) {}
  void Enter() override;
  void Suspend() override;
  void Resume() override;
  void OnPreExit() override;

 private:
  unsigned mSuspendElapsed = 0;
};

}  // namespace shelltitle
