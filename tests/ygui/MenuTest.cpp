// Menus: grids per orientation, "in", "loop" and "out", and the way input gets
// from the device to the controls.
#include <gtest/gtest.h>

#include "YGUI/YGUIAnimation.h"
#include "YGUI/YGUIAnimeSet.h"
#include "YGUI/YGUIImageButton.h"
#include "MenuDevice.h"

namespace {

using ygtest::DeviceInput;
using ygtest::Frame;
using ygtest::RecordingMenu;
using ygtest::Report;

// Layout files of a test in a temporary title folder.
class MenuFiles {
 public:
  MenuFiles() { zvtest::RunCommand("mkdir -p '" + dir.file("res/UI/Page") + "'"); }
  void Write(const std::string& name, const std::string& xml) { zvtest::WriteText(dir.file("res/UI/Page/" + name), xml); }
  zvtest::TempDir dir;
};

const char kTwoButtons[] =
    "<Grid Width='480' Height='272'>"
    "<ImageButton Id='1' Name='a' x='10' y='10' Width='40' Height='40' NavRight='2'/>"
    "<ImageButton Id='2' Name='b' x='100' y='10' Width='40' Height='40' NavLeft='1'/>"
    "</Grid>";

// The same with an "in" of 0.5 seconds and a "loop" on the first button.
const char kAnimated[] =
    "<Grid Width='480' Height='272'>"
    "<ImageButton Id='1' Name='a' x='10' y='10' Width='40' Height='40' NavRight='2' AnimSetNum='3'>"
    "<AnimationSet KeyFrameNum='2' Name='in'><KeyFrame Time='0' Opacity='0.5'/><KeyFrame Time='0.5'/></AnimationSet>"
    "<AnimationSet KeyFrameNum='2' Name='loop'><KeyFrame Time='0'/><KeyFrame Time='10' x='100'/></AnimationSet>"
    "<AnimationSet KeyFrameNum='1' Name='out'><KeyFrame Time='0.2'/></AnimationSet>"
    "</ImageButton>"
    "<ImageButton Id='2' Name='b' x='100' y='10' Width='40' Height='40' NavLeft='1'/>"
    "</Grid>";

class MenuTest : public testing::Test {
 protected:
  void Enter(RecordingMenu& menu) {
    ygtest::ScopedWorkDir work(files.dir.path());
    menu.EnterScene();
  }
  void TearDown() override {}

  ygtest::ScopedTextureManager textures;
  MenuFiles files;
};

TEST_F(MenuTest, OnlyHorizontalFileOnAVerticalDeviceUsesTheHorizontalGridWithOrientationZeroFromTheFirstRender) {
  files.Write("h.xml", kTwoButtons);
  DeviceInput device(1);
  RecordingMenu menu("h.xml", "");
  Enter(menu);
  EXPECT_EQ(1, menu.mPageType);
  EXPECT_EQ(menu.mHorizontalGrid, menu.mCurrentGrid);
  EXPECT_EQ(1, menu.mIsHorizontal);
  EXPECT_EQ(1, menu.binds);
  menu.RefreshPageType();  // what RenderYGUI does first
  EXPECT_EQ(eOS_Horizontal, menu.mOrientation);
  // Upside down: EnterScene keeps the value, the first render undoes it.
  menu.ExitScene();
  device.Turn(2);
  Enter(menu);
  EXPECT_EQ(eOS_HorizontalUpsideDown, menu.mOrientation);
  menu.RefreshPageType();
  EXPECT_EQ(eOS_Horizontal, menu.mOrientation);
  menu.ExitScene();
}

TEST_F(MenuTest, OnlyVerticalFileTakesTheVerticalGrid) {
  files.Write("v.xml", kTwoButtons);
  DeviceInput device(3);
  RecordingMenu menu("", "v.xml");
  Enter(menu);
  EXPECT_EQ(2, menu.mPageType);
  EXPECT_EQ(menu.mVerticalGrid, menu.mCurrentGrid);
  EXPECT_EQ(eOS_VerticalUpsideDown, menu.mOrientation);
  EXPECT_EQ(0, menu.mIsHorizontal);
  menu.RefreshPageType();
  EXPECT_EQ(eOS_Vertical, menu.mOrientation);
  menu.ExitScene();
}

TEST_F(MenuTest, AnimeTypeOneCallsOutAtOnceAndTwoSkipsIn) {
  files.Write("h.xml", kAnimated);
  DeviceInput device;
  RecordingMenu menu("h.xml", "");
  menu.mAnimeType = 1;
  Enter(menu);
  EXPECT_EQ(YGUI::eMenu_InAnime, menu.mMenuState);
  menu.mMenuState = YGUI::eMenu_Running;
  menu.PrepareOut("next");
  EXPECT_EQ(YGUI::eMenu_Leaving, menu.mMenuState);
  EXPECT_EQ((std::vector<std::string>{"next"}), menu.outs);
  menu.ExitScene();

  RecordingMenu skip("h.xml", "");
  skip.mAnimeType = 2;
  Enter(skip);
  EXPECT_EQ(YGUI::eMenu_Running, skip.mMenuState);
  EXPECT_EQ(1, skip.mCurrentGrid->mButtonUsable);
  EXPECT_EQ(1, skip.mCurrentGrid->mStylusUsable);
  // "loop" plays at once.
  EXPECT_FALSE(skip.mCurrentGrid->IsAnimeFinished());
  skip.PrepareOut("after");
  EXPECT_EQ(YGUI::eMenu_OutAnime, skip.mMenuState);
  EXPECT_TRUE(skip.outs.empty());  // "loop" still runs: "out" can't start, but the state waits for it
  skip.ExitScene();
}

TEST_F(MenuTest, OutAnimationRunsThenOutIsCalledWithTheNextName) {
  files.Write("h.xml", kAnimated);
  DeviceInput device;
  RecordingMenu menu("h.xml", "");
  menu.mAnimeType = 2;
  Enter(menu);
  menu.StopCurAnime();  // "loop" stopped
  menu.PrepareOut("next");
  EXPECT_EQ(YGUI::eMenu_OutAnime, menu.mMenuState);
  EXPECT_EQ("next", menu.mNextName);
  Frame(menu, 0.1f);
  EXPECT_TRUE(menu.outs.empty());
  // 0.2 seconds at the capped step of 0.0333: the seventh frame ends it.
  int frames = 1;
  while (menu.outs.empty() && frames < 20) {
    Frame(menu, 0.1f);
    ++frames;
  }
  EXPECT_EQ(7, frames);
  ASSERT_FALSE(menu.outs.empty());
  EXPECT_EQ("next", menu.outs[0]);
  EXPECT_EQ(YGUI::eMenu_OutAnime, menu.mMenuState);  // stays unless Out moves on
  menu.ExitScene();
}

TEST_F(MenuTest, LayoutWithoutInGoesStraightToStateTwoWithInputOnAndWithoutLoopPlaysNothing) {
  files.Write("h.xml", kTwoButtons);
  DeviceInput device;
  RecordingMenu menu("h.xml", "");
  Enter(menu);
  EXPECT_EQ(YGUI::eMenu_Running, menu.mMenuState);
  EXPECT_EQ(1, menu.mCurrentGrid->mButtonUsable);
  EXPECT_EQ(1, menu.mCurrentGrid->mStylusUsable);
  EXPECT_EQ("", menu.mCurrentGrid->mCurrentAnime);
  EXPECT_TRUE(menu.reports.empty());  // no "loop" notices
  menu.ExitScene();
}

TEST_F(MenuTest, InAnimationBlocksButtonsAndStylusAndTheSceneGetsNoEventUntilItEnds) {
  files.Write("h.xml", kAnimated);
  DeviceInput device;
  RecordingMenu menu("h.xml", "");
  Enter(menu);
  ASSERT_EQ(YGUI::eMenu_InAnime, menu.mMenuState);
  EXPECT_EQ(0, menu.mCurrentGrid->mButtonUsable);
  EXPECT_EQ(0, menu.mCurrentGrid->mStylusUsable);
  YGUIControl* a = menu.GetControl("a");
  ASSERT_NE(nullptr, a);

  solva::QueueTouch(true, 20, 20);
  Frame(menu, 0.1f);
  solva::QueueTouch(false, 20, 20);
  solva::QueueButtons(kButtonA);
  Frame(menu, 0.1f);
  solva::QueueButtons(0);
  Frame(menu, 0.1f);
  EXPECT_TRUE(menu.Inputs().empty());
  EXPECT_EQ(0, a->mFocus);
  EXPECT_EQ(nullptr, menu.mCurrentGrid->mFocusControl);

  // The set ends at 0.5 s: the frame in which the grid sees it finished sets
  // state 1, the next one 2.
  int frames = 0;
  while (menu.mMenuState == YGUI::eMenu_InAnime && frames < 20) {
    Frame(menu, 0.1f);
    ++frames;
  }
  EXPECT_EQ(YGUI::eMenu_InJustFinish, menu.mMenuState);
  EXPECT_TRUE(menu.IsInJustFinish());
  EXPECT_EQ(1, menu.mCurrentGrid->mButtonUsable);
  EXPECT_EQ("loop", menu.mCurrentGrid->mCurrentAnime);
  Frame(menu, 0.1f);
  EXPECT_EQ(YGUI::eMenu_Running, menu.mMenuState);

  solva::QueueTouch(true, 20, 20);
  Frame(menu, 0.1f);
  const std::vector<Report> inputs = menu.Inputs();
  ASSERT_EQ(1u, inputs.size());
  EXPECT_EQ(YGUIMessage::eEvent_StylusDown, inputs[0].message.mEvent);
  EXPECT_EQ(a, inputs[0].control);
  EXPECT_EQ(1, a->mFocus);
  // UpdateInAnimation saw the raw dt.
  ASSERT_FALSE(menu.inDts.empty());
  EXPECT_EQ(0.1f, menu.inDts[0]);
  menu.ExitScene();
}

TEST_F(MenuTest, TwoButtonsInOneFrameOnlyTheFirstInTheFixedOrderCountsAndTheOtherIsLost) {
  files.Write("h.xml", kTwoButtons);
  DeviceInput device;
  RecordingMenu menu("h.xml", "");
  Enter(menu);
  menu.mCurrentGrid->FocusOnControlById(1);
  // Right (slot 2) and B (slot 5): the order is 4, 5, 0, 1, 3, 2, ...
  solva::QueueButtons(kButtonRight | kButtonB);
  Frame(menu);
  Frame(menu);  // still held: no new edge
  std::vector<Report> inputs = menu.Inputs();
  ASSERT_EQ(1u, inputs.size());
  EXPECT_EQ(YGUIMessage::eEvent_Button, inputs[0].message.mEvent);
  EXPECT_EQ(YGUIMessage::eKey_Back, inputs[0].message.mKey);
  EXPECT_EQ(nullptr, inputs[0].control);  // "back" isn't a control's
  EXPECT_EQ(menu.GetControl("a"), menu.mCurrentGrid->mFocusControl);  // right was lost
  solva::QueueButtons(0);
  Frame(menu);
  // Down before left, left before right.
  solva::QueueButtons(kButtonRight | kButtonLeft | kButtonDown);
  Frame(menu);
  inputs = menu.Inputs();
  ASSERT_EQ(2u, inputs.size());
  EXPECT_EQ(YGUIMessage::eKey_Down, inputs[1].message.mKey);
  solva::QueueButtons(kButtonRight | kButtonLeft);
  Frame(menu);  // neither is newly pressed
  EXPECT_EQ(2u, menu.Inputs().size());
  solva::QueueButtons(0);
  Frame(menu);
  solva::QueueButtons(kButtonHint | kButtonMenu);  // 13 before 12
  Frame(menu);
  inputs = menu.Inputs();
  ASSERT_EQ(3u, inputs.size());
  EXPECT_EQ(13, inputs[2].message.mKey);
  menu.ExitScene();
}

TEST_F(MenuTest, DirectionButtonMovesFocusAndTheSceneHearsItWithTheHandlingControl) {
  files.Write("h.xml", kTwoButtons);
  DeviceInput device;
  RecordingMenu menu("h.xml", "");
  Enter(menu);
  YGUIControl* a = menu.GetControl("a");
  YGUIControl* b = menu.GetControl("b");
  menu.mCurrentGrid->FocusOnControlById(1);
  menu.reports.clear();
  solva::QueueButtons(kButtonRight);
  Frame(menu);
  EXPECT_EQ(b, menu.mCurrentGrid->mFocusControl);
  std::vector<ENotifyEventType> types;
  // The focus changes and the input; the queued focus animations (empty names
  // here) start later in the same frame and are left out.
  for (const Report& r : menu.reports)
    if (r.type == eNotify_FocusLost || r.type == eNotify_FocusGained || r.isMessage) types.push_back(r.type);
  // Lost a, gained b, then the input report.
  ASSERT_EQ(3u, types.size());
  EXPECT_EQ(eNotify_FocusLost, types[0]);
  EXPECT_EQ(eNotify_FocusGained, types[1]);
  EXPECT_EQ(eNotify_Message, types[2]);
  EXPECT_EQ(a, menu.Inputs().back().control);
  menu.ExitScene();
}

TEST_F(MenuTest, StylusActivityEndsTheFrameSoButtonsWaitForTheNext) {
  files.Write("h.xml", kTwoButtons);
  DeviceInput device;
  RecordingMenu menu("h.xml", "");
  Enter(menu);
  solva::QueueTouch(true, 300, 200);  // on no control
  solva::QueueButtons(kButtonA);
  Frame(menu);
  std::vector<Report> inputs = menu.Inputs();
  ASSERT_EQ(1u, inputs.size());
  EXPECT_EQ(YGUIMessage::eEvent_StylusDown, inputs[0].message.mEvent);
  EXPECT_EQ(nullptr, inputs[0].control);
  Frame(menu);  // held: a drag, and the button's edge is gone
  inputs = menu.Inputs();
  ASSERT_EQ(2u, inputs.size());
  EXPECT_EQ(YGUIMessage::eEvent_StylusMove, inputs[1].message.mEvent);
  solva::QueueTouch(false, 300, 200);
  Frame(menu);
  inputs = menu.Inputs();
  ASSERT_EQ(3u, inputs.size());
  EXPECT_EQ(YGUIMessage::eEvent_StylusUp, inputs[2].message.mEvent);
  menu.AcceptStylusInput(0);
  solva::QueueTouch(true, 20, 20);
  Frame(menu);
  EXPECT_EQ(3u, menu.Inputs().size());
  menu.ExitScene();
}

TEST_F(MenuTest, InTheVerticalLayoutAStylusAtXYReachesTheControlsAsYAnd480MinusX) {
  files.Write("v.xml", kTwoButtons);
  DeviceInput device(1);
  RecordingMenu menu("", "v.xml");
  Enter(menu);
  solva::QueueTouch(true, 450, 17);
  Frame(menu);
  const std::vector<Report> inputs = menu.Inputs();
  ASSERT_EQ(1u, inputs.size());
  EXPECT_EQ(17, inputs[0].message.mX);
  EXPECT_EQ(30, inputs[0].message.mY);
  EXPECT_EQ(menu.GetControl("a"), inputs[0].control);
  const Math3D::vec2 p = menu.ConvertPoint(450, 17);
  EXPECT_EQ(17.0f, p.x);
  EXPECT_EQ(30.0f, p.y);
  menu.ExitScene();
}

// The test screen in both layouts; a touch on the device lands on "back" in each
// of the four orientations.
TEST_F(MenuTest, TouchInEachOfTheFourOrientationsReachesTheRightControl) {
  struct Case {
    int orientation;
    int x, y;  // device coordinates
    const char* grid;
  };
  // Horizontal "back" is at (200, 100) 40 x 40, vertical "back" at (160, 300).
  const Case cases[] = {{0, 220, 120, "h"}, {1, 160, 180, "v"}, {2, 260, 152, "h"}, {3, 320, 92, "v"}};
  for (const Case& c : cases) {
    SCOPED_TRACE(c.orientation);
    DeviceInput device(c.orientation);
    RecordingMenu menu("TestMenuH.xml", "TestMenuV.xml");
    {
      ygtest::ScopedWorkDir work(ygtest::LayoutRoot());
      menu.EnterScene();
    }
    EXPECT_EQ(3, menu.mPageType);
    EXPECT_EQ(std::string(c.grid) == "h" ? menu.mHorizontalGrid : menu.mVerticalGrid, menu.mCurrentGrid);
    EXPECT_EQ(c.orientation, menu.mOrientation);
    for (int i = 0; i < 40 && menu.mMenuState != YGUI::eMenu_Running; ++i) Frame(menu);
    ASSERT_EQ(YGUI::eMenu_Running, menu.mMenuState);
    YGUIControl* back = menu.GetControl("back");
    ASSERT_NE(nullptr, back);
    solva::QueueTouch(true, c.x, c.y);
    Frame(menu);
    EXPECT_EQ(back, menu.mCurrentGrid->mFocusControl);
    ASSERT_FALSE(menu.Inputs().empty());
    EXPECT_EQ(back, menu.Inputs().back().control);
    solva::QueueTouch(false, c.x, c.y);
    Frame(menu);
    EXPECT_EQ(back, menu.Inputs().back().control);
    EXPECT_EQ(0, back->mFocus);
    menu.ExitScene();
  }
}

TEST_F(MenuTest, DtOfOneSecondMovesTheGridsAnimationsByOnly0333) {
  files.Write("h.xml", kAnimated);
  DeviceInput device;
  RecordingMenu menu("h.xml", "");
  Enter(menu);
  YGUIControl* a = menu.GetControl("a");
  YGUIAnimeSet* in = a->mAnimation->GetCurrentAnimeSet();
  ASSERT_EQ("in", in->mName);
  Frame(menu, 1.0f);
  EXPECT_EQ(136, in->mCurrentTime);  // 0.0333 in 20.12
  EXPECT_EQ(YGUI::eMenu_InAnime, menu.mMenuState);
  EXPECT_EQ(1.0f, menu.inDts.back());
  uint32_t bits;
  const float cap = 0.0333f;
  memcpy(&bits, &cap, 4);
  EXPECT_EQ(0x3D086595u, bits);
  menu.ExitScene();
}

TEST_F(MenuTest, TurnDuringStateZeroOrThreeHasNoEffectUntilStateTwo) {
  files.Write("h.xml", kAnimated);
  files.Write("v.xml", kTwoButtons);
  DeviceInput device(0);
  RecordingMenu menu("h.xml", "v.xml");
  Enter(menu);
  ASSERT_EQ(YGUI::eMenu_InAnime, menu.mMenuState);
  const int bindsBefore = menu.binds;
  device.Turn(1);
  menu.RefreshPageType();
  EXPECT_EQ(eOS_Horizontal, menu.mOrientation);
  EXPECT_EQ(menu.mHorizontalGrid, menu.mCurrentGrid);
  for (int i = 0; i < 20 && menu.mMenuState != YGUI::eMenu_Running; ++i) Frame(menu, 0.1f);
  ASSERT_EQ(YGUI::eMenu_Running, menu.mMenuState);
  menu.RefreshPageType();
  EXPECT_EQ(eOS_Vertical, menu.mOrientation);
  EXPECT_EQ(menu.mVerticalGrid, menu.mCurrentGrid);
  EXPECT_EQ(0, menu.mIsHorizontal);
  EXPECT_EQ(bindsBefore + 1, menu.binds);
  // State 3: no effect either.
  menu.mAnimeType = 3;
  menu.mMenuState = YGUI::eMenu_OutAnime;
  device.Turn(0);
  menu.RefreshPageType();
  EXPECT_EQ(eOS_Vertical, menu.mOrientation);
  menu.SetState(YGUI::eMenu_Running);
  menu.RefreshPageType();
  EXPECT_EQ(eOS_Horizontal, menu.mOrientation);
  EXPECT_EQ(menu.mHorizontalGrid, menu.mCurrentGrid);
  menu.ExitScene();
}

TEST_F(MenuTest, SwitchDirectionReportsAChangeOnlyWithBothGrids) {
  files.Write("h.xml", kTwoButtons);
  files.Write("v.xml", kTwoButtons);
  DeviceInput device(0);
  RecordingMenu menu("h.xml", "v.xml");
  Enter(menu);
  EXPECT_EQ(0, menu.SwitchDirection(eOS_Horizontal));
  EXPECT_EQ(1, menu.SwitchDirection(eOS_VerticalUpsideDown));
  EXPECT_EQ(menu.mVerticalGrid, menu.mCurrentGrid);
  EXPECT_EQ(eOS_VerticalUpsideDown, menu.mOrientation);
  EXPECT_EQ(1, menu.SwitchDirection(eOS_HorizontalUpsideDown));
  EXPECT_EQ(menu.mHorizontalGrid, menu.mCurrentGrid);
  EXPECT_EQ(1, menu.mIsHorizontal);
  menu.ExitScene();
}

TEST_F(MenuTest, SetStateForcesInOrRunningAndAnythingElseIsTheAssertion) {
  files.Write("h.xml", kAnimated);
  DeviceInput device;
  RecordingMenu menu("h.xml", "");
  Enter(menu);
  menu.SetState(YGUI::eMenu_Running);
  EXPECT_EQ(YGUI::eMenu_Running, menu.mMenuState);
  EXPECT_EQ(1, menu.mCurrentGrid->mStylusUsable);
  menu.StopCurAnime();
  menu.SetState(YGUI::eMenu_InAnime);
  EXPECT_EQ(YGUI::eMenu_InAnime, menu.mMenuState);
  EXPECT_EQ(0, menu.mCurrentGrid->mStylusUsable);
  EXPECT_DEATH(menu.SetState(YGUI::eMenu_OutAnime),
               "Src/YGUI/YGUIMenu.cpp:[0-9]+: .*SetState.*Assertion `0' failed");
  menu.ExitScene();
}

TEST_F(MenuTest, SecondLoadIntoAnExistingGridIsTheAssertion) {
  files.Write("h.xml", kTwoButtons);
  files.Write("v.xml", kTwoButtons);
  DeviceInput device;
  RecordingMenu menu("h.xml", "v.xml");
  Enter(menu);
  const std::string folder = files.dir.path();
  EXPECT_DEATH(
      {
        ygtest::ScopedWorkDir work(folder);
        menu.Initialize();
      },
      zvtest::Literal("Assertion `__null == mHorizontalGrid' failed"));
  menu.mHorizontalFile.clear();
  EXPECT_DEATH(
      {
        ygtest::ScopedWorkDir work(folder);
        menu.Initialize();
      },
      zvtest::Literal("Assertion `__null == mVerticalGrid' failed"));
  menu.ExitScene();
}

TEST_F(MenuTest, MissingLayoutRaisesTheGridsExceptionThroughEnterScene) {
  DeviceInput device;
  RecordingMenu menu("missing.xml", "");
  ygtest::ScopedWorkDir work(files.dir.path());
  try {
    menu.EnterScene();
    FAIL() << "no exception";
  } catch (const std::runtime_error& error) {
    EXPECT_EQ(std::string("cannot open file res/UI/Page/missing.xml"), error.what());
  }
  menu.mHorizontalGrid->Destroy();
  delete menu.mHorizontalGrid;
  menu.mHorizontalGrid = nullptr;
}

TEST_F(MenuTest, ResumeClearsTheMarkButKeepsTheFocusAndSuspendForgetsTheNextName) {
  files.Write("h.xml", kTwoButtons);
  DeviceInput device;
  RecordingMenu menu("h.xml", "");
  Enter(menu);
  YGUIControl* a = menu.GetControl("a");
  menu.mCurrentGrid->RequestFocus(a);
  menu.mNextName = "x";
  menu.SuspendScene();
  EXPECT_EQ("", menu.mNextName);
  menu.ResumeScene();
  EXPECT_EQ(0, a->mFocus);
  EXPECT_EQ(a, menu.mCurrentGrid->mFocusControl);
  menu.ExitScene();
  EXPECT_EQ(nullptr, menu.mHorizontalGrid);
  EXPECT_EQ(1, menu.mPageType);  // only ever added to
  // Entered again, it loads its grids anew.
  Enter(menu);
  EXPECT_NE(nullptr, menu.mHorizontalGrid);
  menu.Destroy();
  EXPECT_EQ(nullptr, menu.mHorizontalGrid);
}

TEST_F(MenuTest, ForwardersActOnTheCurrentGridAndDoNothingWithout) {
  RecordingMenu none("", "");
  EXPECT_EQ(nullptr, none.GetControl("a"));
  EXPECT_EQ(0, none.SetVisibleByControlName("a", 0));
  none.AcceptButtonInput(0);
  none.PlayAnime("in");
  EXPECT_TRUE(none.IsInEnd());
  EXPECT_TRUE(none.IsOutEnd());
  EXPECT_EQ(0, none.InBegin());

  files.Write("h.xml", kAnimated);
  DeviceInput device;
  RecordingMenu menu("h.xml", "");
  Enter(menu);
  EXPECT_EQ(1, menu.SetVisibleByControlName("b", 0));
  EXPECT_EQ(0, menu.GetControl("b")->mVisible);
  EXPECT_EQ(0, menu.SetVisibleByControlName("zz", 0));
  menu.AcceptButtonInput(0);
  EXPECT_EQ(0, menu.mCurrentGrid->mButtonUsable);
  menu.EnableFuncDelegate(eFunction_LoseFocusOnMiss);
  EXPECT_EQ(1, menu.mCurrentGrid->mLoseFocusOnMiss);
  menu.DisableFuntion(eFunction_LoseFocusOnMiss);
  EXPECT_EQ(0, menu.mCurrentGrid->mLoseFocusOnMiss);
  menu.DisableFuncDelegate(eFunction_FocusAnime);
  EXPECT_EQ(0, menu.mCurrentGrid->mFocusAnimeEnabled);
  menu.PlayDelayAnime("out");
  EXPECT_EQ(1u, menu.mCurrentGrid->mDelayAnime.size());
  menu.ExitScene();
}

}  // namespace
