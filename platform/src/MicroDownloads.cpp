// Downloaded content: each of a player's downloaded folders lies in
// ROOT/MicroDownloads/PlayerN/.
#include <algorithm>
#include <filesystem>
#include <string>
#include <system_error>
#include <vector>

#include "CMicroDownloads.h"
#include "solva/Device.h"
#include "solva/Downloads.h"

namespace fs = std::filesystem;

namespace {

std::string PlayerFolder(int32_t player) {
  return solva::DeviceRoot() + "MicroDownloads/Player" + std::to_string(player) + "/";
}

// An install in progress is copied under a name that starts with a dot, and no
// such name is a download.
const char kPartialPrefix[] = ".installing-";

}  // namespace

namespace Catalog {

CMicroDownloads::CMicroDownloads() {}
CMicroDownloads::~CMicroDownloads() {}

std::vector<Glib::ustring> CMicroDownloads::get(tPlayerID player) {
  std::vector<std::string> names;
  std::error_code error;
  for (fs::directory_iterator entry(PlayerFolder(player), error), end; !error && entry != end;
       entry.increment(error)) {
    const std::string name = entry->path().filename().string();
    if (name.empty() || name[0] == '.' || !entry->is_directory(error)) continue;
    names.push_back(name);
  }
  // Name order, so that every start sees the mods in the same order.
  std::sort(names.begin(), names.end());
  std::vector<Glib::ustring> folders;
  for (const std::string& name : names) folders.push_back(PlayerFolder(player) + name);
  return folders;
}

}  // namespace Catalog

namespace solva {

std::string MicroDownloadsFolder(int32_t player) {
  const std::string folder = PlayerFolder(player);
  std::error_code ignored;
  fs::create_directories(folder, ignored);
  return folder;
}

bool InstallMicroMod(int32_t player, const std::string& folder, std::string* error, std::string* installed) {
  auto fail = [&](const std::string& what) {
    if (error) *error = what;
    return false;
  };
  std::error_code code;
  const fs::path source = fs::path(folder).lexically_normal();
  if (!fs::is_directory(source, code)) return fail("no mod folder " + folder);
  if (!fs::is_regular_file(source / "meta.json", code)) {
    return fail("the mod folder " + folder + " has no meta.json (its package id and \"ModKitType\" tag)");
  }
  std::string name = source.filename().string();
  if (name.empty()) name = source.parent_path().filename().string();  // "DIR/" names DIR
  if (name.empty() || name == "." || name == "..") return fail("the mod folder " + folder + " has no name to keep");

  // Copied beside its place first, so that a copy that fails leaves the player's
  // downloads as they were.
  const std::string downloads = MicroDownloadsFolder(player);
  const fs::path partial = downloads + kPartialPrefix + name;
  const fs::path target = downloads + name;
  fs::remove_all(partial, code);
  fs::copy(source, partial, fs::copy_options::recursive, code);
  if (!code) {
    fs::remove_all(target, code);
    if (!code) fs::rename(partial, target, code);
  }
  if (code) {
    const std::string why = code.message();
    fs::remove_all(partial, code);
    return fail("cannot install the mod folder " + folder + " as " + target.string() + ": " + why);
  }
  if (installed) *installed = target.string();
  return true;
}

}  // namespace solva
