#ifndef SRC_YGUI_YGUIANIMEFRAME_H
#define SRC_YGUI_YGUIANIMEFRAME_H
// One pose of an animation: offset in pixels, and scale, opacity, angle and time
// in 20.12 fixed point (for mTime, 4096 is one second).

struct YGUIAnimeFrame {
  YGUIAnimeFrame()
      : mX(0), mY(0), mWidth(0), mHeight(0), mAngle(0), mTime(0), mScaleX(4096), mScaleY(4096), mOpacity(4096) {}
  YGUIAnimeFrame& operator=(const YGUIAnimeFrame& other) {
    mX = other.mX;
    mY = other.mY;
    mWidth = other.mWidth;
    mHeight = other.mHeight;
    mAngle = other.mAngle;
    mTime = other.mTime;
    mScaleX = other.mScaleX;
    mScaleY = other.mScaleY;
    mOpacity = other.mOpacity;
    return *this;
  }
  YGUIAnimeFrame(const YGUIAnimeFrame& other) { *this = other; }

  int mX;
  int mY;
  int mWidth;   // copied from the layout element; not interpolated
  int mHeight;
  int mAngle;   // interpolated, but not applied when drawing
  int mTime;    // when this key applies, from the start of its set
  int mScaleX;
  int mScaleY;
  int mOpacity;
};

#endif
