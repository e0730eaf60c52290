#ifndef SRC_MEDIACENTER_MICROMODS_H
#define SRC_MEDIACENTER_MICROMODS_H
// Micro mods: small downloaded pieces of content that extend one of the device's
// titles. ZvArchive::TryToLoadMdl makes one object of the right class for each
// folder the player has downloaded; each class holds where its content lies.
#include <string>
#include <vector>

#include "Base/HeapVector.h"

class GLTexture;

// The kinds of mod; GetMicroModes lists them in this order.
enum EMicroModType {
  eMMT_Snipsy = 1,
  eMMT_Application = 2,
  eMMT_Pewzone = 3,
  eMMT_Reelmarch = 4,
  eMMT_Scoopcam = 5,
  eMMT_Fablewright = 6,
  eMMT_Wigglo = 7,
};

class MicroMod {
 public:
  virtual ~MicroMod();

  EMicroModType mType;
  std::string mPackageId;  // the mod's key
  int mMark;               // kept across starts in the mark file

 protected:
  explicit MicroMod(EMicroModType type);
};

// Greeting-card templates (the "Notewright" kit).
class MicroModSnipsy : public MicroMod {
 public:
  explicit MicroModSnipsy(const std::string& folder);
  virtual ~MicroModSnipsy();

  std::string mTemplatePath;
};

// A small application of its own, with the three textures of its menu entry.
class MicroModApplication : public MicroMod {
 public:
  explicit MicroModApplication(const std::string& soPath);
  // Gives the three textures back to the texture manager.
  virtual ~MicroModApplication();

  // Loads "TexFontDesc", "TexThumbnail" and "TexAnimation" from `folder` (which
  // ends in a slash); a mod without any of them fails an assertion.
  void LoadMenuTexFrom(const std::string& folder);

  std::string mSoPath;
  GLTexture* mTexFontDesc;
  GLTexture* mTexThumbnail;
  GLTexture* mTexAnimation;
};

// A game's extra backgrounds and ships.
class MicroModPewzone : public MicroMod {
 public:
  explicit MicroModPewzone(const std::string& folder);
  virtual ~MicroModPewzone();

  std::string mBackgroundPath;
  std::string mUserShipPath;
  std::string mEnemyShipPath;
};

// Music for the video title.
class MicroModReelmarch : public MicroMod {
 public:
  explicit MicroModReelmarch(const std::string& folder);
  virtual ~MicroModReelmarch();

  std::string mMusicPath;
  std::vector<std::string> mMusicNames;
};

// The numbers start at 0, so that an item without its number element has one.
struct ScoopcamMission {
  ScoopcamMission() : mElementNumber(0) {}
  int mElementNumber;
  std::string mMissionName;
};

struct FablewrightStory {
  FablewrightStory() : mPageNumber(0) {}
  int mPageNumber;
  std::string mStoryName;
};

// New missions, listed in the mod's MicroModsConfig.xml under "MissionList".
class MicroModScoopcam : public MicroMod {
 public:
  MicroModScoopcam();
  virtual ~MicroModScoopcam();

  HeapVector<ScoopcamMission>& GetMissionVec() { return mMissions; }
  int GetMissionNum() const { return int(mMissions.size()); }
  const std::string& GetMicroModPath() const { return mMicroModPath; }
  void SetMicroModPath(const std::string& path) { mMicroModPath = path; }
  // Reads the missions; false when the file or its root element is missing.
  bool LoadMicroModFromFile();

  HeapVector<ScoopcamMission> mMissions;
  std::string mMicroModPath;
};

// Story kits, listed in the mod's MicroModsConfig.xml under "StoryList".
class MicroModFablewright : public MicroMod {
 public:
  MicroModFablewright();
  virtual ~MicroModFablewright();

  HeapVector<FablewrightStory>& GetStoryVec() { return mStories; }
  int GetStoryNum() const { return int(mStories.size()); }
  const std::string& GetMicroModPath() const { return mMicroModPath; }
  void SetMicroModPath(const std::string& path) { mMicroModPath = path; }
  // Reads the stories; false when the file or its root element is missing.
  bool LoadMicroModFromFile();

  HeapVector<FablewrightStory> mStories;
  std::string mMicroModPath;
};

// Extra brushes, stamps and frames, counted in the mod's MicroModsConfig.xml.
class MicroModWigglo : public MicroMod {
 public:
  MicroModWigglo();
  virtual ~MicroModWigglo();

  int GetBrushNum() const { return mBrushNumber; }
  int GetStampNum() const { return mStampNumber; }
  int GetFrameNum() const { return mFrameNumber; }
  const std::string& GetMicroModPath() const { return mMicroModPath; }
  void SetMicroModPath(const std::string& path) { mMicroModPath = path; }
  // Reads the three numbers; false when the file or its root element is missing.
  bool LoadMicroModFromFile();

  std::string mMicroModPath;
  int mBrushNumber;
  int mStampNumber;
  int mFrameNumber;
};

#endif
