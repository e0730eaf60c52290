#include "MediaCenter/VT/ZvArchive.h"

#include <assert.h>

#include "BaseUtils.h"
#include "CKernelSvc.h"
#include "CSystemData.h"

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
