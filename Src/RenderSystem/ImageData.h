#ifndef SRC_RENDERSYSTEM_IMAGEDATA_H
#define SRC_RENDERSYSTEM_IMAGEDATA_H
// A picture in memory with its size and where it came from.
#include <string>

class ImageData {
 public:
  ImageData();
  virtual ~ImageData();

  // 1 loaded; 0 failed, and the earlier picture stays.
  int Load(const char* path);
  // A blank picture named "noname". 0 if a size is 0 or memory is short.
  int Create(unsigned width, unsigned height, unsigned bits);
  void Unload();
  // Through SaveBMPData, whose files carry no information header.
  int SaveBMP(const char* path);

  int GetFormat() const { return mFormat; }

  std::string mName;  // the path loaded, "noname" after Create, empty when unloaded
  unsigned char* mData;
  int mWidth;
  int mHeight;
  int mBitsPerPixel;
  int mValid;
  int mRowBytes;  // width x bits / 8
  int mDataSize;  // height x mRowBytes
  int mPaletteType;
  int mFormat;

 private:
  ImageData(const ImageData&);
  ImageData& operator=(const ImageData&);
};

#endif
