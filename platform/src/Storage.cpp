#include "Storage.h"

#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <mutex>
#include <vector>

#include "DeviceReset.h"
#include "solva/Device.h"

namespace solva {
namespace detail {

namespace {

std::mutex gResetLock;
std::vector<void (*)()>& ResetHooks() {
  static std::vector<void (*)()> hooks;
  return hooks;
}

// The folders a device ships with, below its root.
const char* const kFactoryFolders[] = {
    "LocalData/",
    "LocalData/Shared/",
    "LocalData/Shared/FileIndex/",
    "LocalData/Shared/Photos/",
    "LocalData/Shared/Photos/Thumb/",
    "LocalData/Shared/Videos/",
    "LocalData/Shared/Videos/Thumb/",
    "LocalData/Shared/Videos/Cover/",
    "LocalData/Shared/Music/",
    "LocalData/Shared/Art/",
    "LocalData/Shared/Art/Thumb/",
    "Upload/",
    "Upload/PhotosPkg/",
    "Upload/VideosPkg/",
    "Upload/MusicPkg/",
    "Upload/ArtPkg/",
    "Upload/StoryBooks/",
};

bool MakeFolder(const std::string& path, std::string* error) {
  if (mkdir(path.c_str(), 0755) == 0 || errno == EEXIST) return true;
  if (error) *error = "cannot make the folder " + path + ": " + strerror(errno);
  return false;
}

// Makes `path` and the folders above it.
bool MakeFolders(const std::string& path, std::string* error) {
  for (size_t slash = path.find('/', 1); slash != std::string::npos; slash = path.find('/', slash + 1)) {
    if (!MakeFolder(path.substr(0, slash), error)) return false;
  }
  return MakeFolder(path, error);
}

std::string DefaultRoot() {
  const char* tmp = getenv("TMPDIR");
  return std::string(tmp && *tmp ? tmp : "/tmp") + "/solva-device-" + std::to_string(getuid()) + "/";
}

void ResetStorage() { Storage() = StorageState(); }
ResetHook gStorageReset(&ResetStorage);

}  // namespace

ResetHook::ResetHook(void (*reset)()) {
  std::lock_guard<std::mutex> lock(gResetLock);
  ResetHooks().push_back(reset);
}

void RunResetHooks() {
  std::lock_guard<std::mutex> lock(gResetLock);
  for (void (*reset)() : ResetHooks()) reset();
}

StorageState& Storage() {
  static StorageState state;
  return state;
}

std::string FolderPath(const std::string& path) {
  std::string out;
  out.reserve(path.size() + 1);
  for (char c : path) {
    if (c == '/' && !out.empty() && out.back() == '/') continue;
    out += c;
  }
  if (out.empty() || out.back() != '/') out += '/';
  return out;
}

}  // namespace detail

void ResetDevice() { detail::RunResetHooks(); }

bool SetDeviceRoot(const std::string& root, std::string* error) {
  const std::string folder = detail::FolderPath(root);
  if (!detail::MakeFolders(folder.substr(0, folder.size() - 1), error)) return false;
  for (const char* sub : detail::kFactoryFolders) {
    if (!detail::MakeFolder(folder + sub, error)) return false;
  }
  const std::string player = folder + "LocalData/Player" + std::to_string(detail::Storage().player) + "/";
  if (!detail::MakeFolder(player, error)) return false;
  detail::Storage().root = folder;
  return true;
}

std::string DeviceRoot() {
  if (detail::Storage().root.empty()) SetDeviceRoot(detail::DefaultRoot());
  return detail::Storage().root;
}

void SetTitlePath(const std::string& folder) { detail::Storage().titlePath = detail::FolderPath(folder); }

void SetCurrentPlayer(int32_t player) {
  detail::Storage().player = player;
  // A player's own root exists on a device that knows the player.
  if (!detail::Storage().root.empty() && player >= 0) {
    detail::MakeFolder(detail::Storage().root + "LocalData/Player" + std::to_string(player), nullptr);
  }
}

void SetPackageId(const std::string& packageId) { detail::Storage().packageId = packageId; }
void SetLocale(const std::string& locale) { detail::Storage().locale = locale; }
void SetFreeBytes(int64_t bytes) { detail::Storage().freeBytes = bytes; }

}  // namespace solva
