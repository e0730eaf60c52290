#ifndef SRC_MEDIACENTER_VT_ZVARCHIVE_H
#define SRC_MEDIACENTER_VT_ZVARCHIVE_H
// The archive on the device: the running title, the current player and the data
// folders come from the platform's CSystemData and BaseUtils, and every folder of
// the gallery is computed once, in Initialize.
#include <string>
#include <vector>

#include "MediaCenter/Archive.h"

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

  unsigned postCalcOtherPlayerPrivateSize();
  // Makes each folder of `relative` below `base` that is missing, piece by piece;
  // what follows the last slash is not a folder and is left alone.
  void RecursiveToCreateDirectory(const std::string& base, const std::string& relative);

  CSystemData* mZvSysData;
  Vantrel::Solva::CKernelSvc* mKernelSvc;
  BaseUtils* mBaseUtils;
  std::string mCountryLocaleId;
};

#endif
