#include "WalkerState.h"

#include "FieldScene.h"
#include "PanelScene.h"

namespace walker {

// The panel is pushed last, so it draws over the field and sees a touch first.
void WalkerState::EnterState() {
  mField = new FieldScene();
  mPanel = new PanelScene(*mField);
  PushScene(mField, eRA_UpdateAndRender);
  PushScene(mPanel, eRA_UpdateAndRender);
}

void WalkerState::ExitState() {
  GameState::ExitState();
  delete mPanel;
  mPanel = nullptr;
  delete mField;
  mField = nullptr;
}

}  // namespace walker
