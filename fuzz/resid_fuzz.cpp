// resid.bin, the highest number given out per type: read at start, then a save
// that must not lower what it read, then a new record's number.
#include "FuzzSupport.h"
#include "MediaFuzz.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  fuzz::RunOrAssert([&] {
    fuzz::FreshDevice(fuzz::StoreTitle());
    fuzz::StoreGame game;
    MediaCenter& store = game.store();
    const std::string path = game.archive().mFileIndexPath + "resid.bin";
    fuzz::WriteFile(path, data, size);
    store.LoadResInfo(eRT_Audio);
    unsigned before[eRT_Num];
    for (int i = 0; i < eRT_Num; ++i) before[i] = store.GetMaxResId(EResType(i));
    fuzz::WriteFile(path, data, size);  // as another program may have left it meanwhile
    store.SaveResInfo(eRT_Audio);
    for (int i = 0; i < eRT_Num; ++i) {
      if (store.GetMaxResId(EResType(i)) < before[i]) __builtin_trap();  // a number would come back
    }
    store.GenerateNewResId(eRT_Audio);
  });
  return 0;
}
