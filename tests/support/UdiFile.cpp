#include "support/UdiFile.h"

#include <zlib.h>

#include <stdexcept>

namespace zvtest {

Bytes MakeUdi(const UdiLayout& layout, const Bytes& payload) {
  Bytes stored = payload;
  if (layout.compression == 1) {
    uLongf size = compressBound(payload.size());
    stored.assign(size, 0);
    if (compress2(stored.data(), &size, payload.data(), payload.size(), 9) != Z_OK) {
      throw std::runtime_error("zlib cannot pack the UDI payload");
    }
    stored.resize(size);
  }
  Bytes out;
  PutText(out, std::string("UDI", 3));
  PutU8(out, 0);
  PutU32(out, 0xDEADBEEF);                                               // 4: not read
  PutU32(out, uint32_t(36 + payload.size()));                            // 8: unpacked file length
  PutU32(out, uint32_t(36 + stored.size() + layout.storedLengthError));  // 12: stored file length
  PutU16(out, layout.width);
  PutU16(out, layout.height);
  PutU8(out, layout.compression);
  PutU8(out, 0xA1);  // 21 to 23: not read
  PutU8(out, 0xA2);
  PutU8(out, 0xA3);
  PutU8(out, layout.pixelFormat);
  PutU8(out, layout.bitsPerPixel);
  PutU8(out, 0xB6);  // 26: not read
  PutU8(out, layout.paletteType);
  for (int i = 0; i < 8; ++i) PutU8(out, uint8_t(0xC0 + i));  // 28 to 35: carried along
  out.insert(out.end(), stored.begin(), stored.end());
  return out;
}

void WriteUdi(const std::string& path, int width, int height, int pixelFormat, int bits, int paletteType,
              const Bytes& payload, int compression) {
  UdiLayout layout;
  layout.width = uint16_t(width);
  layout.height = uint16_t(height);
  layout.pixelFormat = uint8_t(pixelFormat);
  layout.bitsPerPixel = uint8_t(bits);
  layout.paletteType = uint8_t(paletteType);
  layout.compression = uint8_t(compression);
  WriteBytes(path, MakeUdi(layout, payload));
}

}  // namespace zvtest
