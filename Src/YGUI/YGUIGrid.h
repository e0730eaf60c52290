#ifndef SRC_YGUI_YGUIGRID_H
#define SRC_YGUI_YGUIGRID_H
// One screen's worth of controls loaded from an XML layout: kept in file order,
// which is both the drawing order and the order in which input is offered. The
// grid keeps the focus, runs the queue of animations and reports to its observer.
#include <list>
#include <string>
#include <vector>

#include "Base/Math3D.h"
#include "BaseFramework/InputManager.h"  // EOrientationStatus
#include "YGUI/YGUIEventObserver.h"
#include "YGUI/YGUIMessage.h"
#include "YGUI/YGUITypes.h"

namespace rapidxml {
template <class Ch>
class xml_node;
}

struct waf_file;
class CanvasLayer;
class YGUIAnimation;
class YGUIControl;
class YGUIFrame;
class YGUIImage;
class YGUIImageButton;
class YGUILabel;

enum EFunctionType {
  eFunction_LoseFocusOnMiss = 0,  // a message that no control handles takes the focus away
  eFunction_FocusAnime = 1,       // changes of focus queue the focus animations
};

class YGUIGrid {
 public:
  typedef rapidxml::xml_node<char> XmlNode;

  explicit YGUIGrid(YGUIEventObserver* observer);
  // Frees the lists only; the frames go in Destroy().
  virtual ~YGUIGrid() {}
  virtual void Initialize() {}
  virtual void Destroy();
  virtual void Update(float dt);
  // Every visible frame in list order: later ones lie on top.
  virtual void Render(CanvasLayer& canvas, EOrientationStatus orient);
  // Offers the message to the frames in order until one takes it; always 1.
  virtual int DealMessage(const YGUIMessage& message);
  virtual bool IsAnimeFinished() const;

  // Throws std::runtime_error "cannot open file <path>" and rapidxml's
  // parse_error.
  void LoadFromXml(const std::string& path);
  // The same from a file inside a WAF archive, read from where it stands;
  // std::runtime_error for a null file or one that reads short.
  void LoadFromXml(waf_file* file);
  void UnLoad() {}

  void Set(int x, int y, const int& scaleX, const int& scaleY, const int& originalX, const int& originalY);
  void SetScale(const int& x, const int& y);
  void SetPosition(int x, int y);
  void SetSize(int width, int height) {
    mWidth = width;
    mHeight = height;
  }
  void SetOriginal(const int& x, const int& y) {
    mOriginalX = x;
    mOriginalY = y;
  }
  int* GetScaleX() { return &mScaleX; }
  int* GetScaleY() { return &mScaleY; }
  // The point after the grid's scale around its pivot.
  Math3D::vec2 GetAfterScalePoint(const Math3D::vec2& point) const;
  int IsStylusUsable() const { return mStylusUsable; }
  int IsButtonUsable() const { return mButtonUsable; }
  void EnableFuntion(EFunctionType type);
  void DisableFuntion(EFunctionType type);

  void AddFrame(YGUIFrame* frame) { mFrames.push_back(frame); }
  // Below 1 the first; past the end null.
  YGUIFrame* GetControl(int index) const;
  int GetControlNum() const { return (int)mFrames.size(); }
  YGUIControl* GetControlByName(const std::string& name) const;
  void SetAnimeAble(int able);
  bool IsAnimationExist(std::string name) const;
  void PlayAnime(const std::string& name);
  void PlayDelayAnime(const std::string& name) { mDelayAnime.push_back(name); }
  void StopCurAnimation();
  void RequestFocus(YGUIControl* control);
  void FocusOnControlById(int id);
  // Keeps the first control that handled a message in this frame.
  void NotifyMsgIsHandled(YGUIControl& control);
  void PreUpdate(float) { mHandledControl = 0; }
  int DefaultDealMessage(const YGUIMessage& message);
  // The animation half of Update: notifies and clears mCurrentAnime when all has
  // finished, and says whether it has.
  bool UpdateAnimation();

  // Parses a layout's text in place (one zero byte is added) and builds the grid.
  void LoadLayout(std::vector<char>& text);
  // Built from a layout element; null without children or without AnimSetNum.
  static YGUIAnimation* CreateAnimationFromXml(XmlNode* node);
  YGUIImageButton* CreateImageButtonFromXml(XmlNode* node);
  YGUIImage* CreateImageFromXml(XmlNode* node);
  YGUILabel* CreateLabelFromXml(XmlNode* node);
  YGUIControl* CreateTextButtonFromXml(XmlNode* node);
  void ReadControlsCommonAtribute(YGUIControl* control, XmlNode* node);

  int mWidth;
  int mHeight;
  int mX;
  int mY;
  int mScaleX;
  int mScaleY;
  int mOriginalX;  // pivot of the scale as a share of the size
  int mOriginalY;
  YGUIAnimation* mAnimation;  // the grid's own; owned
  int mButtonUsable;
  int mStylusUsable;
  YGUIEventObserver* mObserver;  // not owned
  std::vector<YGUIFrame*> mFrames;  // owned
  YGUIControl* mFocusControl;
  int mDefaultFocusId;
  std::list<std::string> mDelayAnime;
  std::string mCurrentAnime;
  YGUIControl* mHandledControl;
  int mLoseFocusOnMiss;
  int mFocusAnimeEnabled;
  int mForceRedraw;
  std::vector<Rect2D<int> > mDirtyRects;

 private:
  void Notify(ENotifyEventType type, void* data, void* control);
  void StartAnime(const std::string& name);

  YGUIGrid(const YGUIGrid&);
  YGUIGrid& operator=(const YGUIGrid&);
};

#endif
