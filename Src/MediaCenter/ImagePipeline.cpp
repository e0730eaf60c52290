#include "MediaCenter/ImagePipeline.h"

#include <assert.h>
#include <stdio.h>
#include <string.h>

#include "Base/File.h"
#include "RenderSystem/BMPData.h"
#include "RenderSystem/TGAFile.h"

// jpeglib.h needs size_t and FILE declared first.
#include <jpeglib.h>

namespace {

const int kJpegQuality = 80;

// Inserts the `suffix` before the last "_", makes the extension ".jpg" and puts
// the file into the `folder` beside it.
std::string DerivedName(const std::string& path, const char* suffix, const char* folder) {
  std::string name(path);
  name.insert(name.rfind("_"), suffix);
  name.replace(name.rfind("."), 4, ".jpg");
  const std::string sub = std::string("/") + folder;
  std::string::size_type at = name.rfind("/");
  if (at != std::string::npos) {
    name.insert(at, sub);
  } else {
    at = name.rfind("\\");
    if (at != std::string::npos) name.insert(at, sub);
  }
  return name;
}

// One output row of `rgb` scaled by 0.5 (2 x 2 averages; an odd last column or
// row stands for itself) or 2 (each pixel four times).
void ScaledRow(const uint8* rgb, int width, int height, float scale, int row, uint8* out, int outWidth) {
  if (scale == 1.0f) {
    memcpy(out, rgb + size_t(row) * width * 3, size_t(width) * 3);
  } else if (scale == 2.0f) {
    const uint8* from = rgb + size_t(row / 2) * width * 3;
    for (int x = 0; x < outWidth; ++x) memcpy(out + x * 3, from + (x / 2) * 3, 3);
  } else {
    const int y0 = row * 2;
    const int y1 = y0 + 1 < height ? y0 + 1 : height - 1;
    for (int x = 0; x < outWidth; ++x) {
      const int x0 = x * 2;
      const int x1 = x0 + 1 < width ? x0 + 1 : width - 1;
      for (int c = 0; c < 3; ++c) {
        const int sum = rgb[(size_t(y0) * width + x0) * 3 + c] + rgb[(size_t(y0) * width + x1) * 3 + c] +
                        rgb[(size_t(y1) * width + x0) * 3 + c] + rgb[(size_t(y1) * width + x1) * 3 + c];
        out[x * 3 + c] = uint8((sum + 2) / 4);
      }
    }
  }
}

}  // namespace

BOOL ImagePipeline::ExtractJpgToRGB8(std::string& path, uint8*& buf, int& width, int& height, int scaleDenom) {
  FILE* input = fopen(path.c_str(), "rb");
  if (input == NULL) {
    printf("[MediaCenter][ExtractJpgToRGB8] Extract jpg file failed. Cann't open file %s.\n", path.c_str());
    perror("[MediaCenter][ExtractJpgToRGB8] Problem :");
    return false;
  }
  struct jpeg_decompress_struct Cinfo;
  struct jpeg_error_mgr errors;
  Cinfo.err = jpeg_std_error(&errors);
  jpeg_create_decompress(&Cinfo);
  jpeg_stdio_src(&Cinfo, input);
  jpeg_read_header(&Cinfo, TRUE);
  Cinfo.scale_num = 1;
  Cinfo.scale_denom = scaleDenom;
  jpeg_start_decompress(&Cinfo);
  assert(Cinfo.num_components == 3);

  const int outWidth = int(Cinfo.output_width);
  const int outHeight = int(Cinfo.output_height);
  const size_t rowBytes = size_t(outWidth) * 3;
  uint8* pixels = new uint8[rowBytes * outHeight];
  while (Cinfo.output_scanline < Cinfo.output_height) {
    JSAMPROW row = pixels + Cinfo.output_scanline * rowBytes;
    jpeg_read_scanlines(&Cinfo, &row, 1);
  }
  jpeg_finish_decompress(&Cinfo);
  jpeg_destroy_decompress(&Cinfo);
  fclose(input);

  buf = pixels;
  width = outWidth;
  height = outHeight;

  if (scaleDenom == 16) {
    // The library stops at one eighth; the last halving is done here.
    puts("[MediaCenter][ExtractJpgToRGB8] ScaleRationDenom is 16. More Operation.");
    const int halfWidth = width / 2;
    const int halfHeight = height / 2;
    uint8* half = new uint8[size_t(halfWidth) * halfHeight * 3];
    for (int y = 0; y < halfHeight; ++y)
      for (int x = 0; x < halfWidth; ++x)
        memcpy(half + (size_t(y) * halfWidth + x) * 3, buf + (size_t(y * 2) * width + x * 2) * 3, 3);
    delete[] buf;
    buf = half;
    width = halfWidth;
    height = halfHeight;
  }
  return true;
}

BOOL ImagePipeline::ExtractJpgToRGBA8(std::string& path, uint8*& buf, int& width, int& height, int scaleDenom) {
  uint8* rgb = 0;
  int rgbWidth = 0;
  int rgbHeight = 0;
  if (!ExtractJpgToRGB8(path, rgb, rgbWidth, rgbHeight, scaleDenom)) return false;
  const size_t count = size_t(rgbWidth) * rgbHeight;
  uint8* rgba = new uint8[count * 4];
  for (size_t i = 0; i < count; ++i) {
    rgba[i * 4 + 0] = rgb[i * 3 + 0];
    rgba[i * 4 + 1] = rgb[i * 3 + 1];
    rgba[i * 4 + 2] = rgb[i * 3 + 2];
    rgba[i * 4 + 3] = 255;
  }
  delete[] rgb;
  buf = rgba;
  width = rgbWidth;
  height = rgbHeight;
  return true;
}

BOOL ImagePipeline::ExtractTgaToRGBA8(std::string& path, uint8*& buf, int& width, int& height) {
  BMPData bmp;
  memset(&bmp, 0, sizeof bmp);
  if (LoadTGAFile(path.c_str(), &bmp) != 0) {
    UnloadBMPData(&bmp);
    return false;
  }
  width = bmp.width;
  height = bmp.height;
  const size_t count = size_t(width) * height;
  // A 24-bit file has three bytes a pixel, not the four read here: the reading
  // stops at the end of its pixels, and what it does not reach stays clear.
  const size_t have = count * size_t(bmp.bitsPerPixel >> 3);
  uint8* rgba = new uint8[count * 4]();
  for (size_t i = 0; i < count && i * 4 + 4 <= have; ++i) {
    rgba[i * 4 + 0] = bmp.pixels[i * 4 + 1];
    rgba[i * 4 + 1] = bmp.pixels[i * 4 + 2];
    rgba[i * 4 + 2] = bmp.pixels[i * 4 + 3];
    rgba[i * 4 + 3] = bmp.pixels[i * 4 + 0];
  }
  UnloadBMPData(&bmp);
  buf = rgba;
  return true;
}

BOOL ImagePipeline::GenerateJpgFromRGB8(std::string& path, const uint8* rgb, int width, int height, float scale) {
  assert(scale == 0.5f || scale == 1.0f || scale == 2.0f);
  File file;
  if (!file.open(path.c_str(), "wb")) {
    perror("Problem :");
    return false;
  }
  // libjpeg-turbo has no scaling on the compression side, so the scaled rows are
  // made here, one at a time, at the size libjpeg's own scaling gives: half
  // rounded up, or double.
  int outWidth = width;
  int outHeight = height;
  if (scale == 0.5f) {
    outWidth = (width + 1) / 2;
    outHeight = (height + 1) / 2;
  } else if (scale == 2.0f) {
    outWidth = width * 2;
    outHeight = height * 2;
  }

  struct jpeg_compress_struct cinfo;
  struct jpeg_error_mgr errors;
  cinfo.err = jpeg_std_error(&errors);
  jpeg_create_compress(&cinfo);
  jpeg_stdio_dest(&cinfo, file.stream());
  cinfo.image_width = JDIMENSION(outWidth);
  cinfo.image_height = JDIMENSION(outHeight);
  cinfo.input_components = 3;
  cinfo.in_color_space = JCS_RGB;
  jpeg_set_defaults(&cinfo);
  jpeg_set_quality(&cinfo, kJpegQuality, TRUE);
  jpeg_start_compress(&cinfo, TRUE);
  uint8* line = new uint8[size_t(outWidth) * 3];
  while (cinfo.next_scanline < cinfo.image_height) {
    ScaledRow(rgb, width, height, scale, int(cinfo.next_scanline), line, outWidth);
    JSAMPROW row = line;
    jpeg_write_scanlines(&cinfo, &row, 1);
  }
  delete[] line;
  jpeg_finish_compress(&cinfo);
  jpeg_destroy_compress(&cinfo);
  file.close();
  printf("[MediaCenter] Generate POOL_NEW jpg file %s, with %d, height %d.\n", path.c_str(), outWidth, outHeight);
  return true;
}

bool ImagePipeline::GetJpgInfo(std::string& path, int& width, int& height) {
  File file;
  if (!file.open(path.c_str(), "rb")) {
    printf("[MediaCenter][GetJpgInfo] Extract jpg file failed. Cann't open file %s.\n", path.c_str());
    return false;
  }
  struct jpeg_decompress_struct cinfo;
  struct jpeg_error_mgr errors;
  cinfo.err = jpeg_std_error(&errors);
  jpeg_create_decompress(&cinfo);
  jpeg_stdio_src(&cinfo, file.stream());
  jpeg_read_header(&cinfo, TRUE);
  width = int(cinfo.image_width);
  height = int(cinfo.image_height);
  jpeg_destroy_decompress(&cinfo);
  return true;
}

uint8* ImagePipeline::ScaleBuffer(int newWidth, int newHeight, int format, int oldWidth, int oldHeight, uint8* src) {
  assert(newWidth != 0 && newHeight != 0 && oldWidth != 0 && oldHeight != 0);
  const int channels = format == 2 ? 4 : 3;
  uint8* dst = new uint8[size_t(newWidth) * newHeight * channels];
  if (newWidth == oldWidth && newHeight == oldHeight) {
    memcpy(dst, src, size_t(newWidth) * newHeight * channels);
    return dst;
  }
  const float scaleX = 1.0f / (float(newWidth) / float(oldWidth));
  const float scaleY = 1.0f / (float(newHeight) / float(oldHeight));
  uint8* out = dst;
  for (int y = 0; y < newHeight; ++y) {
    const float fy = float(y) * scaleY;
    const int iy = int(fy);
    const int y0 = iy > 0 ? iy : 0;
    // Stops one row past the last, unlike x1: see the header.
    const int y1 = y0 + 1 < oldHeight ? y0 + 1 : oldHeight;
    const float wy = fy - float(iy);
    for (int x = 0; x < newWidth; ++x) {
      const float fx = float(x) * scaleX;
      const int ix = int(fx);
      const int x0 = ix > 0 ? ix : 0;
      const int x1 = x0 + 1 < oldWidth ? x0 + 1 : oldWidth - 1;
      const float wx = fx - float(ix);
      const uint8* a = src + (size_t(y0) * oldWidth + x0) * channels;
      const uint8* b = src + (size_t(y0) * oldWidth + x1) * channels;
      const uint8* c = src + (size_t(y1) * oldWidth + x0) * channels;
      const uint8* d = src + (size_t(y1) * oldWidth + x1) * channels;
      for (int k = 0; k < 3; ++k) {
        out[k] = uint8(float(a[k]) * (1 - wx) * (1 - wy) + float(b[k]) * wx * (1 - wy) + float(c[k]) * wy * (1 - wx) +
                       float(d[k]) * wy * wx);
      }
      // Opaque only where all four sources are.
      if (channels == 4) out[3] = uint8(a[3] & b[3] & c[3] & d[3]);
      out += channels;
    }
  }
  return dst;
}

void ImagePipeline::RotateBuf(uint8* dst, uint8* src, int& outWidth, int& outHeight, int width, int height, int angle,
                              int bytesPerPixel) {
  assert(dst && src);
  const int copy = bytesPerPixel == 4 ? 4 : 3;
  if (angle == -90 || angle == 270) {
    outWidth = height;
    outHeight = width;
  } else if (angle == 180 || angle == -180) {
    outWidth = width;
    outHeight = height;
  } else if (angle == 90 || angle == -270) {
    outWidth = height;
    outHeight = width;
  } else {
    assert(0);
    return;
  }
  for (int y = 0; y < height; ++y) {
    for (int x = 0; x < width; ++x) {
      int nx, ny;
      if (angle == -90 || angle == 270) {
        nx = y;
        ny = width - 1 - x;
      } else if (angle == 180 || angle == -180) {
        nx = width - 1 - x;
        ny = height - 1 - y;
      } else {
        nx = height - 1 - y;
        ny = x;
      }
      memcpy(dst + (size_t(ny) * outWidth + nx) * bytesPerPixel, src + (size_t(y) * width + x) * bytesPerPixel, copy);
    }
  }
}

float ImagePipeline::KernelBSpline(float x) {
  if (x > 2.0f) return 0.0f;
  const float xm1 = x - 1.0f;
  const float xp1 = x + 1.0f;
  const float xp2 = x + 2.0f;
  const float a = xp2 > 0.0f ? xp2 * xp2 * xp2 : 0.0f;
  const float b = xp1 > 0.0f ? xp1 * xp1 * xp1 : 0.0f;
  const float c = x > 0.0f ? x * x * x : 0.0f;
  const float d = xm1 > 0.0f ? xm1 * xm1 * xm1 : 0.0f;
  return (a - 4.0f * b + 6.0f * c - 4.0f * d) * 0.16666667f;
}

std::string ImagePipeline::GetThumbImageName(const std::string& path) { return DerivedName(path, "_thumb", "Thumb"); }

std::string ImagePipeline::GetCoverPhotoName(const std::string& path) { return DerivedName(path, "_cover", "Cover"); }
