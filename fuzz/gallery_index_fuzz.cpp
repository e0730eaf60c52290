// The media store's index files, as solva-gallery and a title's start read them:
// the first byte chooses the kind, the rest is its index file.
#include <fstream>
#include <string>

#include "BaseFramework/GameManager.h"
#include "FuzzSupport.h"
#include "MediaCenter/MediaCenter.h"
#include "MediaCenter/VT/ZvArchive.h"
#include "solva/Device.h"

namespace {

class FuzzGame : public GameManager {
 public:
  FuzzGame() {
    mArchiver = new ZvArchive();
    mArchiver->Initialize(ZvArchive::eUpload_Music);
    mMediaCenter = new MediaCenter(this);
    mMediaCenter->Initialize();
  }
  MediaCenter& store() { return GetMediaCenter(); }
};

FuzzGame& Game() {
  static FuzzGame* game = [] {
    solva::SetDeviceRoot(fuzz::ScratchFolder() + "gallery");
    return new FuzzGame();
  }();
  return *game;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  if (size < 1) return 0;
  fuzz::ThrowOnAssertions();
  MediaCenter& store = Game().store();
  static const EResType kIndexed[] = {eRT_Photo, eRT_Audio, eRT_Video, eRT_Art, eRT_ScrapBook,
                                      eRT_UnSharePhoto, eRT_SpecificFolderArt, eRT_SpecificFolderAudio};
  const EResType type = kIndexed[data[0] % 8];
  const std::string path = store.IndexDirectory(type) + MediaCenter::scResInfoSaveFileName[type] + ".bin";
  std::ofstream(path, std::ios::binary).write(reinterpret_cast<const char*>(data + 1), std::streamsize(size - 1));
  ResInfoList records;
  store.ReadResInfoFromBin(type, records);
  try {
    store.LoadResInfo(type);
  } catch (const fuzz::AssertionFailed&) {
  }
  return 0;
}
