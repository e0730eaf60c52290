// The 3D path on Mesa's llvmpipe: one upload of a 256 x 256 texture in each
// format, one frame of the 3D test title (update, draw, swap with its read-back,
// and the composition of the screen), and the read-back and the composition alone.
// llvmpipe works in threads of its own: the GL runs report wall time and the CPU
// time of the whole process.
#include <EGL/egl.h>
#include <GLES/gl.h>
#include <benchmark/benchmark.h>
#include <unistd.h>

#include <cstdlib>
#include <string>
#include <vector>

#include "CDisplaySvc.h"
#include "RenderSystem/GLTexture.h"
#include "SolvaOpenGLConfig.h"
#include "solva/Clock.h"
#include "solva/Device.h"
#include "solva/Display.h"
#include "solva/Events.h"
#include "support/GLTitle.h"

namespace {

const unsigned kSide = 256;

// The device's context for the upload and read-back runs.
struct Context {
  Context() : config(Vantrel::Solva::CreateSolvaOpenGLConfig()) {
    if (config == nullptr) abort();
  }
  ~Context() { Vantrel::Solva::DestroySolvaOpenGLConfig(config); }
  SolvaOpenGLConfig* config;
};

// Bytes of a 256 x 256 picture in device format `format` with `paletteType`.
size_t Bytes(unsigned format, unsigned paletteType) {
  const size_t pixels = size_t(kSide) * kSide;
  if (paletteType == 1) return pixels / 2 + (format == 1 ? 64 : 32);
  if (paletteType == 2) return pixels + (format == 1 ? 1024 : 512);
  return pixels * (format == 1 ? 4 : 2);
}

// One upload (and the texture's deletion), finished by the driver.
void BM_Upload(benchmark::State& state) {
  const unsigned format = unsigned(state.range(0));
  const unsigned paletteType = unsigned(state.range(1));
  Context context;
  std::vector<unsigned char> pixels(Bytes(format, paletteType));
  for (size_t i = 0; i < pixels.size(); ++i) pixels[i] = static_cast<unsigned char>(i * 31 + (i >> 8));
  for (auto _ : state) {
    GLTexture texture;
    texture.Load(pixels.data(), kSide, kSide, 32, "bench", format, paletteType);
    glFinish();
  }
  state.SetBytesProcessed(int64_t(state.iterations()) * int64_t(pixels.size()));
}
BENCHMARK(BM_Upload)
    ->ArgNames({"format", "palette"})
    ->Args({1, 0})
    ->Args({2, 0})
    ->Args({3, 0})
    ->Args({4, 0})
    ->Args({5, 0})
    ->Args({1, 1})
    ->Args({2, 1})
    ->Args({3, 1})
    ->Args({4, 1})
    ->Args({1, 2})
    ->Args({2, 2})
    ->Args({3, 2})
    ->Args({4, 2})
    ->MeasureProcessCPUTime()
    ->UseRealTime()
    ->Unit(benchmark::kMicrosecond);

// BMP and TGA pixels: 24 bits (R, G, B) or 32 (A, R, G, B), turned into R, G, B, A.
void BM_UploadConverted(benchmark::State& state) {
  const unsigned bits = unsigned(state.range(0));
  Context context;
  std::vector<unsigned char> pixels(size_t(kSide) * kSide * bits / 8, 77);
  for (auto _ : state) {
    GLTexture texture;
    texture.Load(pixels.data(), kSide, kSide, bits, "bench");
    glFinish();
  }
}
BENCHMARK(BM_UploadConverted)
    ->ArgName("bits")
    ->Arg(24)
    ->Arg(32)
    ->MeasureProcessCPUTime()
    ->UseRealTime()
    ->Unit(benchmark::kMicrosecond);

// What a swap of the 3D surface costs the device: glReadPixels of 480 x 272 and
// the plane's new picture.
void BM_SwapReadBack(benchmark::State& state) {
  Context context;
  glClearColorx(1 << 15, 1 << 14, 1 << 13, 1 << 16);
  glClear(GL_COLOR_BUFFER_BIT);
  for (auto _ : state) eglSwapBuffers(context.config->eglDisplay, context.config->eglSurface);
}
BENCHMARK(BM_SwapReadBack)->MeasureProcessCPUTime()->UseRealTime()->Unit(benchmark::kMicrosecond);

// The composition of the screen from the 3D plane and a canvas layer over it.
void BM_Compose(benchmark::State& state) {
  Context context;
  eglSwapBuffers(context.config->eglDisplay, context.config->eglSurface);
  Vantrel::Solva::CDisplaySvc display;
  void* layer = display.CreateHandle(272, 480, Vantrel::Solva::kPixelFormatARGB8888, nullptr);
  display.Register(layer, 0, 0, 1, Vantrel::Solva::kDisplayScreenAllScreens);
  display.SetAlpha(layer, 100, 1);
  display.SwapBuffers(layer, 0);
  for (auto _ : state) benchmark::DoNotOptimize(solva::ReadScreen());
  display.DestroyHandle(layer, 1);
}
BENCHMARK(BM_Compose)->Unit(benchmark::kMicrosecond);

// One frame of the 3D test title on the virtual clock, as the host runs it, and
// the screen composed from it as a window or a screenshot takes it.
void BM_TitleFrame(benchmark::State& state) {
  char here[4096] = {0};
  const std::string start = getcwd(here, sizeof here) ? here : ".";
  char pattern[] = "/tmp/zvbench-XXXXXX";
  const std::string root = mkdtemp(pattern) ? pattern : "/tmp";
  solva::ResetDevice();
  solva::SetDeviceRoot(root);
  solva::SetTitlePath(std::string(ZV_SOURCE_DIR) + "/tests/e2e/gltitle");
  solva::SetClockMode(solva::ClockMode::Virtual, 1000000);
  {
    gltitle::TitleInstance app(nullptr);
    app.Enter();
    auto frame = [&] {
      solva::DeliverEvents();
      solva::AdvanceClockMicros(33333);
      app.Update();
    };
    for (int i = 0; i < 3; ++i) frame();
    for (auto _ : state) {
      frame();
      benchmark::DoNotOptimize(solva::ReadScreen());
    }
    app.Exit();
  }
  if (chdir(start.c_str()) != 0) abort();
  solva::ResetDevice();
  solva::SetClockMode(solva::ClockMode::Real);
  const std::string remove = "rm -rf '" + root + "'";
  if (system(remove.c_str()) != 0) abort();
}
BENCHMARK(BM_TitleFrame)->MeasureProcessCPUTime()->UseRealTime()->Unit(benchmark::kMicrosecond);

}  // namespace
