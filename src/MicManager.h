#ifndef SRC_MICMANAGER_H
#define SRC_MICMANAGER_H
// The recorder's game manager: decides what is created at start-up and in which
// order, and adds the canvas layers, the sound device and the microphone.
#include <stddef.h>

#include <deque>

#include "Base/singleton.h"
#include "BaseFramework/GameManager.h"
#include "Canvas/CanvasFactory.h"

class AudioDevice;
class CanvasLayer;
class CanvasRender;
class MicrophoneState;
class ZvMicrophone;

class MicManager : public GameManager, public Singleton<MicManager, Tag_Singleton_Manual> {
 public:
  MicManager();
  virtual ~MicManager();

  virtual void Initialize();
  virtual void Destroy();
  virtual void Update(float dt);
  virtual void Render();

  // The layer of `type`, made on first call; later calls ignore the geometry.
  CanvasLayer* CreateCanvasLayer(ECanvasLayerType type, int x, int y, int width, int height);
  CanvasLayer* GetCanvasLayer(ECanvasLayerType type);
  void DestroyCanvasLayer(ECanvasLayerType type);
  CanvasRender* CreateCanvasRender();
  CanvasRender* GetCanvasRender();
  void DestroyCanvasRender();

  // A stack of step-load frequencies; nothing in this title reads them.
  void setStepLoadFrequency(int frequency);
  int stepLoadFrequency();
  void resumeStepLoadFrequency();
  // The device's own inactivity handling is left alone.
  void enableInactivity(int enable);

  ZvMicrophone* GetMicrophone() { return mMicrophone; }
  MicrophoneState* GetMicrophoneState() { return mMicrophoneState; }
  AudioDevice* GetAudioDevice() { return mAudioDevice; }
  float GetFramesPerSecond() const { return mFramesPerSecond; }
  size_t StepLoadDepth() const { return mStepLoadFrequency.size(); }

 private:
  MicrophoneState* mMicrophoneState;
  ZvMicrophone* mMicrophone;
  AudioDevice* mAudioDevice;
  float mFramesPerSecond;
  CanvasLayer* mCanvasLayers[3];
  CanvasRender* mCanvasRender;
  CanvasFactory* mCanvasFactory;
  std::deque<int> mStepLoadFrequency;
};

#endif
