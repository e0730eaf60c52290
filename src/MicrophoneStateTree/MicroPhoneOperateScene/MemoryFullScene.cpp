#include "MicrophoneStateTree/MicroPhoneOperateScene/MemoryFullScene.h"

#include "Canvas/CanvasLayer.h"
#include "Canvas/CanvasRender.h"
#include "MicManager.h"
#include "Sound/AudioDevice.h"
#include "YGUI/YGUIControl.h"
#include "YGUI/YGUIMessage.h"

MemoryFullScene::MemoryFullScene(GameState* owner)
    : YGUIMenu(owner, "menu_pop_up_gall_full_hori.xml", "menu_pop_up_gall_full_vert.xml"),
      mCanvasMenuLayerRef(0),
      mCanvasRenderRef(0) {}

// ExitScene leaves the grids; they go with the scene.
MemoryFullScene::~MemoryFullScene() { YGUIMenu::Destroy(); }

void MemoryFullScene::EnterScene() {
  YGUIMenu::EnterScene();
  MicManager& manager = MicManager::sInstance();
  mCanvasMenuLayerRef = manager.CreateCanvasLayer(kCanvasLayerRGBA, 0, 0, 480, 272);
  mCanvasRenderRef = manager.CreateCanvasRender();
  manager.GetAudioDevice()->playSoundCue("h_BN_OopsYrOtOfMmryVstYrGllryT_3");
}

// A press during the pop-up's animation is ignored.
void MemoryFullScene::NotifyEventYGUI(ENotifyEventType type, void* message, void* control) {
  if (mCurrentGrid == 0 || !mCurrentGrid->IsAnimeFinished()) return;
  if (type != eNotify_Message || message == 0) return;
  const YGUIMessage& msg = *static_cast<const YGUIMessage*>(message);
  if (msg.mType != 0) return;
  if (msg.mEvent == YGUIMessage::eEvent_StylusDown && control != 0 &&
      static_cast<YGUIControl*>(control)->mName == "back") {
    MicManager::sInstance().SetGameFinished(1);
  }
}

int MemoryFullScene::SwitchDirection(EOrientationStatus orientation) {
  YGUIMenu::SwitchDirection(orientation);
  if (mCurrentGrid) mCurrentGrid->mForceRedraw = 1;
  return 1;
}

void MemoryFullScene::Update(float dt) { YGUIMenu::Update(dt); }

// Unlike the other pop-up, the grids stay and no cue is stopped.
void MemoryFullScene::ExitScene() {
  MicManager& manager = MicManager::sInstance();
  manager.DestroyCanvasLayer(kCanvasLayerRGBA);
  manager.DestroyCanvasRender();
}

// The pop-up clears the shared layer itself: only the pop-up is seen.
void MemoryFullScene::Render() {
  mCanvasMenuLayerRef->Clear();
  RenderYGUI(*mCanvasMenuLayerRef);
  mCanvasRenderRef->PreDraw();
  mCanvasRenderRef->DrawLayer(mCanvasMenuLayerRef, 1.0f);
  mCanvasRenderRef->PostDraw();
}
