// The decoder of DDS pixel data: the first byte chooses the format, the next two
// the width and height (1 to 64); the rest is the data. The decoder is told no
// size, so it is given exactly what the picture needs, in a buffer of that size,
// and an input shorter than that is not a picture.
#include <cstring>

#include "FuzzSupport.h"
#include "RenderSystem/DDSDecoder.h"

namespace {
const int kFormats[] = {0, 1, 2, 4, 6, 3};

size_t BytesOf(int format, int width, int height) {
  const size_t pixels = size_t(width) * height;
  if (format == 0) return pixels * 3;
  if (format == 1) return pixels * 4;
  const size_t blocks = size_t((width + 3) / 4) * ((height + 3) / 4);
  return blocks * (format == 4 || format == 6 ? 16 : 8);
}
}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  if (size < 3) return 0;
  const int format = kFormats[data[0] % 6];
  const int width = data[1] % 64 + 1;
  const int height = data[2] % 64 + 1;
  const size_t need = BytesOf(format, width, height);
  if (size - 3 < need) return 0;
  unsigned char* src = new unsigned char[need];
  memcpy(src, data + 3, need);
  char* out = new char[size_t(width) * height * 4];
  DECODEDDSFormat(format, src, width, height, &out);
  if (format != 1) delete[] src;  // format 1 frees it itself
  delete[] out;
  return 0;
}
