// The upload lists, and the metadata file beside them: the first byte chooses
// the kind (photo, video, art, audio, story), the second how many of the
// following bytes are the list; the rest is the folder's meta.json. The store
// adds a new item, then deletes it again.
#include "FuzzSupport.h"
#include "MediaFuzz.h"

namespace {
const EResType kKinds[] = {eRT_Photo, eRT_Video, eRT_Art, eRT_Audio, eRT_ScrapBook};
const char* const kLists[] = {"PhotosPkg/UploadPhotoList.txt", "VideosPkg/UploadVideoList.txt",
                              "ArtPkg/UploadArtList.txt", "MusicPkg/UploadAudioList.txt",
                              "StoryBooks/UploadScrapBookList.txt"};
}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  if (size < 2) return 0;
  const int kind = data[0] % 5;
  const size_t listSize = std::min<size_t>(data[1], size - 2);
  fuzz::RunOrAssert([&] {
    const std::string root = fuzz::FreshDevice(fuzz::StoreTitle());
    const std::string list = root + "Upload/" + kLists[kind];
    fuzz::WriteFile(list, data + 2, listSize);
    fuzz::WriteFile(list.substr(0, list.rfind('/') + 1) + "meta.json", data + 2 + listSize, size - 2 - listSize);
    fuzz::StoreGame game;
    MediaCenter& store = game.store();
    ResInfo record;
    record.mResType = kKinds[kind];
    record.mResId = 7;
    record.mName = kind == 4 ? game.archive().mPlayerRootPath + "SD-1-7" : "vtwg_7.jpg";
    store.WriteUploadFileIncreased(&record);
    store.UploadFileDeleteItem(record.mResType, record.mName);
  });
  return 0;
}
