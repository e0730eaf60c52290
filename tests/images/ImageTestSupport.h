#pragma once
// Shared by the image tests: the ImageMagick-made fixtures and their pixel dumps,
// a UDI writer that lays files out byte by byte, and plain libjpeg as the judge of
// what our JPEG code reads and writes.
#include <gtest/gtest.h>
#include <stdio.h>

#include <cstdint>
#include <string>
#include <vector>

#include <jpeglib.h>

#include "MediaCenter/MediaCenter.h"
#include "support/TestSupport.h"
#include "support/UdiFile.h"

namespace imgtest {

using zvtest::Bytes;

// The picture operations need no gallery: a store without a game serves.
inline MediaCenter& Store() {
  static MediaCenter store(nullptr);
  return store;
}

inline std::string Fixture(const std::string& name) {
  return std::string(ZV_SOURCE_DIR) + "/tests/images/fixtures/" + name;
}

// ImageMagick's reading of a fixture: R, G, B, A, rows top to bottom.
inline Bytes Dump(const std::string& name) { return zvtest::ReadBytes(Fixture(name + ".rgba")); }

// The dump's pixels in another byte order, e.g. {3, 0, 1, 2} for A, R, G, B, or
// {0, 1, 2} for R, G, B; with `bottomUp` the rows in reverse.
inline Bytes Reorder(const Bytes& rgba, int width, int height, const std::vector<int>& order, bool bottomUp = false) {
  Bytes out;
  for (int row = 0; row < height; ++row) {
    const int y = bottomUp ? height - 1 - row : row;
    for (int x = 0; x < width; ++x)
      for (int k : order) out.push_back(rgba[(size_t(y) * width + x) * 4 + k]);
  }
  return out;
}

inline Bytes Span(const unsigned char* data, size_t size) { return Bytes(data, data + size); }

// UDI files are laid out by the shared writer.
using zvtest::MakeUdi;
using zvtest::UdiLayout;

// A payload of `size` bytes that tells its positions apart.
inline Bytes Pattern(size_t size, unsigned seed = 7) {
  Bytes out(size);
  for (size_t i = 0; i < size; ++i) out[i] = uint8_t(i * 31 + seed + (i >> 8));
  return out;
}

// Plain libjpeg: the size and pixels of a JPEG reduced by 1 / denom.
struct Decoded {
  int width = 0;
  int height = 0;
  int components = 0;
  Bytes pixels;
};

inline Decoded DecodeWithLibjpeg(const std::string& path, int denom = 1) {
  Decoded out;
  FILE* input = fopen(path.c_str(), "rb");
  if (input == nullptr) {
    ADD_FAILURE() << "cannot open " << path;
    return out;
  }
  jpeg_decompress_struct cinfo;
  jpeg_error_mgr errors;
  cinfo.err = jpeg_std_error(&errors);
  jpeg_create_decompress(&cinfo);
  jpeg_stdio_src(&cinfo, input);
  jpeg_read_header(&cinfo, TRUE);
  cinfo.scale_num = 1;
  cinfo.scale_denom = denom;
  jpeg_start_decompress(&cinfo);
  out.width = int(cinfo.output_width);
  out.height = int(cinfo.output_height);
  out.components = cinfo.output_components;
  out.pixels.resize(size_t(out.width) * out.height * out.components);
  while (cinfo.output_scanline < cinfo.output_height) {
    JSAMPROW row = out.pixels.data() + size_t(cinfo.output_scanline) * out.width * out.components;
    jpeg_read_scanlines(&cinfo, &row, 1);
  }
  jpeg_finish_decompress(&cinfo);
  jpeg_destroy_decompress(&cinfo);
  fclose(input);
  return out;
}

// Plain libjpeg: an RGB picture as a JPEG of the given quality.
inline void EncodeWithLibjpeg(const std::string& path, const Bytes& rgb, int width, int height, int quality = 90) {
  FILE* output = fopen(path.c_str(), "wb");
  ASSERT_NE(nullptr, output);
  jpeg_compress_struct cinfo;
  jpeg_error_mgr errors;
  cinfo.err = jpeg_std_error(&errors);
  jpeg_create_compress(&cinfo);
  jpeg_stdio_dest(&cinfo, output);
  cinfo.image_width = JDIMENSION(width);
  cinfo.image_height = JDIMENSION(height);
  cinfo.input_components = 3;
  cinfo.in_color_space = JCS_RGB;
  jpeg_set_defaults(&cinfo);
  jpeg_set_quality(&cinfo, quality, TRUE);
  jpeg_start_compress(&cinfo, TRUE);
  while (cinfo.next_scanline < cinfo.image_height) {
    JSAMPROW row = const_cast<unsigned char*>(rgb.data()) + size_t(cinfo.next_scanline) * width * 3;
    jpeg_write_scanlines(&cinfo, &row, 1);
  }
  jpeg_finish_compress(&cinfo);
  jpeg_destroy_compress(&cinfo);
  fclose(output);
}

// A smooth RGB picture with some edges, for pictures made at test time.
inline Bytes Gradient(int width, int height) {
  Bytes out(size_t(width) * height * 3);
  for (int y = 0; y < height; ++y)
    for (int x = 0; x < width; ++x) {
      unsigned char* p = &out[(size_t(y) * width + x) * 3];
      p[0] = uint8_t(x * 255 / (width > 1 ? width - 1 : 1));
      p[1] = uint8_t(y * 255 / (height > 1 ? height - 1 : 1));
      p[2] = uint8_t(((x / 16 + y / 16) & 1) ? 200 : 40);
    }
  return out;
}

}  // namespace imgtest
