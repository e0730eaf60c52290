// The micro mods' mark file, as TryToLoadMdl reads it; what WriteMdlInformation
// then writes must read back to the same marks.
#include <fstream>
#include <vector>

#include "FuzzSupport.h"
#include "MediaCenter/MicroMods.h"
#include "ModFuzzSupport.h"

namespace {
// The marks of a load; its mods are deleted, as the archive never does.
std::vector<int> Marks(ZvArchive& archive) {
  std::vector<int> marks;
  for (MicroMod* mod : archive.mMicroMods) {
    marks.push_back(mod->mMark);
    delete mod;
  }
  return marks;
}
}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  fuzz::ThrowOnAssertions();
  ZvArchive& archive = fuzz::ModArchive();
  const std::string marks = archive.mFileIndexPath + "MicroModMarks.bin";
  std::ofstream(marks, std::ios::binary).write(reinterpret_cast<const char*>(data), std::streamsize(size));
  archive.TryToLoadMdl();
  archive.WriteMdlInformation();
  const std::vector<int> read = Marks(archive);
  archive.TryToLoadMdl();
  if (Marks(archive) != read) __builtin_trap();  // what we write we must read
  archive.mMicroMods.clear();
  return 0;
}
