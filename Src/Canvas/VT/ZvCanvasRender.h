#ifndef SRC_CANVAS_VT_ZVCANVASRENDER_H
#define SRC_CANVAS_VT_ZVCANVASRENDER_H
// Pushes an RGBA layer into its display surface and shows it; other layers are left
// to whoever fills their surfaces.
#include "Canvas/CanvasRender.h"

class ZvCanvasRender : public CanvasRender {
 public:
  ZvCanvasRender();
  virtual ~ZvCanvasRender();

  virtual void PreDraw();
  // At alpha 1.0 the layer is copied as it is, at 0.0 the surface is cleared, and in
  // between every pixel's alpha is scaled and its colour premultiplied by that.
  virtual void DrawLayer(CanvasLayer* layer, float alpha);
  virtual void PostDraw();
};

#endif
