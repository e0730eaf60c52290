#include "RenderSystem/DDSDecoder.h"

#include <stdint.h>
#include <string.h>

namespace {

enum { kRGB = 0, kRGBA = 1, kDXT1 = 2, kDXT3 = 4, kDXT5 = 6 };

// An endpoint's components: the top bits of each field, low bits cleared.
void Expand(unsigned c, int rgb[3]) {
  rgb[0] = (c >> 8) & 0xF8;
  rgb[1] = (c >> 3) & 0xFC;
  rgb[2] = (c * 8) & 0xF8;
}

// The alpha ramp of a DXT5 block. The weighted sum is cut to 8 bits before the
// division, as textures made for this decoder expect.
int RampAlpha(int a0, int a1, int i) {
  if (i == 0) return a0;
  if (i == 1) return a1;
  if (a0 > a1) return uint8_t((8 - i) * a0 + (i - 1) * a1) / 7;
  if (i < 6) return uint8_t((6 - i) * a0 + (i - 1) * a1) / 5;
  return i == 6 ? 0 : 255;
}

void DecodeBlocks(int format, const unsigned char* src, int width, int height, unsigned char* out) {
  const int blockSize = (format == kDXT3 || format == kDXT5) ? 16 : 8;
  // Blocks cover the picture, the last column and row of blocks partly outside it;
  // the texels outside are not stored.
  const int blocksWide = (width + 3) / 4;
  const int blocksHigh = (height + 3) / 4;
  for (int by = 0; by < blocksHigh; ++by) {
    for (int bx = 0; bx < blocksWide; ++bx) {
      const unsigned char* block = src + size_t(by * blocksWide + bx) * blockSize;
      uint64_t alphaBits = 0;
      int a0 = 255, a1 = 255;
      if (format == kDXT3 || format == kDXT5) {
        for (int k = 7; k >= 0; --k) alphaBits = (alphaBits << 8) | block[k];
        if (format == kDXT5) {
          a0 = block[0];
          a1 = block[1];
          alphaBits >>= 16;  // 48 bits of 3-bit indices
        }
        block += 8;
      }
      const unsigned c0 = block[0] | (block[1] << 8);
      const unsigned c1 = block[2] | (block[3] << 8);
      int colours[4][3];
      Expand(c0, colours[0]);
      Expand(c1, colours[1]);
      for (int k = 0; k < 3; ++k) {
        if (c0 > c1) {
          colours[2][k] = (2 * colours[0][k] + colours[1][k]) / 3;
          colours[3][k] = (colours[0][k] + 2 * colours[1][k]) / 3;
        } else {
          colours[2][k] = (colours[0][k] + colours[1][k]) / 2;
          colours[3][k] = 0;
        }
      }
      for (int py = 0; py < 4; ++py) {
        const int y = by * 4 + py;
        const unsigned char row = block[4 + py];
        for (int px = 0; px < 4; ++px) {
          const int x = bx * 4 + px;
          const int texel = py * 4 + px;
          const int index = (row >> (2 * px)) & 3;
          int alpha = 255;
          if (format == kDXT1) {
            if (c0 <= c1 && index == 3) alpha = 0;
          } else if (format == kDXT3) {
            alpha = int((alphaBits >> (4 * texel)) & 0xF) << 4;
          } else if (format == kDXT5) {
            alpha = RampAlpha(a0, a1, int((alphaBits >> (3 * texel)) & 7));
          }
          if (x >= width || y >= height) continue;
          unsigned char* to = out + (size_t(y) * width + x) * 4;
          to[0] = static_cast<unsigned char>(colours[index][0]);
          to[1] = static_cast<unsigned char>(colours[index][1]);
          to[2] = static_cast<unsigned char>(colours[index][2]);
          to[3] = static_cast<unsigned char>(alpha);
        }
      }
    }
  }
}

}  // namespace

int DECODEDDSFormat(int format, unsigned char* src, int width, int height, char** dst) {
  unsigned char* out = reinterpret_cast<unsigned char*>(*dst);
  const size_t count = size_t(width) * size_t(height);
  if (format == kRGB) {
    for (size_t i = 0; i < count; ++i) {
      memcpy(out + i * 4, src + i * 3, 3);
      out[i * 4 + 3] = 255;
    }
  } else if (format == kRGBA) {
    memcpy(out, src, count * 4);
    // The rows were made with new[]; freeing them with the plain form would be
    // undefined.
    delete[] src;
  } else {
    DecodeBlocks(format, src, width, height, out);
  }
  return 1;
}
