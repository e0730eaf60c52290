#include "Screen.h"

#include <GLES/gl.h>

namespace walker {

namespace {
// Framebuffer point f = R l + t for a logical point l, in each orientation:
// R's rows (xx, xy) and (yx, yy), then t. The canvas puts image pixel (X, Y)
// at framebuffer pixel (479 - Y, X) held upright, (479 - X, 271 - Y) upside
// down, (Y, 271 - X) upright upside down; in continuous coordinates, where a
// pixel is the unit square from its corner, these are the turns below.
struct Turn {
  int xx, xy, yx, yy, tx, ty;
};
const Turn kTurns[4] = {
    {1, 0, 0, 1, 0, 0},                               // flat
    {0, -1, 1, 0, Screen::kWidth, 0},                 // a quarter clockwise
    {-1, 0, 0, -1, Screen::kWidth, Screen::kHeight},  // upside down
    {0, 1, -1, 0, 0, Screen::kHeight},                // a quarter anticlockwise
};
}  // namespace

void Screen::Follow(int orientation) { mOrientation = orientation >= 0 && orientation <= 3 ? orientation : 1; }

void Screen::ToLogical(int x, int y, int* logicalX, int* logicalY) const {
  const Turn& r = kTurns[mOrientation];
  // The pixel's centre, doubled to stay in integers, taken back through the
  // turn (a rotation's inverse is its transpose); then its corner again.
  const int fx = 2 * (x - r.tx) + 1, fy = 2 * (y - r.ty) + 1;
  *logicalX = (r.xx * fx + r.yx * fy - 1) / 2;
  *logicalY = (r.xy * fx + r.yy * fy - 1) / 2;
}

void Screen::Apply() const {
  const Turn& r = kTurns[mOrientation];
  const GLfixed one = 1 << 16;
  // Column-major, as the GL takes it.
  const GLfixed matrix[16] = {
      r.xx * one, r.yx * one, 0,   0,    // where the logical x axis points
      r.xy * one, r.yy * one, 0,   0,    // and the y axis
      0,          0,          one, 0,    // depth stays
      r.tx * one, r.ty * one, 0,   one,  // where the logical origin lands
  };
  glMatrixMode(GL_MODELVIEW);
  glLoadMatrixx(matrix);
}

}  // namespace walker
