#include "RenderSystem/GLTexture.h"

#include <GLES/gl.h>

#include <new>

#include "RenderSystem/ImageData.h"
#include "RenderSystem/UDImage.h"

namespace {

// Device formats as GL takes them, by format number; 0 (A8R8G8B8) is no GL format.
struct RawFormat {
  GLenum format;
  GLenum type;
  unsigned bytesPerPixel;
};
const RawFormat kRawFormats[] = {
    {0, 0, 0},
    {GL_RGBA, GL_UNSIGNED_BYTE, 4},             // 1 R8G8B8A8
    {GL_RGBA, GL_UNSIGNED_SHORT_5_5_5_1, 2},    // 2 R5G5B5A1
    {GL_RGB, GL_UNSIGNED_SHORT_5_6_5, 2},       // 3 R5G6B5
    {GL_RGBA, GL_UNSIGNED_SHORT_4_4_4_4, 2},    // 4 R4G4B4A4
    {GL_LUMINANCE_ALPHA, GL_UNSIGNED_BYTE, 2},  // 5 L8A8
};
const unsigned kRawFormatCount = sizeof kRawFormats / sizeof kRawFormats[0];

// Paletted formats by format number (1 to 4): the internal format and the size of
// the palette, for 16 entries (palette type 1) and for 256 (palette type 2).
struct PalettedFormat {
  GLenum internalFormat;
  unsigned paletteBytes;
};
const PalettedFormat kPalette16[] = {
    {0, 0},
    {GL_PALETTE4_RGBA8_OES, 64},
    {GL_PALETTE4_RGB5_A1_OES, 32},
    {GL_PALETTE4_R5_G6_B5_OES, 32},
    {GL_PALETTE4_RGBA4_OES, 32},
};
const PalettedFormat kPalette256[] = {
    {0, 0},
    {GL_PALETTE8_RGBA8_OES, 1024},
    {GL_PALETTE8_RGB5_A1_OES, 512},
    {GL_PALETTE8_R5_G6_B5_OES, 512},
    {GL_PALETTE8_RGBA4_OES, 512},
};
const unsigned kPalettedFormatCount = sizeof kPalette16 / sizeof kPalette16[0];

// The palette type's row for a format of 1 to 4, or null for another palette type.
const PalettedFormat* Paletted(unsigned format, unsigned paletteType) {
  if (paletteType == 1) return &kPalette16[format];
  if (paletteType == 2) return &kPalette256[format];
  return 0;
}

// The size of a paletted image: the palette, then indices of 4 or 8 bits.
size_t PalettedBytes(const PalettedFormat& row, unsigned paletteType, size_t pixelCount) {
  return (paletteType == 1 ? pixelCount / 2 : pixelCount) + row.paletteBytes;
}

// How many bytes of `image` the upload for it would read. GL reads rows of raw
// pixels at the unpack alignment (4 unless a title changes it), so a 16-bit image
// of odd width is read with padded rows, as the device reads it.
size_t UploadBytes(const ImageData& image) {
  const size_t pixelCount = size_t(image.mWidth) * size_t(image.mHeight);
  const unsigned format = unsigned(image.mFormat);
  const unsigned paletteType = unsigned(image.mPaletteType);
  if (format == 0) {
    return image.mBitsPerPixel == 24 || image.mBitsPerPixel == 32 ? pixelCount * image.mBitsPerPixel / 8 : 0;
  }
  if (paletteType == 0) {
    if (format >= kRawFormatCount || pixelCount == 0) return 0;
    GLint alignment = 4;
    glGetIntegerv(GL_UNPACK_ALIGNMENT, &alignment);
    const size_t row = size_t(image.mWidth) * kRawFormats[format].bytesPerPixel;
    const size_t stride = (row + size_t(alignment) - 1) / size_t(alignment) * size_t(alignment);
    return stride * size_t(image.mHeight - 1) + row;
  }
  const PalettedFormat* row = format < kPalettedFormatCount ? Paletted(format, paletteType) : 0;
  return row != 0 ? PalettedBytes(*row, paletteType, pixelCount) : 0;
}

// Nearest sampling, clamped at the edges, no mipmaps: one call makes a texture.
void SetTextureParameters() {
  glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, GL_NEAREST);
  glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MAG_FILTER, GL_NEAREST);
  glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_S, GL_CLAMP_TO_EDGE);
  glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_T, GL_CLAMP_TO_EDGE);
}

}  // namespace

GLTexture::GLTexture() : mRefCount(0), mTextureID(0), mWidth(0), mHeight(0), mLoadFlag(0), mByteSize(0) {}

GLTexture::GLTexture(const char* path)
    : mRefCount(0), mTextureID(0), mWidth(0), mHeight(0), mLoadFlag(0), mByteSize(0) {
  Load(path, 10240, 10240);
}

GLTexture::~GLTexture() {
  if (mTextureID != 0) Clear();
}

int GLTexture::Load(const char* path, unsigned, unsigned) {
  ImageData image;
  if (!image.Load(path)) return -1;
  // An image whose upload would read past its pixels (a header that promises more
  // than the file holds, or 16-bit rows of odd width) cannot be read here: the
  // driver would read beyond the buffer.
  if (UDIPixelBytes(image.mWidth, image.mHeight, image.mBitsPerPixel, image.mPaletteType) < UploadBytes(image)) {
    image.Unload();
    return -1;
  }
  int result;
  if (image.GetFormat() != 0) {
    result = Load(image.mData, unsigned(image.mWidth), unsigned(image.mHeight), unsigned(image.mBitsPerPixel), path,
                  unsigned(image.GetFormat()), unsigned(image.mPaletteType));
  } else if (image.mBitsPerPixel < 24) {
    image.Unload();
    return -1;
  } else {
    result = Load(image.mData, unsigned(image.mWidth), unsigned(image.mHeight), unsigned(image.mBitsPerPixel), path);
  }
  image.Unload();
  return result;
}

int GLTexture::Load(void* pixels, unsigned width, unsigned height, unsigned bits, const char* name) {
  if (width == 0 || height == 0 || (bits != 24 && bits != 32)) return -3;
  mWidth = width;
  mHeight = height;
  mName = name;
  const size_t pixelCount = size_t(width) * height;
  unsigned char* rgba = new unsigned char[pixelCount * 4];
  const unsigned char* in = static_cast<const unsigned char*>(pixels);
  unsigned char* out = rgba;
  if (bits == 24) {
    for (size_t i = 0; i < pixelCount; ++i, in += 3, out += 4) {
      out[0] = in[0];
      out[1] = in[1];
      out[2] = in[2];
      out[3] = 255;
    }
  } else {
    for (size_t i = 0; i < pixelCount; ++i, in += 4, out += 4) {  // A, R, G, B in
      out[0] = in[1];
      out[1] = in[2];
      out[2] = in[3];
      out[3] = in[0];
    }
  }
  CreateTexture();
  mByteSize = width * height * 4;
  glTexImage2D(GL_TEXTURE_2D, 0, GL_RGBA, GLsizei(width), GLsizei(height), 0, GL_RGBA, GL_UNSIGNED_BYTE, rgba);
  SetTextureParameters();
  delete[] rgba;
  return 0;
}

int GLTexture::Load(void* pixels, unsigned width, unsigned height, unsigned, const char* name, unsigned format,
                    unsigned paletteType) {
  if (width == 0 || height == 0) return -3;
  mWidth = width;
  mHeight = height;
  mName = name;
  if (paletteType != 0) return LoadPallettePixelData(pixels, format, paletteType);
  return LoadRawPixelData(pixels, format);
}

int GLTexture::LoadRawPixelData(void* pixels, unsigned format) {
  if (format == 0 || format >= kRawFormatCount) return -3;
  const RawFormat& row = kRawFormats[format];
  CreateTexture();
  mByteSize = row.bytesPerPixel * mWidth * mHeight;
  glTexImage2D(GL_TEXTURE_2D, 0, GLint(row.format), GLsizei(mWidth), GLsizei(mHeight), 0, row.format, row.type, pixels);
  SetTextureParameters();
  return 0;
}

int GLTexture::LoadPallettePixelData(void* pixels, unsigned format, unsigned paletteType) {
  if (format == 0 || format >= kPalettedFormatCount) return -1;
  GLenum internalFormat = 0;
  const PalettedFormat* row = Paletted(format, paletteType);
  if (row != 0) {
    internalFormat = row->internalFormat;
    mByteSize = unsigned(PalettedBytes(*row, paletteType, size_t(mWidth) * mHeight));
  }
  CreateTexture();
  // The UDI payload, palette then indices, is what the extension takes.
  glCompressedTexImage2D(GL_TEXTURE_2D, 0, internalFormat, GLsizei(mWidth), GLsizei(mHeight), 0, GLsizei(mByteSize),
                         pixels);
  SetTextureParameters();
  return 0;
}

void GLTexture::CreateTexture() {
  glEnable(GL_TEXTURE_2D);
  GLuint name = 0;
  glGenTextures(1, &name);
  if (name == 0) glGenTextures(1, &name);  // one more try; the upload goes on with whatever came
  mTextureID = name;
  glBindTexture(GL_TEXTURE_2D, name);
}

unsigned GLTexture::Release() {
  if (mTextureID != 0) {
    // Never below 0: a texture nobody counted is simply let go.
    if (mRefCount > 0) --mRefCount;
    if (mRefCount == 0) {
      const GLuint name = mTextureID;
      glDeleteTextures(1, &name);
      mTextureID = 0;
    }
  }
  return mRefCount;
}

void GLTexture::Clear() {
  if (mTextureID != 0) {
    const GLuint name = mTextureID;
    glDeleteTextures(1, &name);
    mTextureID = 0;
  }
  mName.clear();
}
