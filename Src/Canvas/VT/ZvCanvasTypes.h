#ifndef SRC_CANVAS_VT_ZVCANVASTYPES_H
#define SRC_CANVAS_VT_ZVCANVASTYPES_H
// The platform's layers: each binds a canvas layer to a surface ("handle") of the
// display service. Their buffers hold bytes B, G, R, A, which the display reads as
// kPixelFormatARGB8888, and they blend as gColorBlendTable gives.
#include "CDisplaySvc.h"
#include "Canvas/CanvasLayer.h"

// Feeds the pixel-format arithmetic of Initialize (RGBA + 2 and YUV + 3 are the
// display's formats), so it differs on purpose from ECanvasLayerType.
enum EZvCanvasLayerType {
  kZvLayerRGBA = 1,
  kZvLayerYUV = 2,
  kZvLayerOgl = 3,
};

using Vantrel::Solva::kInvalidDisplayHandle;
using Vantrel::Solva::tDisplayHandle;

class ZvCanvasLayer : public CanvasLayer {
 public:
  explicit ZvCanvasLayer(EZvCanvasLayerType type);
  virtual ~ZvCanvasLayer();

  virtual void Initialize(int x, int y, int width, int height);
  virtual void InitFont();
  virtual void Destroy();
  virtual void SetVisible(int visible);
  virtual void Draw_Image_RGBA8888(int x, int y, int w, int h, const uint8* src, int srcW, int srcH, float alpha,
                                   int orient);
  // Starts at (srcX, srcY) and, unlike every other form, does not skip the source
  // that lies left of or above the layer.
  virtual void Draw_Image_RGBA8888(int x, int y, int srcX, int srcY, int w, int h, const uint8* src, int srcW,
                                   int srcH, float alpha, int orient);
  virtual void Draw_Image_RGB888(int x, int y, const uint8* src, int srcW, int srcH, int orient);
  virtual void Draw_Image_RGB888(int x, int y, int srcX, int srcY, int w, int h, const uint8* src, int srcW, int srcH,
                                 int orient);

  EZvCanvasLayerType GetLayerType() const { return mLayerType; }
  tDisplayHandle GetLayerHandle() const { return mDisplayHandle; }

 protected:
  EZvCanvasLayerType mLayerType;
  tDisplayHandle mDisplayHandle;
  Vantrel::Solva::CDisplaySvc* mDisplaySvc;
  uint8* mExtraBlock;
};

// A surface for video pictures that others write straight into the handle's
// buffer; it has no buffer of its own, so drawing into it is a caller's fault.
class ZvCanvasYUVLayer : public ZvCanvasLayer {
 public:
  explicit ZvCanvasYUVLayer(EZvCanvasLayerType type);
  virtual ~ZvCanvasYUVLayer();
  virtual void Clear();
};

// Stands for the 3D plane in the owner's layer table; its handle belongs to the
// OpenGL context.
class ZvCanvasOglLayer : public ZvCanvasLayer {
 public:
  explicit ZvCanvasOglLayer(EZvCanvasLayerType type);
  virtual ~ZvCanvasOglLayer();
  virtual void Initialize(int x, int y, int width, int height);
  virtual void Destroy();
  virtual void Clear();
};

// Black luma in the left `width` bytes of each pitch-wide row, neutral chroma (128)
// in the rest.
void ClearYV12Buffer(uint8* buffer, int pitch, int width, int height);

#endif
