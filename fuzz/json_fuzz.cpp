// Launch parameters and metadata files: JSON text in, JSON text out.
#include "CJSonFile.h"
#include "FuzzSupport.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  Catalog::CJSonFile json;
  if (json.Parse(std::string(reinterpret_cast<const char*>(data), size))) {
    Catalog::CJSonFile again;
    if (!again.Parse(json.ToString())) __builtin_trap();  // what we print we must read
  }
  return 0;
}
