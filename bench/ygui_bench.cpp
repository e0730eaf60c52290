// The toolkit per frame: one YGUIMenu::Update and a render into the device's RGBA
// layer for a ten-control screen, idle and while every control animates; and
// loading that screen with its pictures. The layout is written at start-up into a
// temporary title folder that borrows the test layout's pictures.
#include <benchmark/benchmark.h>
#include <limits.h>
#include <stdio.h>
#include <stdlib.h>
#include <unistd.h>

#include <string>

#include "BaseFramework/InputManager.h"
#include "Canvas/VT/ZvCanvasFactory.h"
#include "Canvas/VT/ZvCanvasRGBALayer.h"
#include "RenderSystem/GLTextureManager.h"
#include "YGUI/YGUIMenu.h"
#include "solva/Device.h"

namespace {

class BenchMenu : public YGUIMenu {
 public:
  BenchMenu() : YGUIMenu(0, "Bench.xml", "") { mAnimeType = 0; }
  void NotifyEventYGUI(ENotifyEventType, void*, void*) override {}
};

// A control's "pulse": moves, grows and fades for a very long time, so it never
// ends during a run.
std::string Pulse() {
  return " AnimSetNum='1'><AnimationSet KeyFrameNum='3' Name='pulse'>"
         "<KeyFrame Time='0'/><KeyFrame Time='50000' x='30' ScaleX='1.5' ScaleY='0.5' Opacity='0.3'/>"
         "<KeyFrame Time='100000'/></AnimationSet>";
}

std::string Layout() {
  std::string xml = "<Grid Width='480' Height='272'>";
  xml += "<Image Name='bg' Width='480' Height='272' NormalBackground='bg'" + Pulse() + "</Image>";
  for (int i = 0; i < 6; ++i) {
    const int x = 20 + (i % 3) * 150, y = 40 + (i / 3) * 110;
    xml += "<ImageButton Id='" + std::to_string(i + 1) + "' x='" + std::to_string(x) + "' y='" + std::to_string(y) +
           "' Width='80' Height='80' NormalBackground='btn_normal' SelectedBackground='btn_focus' "
           "FocusBackground='btn_disabled'" +
           Pulse() + "</ImageButton>";
  }
  for (int i = 0; i < 3; ++i) {
    xml += "<Image x='" + std::to_string(100 + i * 120) + "' y='10' Width='50' Height='20' NormalBackground='logo'" +
           Pulse() + "</Image>";
  }
  return xml + "</Grid>";
}

// The title folder, the device's layer and the managers a running title has.
struct Stage {
  Stage() {
    char here[PATH_MAX];
    home = getcwd(here, sizeof(here)) ? here : ".";
    char pattern[] = "/tmp/ygui_bench_XXXXXX";
    folder = mkdtemp(pattern);
    const std::string textures = std::string(ZV_SOURCE_DIR) + "/tests/ygui/layouts/res/UI/UITexture";
    if (system(("mkdir -p '" + folder + "/res/UI/Page' && ln -s '" + textures + "' '" + folder + "/res/UI/UITexture'")
                   .c_str()) != 0)
      abort();
    FILE* file = fopen((folder + "/res/UI/Page/Bench.xml").c_str(), "wb");
    const std::string xml = Layout();
    fwrite(xml.data(), 1, xml.size(), file);
    fclose(file);
    if (chdir(folder.c_str()) != 0) abort();
    solva::ResetDevice();
    GLTextureManager::sCreate();
    InputManager::sCreate();
    layer = factory.CreateRGBALayer(0, 0, 480, 272);
  }
  ~Stage() {
    layer->Destroy();
    delete layer;
    delete InputManager::instance_;
    InputManager::instance_ = 0;
    delete GLTextureManager::instance_;
    GLTextureManager::instance_ = 0;
    if (chdir(home.c_str()) != 0) abort();
    if (system(("rm -rf '" + folder + "'").c_str()) != 0) abort();
  }
  std::string home;
  std::string folder;
  ZvCanvasFactory factory;
  CanvasLayer* layer = 0;
};

void Frame(BenchMenu& menu, CanvasLayer& layer) {
  InputManager::sInstance().Update(0.033f);
  menu.Update(0.033f);
  layer.Clear();
  menu.RenderYGUI(layer);
}

void BM_FrameIdle(benchmark::State& state) {
  Stage stage;
  BenchMenu menu;
  menu.EnterScene();
  Frame(menu, *stage.layer);
  for (auto _ : state) {
    Frame(menu, *stage.layer);
    benchmark::DoNotOptimize(stage.layer->GetBuffer()[1000]);
  }
  menu.ExitScene();
}
BENCHMARK(BM_FrameIdle)->Unit(benchmark::kMicrosecond);

void BM_FrameAllAnimating(benchmark::State& state) {
  Stage stage;
  BenchMenu menu;
  menu.EnterScene();
  menu.PlayAnime("pulse");
  Frame(menu, *stage.layer);
  for (auto _ : state) {
    Frame(menu, *stage.layer);
    benchmark::DoNotOptimize(stage.layer->GetBuffer()[1000]);
  }
  if (menu.IsInEnd()) state.SkipWithError("the animations ended during the run");
  menu.ExitScene();
}
BENCHMARK(BM_FrameAllAnimating)->Unit(benchmark::kMicrosecond);

void BM_LoadScreen(benchmark::State& state) {
  Stage stage;
  for (auto _ : state) {
    BenchMenu menu;
    menu.EnterScene();
    benchmark::DoNotOptimize(menu.GetCurrentGrid());
    menu.ExitScene();
  }
}
BENCHMARK(BM_LoadScreen)->Unit(benchmark::kMicrosecond);

}  // namespace
