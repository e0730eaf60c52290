#ifndef SRC_MICROPHONESTATETREE_MICROPHONESTATE_H
#define SRC_MICROPHONESTATETREE_MICROPHONESTATE_H
// The title's one state. On entry it picks the orientations from the launch
// parameters, creates the record panel and the two pop-ups, and pushes the panel,
// or the pop-up that says the gallery is full.
#include "BaseFramework/GameState.h"

class IScene;
class MediaCenter;
class Microphone;

// The index of GetScene.
enum ECameraScene {
  kSceneRecordVoice = 0,
  kSceneNoMicrophone = 1,
  kSceneMemoryFull = 2,
};

class MicrophoneState : public GameState {
 public:
  MicrophoneState();
  virtual ~MicrophoneState();

  void EnterState() override;
  void ExitState() override;
  void Render() override;

  // No check of the range.
  IScene* GetScene(ECameraScene scene) { return mScenes[scene]; }
  // Never filled here: users go through MicManager::GetMicrophone().
  Microphone* GetMicrophone() { return mMicrophone; }

 private:
  IScene* mScenes[3];  // owned
  Microphone* mMicrophone;
  MediaCenter* mMediaCenter;  // borrowed
};

#endif
