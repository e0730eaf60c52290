// The header of the clip that the launch parameter "audiofilename" names: the
// input is that file, which the recorder checks before it offers it to play.
#include "TitleFuzz.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  const std::string clip = fuzz::ScratchFolder() + "clip.wav";
  fuzz::WriteFile(clip, data, size);
  fuzz::RunTitle("{\"audiofilename\": \"" + clip + "\"}");
  return 0;
}
