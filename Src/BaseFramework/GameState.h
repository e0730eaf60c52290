#ifndef SRC_BASEFRAMEWORK_GAMESTATE_H
#define SRC_BASEFRAMEWORK_GAMESTATE_H
// A stack of scenes with a queue of pending stack operations: a scene may ask for a
// change in the middle of its own update and see it happen at the next frame.
#include <list>

#include "BaseFramework/EReservedAction.h"
#include "BaseFramework/IScene.h"

class GameState {
 public:
  enum EOpt {
    eOpt_None = 0,
    eOpt_Push = 2,
    eOpt_Pop = 4,
    eOpt_Tick = 5,
  };

  struct SceneUnit {
    IScene* scene;
    int status;  // an EReservedAction
  };

  struct OptSeqUnit {
    IScene* scene;
    EReservedAction action;
    int opt;
  };

  GameState();
  virtual ~GameState();

  virtual void EnterState() {}
  virtual void ExitState();
  virtual int ProcessTransition() { return 1; }
  virtual void Update(float dt);
  virtual void Render();

  // `action` says what becomes of the scene that is on top now.
  void PushScene(IScene* scene, EReservedAction action);
  void PopScene();
  bool needRender() const;
  int ResolveOpt(std::list<OptSeqUnit>& list);

  IScene* GetCurrentTickScene() const { return mCurrentTickScene; }
  const std::list<SceneUnit>& GetSceneStack() const { return mSceneStack; }
  const std::list<OptSeqUnit>& GetOptList() const { return mOptList; }
  int GetLastOpt() const { return mLastOpt; }

 protected:
  std::list<SceneUnit> mSceneStack;  // front is the top
  std::list<OptSeqUnit> mOptList;
  IScene* mCurrentTickScene;
  int mLastOpt;
  OptSeqUnit mCurrentOpt;
  int mReserved;
};

#endif
