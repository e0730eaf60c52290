#ifndef SRC_MICROPHONESTATETREE_MICROPHONESTATE_H
#define SRC_MICROPHONESTATETREE_MICROPHONESTATE_H
// The title's one state. Its scenes (the record panel and the two pop-ups) are
// not built yet: the state runs with an empty stack until they are.
#include "BaseFramework/GameState.h"

class MicrophoneState : public GameState {
 public:
  MicrophoneState() {}
  virtual ~MicrophoneState() {}
};

#endif
