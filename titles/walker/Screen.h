#pragma once
// The screen as the child holds it. The device's framebuffer is 480 x 272 and
// does not turn; the title works in logical coordinates, from the top left of
// the screen as held: 480 x 272 flat, 272 x 480 upright. Logical pixel (x, y)
// lands on the framebuffer pixel where the canvas layers put pixel (x, y) of an
// image drawn in the same orientation, so the title's GL drawing and the
// recorder's panel turn alike; touches come back through the same mapping.
namespace walker {

class Screen {
 public:
  // The framebuffer, which is the logical screen held flat.
  static const int kWidth = 480, kHeight = 272;

  // Follows the device's orientation (an EOrientationStatus: 0 flat, 1 upright,
  // 2 flat upside down, 3 upright upside down; others turn as 1, as the canvas
  // turns them).
  void Follow(int orientation);
  int orientation() const { return mOrientation; }
  bool upright() const { return mOrientation != 0 && mOrientation != 2; }
  int width() const { return upright() ? kHeight : kWidth; }
  int height() const { return upright() ? kWidth : kHeight; }

  // The logical pixel shown on framebuffer pixel (x, y), where a touch lands.
  void ToLogical(int x, int y, int* logicalX, int* logicalY) const;
  // Loads the GL modelview that turns logical coordinates into the framebuffer's
  // (the projection stays the widget's 480 x 272 one); the matrix mode is left
  // at the modelview.
  void Apply() const;

 private:
  int mOrientation = 0;
};

}  // namespace walker
