// A title that shows the toolkit's test screen (tests/ygui/layouts) on the
// device: taps and buttons move the focus, "back" (button 5) plays "out" and ends
// the game. On exit it answers the launcher with the names of the controls that
// took input, in order, and the focus at the end.
#include <boost/shared_ptr.hpp>
#include <string>

#include "Base/StringID.h"
#include "Base/singleton.h"
#include "BaseFramework/GameManager.h"
#include "BaseFramework/GameState.h"
#include "BaseFramework/InputManager.h"
#include "CAppInterface.h"
#include "Canvas/CanvasLayer.h"
#include "Canvas/CanvasRender.h"
#include "Canvas/VT/ZvCanvasFactory.h"
#include "Tamarin/SolvaServices.h"
#include "Tamarin/ZvWidgetInstance.h"
#include "YGUI/YGUIControl.h"
#include "YGUI/YGUIMenu.h"

namespace yguititle {

class TitleManager;

class TestScreen : public YGUIMenu {
 public:
  TestScreen(GameState* owner, TitleManager& manager)
      : YGUIMenu(owner, "TestMenuH.xml", "TestMenuV.xml"), mManager(manager) {}
  void NotifyEventYGUI(ENotifyEventType type, void* data, void* control) override;
  void Out(std::string) override;
  void Render() override;

  std::string handled;  // names of the controls that took input, comma separated
  TitleManager& mManager;
};

class TitleState : public GameState {
 public:
  explicit TitleState(TitleManager& manager) : mManager(manager) {}
  void EnterState() override {
    mScreen = new TestScreen(this, mManager);
    PushScene(mScreen, eRA_UpdateAndRender);
  }
  void ExitState() override {
    GameState::ExitState();
    delete mScreen;
    mScreen = nullptr;
  }
  TestScreen* screen() const { return mScreen; }

 private:
  TitleManager& mManager;
  TestScreen* mScreen = nullptr;
};

class TitleManager : public GameManager, public Singleton<TitleManager, Tag_Singleton_Manual> {
 public:
  void Initialize() override {
    GameManager::Initialize();
    mLayer = mFactory.CreateRGBALayer(0, 0, 480, 272);
    mRender = mFactory.CreateRender();
    mState = new TitleState(*this);
    LaunchState(mState);
  }
  void Destroy() override {
    GameManager::ExitState();
    StringID::Destroy();
    mLayer->Destroy();
    delete mLayer;
    mLayer = nullptr;
    delete mRender;
    mRender = nullptr;
    GameManager::Destroy();
    delete mState;
    mState = nullptr;
  }
  void Update(float dt) override {
    InputManager::sInstance().Update(dt);
    GameManager::Update(dt);
  }
  CanvasLayer& layer() { return *mLayer; }
  CanvasRender& render() { return *mRender; }
  TitleState* state() const { return mState; }

 private:
  ZvCanvasFactory mFactory;
  CanvasLayer* mLayer = nullptr;
  CanvasRender* mRender = nullptr;
  TitleState* mState = nullptr;
};

void TestScreen::NotifyEventYGUI(ENotifyEventType type, void* data, void* control) {
  if (type != eNotify_Message || *static_cast<int*>(data) != 0) return;
  const YGUIMessage& message = *static_cast<YGUIMessage*>(data);
  if (control) {
    handled += (handled.empty() ? "" : ",") + static_cast<YGUIControl*>(control)->mName;
  }
  if (message.mEvent == YGUIMessage::eEvent_Button && message.mKey == YGUIMessage::eKey_Back &&
      mMenuState == YGUI::eMenu_Running) {
    PrepareOut("exit");
  }
}

void TestScreen::Out(std::string) { mManager.SetGameFinished(1); }

void TestScreen::Render() {
  CanvasLayer& layer = mManager.layer();
  layer.Clear();
  RenderYGUI(layer);
  CanvasRender& render = mManager.render();
  render.PreDraw();
  render.DrawLayer(&layer, 1.0f);
  render.PostDraw();
}

class TitleInstance : public ZvWidgetInstance {
 public:
  explicit TitleInstance(void* params) : ZvWidgetInstance(params) {}
  void Enter() override {
    TitleManager::sCreate();
    SetGameManager(&TitleManager::sInstance());
    ZvWidgetInstance::Enter();
  }
  void OnPreExit() override {
    TitleManager& manager = TitleManager::sInstance();
    TestScreen* screen = manager.state() ? manager.state()->screen() : nullptr;
    Catalog::CJSonFile* params = GetParams();
    if (params && screen) {
      Catalog::Value& root = params->GetRoot();
      root["handled"] = screen->handled;
      YGUIGrid* grid = screen->GetCurrentGrid();
      const bool hasFocus = grid && grid->mFocusControl;
      root["focus"] = hasFocus ? grid->mFocusControl->mName : std::string();
      root["finished"] = manager.IsGameFinished();
    }
    manager.Destroy();
    delete TitleManager::instance_;
    TitleManager::instance_ = nullptr;
  }
};

}  // namespace yguititle

extern "C" __attribute__((visibility("default"))) boost::shared_ptr<CAppInterface> CreateApp(void* params) {
  return boost::shared_ptr<CAppInterface>(new yguititle::TitleInstance(params));
}
