// The binary form of a configuration tree, with look-ups into whatever was read.
#include "ConfigSystem/ConfigFile.h"
#include "FuzzSupport.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  fuzz::ThrowOnAssertions();
  const std::string path = fuzz::InputFile(data, size, ".par");
  ConfigFile config;
  config.load(path.c_str());
  int value = 0;
  config.getProperty_Int("Recorder.MaxSeconds", value);
  std::string text;
  config.getProperty_String("a.b", text);
  ConfigDefine::tVector<double, 4> vector;
  config.getProperty_Vec4("Panel.Tint", vector);
  return 0;
}
