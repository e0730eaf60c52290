#pragma once
// Tests on the device's real 3D context (Mesa's OpenGL ES 1.1 through EGL, headless):
// bring the context up as a title does, draw a texture as a quad with the
// fixed-point profile, read the pixels back, and judge them, keeping pictures of
// a mismatch for a person to look at.
//
//   zvtest::GLContext gl;                       // the device's context, current here
//   ASSERT_TRUE(gl.ok()) << gl.error();
//   zvtest::DrawTexture(texture->mTextureID, 0, 0, 32, 32);
//   EXPECT_TRUE(zvtest::SamePixels("name", expected, zvtest::ReadPixels(0, 0, 32, 32), 32, 32));
//
// On a mismatch SamePixels writes build/<preset>/gl-actual/name_actual.png beside
// name_expected.png.
#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <vector>

#include "RenderSystem/BMPData.h"
#include "SolvaOpenGLConfig.h"

namespace zvtest {

// The device's 3D context, made through the platform on this thread (so it is
// current here) and given back when the object ends.
class GLContext {
 public:
  GLContext();
  ~GLContext();
  GLContext(const GLContext&) = delete;
  GLContext& operator=(const GLContext&) = delete;

  bool ok() const { return mConfig != nullptr; }
  // What the platform printed when it could not make the context.
  const std::string& error() const { return mError; }
  SolvaOpenGLConfig* config() const { return mConfig; }
  // eglSwapBuffers on the context's display and surface, as the shell swaps.
  void Swap() const;

 private:
  SolvaOpenGLConfig* mConfig = nullptr;
  std::string mError;
};

// The screen as the widget's start-up sets it (480 x 272, y down, in 16.16),
// blending off and the texture environment `textureEnvMode` (GL_REPLACE draws
// every texel as it is, GL_MODULATE lets vertex colours tint it).
void UseScreenProjection(int textureEnvMode);

// Draws the texture `textureID` as a quad at (x, y) of the screen (from the top
// left), width x height pixels, with GL_FIXED vertex and texture-coordinate arrays.
// It sets the state it needs and leaves it so: the screen's projection (as
// InitSolvaOpenGL makes it), texturing on, blending off, the texture environment
// GL_REPLACE, so that every drawn pixel is a texel as the GL holds it.
void DrawTexture(unsigned textureID, int x, int y, int width, int height);
// The same with the part of the texture from (s0, t0) to (s1, t1) (see
// DrawTexturedQuad): a tile of a page, say.
void DrawTextureRegion(unsigned textureID, int x, int y, int width, int height, float s0, float t0, float s1,
                       float t1);

// The GL surface's pixels of the rectangle at (x, y) from the top left, row by row
// from the top, each 0xAARRGGBB (glReadPixels).
std::vector<uint32_t> ReadPixels(int x, int y, int width, int height);

// How many of a channel's high bits a comparison looks at: a texture of 4-bit
// channels is compared through 4 bits, wherever the GL rounds below that.
struct ChannelBits {
  int r = 8, g = 8, b = 8, a = 8;
};

// Whether `actual` equals `expected` (0xAARRGGBB, width x height) through `bits`.
// On a mismatch, the first differing pixel and the count, and the two pictures
// as name_expected.png and name_actual.png under build/<preset>/gl-actual/.
testing::AssertionResult SamePixels(const std::string& name, const std::vector<uint32_t>& expected,
                                    const std::vector<uint32_t>& actual, int width, int height,
                                    ChannelBits bits = ChannelBits());

// A device-format picture as the UDI decoder hands it out (format, palette type,
// width, height and pixels of `image`), expanded to 0xAARRGGBB the way the formats
// define their channels (a channel of n bits v is v x 255 / (2^n - 1), rounded;
// formats without alpha are opaque, L8A8 is grey). Palette pictures are looked up
// through their palette (four-bit indices high nibble first).
std::vector<uint32_t> ExpandDevicePixels(const BMPData& image);

// The channel widths of a device format (UDImage::EPixelFormat).
ChannelBits DeviceFormatBits(int format);

}  // namespace zvtest
