#ifndef SRC_MEDIACENTER_VT_ZVARCHIVE_H
#define SRC_MEDIACENTER_VT_ZVARCHIVE_H
// The archive on the device: the running title, the current player and the data
// folders come from the platform's CSystemData and BaseUtils, and every folder of
// the gallery is computed once, in Initialize. It also finds the player's micro
// mods and keeps their marks.
#include <string>
#include <vector>

#include "MediaCenter/Archive.h"
#include "MediaCenter/MicroMods.h"

class BaseUtils;
class CSystemData;
namespace Vantrel {
namespace Solva {
class CKernelSvc;
}
}  // namespace Vantrel

class ZvArchive : public Archive {
 public:
  // Bits of Initialize's mask: the kinds of media the application offers for upload.
  enum EUploadMask {
    eUpload_Photo = 1,
    eUpload_Video = 2,
    eUpload_Music = 4,
    eUpload_Art = 8,
    eUpload_All = 31,
  };

  ZvArchive();
  virtual ~ZvArchive();

  virtual void Initialize(int mask);
  virtual void Destroy();
  virtual void CreateScrapBookSubFolder(const std::string& subFolder);
  virtual bool GetAllFileNameInPath(const std::string& path, const std::string& pattern,
                                    std::vector<std::string>& names, int recursive) const;
  virtual unsigned GetAvailableDiskSpace() const;
  virtual bool ArchiveDeleteFile(const std::string& path) const;
  virtual int GetUserType() const;
  virtual std::string GetCountryLocaleId() const;
  virtual unsigned otherPlayerPrivateSize();
  // Empties `mods`, appends the mods of `type` in mMicroMods order, and tells
  // whether there were any.
  virtual bool GetMicroModsByType(EMicroModType type, std::vector<MicroMod*>& mods);
  // Empties `mods`, appends every mod by type (1 to 7) and within a type in
  // mMicroMods order, and tells whether there were any.
  virtual bool GetMicroModes(std::vector<MicroMod*>& mods);

  unsigned postCalcOtherPlayerPrivateSize();
  // Makes each folder of `relative` below `base` that is missing, piece by piece;
  // what follows the last slash is not a folder and is left alone.
  void RecursiveToCreateDirectory(const std::string& base, const std::string& relative);

  // Rebuilds mMicroMods from the current player's downloaded folders: one mod of
  // the right class per folder whose "ModKitType" is known, each with the mark
  // stored for its package id in the mark file, or 1 when it is new. The objects
  // of an earlier call are not released: mods live as long as the process.
  void TryToLoadMdl();
  // Replaces the mark file, whole, with the marks of mMicroMods.
  void WriteMdlInformation();

  CSystemData* mZvSysData;
  Vantrel::Solva::CKernelSvc* mKernelSvc;
  BaseUtils* mBaseUtils;
  std::vector<MicroMod*> mMicroMods;  // not owned: see TryToLoadMdl
  std::string mCountryLocaleId;
};

#endif
