#pragma once
// What the texture tests share: the device's real 3D context, current here, a
// texture manager, the device clock its load timer reads, and pictures laid out in
// a temporary folder.
#include <GLES/gl.h>
#include <gtest/gtest.h>

#include <cstring>
#include <string>
#include <vector>

#include "RenderSystem/BMPData.h"
#include "RenderSystem/GLTexture.h"
#include "RenderSystem/GLTextureManager.h"
#include "RenderSystem/UDImage.h"
#include "support/GLTestSupport.h"
#include "support/TestSupport.h"
#include "support/UdiFile.h"

namespace gltest {

using zvtest::Bytes;

class TextureTest : public testing::Test {
 protected:
  void SetUp() override {
    ASSERT_TRUE(gl.ok()) << gl.error();
    GLTextureManager::sCreate();
  }
  void TearDown() override {
    delete GLTextureManager::instance_;
    GLTextureManager::instance_ = nullptr;
  }

  GLTextureManager& Manager() { return *gxGetTextureManager(); }

  // A UDI file `name` in the folder; returns its path.
  std::string WriteUdi(const std::string& name, int width, int height, int format, int bits, int paletteType,
                       const Bytes& payload, int compression = 0) {
    const std::string path = dir.file(name);
    zvtest::WriteUdi(path, width, height, format, bits, paletteType, payload, compression);
    return path;
  }

  // An uncompressed top-left TGA; `stored` are the pixels as the file holds them
  // (B, G, R or B, G, R, A).
  std::string WriteTga(const std::string& name, int width, int height, int bits, const Bytes& stored) {
    Bytes file = {0, 0, 2, 0, 0, 0, 0, 0, 0, 0, 0, 0};
    zvtest::PutU16(file, uint16_t(width));
    zvtest::PutU16(file, uint16_t(height));
    zvtest::PutU8(file, uint8_t(bits));
    zvtest::PutU8(file, 0x20);  // top-left origin
    file.insert(file.end(), stored.begin(), stored.end());
    const std::string path = dir.file(name);
    zvtest::WriteBytes(path, file);
    return path;
  }

  zvtest::VirtualClock clock;
  zvtest::GLContext gl;
  zvtest::TempDir dir;
};

// `size` bytes that tell their positions apart and use every bit.
inline Bytes Pattern(size_t size, unsigned seed) {
  Bytes out(size);
  uint32_t state = seed * 2654435761u + 1;
  for (size_t i = 0; i < size; ++i) {
    state = state * 1103515245u + 12345u;
    out[i] = uint8_t(state >> 16);
  }
  return out;
}

// What the image decoder gives for a file: the BMPData of LoadUDIFile.
struct Decoded {
  BMPData data;
  Decoded() { memset(&data, 0, sizeof data); }
  ~Decoded() { UnloadBMPData(&data); }
};

// The texture's parameters as the GL holds them for the bound texture.
inline GLint BoundParameter(GLenum name) {
  GLint value = 0;
  glGetTexParameteriv(GL_TEXTURE_2D, name, &value);
  return value;
}

}  // namespace gltest
