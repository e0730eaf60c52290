#include "BaseFramework/InputManager.h"

#include <string.h>

#include "CAccelerometerSvc.h"

InputManager::InputManager() {
  // A letter for each button, kept for titles that show key hints.
  memset(mKeyCodes, 0, sizeof mKeyCodes);
  mKeyCodes[0] = 'W';
  mKeyCodes[1] = 'S';
  mKeyCodes[2] = 'D';
  mKeyCodes[3] = 'A';
  mKeyCodes[4] = 'J';
  mKeyCodes[5] = 'K';
  mKeyCodes[6] = 'U';
  mKeyCodes[7] = 'I';
  mKeyCodes[8] = 'V';
  mKeyCodes[9] = 'C';
  mKeyCodes[10] = 'P';
  mKeyCodes[12] = 'M';
  mKeyCodes[13] = 'H';
  mKeyCodes[14] = 'P';
  mKeyCodes[15] = 'O';
  mDisabled = 0;
  Reset();
}

void InputManager::Update(float dt) {
  mOrientationChanged = 0;
  if (mBlockTime > 0) {
    mBlockTime -= dt;
    Reset();
    return;
  }
  if (mDisabled != 0) {
    Reset();
    return;
  }
  UpdateButton();
  UpdateTouchpad();
}

void InputManager::UpdateButton() {
  memcpy(mButtonNow, mButtonRaw, sizeof mButtonNow);
  mAnyPressed = 0;
  for (int i = 0; i < kButtonCount; ++i) {
    if (mButtonNow[i]) {
      if (mButtonLast[i]) {
        mButtonState[i] = eBS_Held;
      } else {
        mButtonState[i] = eBS_JustPressed;
        mAnyPressed = 1;
      }
    } else {
      mButtonState[i] = mButtonLast[i] ? eBS_JustReleased : eBS_Up;
    }
  }
  memcpy(mButtonLast, mButtonNow, sizeof mButtonLast);
}

void InputManager::UpdateTouchpad() {
  mTouchLast = mTouchNow;
  mTouchNow = mTouchRaw;
  if (mTouchNow.down) {
    if (mTouchLast.down) {
      mTouchPhase = eTP_Held;
    } else {
      mTouchPhase = eTP_JustDown;
      mAnyPressed = 1;
    }
  } else {
    mTouchPhase = mTouchLast.down ? eTP_JustUp : eTP_None;
  }
}

void InputManager::ReleaseAll() { memset(mButtonRaw, 0, sizeof mButtonRaw); }

void InputManager::Reset() {
  mAnyPressed = 0;
  mBlockTime = 0;
  memset(mButtonNow, 0, sizeof mButtonNow);
  memset(mButtonLast, 0, sizeof mButtonLast);
  memset(mButtonRaw, 0, sizeof mButtonRaw);
  memset(mButtonState, 0, sizeof mButtonState);
  memset(&mTouchLast, 0, sizeof mTouchLast);
  memset(&mTouchNow, 0, sizeof mTouchNow);
  memset(&mTouchRaw, 0, sizeof mTouchRaw);
  mTouchPhase = eTP_None;
  mOrientationChanged = 0;
  // The true orientation, asked of the device directly.
  Vantrel::Solva::CAccelerometerSvc accelerometer;
  mOrientation = static_cast<EOrientationStatus>(accelerometer.GetOrientation());
}
