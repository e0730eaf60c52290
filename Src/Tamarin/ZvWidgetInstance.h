#ifndef SRC_TAMARIN_ZVWIDGETINSTANCE_H
#define SRC_TAMARIN_ZVWIDGETINSTANCE_H
// The framework's application: it implements the application manager's life cycle
// and owns the working directory, the platform service objects, the listeners'
// registration and the frame clock. A title derives from it and supplies its game
// manager and OnPreExit.
#include <boost/shared_ptr.hpp>
#include <string>

#include "Base/Timer.h"
#include "CAppInterface.h"
#include "CJSonFile.h"

class GameManager;
struct SolvaOpenGLConfig;

class ZvWidgetInstance : public CAppInterface {
 public:
  // `params` is null or points to a shared pointer to the launch parameters.
  explicit ZvWidgetInstance(void* params);
  virtual ~ZvWidgetInstance();

  virtual void Enter();
  virtual void Update();
  virtual void Exit();
  virtual void Suspend();
  virtual void Resume();
  virtual void Frame(unsigned int ms);
  virtual void InitSolvaOpenGL();
  virtual void CloseSolvaOpenGL();
  virtual void OnPreExit() = 0;

  // The launch parameters, or null.
  Catalog::CJSonFile* GetParams() const { return mParams.get(); }
  void SetSolvaOpenGLConfig(SolvaOpenGLConfig* config) { mOpenGLConfig = config; }
  SolvaOpenGLConfig* GetSolvaOpenGLConfig() const { return mOpenGLConfig; }
  static ZvWidgetInstance* GetActiveInstance() { return smActiveIntance; }
  GameManager* GetGameManager() const { return mGameManager; }
  Timer& getTimer() { return mTimer; }
  static void SetIsUseOgl(int enable) { smEnableOgl = enable; }
  static int GetIsUseOgl() { return smEnableOgl; }
  void SetGameManager(GameManager* gameManager);
  void SwapRenderBuffer();
  // The device clock in milliseconds.
  static double elapseTime();
  void PushWorkingPath();
  void PopWorkingPath();

  const std::string& GetWorkingPath() const { return mWorkingPath; }
  unsigned GetLastFrameTime() const { return mLastFrameTime; }

  // Works out the reason of an exit from the application manager's pending-exit
  // code, the battery and whether the game finished itself.
  static int ExitReason(unsigned char pendingExitCode, bool lowBattery, bool gameFinished);

 protected:
  GameManager* mGameManager;
  unsigned mLastFrameTime;
  SolvaOpenGLConfig* mOpenGLConfig;
  boost::shared_ptr<Catalog::CJSonFile> mParams;
  std::string mWorkingPath;
  Timer mTimer;
  int mReserved;

  static ZvWidgetInstance* smActiveIntance;  // spelled so
  static int smEnableOgl;
};

#endif
