// The media store's index files: loading and saving the audio list at three sizes,
// and the recorder's whole save of one clip into a gallery of 10,000 clips. Each
// writing benchmark runs twice, with the device forcing files to the disk (fsync of
// the file and its folder, as always on the device) and without; the difference is
// the share of the forcing.
#include <benchmark/benchmark.h>
#include <fcntl.h>
#include <stdlib.h>
#include <unistd.h>

#include <cstdio>
#include <string>

#include "BaseFramework/GameManager.h"
#include "BaseUtils.h"
#include "MediaCenter/MediaCenter.h"
#include "MediaCenter/VT/ZvArchive.h"
#include "solva/Device.h"
#include "solva/FaultInjection.h"

namespace {

// The title's manager in miniature: an archive and a store.
class BenchGame : public GameManager {
 public:
  BenchGame() {
    mArchiver = new ZvArchive();
    mArchiver->Initialize(4);
    mMediaCenter = new MediaCenter(this);
    mMediaCenter->Initialize();
  }
  ~BenchGame() override {
    mArchiver->Destroy();
    delete mMediaCenter;
    delete mArchiver;
  }
  MediaCenter& store() { return GetMediaCenter(); }
};

// A device of its own on the real disk, and the store's messages kept off the
// report while the benchmark runs.
class Device {
 public:
  Device() {
    const char* tmp = getenv("TMPDIR");
    std::string pattern = std::string(tmp && *tmp ? tmp : "/tmp") + "/media-bench-XXXXXX";
    mRoot = mkdtemp(&pattern[0]);
    solva::ResetDevice();
    solva::SetDeviceRoot(mRoot);
    solva::SetFreeBytes(1000000000);
    fflush(stdout);
    mSavedOut = dup(STDOUT_FILENO);
    const int quiet = open("/dev/null", O_WRONLY);
    dup2(quiet, STDOUT_FILENO);
    close(quiet);
  }
  ~Device() {
    fflush(stdout);
    dup2(mSavedOut, STDOUT_FILENO);
    close(mSavedOut);
    BaseUtils::Instance()->RMTree(mRoot);
    solva::ResetDevice();
  }
  const std::string& root() const { return mRoot; }

 private:
  std::string mRoot;
  int mSavedOut;
};

// An audio gallery of `count` clips: index, resid.bin and upload list.
void FillGallery(BenchGame& game, int count) {
  MediaCenter& store = game.store();
  for (int i = 0; i < count; ++i) store.CreateNewRes(eRT_Audio)->mLength = 1.0f + float(i % 100);
  store.SaveResInfo(eRT_Audio);
  const std::string list = solva::DeviceRoot() + "Upload/MusicPkg/UploadAudioList.txt";
  FILE* stream = fopen(list.c_str(), "w");
  for (int i = 1; i <= count; ++i) {
    fprintf(stream, "%sLocalData/Shared/Music/vtwgaudio_%d.wav\n", solva::DeviceRoot().c_str(), i);
  }
  fclose(stream);
}

void BM_LoadResInfoAudio(benchmark::State& state) {
  Device device;
  const int records = int(state.range(0));
  {
    BenchGame game;
    FillGallery(game, records);
  }
  BenchGame game;
  for (auto _ : state) {
    game.store().LoadResInfo(eRT_Audio);
    benchmark::DoNotOptimize(game.store().GetResInfoList(eRT_Audio).size());
  }
  state.SetItemsProcessed(state.iterations() * records);
}
BENCHMARK(BM_LoadResInfoAudio)->Arg(10)->Arg(1000)->Arg(10000)->Unit(benchmark::kMicrosecond);

// range(1): 1 with fsync, 0 without.
void BM_SaveResInfoAudio(benchmark::State& state) {
  Device device;
  const int records = int(state.range(0));
  solva::SetSyncWrites(state.range(1) != 0);
  BenchGame game;
  FillGallery(game, records);
  for (auto _ : state) game.store().SaveResInfo(eRT_Audio);
  state.SetItemsProcessed(state.iterations() * records);
  state.SetLabel(state.range(1) ? "fsync" : "no fsync");
}
BENCHMARK(BM_SaveResInfoAudio)
    ->ArgsProduct({{10, 1000, 10000}, {1, 0}})
    ->Unit(benchmark::kMicrosecond);

// CreateNewRes to EndOperProtected, as the recorder saves one clip, in a gallery
// that already holds range(0) clips.
void BM_CreateCycleAudio(benchmark::State& state) {
  Device device;
  solva::SetSyncWrites(state.range(1) != 0);
  BenchGame game;
  FillGallery(game, int(state.range(0)));
  MediaCenter& store = game.store();
  const std::string temporary = store.temporaryAudioName();
  int operations = 0;
  for (auto _ : state) {
    state.PauseTiming();
    // The capture's file, made by the capture service and not part of the save.
    FILE* capture = fopen(temporary.c_str(), "wb");
    fputs("RIFF", capture);
    fclose(capture);
    const int before = solva::FileOperationCount();
    state.ResumeTiming();
    ResInfo* clip = store.CreateNewRes(eRT_Audio);
    store.StartOperProtected(eRT_Audio, clip->mResId, MediaCenter::ePOT_Create);
    store.SaveResInfo(eRT_Audio);
    store.StoreAudioToDisk(eRT_Audio, clip->mResId);
    store.EndOperProtected(eRT_Audio);
    operations = solva::FileOperationCount() - before;
  }
  state.counters["file_ops"] = operations;
  state.SetLabel(state.range(1) ? "fsync" : "no fsync");
}
BENCHMARK(BM_CreateCycleAudio)->ArgsProduct({{10000}, {1, 0}})->Unit(benchmark::kMillisecond);

}  // namespace
