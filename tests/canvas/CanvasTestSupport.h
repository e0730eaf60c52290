#pragma once
// Helpers of the canvas tests: layers on the simulated device and their pixels.
#include <gtest/gtest.h>

#include <array>
#include <cstdint>
#include <string>
#include <vector>

#include "Canvas/CanvasLayer.h"
#include "Canvas/CanvasSpans.h"
#include "Canvas/VT/ZvCanvasFactory.h"
#include "Canvas/VT/ZvCanvasRGBALayer.h"
#include "CanvasReference.h"
#include "solva/Device.h"

namespace canvastest {

using Px = std::array<uint8_t, 4>;

inline Px PixelAt(const CanvasLayer& layer, int index) {
  const uint8_t* p = layer.GetBuffer() + index * 4;
  return Px{p[0], p[1], p[2], p[3]};
}
inline Px PixelAt(const CanvasLayer& layer, int x, int y) { return PixelAt(layer, y * layer.GetWidth() + x); }
inline void SetPixel(CanvasLayer& layer, int index, const Px& value) {
  uint8_t* p = layer.GetBuffer() + index * 4;
  for (int i = 0; i < 4; ++i) p[i] = value[i];
}
inline void Fill(CanvasLayer& layer, const Px& value) {
  for (int i = 0; i < layer.GetWidth() * layer.GetHeight(); ++i) SetPixel(layer, i, value);
}
// Indices of the pixels that differ from `background`.
inline std::vector<int> Changed(const CanvasLayer& layer, const Px& background) {
  std::vector<int> out;
  for (int i = 0; i < layer.GetWidth() * layer.GetHeight(); ++i) {
    if (PixelAt(layer, i) != background) out.push_back(i);
  }
  return out;
}

// A fresh device for each test; layers made here are destroyed and deleted after.
class LayerTest : public testing::Test {
 protected:
  void SetUp() override { solva::ResetDevice(); }
  void TearDown() override {
    for (CanvasLayer* layer : mLayers) {
      layer->Destroy();
      delete layer;
    }
    solva::ResetDevice();
  }
  ZvCanvasRGBALayer* MakeZv(int w, int h, int x = 0, int y = 0) {
    testing::internal::CaptureStdout();
    CanvasLayer* layer = mFactory.CreateRGBALayer(x, y, w, h);
    testing::internal::GetCapturedStdout();
    mLayers.push_back(layer);
    return dynamic_cast<ZvCanvasRGBALayer*>(layer);
  }
  CanvasLayer* MakePlain(int w, int h) {
    CanvasLayer* layer = new CanvasLayer();
    layer->Initialize(0, 0, w, h);
    layer->Clear();
    mLayers.push_back(layer);
    return layer;
  }
  ZvCanvasFactory mFactory;
  std::vector<CanvasLayer*> mLayers;
};

// The builds of the spans this machine runs, narrowest first.
std::vector<ECanvasSpanPath> SpanPaths();
const char* PathName(ECanvasSpanPath path);

// Makes the layers draw with one build of the spans while it lives.
class UsingPath {
 public:
  explicit UsingPath(ECanvasSpanPath path);
  ~UsingPath();

 private:
  ECanvasSpanPath mBefore;
};

// Draws with `form` on a real layer (a platform layer for the platform's forms). The
// platform's six-argument RGB888 form goes through ZvCanvasRGBALayer's own override,
// or through ZvCanvasLayer's if `baseForm`.
void RunForm(canvasref::Form form, CanvasLayer* layer, const canvasref::Draw& draw, bool baseForm = false);

// The index of the first pixel in which two layers' bytes differ, or -1.
int FirstDifference(const uint8_t* a, const uint8_t* b, int pixels);

// The line of `source` (a path below the source tree) that holds `text`; 0 if none.
int LineOf(const std::string& source, const std::string& text);

}  // namespace canvastest
