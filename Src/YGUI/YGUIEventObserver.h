#ifndef SRC_YGUI_YGUIEVENTOBSERVER_H
#define SRC_YGUI_YGUIEVENTOBSERVER_H
// The single call by which a grid reports to its menu.

enum ENotifyEventType {
  // An animation was started on the grid (data: the std::string of its name,
  // control: null), or the menu passed input on (data: the YGUIMessage, control:
  // the control that handled it or null). The first word of data tells them apart:
  // a message's mType is 0, a string object's first word is not.
  eNotify_Message = 0,
  // Every animation has finished (data: the std::string of the one that ended,
  // empty when none did). Sent on each update as long as that holds.
  eNotify_AnimeFinished = 1,
  eNotify_FocusGained = 2,  // data: the control
  eNotify_FocusLost = 3,    // data: the control
};

class YGUIEventObserver {
 public:
  virtual void NotifyEventYGUI(ENotifyEventType type, void* data, void* control) = 0;

 protected:
  ~YGUIEventObserver() {}
};

#endif
