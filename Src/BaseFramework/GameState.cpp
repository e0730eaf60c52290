#include "BaseFramework/GameState.h"

#include <assert.h>

namespace {
const GameState::OptSeqUnit kNoOpt = {0, eRA_None, GameState::eOpt_None};
}

GameState::GameState() : mCurrentTickScene(0), mLastOpt(1), mCurrentOpt(kNoOpt), mReserved(0) {}

GameState::~GameState() {}

void GameState::PushScene(IScene* scene, EReservedAction action) {
  const OptSeqUnit push = {scene, action, eOpt_Push};
  mOptList.push_back(push);
}

void GameState::PopScene() {
  const OptSeqUnit pop = {0, eRA_None, eOpt_Pop};
  mOptList.push_back(pop);
}

bool GameState::needRender() const { return !mSceneStack.empty(); }

int GameState::ResolveOpt(std::list<OptSeqUnit>& list) {
  if (list.empty() || (list.front().opt == eOpt_Pop && mSceneStack.empty())) {
    mCurrentOpt = kNoOpt;
    return 0;
  }
  mCurrentOpt = list.front();
  list.pop_front();
  return 1;
}

void GameState::Update(float dt) {
  // What the scenes below ask for from here on waits for the next frame.
  std::list<OptSeqUnit> pending;
  pending.swap(mOptList);
  if (pending.empty()) {
    const OptSeqUnit tick = {0, eRA_None, eOpt_Tick};
    pending.push_back(tick);
  }

  while (!pending.empty()) {
    mCurrentOpt = pending.front();
    pending.pop_front();
    switch (mCurrentOpt.opt) {
      case eOpt_Pop:
        if (mSceneStack.empty()) {
          // A pop on an empty stack is dropped, with the rest of this frame's list.
          mCurrentOpt = kNoOpt;
          return;
        }
        mLastOpt = eOpt_Pop;
        mCurrentTickScene->ExitScene();
        mSceneStack.pop_front();
        if (!mSceneStack.empty()) {
          mSceneStack.front().status = eRA_UpdateAndRender;
          mCurrentTickScene = mSceneStack.front().scene;
          mCurrentTickScene->ResumeScene();
          if (pending.empty()) mCurrentTickScene->Update(dt);
        }
        break;
      case eOpt_Tick: {
        mLastOpt = eOpt_Tick;
        // Oldest to top; the links are read again after each call.
        std::list<SceneUnit>::reverse_iterator unit = mSceneStack.rbegin();
        while (unit != mSceneStack.rend()) {
          if (unit->status == eRA_Update || unit->status == eRA_UpdateAndRender) unit->scene->Update(dt);
          ++unit;
        }
        break;
      }
      case eOpt_Push: {
        mLastOpt = eOpt_Push;
        if (!mSceneStack.empty()) mSceneStack.front().status = mCurrentOpt.action;
        const SceneUnit top = {mCurrentOpt.scene, eRA_UpdateAndRender};
        mSceneStack.push_front(top);
        if (mCurrentTickScene != 0) mCurrentTickScene->SuspendScene();
        mCurrentTickScene = mSceneStack.front().scene;
        mCurrentTickScene->EnterScene();
        if (pending.empty()) mCurrentTickScene->Update(dt);
        break;
      }
      default:
        mLastOpt = mCurrentOpt.opt;
        break;
    }
    mCurrentOpt = kNoOpt;
  }
}

void GameState::Render() {
  for (std::list<SceneUnit>::reverse_iterator unit = mSceneStack.rbegin(); unit != mSceneStack.rend(); ++unit) {
    if (unit->status == eRA_Render || unit->status == eRA_UpdateAndRender) unit->scene->Render();
  }
}

void GameState::ExitState() {
  for (std::list<SceneUnit>::iterator unit = mSceneStack.begin(); unit != mSceneStack.end(); ++unit) {
    IScene* p = unit->scene;
    assert(p);
    p->ExitScene();
  }
  mSceneStack.clear();
  mOptList.clear();
  mLastOpt = 1;
  mCurrentTickScene = 0;
}
