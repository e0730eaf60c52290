// The OpenGL layer with the device's real 3D context: it stands for the 3D plane in
// the layer table, and what GL draws shows beneath the RGBA canvas layer.
#include <GLES/gl.h>
#include <gtest/gtest.h>

#include "CDisplaySvc.h"
#include "Canvas/CanvasRender.h"
#include "Canvas/VT/ZvCanvasFactory.h"
#include "Canvas/VT/ZvCanvasTypes.h"
#include "Tamarin/ZvWidgetInstance.h"
#include "solva/Display.h"
#include "support/GLTestSupport.h"

namespace {

class OglTitle : public ZvWidgetInstance {
 public:
  OglTitle() : ZvWidgetInstance(nullptr) {}
  void OnPreExit() override {}
};

class OglLayer : public testing::Test {
 protected:
  void SetUp() override {
    ASSERT_TRUE(gl.ok()) << gl.error();
    title.SetSolvaOpenGLConfig(gl.config());
    ZvWidgetInstance::SetIsUseOgl(1);
  }
  void TearDown() override { ZvWidgetInstance::SetIsUseOgl(0); }

  zvtest::GLContext gl;
  OglTitle title;
  ZvCanvasFactory factory;
};

TEST_F(OglLayer, TakesTheHandleOfTheContextsPlane) {
  CanvasLayer* layer = factory.CreateOglLayer(5, 6, 7, 8);
  ZvCanvasOglLayer* ogl = dynamic_cast<ZvCanvasOglLayer*>(layer);
  ASSERT_NE(nullptr, ogl);
  EXPECT_EQ(gl.config()->hndlDisplay, ogl->GetLayerHandle());
  EXPECT_EQ(kZvLayerOgl, ogl->GetLayerType());
  EXPECT_EQ(nullptr, layer->GetBuffer());
  EXPECT_EQ(1, solva::DisplayHandleCount()) << "no surface of its own";
  layer->Destroy();
  delete layer;
}

TEST_F(OglLayer, DestroyLeavesThePlaneToTheContext) {
  CanvasLayer* layer = factory.CreateOglLayer(0, 0, 480, 272);
  layer->Destroy();
  EXPECT_EQ(kInvalidDisplayHandle, dynamic_cast<ZvCanvasLayer*>(layer)->GetLayerHandle());
  delete layer;
  EXPECT_EQ(1, solva::DisplayHandleCount());
  EXPECT_EQ(1, solva::RegisteredDisplayHandleCount());
  // The plane still shows what GL draws.
  glClearColorx(0, 1 << 16, 0, 1 << 16);
  glClear(GL_COLOR_BUFFER_BIT);
  gl.Swap();
  EXPECT_EQ(0xFF00FF00u, solva::ScreenPixel(240, 136));
}

TEST_F(OglLayer, TheRGBALayerLiesOverTheGLPicture) {
  CanvasLayer* ogl = factory.CreateOglLayer(0, 0, 480, 272);
  CanvasLayer* rgba = factory.CreateRGBALayer(0, 0, 480, 272);
  CanvasRender* render = factory.CreateRender();
  // GL: blue everywhere. Canvas: an opaque red square at (10, 10), the rest clear.
  glClearColorx(0, 0, 1 << 16, 1 << 16);
  glClear(GL_COLOR_BUFFER_BIT);
  std::vector<uint8_t> red(4 * 4 * 4);
  for (size_t i = 0; i < red.size(); i += 4) red[i] = red[i + 3] = 255;
  rgba->Clear();
  rgba->Draw_Image_RGBA8888(10, 10, 4, 4, red.data(), 4, 4, 1.0f, 0);
  render->PreDraw();
  render->DrawLayer(ogl, 1.0f);  // the OpenGL layer is not pushed: GL shows it at its swap
  render->DrawLayer(rgba, 1.0f);
  render->PostDraw();
  gl.Swap();
  EXPECT_EQ(0xFFFF0000u, solva::ScreenPixel(10, 10));
  EXPECT_EQ(0xFFFF0000u, solva::ScreenPixel(13, 13));
  EXPECT_EQ(0xFF0000FFu, solva::ScreenPixel(14, 13));
  EXPECT_EQ(0xFF0000FFu, solva::ScreenPixel(300, 200));
  delete render;
  rgba->Destroy();
  delete rgba;
  ogl->Destroy();
  delete ogl;
}

}  // namespace
