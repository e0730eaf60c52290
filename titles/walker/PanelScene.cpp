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
const int kButtonWidth = 96, kButtonHeight = 32, kGap = 8;
const int kStride = 48;  // how far an arrow sends the walker
const unsigned kButtonOff = 0x283040C0, kButtonOn = 0xF0A020E8;
const int kTextFont = 0, kCaptionFont = 2;
}  // namespace

// As wide as the screen leaves three buttons and their gaps, 96 at the most.
PanelScene::Rect PanelScene::ButtonRect(EEffect effect) const {
  const Screen& screen = WalkerManager::sInstance().screen();
  const int fit = (screen.width() - (eEffect_Num + 1) * kGap) / eEffect_Num;
  const int width = fit < kButtonWidth ? fit : kButtonWidth;
  return Rect{screen.width() - (eEffect_Num - int(effect)) * (width + kGap), screen.height() - kGap - kButtonHeight,
              width, kButtonHeight};
}

void PanelScene::Update(float) {
  InputManager& input = InputManager::sInstance();
  if (input.mButtonState[5] == InputManager::eBS_JustPressed) {
    WalkerManager::sInstance().SetGameFinished(1);
    return;
  }
  if (input.mTouchPhase == InputManager::eTP_JustDown) {
    int x, y;
    WalkerManager::sInstance().screen().ToLogical(input.mTouchNow.x, input.mTouchNow.y, &x, &y);
    for (int effect = 0; effect < eEffect_Num; ++effect) {
      if (ButtonRect(EEffect(effect)).Contains(x, y)) {
        Toggle(EEffect(effect));
        return;
      }
    }
    mField.WalkTo(float(x), float(y));
  }
  // Up, down, right, left on the screen as held: a stride from where the walker stands.
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
  const WalkerManager& manager = WalkerManager::sInstance();
  const Texts& texts = manager.texts();
  const int width = manager.screen().width(), height = manager.screen().height();
  XFontManager& fonts = XFontManager::sInstance();
  for (int effect = 0; effect < eEffect_Num; ++effect) {
    const Rect r = ButtonRect(EEffect(effect));
    const bool on = mField.IsEffectOn(EEffect(effect));
    FillRect(r.x, r.y, r.width, r.height, on ? kButtonOn : kButtonOff);
    if (on) glColor4x(0x2000, 0x1800, 0, 1 << 16);
    fonts.drawStringCenter(kCaptionFont, r.x + r.width / 2, r.y + 5, texts.captions[effect].c_str());
    glColor4x(1 << 16, 1 << 16, 1 << 16, 1 << 16);
  }

  // The texts wrap within the screen's width, each block below the one before.
  const int box = width - 2 * kGap, line = fonts.getFontHeight(kTextFont);
  const int helpHeight = fonts.getTextHeight(kTextFont, texts.help.c_str(), box);
  FillRect(0, 0, width, helpHeight + 6, 0x00000060);
  fonts.drawStringInBox(kTextFont, kGap, 4, texts.help.c_str(), box, 0);
  const std::vector<std::string>& kits = manager.tuneKits();
  int y = helpHeight + 12;
  fonts.drawString(kTextFont, kGap, y, (kits.empty() ? texts.noTuneKits : texts.tuneKits).c_str(), false);
  y += line;
  for (const std::string& kit : kits) {
    fonts.drawStringInBox(kTextFont, 3 * kGap, y, kit.c_str(), width - 4 * kGap, 0);
    y += fonts.getTextHeight(kTextFont, kit.c_str(), width - 4 * kGap);
  }
  // Beside the buttons held flat, above them upright.
  char steps[64];
  snprintf(steps, sizeof steps, "%s %d", texts.steps.c_str(), mField.steps());
  const bool beside = ButtonRect(eEffect_Blend).x > fonts.getStringWidth(kTextFont, steps) + 2 * kGap;
  fonts.drawString(kTextFont, kGap, height - kGap - (beside ? 0 : kButtonHeight + kGap) - line, steps, false);
}

}  // namespace walker
