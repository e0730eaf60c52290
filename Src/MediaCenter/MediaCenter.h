#ifndef SRC_MEDIACENTER_MEDIACENTER_H
#define SRC_MEDIACENTER_MEDIACENTER_H
// The media store: one per application, owned by the game manager. It keeps, per
// kind of media, the list of records and the highest number ever given out, and
// keeps both on disk in the gallery's index files, which every program on the
// device shares. Creating, storing and deleting media go through a protected
// operation, a one-entry journal that the next start finishes or undoes.
#include <stdio.h>

#include <string>

#include "MediaCenter/ResInfo.h"

class Archive;
class GameManager;

typedef int BOOL;
// The framework's single-precision number.
typedef float real;

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

  // What reading a type's index file found.
  enum EIndexRead {
    eIndex_Missing,       // no file
    eIndex_OtherVersion,  // a version number not the type's
    eIndex_Damaged,       // it ends inside a record, or before its count of records
    eIndex_Whole,
  };

  // Records and index files.
  void InitResInfo(EResType type, const std::string& folder);
  void LoadResInfo(EResType resType);
  void LoadResInfoFromBin(EResType resType);
  // Appends the records of a type's index file to `records` as the file holds
  // them, and touches nothing else: no list, no maximum, no file. For tools that
  // look at a gallery without changing it.
  EIndexRead ReadResInfoFromBin(EResType resType, ResInfoList& records);
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

  // Life cycle.
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
  // Write a picture as JPEG at its gallery path, with its 80 x 80 thumbnail, or a
  // video's 320 x 240 cover.
  bool StoreImageToDisk(ResInfo* inResInfo, uint8* buf, int width, int height, float scale);
  void StoreThumbToDisk(ResInfo* inResInfo, uint8* buf, int width, int height);
  void StoreCoverToDisk(ResInfo* inResInfo, uint8* buf, int width, int height);
  void DeleteRes(EResType type, ResID resid, bool);
  void DeleteRes(EResType type, ResInfo* resInfo, bool);

  // Pictures. Buffers are plain arrays, rows top to bottom, no padding, 3 bytes a
  // pixel (R, G, B) or 4 (R, G, B, A), made with new[]; whoever receives one frees
  // it with delete[], unless it sits in a record, which then owns it.
  //
  // Decodes a JPEG into a new RGB array, reduced by libjpeg to 1 / scaleDenom; 16
  // goes one halving beyond the library's smallest reduction. False, with the
  // out-arguments untouched, when the file cannot be opened. A grey-scale file is a
  // failed assertion; a corrupt one ends the process through libjpeg.
  BOOL ExtractJpgToRGB8(std::string& path, uint8*& buf, int& width, int& height, int scaleDenom);
  // The same with an alpha of 255.
  BOOL ExtractJpgToRGBA8(std::string& path, uint8*& buf, int& width, int& height, int scaleDenom);
  // A TGA file into a new R, G, B, A array.
  BOOL ExtractTgaToRGBA8(std::string& path, uint8*& buf, int& width, int& height);
  // Writes `rgb` as a baseline JPEG of quality 80, scaled by 0.5, 1 or 2.
  BOOL GenerateJpgFromRGB8(std::string& path, const uint8* rgb, int width, int height, float scale);
  // The size of a JPEG file from its header alone.
  bool GetJpgInfo(std::string& path, int& width, int& height);
  // Bilinear scaling into a new array; `format` 2 is RGBA, anything else RGB. On
  // enlarging, the last rows read one row past the source, so the source must be
  // readable there.
  uint8* ScaleBuffer(int newWidth, int newHeight, int format, int oldWidth, int oldHeight, uint8* src);
  // Quarter turns: angle 90, -90, 270, -270, 180 or -180. The arrays must not overlap.
  void RotateBuf(uint8* dst, uint8* src, int& outWidth, int& outHeight, int width, int height, int angle,
                 int bytesPerPixel);
  // The cubic B-spline weight.
  float KernelBSpline(float x);
  // /x/Videos/vtwgvideo_3.avi gives /x/Videos/Thumb/vtwgvideo_thumb_3.jpg; the
  // cover is the same with "Cover" and "_cover".
  std::string GetThumbImageName(const std::string& path);
  std::string GetCoverPhotoName(const std::string& path);
  // Decode a record's thumbnail or full picture into its buffers, once; the
  // return operations release them again.
  ResInfo* ExtractThumb(ResInfo* InResInfo);
  ResInfo* ExtractMedia(EResType type, int id);
  void ReturnThumb(ResInfo* InResInfo);
  void ReturnThumb(EResType type, int id);
  void ReturnMedia(EResType type, int id);

  // Videos and stories. A video's length and its first frame come from a walk of
  // our own over the AVI file's RIFF chunks, with no video library.
  //
  // Writes the bytes of the first frame chunk ("..dc") of the AVI file `source`,
  // unchanged, as the file `output`: for MJPEG, a JPEG. False, with a message,
  // when the walk fails.
  bool ExtractAVIFrame(const std::string& source, const std::string& output);
  // Moves `stream` to the next place where `fourCC` stands; false at the end of
  // the file. A code that begins inside the three bytes after a wrong first byte
  // is missed.
  bool DescendToSpecificFourCC(FILE* stream, unsigned fourCC) const;
  // Seconds, from the main AVI header of the video numbered `id`; 0 without one.
  real GetVideoLengthByResId(int id);
  // Writes page `page` (from 1) of the story `record` into its folder, which the
  // caller has made: the picture, for page 1 its thumbnail at a third of its size,
  // the upload list's line, and the page's sound (mAudioSrcName) moved into
  // "Audio/". The caller saves the index. The fifth argument is not used.
  void StoreStoryBookToDisk(const ResInfo* record, uint8* rgb, int width, int height, int ignored, int page);

  // Upload lists.
  void WriteUploadFileIncreased(const ResInfo* inResInfo);
  void WriteUploadPath(const std::string& kind);
  void UploadFileDeleteItem(EResType type, const std::string& item);
  void StoreStoryBookUploadInfo(const ResInfo* inResInfo);

  // The folder of a type's index, check file and resid.bin, and its check file.
  std::string IndexDirectory(EResType type) const;
  std::string CheckFileName(EResType type) const;

  EResType GetOperResType() const { return mOperResType; }
  unsigned GetMaxResId(EResType type) const { return mMaxResId[type]; }
  const std::string& GetResPath(EResType type) const { return mResPath[type]; }

 private:
  MediaCenter(const MediaCenter&);
  MediaCenter& operator=(const MediaCenter&);

  // Reads the index file into `list`; with `raiseMaxima` each number read raises
  // the type's maximum at once.
  EIndexRead ParseResInfoBin(EResType resType, ResInfoList& list, bool raiseMaxima);
  // Raises the highest numbers to those of the resid.bin at `path`; never lowers.
  void RaiseMaxResIdsFrom(const std::string& path);
  // ScaleBuffer of an RGB picture that has no row past its last.
  uint8* ScalePicture(int newWidth, int newHeight, int oldWidth, int oldHeight, uint8* src);

  EResType mOperResType;
  GameManager* mGameManager;
  Archive* mArchiver;
  unsigned mMaxResId[eRT_Num];
  ResInfoList mResInfoList[eRT_Num];
  std::string mResPath[eRT_Num];
};

#endif
