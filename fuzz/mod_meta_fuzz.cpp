// A downloaded folder's meta.json, as TryToLoadMdl reads it: its package id and
// its "ModKitType" tag choose the kind of mod. An application mod needs its menu
// textures on the GL, which the harness has not: its kit is left to the tests.
#include <fstream>

#include "CMetaInfo.h"
#include "FuzzSupport.h"
#include "ModFuzzSupport.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  fuzz::ThrowOnAssertions();
  fuzz::ModArchive();
  const std::string folder = fuzz::ModFolder();
  std::ofstream(folder + "meta.json", std::ios::binary).write(reinterpret_cast<const char*>(data), std::streamsize(size));
  {
    Catalog::CMetaInfo meta(folder);
    if (meta.GetTagString("ModKitType") == "Application") return 0;
  }
  fuzz::LoadAndForgetMods();
  return 0;
}
