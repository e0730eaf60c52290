#include "YGUI/YGUIMenu.h"

#include <assert.h>
#include <stddef.h>

#include "YGUI/YGUIAnimation.h"
#include "YGUI/YGUIControl.h"

// One more macro layer, so that NULL expands before the expression is printed.
#define MENU_ASSERT(expr) assert(expr)

namespace {

const char kPageFolder[] = "res/UI/Page/";
// After a stall the grid's animations move by at most one frame at 30 per second.
const float kMaxGridStep = 0.0333f;

}  // namespace

YGUIMenu::YGUIMenu(GameState* owner, const std::string& horizontalFile, const std::string& verticalFile)
    : mPageType(0),
      mVerticalGrid(0),
      mHorizontalGrid(0),
      mCurrentGrid(0),
      mVerticalFile(verticalFile),
      mHorizontalFile(horizontalFile),
      // Both are given their real values by EnterScene; these only keep them defined.
      mMenuState(YGUI::eMenu_Running),
      mIsHorizontal(1),
      mAnimeType(3),
      mOrientation(eOS_Horizontal),
      mOwner(owner) {}

YGUIMenu::~YGUIMenu() {}

void YGUIMenu::LoadGrid(const std::string& file, YGUIGrid*& grid) {
  grid = new YGUIGrid(this);
  grid->SetSize(480, 272);
  grid->LoadFromXml(kPageFolder + file);
  grid->mButtonUsable = 1;
  grid->mStylusUsable = 1;
}

void YGUIMenu::Initialize() {
  if (!mHorizontalFile.empty()) {
    MENU_ASSERT(NULL == mHorizontalGrid);
    LoadGrid(mHorizontalFile, mHorizontalGrid);
    mPageType |= 1;
  }
  if (!mVerticalFile.empty()) {
    MENU_ASSERT(NULL == mVerticalGrid);
    LoadGrid(mVerticalFile, mVerticalGrid);
    assert(mVerticalGrid);
    mPageType |= 2;
  }
}

void YGUIMenu::Destroy() { YGUIMenu::ExitScene(); }

void YGUIMenu::EnterScene() {
  Initialize();
  const EOrientationStatus o = InputManager::sInstance().mOrientation;
  if (mPageType == 3) SwitchDirection(o);
  if (mPageType == 1) {
    mOrientation = o == eOS_HorizontalUpsideDown ? eOS_HorizontalUpsideDown : eOS_Horizontal;
    mIsHorizontal = 1;
    mCurrentGrid = mHorizontalGrid;
    BindControls();
  }
  if (mPageType == 2) {
    mOrientation = o == eOS_VerticalUpsideDown ? eOS_VerticalUpsideDown : eOS_Vertical;
    mIsHorizontal = 0;
    mCurrentGrid = mVerticalGrid;
    BindControls();
  }
  PrepareIn();
}

int YGUIMenu::SwitchDirection(EOrientationStatus o) {
  mIsHorizontal = (o == eOS_Horizontal || o == eOS_HorizontalUpsideDown) ? 1 : 0;
  mCurrentGrid = mHorizontalGrid;
  int result = 0;
  if (mPageType == 3) {
    if (o == eOS_Vertical || o == eOS_VerticalUpsideDown) mCurrentGrid = mVerticalGrid;
    if (mOrientation != o) {
      mOrientation = o;
      result = 1;
    }
  }
  // The derived screen fetches its controls anew from the grid now in force.
  BindControls();
  return result;
}

void YGUIMenu::RefreshPageType() {
  if (mPageType == 3) {
    // The device's turning takes effect only while the scene runs.
    const EOrientationStatus o = InputManager::sInstance().mOrientation;
    if (o != mOrientation && mMenuState == YGUI::eMenu_Running) SwitchDirection(o);
  } else if (mPageType == 1) {
    mOrientation = eOS_Horizontal;
    mIsHorizontal = 1;
    mCurrentGrid = mHorizontalGrid;
  } else if (mPageType == 2) {
    mOrientation = eOS_Vertical;
    mIsHorizontal = 0;
    mCurrentGrid = mVerticalGrid;
  }
}

int YGUIMenu::InBegin() {
  if (mCurrentGrid && mCurrentGrid->IsAnimationExist("in")) {
    mCurrentGrid->PlayAnime("in");
    return 1;
  }
  return 0;
}

int YGUIMenu::OutBegin() {
  if (mCurrentGrid && mCurrentGrid->IsAnimationExist("out")) {
    mCurrentGrid->PlayAnime("out");
    return 1;
  }
  return 0;
}

bool YGUIMenu::IsInEnd() { return !mCurrentGrid || mCurrentGrid->IsAnimeFinished(); }

bool YGUIMenu::IsOutEnd() { return !mCurrentGrid || mCurrentGrid->IsAnimeFinished(); }

void YGUIMenu::Resume() {
  if (mCurrentGrid) {
    mCurrentGrid->mButtonUsable = 1;
    mCurrentGrid->mStylusUsable = 1;
    if (mCurrentGrid->IsAnimationExist("loop")) mCurrentGrid->PlayAnime("loop");
  }
  mMenuState = YGUI::eMenu_Running;
}

void YGUIMenu::PrepareIn() {
  if (mAnimeType != 0 && mAnimeType != 2) {
    if (InBegin()) {
      // No input while the scene comes in.
      mCurrentGrid->mButtonUsable = 0;
      mCurrentGrid->mStylusUsable = 0;
      mMenuState = YGUI::eMenu_InAnime;
      return;
    }
  }
  Resume();
}

void YGUIMenu::PrepareOut(std::string next) {
  if (mAnimeType >= 2 && OutBegin()) {
    mMenuState = YGUI::eMenu_OutAnime;
    mNextName = next;
    return;
  }
  mMenuState = YGUI::eMenu_Leaving;
  mNextName = next;
  Out(mNextName);
}

void YGUIMenu::SetState(YGUI::EMENUSTATE state) {
  if (state == mMenuState) return;
  mMenuState = state;
  if (state == YGUI::eMenu_InAnime) {
    PrepareIn();
  } else if (state == YGUI::eMenu_Running) {
    Resume();
  } else {
    assert(0);
  }
}

void YGUIMenu::Update(float dt) {
  const float gridDt = dt > kMaxGridStep ? kMaxGridStep : dt;
  DealInput();
  if (mCurrentGrid) mCurrentGrid->Update(gridDt);
  switch (mMenuState) {
    case YGUI::eMenu_InAnime:
      UpdateInAnimation(dt);
      if (IsInEnd()) {
        if (mCurrentGrid) {
          mCurrentGrid->mButtonUsable = 1;
          mCurrentGrid->mStylusUsable = 1;
          mCurrentGrid->PlayAnime("loop");
        }
        mMenuState = YGUI::eMenu_InJustFinish;
      }
      break;
    case YGUI::eMenu_InJustFinish:
      mMenuState = YGUI::eMenu_Running;
      break;
    case YGUI::eMenu_OutAnime:
      UpdateOutAnimation(dt);
      if (IsOutEnd()) Out(mNextName);
      break;
    default:
      break;
  }
}

Math3D::vec2 YGUIMenu::ConvertPoint(int x, int y) const {
  if (mOrientation == eOS_HorizontalUpsideDown || mOrientation == eOS_VerticalUpsideDown) {
    x = 480 - x;
    y = 272 - y;
  }
  Math3D::vec2 point;
  if (mIsHorizontal) {
    point.x = (float)x;
    point.y = (float)y;
  } else {
    point.x = (float)y;
    point.y = (float)(480 - x);
  }
  return point;
}

void YGUIMenu::DealInput() {
  if (!mCurrentGrid) return;
  InputManager& input = InputManager::sInstance();
  const Math3D::vec2 point = ConvertPoint(input.mTouchNow.x, input.mTouchNow.y);
  YGUIMessage message;
  message.mType = 0;
  message.mEvent = YGUIMessage::eEvent_None;
  message.mKey = YGUIMessage::eKey_None;
  message.mX = (short)point.x;
  message.mY = (short)point.y;

  if (mCurrentGrid->mStylusUsable) {
    int event = YGUIMessage::eEvent_None;
    if (input.mTouchPhase == InputManager::eTP_JustDown) event = YGUIMessage::eEvent_StylusDown;
    if (input.mTouchPhase == InputManager::eTP_JustUp) event = YGUIMessage::eEvent_StylusUp;
    if (input.mTouchPhase == InputManager::eTP_Held) event = YGUIMessage::eEvent_StylusMove;
    if (event != YGUIMessage::eEvent_None) {
      message.mEvent = event;
      // The grid always answers 1, so buttons wait for the next frame.
      if (mCurrentGrid->DealMessage(message)) {
        NotifyEventYGUI(eNotify_Message, &message, mCurrentGrid->mHandledControl);
        return;
      }
    }
  }
  if (!mCurrentGrid->mButtonUsable || !input.mAnyPressed) return;
  // Only the first just-pressed button in this order counts in a frame.
  static const int kOrder[] = {4, 5, 0, 1, 3, 2, 6, 7, 13, 12};
  for (size_t i = 0; i < sizeof(kOrder) / sizeof(kOrder[0]); ++i) {
    if (input.mButtonState[kOrder[i]] == InputManager::eBS_JustPressed) {
      message.mEvent = YGUIMessage::eEvent_Button;
      message.mKey = kOrder[i];
      mCurrentGrid->DealMessage(message);
      NotifyEventYGUI(eNotify_Message, &message, mCurrentGrid->mHandledControl);
      return;
    }
  }
}

void YGUIMenu::SuspendScene() { mNextName.clear(); }

void YGUIMenu::ResumeScene() {
  // A button held when the scene was covered mustn't stay pressed; the grid's
  // focus stays where it was.
  if (mCurrentGrid && mCurrentGrid->mFocusControl) mCurrentGrid->mFocusControl->MarkFocus(0);
}

void YGUIMenu::ExitScene() {
  if (mVerticalGrid) {
    mVerticalGrid->Destroy();
    delete mVerticalGrid;
    mVerticalGrid = 0;
  }
  if (mHorizontalGrid) {
    mHorizontalGrid->Destroy();
    delete mHorizontalGrid;
    mHorizontalGrid = 0;
  }
}

void YGUIMenu::PlayAnime(const std::string& name) {
  if (mCurrentGrid) mCurrentGrid->PlayAnime(name);
}

void YGUIMenu::PlayDelayAnime(const std::string& name) {
  if (mCurrentGrid) mCurrentGrid->PlayDelayAnime(name);
}

void YGUIMenu::StopCurAnime() {
  if (mCurrentGrid) mCurrentGrid->StopCurAnimation();
}

void YGUIMenu::EnableFuntion(EFunctionType type) {
  if (mCurrentGrid) mCurrentGrid->EnableFuntion(type);
}

void YGUIMenu::DisableFuntion(EFunctionType type) {
  if (mCurrentGrid) mCurrentGrid->DisableFuntion(type);
}

void YGUIMenu::AcceptButtonInput(int accept) {
  if (mCurrentGrid) mCurrentGrid->mButtonUsable = accept;
}

void YGUIMenu::AcceptStylusInput(int accept) {
  if (mCurrentGrid) mCurrentGrid->mStylusUsable = accept;
}

YGUIControl* YGUIMenu::GetControl(std::string name) {
  if (!mCurrentGrid) return 0;
  return mCurrentGrid->GetControlByName(name);
}

int YGUIMenu::SetVisibleByControlName(const std::string& name, int visible) {
  YGUIControl* control = GetControl(name);
  if (!control) return 0;
  control->mVisible = visible;
  return 1;
}

void YGUIMenu::RenderYGUI(CanvasLayer& canvas) {
  RefreshPageType();
  if (mCurrentGrid) mCurrentGrid->Render(canvas, mOrientation);
}
