#ifndef SRC_MICROPHONESTATETREE_MICROPHONEOPERATESCENE_RAWIMAGEPROGRESSBAR_H
#define SRC_MICROPHONESTATETREE_MICROPHONEOPERATESCENE_RAWIMAGEPROGRESSBAR_H
// How far a recording or a playback has gone: a full-length base, a mask cut to
// the progress and a cursor at its end, drawn straight into a canvas layer. It is
// no control of a grid; the record scene places it and feeds it.
#include "BaseFramework/InputManager.h"

class CanvasLayer;
class YGUIRawImage;

class RawImageProgressBar {
 public:
  struct ProgressComponent {
    ProgressComponent() : mX(0), mY(0), mWidth(0), mHeight(0), mImage(0) {}
    int mX;
    int mY;
    int mWidth;  // the drawn size
    int mHeight;
    YGUIRawImage* mImage;  // owned
  };

  RawImageProgressBar();
  // Does nothing: the owner calls Destroy().
  ~RawImageProgressBar() {}

  // Loads the three images; call before anything else.
  void Initialize();
  void Destroy();
  void SetPosition(int x, int y);
  void GetPosition(int& x, int& y);
  void Update(float dt);
  void SyncComponentPosition();
  // The longer side of the base, so that a bar on end measures right too.
  int GetLength();
  bool IsOnProgressBar(int x, int y);
  bool IsOnCursor(int x, int y);
  void RenderToLayer(CanvasLayer& layer, EOrientationStatus orientation);

  ProgressComponent mBase;
  ProgressComponent mMask;
  ProgressComponent mCursor;
  float mProgress;  // 0 to 1, written by the owner
  int mShowCursor;
};

#endif
