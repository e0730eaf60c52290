#ifndef SRC_MEDIACENTER_ARCHIVE_H
#define SRC_MEDIACENTER_ARCHIVE_H
// Where things live: the folders of the gallery, the free room and the current
// player. ZvArchive binds it to the device; the media store only reads its fields.
#include <string>
#include <vector>

class Archive {
 public:
  Archive();
  virtual ~Archive();

  virtual void Initialize(int mask);
  virtual void Destroy();
  // Points the story paths at one story ("/SD-<play>-<id>/"); makes no folder.
  virtual void CreateScrapBookSubFolder(const std::string& subFolder) = 0;
  // Appends the files of `path` to `names` (with `recursive`, those of its
  // subfolders too) and cuts every name to its last part; false when none was found.
  virtual bool GetAllFileNameInPath(const std::string& path, const std::string& pattern,
                                    std::vector<std::string>& names, int recursive) const = 0;
  // The size of the file, 0 when it cannot be asked.
  virtual int GetFileSize(const std::string& path) const;
  virtual unsigned GetAvailableDiskSpace() const = 0;
  virtual bool ArchiveDeleteFile(const std::string& path) const = 0;
  virtual int GetUserType() const = 0;
  virtual std::string GetCountryLocaleId() const = 0;
  virtual unsigned otherPlayerPrivateSize() = 0;
  virtual int getCurrentPlayID();

  // Whether the file opens for reading.
  bool IsFileExist(const std::string& path) const;
  bool IsFileInDirectory(const std::string& name, const std::string& dir) const;

  // Every folder ends in a slash once set.
  std::string mTitlePath;
  std::string mPlayerDataPath;
  std::string mFileIndexPath;
  std::string mPhotoPath;
  std::string mPhotoThumbPath;
  std::string mVideoPath;
  std::string mVideoThumbPath;
  std::string mVideoCoverPath;
  std::string mMusicPath;
  std::string mArtPath;
  std::string mArtThumbPath;
  std::string mScrapBookPath;
  std::string mPlayerRootPath;
  std::string mScrapBookAudioPath;
  std::string mScrapBookImagePath;
  std::string mUploadPhotoPath;
  std::string mUploadVideoPath;
  std::string mUploadMusicPath;
  std::string mUploadArtPath;
  std::string mUploadStoryPath;
  int mCurrentPlayerId;
};

#endif
