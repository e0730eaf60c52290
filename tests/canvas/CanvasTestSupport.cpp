#include "CanvasTestSupport.h"

#include <cstring>
#include <fstream>

namespace canvastest {

int LineOf(const std::string& source, const std::string& text) {
  std::ifstream in(std::string(ZV_SOURCE_DIR) + "/" + source);
  std::string line;
  for (int number = 1; std::getline(in, line); ++number) {
    if (line.find(text) != std::string::npos) return number;
  }
  return 0;
}

void RunForm(canvasref::Form form, CanvasLayer* layer, const canvasref::Draw& d, bool baseForm) {
  using canvasref::Form;
  switch (form) {
    case Form::ZvRGBA9:
    case Form::PlainRGBA9:
      layer->Draw_Image_RGBA8888(d.x, d.y, d.w, d.h, d.src, d.srcW, d.srcH, d.alpha, d.orient);
      break;
    case Form::ZvRGBA11:
    case Form::PlainRGBA11:
      layer->Draw_Image_RGBA8888(d.x, d.y, d.srcX, d.srcY, d.w, d.h, d.src, d.srcW, d.srcH, d.alpha, d.orient);
      break;
    case Form::ZvRGB6:
      if (baseForm) {
        static_cast<ZvCanvasLayer*>(layer)->ZvCanvasLayer::Draw_Image_RGB888(d.x, d.y, d.src, d.srcW, d.srcH, d.orient);
      } else {
        layer->Draw_Image_RGB888(d.x, d.y, d.src, d.srcW, d.srcH, d.orient);
      }
      break;
    case Form::PlainRGB6: layer->Draw_Image_RGB888(d.x, d.y, d.src, d.srcW, d.srcH, d.orient); break;
    case Form::ZvRGB10:
    case Form::PlainRGB10:
      layer->Draw_Image_RGB888(d.x, d.y, d.srcX, d.srcY, d.w, d.h, d.src, d.srcW, d.srcH, d.orient);
      break;
  }
}

int FirstDifference(const uint8_t* a, const uint8_t* b, int pixels) {
  if (memcmp(a, b, size_t(pixels) * 4) == 0) return -1;
  for (int i = 0; i < pixels; ++i) {
    if (memcmp(a + i * 4, b + i * 4, 4) != 0) return i;
  }
  return -1;
}

std::vector<ECanvasSpanPath> SpanPaths() {
  std::vector<ECanvasSpanPath> paths;
  for (int path = 0; path < kCanvasSpanPathCount; ++path) {
    if (CanvasSpanOpsFor(ECanvasSpanPath(path))) paths.push_back(ECanvasSpanPath(path));
  }
  return paths;
}

const char* PathName(ECanvasSpanPath path) {
  switch (path) {
    case kCanvasSpanPortable: return "portable";
    case kCanvasSpanSSE2: return "SSE2";
    case kCanvasSpanAVX2: return "AVX2";
    default: return "?";
  }
}

UsingPath::UsingPath(ECanvasSpanPath path) : mBefore(CanvasSpanPath()) {
  if (!CanvasUseSpanPath(path)) ADD_FAILURE() << PathName(path) << " is not available";
}

UsingPath::~UsingPath() { CanvasUseSpanPath(mBefore); }

}  // namespace canvastest
