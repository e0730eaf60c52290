#pragma once
// The walker's application object: turns 3D on with the device's context before
// the shell's Enter, and on exit answers with where the walker stands, what it
// did and what the title loaded, for the launcher (and the tests) to read.
#include "Tamarin/ZvWidgetInstance.h"

namespace walker {

class WalkerInstance : public ZvWidgetInstance {
 public:
  explicit WalkerInstance(void* params) : ZvWidgetInstance(params) {}
  void Enter() override;
  void Exit() override;
  void OnPreExit() override;

 private:
  SolvaOpenGLConfig* mConfig = nullptr;
};

}  // namespace walker
