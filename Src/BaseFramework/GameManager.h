#ifndef SRC_BASEFRAMEWORK_GAMEMANAGER_H
#define SRC_BASEFRAMEWORK_GAMEMANAGER_H
// The framework's main loop: owns the long-lived services, runs one GameState at a
// time, and is asked by the shell to update and render once a frame.
#include <assert.h>

class Archive;
class GameState;
class Logging;
class MediaCenter;
class WafArchiveManager;

class GameManager {
 public:
  // Values of mTransitionPhase.
  enum ETransitionPhase {
    eTP_Idle = 0,
    eTP_LaunchPending = 1,
    eTP_InTransition = 2,
    eTP_Running = 3,
  };

  GameManager();
  virtual ~GameManager();

  virtual void Initialize();
  virtual void Destroy();
  virtual void Update(float dt);
  virtual void Render();
  virtual int IsGameFinished();
  virtual void SetGameFinished(int finished);

  // Takes effect at the next Update; refused (0) while the state is locked.
  int LaunchState(GameState* InState);
  // The current state's ExitState, and forgets it.
  void ExitState();
  bool needRender();

  // The archive and the media store exist from Initialize of the title's manager
  // on (the framework's own Initialize makes neither); asking before is a
  // programming error, caught here rather than as a null dereference later.
  Archive& GetArchiver() { assert(mArchiver); return *mArchiver; }
  MediaCenter& GetMediaCenter() { assert(mMediaCenter); return *mMediaCenter; }

  Logging* GetLogging() const { return mLogging; }
  GameState* GetCurrentState() const { return mCurrentState; }
  int GetTransitionPhase() const { return mTransitionPhase; }
  int GetExitReason() const { return mExitReason; }
  void SetExitReason(int reason) { mExitReason = reason; }

 protected:
  int mGameFinished;
  Archive* mArchiver;
  MediaCenter* mMediaCenter;
  Logging* mLogging;
  GameState* mCurrentState;
  GameState* mNextState;
  int mTransitionPhase;
  int mStateLocked;
  int mExitReason;
  WafArchiveManager* mWafArchiveManager;
};

#endif
