#ifndef SRC_MICROPHONESTATETREE_MICROPHONEOPERATESCENE_MEMORYFULLSCENE_H
#define SRC_MICROPHONESTATETREE_MICROPHONEOPERATESCENE_MEMORYFULLSCENE_H
// The pop-up that says the gallery is full; "back" ends the title.
#include "YGUI/YGUIMenu.h"

class CanvasLayer;
class CanvasRender;

class MemoryFullScene : public YGUIMenu {
 public:
  explicit MemoryFullScene(GameState* owner);
  virtual ~MemoryFullScene();

  void NotifyEventYGUI(ENotifyEventType type, void* message, void* control) override;
  void EnterScene() override;
  void ExitScene() override;
  void Update(float dt) override;
  int SwitchDirection(EOrientationStatus orientation) override;
  void Render() override;

  CanvasLayer* mCanvasMenuLayerRef;
  CanvasRender* mCanvasRenderRef;
};

#endif
