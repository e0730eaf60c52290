// WAF archives: sequential reading against zlib's bare uncompress of the same
// blocks (the bound), and random seeks with a small read after each.
#include <benchmark/benchmark.h>
#include <unistd.h>
#include <zlib.h>

#include <cstdio>
#include <random>
#include <string>
#include <vector>

#include "External/waf/wafexp.h"

namespace {

const int kFileSize = 16 << 20;

void PutI32(std::vector<unsigned char>& out, int32_t value) {
  for (int i = 0; i < 4; ++i) out.push_back(static_cast<unsigned char>(uint32_t(value) >> (8 * i)));
}

// A 16 MiB file of something like text, packed as `waf pack` packs it (64 KiB
// blocks, the best compression), in an archive under /tmp; the compressed
// blocks are kept for the bound.
struct Fixture {
  std::string path;
  std::vector<std::vector<unsigned char>> blocks;

  Fixture() {
    std::vector<unsigned char> data(kFileSize);
    std::mt19937 random(7);
    const char* const words[] = {"archive ", "block ", "the ", "of ", "recorder ", "title\n", "a ", "frame "};
    for (size_t i = 0; i < data.size();) {
      for (const char* c = words[random() % 8]; *c && i < data.size(); ++c) data[i++] = static_cast<unsigned char>(*c);
    }
    std::vector<unsigned char> archive = {'w', 'a', 'f', 0};
    PutI32(archive, WAF_VERSION);
    PutI32(archive, 1);
    PutI32(archive, 4);
    archive.insert(archive.end(), {'f', 'i', 'l', 'e'});
    PutI32(archive, kFileSize);
    PutI32(archive, 12 + 4 + 4 + 8);
    for (size_t at = 0; at < data.size(); at += WAF_BLOCK_SIZE) {
      uLongf length = compressBound(WAF_BLOCK_SIZE);
      std::vector<unsigned char> block(length);
      compress2(block.data(), &length, data.data() + at, WAF_BLOCK_SIZE, Z_BEST_COMPRESSION);
      block.resize(length);
      PutI32(archive, int32_t(length));
      archive.insert(archive.end(), block.begin(), block.end());
      blocks.push_back(block);
    }
    PutI32(archive, 0);
    path = "/tmp/zvbench-" + std::to_string(getpid()) + ".waf";
    FILE* file = fopen(path.c_str(), "wb");
    fwrite(archive.data(), 1, archive.size(), file);
    fclose(file);
  }
  ~Fixture() { remove(path.c_str()); }
};

Fixture& TheFixture() {
  static Fixture fixture;
  return fixture;
}

// The whole file through waf_read, in reads of 64 KiB.
void BM_WafSequentialRead64K(benchmark::State& state) {
  waf_archive* archive = waf_archive_open(TheFixture().path.c_str(), 0);
  std::vector<unsigned char> buffer(WAF_BLOCK_SIZE);
  for (auto _ : state) {
    waf_file* file = waf_open(archive, "file");
    int total = 0, got;
    while ((got = waf_read(file, buffer.data(), WAF_BLOCK_SIZE)) > 0) total += got;
    if (total != kFileSize) state.SkipWithError("the file did not read whole");
    waf_close(file);
  }
  waf_archive_close(archive);
  state.SetBytesProcessed(int64_t(state.iterations()) * kFileSize);
}
BENCHMARK(BM_WafSequentialRead64K)->Unit(benchmark::kMillisecond);

// The bound: the same blocks, already in memory, through uncompress alone.
void BM_BareUncompressOfTheSameBlocks(benchmark::State& state) {
  const Fixture& fixture = TheFixture();
  std::vector<unsigned char> buffer(WAF_BLOCK_SIZE);
  for (auto _ : state) {
    for (const std::vector<unsigned char>& block : fixture.blocks) {
      uLongf length = WAF_BLOCK_SIZE;
      uncompress(buffer.data(), &length, block.data(), uLong(block.size()));
    }
    benchmark::DoNotOptimize(buffer.data());
  }
  state.SetBytesProcessed(int64_t(state.iterations()) * kFileSize);
}
BENCHMARK(BM_BareUncompressOfTheSameBlocks)->Unit(benchmark::kMillisecond);

// waf_seek to a random place, then a read of 4 KiB; the table of block offsets
// is learnt on the first seeks and kept.
void BM_WafRandomSeekRead4K(benchmark::State& state) {
  waf_archive* archive = waf_archive_open(TheFixture().path.c_str(), 0);
  waf_file* file = waf_open(archive, "file");
  std::mt19937 random(11);
  std::uniform_int_distribution<int> place(0, kFileSize - 4096);
  std::vector<unsigned char> buffer(4096);
  for (auto _ : state) {
    if (waf_seek(file, place(random), 0) != 0 || waf_read(file, buffer.data(), 4096) != 4096) {
      state.SkipWithError("seek or read failed");
      break;
    }
  }
  waf_close(file);
  waf_archive_close(archive);
}
BENCHMARK(BM_WafRandomSeekRead4K)->Unit(benchmark::kMicrosecond);

}  // namespace
