// Picture decoding and scaling: JPEG through our decoder against plain libjpeg on
// the same file, bilinear scaling rates, and loading a screen-sized UDI and TGA.
// Inputs are made at start-up in a temporary folder and removed at exit.
#include <benchmark/benchmark.h>
#include <fcntl.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>
#include <unistd.h>
#include <zlib.h>

#include <chrono>
#include <cmath>
#include <string>
#include <vector>

#include <jpeglib.h>

#include "MediaCenter/MediaCenter.h"
#include "RenderSystem/GLTextureManager.h"
#include "RenderSystem/ImageLoader.h"

namespace {

typedef std::vector<unsigned char> Bytes;

// The picture operations need no gallery: a store without a game serves.
MediaCenter& Store() {
  static MediaCenter store(0);
  return store;
}

// A picture with smooth areas, edges and some texture, as a photo has.
Bytes Picture(int width, int height, int channels) {
  Bytes out(size_t(width) * height * channels);
  unsigned seed = 12345;
  for (int y = 0; y < height; ++y)
    for (int x = 0; x < width; ++x) {
      seed = seed * 1103515245u + 12345u;
      const int noise = int((seed >> 16) & 15) - 8;
      unsigned char* p = &out[(size_t(y) * width + x) * channels];
      const double r = std::hypot(x - width * 0.4, y - height * 0.5);
      const bool disc = r < height * 0.25;
      p[0] = (unsigned char)std::min(255, std::max(0, (disc ? 230 : x * 255 / width) + noise));
      p[1] = (unsigned char)std::min(255, std::max(0, (disc ? 200 : y * 255 / height) + noise));
      p[2] = (unsigned char)std::min(255, std::max(0, ((x / 40 + y / 40) & 1 ? 180 : 60) + noise));
      if (channels == 4) p[3] = (x > width * 3 / 4 && y > height * 3 / 4) ? 0 : 255;
    }
  return out;
}

void WriteFile(const std::string& path, const Bytes& bytes) {
  FILE* f = fopen(path.c_str(), "wb");
  fwrite(bytes.data(), 1, bytes.size(), f);
  fclose(f);
}

void WriteJpeg(const std::string& path, const Bytes& rgb, int width, int height) {
  FILE* f = fopen(path.c_str(), "wb");
  jpeg_compress_struct cinfo;
  jpeg_error_mgr errors;
  cinfo.err = jpeg_std_error(&errors);
  jpeg_create_compress(&cinfo);
  jpeg_stdio_dest(&cinfo, f);
  cinfo.image_width = JDIMENSION(width);
  cinfo.image_height = JDIMENSION(height);
  cinfo.input_components = 3;
  cinfo.in_color_space = JCS_RGB;
  jpeg_set_defaults(&cinfo);
  jpeg_set_quality(&cinfo, 85, TRUE);
  jpeg_start_compress(&cinfo, TRUE);
  while (cinfo.next_scanline < cinfo.image_height) {
    JSAMPROW row = const_cast<unsigned char*>(rgb.data()) + size_t(cinfo.next_scanline) * width * 3;
    jpeg_write_scanlines(&cinfo, &row, 1);
  }
  jpeg_finish_compress(&cinfo);
  jpeg_destroy_compress(&cinfo);
  fclose(f);
}

void PutU16(Bytes& out, unsigned v) {
  out.push_back((unsigned char)v);
  out.push_back((unsigned char)(v >> 8));
}
void PutU32(Bytes& out, unsigned v) {
  PutU16(out, v & 0xFFFF);
  PutU16(out, v >> 16);
}

Bytes Udi(const Bytes& argb, int width, int height, bool packed) {
  Bytes stored = argb;
  if (packed) {
    uLongf size = compressBound(argb.size());
    stored.resize(size);
    compress2(stored.data(), &size, argb.data(), argb.size(), 6);
    stored.resize(size);
  }
  Bytes out = {'U', 'D', 'I', 0};
  PutU32(out, 0);
  PutU32(out, unsigned(36 + argb.size()));
  PutU32(out, unsigned(36 + stored.size()));
  PutU16(out, unsigned(width));
  PutU16(out, unsigned(height));
  PutU32(out, packed ? 1 : 0);
  out.insert(out.end(), {0, 32, 0, 0});  // A8R8G8B8, 32 bits, no palette
  PutU32(out, 0);
  PutU32(out, 0);
  out.insert(out.end(), stored.begin(), stored.end());
  return out;
}

Bytes Tga(const Bytes& rgba, int width, int height, bool runLength) {
  Bytes out = {0, 0, (unsigned char)(runLength ? 10 : 2), 0, 0, 0, 0, 0, 0, 0, 0, 0};
  PutU16(out, unsigned(width));
  PutU16(out, unsigned(height));
  out.push_back(32);
  out.push_back(0x28);
  const size_t count = size_t(width) * height;
  auto bgra = [&](size_t i, Bytes& to) {
    to.insert(to.end(), {rgba[i * 4 + 2], rgba[i * 4 + 1], rgba[i * 4 + 0], rgba[i * 4 + 3]});
  };
  if (!runLength) {
    for (size_t i = 0; i < count; ++i) bgra(i, out);
    return out;
  }
  for (size_t i = 0; i < count;) {  // runs of equal pixels, else raw packets
    size_t run = 1;
    while (i + run < count && run < 128 && memcmp(&rgba[i * 4], &rgba[(i + run) * 4], 4) == 0) ++run;
    if (run > 1) {
      out.push_back((unsigned char)(0x80 | (run - 1)));
      bgra(i, out);
      i += run;
    } else {
      size_t raw = 1;
      while (i + raw < count && raw < 128 && memcmp(&rgba[(i + raw - 1) * 4], &rgba[(i + raw) * 4], 4) != 0) ++raw;
      out.push_back((unsigned char)(raw - 1));
      for (size_t k = 0; k < raw; ++k) bgra(i + k, out);
      i += raw;
    }
  }
  return out;
}

struct Inputs {
  std::string dir;
  Inputs() {
    char name[] = "/tmp/images_bench_XXXXXX";
    dir = mkdtemp(name);
    WriteJpeg(dir + "/vga.jpg", Picture(640, 480, 3), 640, 480);
    WriteJpeg(dir + "/5mp.jpg", Picture(2592, 1944, 3), 2592, 1944);
    const Bytes rgba = Picture(480, 272, 4);
    WriteFile(dir + "/stored.udi", Udi(rgba, 480, 272, false));
    WriteFile(dir + "/packed.udi", Udi(rgba, 480, 272, true));
    WriteFile(dir + "/raw.tga", Tga(rgba, 480, 272, false));
    WriteFile(dir + "/rle.tga", Tga(rgba, 480, 272, true));
    GLTextureManager::sCreate();
  }
  ~Inputs() {
    for (const char* f : {"vga.jpg", "5mp.jpg", "stored.udi", "packed.udi", "raw.tga", "rle.tga"})
      unlink((dir + "/" + f).c_str());
    rmdir(dir.c_str());
    delete GLTextureManager::instance_;
    GLTextureManager::instance_ = 0;
  }
};

Inputs& Files() {
  static Inputs inputs;
  return inputs;
}

// Plain libjpeg, as an application would write it: the same file, the same scale,
// a new buffer each time.
void PlainDecode(const std::string& path, int denom) {
  FILE* f = fopen(path.c_str(), "rb");
  jpeg_decompress_struct cinfo;
  jpeg_error_mgr errors;
  cinfo.err = jpeg_std_error(&errors);
  jpeg_create_decompress(&cinfo);
  jpeg_stdio_src(&cinfo, f);
  jpeg_read_header(&cinfo, TRUE);
  cinfo.scale_num = 1;
  cinfo.scale_denom = denom;
  jpeg_start_decompress(&cinfo);
  const size_t row = size_t(cinfo.output_width) * cinfo.output_components;
  unsigned char* pixels = new unsigned char[row * cinfo.output_height];
  while (cinfo.output_scanline < cinfo.output_height) {
    JSAMPROW line = pixels + cinfo.output_scanline * row;
    jpeg_read_scanlines(&cinfo, &line, 1);
  }
  jpeg_finish_decompress(&cinfo);
  jpeg_destroy_decompress(&cinfo);
  fclose(f);
  benchmark::DoNotOptimize(pixels);
  delete[] pixels;
}

// Our decoder is what the benchmark times; plain libjpeg on the same file runs in
// the same iteration, timed apart, and the ratio of the two is reported.
void BM_ExtractJpgToRGB8(benchmark::State& state) {
  std::string path = Files().dir + (state.range(0) == 0 ? "/vga.jpg" : "/5mp.jpg");
  const int denom = int(state.range(1));
  double plainSeconds = 0, oursSeconds = 0;
  int width = 0, height = 0;
  // The 16 path prints a line a call; it goes nowhere while measuring.
  fflush(stdout);
  const int savedOut = dup(1);
  const int nowhere = open("/dev/null", O_WRONLY);
  dup2(nowhere, 1);
  close(nowhere);
  for (auto _ : state) {
    const auto t0 = std::chrono::steady_clock::now();
    uint8* buf = 0;
    Store().ExtractJpgToRGB8(path, buf, width, height, denom);
    benchmark::DoNotOptimize(buf);
    delete[] buf;
    const auto t1 = std::chrono::steady_clock::now();
    state.PauseTiming();
    const auto t2 = std::chrono::steady_clock::now();
    PlainDecode(path, denom);
    const auto t3 = std::chrono::steady_clock::now();
    state.ResumeTiming();
    oursSeconds += std::chrono::duration<double>(t1 - t0).count();
    plainSeconds += std::chrono::duration<double>(t3 - t2).count();
  }
  fflush(stdout);
  dup2(savedOut, 1);
  close(savedOut);
  const double n = double(state.iterations());
  state.counters["ours_ms"] = oursSeconds / n * 1e3;
  state.counters["libjpeg_ms"] = plainSeconds / n * 1e3;
  state.counters["ratio"] = oursSeconds / plainSeconds;
  state.SetLabel(std::string(state.range(0) == 0 ? "640x480" : "2592x1944") + " 1/" + std::to_string(denom) + " -> " +
                 std::to_string(width) + "x" + std::to_string(height));
}
BENCHMARK(BM_ExtractJpgToRGB8)
    ->ArgsProduct({{0, 1}, {1, 2, 16}})
    ->ArgNames({"large", "denom"})
    ->Unit(benchmark::kMillisecond);

void BM_ScaleBuffer(benchmark::State& state) {
  const int newWidth = int(state.range(0)), newHeight = int(state.range(1));
  Bytes src = Picture(640, 480, 3);
  for (auto _ : state) {
    uint8* out = Store().ScaleBuffer(newWidth, newHeight, 1, 640, 480, src.data());
    benchmark::DoNotOptimize(out);
    delete[] out;
  }
  const double n = double(state.iterations());
  state.counters["source_MP/s"] = benchmark::Counter(n * 640 * 480 / 1e6, benchmark::Counter::kIsRate);
  state.counters["output_MP/s"] =
      benchmark::Counter(n * double(newWidth) * newHeight / 1e6, benchmark::Counter::kIsRate);
}
BENCHMARK(BM_ScaleBuffer)->Args({80, 80})->Args({320, 240})->ArgNames({"w", "h"})->Unit(benchmark::kMicrosecond);

void BM_LoadImage(benchmark::State& state, const char* name) {
  const std::string path = Files().dir + "/" + name;
  for (auto _ : state) {
    BMPData bmp;
    memset(&bmp, 0, sizeof bmp);
    if (LoadImageFromFile(path.c_str(), &bmp) != 0) {
      state.SkipWithError("load failed");
      break;
    }
    benchmark::DoNotOptimize(bmp.pixels);
    UnloadBMPData(&bmp);
  }
  state.counters["MP/s"] = benchmark::Counter(double(state.iterations()) * 480 * 272 / 1e6, benchmark::Counter::kIsRate);
}
BENCHMARK_CAPTURE(BM_LoadImage, udi_stored_480x272, "stored.udi")->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(BM_LoadImage, udi_packed_480x272, "packed.udi")->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(BM_LoadImage, tga_raw_480x272, "raw.tga")->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(BM_LoadImage, tga_rle_480x272, "rle.tga")->Unit(benchmark::kMicrosecond);

}  // namespace
