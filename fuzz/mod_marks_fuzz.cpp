// The micro mods' mark file, as TryToLoadMdl reads it; what WriteMdlInformation
// then writes must read back to the same marks.
#include <fstream>
#include <vector>

#include "FuzzSupport.h"
#include "MediaCenter/MicroMods.h"
#include "ModFuzzSupport.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  fuzz::ThrowOnAssertions();
  ZvArchive& archive = fuzz::ModArchive();
  const std::string marks = archive.mFileIndexPath + "MicroModMarks.bin";
  std::ofstream(marks, std::ios::binary).write(reinterpret_cast<const char*>(data), std::streamsize(size));
  archive.TryToLoadMdl();
  std::vector<int> read;
  for (MicroMod* mod : archive.mMicroMods) read.push_back(mod->mMark);
  archive.WriteMdlInformation();
  for (MicroMod* mod : archive.mMicroMods) delete mod;
  archive.TryToLoadMdl();
  for (size_t i = 0; i < archive.mMicroMods.size(); ++i) {
    if (i >= read.size() || archive.mMicroMods[i]->mMark != read[i]) __builtin_trap();  // what we write we must read
  }
  fuzz::LoadAndForgetMods();
  return 0;
}
