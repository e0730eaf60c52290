// Sound projects: cues and their node graphs read from the input, then every
// cue looked up by name.
#include <rapidxml.hpp>

#include "FuzzSupport.h"
#include "Sound/SoundProject.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  const std::string path = fuzz::InputFile(data, size, ".soundproject");
  fuzz::RunOrAssert([&] {
    SoundProject project;
    try {
      project.loadFromFile(path);
    } catch (const rapidxml::parse_error&) {
      // broken XML: the documented answer
    }
    project.getSoundCueByName("SFX_RECORD");
  });
  return 0;
}
