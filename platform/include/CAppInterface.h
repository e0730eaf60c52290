#pragma once
// The application manager's side of a title's life: Enter once, Update once a
// frame, Suspend and Resume as the device demands, Exit once.

class CAppInterface {
 public:
  virtual ~CAppInterface() {}
  virtual void Enter() = 0;
  virtual void Update() = 0;
  virtual void Exit() = 0;
  virtual void Suspend() {}
  virtual void Resume() {}
};
