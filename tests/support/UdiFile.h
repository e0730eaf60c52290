#pragma once
// UDI files laid out byte by byte for tests: the 36-byte header and the payload,
// stored (compression 0) or zlib-packed (1). The bytes the loader never reads are
// filled with junk.
#include <cstdint>
#include <string>

#include "support/TestSupport.h"

namespace zvtest {

struct UdiLayout {
  uint16_t width = 4;
  uint16_t height = 2;
  uint8_t compression = 0;
  uint8_t pixelFormat = 0;
  uint8_t bitsPerPixel = 32;
  uint8_t paletteType = 0;
  int storedLengthError = 0;  // added to the stored-length field
};

Bytes MakeUdi(const UdiLayout& layout, const Bytes& payload);

// A UDI file at `path` of that size, pixel format, colour size and palette type.
void WriteUdi(const std::string& path, int width, int height, int pixelFormat, int bits, int paletteType,
              const Bytes& payload, int compression = 0);

}  // namespace zvtest
