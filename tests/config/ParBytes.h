#pragma once
// Lays out the binary .par form of a configuration tree, byte by byte, for tests.
#include <string>

#include "support/TestSupport.h"

namespace zvtest {

struct ParBytes {
  Bytes bytes;

  ParBytes& node(const std::string& name, int children, int properties) {
    PutI32(bytes, int32_t(name.size()));
    PutText(bytes, name);
    PutI32(bytes, children);
    PutI32(bytes, properties);
    return *this;
  }
  ParBytes& head(const std::string& name, int type) {
    PutI32(bytes, int32_t(name.size()));
    PutText(bytes, name);
    PutI32(bytes, type);
    return *this;
  }
  ParBytes& boolean(const std::string& name, uint8_t value) {
    head(name, 1);
    PutU8(bytes, value);
    return *this;
  }
  ParBytes& text(const std::string& name, int type, const std::string& value) {
    head(name, type);
    PutI32(bytes, int32_t(value.size()));
    PutText(bytes, value);
    return *this;
  }
  ParBytes& number(const std::string& name, int type, double value) {
    head(name, type);
    PutF64(bytes, value);
    return *this;
  }
  ParBytes& doubles(const std::string& name, int type, std::initializer_list<double> values) {
    head(name, type);
    for (double v : values) PutF64(bytes, v);
    return *this;
  }
  ParBytes& end() {
    PutI32(bytes, 0);
    return *this;
  }
};

}  // namespace zvtest
