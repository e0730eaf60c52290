// The gallery's index files, binary and XML form: the first byte chooses the
// form (its top bit) and the type (the rest, modulo the nine types); the rest is
// the file. The store reads it as it does at start, then is asked about it. A
// record of a type outside the table is the documented assertion.
#include "FuzzSupport.h"
#include "MediaFuzz.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  if (size < 1) return 0;
  const bool xml = (data[0] & 0x80) != 0;
  const EResType type = static_cast<EResType>((data[0] & 0x7F) % eRT_Num);
  fuzz::RunOrAssert([&] {
    fuzz::FreshDevice(fuzz::StoreTitle());
    fuzz::StoreGame game;
    MediaCenter& store = game.store();
    const std::string folder = type == eRT_ScrapBook && !xml ? game.archive().mPlayerRootPath
                                                             : game.archive().mFileIndexPath;
    fuzz::WriteFile(folder + MediaCenter::scResInfoSaveFileName[type] + (xml ? ".xml" : ".bin"), data + 1,
                    size - 1);
    if (xml) {
      store.LoadResInfoFromXml(type);
    } else {
      store.LoadResInfo(type);
    }
    for (const ResInfo& record : store.GetResInfoList(type)) store.GetResInfo(type, record.mName, false);
    store.GetResInfo(type, 1, false);
  });
  return 0;
}
