// Animated sprites: loading a sprite of 200 frames (its animations, its atlas and
// its page textures on the device's GL context), building one with the sprite
// builder, advancing the controllers of 50 models for a frame, and a frame of 50
// animated models updated and drawn through the batch renderer, plain and with
// each effect, with the draw calls it takes. Inputs are made at start-up in a
// temporary folder and removed at exit.
#include <GLES/gl.h>
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
#include "RenderSystem/AnimatedModel2D.h"
#include "RenderSystem/AnimatedModel2DRender.h"
#include "RenderSystem/AnimatedSpriteData.h"
#include "RenderSystem/AnimatedSpriteDataManager.h"
#include "RenderSystem/GLTextureManager.h"
#include "RenderSystem/AnimationController.h"
#include "RenderSystem/AnimationSet.h"
#include "RenderSystem/RenderStateStack.h"
#include "SolvaOpenGLConfig.h"
#include "SpriteBuilder.h"
#include "Tamarin/SolvaServices.h"
#include "solva/Clock.h"
#include "support/gl/GLCallCounter.h"

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
    // The models' sprite: eight of the frames, on one page, as a title keeps the
    // sprites of one batch within the renderer's ten textures.
    std::ofstream walker(root + "/src/walker.sprite");
    walker << "sprite walker\nanimation walk loop\n";
    for (int f = 0; f < 8; ++f) walker << "frame f" << f << ".png 0.1\n";
    walker.close();
    std::string error;
    if (!Build(&error) || !Build(&error, "walker")) abort();
  }
  ~Workspace() { std::filesystem::remove_all(root); }
  bool Build(std::string* error, const std::string& sprite = "blob") {
    spritebuilder::Options options;
    options.description = root + "/src/" + sprite + ".sprite";
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

// A frame of 50 models of an eight-frame sprite (16 tiles a frame) spread over the
// screen: each updated by 1/60 s and drawn. Plain and blended models share one
// batch that the frame holds open; a trail or an edge opens batches of its own.
enum Effect { kPlain, kBlend, kTrail, kEdge };

void BM_FrameOf50Models(benchmark::State& state) {
  const Effect effect = Effect(state.range(0));
  InTitleFolder here;
  ThreeD threeD;
  AnimatedModel2DRender::sCreate();
  AnimatedSpriteDataManager::sCreate();
  RenderStateStack::initialize();
  glMatrixMode(GL_PROJECTION);  // the screen, as the widget's start-up sets it
  glLoadIdentity();
  glOrthox(0, 480 << 16, 272 << 16, 0, -(1 << 16), 1 << 16);
  glMatrixMode(GL_MODELVIEW);
  glEnable(GL_BLEND);
  glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA);
  {
    std::vector<std::unique_ptr<AnimatedModel2D>> models;
    for (int m = 0; m < 50; ++m) {
      models.emplace_back(new AnimatedModel2D());
      AnimatedModel2D& model = *models.back();
      if (model.load("walker", 0, 0) != 1 || model.startAnimation(0, 0) != 1) abort();
      model.update(0.03f * float(m), false);
      model.mPosition = {float(32 + m % 10 * 46), float(32 + m / 10 * 52), 0.0f};
      if (m % 2) model.changeDirection(0);
      if (effect == kBlend) model.setBlendEffect({{1, 1, 1, 1}, {1, 0.2f, 0.2f, 1}, 1.0f, 0.0f, 2});
      if (effect == kTrail) model.setTrailEffect(AnimatedModel2DTrailEffectInfo());
      if (effect == kEdge) model.setEadgeEffect({{1, 1, 0.5f, 1}, 3.0f, 1.0f, 0.1f, 0.0f});
    }
    AnimatedModel2DRender& render = AnimatedModel2DRender::sInstance();
    zvtest::GLCalls().keepUploads = false;
    zvtest::GLCalls().Reset();
    for (auto _ : state) {
      render.begin(effect == kBlend, 1);
      for (auto& model : models) {
        model->update(1.0f / 60.0f, false);
        model->render(0);
      }
      render.end();
      glFinish();
    }
    state.counters["draw_calls_per_frame"] =
        benchmark::Counter(double(zvtest::GLCalls().drawElements) / double(state.iterations()));
  }
  RenderStateStack::destory();
  delete AnimatedSpriteDataManager::instance_;
  AnimatedSpriteDataManager::instance_ = nullptr;
  delete AnimatedModel2DRender::instance_;
  AnimatedModel2DRender::instance_ = nullptr;
}
BENCHMARK(BM_FrameOf50Models)
    ->ArgName("effect")  // 0 plain, 1 blend, 2 trail, 3 edge
    ->DenseRange(kPlain, kEdge)
    ->Unit(benchmark::kMicrosecond)
    ->UseRealTime()
    ->MeasureProcessCPUTime();

}  // namespace
