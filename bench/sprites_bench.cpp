// Animated sprites: loading a sprite of 200 frames (its animations, its atlas and
// its page textures on the device's GL context), building one with the sprite
// builder, and advancing the controllers of 50 models for a frame. Inputs are
// made at start-up in a temporary folder and removed at exit.
#include <benchmark/benchmark.h>
#include <png.h>
#include <stdlib.h>
#include <string.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <memory>
#include <string>
#include <vector>

#include "CKernelSvc.h"
#include "RenderSystem/AnimatedSpriteData.h"
#include "RenderSystem/GLTextureManager.h"
#include "RenderSystem/AnimationController.h"
#include "RenderSystem/AnimationSet.h"
#include "SolvaOpenGLConfig.h"
#include "SpriteBuilder.h"
#include "Tamarin/SolvaServices.h"
#include "solva/Clock.h"

namespace {

const int kFrames = 200;
const int kSide = 64;  // 16 cells a frame

// A folder with 200 PNG frames of a walking blob and their description, and the
// sprite built from them under res/AnimatedSprites/, as a title's folder.
struct Workspace {
  Workspace() {
    char name[] = "/tmp/zv-sprites-bench-XXXXXX";
    root = mkdtemp(name);
    std::filesystem::create_directories(root + "/src");
    std::ofstream description(root + "/src/blob.sprite");
    description << "sprite blob\nanimation walk loop\n";
    for (int f = 0; f < kFrames; ++f) {
      std::vector<uint8_t> rgba(size_t(kSide) * kSide * 4, 0);
      for (int y = 0; y < kSide; ++y)
        for (int x = 0; x < kSide; ++x) {
          const int dx = x - kSide / 2 + (f % 9) - 4, dy = y - kSide / 2;
          if (dx * dx + dy * dy > 26 * 26) continue;
          uint8_t* p = &rgba[(size_t(y) * kSide + x) * 4];
          p[0] = uint8_t(40 + f);
          p[1] = uint8_t(x * 4);
          p[2] = uint8_t(y * 4);
          p[3] = 255;
        }
      png_image png;
      memset(&png, 0, sizeof png);
      png.version = PNG_IMAGE_VERSION;
      png.width = kSide;
      png.height = kSide;
      png.format = PNG_FORMAT_RGBA;
      const std::string file = "f" + std::to_string(f) + ".png";
      png_image_write_to_file(&png, (root + "/src/" + file).c_str(), 0, rgba.data(), 0, nullptr);
      // Each frame shows once in the walk, some with an event.
      if (f < kFrames - 1) description << "frame " << file << " 0.05" << (f % 10 == 5 ? " event 1" : "") << "\n";
    }
    description << "frame f" << kFrames - 1 << ".png 0.05\n";
    description.close();
    std::string error;
    if (!Build(&error)) abort();
  }
  ~Workspace() { std::filesystem::remove_all(root); }
  bool Build(std::string* error) {
    spritebuilder::Options options;
    options.description = root + "/src/blob.sprite";
    options.out = root + "/res/AnimatedSprites";
    spritebuilder::Report report;
    return spritebuilder::Build(options, &report, error);
  }
  std::string root;
};

Workspace& Space() {
  static Workspace space;
  return space;
}

// The loads run in the title's folder, as in a running title.
struct InTitleFolder {
  InTitleFolder() {
    if (getcwd(old, sizeof old) == nullptr || chdir(Space().root.c_str()) != 0) abort();
  }
  ~InTitleFolder() {
    if (chdir(old) != 0) abort();
  }
  char old[4096];
};

// What a title that draws sprites has up: the GL context, the device clock (the
// texture manager times its loads) and the texture manager.
struct ThreeD {
  ThreeD() : config(Vantrel::Solva::CreateSolvaOpenGLConfig()) {
    if (config == nullptr) abort();
    solva::SetClockMode(solva::ClockMode::Virtual, 1000000);
    gKernelSvc = new Vantrel::Solva::CKernelSvc();
    GLTextureManager::sCreate();
  }
  ~ThreeD() {
    delete GLTextureManager::instance_;
    GLTextureManager::instance_ = nullptr;
    delete gKernelSvc;
    gKernelSvc = nullptr;
    solva::SetClockMode(solva::ClockMode::Real);
    Vantrel::Solva::DestroySolvaOpenGLConfig(config);
  }
  SolvaOpenGLConfig* config;
};

// Each run loads the pages anew: the sprite is the only user of its textures.
void BM_LoadSpriteOf200Frames(benchmark::State& state) {
  InTitleFolder here;
  ThreeD threeD;
  size_t pages = 0;
  size_t cells = 0;
  for (auto _ : state) {
    AnimatedSpriteData sprite("blob");
    if (sprite.Load("blob") != 1) abort();
    cells = 0;
    for (const SpriteInfo* frame : sprite.mLayerSprites[0]) cells += frame != nullptr;
    pages = sprite.mLayerTextures[0].size();
    if (pages == 0 || sprite.GetLayerTexture(eImageLayer_Base, int(pages) - 1) == nullptr) abort();
    benchmark::DoNotOptimize(cells);
  }
  state.counters["frames"] = double(cells);
  state.counters["pages"] = double(pages);
}
BENCHMARK(BM_LoadSpriteOf200Frames)->Unit(benchmark::kMicrosecond);

void BM_BuildSpriteOf200Frames(benchmark::State& state) {
  std::string error;
  for (auto _ : state) {
    if (!Space().Build(&error)) abort();
  }
}
BENCHMARK(BM_BuildSpriteOf200Frames)->Unit(benchmark::kMillisecond);

// One frame of 50 models: each model's controller advances by 1/60 s.
void BM_Advance50Controllers(benchmark::State& state) {
  InTitleFolder here;
  ThreeD threeD;
  AnimatedSpriteData sprite("blob");
  if (sprite.Load("blob") != 1) abort();
  std::vector<std::unique_ptr<AnimationController>> controllers;
  for (int m = 0; m < 50; ++m) {
    controllers.emplace_back(AnimationController::CreateAnimationController(sprite.mAnimationSet));
    AnimationTrack track;
    track.mEnable = 1;
    track.mAnimIndex = 0;
    track.mMode = 1;
    track.mPosition = 0.2f * float(m);
    controllers.back()->SetTrackDesc(&track);
  }
  for (auto _ : state) {
    for (auto& controller : controllers) controller->AdvanceTime(1.0f / 60.0f, false);
    benchmark::DoNotOptimize(controllers[0]->mCurrent.mSpriteIndex);
  }
}
BENCHMARK(BM_Advance50Controllers)->Unit(benchmark::kMicrosecond);

}  // namespace
