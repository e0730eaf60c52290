#ifndef SRC_YGUI_YGUILABEL_H
#define SRC_YGUI_YGUILABEL_H
// A line of text. Its drawing is a separate overload that only a scene calls: the
// grid's pass calls the inherited Render, which draws nothing, so a label stays
// invisible unless its scene draws it.
#include "YGUI/YGUIControl.h"

class YGUILabel : public YGUIControl {
 public:
  explicit YGUILabel(YGUIGrid& grid);
  virtual ~YGUILabel() {}

  void Initialize() override;
  int GetControlType() const override { return 2; }
  using YGUIControl::Render;
  virtual void Render(CanvasLayer& canvas, int orient);

  std::string mContent;
};

#endif
