#include "MicrophoneStateTree/MicroPhoneOperateScene/NoMicrophoneScene.h"

#include <assert.h>
#include <stdio.h>

#include "Canvas/CanvasLayer.h"
#include "Canvas/CanvasRender.h"
#include "MicManager.h"
#include "YGUI/YGUIControl.h"
#include "YGUI/YGUIMessage.h"

NoMicrophoneScene::NoMicrophoneScene(GameState* owner)
    : YGUIMenu(owner, "menu_paint_save.xml", ""), mCanvasMenuLayerRef(0), mCanvasRenderRef(0) {}

NoMicrophoneScene::~NoMicrophoneScene() {}

// The layer and the render are those the panel beneath already uses; each
// create call hands back the one that exists, and the step-load frequency is
// pushed as the panel does.
void NoMicrophoneScene::EnterScene() {
  puts("NoMicrophoneScene::EnterScene()");
  MicManager& manager = MicManager::sInstance();
  manager.setStepLoadFrequency(0);
  mCanvasMenuLayerRef = manager.CreateCanvasLayer(kCanvasLayerRGBA, 0, 0, 480, 272);
  mCanvasRenderRef = manager.CreateCanvasRender();
  // Both exist for as long as the title runs; without them the pop-up could
  // not be drawn at all, so a missing one is a fault of the build and stops
  // the title here.
  assert(mCanvasMenuLayerRef);
  assert(mCanvasRenderRef);
  YGUIMenu::EnterScene();
  puts("NoMicrophoneScene::EnterScene() end");
}

// Only "ok" acts; the grid's animation is not consulted.
void NoMicrophoneScene::NotifyEventYGUI(ENotifyEventType type, void* message, void* control) {
  if (type != eNotify_Message || message == 0) return;
  const YGUIMessage& msg = *static_cast<const YGUIMessage*>(message);
  if (msg.mType != 0 || msg.mEvent != YGUIMessage::eEvent_StylusDown || control == 0) return;
  if (static_cast<YGUIControl*>(control)->mName == "ok") MicManager::sInstance().SetGameFinished(1);
}

// The layer and the render stay: the panel beneath still uses them.
void NoMicrophoneScene::ExitScene() { YGUIMenu::ExitScene(); }

// Ticks the menu as the other pop-up does (the device's own tick called itself
// forever), so that "ok" is reached.
void NoMicrophoneScene::Update(float dt) { YGUIMenu::Update(dt); }

// The pop-up clears the shared layer itself: only the pop-up is seen.
void NoMicrophoneScene::Render() {
  mCanvasMenuLayerRef->Clear();
  RenderYGUI(*mCanvasMenuLayerRef);
  mCanvasRenderRef->PreDraw();
  mCanvasRenderRef->DrawLayer(mCanvasMenuLayerRef, 1.0f);
  mCanvasRenderRef->PostDraw();
}
