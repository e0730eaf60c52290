#pragma once
// The walker's one state: the field, where the walker goes where the child taps,
// and over it the panel of effect buttons and text.
#include "BaseFramework/GameState.h"

namespace walker {

class FieldScene;
class PanelScene;

class WalkerState : public GameState {
 public:
  void EnterState() override;
  void ExitState() override;
  FieldScene* field() const { return mField; }
  PanelScene* panel() const { return mPanel; }

 private:
  FieldScene* mField = nullptr;
  PanelScene* mPanel = nullptr;
};

}  // namespace walker
