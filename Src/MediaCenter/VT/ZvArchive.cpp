#include "MediaCenter/VT/ZvArchive.h"

#include <assert.h>
#include <unistd.h>

#include <cstdio>
#include <cstring>

#include "AtomicFile.h"
#include "BaseUtils.h"
#include "CKernelSvc.h"
#include "CMetaInfo.h"
#include "CMicroDownloads.h"
#include "CSystemData.h"
#include "ConfigSystem/CameraConfig.h"

namespace {

// What one folder walk carries to PadFile.
struct PadFileContext {
  const ZvArchive* archive;
  int recursive;
  const std::string* pattern;
  std::vector<std::string>* names;
  BaseUtils* baseUtils;
};

// The pattern is carried along but not applied: every file is taken.
int PadFile(const Glib::ustring& entry, void* context) {
  PadFileContext* walk = static_cast<PadFileContext*>(context);
  if (!walk->baseUtils->FileIsDir(entry)) {
    walk->names->push_back(entry.raw());
  } else if (walk->recursive != 0) {
    walk->archive->GetAllFileNameInPath(entry.raw(), *walk->pattern, *walk->names, walk->recursive);
  }
  return 1;
}

std::string LocalData(CSystemData* data, int player, const std::string& sub) {
  return data->GetLocalDataPath(player, sub).raw();
}

// The mark file's name: the property "ArchiveDataFileName" of the section
// "Archive" of the title's configuration. Asked by its full path, so that the
// tree's current path stays as it was. False, with a line, when it is not there.
bool MarkFileName(std::string* name) {
  if (CameraConfig::sInstance().getProperty_String("Archive.ArchiveDataFileName", *name) && !name->empty()) {
    return true;
  }
  printf("[ZvArchive] res/CamCfg.xml has no Archive.ArchiveDataFileName; the mods' marks are not kept.\n");
  return false;
}

// A mod of the kinds that read MicroModsConfig.xml: package id, path, then the
// file. A folder whose file does not load is listed all the same, empty.
template <class Mod>
MicroMod* ConfiguredMod(const std::string& packageId, const std::string& folder) {
  Mod* mod = new Mod();
  mod->mPackageId = packageId;
  mod->SetMicroModPath(folder + "/");
  mod->LoadMicroModFromFile();
  return mod;
}

// The mark file's numbers are 32-bit little-endian.
bool ReadU32(FILE* file, unsigned* value) {
  unsigned char bytes[4];
  if (fread(bytes, 1, 4, file) != 4) return false;
  *value = unsigned(bytes[0]) | unsigned(bytes[1]) << 8 | unsigned(bytes[2]) << 16 | unsigned(bytes[3]) << 24;
  return true;
}

void WriteU32(FILE* file, unsigned value) {
  const unsigned char bytes[4] = {(unsigned char)value, (unsigned char)(value >> 8), (unsigned char)(value >> 16),
                                  (unsigned char)(value >> 24)};
  fwrite(bytes, 1, 4, file);
}

}  // namespace

ZvArchive::ZvArchive() : mZvSysData(0), mKernelSvc(0), mBaseUtils(0) {}

ZvArchive::~ZvArchive() { delete mKernelSvc; }

void ZvArchive::Initialize(int mask) {
  mKernelSvc = new Vantrel::Solva::CKernelSvc();
  assert(mKernelSvc);
  mZvSysData = CSystemData::Instance();
  assert(mZvSysData);
  mBaseUtils = BaseUtils::Instance();
  assert(mBaseUtils);

  mCurrentPlayerId = mZvSysData->GetCurrentPlayerID();
  const std::string packageId = mZvSysData->GetCurrentGamePackageID().raw();
  mCountryLocaleId = mZvSysData->GetLocaleCode().raw();
  mTitlePath = mZvSysData->GetCurrentTitlePath().raw();
  mPlayerDataPath = LocalData(mZvSysData, mCurrentPlayerId, packageId);

  const std::string photoThumb = std::string("Photos") + "/" + "Thumb";
  const std::string videoCover = std::string("Videos") + "/" + "Cover";
  const std::string videoThumb = std::string("Videos") + "/" + "Thumb";
  const std::string artThumb = std::string("Art") + "/" + "Thumb";

  mFileIndexPath = LocalData(mZvSysData, kSharedPlayerID, "FileIndex");
  mPhotoPath = LocalData(mZvSysData, kSharedPlayerID, "Photos");
  mPhotoThumbPath = LocalData(mZvSysData, kSharedPlayerID, photoThumb);
  mVideoPath = LocalData(mZvSysData, kSharedPlayerID, "Videos");
  // The cover folder is overwritten at once: covers are named from the video's own
  // path, so no field keeps their folder.
  mVideoThumbPath = LocalData(mZvSysData, kSharedPlayerID, videoCover);
  mVideoThumbPath = LocalData(mZvSysData, kSharedPlayerID, videoThumb);
  mMusicPath = LocalData(mZvSysData, kSharedPlayerID, "Music");
  mArtPath = LocalData(mZvSysData, kSharedPlayerID, "Art");
  mArtThumbPath = LocalData(mZvSysData, kSharedPlayerID, artThumb);
  mPlayerRootPath = LocalData(mZvSysData, mCurrentPlayerId, "");

  if ((mask & eUpload_All) != 0) {
    if (mask & eUpload_Photo) mUploadPhotoPath = mZvSysData->GetUploadDataPath("PhotosPkg").raw();
    if (mask & eUpload_Video) mUploadVideoPath = mZvSysData->GetUploadDataPath("VideosPkg").raw();
    if (mask & eUpload_Music) mUploadMusicPath = mZvSysData->GetUploadDataPath("MusicPkg").raw();
    if (mask & eUpload_Art) mUploadArtPath = mZvSysData->GetUploadDataPath("ArtPkg").raw();
  }
}

void ZvArchive::Destroy() {
  mZvSysData = 0;
  mBaseUtils = 0;
  delete mKernelSvc;
  mKernelSvc = 0;
}

void ZvArchive::CreateScrapBookSubFolder(const std::string& subFolder) {
  mScrapBookPath = CSystemData::Instance()->GetCurrentGamePackageID().raw() + subFolder;
  mScrapBookAudioPath = mScrapBookPath + "Audio";
  mScrapBookImagePath = mScrapBookPath + "Image";
  mScrapBookPath = LocalData(CSystemData::Instance(), mCurrentPlayerId, mScrapBookPath);
  mScrapBookAudioPath = LocalData(CSystemData::Instance(), mCurrentPlayerId, mScrapBookAudioPath);
  mScrapBookImagePath = LocalData(CSystemData::Instance(), mCurrentPlayerId, mScrapBookImagePath);
  mUploadStoryPath = CSystemData::Instance()->GetUploadDataPath("StoryBooks").raw();
}

bool ZvArchive::GetAllFileNameInPath(const std::string& path, const std::string& pattern,
                                     std::vector<std::string>& names, int recursive) const {
  const size_t before = names.size();
  PadFileContext context = {this, recursive, &pattern, &names, mBaseUtils};
  mBaseUtils->EnumFolder(path, &PadFile, kFileSelectAll, &context);
  if (names.size() == before) return false;
  // All names lose their folders, also those that were there before the call.
  for (size_t i = 0; i < names.size(); ++i) {
    const size_t slash = names[i].rfind('/');
    if (slash != std::string::npos) names[i] = names[i].substr(slash + 1);
  }
  return true;
}

unsigned ZvArchive::GetAvailableDiskSpace() const { return mBaseUtils->GetBulkFreeBytes(); }

bool ZvArchive::ArchiveDeleteFile(const std::string& path) const { return mBaseUtils->RM(path); }

int ZvArchive::GetUserType() const {
  switch (mCurrentPlayerId) {
    case 0: return 0;
    case 1: return 1;
    case 2: return 2;
    default: return 3;
  }
}

std::string ZvArchive::GetCountryLocaleId() const { return mCountryLocaleId; }

// Other players' private data is not measured on this device.
unsigned ZvArchive::otherPlayerPrivateSize() {
  static bool calculated = false;
  static unsigned cached = 0;
  if (!calculated) {
    cached = 0;
    calculated = true;
  }
  return cached;
}

unsigned ZvArchive::postCalcOtherPlayerPrivateSize() { return 0; }

void ZvArchive::RecursiveToCreateDirectory(const std::string& base, const std::string& relative) {
  std::string partial = base;
  size_t start = 0;
  for (size_t slash = relative.find('/'); slash != std::string::npos; slash = relative.find('/', start)) {
    partial += relative.substr(start, slash + 1 - start);
    start = slash + 1;
    if (!mBaseUtils->DirectoryExists(partial)) {
      if (!mBaseUtils->CreateDirectory(partial)) assert(0);
    }
  }
}

bool ZvArchive::GetMicroModsByType(EMicroModType type, std::vector<MicroMod*>& mods) {
  mods.clear();
  for (size_t i = 0; i < mMicroMods.size(); ++i) {
    if (mMicroMods[i]->mType == type) mods.push_back(mMicroMods[i]);
  }
  return !mods.empty();
}

bool ZvArchive::GetMicroModes(std::vector<MicroMod*>& mods) {
  mods.clear();
  for (int type = eMMT_Snipsy; type <= eMMT_Wigglo; ++type) {
    for (size_t i = 0; i < mMicroMods.size(); ++i) {
      if (mMicroMods[i]->mType == type) mods.push_back(mMicroMods[i]);
    }
  }
  return !mods.empty();
}

void ZvArchive::TryToLoadMdl() {
  // 1. The mods of an earlier call are not released: they live as long as the process.
  mMicroMods.resize(0);

  // 2. The current player's downloaded folders.
  Catalog::CMicroDownloads downloads;
  const std::vector<Glib::ustring> folders = downloads.get(mZvSysData->GetCurrentPlayerID());

  // 3. One mod per folder whose kit type is known.
  for (size_t i = 0; i < folders.size(); ++i) {
    const std::string folder = folders[i].raw();
    Catalog::CMetaInfo meta(folder);
    const std::string kind = meta.GetTagString("ModKitType").raw();
    MicroMod* mod = 0;
    if (kind == "Notewright") {
      mod = new MicroModSnipsy(folder);
    } else if (kind == "Application") {
      const std::string soPath = folder + "/" + meta.GetTagString("AppSo").raw();
      MicroModApplication* application = new MicroModApplication(soPath);
      application->LoadMenuTexFrom(folder + "/");
      mod = application;
    } else if (kind == "Pewzone") {
      mod = new MicroModPewzone(folder);
    } else if (kind == "Reelmarch") {
      MicroModReelmarch* music = new MicroModReelmarch(folder);
      std::vector<std::string> names;
      GetAllFileNameInPath(folder + "/Musics/", "", names, 0);
      music->mMusicNames = names;
      mod = music;
    } else if (kind == "Scoopcam") {
      mod = ConfiguredMod<MicroModScoopcam>(meta.GetPackageId().raw(), folder);
    } else if (kind == "Fablewright") {
      mod = ConfiguredMod<MicroModFablewright>(meta.GetPackageId().raw(), folder);
    } else if (kind == "Wigglo") {
      mod = ConfiguredMod<MicroModWigglo>(meta.GetPackageId().raw(), folder);
    } else {
      continue;
    }
    mod->mPackageId = meta.GetPackageId().raw();
    mMicroMods.push_back(mod);
  }

  // 4. Every mod is new until the mark file says otherwise.
  for (size_t i = 0; i < mMicroMods.size(); ++i) mMicroMods[i]->mMark = 1;

  // 5. The mark file; without one, all mods count as new.
  std::string name;
  if (!MarkFileName(&name)) return;
  FILE* file = fopen((mFileIndexPath + name).c_str(), "rb");
  if (file == 0) return;

  // 6. The buffer is cleared once only: an identifier shorter than the one before
  // it keeps the old tail behind it and matches no mod. Records of mods that are
  // gone match nothing and are dropped.
  char buffer[1024];
  memset(buffer, 0, sizeof buffer);
  unsigned count = 0;
  ReadU32(file, &count);
  for (unsigned record = 0; record < count; ++record) {
    unsigned length = 0;
    unsigned mark = 0;
    if (!ReadU32(file, &length)) break;
    // The last byte of the buffer stays zero, so that it always ends as a text;
    // what does not fit is passed over. A record cut short ends the reading.
    const unsigned kept = length < sizeof buffer - 1 ? length : unsigned(sizeof buffer - 1);
    if (fread(buffer, 1, kept, file) != kept) break;
    if (kept < length && fseek(file, long(length - kept), SEEK_CUR) != 0) break;
    if (!ReadU32(file, &mark)) break;
    for (size_t i = 0; i < mMicroMods.size(); ++i) {
      if (strcmp(buffer, mMicroMods[i]->mPackageId.c_str()) == 0) {
        mMicroMods[i]->mMark = int(mark);
        break;
      }
    }
  }

  // 7.
  fclose(file);
}

void ZvArchive::WriteMdlInformation() {
  std::string name;
  if (!MarkFileName(&name)) return;
  const std::string path = mFileIndexPath + name;
  FILE* file = fopenAtomic(path.c_str(), "wb");
  if (file == 0) {
    printf("[ZvArchive] cannot write the mods' marks to %s\n", path.c_str());
    return;
  }
  WriteU32(file, unsigned(mMicroMods.size()));
  for (size_t i = 0; i < mMicroMods.size(); ++i) {
    const std::string& id = mMicroMods[i]->mPackageId;
    WriteU32(file, unsigned(id.size()));
    fwrite(id.data(), 1, id.size(), file);
    WriteU32(file, unsigned(mMicroMods[i]->mMark));
  }
  fcloseAtomic(file);
  sync();
}
