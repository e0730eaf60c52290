#include "Canvas/VT/ZvCanvasFactory.h"

#include "Canvas/VT/ZvCanvasRGBALayer.h"
#include "Canvas/VT/ZvCanvasRender.h"
#include "Canvas/VT/ZvCanvasTypes.h"

ZvCanvasFactory::ZvCanvasFactory() {}
ZvCanvasFactory::~ZvCanvasFactory() {}

CanvasLayer* ZvCanvasFactory::CreateRGBALayer(int x, int y, int width, int height) {
  CanvasLayer* layer = new ZvCanvasRGBALayer(kZvLayerRGBA);
  layer->Initialize(x, y, width, height);
  return layer;
}

CanvasLayer* ZvCanvasFactory::CreateYUVLayer(int x, int y, int width, int height) {
  CanvasLayer* layer = new ZvCanvasYUVLayer(kZvLayerYUV);
  layer->Initialize(x, y, width, height);
  return layer;
}

CanvasRender* ZvCanvasFactory::CreateRender() { return new ZvCanvasRender(); }

CanvasLayer* ZvCanvasFactory::CreateOglLayer(int x, int y, int width, int height) {
  CanvasLayer* layer = new ZvCanvasOglLayer(kZvLayerOgl);
  layer->Initialize(x, y, width, height);
  return layer;
}
