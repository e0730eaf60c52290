// The video walks of the media store: the input is a gallery video, whose first
// frame is taken out (ExtractAVIFrame) and whose length is read from its main
// header (GetVideoLengthByResId, through DescendToSpecificFourCC). The header's
// two assertions are the store's answer to a misplaced "avih" word.
#include <fcntl.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <string>

#include "BaseFramework/GameManager.h"
#include "BaseUtils.h"
#include "FuzzSupport.h"
#include "MediaCenter/MediaCenter.h"
#include "MediaCenter/VT/ZvArchive.h"
#include "solva/Device.h"
#include "solva/FaultInjection.h"

namespace {

// A device of its own under /tmp with one video in its gallery, whose thumbnail
// exists, so that the length's thumbnail step decodes it once and is quiet after.
class Gallery : public GameManager {
 public:
  Gallery() {
    mRoot = fuzz::ScratchFolder() + "avi/";
    solva::ResetDevice();
    solva::SetDeviceRoot(mRoot);
    solva::SetFreeBytes(1000000000);
    solva::SetSyncWrites(false);
    // The store's messages are not the fuzzer's business.
    const int quiet = open("/dev/null", O_WRONLY);
    dup2(quiet, STDOUT_FILENO);
    close(quiet);
    mArchiver = new ZvArchive();
    mArchiver->Initialize(4);
    mMediaCenter = new MediaCenter(this);
    mMediaCenter->Initialize();
    ResInfo* video = mMediaCenter->CreateNewRes(eRT_Video);
    mId = video->mResId;
    mVideo = mArchiver->mVideoPath + video->mName;
    unsigned char grey[8 * 8 * 3];
    for (unsigned char& c : grey) c = 128;
    mMediaCenter->StoreThumbToDisk(video, grey, 8, 8);
    mFrame = mRoot + "frame.jpg";
  }
  ~Gallery() override {
    mArchiver->Destroy();
    delete mMediaCenter;
    delete mArchiver;
    BaseUtils::Instance()->RMTree(mRoot);
    solva::ResetDevice();
  }

  void Run(const uint8_t* data, size_t size) {
    FILE* file = fopen(mVideo.c_str(), "wb");
    if (file == nullptr) abort();
    fwrite(data, 1, size, file);
    fclose(file);
    mMediaCenter->ExtractAVIFrame(mVideo, mFrame);
    try {
      const float seconds = mMediaCenter->GetVideoLengthByResId(mId);
      if (seconds < 0.0f) __builtin_trap();  // both factors are unsigned
    } catch (const fuzz::AssertionFailed&) {
    }
  }

 private:
  std::string mRoot;
  std::string mVideo;
  std::string mFrame;
  int mId;
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  fuzz::ThrowOnAssertions();
  static Gallery gallery;
  gallery.Run(data, size);
  return 0;
}
