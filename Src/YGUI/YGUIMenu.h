#ifndef SRC_YGUI_YGUIMENU_H
#define SRC_YGUI_YGUIMENU_H
// A scene whose content is one or two layout files, one for the device held
// horizontally and one for it held vertically. It picks the grid that suits the
// orientation, plays "in", "loop" and "out" around the scene's life, turns the
// input manager's state into messages for the grid each frame, and hears what the
// grid reports. Concrete screens derive from it.
#include <string>

#include "Base/Math3D.h"
#include "BaseFramework/IScene.h"
#include "BaseFramework/InputManager.h"
#include "YGUI/YGUIEventObserver.h"
#include "YGUI/YGUIGrid.h"

class CanvasLayer;
class GameState;
class YGUIControl;

namespace YGUI {
enum EMENUSTATE {
  eMenu_InAnime = 0,       // the "in" animation is running
  eMenu_InJustFinish = 1,  // it finished in this frame
  eMenu_Running = 2,
  eMenu_OutAnime = 3,      // the "out" animation is running
  eMenu_Leaving = 4,       // asked to leave, with no animation to wait for
};
}

class YGUIMenu : public YGUIEventObserver, public IScene {
 public:
  // Layout files are relative to "res/UI/Page/"; an empty name means none.
  YGUIMenu(GameState* owner, const std::string& horizontalFile, const std::string& verticalFile);
  virtual ~YGUIMenu();

  void EnterScene() override;
  void SuspendScene() override;
  void ResumeScene() override;
  void ExitScene() override;
  void Update(float dt) override;
  virtual void BindControls() {}
  virtual void UpdateOutAnimation(float) {}
  virtual int InBegin();
  virtual int OutBegin();
  virtual bool IsInEnd();
  virtual bool IsOutEnd();
  virtual void UpdateInAnimation(float) {}
  virtual void Out(std::string) {}
  // 1 when the orientation in force changed.
  virtual int SwitchDirection(EOrientationStatus orient);
  virtual void RefreshPageType();
  virtual void DealInput();

  // Loads the grids; throws what the grid's loader throws.
  void Initialize();
  void Destroy();
  bool IsInJustFinish() const { return mMenuState == YGUI::eMenu_InJustFinish; }
  void PrepareIn();
  void PrepareOut(std::string next);
  void SetState(YGUI::EMENUSTATE state);
  void PlayAnime(const std::string& name);
  void PlayDelayAnime(const std::string& name);
  void StopCurAnime();
  void EnableFuntion(EFunctionType type);
  void DisableFuntion(EFunctionType type);
  void EnableFuncDelegate(EFunctionType type) { EnableFuntion(type); }
  void DisableFuncDelegate(EFunctionType type) { DisableFuntion(type); }
  void AcceptButtonInput(int accept);
  void AcceptStylusInput(int accept);
  YGUIControl* GetControl(std::string name);
  int SetVisibleByControlName(const std::string& name, int visible);
  void RenderYGUI(CanvasLayer& canvas);
  // A point of the screen in the current grid's space, as input is mapped.
  Math3D::vec2 ConvertPoint(int x, int y) const;

  YGUIGrid* GetCurrentGrid() const { return mCurrentGrid; }
  GameState* GetOwner() const { return mOwner; }

  int mPageType;  // bit 0: a horizontal grid exists; bit 1: a vertical one
  YGUIGrid* mVerticalGrid;    // owned
  YGUIGrid* mHorizontalGrid;  // owned
  YGUIGrid* mCurrentGrid;     // one of the two
  std::string mVerticalFile;
  std::string mHorizontalFile;
  YGUI::EMENUSTATE mMenuState;
  std::string mNextName;  // what Out receives
  int mIsHorizontal;
  int mAnimeType;  // bit 0: "in" when entering; bit 1: "out" when leaving
  EOrientationStatus mOrientation;

 protected:
  GameState* mOwner;

 private:
  void LoadGrid(const std::string& file, YGUIGrid*& grid);
  void Resume();
};

#endif
