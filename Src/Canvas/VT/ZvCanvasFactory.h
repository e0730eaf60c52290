#ifndef SRC_CANVAS_VT_ZVCANVASFACTORY_H
#define SRC_CANVAS_VT_ZVCANVASFACTORY_H
// Makes the platform's layers (initialised, without fonts) and its render.
#include "Canvas/CanvasFactory.h"

class ZvCanvasFactory : public CanvasFactory {
 public:
  ZvCanvasFactory();
  virtual ~ZvCanvasFactory();

  virtual CanvasLayer* CreateRGBALayer(int x, int y, int width, int height);
  virtual CanvasLayer* CreateYUVLayer(int x, int y, int width, int height);
  virtual CanvasRender* CreateRender();
  virtual CanvasLayer* CreateOglLayer(int x, int y, int width, int height);
};

#endif
