// A small title that takes downloaded content: with 3D on (an application mod's
// menu textures are GL textures), it loads the player's micro mods at start and
// again at each press of "a", prints what each mod holds, and at exit counts one
// more start into every mod's mark and writes the marks back. "back" ends it.
#include <boost/shared_ptr.hpp>
#include <stdio.h>

#include <string>
#include <vector>

#include "Base/StringID.h"
#include "Base/singleton.h"
#include "BaseFramework/GameManager.h"
#include "BaseFramework/InputManager.h"
#include "CAppInterface.h"
#include "CJSonFile.h"
#include "MediaCenter/MicroMods.h"
#include "MediaCenter/VT/ZvArchive.h"
#include "RenderSystem/GLTexture.h"
#include "SolvaOpenGLConfig.h"
#include "Tamarin/ZvWidgetInstance.h"

namespace modtitle {

namespace {

const char* const kTypeNames[] = {"", "Snipsy", "Application", "Pewzone", "Reelmarch", "Scoopcam", "Fablewright",
                                  "Wigglo"};

std::string Size(const GLTexture* texture) {
  return texture ? std::to_string(texture->mWidth) + "x" + std::to_string(texture->mHeight) : "none";
}

// One line per mod: type, package id, mark, and what its class holds.
void Print(MicroMod* mod) {
  std::string what;
  switch (mod->mType) {
    case eMMT_Snipsy: what = static_cast<MicroModSnipsy*>(mod)->mTemplatePath; break;
    case eMMT_Application: {
      MicroModApplication* app = static_cast<MicroModApplication*>(mod);
      what = app->mSoPath + " textures " + Size(app->mTexFontDesc) + " " + Size(app->mTexThumbnail) + " " +
             Size(app->mTexAnimation);
      break;
    }
    case eMMT_Pewzone: what = static_cast<MicroModPewzone*>(mod)->mBackgroundPath; break;
    case eMMT_Reelmarch:
      for (const std::string& name : static_cast<MicroModReelmarch*>(mod)->mMusicNames) what += "[" + name + "]";
      break;
    case eMMT_Scoopcam:
      for (const ScoopcamMission& m : static_cast<MicroModScoopcam*>(mod)->GetMissionVec()) {
        what += "[" + m.mMissionName + " " + std::to_string(m.mElementNumber) + "]";
      }
      break;
    case eMMT_Fablewright:
      for (const FablewrightStory& s : static_cast<MicroModFablewright*>(mod)->GetStoryVec()) {
        what += "[" + s.mStoryName + " " + std::to_string(s.mPageNumber) + "]";
      }
      break;
    case eMMT_Wigglo: {
      MicroModWigglo* kit = static_cast<MicroModWigglo*>(mod);
      what = std::to_string(kit->GetBrushNum()) + " brushes " + std::to_string(kit->GetStampNum()) + " stamps " +
             std::to_string(kit->GetFrameNum()) + " frames";
      break;
    }
  }
  printf("modtitle: %s %s mark %d %s\n", kTypeNames[mod->mType], mod->mPackageId.c_str(), mod->mMark, what.c_str());
}

}  // namespace

class Manager : public GameManager, public Singleton<Manager, Tag_Singleton_Manual> {
 public:
  void Initialize() override {
    GameManager::Initialize();
    mArchiver = new ZvArchive();
    mArchiver->Initialize(0);
    Load();
  }
  void Update(float dt) override {
    InputManager::sInstance().Update(dt);
    GameManager::Update(dt);
    if (InputManager::sInstance().mButtonState[4] == InputManager::eBS_JustPressed) Load();
    if (InputManager::sInstance().mButtonState[5] == InputManager::eBS_JustPressed) SetGameFinished(1);
  }
  // The marks count the starts that saw each mod.
  void WriteMarks() {
    std::vector<MicroMod*> mods;
    archive().GetMicroModes(mods);
    for (MicroMod* mod : mods) ++mod->mMark;
    archive().WriteMdlInformation();
  }
  // Mods live as long as the process; this title lets them go with itself, while
  // the texture manager is still there to take the textures back.
  void Destroy() override {
    for (MicroMod* mod : mLoaded) delete mod;
    mLoaded.clear();
    GameManager::Destroy();
    StringID::Destroy();  // the configuration's property names
    delete mArchiver;
    mArchiver = 0;
  }
  ZvArchive& archive() { return static_cast<ZvArchive&>(GetArchiver()); }
  int count() const { return mCount; }

 private:
  void Load() {
    archive().TryToLoadMdl();
    std::vector<MicroMod*> mods;
    archive().GetMicroModes(mods);
    mLoaded.insert(mLoaded.end(), archive().mMicroMods.begin(), archive().mMicroMods.end());
    mCount = int(mods.size());
    printf("modtitle: %d mods\n", mCount);
    for (MicroMod* mod : mods) Print(mod);
  }
  std::vector<MicroMod*> mLoaded;  // every mod of every load
  int mCount = 0;
};

class Instance : public ZvWidgetInstance {
 public:
  explicit Instance(void* params) : ZvWidgetInstance(params) {}
  void Enter() override {
    SetIsUseOgl(1);
    mConfig = Vantrel::Solva::CreateSolvaOpenGLConfig();
    if (mConfig == 0) SetIsUseOgl(0);
    SetSolvaOpenGLConfig(mConfig);
    Manager::sCreate();
    SetGameManager(&Manager::sInstance());
    ZvWidgetInstance::Enter();
  }
  void Exit() override {
    ZvWidgetInstance::Exit();
    Vantrel::Solva::DestroySolvaOpenGLConfig(mConfig);
    mConfig = 0;
    SetIsUseOgl(0);
  }
  void OnPreExit() override {
    Manager& manager = Manager::sInstance();
    manager.WriteMarks();
    Catalog::CJSonFile* params = GetParams();
    if (params != nullptr) params->GetRoot()["mods"] = manager.count();
    manager.Destroy();
    delete Manager::instance_;
    Manager::instance_ = nullptr;
  }

 private:
  SolvaOpenGLConfig* mConfig = nullptr;
};

}  // namespace modtitle

extern "C" __attribute__((visibility("default"))) boost::shared_ptr<CAppInterface> CreateApp(void* params) {
  return boost::shared_ptr<CAppInterface>(new modtitle::Instance(params));
}
