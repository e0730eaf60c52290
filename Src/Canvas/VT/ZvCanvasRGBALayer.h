#ifndef SRC_CANVAS_VT_ZVCANVASRGBALAYER_H
#define SRC_CANVAS_VT_ZVCANVASRGBALAYER_H
// The layer all 2D drawing goes into: a heap buffer of the layer's size beside an
// ARGB8888 display surface of the same size, which ZvCanvasRender fills from it.
#include <glibmm/ustring.h>

#include "CFontSvc.h"
#include "Canvas/VT/ZvCanvasTypes.h"

class ZvCanvasRGBALayer : public ZvCanvasLayer {
 public:
  explicit ZvCanvasRGBALayer(EZvCanvasLayerType type);
  virtual ~ZvCanvasRGBALayer();

  virtual void Initialize(int x, int y, int width, int height);
  // Loads the layer's TrueType font; nothing calls it in this title, whose text goes
  // through the bitmap fonts.
  virtual void InitFont();
  virtual void Destroy();
  using ZvCanvasLayer::Draw_Image_RGB888;
  virtual void Draw_Image_RGB888(int x, int y, const uint8* src, int srcW, int srcH, int orient);
  // Only with a font loaded; orient is not used.
  virtual void DrawString(int x, int y, const std::string& text, int orient);

  Vantrel::Solva::tFontHndl GetFontHandle() const { return mFontHandle; }
  const Vantrel::Solva::tFontSurf& GetFontSurf() const { return mFontSurf; }

 protected:
  Vantrel::Solva::tFontHndl mFontHandle;
  Vantrel::Solva::tFontSurf mFontSurf;
  Vantrel::Solva::CFontSvc* mFontSvc;
  Glib::ustring mString;
};

#endif
