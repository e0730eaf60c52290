#ifndef SRC_YGUI_YGUIIMAGEBUTTON_H
#define SRC_YGUI_YGUIIMAGEBUTTON_H
// A button drawn from one of three pictures: normal, focus (or pressed) and
// disabled. It rebuilds its scaled copy every frame, since which applies can
// change.
#include "YGUI/YGUIControl.h"

class YGUIImageButton : public YGUIControl {
 public:
  enum { eImage_Normal = 0, eImage_Focus = 1, eImage_Disabled = 2 };

  explicit YGUIImageButton(YGUIGrid& grid);
  virtual ~YGUIImageButton() {}

  void Initialize() override;
  void Destroy() override;
  void Update(float dt) override;
  void Render(CanvasLayer& canvas, EOrientationStatus orient) override;
  int DealMessage(const YGUIMessage& message) override { return YGUIControl::DealMessage(message); }
  int GetControlType() const override { return 1; }
  void Disable() override;
  void Enable() override;

  void SetNormalImage(const std::string& file, const std::string& folder);
  void SetFocusImage(const std::string& file, const std::string& folder);
  void SetDisableImage(const std::string& file, const std::string& folder);
  void SetScaleType(ESCALETYPE type) { mScaleType = type; }

  YGUIRawImage mImages[3];
  unsigned char* mRenderBuffer;
  int mStateChanged;
  ESCALETYPE mScaleType;

 private:
  int mLastFocus;  // mFocus as the previous Update saw it
};

#endif
