// The check files of the protected operations: the first byte chooses the type,
// the second how many of the following bytes are the check file; the rest is the
// type's index. The store finishes or undoes the operation as at start. An
// operation, type or number outside the journal's range is the documented
// assertion.
#include "FuzzSupport.h"
#include "MediaFuzz.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  if (size < 2) return 0;
  const EResType type = static_cast<EResType>(data[0] % eRT_Num);
  const size_t checkSize = std::min<size_t>(data[1], size - 2);
  fuzz::RunOrAssert([&] {
    fuzz::FreshDevice(fuzz::StoreTitle());
    fuzz::StoreGame game;
    MediaCenter& store = game.store();
    const std::string folder =
        type == eRT_ScrapBook ? game.archive().mPlayerRootPath : game.archive().mFileIndexPath;
    fuzz::WriteFile(folder + MediaCenter::scResSaveCheckFileName[type] + ".bin", data + 2, checkSize);
    fuzz::WriteFile(folder + MediaCenter::scResInfoSaveFileName[type] + ".bin", data + 2 + checkSize,
                    size - 2 - checkSize);
    store.LoadResInfo(type);
    store.CheckResInfo(type);
  });
  return 0;
}
