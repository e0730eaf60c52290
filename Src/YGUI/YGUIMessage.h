#ifndef SRC_YGUI_YGUIMESSAGE_H
#define SRC_YGUI_YGUIMESSAGE_H
// The one input record that travels from a menu to the controls of its grid.

struct YGUIMessage {
  // Values of mEvent.
  enum {
    eEvent_None = -1,
    eEvent_Button = 2,
    eEvent_StylusDown = 4,
    eEvent_StylusUp = 5,
    eEvent_StylusMove = 7,
  };
  // Values of mKey: the slots of the input manager's button table.
  enum {
    eKey_None = -1,
    eKey_Up = 0,
    eKey_Down = 1,
    eKey_Right = 2,
    eKey_Left = 3,
    eKey_Confirm = 4,
    eKey_Back = 5,
  };

  YGUIMessage() : mType(0), mEvent(eEvent_None), mKey(eKey_None), mX(0), mY(0) {}

  int mType;    // 0 for all input; a control ignores any other value
  int mEvent;   // one of eEvent_...
  int mKey;     // for a button event the button's slot, else -1
  short mX;     // stylus position in the grid's coordinates
  short mY;
};

#endif
