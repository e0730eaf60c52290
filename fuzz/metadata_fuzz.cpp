// Metadata files (meta.json): read, asked for every field, changed and written
// back; what is written must read back the same.
#include "CMetaInfo.h"
#include "FuzzSupport.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  const std::string folder = fuzz::ScratchFolder();
  fuzz::WriteFile(folder + "meta.json", data, size);
  Glib::ustring packageId;
  {
    Catalog::CMetaInfo meta(folder);
    packageId = meta.GetPackageId();
    meta.GetProductId();
    meta.GetDeviceType();
    meta.GetPackageType().IsKnown();
    meta.GetPartNumber();
    meta.GetPackageVersion();
    meta.GetTagString("PathToUploadContentList");
    meta.HasTag("OptionalUpload");
    meta.SetTagString("OptionalUpload", "1");
    if (!meta.Save()) return 0;
  }
  Catalog::CMetaInfo again(folder);
  if (!again.IsValid() || again.GetPackageId() != packageId || again.GetTagString("OptionalUpload") != "1") {
    __builtin_trap();  // what we write we must read
  }
  return 0;
}
