#pragma once
// The device's file-system utilities.
#include <glibmm/ustring.h>

#include "PlatformTypes.h"

// What EnumFolder reports.
enum tFileSelect {
  kFileSelectFiles = 0,
  kFileSelectFolders = 1,
  kFileSelectAll = 2,
};

// Called for each entry, with its full path; returning 0 stops the walk.
typedef int (*tEnumFolderCallback)(const Glib::ustring& entry, void* context);

class BaseUtils {
 public:
  // The device's one instance; never null on the simulated device.
  static BaseUtils* Instance();

  // Calls `callback` for the entries of `folder` selected by `select`, in name
  // order, until it returns 0. Returns false when the folder cannot be read.
  bool EnumFolder(const Glib::ustring& folder, tEnumFolderCallback callback, tFileSelect select, void* context) const;

  bool FileIsDir(const Glib::ustring& path) const;
  bool DirectoryExists(const Glib::ustring& path) const;
  // Makes one folder (its parent must exist); true when it exists afterwards.
  bool CreateDirectory(const Glib::ustring& path) const;
  // Removes a file or an empty folder; true on success.
  bool RM(const Glib::ustring& path) const;
  // Removes a file or a folder with everything in it; true when nothing remains.
  bool RMTree(const Glib::ustring& path) const;
  // Free bytes on the media disk, held to 32 bits, unless the device is told a number.
  U32 GetBulkFreeBytes() const;

 private:
  BaseUtils() = default;
};
