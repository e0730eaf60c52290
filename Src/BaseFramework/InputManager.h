#ifndef SRC_BASEFRAMEWORK_INPUTMANAGER_H
#define SRC_BASEFRAMEWORK_INPUTMANAGER_H
// The per-frame picture of buttons, touch and orientation. Listeners only write
// the raw levels; Update samples them once a frame and derives the edges, so every
// reader sees a press in the same frame, and once as an edge.
#include "Base/singleton.h"

enum EOrientationStatus {
  eOS_Horizontal = 0,
  eOS_Vertical = 1,
  eOS_HorizontalUpsideDown = 2,
  eOS_VerticalUpsideDown = 3,
};

class InputManager : public Singleton<InputManager, Tag_Singleton_Manual> {
 public:
  enum { kButtonCount = 17 };

  // Edge values of mButtonState.
  enum EButtonState {
    eBS_Up = 1,
    eBS_Held = 2,
    eBS_JustReleased = 4,
    eBS_JustPressed = 8,
  };

  // Values of mTouchPhase.
  enum ETouchPhase {
    eTP_None = 0,
    eTP_JustDown = 1,
    eTP_JustUp = 2,
    eTP_Held = 3,
  };

  struct TouchRecord {
    int x;
    int y;
    int down;  // a byte in a word
  };

  InputManager();

  void Update(float dt);
  void UpdateButton();
  void UpdateTouchpad();
  void ReleaseAll();
  void Reset();

  unsigned char mAnyPressed;
  float mBlockTime;
  unsigned char mButtonNow[kButtonCount];
  unsigned char mButtonLast[kButtonCount];
  unsigned char mButtonRaw[kButtonCount];
  int mButtonState[kButtonCount];
  int mKeyCodes[kButtonCount];
  TouchRecord mTouchLast;
  TouchRecord mTouchNow;
  TouchRecord mTouchRaw;
  int mTouchPhase;
  unsigned char mOrientationChanged;
  EOrientationStatus mOrientation;
  int mDisabled;
};

#endif
