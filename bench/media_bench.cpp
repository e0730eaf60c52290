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
#include <cstring>
#include <string>
#include <vector>

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

// --- videos -------------------------------------------------------------------------
// The first frame and the length of a 640 x 480 MJPEG video of 300 frames (10 s at
// 30 fps), in the gallery on the real disk. Besides the time, each reports the bytes
// the process read from files per call (the kernel's count of what read calls
// returned, so stdio's read-ahead counts too) against the file's size: the walk
// must stop at the first frame, not read the whole file.

// Bytes this process has read through read calls so far.
long long BytesReadSoFar() {
  char text[1024];
  const int io = open("/proc/self/io", O_RDONLY);
  const ssize_t got = read(io, text, sizeof text - 1);
  close(io);
  text[got > 0 ? got : 0] = 0;
  const char* rchar = strstr(text, "rchar: ");
  return rchar ? atoll(rchar + 7) : 0;
}

// What asking for the count adds to it.
long long CountingCost() {
  const long long first = BytesReadSoFar();
  return BytesReadSoFar() - first;
}

void PutWord(std::string& out, const char* code) { out.append(code, 4); }
void PutU32(std::string& out, uint32_t value) { out.append(reinterpret_cast<const char*>(&value), 4); }
void PutU16(std::string& out, uint16_t value) { out.append(reinterpret_cast<const char*>(&value), 2); }
void PutChunk(std::string& out, const char* code, const std::string& body) {
  PutWord(out, code);
  PutU32(out, uint32_t(body.size()));
  out += body;
  if (body.size() % 2 == 1) out += '\0';
}
std::string List(const char* type, const std::string& content) {
  std::string body;
  PutWord(body, type);
  body += content;
  std::string out;
  PutChunk(out, "LIST", body);
  return out;
}

// Writes an MJPEG AVI as an encoder lays it out: the header list (main header,
// one video stream), a "JUNK" chunk, the frame list, the index. The frames are ten
// textured pictures from the store's JPEG encoder, in turn. Returns the file's size.
long WriteVideo(MediaCenter& store, const std::string& path, int frames) {
  const int width = 640, height = 480;
  std::vector<std::string> pictures;
  std::vector<unsigned char> rgb(size_t(width) * height * 3);
  for (int k = 0; k < 10; ++k) {
    unsigned seed = 12345u + unsigned(k);
    for (int y = 0; y < height; ++y)
      for (int x = 0; x < width; ++x) {
        seed = seed * 1103515245u + 12345u;
        unsigned char* p = &rgb[(size_t(y) * width + x) * 3];
        p[0] = (unsigned char)(x * 255 / width + (seed >> 28));
        p[1] = (unsigned char)(y * 255 / height + k * 20);
        p[2] = (unsigned char)((((x + k * 8) / 32 + y / 32) & 1) ? 200 : 40);
      }
    std::string picture = path + ".frame.jpg";
    store.GenerateJpgFromRGB8(picture, rgb.data(), width, height, 1.0f);
    FILE* in = fopen(picture.c_str(), "rb");
    std::string bytes;
    char block[65536];
    for (size_t got; (got = fread(block, 1, sizeof block, in)) > 0;) bytes.append(block, got);
    fclose(in);
    remove(picture.c_str());
    pictures.push_back(bytes);
  }

  std::string mainHeader;
  PutU32(mainHeader, 33333);                 // microseconds a frame
  PutU32(mainHeader, 2000000);               // bytes a second
  PutU32(mainHeader, 0);                     // padding granularity
  PutU32(mainHeader, 0x10);                  // has an index
  PutU32(mainHeader, uint32_t(frames));      // total frames
  PutU32(mainHeader, 0);                     // initial frames
  PutU32(mainHeader, 1);                     // streams
  PutU32(mainHeader, 1 << 20);               // suggested buffer size
  PutU32(mainHeader, width);
  PutU32(mainHeader, height);
  mainHeader.append(16, '\0');
  std::string stream;
  PutWord(stream, "vids");
  PutWord(stream, "MJPG");
  PutU32(stream, 0);                   // flags
  PutU16(stream, 0);                   // priority
  PutU16(stream, 0);                   // language
  PutU32(stream, 0);                   // initial frames
  PutU32(stream, 1);                   // scale
  PutU32(stream, 30);                  // rate
  PutU32(stream, 0);                   // start
  PutU32(stream, uint32_t(frames));    // length
  PutU32(stream, 1 << 20);             // suggested buffer size
  PutU32(stream, 0xFFFFFFFFu);         // quality
  PutU32(stream, 0);                   // sample size
  PutU16(stream, 0);                   // frame rectangle
  PutU16(stream, 0);
  PutU16(stream, width);
  PutU16(stream, height);
  std::string format;
  PutU32(format, 40);
  PutU32(format, width);
  PutU32(format, height);
  PutU16(format, 1);                   // planes
  PutU16(format, 24);                  // bits a pixel
  PutWord(format, "MJPG");
  PutU32(format, uint32_t(width * height * 3));
  format.append(16, '\0');
  std::string headerList, streamList;
  PutChunk(streamList, "strh", stream);
  PutChunk(streamList, "strf", format);
  PutChunk(headerList, "avih", mainHeader);
  headerList += List("strl", streamList);

  std::string movi, index;
  for (int i = 0; i < frames; ++i) {
    const std::string& picture = pictures[size_t(i) % pictures.size()];
    PutWord(index, "00dc");
    PutU32(index, 0x10);                     // a key frame
    PutU32(index, uint32_t(4 + movi.size()));  // from the "movi" word
    PutU32(index, uint32_t(picture.size()));
    PutChunk(movi, "00dc", picture);
  }
  std::string body;
  PutWord(body, "AVI ");
  body += List("hdrl", headerList);
  PutChunk(body, "JUNK", std::string(1016, '\0'));
  body += List("movi", movi);
  PutChunk(body, "idx1", index);
  std::string file;
  PutChunk(file, "RIFF", body);
  FILE* out = fopen(path.c_str(), "wb");
  fwrite(file.data(), 1, file.size(), out);
  fclose(out);
  return long(file.size());
}

// range(0): 1 with fsync of the written frame, 0 without.
void BM_ExtractAVIFrame(benchmark::State& state) {
  Device device;
  solva::SetSyncWrites(state.range(0) != 0);
  BenchGame game;
  MediaCenter& store = game.store();
  ResInfo* video = store.CreateNewRes(eRT_Video);
  const std::string path = store.GetResPath(eRT_Video) + video->mName;
  const long fileBytes = WriteVideo(store, path, 300);
  const std::string frame = device.root() + "frame.jpg";
  const long long cost = CountingCost();
  const long long before = BytesReadSoFar();
  for (auto _ : state) benchmark::DoNotOptimize(store.ExtractAVIFrame(path, frame));
  const long long read = BytesReadSoFar() - before - cost;
  FILE* out = fopen(frame.c_str(), "rb");
  fseek(out, 0, SEEK_END);
  state.counters["frame_bytes"] = double(ftell(out));
  fclose(out);
  state.counters["read_bytes"] = double(read) / double(state.iterations());
  state.counters["file_bytes"] = double(fileBytes);
  state.SetLabel(state.range(0) ? "fsync" : "no fsync");
}
BENCHMARK(BM_ExtractAVIFrame)->Arg(1)->Arg(0)->Unit(benchmark::kMicrosecond);

// The same video's length, its thumbnail decoded once before.
void BM_GetVideoLengthByResId(benchmark::State& state) {
  Device device;
  BenchGame game;
  MediaCenter& store = game.store();
  ResInfo* video = store.CreateNewRes(eRT_Video);
  const long fileBytes = WriteVideo(store, store.GetResPath(eRT_Video) + video->mName, 300);
  std::vector<unsigned char> grey(80 * 80 * 3, 128);
  store.StoreThumbToDisk(video, grey.data(), 80, 80);
  const int id = video->mResId;
  if (store.GetVideoLengthByResId(id) <= 0.0f) state.SkipWithError("no length");
  const long long cost = CountingCost();
  const long long before = BytesReadSoFar();
  for (auto _ : state) benchmark::DoNotOptimize(store.GetVideoLengthByResId(id));
  const long long read = BytesReadSoFar() - before - cost;
  state.counters["read_bytes"] = double(read) / double(state.iterations());
  state.counters["file_bytes"] = double(fileBytes);
}
BENCHMARK(BM_GetVideoLengthByResId)->Unit(benchmark::kMicrosecond);

}  // namespace
