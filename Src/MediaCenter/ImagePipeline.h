#ifndef SRC_MEDIACENTER_IMAGEPIPELINE_H
#define SRC_MEDIACENTER_IMAGEPIPELINE_H
// The media store's picture work that needs none of its records: JPEG in and out
// through libjpeg, TGA to RGBA, scaling and rotating pixel buffers, and the names
// of thumbnails and covers. Buffers are plain arrays, rows top to bottom, no
// padding, 3 bytes a pixel (R, G, B) or 4 (R, G, B, A), made with new[]; whoever
// receives one frees it with delete[].
#include <string>

typedef int BOOL;
typedef unsigned char uint8;

class ImagePipeline {
 public:
  // Decodes a JPEG into a new RGB array, reduced by libjpeg to 1 / scaleDenom;
  // 16 goes one halving beyond the library's smallest reduction. False, with the
  // out-arguments untouched, when the file cannot be opened. A grey-scale file is
  // a failed assertion; a corrupt one ends the process through libjpeg.
  static BOOL ExtractJpgToRGB8(std::string& path, uint8*& buf, int& width, int& height, int scaleDenom);
  // The same with an alpha of 255.
  static BOOL ExtractJpgToRGBA8(std::string& path, uint8*& buf, int& width, int& height, int scaleDenom);
  // A TGA file into a new R, G, B, A array.
  static BOOL ExtractTgaToRGBA8(std::string& path, uint8*& buf, int& width, int& height);
  // Writes `rgb` as a baseline JPEG of quality 80, scaled by 0.5, 1 or 2.
  static BOOL GenerateJpgFromRGB8(std::string& path, const uint8* rgb, int width, int height, float scale);
  // The size of a JPEG file from its header alone.
  static bool GetJpgInfo(std::string& path, int& width, int& height);

  // Bilinear scaling into a new array; `format` 2 is RGBA, anything else RGB. On
  // enlarging, the last rows read one row past the source, so the source must be
  // readable there.
  static uint8* ScaleBuffer(int newWidth, int newHeight, int format, int oldWidth, int oldHeight, uint8* src);
  // Quarter turns: angle 90, -90, 270, -270, 180 or -180. The arrays must not overlap.
  static void RotateBuf(uint8* dst, uint8* src, int& outWidth, int& outHeight, int width, int height, int angle,
                        int bytesPerPixel);
  // The cubic B-spline weight.
  static float KernelBSpline(float x);

  // /x/Videos/vtwgvideo_3.avi gives /x/Videos/Thumb/vtwgvideo_thumb_3.jpg; the
  // cover is the same with "Cover" and "_cover".
  static std::string GetThumbImageName(const std::string& path);
  static std::string GetCoverPhotoName(const std::string& path);
};

#endif
