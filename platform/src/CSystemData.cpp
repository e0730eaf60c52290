#include "CSystemData.h"

#include <unistd.h>

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
