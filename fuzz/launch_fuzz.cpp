// The recorder's launch parameters: the input is the JSON text another program
// launches the title with.
#include "TitleFuzz.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  const std::string params(reinterpret_cast<const char*>(data), size);
  Catalog::CJSonFile json;
  if (json.Parse(params)) fuzz::RunTitle(params);
  return 0;
}
