// The list of a title's sprite names: every name read is looked up both ways.
#include "FuzzSupport.h"
#include "RenderSystem/AnimatedSpriteDataManager.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  fuzz::ThrowOnAssertions();
  const std::string path = fuzz::InputFile(data, size, ".txt");
  AnimatedSpriteDataManager manager;
  manager.LoadSpriteName2ID(path.c_str());
  for (const auto& entry : manager.mIDToSpriteName) {
    if (manager.getSpriteNameByID(entry.first) == nullptr) abort();
    if (manager.getSpriteIDByName(entry.second) < 0) abort();
    if (entry.second.size() < 3 || entry.second.size() > 1023) abort();
  }
  return 0;
}
