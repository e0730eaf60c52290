#ifndef SRC_BASEFRAMEWORK_ISCENE_H
#define SRC_BASEFRAMEWORK_ISCENE_H

// One screen of a state. Every operation is empty here; a scene overrides what it
// needs.
class IScene {
 public:
  virtual ~IScene() {}
  virtual void EnterScene() {}
  virtual void SuspendScene() {}
  virtual void ResumeScene() {}
  virtual void ExitScene() {}
  virtual void Update(float /*dt*/) {}
  virtual void Render() {}
  virtual int ProcessTransition() { return 1; }
};

#endif
