#ifndef SRC_CANVAS_CANVASLAYER_H
#define SRC_CANVAS_CANVASLAYER_H
// A rectangular surface of 32-bit pixels in memory that controls and scenes draw
// into each frame; a CanvasRender then pushes it to the display. This portable
// layer keeps bytes R, G, B, A as they come and blends by division; the platform's
// layers (Canvas/VT) keep B, G, R, A and blend as gColorBlendTable gives.
//
// Coordinates of the draw operations are in the rotated screen's system: `orient`
// is an EOrientationStatus (0 as drawn, 1 a quarter clockwise, 2 upside down,
// 3 a quarter anticlockwise).
#include <string>

typedef unsigned char uint8;
#ifndef FALSE
#define FALSE 0
#endif

class CanvasLayer {
 public:
  CanvasLayer();
  virtual ~CanvasLayer();

  // Stores the geometry and allocates width x 4 x height bytes, left as they are.
  virtual void Initialize(int x, int y, int width, int height);
  virtual void InitFont();
  virtual void Destroy();
  // Every byte of the buffer to 0: transparent black.
  virtual void Clear();
  virtual void SetVisible(int visible);
  // Blends an R, G, B, A image of srcW x srcH pixels at (x, y), at most w x h of it.
  virtual void Draw_Image_RGBA8888(int x, int y, int w, int h, const uint8* src, int srcW, int srcH, float alpha,
                                   int orient);
  // The same, starting at the source pixel (srcX, srcY).
  virtual void Draw_Image_RGBA8888(int x, int y, int srcX, int srcY, int w, int h, const uint8* src, int srcW,
                                   int srcH, float alpha, int orient);
  // Copies an R, G, B image; the pixels become opaque.
  virtual void Draw_Image_RGB888(int x, int y, const uint8* src, int srcW, int srcH, int orient);
  virtual void Draw_Image_RGB888(int x, int y, int srcX, int srcY, int w, int h, const uint8* src, int srcW, int srcH,
                                 int orient);
  // Not implemented by any layer: a call ends the program.
  virtual void Draw_Image_RGB565(int x, int y, const uint8* src, int srcW, int srcH, int orient);
  virtual void DrawString(int x, int y, const std::string& text, int orient);
  // Premultiplies the pixels of the rectangle by their own alpha; r, g, b and alpha
  // are not used.
  virtual void Draw_Image_WithColor(int x, int y, int w, int h, uint8 r, uint8 g, uint8 b, float alpha, int orient);

  // Only stored; a platform layer tells the display at its next SetVisible.
  void setPosition(int x, int y) {
    mPosX = x;
    mPosY = y;
  }
  int GetPosX() const { return mPosX; }
  int GetPosY() const { return mPosY; }
  int GetWidth() const { return mWidth; }
  int GetHeight() const { return mHeight; }
  uint8* GetBuffer() const { return mBuffer; }
  int GetVisible() const { return mVisible; }

 protected:
  uint8* mBuffer;
  int mPosX;
  int mPosY;
  int mWidth;
  int mHeight;
  int mVisible;

 private:
  CanvasLayer(const CanvasLayer&);
  CanvasLayer& operator=(const CanvasLayer&);
};

#endif
