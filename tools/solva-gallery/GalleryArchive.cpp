#include "GalleryArchive.h"

#include <dirent.h>
#include <sys/stat.h>

#include <fstream>

namespace {

bool StartsWith(const std::string& text, const std::string& start) { return text.compare(0, start.size(), start) == 0; }

// The plain files of `from`, copied into `to`, byte for byte.
void CopyFiles(const std::string& from, const std::string& to) {
  DIR* dir = opendir(from.c_str());
  if (dir == nullptr) return;
  while (dirent* entry = readdir(dir)) {
    const std::string source = from + entry->d_name;
    struct stat info;
    if (stat(source.c_str(), &info) != 0 || !S_ISREG(info.st_mode)) continue;
    std::ifstream in(source, std::ios::binary);
    std::ofstream out(to + entry->d_name, std::ios::binary);
    out << in.rdbuf();
  }
  closedir(dir);
}

}  // namespace

GalleryArchive::GalleryArchive(const std::string& galleryRoot, const std::string& scratchRoot, bool repair)
    : mGalleryRoot(galleryRoot), mScratchRoot(scratchRoot), mRepair(repair) {}

void GalleryArchive::Place(std::string& field, bool copy) {
  if (!StartsWith(field, mScratchRoot)) return;
  const std::string inGallery = mGalleryRoot + field.substr(mScratchRoot.size());
  if (copy) {
    CopyFiles(inGallery, field);
  } else {
    field = inGallery;
  }
}

void GalleryArchive::Initialize(int mask) {
  ZvArchive::Initialize(mask);
  const bool look = !mRepair;
  Place(mFileIndexPath, look);
  Place(mPlayerRootPath, look);
  Place(mUploadPhotoPath, look);
  Place(mUploadVideoPath, look);
  Place(mUploadMusicPath, look);
  Place(mUploadArtPath, look);
  Place(mPlayerDataPath, false);
  Place(mPhotoPath, false);
  Place(mPhotoThumbPath, false);
  Place(mVideoPath, false);
  Place(mVideoThumbPath, false);
  Place(mMusicPath, false);
  Place(mArtPath, false);
  Place(mArtThumbPath, false);
}

bool GalleryArchive::ArchiveDeleteFile(const std::string& path) const {
  mDeleted.push_back(path);
  if (mRepair || StartsWith(path, mScratchRoot)) return ZvArchive::ArchiveDeleteFile(path);
  return true;
}
