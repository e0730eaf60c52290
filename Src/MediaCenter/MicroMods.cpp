#include "MediaCenter/MicroMods.h"

#include <assert.h>
#include <tinyxml.h>

#include <cstdio>
#include <cstring>

#include "External/tinyXml/tinyxmlAdd.h"
#include "RenderSystem/GLTextureManager.h"

namespace {

const char kConfigFileName[] = "MicroModsConfig.xml";

// Loads `folder`'s MicroModsConfig.xml into `document` and returns its root
// element if it is called `rootName`; null when the file or that root is missing.
TiXmlElement* LoadSchemeRoot(const std::string& folder, const char* rootName, TiXmlDocument& document) {
  char path[256];
  memset(path, 0, sizeof path);
  // Cut at the buffer's end rather than written past it.
  snprintf(path, sizeof path, "%s%s", folder.c_str(), kConfigFileName);
  if (!document.LoadFile(path)) return 0;
  return document.FirstChildElement(rootName);
}

// One entry per child element of `root`, in document order: the name from the
// text of `nameKey`, the number through GetTextElementValue.
template <typename Entry>
void ReadItems(TiXmlElement* root, const char* nameKey, const char* numberKey, std::string Entry::*name,
               int Entry::*number, HeapVector<Entry>& items) {
  items.clear();
  for (TiXmlElement* item = root->FirstChildElement(); item != 0; item = item->NextSiblingElement()) {
    Entry entry;
    TiXmlElement* nameElement = item->FirstChildElement(nameKey);
    // An item must name itself; one that does not is kept, nameless, rather than
    // read through a null element.
    if (nameElement == 0) {
      printf("[MicroMods] an item <%s> has no <%s>; it is kept without a name.\n", item->Value(), nameKey);
    } else if (nameElement->GetText() != 0) {
      entry.*name = nameElement->GetText();
    }
    GetTextElementValue(item, numberKey, entry.*number);
    items.push_back(entry);
  }
}

}  // namespace

MicroMod::MicroMod(EMicroModType type) : mType(type), mMark(0) {}
MicroMod::~MicroMod() {}

MicroModSnipsy::MicroModSnipsy(const std::string& folder)
    : MicroMod(eMMT_Snipsy), mTemplatePath(folder + "/Templates/") {}
MicroModSnipsy::~MicroModSnipsy() {}

MicroModApplication::MicroModApplication(const std::string& soPath)
    : MicroMod(eMMT_Application), mSoPath(soPath), mTexFontDesc(0), mTexThumbnail(0), mTexAnimation(0) {}

MicroModApplication::~MicroModApplication() {
  gxGetTextureManager()->ReleaseTexture(mTexFontDesc);
  gxGetTextureManager()->ReleaseTexture(mTexThumbnail);
  gxGetTextureManager()->ReleaseTexture(mTexAnimation);
}

void MicroModApplication::LoadMenuTexFrom(const std::string& folder) {
  mTexFontDesc = gxGetTextureManager()->LoadTextureNoExpand((folder + "TexFontDesc").c_str(), 0);
  mTexThumbnail = gxGetTextureManager()->LoadTextureNoExpand((folder + "TexThumbnail").c_str(), 0);
  mTexAnimation = gxGetTextureManager()->LoadTextureNoExpand((folder + "TexAnimation").c_str(), 0);
  assert(mTexFontDesc);
  assert(mTexThumbnail);
  assert(mTexAnimation);
}

MicroModPewzone::MicroModPewzone(const std::string& folder)
    : MicroMod(eMMT_Pewzone),
      mBackgroundPath(folder + "/GameBG/"),
      mUserShipPath(folder + "/GameShip/UserShip/"),
      mEnemyShipPath(folder + "/GameShip/EnemyShip/") {}
MicroModPewzone::~MicroModPewzone() {}

MicroModReelmarch::MicroModReelmarch(const std::string& folder)
    : MicroMod(eMMT_Reelmarch), mMusicPath(folder + "/Musics/") {}
MicroModReelmarch::~MicroModReelmarch() {}

MicroModScoopcam::MicroModScoopcam() : MicroMod(eMMT_Scoopcam) {}
MicroModScoopcam::~MicroModScoopcam() {}

bool MicroModScoopcam::LoadMicroModFromFile() {
  TiXmlDocument document;
  TiXmlElement* root = LoadSchemeRoot(mMicroModPath, "MissionList", document);
  if (root == 0) return false;
  ReadItems(root, "MissionName", "ElementNumber", &ScoopcamMission::mMissionName, &ScoopcamMission::mElementNumber,
            mMissions);
  return true;
}

MicroModFablewright::MicroModFablewright() : MicroMod(eMMT_Fablewright) {}
MicroModFablewright::~MicroModFablewright() {}

bool MicroModFablewright::LoadMicroModFromFile() {
  TiXmlDocument document;
  TiXmlElement* root = LoadSchemeRoot(mMicroModPath, "StoryList", document);
  if (root == 0) return false;
  ReadItems(root, "StoryName", "PageNumber", &FablewrightStory::mStoryName, &FablewrightStory::mPageNumber, mStories);
  return true;
}

MicroModWigglo::MicroModWigglo() : MicroMod(eMMT_Wigglo), mBrushNumber(0), mStampNumber(0), mFrameNumber(0) {}
MicroModWigglo::~MicroModWigglo() {}

bool MicroModWigglo::LoadMicroModFromFile() {
  TiXmlDocument document;
  TiXmlElement* root = LoadSchemeRoot(mMicroModPath, "MicroMods", document);
  if (root == 0) return false;
  GetTextElementValue(root, "BrushNumber", mBrushNumber);
  GetTextElementValue(root, "StampNumber", mStampNumber);
  GetTextElementValue(root, "FrameNumber", mFrameNumber);
  return true;
}
