#include "CPlayerProfile.h"

#include <cstdio>
#include <nlohmann/json.hpp>

#include "WholeFile.h"
#include "BaseUtils.h"
#include "CSystemData.h"
#include "SolvaFileOps.h"

namespace Catalog {

namespace {

using Json = nlohmann::ordered_json;

const char kProfileName[] = "profile.json";
const char kBadgesKey[] = "badges";
const char kUnreadableSuffix[] = ".unreadable";

std::string RunningPackage() { return CSystemData::Instance()->GetCurrentGamePackageID().raw(); }

// Reads "badges": {"<package id>": [id, ...], ...}. False when it has another shape.
bool ReadBadges(const Json& profile, std::map<std::string, std::set<U16> >* badges) {
  auto found = profile.find(kBadgesKey);
  if (found == profile.end()) return true;
  if (!found->is_object()) return false;
  for (auto package = found->begin(); package != found->end(); ++package) {
    if (!package->is_array()) return false;
    std::set<U16>& ids = (*badges)[package.key()];
    for (const Json& id : *package) {
      if (!id.is_number_unsigned() || id.get<uint64_t>() > 0xFFFF) return false;
      ids.insert(U16(id.get<uint64_t>()));
    }
  }
  return true;
}

}  // namespace

CPlayerProfile::CPlayerProfile(tPlayerID player) : mPlayer(player), mUnreadable(false) {
  mPath = CSystemData::Instance()->GetLocalDataPath(player, "").raw() + kProfileName;
  if (!solva::detail::ReadWholeFile(mPath, &mReadText)) return;
  Json json;
  try {
    json = Json::parse(mReadText);
  } catch (const Json::exception& error) {
    printf("[CPlayerProfile] %s is not readable: %s\n", mPath.c_str(), error.what());
    mUnreadable = true;
    return;
  }
  if (!json.is_object() || !ReadBadges(json, &mBadges)) {
    printf("[CPlayerProfile] %s is not readable: it is not a profile\n", mPath.c_str());
    mBadges.clear();
    mUnreadable = true;
  }
}

CPlayerProfile::~CPlayerProfile() {}

bool CPlayerProfile::AddBadge(U16 id) { return mBadges[RunningPackage()].insert(id).second; }

bool CPlayerProfile::HasBadge(U16 id) const {
  auto found = mBadges.find(RunningPackage());
  return found != mBadges.end() && found->second.count(id) != 0;
}

std::vector<U16> CPlayerProfile::GetBadges() const {
  auto found = mBadges.find(RunningPackage());
  if (found == mBadges.end()) return std::vector<U16>();
  return std::vector<U16>(found->second.begin(), found->second.end());
}

bool CPlayerProfile::Save() {
  const std::string folder = mPath.substr(0, mPath.size() - sizeof(kProfileName) + 1);
  if (!BaseUtils::Instance()->CreateDirectory(folder)) {
    printf("[CPlayerProfile] cannot make the folder %s; the profile is not saved.\n", folder.c_str());
    return false;
  }
  Json json = Json::object();
  if (mUnreadable) {
    const std::string aside = mPath + kUnreadableSuffix;
    if (solvaRename(mPath.c_str(), aside.c_str()) != 0) {
      printf("[CPlayerProfile] cannot move the unreadable %s aside; the profile is not saved.\n", mPath.c_str());
      return false;
    }
    printf("[CPlayerProfile] the unreadable profile was kept as %s\n", aside.c_str());
    mUnreadable = false;
    mReadText.clear();
  } else if (!mReadText.empty()) {
    json = Json::parse(mReadText);  // read without fault at construction
  }
  Json badges = Json::object();
  for (const auto& package : mBadges) {
    if (package.second.empty()) continue;
    badges[package.first] = Json(std::vector<U16>(package.second.begin(), package.second.end()));
  }
  json[kBadgesKey] = badges;
  const std::string text = json.dump(2) + "\n";

  if (!solva::detail::WriteWholeFile(mPath, text)) {
    printf("[CPlayerProfile] cannot write %s; the profile is not saved.\n", mPath.c_str());
    return false;
  }
  mReadText = text;
  return true;
}

}  // namespace Catalog
