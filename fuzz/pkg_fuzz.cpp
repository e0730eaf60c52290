// The texture package's reader: the input is the title's res/UI/UITexture.pkg,
// loaded and let go.
#include <sys/stat.h>

#include <cstdio>
#include <string>

#include "BaseFramework/GameManager.h"
#include "FuzzSupport.h"
#include "MediaCenter/VT/ZvArchive.h"
#include "RenderSystem/GLTextureManager.h"
#include "Tamarin/ZvWidgetInstance.h"
#include "solva/Device.h"

namespace {

// A running title whose archive points at a title folder of the harness's own.
class PkgGame : public GameManager {
 public:
  PkgGame() {
    mArchiver = new ZvArchive();
    mArchiver->Initialize(4);
  }
};

class PkgTitle : public ZvWidgetInstance {
 public:
  PkgTitle() : ZvWidgetInstance(nullptr) {}
  void OnPreExit() override {}
};

struct Title {
  Title() {
    const std::string folder = fuzz::ScratchFolder() + "pkg";
    mkdir(folder.c_str(), 0755);
    mkdir((folder + "/res").c_str(), 0755);
    mkdir((folder + "/res/UI").c_str(), 0755);
    solva::SetDeviceRoot(folder + "/device");
    solva::SetTitlePath(folder);
    app.SetGameManager(&game);
    GLTextureManager::sCreate();
    package = folder + "/res/UI/UITexture.pkg";
    // Every load says so; the fuzzer's own report goes to standard error.
    if (freopen("/dev/null", "w", stdout) == nullptr) perror("stdout");
  }
  PkgTitle app;
  PkgGame game;
  std::string package;
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  static Title* title = new Title();  // lives as long as the fuzzer
  FILE* file = fopen(title->package.c_str(), "wb");
  if (file == nullptr) return 0;
  fwrite(data, 1, size, file);
  fclose(file);
  GLTextureManager* manager = gxGetTextureManager();
  manager->LoadPkgFile(title->package, 0);
  manager->ReleasePkgFile();
  return 0;
}
