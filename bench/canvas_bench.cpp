// Full-screen layer work against memcpy of the same byte count, timed side by side
// in each benchmark: the "x_memcpy" counter is the operation's time over memcpy's,
// how far it stays from the memory-bandwidth limit. The draws run with each build of
// the spans this machine has: /0 portable, /1 SSE2, /2 AVX2 (the one the layers take).
// Beside them: the blends of the pixel-at-a-time table code that the spans replaced
// (the tests' reference), and the bound of a blend on this machine, a bare vector loop
// with the same three streams (read source, read and write destination).
#include <benchmark/benchmark.h>

#include <chrono>
#include <cstdio>
#include <cstring>
#include <unistd.h>
#include <functional>
#include <vector>
#if defined(__x86_64__)
#include <immintrin.h>
#endif

#include "Canvas/CanvasSpans.h"
#include "canvas/CanvasReference.h"
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

// The table code, pixel at a time, on a copy of the layer's pixels.
void TableDraw(benchmark::State& state, canvasref::Form form, uint8_t alpha) {
  Bench bench;
  const std::vector<uint8_t> image = Image(4, alpha);
  canvasref::Pixels pixels{kWidth, kHeight, std::vector<uint8_t>(kLayerBytes, 0)};
  canvasref::Draw draw;
  draw.w = draw.srcW = kWidth;
  draw.h = draw.srcH = kHeight;
  draw.src = image.data();
  bench.Run(state, [&] { canvasref::Apply(form, draw, pixels); });
}

void BM_TableDrawRGBA8888HalfTransparent(benchmark::State& state) {
  TableDraw(state, canvasref::Form::ZvRGBA9, 128);
}
BENCHMARK(BM_TableDrawRGBA8888HalfTransparent)->UseManualTime()->Unit(benchmark::kMicrosecond);

void BM_TableDrawRGBA8888FromOrigin(benchmark::State& state) { TableDraw(state, canvasref::Form::ZvRGBA11, 255); }
BENCHMARK(BM_TableDrawRGBA8888FromOrigin)->UseManualTime()->Unit(benchmark::kMicrosecond);

void BM_TableDrawLayerHalf(benchmark::State& state) {
  Bench bench;
  const std::vector<uint8_t> image = Image(4, 200);
  const canvasref::Pixels layer{kWidth, kHeight, image};
  std::vector<uint8_t> display(kLayerBytes);
  bench.Run(state, [&] { canvasref::Fade(layer, 0.5f, display); });
}
BENCHMARK(BM_TableDrawLayerHalf)->UseManualTime()->Unit(benchmark::kMicrosecond);

#if defined(__x86_64__)
// Each destination byte becomes the mean of itself and the source's, 32 bytes a step:
// the least work a loop with a blend's three streams can do.
__attribute__((target("avx2"))) void StreamAvx2(uint8_t* dst, const uint8_t* src, size_t bytes) {
  for (size_t i = 0; i < bytes; i += 32) {
    const __m256i d = _mm256_loadu_si256(reinterpret_cast<const __m256i*>(dst + i));
    const __m256i s = _mm256_loadu_si256(reinterpret_cast<const __m256i*>(src + i));
    _mm256_storeu_si256(reinterpret_cast<__m256i*>(dst + i), _mm256_avg_epu8(d, s));
  }
}

void BM_StreamReadReadWrite(benchmark::State& state) {
  if (!__builtin_cpu_supports("avx2")) {
    state.SkipWithError("no AVX2 here");
    return;
  }
  Bench bench;
  const std::vector<uint8_t> image = Image(4, 128);
  bench.Run(state, [&] { StreamAvx2(bench.layer->GetBuffer(), image.data(), kLayerBytes); });
}
BENCHMARK(BM_StreamReadReadWrite)->UseManualTime()->Unit(benchmark::kMicrosecond);
#endif

}  // namespace
