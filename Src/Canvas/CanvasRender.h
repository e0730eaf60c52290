#ifndef SRC_CANVAS_CANVASRENDER_H
#define SRC_CANVAS_CANVASRENDER_H
// Pushes a finished layer to the display. A scene's frame: layer Clear, the
// controls drawn into the layer, then PreDraw, DrawLayer(layer, 1.0f), PostDraw.
class CanvasLayer;

class CanvasRender {
 public:
  CanvasRender();
  virtual ~CanvasRender();

  virtual void PreDraw();
  virtual void DrawLayer(CanvasLayer* layer, float alpha);
  virtual void PostDraw();

 private:
  CanvasRender(const CanvasRender&);
  CanvasRender& operator=(const CanvasRender&);
};

#endif
