#include "WalkerInstance.h"

#include <math.h>
#include <stdio.h>

#include "CJSonFile.h"
#include "FieldScene.h"
#include "PanelScene.h"
#include "SolvaOpenGLConfig.h"
#include "WalkerManager.h"
#include "WalkerState.h"

namespace walker {

// Without a 3D context there is nothing to draw: the title says so and ends at
// its first frame.
void WalkerInstance::Enter() {
  SetIsUseOgl(1);
  mConfig = Vantrel::Solva::CreateSolvaOpenGLConfig();
  if (mConfig == nullptr) {
    puts("walker: the device has no 3D context; nothing to show");
    SetIsUseOgl(0);
  }
  SetSolvaOpenGLConfig(mConfig);
  WalkerManager::sCreate();
  SetGameManager(&WalkerManager::sInstance());
  ZvWidgetInstance::Enter();
  if (mConfig == nullptr) WalkerManager::sInstance().SetGameFinished(1);
}

void WalkerInstance::Exit() {
  ZvWidgetInstance::Exit();
  Vantrel::Solva::DestroySolvaOpenGLConfig(mConfig);
  mConfig = nullptr;
  SetIsUseOgl(0);
}

void WalkerInstance::OnPreExit() {
  WalkerManager& manager = WalkerManager::sInstance();
  Catalog::CJSonFile* params = GetParams();
  WalkerState* state = manager.state();
  if (params != nullptr && state != nullptr && state->field() != nullptr) {
    const FieldScene& field = *state->field();
    Catalog::Value& root = params->GetRoot();
    root["3d"] = mConfig != nullptr ? 1 : 0;
    root["sprites"] = field.loaded() ? 1 : 0;
    root["background"] = field.hasBackground() ? 1 : 0;
    root["tuneKits"] = int(manager.tuneKits().size());
    root["x"] = int(lroundf(field.x()));
    root["y"] = int(lroundf(field.y()));
    root["facing"] = field.facing();
    root["walking"] = field.walking() ? 1 : 0;
    root["steps"] = field.steps();
    root["toggles"] = state->panel()->toggles();
    root["effects"] = (field.IsEffectOn(eEffect_Blend) ? 1 : 0) | (field.IsEffectOn(eEffect_Trail) ? 2 : 0) |
                      (field.IsEffectOn(eEffect_Glow) ? 4 : 0);
    root["finished"] = manager.IsGameFinished();
  }
  manager.Destroy();
  delete WalkerManager::instance_;
  WalkerManager::instance_ = nullptr;
}

}  // namespace walker
