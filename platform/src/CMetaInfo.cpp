#include "CMetaInfo.h"

#include <cstdio>
#include <nlohmann/json.hpp>

#include "WholeFile.h"

namespace Catalog {

namespace {

using Json = nlohmann::ordered_json;

// The keys of meta.json.
const char kPackageIdKey[] = "packageId";
const char kProductIdKey[] = "productId";
const char kDeviceTypeKey[] = "deviceType";
const char kPackageTypeKey[] = "packageType";
const char kPartNumberKey[] = "partNumber";
const char kVersionKey[] = "version";
const char kTagsKey[] = "tags";

std::string TextOf(const Json& object, const char* key) {
  auto found = object.find(key);
  if (found == object.end()) return std::string();
  if (found->is_string()) return found->get<std::string>();
  if (found->is_number() || found->is_boolean()) return found->dump();
  return std::string();
}

}  // namespace

bool tPackageType::IsKnown() const {
  for (int i = 0; i < kPackageTypeCount; ++i) {
    if (mName == kPackageTypeNames[i]) return true;
  }
  return false;
}

CMetaInfo::CMetaInfo(const Glib::ustring& folder) : mValid(false), mDirty(false), mProductId(0) {
  mPath = folder.raw();
  if (!mPath.empty() && mPath.back() != '/') mPath += '/';
  mPath += "meta.json";

  std::string text;
  if (!solva::detail::ReadWholeFile(mPath, &text)) return;
  Json json;
  try {
    json = Json::parse(text);
  } catch (const Json::exception& error) {
    printf("[CMetaInfo] %s is not readable: %s\n", mPath.c_str(), error.what());
    return;
  }
  if (!json.is_object()) return;
  mValid = true;
  mPackageId = TextOf(json, kPackageIdKey);
  auto product = json.find(kProductIdKey);
  if (product != json.end() && product->is_number_integer()) mProductId = product->get<U32>();
  mDeviceType = TextOf(json, kDeviceTypeKey);
  mPackageType = tPackageType(TextOf(json, kPackageTypeKey));
  mPartNumber = TextOf(json, kPartNumberKey);
  mVersion = TextOf(json, kVersionKey);
  auto tags = json.find(kTagsKey);
  if (tags != json.end() && tags->is_object()) {
    for (auto tag = tags->begin(); tag != tags->end(); ++tag) mTags[tag.key()] = TextOf(*tags, tag.key().c_str());
  }
}

CMetaInfo::~CMetaInfo() { Save(); }

Glib::ustring CMetaInfo::GetTagString(const Glib::ustring& tag) const {
  auto found = mTags.find(tag.raw());
  return found == mTags.end() ? Glib::ustring() : Glib::ustring(found->second);
}

bool CMetaInfo::HasTag(const Glib::ustring& tag) const { return mTags.count(tag.raw()) != 0; }

void CMetaInfo::SetPackageId(const Glib::ustring& packageId) {
  mPackageId = packageId;
  mDirty = true;
}

void CMetaInfo::SetProductId(U32 productId) {
  mProductId = productId;
  mDirty = true;
}

void CMetaInfo::SetDeviceType(const Glib::ustring& deviceType) {
  mDeviceType = deviceType;
  mDirty = true;
}

void CMetaInfo::SetPackageType(const tPackageType& packageType) {
  mPackageType = packageType;
  mDirty = true;
}

void CMetaInfo::SetPartNumber(const Glib::ustring& partNumber) {
  mPartNumber = partNumber;
  mDirty = true;
}

void CMetaInfo::SetPackageVersion(const Glib::ustring& version) {
  mVersion = version;
  mDirty = true;
}

void CMetaInfo::SetTagString(const Glib::ustring& tag, const Glib::ustring& value) {
  mTags[tag.raw()] = value.raw();
  mDirty = true;
}

bool CMetaInfo::Save() {
  if (!mDirty) return true;
  Json json = Json::object();
  json[kPackageIdKey] = mPackageId.raw();
  json[kProductIdKey] = mProductId;
  json[kDeviceTypeKey] = mDeviceType.raw();
  json[kPackageTypeKey] = mPackageType.Name().raw();
  json[kPartNumberKey] = mPartNumber.raw();
  json[kVersionKey] = mVersion.raw();
  Json tags = Json::object();
  for (const auto& tag : mTags) tags[tag.first] = tag.second;
  json[kTagsKey] = tags;
  if (!solva::detail::WriteWholeFile(mPath, json.dump(2) + "\n")) return false;
  mDirty = false;
  mValid = true;
  return true;
}

}  // namespace Catalog
