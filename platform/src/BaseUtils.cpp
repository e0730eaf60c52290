#include "BaseUtils.h"

#include <dirent.h>
#include <sys/stat.h>
#include <sys/statvfs.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <string>
#include <vector>

#include "FaultInjection.h"
#include "Storage.h"
#include "solva/Device.h"

BaseUtils* BaseUtils::Instance() {
  static BaseUtils instance;
  return &instance;
}

bool BaseUtils::EnumFolder(const Glib::ustring& folder, tEnumFolderCallback callback, tFileSelect select,
                           void* context) const {
  DIR* dir = opendir(folder.c_str());
  if (dir == nullptr) return false;
  std::vector<std::string> names;
  while (dirent* entry = readdir(dir)) {
    const std::string name = entry->d_name;
    if (name != "." && name != "..") names.push_back(name);
  }
  closedir(dir);
  // Name order, so that a walk is the same on every run.
  std::sort(names.begin(), names.end());

  std::string base = folder.raw();
  if (base.empty() || base.back() != '/') base += '/';
  for (const std::string& name : names) {
    const std::string path = base + name;
    const bool isDir = FileIsDir(path);
    if ((select == kFileSelectFiles && isDir) || (select == kFileSelectFolders && !isDir)) continue;
    if (callback(path, context) == 0) break;
  }
  return true;
}

bool BaseUtils::FileIsDir(const Glib::ustring& path) const {
  struct stat info;
  return stat(path.c_str(), &info) == 0 && S_ISDIR(info.st_mode);
}

bool BaseUtils::DirectoryExists(const Glib::ustring& path) const { return FileIsDir(path); }

bool BaseUtils::CreateDirectory(const Glib::ustring& path) const {
  return mkdir(path.c_str(), 0755) == 0 || (errno == EEXIST && FileIsDir(path));
}

namespace {
// One removal is one file operation of the device: the power can go after it.
bool Removed(int result) {
  const int saved = errno;
  solva::detail::FileOperationDone();
  errno = saved;
  return result == 0;
}
}  // namespace

bool BaseUtils::RM(const Glib::ustring& path) const {
  if (FileIsDir(path)) return Removed(rmdir(path.c_str()));
  return Removed(unlink(path.c_str()));
}

bool BaseUtils::RMTree(const Glib::ustring& path) const {
  struct stat info;
  if (lstat(path.c_str(), &info) != 0) return errno == ENOENT;
  if (S_ISDIR(info.st_mode)) {
    std::vector<std::string> entries;
    EnumFolder(
        path,
        [](const Glib::ustring& entry, void* list) {
          static_cast<std::vector<std::string>*>(list)->push_back(entry.raw());
          return 1;
        },
        kFileSelectAll, &entries);
    for (const std::string& entry : entries) RMTree(entry);
    return Removed(rmdir(path.c_str()));
  }
  return Removed(unlink(path.c_str()));
}

U32 BaseUtils::GetBulkFreeBytes() const {
  const int64_t told = solva::detail::Storage().freeBytes;
  if (told >= 0) return told > 0xFFFFFFFFll ? 0xFFFFFFFFu : U32(told);
  struct statvfs info;
  if (statvfs(solva::DeviceRoot().c_str(), &info) != 0) return 0;
  const unsigned long long free = static_cast<unsigned long long>(info.f_bavail) * info.f_frsize;
  return free > 0xFFFFFFFFull ? 0xFFFFFFFFu : U32(free);
}
