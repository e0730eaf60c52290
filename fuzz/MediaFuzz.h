#pragma once
// The media store on a fresh simulated device, as the title brings it up: a
// game that owns the archive and the store. The store's harnesses put the input
// where a file of the gallery lives and let the store read it.
#include <sys/stat.h>

#include <string>

#include "BaseFramework/GameManager.h"
#include "FuzzSupport.h"
#include "MediaCenter/MediaCenter.h"
#include "MediaCenter/VT/ZvArchive.h"

namespace fuzz {

// The title folder the store's harnesses run as: it holds only a meta.json.
inline std::string StoreTitle() {
  static const std::string title = [] {
    const std::string folder = ScratchFolder() + "title/";
    const std::string meta =
        "{\"packageId\": \"MicrophoneWidget\", \"productId\": 4097, \"deviceType\": \"Handheld\", "
        "\"packageType\": \"Application\", \"version\": \"1.0.0.3\", \"tags\": {}}\n";
    mkdir(folder.c_str(), 0755);
    WriteFile(folder + "meta.json", reinterpret_cast<const uint8_t*>(meta.data()), meta.size());
    return folder;
  }();
  return title;
}

class StoreGame : public GameManager {
 public:
  StoreGame() {
    mArchiver = new ZvArchive();
    mArchiver->Initialize(ZvArchive::eUpload_All);  // every upload folder
    mMediaCenter = new MediaCenter(this);
    mMediaCenter->Initialize();
  }
  ~StoreGame() override {
    Destroy();
    delete mMediaCenter;
    delete mArchiver;
  }
  void Destroy() override {
    mArchiver->Destroy();
    mMediaCenter->Destroy();
  }
  ZvArchive& archive() { return static_cast<ZvArchive&>(GetArchiver()); }
  MediaCenter& store() { return GetMediaCenter(); }
};

}  // namespace fuzz
