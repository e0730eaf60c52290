#include "PanelScene.h"

#include <GLES/gl.h>
#include <stdio.h>

#include "BaseFramework/InputManager.h"
#include "Draw.h"
#include "RenderSystem/XFontManager.h"
#include "Sound/AudioDevice.h"
#include "Tamarin/ZvWidgetInstance.h"
#include "WalkerManager.h"

namespace walker {

namespace {
const char* const kCaptions[eEffect_Num] = {"Blend", "Trail", "Glow"};
const int kButtonWidth = 96, kButtonHeight = 32, kGap = 8;
const int kStride = 48;  // how far an arrow sends the walker
const unsigned kButtonOff = 0x283040C0, kButtonOn = 0xF0A020E8;
}  // namespace

PanelScene::Rect PanelScene::ButtonRect(EEffect effect) const {
  const int i = int(effect);
  if (mUpright) return Rect{480 - kGap - kButtonWidth, 60 + i * (kButtonHeight + kGap), kButtonWidth, kButtonHeight};
  return Rect{480 - (eEffect_Num - i) * (kButtonWidth + kGap), 272 - kGap - kButtonHeight, kButtonWidth, kButtonHeight};
}

void PanelScene::Update(float) {
  InputManager& input = InputManager::sInstance();
  mUpright = input.mOrientation == eOS_Vertical || input.mOrientation == eOS_VerticalUpsideDown;
  if (input.mButtonState[5] == InputManager::eBS_JustPressed) {
    WalkerManager::sInstance().SetGameFinished(1);
    return;
  }
  if (input.mTouchPhase == InputManager::eTP_JustDown) {
    const int x = input.mTouchNow.x, y = input.mTouchNow.y;
    for (int effect = 0; effect < eEffect_Num; ++effect) {
      if (ButtonRect(EEffect(effect)).Contains(x, y)) {
        Toggle(EEffect(effect));
        return;
      }
    }
    mField.WalkTo(float(x), float(y));
  }
  // Up, down, right, left: a stride from where the walker stands.
  const int dx[4] = {0, 0, kStride, -kStride}, dy[4] = {-kStride, kStride, 0, 0};
  for (int button = 0; button < 4; ++button) {
    if (input.mButtonState[button] == InputManager::eBS_JustPressed)
      mField.WalkBy(float(dx[button]), float(dy[button]));
  }
}

void PanelScene::Toggle(EEffect effect) {
  mField.SetEffect(effect, !mField.IsEffectOn(effect));
  ++mToggles;
  WalkerManager::sInstance().audio().playSoundCue("SFX_TOGGLE");
}

void PanelScene::Render() {
  if (!ZvWidgetInstance::GetIsUseOgl()) return;
  XFontManager& fonts = XFontManager::sInstance();
  for (int effect = 0; effect < eEffect_Num; ++effect) {
    const Rect r = ButtonRect(EEffect(effect));
    const bool on = mField.IsEffectOn(EEffect(effect));
    FillRect(r.x, r.y, r.width, r.height, on ? kButtonOn : kButtonOff);
    if (on) glColor4x(0x2000, 0x1800, 0, 1 << 16);
    fonts.drawStringCenter(2, r.x + r.width / 2, r.y + 5, kCaptions[effect]);
    glColor4x(1 << 16, 1 << 16, 1 << 16, 1 << 16);
  }

  FillRect(0, 0, mUpright ? 360 : 480, 28, 0x00000060);
  fonts.drawString(0, 8, 4, "Tap the field and the walker goes there", false);
  const std::vector<std::string>& kits = WalkerManager::sInstance().tuneKits();
  int y = 34;
  fonts.drawString(0, 8, y, kits.empty() ? "Tune kits: none" : "Tune kits:", false);
  for (const std::string& kit : kits) fonts.drawString(0, 24, y += 22, kit.c_str(), false);
  char steps[32];
  snprintf(steps, sizeof steps, "Steps: %d", mField.steps());
  fonts.drawString(0, 8, 272 - kGap - 22, steps, false);
}

}  // namespace walker
