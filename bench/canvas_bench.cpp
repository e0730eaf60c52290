// Full-screen layer work against memcpy of the same byte count, timed side by side
// in each benchmark: the "x_memcpy" counter is the operation's time over memcpy's,
// how far it stays from the memory-bandwidth limit. The draws run with each build of
// the spans this machine has: /0 portable, /1 SSE2, /2 AVX2 (the one the layers take).
#include <benchmark/benchmark.h>

#include <chrono>
#include <cstdio>
#include <cstring>
#include <unistd.h>
#include <functional>
#include <vector>

#include "Canvas/CanvasSpans.h"
#include "Canvas/VT/ZvCanvasFactory.h"
#include "Canvas/VT/ZvCanvasRGBALayer.h"
#include "Canvas/VT/ZvCanvasRender.h"
#include "solva/Device.h"

namespace {

const int kWidth = 480;
const int kHeight = 272;
const size_t kLayerBytes = size_t(kWidth) * kHeight * 4;

using Clock = std::chrono::steady_clock;

// A full-screen RGBA layer on a fresh device, and the buffers of the memcpy beside it.
struct Bench {
  Bench() {
    solva::ResetDevice();
    const int saved = dup(1);
    freopen("/dev/null", "w", stdout);  // the layer announces its registration
    layer = factory.CreateRGBALayer(0, 0, kWidth, kHeight);
    fflush(stdout);
    dup2(saved, 1);
    close(saved);
    copyFrom.assign(kLayerBytes, 0x5A);
    copyTo.assign(kLayerBytes, 0);
  }
  ~Bench() {
    layer->Destroy();
    delete layer;
    solva::ResetDevice();
  }
  // Times `work` and a memcpy of kLayerBytes in every iteration; reports both.
  void Run(benchmark::State& state, const std::function<void()>& work) {
    double workSeconds = 0;
    double copySeconds = 0;
    for (auto _ : state) {
      const Clock::time_point t0 = Clock::now();
      work();
      benchmark::ClobberMemory();
      const Clock::time_point t1 = Clock::now();
      memcpy(copyTo.data(), copyFrom.data(), kLayerBytes);
      benchmark::ClobberMemory();
      const Clock::time_point t2 = Clock::now();
      const double w = std::chrono::duration<double>(t1 - t0).count();
      workSeconds += w;
      copySeconds += std::chrono::duration<double>(t2 - t1).count();
      state.SetIterationTime(w);
    }
    state.SetBytesProcessed(int64_t(state.iterations()) * int64_t(kLayerBytes));
    state.counters["memcpy_us"] = benchmark::Counter(copySeconds * 1e6 / double(state.iterations()));
    state.counters["x_memcpy"] = benchmark::Counter(copySeconds > 0 ? workSeconds / copySeconds : 0);
  }
  ZvCanvasFactory factory;
  CanvasLayer* layer = nullptr;
  std::vector<uint8_t> copyFrom;
  std::vector<uint8_t> copyTo;
};

// Draws with the build of the spans the benchmark's argument names, while it lives.
struct Path {
  explicit Path(benchmark::State& state) {
    if (!CanvasUseSpanPath(ECanvasSpanPath(state.range(0)))) state.SkipWithError("not on this machine");
  }
  ~Path() { CanvasUseSpanPath(CanvasBestSpanPath()); }
};

void EachPath(benchmark::internal::Benchmark* benchmark) {
  benchmark->DenseRange(0, kCanvasSpanPathCount - 1)->UseManualTime()->Unit(benchmark::kMicrosecond);
}

std::vector<uint8_t> Image(int bytesPerPixel, uint8_t alpha) {
  std::vector<uint8_t> image(size_t(kWidth) * kHeight * bytesPerPixel);
  for (size_t i = 0; i < image.size(); ++i) image[i] = uint8_t(i * 7);
  if (bytesPerPixel == 4) {
    for (size_t i = 3; i < image.size(); i += 4) image[i] = alpha;
  }
  return image;
}

void BM_DrawRGBA8888Opaque(benchmark::State& state) {
  Path path(state);
  Bench bench;
  const std::vector<uint8_t> image = Image(4, 255);
  bench.Run(state, [&] { bench.layer->Draw_Image_RGBA8888(0, 0, kWidth, kHeight, image.data(), kWidth, kHeight, 1.0f, 0); });
}
BENCHMARK(BM_DrawRGBA8888Opaque)->Apply(EachPath);

void BM_DrawRGBA8888HalfTransparent(benchmark::State& state) {
  Path path(state);
  Bench bench;
  const std::vector<uint8_t> image = Image(4, 128);
  bench.Run(state, [&] { bench.layer->Draw_Image_RGBA8888(0, 0, kWidth, kHeight, image.data(), kWidth, kHeight, 1.0f, 0); });
}
BENCHMARK(BM_DrawRGBA8888HalfTransparent)->Apply(EachPath);

void BM_DrawRGB888(benchmark::State& state) {
  Path path(state);
  Bench bench;
  const std::vector<uint8_t> image = Image(3, 0);
  bench.Run(state, [&] { bench.layer->Draw_Image_RGB888(0, 0, image.data(), kWidth, kHeight, 0); });
}
BENCHMARK(BM_DrawRGB888)->Apply(EachPath);

// The part-image form, as the toolkit's images draw: it always blends, even opaque pixels.
void BM_DrawRGBA8888FromOrigin(benchmark::State& state) {
  Path path(state);
  Bench bench;
  const std::vector<uint8_t> image = Image(4, 255);
  bench.Run(state, [&] {
    bench.layer->Draw_Image_RGBA8888(0, 0, 0, 0, kWidth, kHeight, image.data(), kWidth, kHeight, 1.0f, 0);
  });
}
BENCHMARK(BM_DrawRGBA8888FromOrigin)->Apply(EachPath);

// The screen turned a quarter: every image row runs down a column of the buffer.
void BM_DrawRGBA8888Turned(benchmark::State& state) {
  Path path(state);
  Bench bench;
  const std::vector<uint8_t> image = Image(4, 128);
  bench.Run(state,
            [&] { bench.layer->Draw_Image_RGBA8888(0, 0, kHeight, kWidth, image.data(), kHeight, kWidth, 1.0f, 1); });
}
BENCHMARK(BM_DrawRGBA8888Turned)->Apply(EachPath);

void BM_Clear(benchmark::State& state) {
  Bench bench;
  bench.Run(state, [&] { bench.layer->Clear(); });
}
BENCHMARK(BM_Clear)->UseManualTime()->Unit(benchmark::kMicrosecond);

void BM_DrawLayerAlphaOne(benchmark::State& state) {
  Bench bench;
  ZvCanvasRender render;
  bench.Run(state, [&] { render.DrawLayer(bench.layer, 1.0f); });
}
BENCHMARK(BM_DrawLayerAlphaOne)->UseManualTime()->Unit(benchmark::kMicrosecond);

void BM_DrawLayerHalf(benchmark::State& state) {
  Path path(state);
  Bench bench;
  const std::vector<uint8_t> image = Image(4, 200);
  bench.layer->Draw_Image_RGBA8888(0, 0, kWidth, kHeight, image.data(), kWidth, kHeight, 1.0f, 0);
  ZvCanvasRender render;
  bench.Run(state, [&] { render.DrawLayer(bench.layer, 0.5f); });
}
BENCHMARK(BM_DrawLayerHalf)->Apply(EachPath);

}  // namespace
