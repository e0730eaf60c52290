#pragma once
// The walker's game manager: brings up, on top of the framework's services, what
// this title turns on that the recorder leaves dormant: the batch renderer and
// the sprite manager on the 3D path, its WAF archive in the first slot of the
// archive manager, the sound project's cues, and the player's tune kits (micro
// mods). It runs one state, WalkerState.
#include <string>
#include <vector>

#include "Base/singleton.h"
#include "BaseFramework/GameManager.h"
#include "Screen.h"
#include "Texts.h"

class AudioDevice;
class CanvasFactory;
class CanvasLayer;
struct waf_archive;

namespace walker {

class WalkerState;

class WalkerManager : public GameManager, public Singleton<WalkerManager, Tag_Singleton_Manual> {
 public:
  void Initialize() override;
  void Destroy() override;
  void Update(float dt) override;

  WalkerState* state() const { return mState; }
  AudioDevice& audio() const { return *mAudioDevice; }
  // The title's archive (res/walker.waf); null when it could not be opened.
  waf_archive* archive() const;
  // One line per tune kit of the player: its package id and its tunes.
  const std::vector<std::string>& tuneKits() const { return mTuneKits; }
  // The screen as held in this frame: the input's orientation taken once, at
  // the start of the frame, so that every scene draws and reads touches alike.
  const Screen& screen() const { return mScreen; }
  const Texts& texts() const { return mTexts; }

 private:
  void LoadTuneKits();

  WalkerState* mState = nullptr;
  AudioDevice* mAudioDevice = nullptr;
  CanvasFactory* mFactory = nullptr;
  CanvasLayer* mOglLayer = nullptr;
  std::vector<std::string> mTuneKits;
  Screen mScreen;
  Texts mTexts;
};

}  // namespace walker
