#ifndef SRC_MEDIACENTER_MEDIACENTER_H
#define SRC_MEDIACENTER_MEDIACENTER_H
// The media store: one per application, owned by the game manager. It keeps, per
// kind of media, the list of records and the highest number ever given out, and
// keeps both on disk in the gallery's index files, which every program on the
// device shares. Creating, storing and deleting media go through a protected
// operation, a one-entry journal that the next start finishes or undoes.
#include <string>

#include "MediaCenter/ResInfo.h"

class Archive;
class GameManager;

enum EMediaErrorCode {
  eMedia_Ok = 1,       // there is room
  eMedia_NoSpace = 2,  // there is not
};

// The size of the device's media disk in bytes (1.7 GiB).
extern const double MEDIA_DEVICE_DISK_BYTES;

class MediaCenter {
 public:
  enum eProtectedOperType {
    ePOT_Invalid = 0,
    ePOT_Create = 1,
    ePOT_Delete = 2,
    ePOT_Num = 3,
  };

  // Per type: index file base name, XML root and item names, check file base name,
  // index version.
  static const char* const scResInfoSaveFileName[eRT_Num];
  static const char* const scResInfoXmlNodeName[eRT_Num];
  static const char* const scResInfoXmlItemName[eRT_Num];
  static const char* const scResSaveCheckFileName[eRT_Num];
  static const unsigned scResFileVersion[eRT_Num];

  explicit MediaCenter(GameManager* manager);
  ~MediaCenter();
  void Initialize();
  void Destroy();

  // Records and index files.
  void InitResInfo(EResType type, const std::string& folder);
  void LoadResInfo(EResType resType);
  void LoadResInfoFromBin(EResType resType);
  void LoadResInfoFromXml(EResType resType);
  void SaveResInfo(EResType resType);
  void SaveResInfoToBin(EResType resType);
  void SaveResInfoToXml(EResType resType);
  void CheckResInfo(EResType type);
  bool IsResCorrupted(const ResInfo& resInfo);
  ResInfoList& GetResInfoList(EResType type);
  ResInfo* GetResInfo(EResType type, int id, bool withThumb);
  ResInfo* GetResInfo(EResType type, const std::string& name, bool withThumb);
  ResInfoListIt GetResInfoIt(EResType type, int id);
  ResInfo* getLastPhotoRes();
  void SortStoryStudioResInfo();
  static bool SSVersionSort(const ResInfo& first, const ResInfo& second);
  ResInfoListIt GetStoryStudioResInfoIt(int version);
  ResInfoListIt GetStoryStudioResInfoItEnd(int version);

  // Life cycle. The three picture writers (StoreImageToDisk, StoreThumbToDisk,
  // StoreCoverToDisk) belong to the image pipeline.
  int GenerateNewResId(EResType type);
  void RefreshMaxIdIndex(EResType type, int id);
  std::string GenerateResName(EResType type, ResID resId);
  ResInfo* CreateNewRes(EResType resType);
  EMediaErrorCode RequestResSpace(EResType resType);
  unsigned availableMediaBytes();
  float MediaConsumedRatio();
  int availableVideoDuration();
  std::string temporaryAudioName();
  std::string temporaryVideoName();
  void StartOperProtected(EResType resType, ResID resId, eProtectedOperType operType);
  void EndOperProtected(EResType type);
  void StoreAudioToDisk(EResType type, int id);
  void StoreVideoToDisk(int id);
  void DeleteRes(EResType type, ResID resid, bool);
  void DeleteRes(EResType type, ResInfo* resInfo, bool);

  // Derived picture names.
  std::string GetThumbImageName(const std::string& path);
  std::string GetCoverPhotoName(const std::string& path);

  // Upload lists.
  void WriteUploadFileIncreased(const ResInfo* inResInfo);
  void WriteUploadPath(const std::string& kind);
  void UploadFileDeleteItem(EResType type, const std::string& item);
  void StoreStoryBookUploadInfo(const ResInfo* inResInfo);

  EResType GetOperResType() const { return mOperResType; }
  unsigned GetMaxResId(EResType type) const { return mMaxResId[type]; }
  const std::string& GetResPath(EResType type) const { return mResPath[type]; }

 private:
  MediaCenter(const MediaCenter&);
  MediaCenter& operator=(const MediaCenter&);

  // The folder of a type's index, check file and resid.bin.
  std::string IndexDirectory(EResType type) const;
  std::string CheckFileName(EResType type) const;

  EResType mOperResType;
  GameManager* mGameManager;
  Archive* mArchiver;
  unsigned mMaxResId[eRT_Num];
  ResInfoList mResInfoList[eRT_Num];
  std::string mResPath[eRT_Num];
};

#endif
