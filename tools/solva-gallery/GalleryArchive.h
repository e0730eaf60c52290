#pragma once
// The device's archive for a gallery that lies under another root than the
// device's own. The device runs on a scratch root, so that nothing of the gallery
// is touched by setting it up; every folder the archive computes there is moved
// over to the gallery's root. When the store only looks, its index and upload
// folders stay in the scratch root, holding copies of the gallery's, and the
// files it deletes elsewhere are only noted.
#include <string>
#include <vector>

#include "MediaCenter/VT/ZvArchive.h"

class GalleryArchive : public ZvArchive {
 public:
  // `galleryRoot` and `scratchRoot` end in a slash; the device's root must be
  // `scratchRoot`. With `repair` the store works on the gallery itself.
  GalleryArchive(const std::string& galleryRoot, const std::string& scratchRoot, bool repair);

  void Initialize(int mask) override;
  bool ArchiveDeleteFile(const std::string& path) const override;

  // Every file the store asked to delete, in order, done or not.
  const std::vector<std::string>& Deleted() const { return mDeleted; }

 private:
  // `field`, a folder under the scratch root, moved to the gallery's root; with
  // `copy`, it stays and gets copies of the gallery folder's files.
  void Place(std::string& field, bool copy);

  const std::string mGalleryRoot;
  const std::string mScratchRoot;
  const bool mRepair;
  mutable std::vector<std::string> mDeleted;
};
