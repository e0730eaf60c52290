#include "WalkerManager.h"

#include <stdio.h>

#include "Base/StringID.h"
#include "BaseFramework/InputManager.h"
#include "Canvas/CanvasLayer.h"
#include "Canvas/VT/ZvCanvasFactory.h"
#include "External/waf/WafArchiveManager.h"
#include "External/waf/wafexp.h"
#include "MediaCenter/MicroMods.h"
#include "MediaCenter/VT/ZvArchive.h"
#include "RenderSystem/AnimatedModel2DRender.h"
#include "RenderSystem/AnimatedSpriteDataManager.h"
#include "RenderSystem/RenderStateStack.h"
#include "Sound/TamarinAudioDevice.h"
#include "Tamarin/ZvWidgetInstance.h"
#include "WalkerState.h"

namespace walker {

namespace {
const char kArchivePath[] = "res/walker.waf";
}

// Start-up: the framework's services (fonts and textures with 3D on), then the
// archive and the mods it finds, the title's WAF archive and the texts in it,
// the batch renderer and sprites (both need the GL context), the sound, the 3D
// layer, the state last.
void WalkerManager::Initialize() {
  GameManager::Initialize();
  // The colour every guarded draw returns to.
  RenderStateStack::GetColorContainer()->push_back(RenderStateStack::Color{1.0f, 1.0f, 1.0f, 1.0f});

  mArchiver = new ZvArchive();
  mArchiver->Initialize(0);
  LoadTuneKits();

  mWafArchiveManager = WafArchiveManager::sCreate();
  mWafArchiveManager->Initialize(mArchiver->mTitlePath);
  mWafArchiveManager->mCompressedArchives[WafArchiveManager::eArchive_0] = waf_archive_open(kArchivePath, 0);
  if (archive() == nullptr) {
    printf("walker: cannot open %s; the field has no background and the texts are built in\n", kArchivePath);
  } else {
    const std::string problem = mTexts.Load(archive(), kArchivePath);
    if (!problem.empty()) printf("walker: %s; the built-in texts are used\n", problem.c_str());
  }

  if (ZvWidgetInstance::GetIsUseOgl()) {
    AnimatedModel2DRender::sCreate();
    AnimatedSpriteDataManager::sCreate();
  }

  TamarinAudioDevice::sCreate();
  mAudioDevice = AudioDevice::sInstance();
  mAudioDevice->Initialize("res/Sound/Walker.soundproject");
  mAudioDevice->setMusicVolume(100);
  mAudioDevice->setVoiceVolume(100);

  mFactory = new ZvCanvasFactory();
  mOglLayer = mFactory->CreateOglLayer(0, 0, 480, 272);

  mState = new WalkerState();
  LaunchState(mState);
}

// Shut-down in the reverse order: the scenes give their sprites and textures back
// while the managers are there to take them.
void WalkerManager::Destroy() {
  GameManager::ExitState();

  mAudioDevice->stopAll();
  mAudioDevice->update(0);  // lets the stopped cues go before their project
  mAudioDevice->Destroy();
  AudioDevice::sDestroy();
  mAudioDevice = nullptr;

  mOglLayer->Destroy();
  delete mOglLayer;
  mOglLayer = nullptr;
  delete mFactory;
  mFactory = nullptr;

  delete AnimatedSpriteDataManager::instance_;
  AnimatedSpriteDataManager::instance_ = nullptr;
  delete AnimatedModel2DRender::instance_;
  AnimatedModel2DRender::instance_ = nullptr;

  // The archive manager closes the title's archive.
  delete WafArchiveManager::instance_;
  WafArchiveManager::instance_ = nullptr;
  mWafArchiveManager = nullptr;

  // Mods live as long as the process unless their title ends them.
  for (MicroMod* mod : static_cast<ZvArchive*>(mArchiver)->mMicroMods) delete mod;
  static_cast<ZvArchive*>(mArchiver)->mMicroMods.clear();
  StringID::Destroy();

  GameManager::Destroy();
  delete mArchiver;
  mArchiver = nullptr;
  delete mState;
  mState = nullptr;
}

void WalkerManager::Update(float dt) {
  InputManager::sInstance().Update(dt);
  mScreen.Follow(InputManager::sInstance().mOrientation);
  GameManager::Update(dt);
  mAudioDevice->update(dt);
}

waf_archive* WalkerManager::archive() const {
  return mWafArchiveManager != nullptr ? mWafArchiveManager->getCompressedArchive(WafArchiveManager::eArchive_0)
                                       : nullptr;
}

// The player's music kits ("Reelmarch" mods), each as "package: tune, tune".
void WalkerManager::LoadTuneKits() {
  ZvArchive& archive = static_cast<ZvArchive&>(*mArchiver);
  archive.TryToLoadMdl();
  std::vector<MicroMod*> kits;
  archive.GetMicroModsByType(eMMT_Reelmarch, kits);
  for (MicroMod* mod : kits) {
    std::string line = mod->mPackageId + ":";
    const char* separator = " ";
    for (const std::string& tune : static_cast<MicroModReelmarch*>(mod)->mMusicNames) {
      line += separator + tune;
      separator = ", ";
    }
    mTuneKits.push_back(line);
  }
}

}  // namespace walker
