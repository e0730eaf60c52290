#ifndef SRC_MEDIACENTER_ARCHIVE_H
#define SRC_MEDIACENTER_ARCHIVE_H
// Where things live: the folders of the gallery, the free room and the current
// player. ZvArchive binds it to the device.

class Archive {
 public:
  Archive() {}
  virtual ~Archive() {}
  virtual void Initialize(int /*mask*/) {}
  virtual void Destroy() {}
};

#endif
