#pragma once
// The metadata of a folder: which package owns it, for which product and device,
// what kind of content it holds, and free-form tags. It is kept in the folder as
// the file "meta.json"; what is set on the object is written back, whole, when
// the object ends (or at Save).
#include <glibmm/ustring.h>

#include <map>
#include <string>

#include "PlatformTypes.h"

namespace Catalog {

// The kinds of content a package can hold, by name. A kind word outside the
// table is kept as it is and reported as unknown.
const char* const kPackageTypeNames[] = {
    "Application",  // a title
    "Photos", "Videos", "Audio", "Art", "StoryBooks",
    "MicroMod",  // downloadable content for a title
};
const int kPackageTypeCount = sizeof(kPackageTypeNames) / sizeof(kPackageTypeNames[0]);

class tPackageType {
 public:
  tPackageType() {}
  explicit tPackageType(const Glib::ustring& kind) : mName(kind) {}
  const Glib::ustring& Name() const { return mName; }
  // Whether the name is one of kPackageTypeNames.
  bool IsKnown() const;
  bool operator==(const tPackageType& other) const { return mName == other.mName; }

 private:
  Glib::ustring mName;
};

class CMetaInfo {
 public:
  // Reads `folder`/meta.json. A folder without one (or with one that is not a
  // JSON object) gives an invalid record with empty fields.
  explicit CMetaInfo(const Glib::ustring& folder);
  // Writes meta.json back if anything was set since it was read.
  ~CMetaInfo();

  // Whether the folder had a readable meta.json.
  bool IsValid() const { return mValid; }
  // The file that holds the record.
  const std::string& GetPath() const { return mPath; }

  Glib::ustring GetPackageId() const { return mPackageId; }
  U32 GetProductId() const { return mProductId; }
  Glib::ustring GetDeviceType() const { return mDeviceType; }
  tPackageType GetPackageType() const { return mPackageType; }
  Glib::ustring GetPartNumber() const { return mPartNumber; }
  Glib::ustring GetPackageVersion() const { return mVersion; }
  // The tag's value, empty when the tag is absent.
  Glib::ustring GetTagString(const Glib::ustring& tag) const;
  bool HasTag(const Glib::ustring& tag) const;

  void SetPackageId(const Glib::ustring& packageId);
  void SetProductId(U32 productId);
  void SetDeviceType(const Glib::ustring& deviceType);
  void SetPackageType(const tPackageType& packageType);
  void SetPartNumber(const Glib::ustring& partNumber);
  void SetPackageVersion(const Glib::ustring& version);
  void SetTagString(const Glib::ustring& tag, const Glib::ustring& value);

  // Writes meta.json now, whole (through fopenAtomic), if anything was set;
  // true when nothing needed writing or the file was written.
  bool Save();

 private:
  CMetaInfo(const CMetaInfo&);
  CMetaInfo& operator=(const CMetaInfo&);

  std::string mPath;
  bool mValid;
  bool mDirty;
  Glib::ustring mPackageId;
  U32 mProductId;
  Glib::ustring mDeviceType;
  tPackageType mPackageType;
  Glib::ustring mPartNumber;
  Glib::ustring mVersion;
  std::map<std::string, std::string> mTags;
};

}  // namespace Catalog
