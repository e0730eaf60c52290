// The batch renderer and bitmap text on Mesa's llvmpipe: a frame of 1,000 quads
// over 8 textures, and a 500-character paragraph measured, wrapped and drawn in
// DejaVu Sans 18 (baked by fontbake at start). Draw calls are counted by the
// thin wrapper over the GL's calls; llvmpipe works in threads of its own, so the
// runs report wall time and the CPU time of the whole process.
#include <GLES/gl.h>
#include <benchmark/benchmark.h>
#include <unistd.h>

#include <cstdlib>
#include <string>
#include <vector>

#include "RenderSystem/AnimatedModel2DRender.h"
#include "RenderSystem/GLTexture.h"
#include "RenderSystem/GLTextureManager.h"
#include "RenderSystem/XFontManager.h"
#include "SolvaOpenGLConfig.h"
#include "CKernelSvc.h"
#include "Tamarin/SolvaServices.h"
#include "support/gl/GLCallCounter.h"

namespace {

// The device's context, the managers text needs, and the screen's projection.
struct Scene {
  Scene() : config(Vantrel::Solva::CreateSolvaOpenGLConfig()) {
    if (config == nullptr) abort();
    zvtest::GLCalls().keepUploads = false;
    gKernelSvc = new Vantrel::Solva::CKernelSvc();  // the texture manager's load timer reads the clock
    GLTextureManager::sCreate();
    AnimatedModel2DRender::sCreate();
    XFontManager::sCreate();
    glMatrixMode(GL_PROJECTION);
    glLoadIdentity();
    glOrthox(0, 480 << 16, 272 << 16, 0, -(1 << 16), 1 << 16);
    glMatrixMode(GL_MODELVIEW);
    glLoadIdentity();
    glEnable(GL_BLEND);
    glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA);
    glTexEnvx(GL_TEXTURE_ENV, GL_TEXTURE_ENV_MODE, GL_MODULATE);
  }
  ~Scene() {
    delete XFontManager::instance_;
    XFontManager::instance_ = nullptr;
    delete AnimatedModel2DRender::instance_;
    AnimatedModel2DRender::instance_ = nullptr;
    delete GLTextureManager::instance_;
    GLTextureManager::instance_ = nullptr;
    delete gKernelSvc;
    gKernelSvc = 0;
    Vantrel::Solva::DestroySolvaOpenGLConfig(config);
  }
  SolvaOpenGLConfig* config;
};

void BM_FrameOf1000QuadsOver8Textures(benchmark::State& state) {
  Scene scene;
  std::vector<GLTexture*> textures;
  std::vector<unsigned char> argb(32 * 32 * 4);
  for (int t = 0; t < 8; ++t) {
    for (size_t i = 0; i < argb.size(); ++i) argb[i] = static_cast<unsigned char>(i * (t + 3));
    textures.push_back(new GLTexture());
    textures.back()->Load(argb.data(), 32, 32, 32, "bench");
  }
  AnimatedModel2DRender& render = AnimatedModel2DRender::sInstance();
  zvtest::GLCalls().Reset();
  for (auto _ : state) {
    glClear(GL_COLOR_BUFFER_BIT);
    render.begin(0, 1);
    for (int q = 0; q < 1000; ++q) {
      render.swapTexture(textures[q % 8]->mTextureID);
      AnimatedModel2DRender::BatchBuffer& batch = render.mBatches[render.mCurrentBatch];
      const float x = float(q % 40) * 12.0f, y = float(q / 40) * 10.0f;
      const float corners[4][2] = {{0, 0}, {1, 0}, {1, 1}, {0, 1}};
      for (const auto& c : corners) {
        *batch.mVertexPtr++ = AnimatedModel2DRender::PixelToFixed(x + c[0] * 16.0f);
        *batch.mVertexPtr++ = AnimatedModel2DRender::PixelToFixed(y + c[1] * 16.0f);
        *batch.mTexCoordPtr++ = AnimatedModel2DRender::TexelToFixed(c[0] * 32.0f, 32.0f);
        *batch.mTexCoordPtr++ = AnimatedModel2DRender::TexelToFixed(c[1] * 32.0f, 32.0f);
      }
    }
    render.end();
    glFinish();
  }
  state.counters["draw_calls_per_frame"] =
      benchmark::Counter(double(zvtest::GLCalls().drawElements) / double(state.iterations()));
  for (GLTexture* texture : textures) delete texture;
}
BENCHMARK(BM_FrameOf1000QuadsOver8Textures)->Unit(benchmark::kMicrosecond)->UseRealTime()->MeasureProcessCPUTime();

// 500 characters of prose.
std::string Paragraph() {
  const std::string words =
      "The quick brown fox jumps over the lazy dog while a small voice recorder hums along, "
      "counting the seconds of a song that a child sings into the microphone of the handheld. ";
  std::string text;
  while (text.size() < 500) text += words;
  return text.substr(0, 500);
}

// DejaVu Sans 18 as font 0, baked into a temporary folder.
struct BakedScene : Scene {
  BakedScene() {
    folder = "/tmp/zvbench-font-" + std::to_string(getpid());
    const std::string command = std::string("mkdir -p ") + folder + " && " + ZV_FONTBAKE +
                                " --size 18 /usr/share/fonts/truetype/dejavu/DejaVuSans.ttf " + folder +
                                "/sans > /dev/null";
    if (system(command.c_str()) != 0) abort();
    XFontManager& fonts = XFontManager::sInstance();
    fonts.createFont(0, (folder + "/sans.bin").c_str());
    fonts.mFontTextures.push_back(gxGetTextureManager()->LoadTextureNoExpand((folder + "/sans").c_str(), 0));
    if (fonts.mFontTextures[0] == nullptr) abort();
  }
  ~BakedScene() { (void)system(("rm -rf " + folder).c_str()); }
  std::string folder;
};

void BM_ParagraphMeasured(benchmark::State& state) {
  BakedScene scene;
  const std::string text = Paragraph();
  XFontManager& fonts = XFontManager::sInstance();
  for (auto _ : state) {
    benchmark::DoNotOptimize(fonts.getStringLenght(0, text.c_str()));
    benchmark::DoNotOptimize(fonts.getTextHeight(0, text.c_str(), 440));
  }
}
BENCHMARK(BM_ParagraphMeasured)->Unit(benchmark::kMicrosecond);

void BM_ParagraphWrapped(benchmark::State& state) {
  BakedScene scene;
  const std::string text = Paragraph();
  XFontManager& fonts = XFontManager::sInstance();
  for (auto _ : state) {
    std::vector<std::string> words, lines;
    fonts.breakToWordListA(text.c_str(), words);
    benchmark::DoNotOptimize(fonts.makeTextLineList(0, 440, words, lines, false));
  }
}
BENCHMARK(BM_ParagraphWrapped)->Unit(benchmark::kMicrosecond);

void BM_ParagraphDrawnInABox(benchmark::State& state) {
  BakedScene scene;
  const std::string text = Paragraph();
  XFontManager& fonts = XFontManager::sInstance();
  zvtest::GLCalls().Reset();
  for (auto _ : state) {
    glClear(GL_COLOR_BUFFER_BIT);
    fonts.drawStringInBox(0, 20, 10, text.c_str(), 440, 0);
    glFinish();
  }
  state.counters["draw_calls_per_frame"] =
      benchmark::Counter(double(zvtest::GLCalls().drawElements) / double(state.iterations()));
}
BENCHMARK(BM_ParagraphDrawnInABox)->Unit(benchmark::kMicrosecond)->UseRealTime()->MeasureProcessCPUTime();

}  // namespace
