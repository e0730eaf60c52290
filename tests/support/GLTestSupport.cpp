#include "support/GLTestSupport.h"

#include <EGL/egl.h>
#include <GLES/gl.h>
#include <sys/stat.h>

#include <sstream>

#include "support/GLQuad.h"
#include "support/PngImage.h"

namespace zvtest {

namespace {

const int kScreenHeight = 272;
const GLfixed kOne = 1 << 16;

uint32_t Channel(uint32_t pixel, int shift, int bits) { return ((pixel >> shift) & 0xFF) >> (8 - bits); }

// A channel of `bits` bits as 8 bits, rounded to the nearest.
uint32_t Widen(uint32_t value, int bits) {
  const uint32_t top = (1u << bits) - 1;
  return (value * 255 + top / 2) / top;
}

uint32_t Argb(uint32_t a, uint32_t r, uint32_t g, uint32_t b) { return (a << 24) | (r << 16) | (g << 8) | b; }

// One pixel of device format `format` at `p` (palette entries are pixels too).
uint32_t DevicePixel(int format, const uint8_t* p) {
  const uint32_t s = uint32_t(p[0]) | (uint32_t(p[1]) << 8);  // 16-bit formats are little-endian words
  switch (format) {
    case 0: return Argb(p[0], p[1], p[2], p[3]);  // A8R8G8B8
    case 1: return Argb(p[3], p[0], p[1], p[2]);  // R8G8B8A8
    case 2: return Argb(Widen(s & 1, 1), Widen(s >> 11, 5), Widen((s >> 6) & 31, 5), Widen((s >> 1) & 31, 5));
    case 3: return Argb(255, Widen(s >> 11, 5), Widen((s >> 5) & 63, 6), Widen(s & 31, 5));
    case 4: return Argb(Widen(s & 15, 4), Widen(s >> 12, 4), Widen((s >> 8) & 15, 4), Widen((s >> 4) & 15, 4));
    case 5: return Argb(p[1], p[0], p[0], p[0]);  // L8A8
    default: return 0;
  }
}

int DeviceBytes(int format) { return format <= 1 ? 4 : 2; }

}  // namespace

GLContext::GLContext() {
  mConfig = Vantrel::Solva::CreateSolvaOpenGLConfig();
  if (mConfig == nullptr) mError = "the device made no 3D context (its message is above)";
}

GLContext::~GLContext() { Vantrel::Solva::DestroySolvaOpenGLConfig(mConfig); }

void GLContext::Swap() const {
  eglSwapBuffers(static_cast<EGLDisplay>(mConfig->eglDisplay), static_cast<EGLSurface>(mConfig->eglSurface));
}

void UseScreenProjection(int textureEnvMode) {
  glViewport(0, 0, 480, kScreenHeight);
  glMatrixMode(GL_PROJECTION);
  glLoadIdentity();
  glOrthox(0, 480 * kOne, kScreenHeight * kOne, 0, -kOne, kOne);
  glMatrixMode(GL_MODELVIEW);
  glLoadIdentity();
  glDisable(GL_BLEND);
  glTexEnvx(GL_TEXTURE_ENV, GL_TEXTURE_ENV_MODE, textureEnvMode);
}

void DrawTexture(unsigned textureID, int x, int y, int width, int height) {
  DrawTextureRegion(textureID, x, y, width, height, 0.0f, 0.0f, 1.0f, 1.0f);
}

void DrawTextureRegion(unsigned textureID, int x, int y, int width, int height, float s0, float t0, float s1,
                       float t1) {
  UseScreenProjection(GL_REPLACE);
  glEnable(GL_TEXTURE_2D);
  DrawTexturedQuad(textureID, x, y, width, height, s0, t0, s1, t1);
}

std::vector<uint32_t> ReadPixels(int x, int y, int width, int height) {
  std::vector<uint8_t> rgba(size_t(width) * height * 4);
  glPixelStorei(GL_PACK_ALIGNMENT, 1);
  glReadPixels(x, kScreenHeight - y - height, width, height, GL_RGBA, GL_UNSIGNED_BYTE, rgba.data());
  std::vector<uint32_t> pixels(size_t(width) * height);
  for (int row = 0; row < height; ++row) {
    const uint8_t* in = &rgba[size_t(height - 1 - row) * width * 4];  // GL's rows run from the bottom
    for (int column = 0; column < width; ++column, in += 4) {
      pixels[size_t(row) * width + column] = Argb(in[3], in[0], in[1], in[2]);
    }
  }
  return pixels;
}

testing::AssertionResult SamePixels(const std::string& name, const std::vector<uint32_t>& expected,
                                    const std::vector<uint32_t>& actual, int width, int height, ChannelBits bits) {
  const size_t count = size_t(width) * height;
  if (expected.size() != count || actual.size() != count) {
    return testing::AssertionFailure() << name << ": " << expected.size() << " expected and " << actual.size()
                                       << " actual pixels for " << width << " x " << height;
  }
  size_t differing = 0;
  std::ostringstream first;
  for (size_t i = 0; i < count; ++i) {
    const uint32_t e = expected[i], a = actual[i];
    const bool same =
        Channel(e, 16, bits.r) == Channel(a, 16, bits.r) && Channel(e, 8, bits.g) == Channel(a, 8, bits.g) &&
        Channel(e, 0, bits.b) == Channel(a, 0, bits.b) && Channel(e, 24, bits.a) == Channel(a, 24, bits.a);
    if (same) continue;
    if (differing++ == 0) {
      first << std::hex << "first at (" << std::dec << i % width << ", " << i / width << "): expected 0x" << std::hex
            << e << ", drew 0x" << a;
    }
  }
  if (differing == 0) return testing::AssertionSuccess();
  const std::string folder = std::string(ZV_BINARY_DIR) + "/gl-actual";
  mkdir(folder.c_str(), 0755);
  WritePng(folder + "/" + name + "_expected.png", width, height, expected);
  WritePng(folder + "/" + name + "_actual.png", width, height, actual);
  return testing::AssertionFailure() << name << ": " << differing << " of " << count << " pixels differ, "
                                     << first.str() << "; see " << folder << "/" << name << "_actual.png";
}

std::vector<uint32_t> ExpandDevicePixels(const BMPData& image) {
  const size_t count = size_t(image.width) * image.height;
  std::vector<uint32_t> out(count);
  const uint8_t* data = image.pixels;
  if (image.paletteType == 0) {
    for (size_t i = 0; i < count; ++i)
      out[i] = DevicePixel(image.pixelFormat, data + i * DeviceBytes(image.pixelFormat));
    return out;
  }
  const int entries = image.paletteType == 1 ? 16 : 256;
  const uint8_t* indices = data + entries * DeviceBytes(image.pixelFormat);
  for (size_t i = 0; i < count; ++i) {
    const int index = image.paletteType == 1 ? (indices[i / 2] >> (i % 2 ? 0 : 4)) & 15 : indices[i];
    out[i] = DevicePixel(image.pixelFormat, data + index * DeviceBytes(image.pixelFormat));
  }
  return out;
}

ChannelBits DeviceFormatBits(int format) {
  switch (format) {
    case 2: return ChannelBits{5, 5, 5, 1};
    case 3: return ChannelBits{5, 6, 5, 8};
    case 4: return ChannelBits{4, 4, 4, 4};
    default: return ChannelBits();
  }
}

}  // namespace zvtest
