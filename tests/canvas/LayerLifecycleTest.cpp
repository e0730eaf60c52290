// Making, showing and disposing of layers on the simulated device.
#include <gtest/gtest.h>

#include "CDisplaySvc.h"
#include "Canvas/VT/ZvCanvasRender.h"
#include "CanvasTestSupport.h"
#include "SolvaOpenGLConfig.h"
#include "Tamarin/ZvWidgetInstance.h"
#include "solva/Display.h"

namespace {

using canvastest::Px;
using canvastest::PixelAt;
using Vantrel::Solva::CDisplaySvc;
using Vantrel::Solva::kPixelFormatARGB8888;
using Vantrel::Solva::kPixelFormatYUV420;

class LayerLifecycle : public canvastest::LayerTest {};

TEST_F(LayerLifecycle, PlainLayerStartsEmptyAndVisible) {
  CanvasLayer layer;
  EXPECT_EQ(nullptr, layer.GetBuffer());
  EXPECT_EQ(0, layer.GetWidth());
  EXPECT_EQ(0, layer.GetHeight());
  EXPECT_EQ(0, layer.GetPosX());
  EXPECT_EQ(0, layer.GetPosY());
  EXPECT_EQ(1, layer.GetVisible());
}

TEST_F(LayerLifecycle, PlainLayerInitializeClearAndDestroy) {
  CanvasLayer layer;
  layer.Initialize(3, 4, 6, 2);
  EXPECT_EQ(3, layer.GetPosX());
  EXPECT_EQ(4, layer.GetPosY());
  EXPECT_EQ(6, layer.GetWidth());
  EXPECT_EQ(2, layer.GetHeight());
  ASSERT_NE(nullptr, layer.GetBuffer());
  memset(layer.GetBuffer(), 0xAB, 6 * 2 * 4);
  layer.Clear();
  for (int i = 0; i < 6 * 2 * 4; ++i) ASSERT_EQ(0, layer.GetBuffer()[i]);
  layer.SetVisible(0);
  EXPECT_EQ(0, layer.GetVisible());
  layer.setPosition(9, 8);
  EXPECT_EQ(9, layer.GetPosX());
  EXPECT_EQ(8, layer.GetPosY());
  layer.Destroy();
  EXPECT_EQ(nullptr, layer.GetBuffer());
  EXPECT_EQ(0, layer.GetWidth());
  EXPECT_EQ(0, layer.GetHeight());
}

// So that a full-width draw's rows meet no vector store split across cache lines.
TEST_F(LayerLifecycle, LayerBuffersStartOnA64ByteBoundary) {
  for (int width : {1, 3, 480}) {
    CanvasLayer* plain = MakePlain(width, 2);
    ZvCanvasRGBALayer* platform = MakeZv(width, 2);
    EXPECT_EQ(0u, reinterpret_cast<uintptr_t>(plain->GetBuffer()) % 64) << width;
    EXPECT_EQ(0u, reinterpret_cast<uintptr_t>(platform->GetBuffer()) % 64) << width;
  }
}

TEST_F(LayerLifecycle, PlainLayerDrawStringDoesNothing) {
  CanvasLayer* layer = MakePlain(4, 4);
  layer->DrawString(0, 0, "text", 0);
  EXPECT_TRUE(canvastest::Changed(*layer, Px{0, 0, 0, 0}).empty());
}

TEST_F(LayerLifecycle, RGBALayerRegistersAnARGBSurfaceOfItsSizeAtZOrderOne) {
  testing::internal::CaptureStdout();
  CanvasLayer* layer = mFactory.CreateRGBALayer(0, 0, 480, 272);
  EXPECT_EQ("[ZvCanvasLayer][Initialize] Register RGBA layer layer.\n", testing::internal::GetCapturedStdout());
  mLayers.push_back(layer);
  ZvCanvasLayer* zv = dynamic_cast<ZvCanvasLayer*>(layer);
  ASSERT_NE(nullptr, dynamic_cast<ZvCanvasRGBALayer*>(layer));
  EXPECT_EQ(kZvLayerRGBA, zv->GetLayerType());
  ASSERT_NE(kInvalidDisplayHandle, zv->GetLayerHandle());
  CDisplaySvc display;
  EXPECT_EQ(kPixelFormatARGB8888, display.GetPixelFormat(zv->GetLayerHandle()));
  EXPECT_EQ(480, display.GetWidth(zv->GetLayerHandle()));
  EXPECT_EQ(272, display.GetHeight(zv->GetLayerHandle()));
  EXPECT_EQ(480 * 4, display.GetPitch(zv->GetLayerHandle()));
  EXPECT_EQ(1, solva::RegisteredDisplayHandleCount());
  // Its own buffer, zeroed, apart from the surface's.
  ASSERT_NE(nullptr, layer->GetBuffer());
  EXPECT_NE(display.GetBuffer(zv->GetLayerHandle()), layer->GetBuffer());
  for (int i = 0; i < 480 * 272 * 4; ++i) ASSERT_EQ(0, layer->GetBuffer()[i]) << i;
}

TEST_F(LayerLifecycle, RGBALayerLiesBelowAYUVLayer) {
  // z-order 1 for RGBA, 2 for YUV: the video plane covers the drawing.
  ZvCanvasRGBALayer* rgba = MakeZv(4, 4);
  testing::internal::CaptureStdout();
  CanvasLayer* yuv = mFactory.CreateYUVLayer(0, 0, 2, 2);
  testing::internal::GetCapturedStdout();
  mLayers.push_back(yuv);
  const uint8_t white[4] = {255, 255, 255, 255};
  for (int i = 0; i < 16; ++i) rgba->Draw_Image_RGBA8888(i % 4, i / 4, 1, 1, white, 1, 1, 1.0f, 0);
  ZvCanvasRender render;
  render.DrawLayer(rgba, 1.0f);
  EXPECT_EQ(0xFF000000u, solva::ScreenPixel(0, 0));  // black of the cleared video plane
  EXPECT_EQ(0xFFFFFFFFu, solva::ScreenPixel(3, 3));
}

TEST_F(LayerLifecycle, YUVLayerHasNoBufferAndAClearedYV12Surface) {
  testing::internal::CaptureStdout();
  CanvasLayer* layer = mFactory.CreateYUVLayer(10, 20, 6, 4);
  EXPECT_EQ("[ZvCanvasLayer][Initialize] Register YUV layer.\n", testing::internal::GetCapturedStdout());
  mLayers.push_back(layer);
  ZvCanvasLayer* zv = dynamic_cast<ZvCanvasLayer*>(layer);
  ASSERT_NE(nullptr, dynamic_cast<ZvCanvasYUVLayer*>(layer));
  EXPECT_EQ(kZvLayerYUV, zv->GetLayerType());
  EXPECT_EQ(nullptr, layer->GetBuffer());
  CDisplaySvc display;
  const tDisplayHandle handle = zv->GetLayerHandle();
  EXPECT_EQ(kPixelFormatYUV420, display.GetPixelFormat(handle));
  const int pitch = display.GetPitch(handle);
  const uint8_t* buffer = display.GetBuffer(handle);
  for (int y = 0; y < 4; ++y) {
    for (int x = 0; x < pitch; ++x) ASSERT_EQ(x < 6 ? 0 : 128, buffer[y * pitch + x]) << x << "," << y;
  }
  layer->Clear();  // does nothing, and has nothing to clear
  EXPECT_EQ(nullptr, layer->GetBuffer());
}

TEST_F(LayerLifecycle, OglLayerWithoutOpenGLHasNoHandleAndTouchesNoSurface) {
  ZvWidgetInstance::SetIsUseOgl(0);
  CanvasLayer* layer = mFactory.CreateOglLayer(1, 2, 3, 4);
  mLayers.push_back(layer);
  ZvCanvasLayer* zv = dynamic_cast<ZvCanvasLayer*>(layer);
  ASSERT_NE(nullptr, dynamic_cast<ZvCanvasOglLayer*>(layer));
  EXPECT_EQ(kZvLayerOgl, zv->GetLayerType());
  EXPECT_EQ(kInvalidDisplayHandle, zv->GetLayerHandle());
  EXPECT_EQ(0, layer->GetWidth());  // the geometry is ignored
  EXPECT_EQ(0, solva::DisplayHandleCount());
}

class OglInstance : public ZvWidgetInstance {
 public:
  OglInstance() : ZvWidgetInstance(nullptr) {}
  void OnPreExit() override {}
};

TEST_F(LayerLifecycle, OglLayerTakesTheContextsHandleAndLeavesItAlone) {
  CDisplaySvc display;
  const tDisplayHandle plane = display.CreateHandle(272, 480, kPixelFormatARGB8888, nullptr);
  display.Register(plane, 0, 0, 0, Vantrel::Solva::kDisplayScreenAllScreens);
  SolvaOpenGLConfig config = {};
  config.hndlDisplay = plane;
  OglInstance instance;
  instance.SetSolvaOpenGLConfig(&config);
  ZvWidgetInstance::SetIsUseOgl(1);
  CanvasLayer* layer = mFactory.CreateOglLayer(0, 0, 0, 0);
  ZvWidgetInstance::SetIsUseOgl(0);
  EXPECT_EQ(plane, dynamic_cast<ZvCanvasLayer*>(layer)->GetLayerHandle());
  layer->Clear();
  layer->Destroy();
  delete layer;
  EXPECT_EQ(1, solva::DisplayHandleCount());
  EXPECT_EQ(1, solva::RegisteredDisplayHandleCount());
  EXPECT_EQ(kPixelFormatARGB8888, display.GetPixelFormat(plane));
}

TEST_F(LayerLifecycle, DestroyTakesTheSurfaceOffAndFreesIt) {
  ZvCanvasRGBALayer* layer = MakeZv(8, 8);
  const tDisplayHandle handle = layer->GetLayerHandle();
  EXPECT_EQ(1, solva::DisplayHandleCount());
  layer->Destroy();
  EXPECT_EQ(0, solva::DisplayHandleCount());
  EXPECT_EQ(kInvalidDisplayHandle, layer->GetLayerHandle());
  EXPECT_EQ(nullptr, layer->GetBuffer());
  CDisplaySvc display;
  EXPECT_EQ(Vantrel::Solva::kPixelFormatError, display.GetPixelFormat(handle));
  mLayers.clear();
  delete layer;
}

TEST_F(LayerLifecycle, SetVisibleMovesAndShowsOrHidesThePlane) {
  ZvCanvasRGBALayer* layer = MakeZv(2, 2);
  const uint8_t red[4] = {255, 0, 0, 255};
  layer->Draw_Image_RGBA8888(0, 0, 1, 1, red, 1, 1, 1.0f, 0);
  ZvCanvasRender render;
  render.DrawLayer(layer, 1.0f);
  EXPECT_EQ(0xFFFF0000u, solva::ScreenPixel(0, 0));
  // setPosition alone does not move the plane...
  layer->setPosition(100, 50);
  EXPECT_EQ(0xFFFF0000u, solva::ScreenPixel(0, 0));
  EXPECT_EQ(0xFF000000u, solva::ScreenPixel(100, 50));
  // ...the next SetVisible does.
  layer->SetVisible(1);
  EXPECT_EQ(0xFF000000u, solva::ScreenPixel(0, 0));
  EXPECT_EQ(0xFFFF0000u, solva::ScreenPixel(100, 50));
  layer->SetVisible(0);
  EXPECT_EQ(0, layer->GetVisible());
  EXPECT_EQ(0xFF000000u, solva::ScreenPixel(100, 50));
}

}  // namespace
