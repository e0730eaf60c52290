#ifndef SRC_CANVAS_CANVASFACTORY_H
#define SRC_CANVAS_CANVASFACTORY_H
// Makes the layers and the render of the platform. The layer creators hand back a
// layer already initialised at the given geometry (fonts not loaded).
class CanvasLayer;
class CanvasRender;

// The owner's three layer slots.
enum ECanvasLayerType {
  kCanvasLayerRGBA = 0,
  kCanvasLayerOgl = 1,
  kCanvasLayerYUV = 2,
};

class CanvasFactory {
 public:
  virtual CanvasLayer* CreateRGBALayer(int x, int y, int width, int height) = 0;
  virtual CanvasLayer* CreateYUVLayer(int x, int y, int width, int height) = 0;
  virtual CanvasRender* CreateRender() = 0;
  virtual CanvasLayer* CreateOglLayer(int x, int y, int width, int height) = 0;
  // The owner deletes the factory through this type, which without a virtual
  // destructor would be undefined.
  virtual ~CanvasFactory() {}
};

#endif
