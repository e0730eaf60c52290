#include "BaseFramework/GameState.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "support/ShellTitle.h"
#include "support/TestSupport.h"

namespace {

using shelltitle::CallLog;
using shelltitle::LoggingScene;
using Log = std::vector<std::string>;

class GameStateTest : public testing::Test {
 protected:
  void SetUp() override { CallLog().clear(); }
  // Runs one frame's update and returns what it logged.
  Log Frame(float dt = 0.033f) {
    CallLog().clear();
    state.Update(dt);
    return CallLog();
  }
  Log RenderFrame() {
    CallLog().clear();
    state.Render();
    return CallLog();
  }

  GameState state;
  LoggingScene a{"a"};
  LoggingScene b{"b"};
  LoggingScene c{"c"};
};

TEST_F(GameStateTest, PushTakesEffectAtTheNextUpdateAndTheNewTopGetsOneUpdate) {
  state.PushScene(&a, eRA_UpdateAndRender);
  EXPECT_TRUE(CallLog().empty());
  EXPECT_FALSE(state.needRender());
  EXPECT_EQ((Log{"a.Enter", "a.Update"}), Frame());
  EXPECT_TRUE(state.needRender());
  EXPECT_EQ(&a, state.GetCurrentTickScene());
  EXPECT_EQ(GameState::eOpt_Push, state.GetLastOpt());
  EXPECT_EQ((Log{"a.Update"}), Frame());
  EXPECT_EQ(GameState::eOpt_Tick, state.GetLastOpt());
}

TEST_F(GameStateTest, PushOverAnEmptyStackIgnoresTheActionAndSuspendsNothing) {
  state.PushScene(&a, eRA_None);
  EXPECT_EQ((Log{"a.Enter", "a.Update"}), Frame());
  ASSERT_EQ(1u, state.GetSceneStack().size());
  EXPECT_EQ(eRA_UpdateAndRender, state.GetSceneStack().front().status);
}

TEST_F(GameStateTest, PopThenPushInOneUpdateBothRunAtTheNextFrameInThatOrder) {
  state.PushScene(&a, eRA_UpdateAndRender);
  Frame();
  a.onUpdate = [&](LoggingScene&, float) {
    state.PopScene();
    state.PushScene(&b, eRA_UpdateAndRender);
    a.onUpdate = nullptr;
  };
  EXPECT_EQ((Log{"a.Update"}), Frame());  // asked for, not done
  EXPECT_EQ(2u, state.GetOptList().size());
  // The popped scene is still the tick scene when b is pushed, so it is
  // suspended after its exit; only the pushed scene updates in this frame.
  EXPECT_EQ((Log{"a.Exit", "a.Suspend", "b.Enter", "b.Update"}), Frame());
  EXPECT_EQ(&b, state.GetCurrentTickScene());
  EXPECT_EQ(1u, state.GetSceneStack().size());
}

TEST_F(GameStateTest, AfterTheLastPopNothingRendersAndThePoppedSceneStaysTheTickScene) {
  state.PushScene(&a, eRA_UpdateAndRender);
  Frame();
  state.PopScene();
  EXPECT_EQ((Log{"a.Exit"}), Frame());
  EXPECT_FALSE(state.needRender());
  EXPECT_TRUE(RenderFrame().empty());
  EXPECT_EQ(&a, state.GetCurrentTickScene());
  EXPECT_TRUE(Frame().empty());  // a tick over an empty stack
  state.PushScene(&b, eRA_UpdateAndRender);
  EXPECT_EQ((Log{"a.Suspend", "b.Enter", "b.Update"}), Frame());
}

TEST_F(GameStateTest, SceneCoveredWithAction2IsRenderedAndNotUpdated) {
  state.PushScene(&a, eRA_UpdateAndRender);
  Frame();
  state.PushScene(&b, eRA_Render);
  EXPECT_EQ((Log{"a.Suspend", "b.Enter", "b.Update"}), Frame());
  EXPECT_EQ((Log{"b.Update"}), Frame());
  EXPECT_EQ((Log{"a.Render", "b.Render"}), RenderFrame());
}

TEST_F(GameStateTest, SceneCoveredWithAction0IsNeitherRenderedNorUpdated) {
  state.PushScene(&a, eRA_UpdateAndRender);
  Frame();
  state.PushScene(&b, eRA_None);
  Frame();
  EXPECT_EQ((Log{"b.Update"}), Frame());
  EXPECT_EQ((Log{"b.Render"}), RenderFrame());
}

TEST_F(GameStateTest, SceneCoveredWithAction1IsUpdatedFirstAndNotRendered) {
  state.PushScene(&a, eRA_UpdateAndRender);
  Frame();
  state.PushScene(&b, eRA_Update);
  Frame();
  EXPECT_EQ((Log{"a.Update", "b.Update"}), Frame());  // oldest to top
  EXPECT_EQ((Log{"b.Render"}), RenderFrame());
}

TEST_F(GameStateTest, PopResumesTheSceneBelowAsTopAndUpdatesIt) {
  state.PushScene(&a, eRA_UpdateAndRender);
  Frame();
  state.PushScene(&b, eRA_None);
  Frame();
  state.PopScene();
  EXPECT_EQ((Log{"b.Exit", "a.Resume", "a.Update"}), Frame());
  EXPECT_EQ(eRA_UpdateAndRender, state.GetSceneStack().front().status);
  EXPECT_EQ(&a, state.GetCurrentTickScene());
  EXPECT_EQ(GameState::eOpt_Pop, state.GetLastOpt());
}

TEST_F(GameStateTest, SeveralPushesInOneFrameUpdateOnlyTheLast) {
  state.PushScene(&a, eRA_UpdateAndRender);
  state.PushScene(&b, eRA_UpdateAndRender);
  state.PushScene(&c, eRA_UpdateAndRender);
  EXPECT_EQ((Log{"a.Enter", "a.Suspend", "b.Enter", "b.Suspend", "c.Enter", "c.Update"}), Frame());
  EXPECT_EQ(3u, state.GetSceneStack().size());
}

TEST_F(GameStateTest, PopOnAnEmptyStackIsDroppedWithTheRestOfTheFrame) {
  state.PopScene();
  state.PushScene(&a, eRA_UpdateAndRender);
  EXPECT_TRUE(Frame().empty());
  EXPECT_TRUE(state.GetSceneStack().empty());
  EXPECT_TRUE(state.GetOptList().empty());
  EXPECT_TRUE(Frame().empty());  // the push is gone for good
}

TEST_F(GameStateTest, ResolveOptMovesTheFrontOrRefuses) {
  std::list<GameState::OptSeqUnit> list;
  EXPECT_EQ(0, state.ResolveOpt(list));
  list.push_back({&a, eRA_Render, GameState::eOpt_Push});
  EXPECT_EQ(1, state.ResolveOpt(list));
  EXPECT_TRUE(list.empty());
  list.push_back({nullptr, eRA_None, GameState::eOpt_Pop});
  EXPECT_EQ(0, state.ResolveOpt(list));  // a pop over an empty stack
  EXPECT_EQ(1u, list.size());
}

TEST_F(GameStateTest, ExitStateExitsFromTheTopDownAndClearsEverything) {
  state.PushScene(&a, eRA_UpdateAndRender);
  Frame();
  state.PushScene(&b, eRA_Render);
  Frame();
  state.PopScene();  // still pending
  CallLog().clear();
  state.ExitState();
  EXPECT_EQ((Log{"b.Exit", "a.Exit"}), CallLog());
  EXPECT_TRUE(state.GetSceneStack().empty());
  EXPECT_TRUE(state.GetOptList().empty());
  EXPECT_EQ(nullptr, state.GetCurrentTickScene());
  EXPECT_EQ(1, state.GetLastOpt());
}

// Reaches into the stack to hold a null scene, which no caller of PushScene
// could leave there without faulting first.
struct StateWithNullScene : GameState {
  void PlantNull() { mSceneStack.push_front({nullptr, eRA_UpdateAndRender}); }
};

TEST(GameStateDeathTest, ExitStateAssertsEveryScenePointer) {
  StateWithNullScene state;
  state.PlantNull();
  EXPECT_DEATH(state.ExitState(),
               "Src/BaseFramework/GameState\\.cpp:[0-9]+: virtual void GameState::ExitState\\(\\): Assertion `p' failed\\.");
}

}  // namespace
