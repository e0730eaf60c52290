#ifndef SRC_YGUI_YGUIIMAGE_H
#define SRC_YGUI_YGUIIMAGE_H
// A picture in a grid; it takes no input. The scaled copy is rebuilt only when
// the rectangle or the content changed.
#include "YGUI/YGUIControl.h"

class YGUIImage : public YGUIControl {
 public:
  explicit YGUIImage(YGUIGrid& grid);
  virtual ~YGUIImage() {}

  void Initialize() override;
  void Destroy() override;
  void Render(CanvasLayer& canvas, EOrientationStatus orient) override;
  int GetControlType() const override { return 0; }
  int DealMessage(const YGUIMessage&) override { return 0; }

  // From "res/UI/UITexture/". The first Render builds the buffer.
  void SetImage(const std::string& file);
  // `path` is cut into folder and file name behind its last separator.
  bool SetImageByPath(const char* path);
  // R, G, B pixels (array new) that then belong to the image; the control takes
  // their size.
  void SetImage(unsigned char* pixels, int width, int height);
  // The control's size, then the buffer rebuilt at render size.
  void SetSize(int width, int height);
  void SetType(EYGUIIAMGETYPE type) { mImage.mType = type; }
  void SetScaleType(ESCALETYPE type) { mScaleType = type; }
  void SetPartRenderParm(bool enable, bool vertical, const int& ratio);
  void SetImageEmpty();
  bool IsImageEmpty() const { return mRenderBuffer == 0; }

  YGUIRawImage mImage;
  unsigned char* mRenderBuffer;  // owned by mImage
  ESCALETYPE mScaleType;
  bool mPartRender;
  bool mPartVertical;  // cut by height, from the bottom, instead of by width
  int mPartRatio;      // the share drawn
  int mRole;           // for the scene's use
};

#endif
