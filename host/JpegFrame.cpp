#include "JpegFrame.h"

#include <cstdio>
#include <cstdlib>

#include <jpeglib.h>

std::vector<uint8_t> EncodeJpegFrame(const uint32_t* pixels, int width, int height, int quality) {
  jpeg_compress_struct cinfo;
  jpeg_error_mgr jerr;
  // Compressing into memory cannot fail but for lack of memory, which ends the
  // process anyway: libjpeg's default error handler is enough.
  cinfo.err = jpeg_std_error(&jerr);
  jpeg_create_compress(&cinfo);
  unsigned char* out = nullptr;
  unsigned long outSize = 0;
  jpeg_mem_dest(&cinfo, &out, &outSize);
  cinfo.image_width = JDIMENSION(width);
  cinfo.image_height = JDIMENSION(height);
  cinfo.input_components = 3;
  cinfo.in_color_space = JCS_RGB;
  jpeg_set_defaults(&cinfo);
  jpeg_set_quality(&cinfo, quality, TRUE);
  for (int c = 0; c < 3; ++c) {
    cinfo.comp_info[c].h_samp_factor = 1;
    cinfo.comp_info[c].v_samp_factor = 1;
  }
  jpeg_start_compress(&cinfo, TRUE);
  std::vector<JSAMPLE> row(size_t(width) * 3);
  while (cinfo.next_scanline < cinfo.image_height) {
    const uint32_t* src = pixels + size_t(cinfo.next_scanline) * size_t(width);
    for (int x = 0; x < width; ++x) {
      row[size_t(x) * 3] = JSAMPLE(src[x] >> 16);
      row[size_t(x) * 3 + 1] = JSAMPLE(src[x] >> 8);
      row[size_t(x) * 3 + 2] = JSAMPLE(src[x]);
    }
    JSAMPROW rows[1] = {row.data()};
    jpeg_write_scanlines(&cinfo, rows, 1);
  }
  jpeg_finish_compress(&cinfo);
  jpeg_destroy_compress(&cinfo);
  std::vector<uint8_t> jpeg(out, out + outSize);
  free(out);
  return jpeg;
}
