// The XML form of a configuration tree.
#include "ConfigSystem/ConfigFile.h"
#include "FuzzSupport.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  fuzz::ThrowOnAssertions();
  const std::string path = fuzz::InputFile(data, size, ".xml");
  ConfigFile config;
  config.load(path.c_str());
  float value = 0;
  config.getProperty_Float("Recorder.StopMargin", value);
  Math3D::vec2 vector;
  config.getProperty_Vec2("Panel.Size", vector);
  return 0;
}
