#ifndef SRC_RENDERSYSTEM_GLTEXTURE_H
#define SRC_RENDERSYSTEM_GLTEXTURE_H
// One image held by the 3D pipeline. Device-format pictures (UDI) go to GL as they
// are, paletted ones stay compressed; BMP and TGA pixels are turned into R, G, B, A
// first. Every texture is sampled nearest, clamped at its edges, without mipmaps,
// and keeps the size of its source: making sizes that the GL takes is the asset
// maker's business.
//
// Users go through GLTextureManager, which shares and counts textures by name.
#include <string>

class GLTexture {
 public:
  GLTexture();
  // Loads the file at once, as Load(path, 10240, 10240).
  explicit GLTexture(const char* path);
  // Deletes the GL texture if it has one.
  virtual ~GLTexture();

  // A BMP, TGA or UDI file into a texture; the two numbers have no effect. 0, or
  // -1 when the picture cannot be read (or has fewer than 24 bits without a
  // device format), -3 for a size or format the uploaders refuse.
  int Load(const char* path, unsigned minFilter, unsigned magFilter);
  // BMP or TGA pixels of 24 bits (R, G, B) or 32 bits (A, R, G, B). 0, or -3 for a
  // zero size or another depth.
  int Load(void* pixels, unsigned width, unsigned height, unsigned bits, const char* name);
  // Pixels in device format `format` (UDImage::EPixelFormat), with a palette when
  // `paletteType` is 1 (16 entries) or 2 (256). -3 for a zero size, else as the
  // uploader.
  int Load(void* pixels, unsigned width, unsigned height, unsigned bits, const char* name, unsigned format,
           unsigned paletteType);

  // Uploads mWidth x mHeight pixels of format 1 to 5 as they lie. 0, or -3 for
  // another format.
  int LoadRawPixelData(void* pixels, unsigned format);
  // Uploads a palette and its indices (OES_compressed_paletted_texture) of format
  // 1 to 4 as they lie. 0, or -1 for another format.
  int LoadPallettePixelData(void* pixels, unsigned format, unsigned paletteType);

  // Counts one user down and deletes the GL texture when none is left; the object
  // stays. Returns the users left.
  unsigned Release();
  // Deletes the GL texture and forgets the name, whatever the count.
  void Clear();

  std::string mName;    // the path or name it was loaded under
  unsigned mRefCount;   // users, counted by the manager; 0 after construction
  unsigned mTextureID;  // the GL texture name, 0 when none
  unsigned mWidth;
  unsigned mHeight;
  int mLoadFlag;       // set to 0 by the manager after a load, read by nothing
  unsigned mByteSize;  // bytes of the uploaded image

 private:
  // Enables texturing, makes a texture name and binds it.
  void CreateTexture();

  GLTexture(const GLTexture&);
  GLTexture& operator=(const GLTexture&);
};

#endif
