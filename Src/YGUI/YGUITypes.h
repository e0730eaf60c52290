#ifndef SRC_YGUI_YGUITYPES_H
#define SRC_YGUI_YGUITYPES_H
// Value types of the toolkit, its 20.12 fixed point, and YGUIRawImage, the pixel
// store behind the image controls.
//
// Scale, opacity, ratios and key-frame times are integers with 4096 as 1.0.
#include <string>

class ImageData;

// A float in 20.12 fixed point: the product in single precision, then half added
// away from zero (for 0 and below, subtracted), then cut.
inline int YGUIToFixed(float value) {
  return value > 0 ? (int)(value * 4096 + 0.5) : (int)(value * 4096 - 0.5);
}

struct YGUIRect {
  YGUIRect() : mX(0), mY(0), mWidth(0), mHeight(0) {}
  YGUIRect(int x, int y, int width, int height) : mX(x), mY(y), mWidth(width), mHeight(height) {}
  int mX;
  int mY;
  int mWidth;
  int mHeight;
};

template <class T>
struct Rect2D {
  Rect2D() : left(0), top(0), right(0), bottom(0) {}
  Rect2D(T l, T t, T r, T b) : left(l), top(t), right(r), bottom(b) {}
  T left;
  T top;
  T right;
  T bottom;
};

// Where focus goes from a control for each direction: the Id of the neighbour,
// -1 for none.
struct NavigateIdDesc {
  NavigateIdDesc() : mUp(-1), mDown(-1), mLeft(-1), mRight(-1) {}
  NavigateIdDesc& operator=(const NavigateIdDesc& other) {
    mUp = other.mUp;
    mDown = other.mDown;
    mLeft = other.mLeft;
    mRight = other.mRight;
    return *this;
  }
  int mUp;
  int mDown;
  int mLeft;
  int mRight;
};

// How a raw image is scaled to render size; only nearest-neighbour exists.
enum ESCALETYPE {
  eScale_Nearest = 0,
};

// Pixel layout of a raw image's data.
enum EYGUIIAMGETYPE {
  eImage_RGBA8888 = 0,  // 4 bytes a pixel
  eImage_RGB888 = 1,    // 3 bytes a pixel
};

// Loads an image by its name without extension, trying .udi, .tga, .bmp and then
// a tiled description, turns every source format into R, G, B, A bytes, and keeps
// a second copy scaled to the size at which it is drawn. It draws nothing itself.
// The owner calls Release(); the destructor frees nothing.
class YGUIRawImage {
 public:
  YGUIRawImage();

  // A failed load leaves an empty image.
  void LoadImage(const std::string& name, const std::string& folder);
  bool LoadTexture(const std::string& path);
  // True when the tile description was found.
  bool IntegrateNp2Texture(const std::string& name, const std::string& folder);
  // Takes ownership of `pixels` (array new).
  void SetImage(unsigned char* pixels, int width, int height, EYGUIIAMGETYPE type);
  // The pixels at (width, height), or null. The buffer stays the image's.
  unsigned char* GetRenderBuffer(int width, int height, ESCALETYPE type);
  void Release();

  void LoadPixelDataNoPalette(ImageData& CurImageData);
  void LoadPixelDataWithPalette(ImageData& CurImageData);

  static void RGB5551toRGBA8888(unsigned char* dest, const unsigned char* src, int width, int height);
  static void RGB565toRGBA8888(unsigned char* dest, const unsigned char* src, int width, int height);
  static void RGBA4444toRGBA8888(unsigned char* dest, const unsigned char* src, int width, int height);
  static void L8A8toRGBA8888(unsigned char* dest, const unsigned char* src, int width, int height);

  int mWidth;
  int mHeight;
  unsigned char* mData;          // owned, array new
  unsigned char* mRenderBuffer;  // the scaled copy; owned
  int mDirty;                    // the render buffer must be rebuilt
  EYGUIIAMGETYPE mType;
};

#endif
