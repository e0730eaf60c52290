#ifndef SRC_VT_ZVMICROPHONEWIDGETINSTANCE_H
#define SRC_VT_ZVMICROPHONEWIDGETINSTANCE_H
// The recorder as the application manager sees it: it creates the title's game
// manager and looks after a recording across suspend and resume.
#include "Tamarin/ZvWidgetInstance.h"

class ZvMicrophoneWidgetInstance : public ZvWidgetInstance {
 public:
  explicit ZvMicrophoneWidgetInstance(void* params);
  virtual ~ZvMicrophoneWidgetInstance();

  virtual void Enter();
  virtual void Update();
  virtual void Exit();
  virtual void Suspend();
  virtual void Resume();
  virtual void Frame(unsigned int ms);
  virtual void OnPreExit();
  virtual int Init();
  virtual int ShutDown();
  virtual int Frame();

  unsigned GetSuspendElapsed() const { return mSuspendElapsed; }

 private:
  unsigned mSuspendElapsed;
};

// The application object.
ZvMicrophoneWidgetInstance* GetTheApp();

#endif
