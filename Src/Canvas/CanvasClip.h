#ifndef SRC_CANVAS_CANVASCLIP_H
#define SRC_CANVAS_CANVASCLIP_H
// Clipping and destination walking shared by the image drawing of every layer.
// Clipping happens once per call, before the pixel loops.

struct CanvasClip {
  int startX;
  int startY;
  int runX;
  int runY;
  int skipX;
  int skipY;
};

// Clips an image of srcW x srcH at (x, y) against a layer of width x height seen in
// orientation `orient`. False when the image lies wholly outside; equality with the
// far edge is not outside (the run is then 0).
inline bool ClipCanvasImage(int x, int y, int srcW, int srcH, int orient, int width, int height, CanvasClip* clip) {
  const bool swapped = orient != 0 && orient != 2;
  const int limitX = swapped ? height : width;
  const int limitY = swapped ? width : height;
  if (x + srcW < 0 || x > limitX || y + srcH < 0 || y > limitY) return false;
  if (x < 0) {
    clip->startX = 0;
    clip->runX = limitX < x + srcW ? limitX : x + srcW;
    clip->skipX = -x;
  } else {
    clip->startX = x;
    clip->runX = x + srcW > limitX ? limitX - x : srcW;
    clip->skipX = 0;
  }
  if (y < 0) {
    clip->startY = 0;
    clip->runY = limitY < y + srcH ? limitY : y + srcH;
    clip->skipY = -y;
  } else {
    clip->startY = y;
    clip->runY = y + srcH > limitY ? limitY - y : srcH;
    clip->skipY = 0;
  }
  return true;
}

// The pixel index in the buffer of the rotated screen's pixel (X, Y).
inline int CanvasDestIndex(int orient, int X, int Y, int width, int height) {
  switch (orient) {
    case 0:
      return Y * width + X;
    case 2:
      return (height - 1 - Y) * width + (width - 1 - X);
    case 3:
      return (height - 1 - X) * width + Y;
    default:  // 1, and anything outside 0 to 3
      return X * width + (width - 1 - Y);
  }
}

// How far the index moves for one step of X.
inline int CanvasDestStep(int orient, int width) {
  switch (orient) {
    case 0:
      return 1;
    case 2:
      return -1;
    case 3:
      return -width;
    default:
      return width;
  }
}

inline int CanvasMin(int a, int b) { return a < b ? a : b; }

// alpha x 255 truncated, the factor b of the blending forms. An alpha outside 0 to 1
// is held to it: the arithmetic (and the blend table) has no room beyond.
inline unsigned CanvasAlphaByte(float alpha) {
  if (!(alpha > 0.0f)) return 0;
  if (alpha > 1.0f) return 255;
  return static_cast<unsigned>(alpha * 255.0f);
}

#endif
