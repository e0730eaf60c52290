// A mod's MicroModsConfig.xml in each of its three schemes: the first byte
// chooses the class (missions, stories, brushes), the rest is the file.
#include <fstream>

#include "FuzzSupport.h"
#include "MediaCenter/MicroMods.h"
#include "ModFuzzSupport.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  if (size < 1) return 0;
  fuzz::ThrowOnAssertions();
  fuzz::ModArchive();
  const std::string folder = fuzz::ModFolder();
  std::ofstream(folder + "MicroModsConfig.xml", std::ios::binary)
      .write(reinterpret_cast<const char*>(data + 1), std::streamsize(size - 1));
  switch (data[0] % 3) {
    case 0: {
      MicroModScoopcam missions;
      missions.SetMicroModPath(folder);
      missions.LoadMicroModFromFile();
      break;
    }
    case 1: {
      MicroModFablewright stories;
      stories.SetMicroModPath(folder);
      stories.LoadMicroModFromFile();
      break;
    }
    default: {
      MicroModWigglo brushes;
      brushes.SetMicroModPath(folder);
      brushes.LoadMicroModFromFile();
      break;
    }
  }
  return 0;
}
