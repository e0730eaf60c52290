#ifndef SRC_MICROPHONESTATETREE_MICROPHONEOPERATESCENE_NOMICROPHONESCENE_H
#define SRC_MICROPHONESTATETREE_MICROPHONEOPERATESCENE_NOMICROPHONESCENE_H
// The pop-up over the frozen panel when there was no room or no microphone at
// the moment of recording; "ok" ends the title.
#include "YGUI/YGUIMenu.h"

class CanvasLayer;
class CanvasRender;

class NoMicrophoneScene : public YGUIMenu {
 public:
  explicit NoMicrophoneScene(GameState* owner);
  virtual ~NoMicrophoneScene();

  void NotifyEventYGUI(ENotifyEventType type, void* message, void* control) override;
  void EnterScene() override;
  void ExitScene() override;
  void Update(float dt) override;
  void Render() override;

  CanvasLayer* mCanvasMenuLayerRef;
  CanvasRender* mCanvasRenderRef;
};

#endif
