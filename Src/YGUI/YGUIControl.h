#ifndef SRC_YGUI_YGUICONTROL_H
#define SRC_YGUI_YGUICONTROL_H
// A frame that lives in a grid: it takes input, keeps focus and works out its
// rectangle on the screen from its place, the grid's transform and its pose.
#include "YGUI/YGUIAnimeFrame.h"
#include "YGUI/YGUIFrame.h"

class YGUIGrid;

class YGUIControl : public YGUIFrame {
 public:
  enum { kScreenWidth = 480, kScreenHeight = 272 };

  explicit YGUIControl(YGUIGrid& grid);

  void Update(float dt) override;
  int DealMessage(const YGUIMessage& message) override;
  // -1 here; 0 image, 1 image button, 2 label.
  virtual int GetControlType() const { return -1; }
  virtual void Disable();
  virtual void Enable();

  // Only while the control can take focus.
  void MarkFocus(int focus);
  // Visible, not fully transparent, and the point in the render rectangle with
  // its edges.
  bool ContainPoint(int x, int y) const;
  void SetPosition(int x, int y);
  void SetSize(int width, int height);
  void SetOffset(int x, int y);
  void ResetOffset();
  // Works the screen rectangle out anew; 1 when it moved or changed size.
  int SetRenderRect();

  int GetRenderLeft() const { return mRenderLeft; }
  int GetRenderTop() const { return mRenderTop; }

  int mId;
  NavigateIdDesc mNavigate;
  int mFocus;     // shows focus or a press at this moment
  int mEnabled;   // can take focus and stylus presses
  int mDisabled;  // was turned off by Disable
  YGUIGrid& mGrid;
  int mRenderWidth;
  int mRenderHeight;
  int mRenderTop;
  int mRenderLeft;
  int mRenderOpacity;
  int mRenderChanged;
  YGUIAnimeFrame mAnimeFrame;  // the current offset, scale and opacity
};

#endif
