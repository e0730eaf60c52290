// solva-sim's script language.
#include "FuzzSupport.h"
#include "Script.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  Script script;
  std::string error;
  script.Parse(std::string(reinterpret_cast<const char*>(data), size), "fuzz", &error);
  return 0;
}
