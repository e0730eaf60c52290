#include "CSystemData.h"

#include <dirent.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <string>
#include <vector>

#include "Storage.h"
#include "solva/Device.h"

using solva::detail::FolderPath;
using solva::detail::Storage;

CSystemData* CSystemData::Instance() {
  static CSystemData instance;
  return &instance;
}

tPlayerID CSystemData::GetCurrentPlayerID() const { return Storage().player; }

Glib::ustring CSystemData::GetCurrentGamePackageID() const { return Storage().packageId; }

Glib::ustring CSystemData::GetLocaleCode() const { return Storage().locale; }

Glib::ustring CSystemData::GetCurrentTitlePath() const {
  if (!Storage().titlePath.empty()) return Storage().titlePath;
  // No title folder was set: the title runs where it was started.
  char here[4096] = {0};
  return FolderPath(getcwd(here, sizeof here) ? here : ".");
}

Glib::ustring CSystemData::GetLocalDataPath(tPlayerID player, const Glib::ustring& sub) const {
  const std::string owner = player == kSharedPlayerID ? "Shared" : "Player" + std::to_string(player);
  return FolderPath(solva::DeviceRoot() + "LocalData/" + owner + "/" + sub.raw());
}

Glib::ustring CSystemData::GetUploadDataPath(const Glib::ustring& sub) const {
  return FolderPath(solva::DeviceRoot() + "Upload/" + sub.raw());
}

namespace {

bool IsFile(const std::string& path) {
  struct stat info;
  return stat(path.c_str(), &info) == 0 && S_ISREG(info.st_mode);
}

// Depth-first search for a file called `name` below `folder`.
std::string FindBelow(const std::string& folder, const std::string& name, int depth) {
  if (IsFile(folder + name)) return folder + name;
  if (depth == 0) return std::string();
  DIR* dir = opendir(folder.c_str());
  if (!dir) return std::string();
  std::vector<std::string> subs;
  while (dirent* entry = readdir(dir)) {
    const std::string sub = entry->d_name;
    if (sub == "." || sub == "..") continue;
    struct stat info;
    if (stat((folder + sub).c_str(), &info) == 0 && S_ISDIR(info.st_mode)) subs.push_back(folder + sub + "/");
  }
  closedir(dir);
  std::sort(subs.begin(), subs.end());
  for (const std::string& sub : subs) {
    const std::string found = FindBelow(sub, name, depth - 1);
    if (!found.empty()) return found;
  }
  return std::string();
}

const char* const kSystemFontFolders[] = {"/usr/share/fonts/", "/usr/local/share/fonts/"};
const char kFallbackFont[] = "/usr/share/fonts/truetype/dejavu/DejaVuSans.ttf";

}  // namespace

Glib::ustring CSystemData::FindFont(const Glib::ustring& name) {
  const std::string file = name.raw();
  if (!file.empty() && file[0] == '/' && IsFile(file)) return file;
  if (!file.empty() && file.find('/') == std::string::npos) {
    const std::string title = Instance()->GetCurrentTitlePath().raw();
    for (const char* sub : {"", "res/", "res/Fonts/", "res/fonts/", "Fonts/"}) {
      if (IsFile(title + sub + file)) return title + sub + file;
    }
    if (IsFile(solva::DeviceRoot() + "Fonts/" + file)) return solva::DeviceRoot() + "Fonts/" + file;
    for (const char* folder : kSystemFontFolders) {
      const std::string found = FindBelow(folder, file, 4);
      if (!found.empty()) return found;
    }
  }
  return kFallbackFont;
}
