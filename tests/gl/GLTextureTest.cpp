// One texture: loading from files and from pixels, the uploaders' format tables,
// the sizes they count, the failure codes, and letting go.
#include "TextureFixture.h"

namespace {

using gltest::BoundParameter;
using gltest::Bytes;
using gltest::Pattern;

using GLTextureLoad = gltest::TextureTest;

// Nearest sampling, clamped edges, on the bound texture.
void ExpectDeviceParameters() {
  EXPECT_EQ(GL_NEAREST, BoundParameter(GL_TEXTURE_MIN_FILTER));
  EXPECT_EQ(GL_NEAREST, BoundParameter(GL_TEXTURE_MAG_FILTER));
  EXPECT_EQ(GL_CLAMP_TO_EDGE, BoundParameter(GL_TEXTURE_WRAP_S));
  EXPECT_EQ(GL_CLAMP_TO_EDGE, BoundParameter(GL_TEXTURE_WRAP_T));
}

TEST_F(GLTextureLoad, ANewTextureHoldsNothing) {
  GLTexture texture;
  EXPECT_EQ("", texture.mName);
  EXPECT_EQ(0u, texture.mRefCount);
  EXPECT_EQ(0u, texture.mTextureID);
  EXPECT_EQ(0u, texture.mWidth);
  EXPECT_EQ(0u, texture.mHeight);
  EXPECT_EQ(0u, texture.mByteSize);
}

TEST_F(GLTextureLoad, RawFormatsCountTheirBytesAndUploadNearestAndClamped) {
  const unsigned bytesPerPixel[] = {0, 4, 2, 2, 2, 2};
  for (unsigned format = 1; format <= 5; ++format) {
    SCOPED_TRACE(testing::Message() << "format " << format);
    const Bytes pixels = Pattern(6 * 4 * 4, format);
    GLTexture texture;
    glDisable(GL_TEXTURE_2D);
    EXPECT_EQ(0, texture.Load(const_cast<uint8_t*>(pixels.data()), 6, 4, 16, "raw", format, 0));
    EXPECT_EQ("raw", texture.mName);
    EXPECT_EQ(6u, texture.mWidth);
    EXPECT_EQ(4u, texture.mHeight);
    EXPECT_EQ(bytesPerPixel[format] * 6 * 4, texture.mByteSize);
    EXPECT_NE(0u, texture.mTextureID);
    EXPECT_EQ(GL_TRUE, glIsTexture(texture.mTextureID));
    EXPECT_EQ(GL_TRUE, glIsEnabled(GL_TEXTURE_2D));
    GLint bound = 0;
    glGetIntegerv(GL_TEXTURE_BINDING_2D, &bound);
    EXPECT_EQ(GLint(texture.mTextureID), bound);
    ExpectDeviceParameters();
    EXPECT_EQ(GLenum(GL_NO_ERROR), glGetError());
  }
}

TEST_F(GLTextureLoad, PalettedFormatsCountPaletteAndIndices) {
  // Palette of 16 or 256 entries of 4 or 2 bytes, then indices of 4 or 8 bits.
  const unsigned sizes[5][3] = {{0, 0, 0},
                                {0, 8 * 4 / 2 + 64, 8 * 4 + 1024},
                                {0, 8 * 4 / 2 + 32, 8 * 4 + 512},
                                {0, 8 * 4 / 2 + 32, 8 * 4 + 512},
                                {0, 8 * 4 / 2 + 32, 8 * 4 + 512}};
  for (unsigned format = 1; format <= 4; ++format) {
    for (unsigned paletteType = 1; paletteType <= 2; ++paletteType) {
      SCOPED_TRACE(testing::Message() << "format " << format << " palette " << paletteType);
      const Bytes payload = Pattern(sizes[format][paletteType], format + paletteType);
      GLTexture texture;
      EXPECT_EQ(0, texture.Load(const_cast<uint8_t*>(payload.data()), 8, 4, 16, "pal", format, paletteType));
      EXPECT_EQ(sizes[format][paletteType], texture.mByteSize);
      EXPECT_EQ(GL_TRUE, glIsTexture(texture.mTextureID));
      ExpectDeviceParameters();
      EXPECT_EQ(GLenum(GL_NO_ERROR), glGetError()) << "the size handed to the driver is the one it expects";
    }
  }
}

TEST_F(GLTextureLoad, AnotherPaletteTypeUploadsNothingAndKeepsTheByteSize) {
  const Bytes payload = Pattern(64 + 16, 3);
  GLTexture texture;
  texture.mByteSize = 77;
  EXPECT_EQ(0, texture.Load(const_cast<uint8_t*>(payload.data()), 4, 4, 32, "odd", 1, 3));
  EXPECT_EQ(77u, texture.mByteSize);
  EXPECT_NE(0u, texture.mTextureID);
  glGetError();  // the driver refuses internal format 0; nobody asks
}

TEST_F(GLTextureLoad, UnknownRawFormatGivesMinusThree) {
  uint8_t pixels[64] = {};
  GLTexture texture;
  EXPECT_EQ(-3, texture.Load(pixels, 2, 2, 32, "x", 6, 0));
  EXPECT_EQ(-3, texture.LoadRawPixelData(pixels, 0));
  EXPECT_EQ(0u, texture.mTextureID);
}

TEST_F(GLTextureLoad, UnknownPalettedFormatGivesMinusOne) {
  uint8_t pixels[1100] = {};
  GLTexture texture;
  EXPECT_EQ(-1, texture.Load(pixels, 2, 2, 16, "x", 5, 1));
  EXPECT_EQ(-1, texture.Load(pixels, 2, 2, 16, "x", 5, 2));
  EXPECT_EQ(-1, texture.LoadPallettePixelData(pixels, 0, 1));
  EXPECT_EQ(0u, texture.mTextureID);
}

TEST_F(GLTextureLoad, ZeroSizeOrUnsupportedDepthGivesMinusThree) {
  uint8_t pixels[64] = {};
  GLTexture texture;
  EXPECT_EQ(-3, texture.Load(pixels, 0, 2, 32, "x"));
  EXPECT_EQ(-3, texture.Load(pixels, 2, 0, 24, "x"));
  EXPECT_EQ(-3, texture.Load(pixels, 2, 2, 16, "x"));
  EXPECT_EQ(-3, texture.Load(pixels, 0, 2, 16, "x", 1, 0));
  EXPECT_EQ(-3, texture.Load(pixels, 2, 0, 16, "x", 1, 1));
  EXPECT_EQ(0u, texture.mTextureID);
}

TEST_F(GLTextureLoad, TwentyFourBitPixelsGetOpaqueAlpha) {
  const uint8_t rgb[] = {10, 20, 30, 40, 50, 60, 70, 80, 90, 100, 110, 120};
  GLTexture texture;
  ASSERT_EQ(0, texture.Load(const_cast<uint8_t*>(rgb), 2, 2, 24, "rgb"));
  EXPECT_EQ(2u * 2 * 4, texture.mByteSize);
  zvtest::DrawTexture(texture.mTextureID, 0, 0, 2, 2);
  EXPECT_EQ((std::vector<uint32_t>{0xFF0A141Eu, 0xFF28323Cu, 0xFF46505Au, 0xFF646E78u}),
            zvtest::ReadPixels(0, 0, 2, 2));
}

TEST_F(GLTextureLoad, ThirtyTwoBitPixelsAreTakenAsAlphaRedGreenBlue) {
  const uint8_t argb[] = {0x80, 1, 2, 3, 0xFF, 4, 5, 6};
  GLTexture texture;
  ASSERT_EQ(0, texture.Load(const_cast<uint8_t*>(argb), 2, 1, 32, "argb"));
  zvtest::DrawTexture(texture.mTextureID, 5, 7, 2, 1);
  EXPECT_EQ((std::vector<uint32_t>{0x80010203u, 0xFF040506u}), zvtest::ReadPixels(5, 7, 2, 1));
}

TEST_F(GLTextureLoad, AUdiOfFormatZeroAndThirtyTwoBitsTakesTheConversionPath) {
  const Bytes argb = {0x40, 0x11, 0x22, 0x33, 0xFF, 0x44, 0x55, 0x66, 0x00, 0x77, 0x88, 0x99, 0xC0, 0xAA, 0xBB, 0xCC};
  const std::string path = WriteUdi("argb.udi", 2, 2, 0, 32, 0, argb);
  GLTexture texture;
  ASSERT_EQ(0, texture.Load(path.c_str(), 0, 0));
  EXPECT_EQ(path, texture.mName);
  EXPECT_EQ(16u, texture.mByteSize);
  zvtest::DrawTexture(texture.mTextureID, 0, 0, 2, 2);
  EXPECT_EQ((std::vector<uint32_t>{0x40112233u, 0xFF445566u, 0x00778899u, 0xC0AABBCCu}),
            zvtest::ReadPixels(0, 0, 2, 2));
}

TEST_F(GLTextureLoad, AUdiWithPaletteTypeOneAndFormatFiveFailsOnThePalettedPath) {
  const std::string path = WriteUdi("la.udi", 4, 4, 5, 16, 1, Pattern(32 + 8, 5));
  GLTexture texture;
  EXPECT_EQ(-1, texture.Load(path.c_str(), 0, 0));
  EXPECT_EQ(0u, texture.mTextureID);
}

TEST_F(GLTextureLoad, AFileThatCannotBeDecodedGivesMinusOne) {
  GLTexture texture;
  EXPECT_EQ(-1, texture.Load(dir.file("missing.udi").c_str(), 0, 0));
  zvtest::WriteText(dir.file("junk.bmp"), "not a picture");
  EXPECT_EQ(-1, texture.Load(dir.file("junk.bmp").c_str(), 0, 0));
  EXPECT_EQ(-1, texture.Load(dir.file("picture.png").c_str(), 0, 0));
  EXPECT_EQ(0u, texture.mTextureID);
}

TEST_F(GLTextureLoad, FewerThanTwentyFourBitsWithoutADeviceFormatGivesMinusOne) {
  const std::string path = WriteTga("grey.tga", 2, 2, 16, Pattern(8, 1));
  GLTexture texture;
  EXPECT_EQ(-1, texture.Load(path.c_str(), 0, 0));
  EXPECT_EQ(0u, texture.mTextureID);
}

TEST_F(GLTextureLoad, ATgaFileBecomesRedGreenBlueAlpha) {
  // B, G, R, A as the file holds them.
  const std::string path = WriteTga("c.tga", 2, 1, 32, Bytes{30, 20, 10, 255, 60, 50, 40, 128});
  GLTexture texture(path.c_str());
  EXPECT_EQ(path, texture.mName);
  zvtest::DrawTexture(texture.mTextureID, 0, 0, 2, 1);
  EXPECT_EQ((std::vector<uint32_t>{0xFF0A141Eu, 0x8028323Cu}), zvtest::ReadPixels(0, 0, 2, 1));
}

TEST_F(GLTextureLoad, AHeaderThatPromisesMorePixelsThanTheFileHoldsIsRefused) {
  // Format 1 (4 bytes a pixel) with 16 bits a colour: the file holds half.
  const std::string path = WriteUdi("short.udi", 4, 4, 1, 16, 0, Pattern(4 * 4 * 2, 2));
  GLTexture texture;
  EXPECT_EQ(-1, texture.Load(path.c_str(), 0, 0));
  // A paletted R8G8B8A8 whose palette entries are said to be 16 bits.
  const std::string paletted = WriteUdi("pal.udi", 4, 4, 1, 16, 1, Pattern(32 + 8, 2));
  EXPECT_EQ(-1, texture.Load(paletted.c_str(), 0, 0));
  EXPECT_EQ(0u, texture.mTextureID);
}

TEST_F(GLTextureLoad, SixteenBitRowsOfOddWidthAreRefusedUnlessRowsArePacked) {
  // The driver reads rows four bytes apart: 3 pixels of 2 bytes take 8.
  const std::string path = WriteUdi("odd.udi", 3, 4, 3, 16, 0, Pattern(3 * 4 * 2, 4));
  GLTexture texture;
  EXPECT_EQ(-1, texture.Load(path.c_str(), 0, 0));
  glPixelStorei(GL_UNPACK_ALIGNMENT, 1);
  EXPECT_EQ(0, texture.Load(path.c_str(), 0, 0));
  glPixelStorei(GL_UNPACK_ALIGNMENT, 4);
}

TEST_F(GLTextureLoad, ReleaseCountsDownAndDeletesTheGLTextureAtNone) {
  uint8_t pixels[16] = {};
  GLTexture texture;
  ASSERT_EQ(0, texture.Load(pixels, 2, 2, 16, "t", 1, 0));
  const unsigned id = texture.mTextureID;
  texture.mRefCount = 2;
  EXPECT_EQ(1u, texture.Release());
  EXPECT_EQ(GL_TRUE, glIsTexture(id));
  EXPECT_EQ(0u, texture.Release());
  EXPECT_EQ(GL_FALSE, glIsTexture(id));
  EXPECT_EQ(0u, texture.mTextureID);
  EXPECT_EQ("t", texture.mName);
  EXPECT_EQ(0u, texture.Release());
}

TEST_F(GLTextureLoad, ClearDeletesTheGLTextureWhateverTheCount) {
  uint8_t pixels[16] = {};
  GLTexture texture;
  ASSERT_EQ(0, texture.Load(pixels, 2, 2, 16, "t", 1, 0));
  const unsigned id = texture.mTextureID;
  texture.mRefCount = 5;
  texture.Clear();
  EXPECT_EQ(GL_FALSE, glIsTexture(id));
  EXPECT_EQ(0u, texture.mTextureID);
  EXPECT_EQ("", texture.mName);
}

TEST_F(GLTextureLoad, TheDestructorDeletesTheGLTexture) {
  uint8_t pixels[16] = {};
  unsigned id = 0;
  {
    GLTexture texture;
    ASSERT_EQ(0, texture.Load(pixels, 2, 2, 16, "t", 1, 0));
    id = texture.mTextureID;
    EXPECT_EQ(GL_TRUE, glIsTexture(id));
  }
  EXPECT_EQ(GL_FALSE, glIsTexture(id));
}

}  // namespace
