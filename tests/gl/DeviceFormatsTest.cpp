// Every device format, raw and with both palette sizes, uploaded from a UDI file
// and drawn on the real GL context: the drawn pixels are the pixels that the
// image decoder gives for the same file, compared through the format's channel
// widths where the GL rounds.
#include "RenderSystem/ImageLoader.h"
#include "TextureFixture.h"

namespace {

using gltest::Bytes;
using gltest::Pattern;

struct Case {
  int format;
  int bits;
  int paletteType;
  const char* name;
};

void PrintTo(const Case& c, std::ostream* out) { *out << c.name; }

class DeviceFormats : public gltest::TextureTest, public testing::WithParamInterface<Case> {};

TEST_P(DeviceFormats, DrawnPixelsAreTheDecodedPixels) {
  const Case c = GetParam();
  const int width = 16, height = 12;
  const size_t size = UDIPixelBytes(width, height, c.bits, c.paletteType);
  for (int compression = 0; compression <= 1; ++compression) {
    SCOPED_TRACE(testing::Message() << c.name << (compression ? " packed" : " stored"));
    const std::string path = WriteUdi(std::string(c.name) + ".udi", width, height, c.format, c.bits, c.paletteType,
                                      Pattern(size, unsigned(c.format * 7 + c.paletteType)), compression);
    gltest::Decoded decoded;
    ASSERT_EQ(0, LoadImageFromFile(path.c_str(), &decoded.data));

    GLTexture* texture = Manager().LoadTexture(path, nullptr);
    ASSERT_NE(nullptr, texture);
    EXPECT_EQ(unsigned(width), texture->mWidth);
    EXPECT_EQ(unsigned(height), texture->mHeight);
    glClearColorx(0, 0, 0, 0);
    glClear(GL_COLOR_BUFFER_BIT);
    zvtest::DrawTexture(texture->mTextureID, 8, 4, width, height);
    EXPECT_TRUE(zvtest::SamePixels(c.name, zvtest::ExpandDevicePixels(decoded.data),
                                   zvtest::ReadPixels(8, 4, width, height), width, height,
                                   zvtest::DeviceFormatBits(c.format)));
    Manager().ReleaseTexture(texture);
  }
}

INSTANTIATE_TEST_SUITE_P(Raw, DeviceFormats,
                         testing::Values(Case{1, 32, 0, "R8G8B8A8"}, Case{2, 16, 0, "R5G5B5A1"},
                                         Case{3, 16, 0, "R5G6B5"}, Case{4, 16, 0, "R4G4B4A4"}, Case{5, 16, 0, "L8A8"}),
                         [](const testing::TestParamInfo<Case>& info) { return std::string(info.param.name); });

INSTANTIATE_TEST_SUITE_P(Palette16, DeviceFormats,
                         testing::Values(Case{1, 32, 1, "P4_R8G8B8A8"}, Case{2, 16, 1, "P4_R5G5B5A1"},
                                         Case{3, 16, 1, "P4_R5G6B5"}, Case{4, 16, 1, "P4_R4G4B4A4"}),
                         [](const testing::TestParamInfo<Case>& info) { return std::string(info.param.name); });

INSTANTIATE_TEST_SUITE_P(Palette256, DeviceFormats,
                         testing::Values(Case{1, 32, 2, "P8_R8G8B8A8"}, Case{2, 16, 2, "P8_R5G5B5A1"},
                                         Case{3, 16, 2, "P8_R5G6B5"}, Case{4, 16, 2, "P8_R4G4B4A4"}),
                         [](const testing::TestParamInfo<Case>& info) { return std::string(info.param.name); });

using ConversionPath = gltest::TextureTest;

// Format 0 has no GL format: A, R, G, B become R, G, B, A, every byte where it belongs.
TEST_F(ConversionPath, A8R8G8B8DrawsAsItsChannelsSay) {
  const int width = 8, height = 6;
  const Bytes payload = Pattern(size_t(width) * height * 4, 99);
  const std::string path = WriteUdi("argb.udi", width, height, 0, 32, 0, payload);
  gltest::Decoded decoded;
  ASSERT_EQ(0, LoadImageFromFile(path.c_str(), &decoded.data));
  GLTexture* texture = Manager().LoadTexture(path, nullptr);
  ASSERT_NE(nullptr, texture);
  zvtest::DrawTexture(texture->mTextureID, 0, 0, width, height);
  EXPECT_TRUE(zvtest::SamePixels("A8R8G8B8", zvtest::ExpandDevicePixels(decoded.data),
                                 zvtest::ReadPixels(0, 0, width, height), width, height));
}

}  // namespace
