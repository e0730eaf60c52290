#pragma once
// A small title with 3D on: it asks the device for its OpenGL ES context before
// Enter, loads a texture of every device format (raw, 16- and 256-entry palettes,
// A8R8G8B8, TGA) from res/tex/ through the texture manager, and draws them as
// textured quads with the fixed-point profile, a frame round the chosen one (the
// arrows and taps choose), the chosen one's name below in two fonts baked from
// DejaVu (res/Font/), under a canvas strip across the top. "back" (button 5)
// ends it; on exit it answers with what it loaded and chose.
#include <string>
#include <vector>

#include "Base/singleton.h"
#include "BaseFramework/GameManager.h"
#include "BaseFramework/GameState.h"
#include "BaseFramework/IScene.h"
#include "Tamarin/ZvWidgetInstance.h"

class CanvasFactory;
class CanvasLayer;
class CanvasRender;
class GLTexture;

namespace gltitle {

// The tiles, in screen order: five a row, three rows.
extern const char* const kTextureNames[15];

class TextureScene : public IScene {
 public:
  void EnterScene() override;
  void ExitScene() override;
  void Update(float dt) override;
  void Render() override;

  int loaded = 0;  // textures that came
  int selected = 0;
  int frames = 0;

 private:
  void DrawFrame(int tile);
  void DrawCaption();
  std::vector<GLTexture*> mTextures;
};

class TitleState : public GameState {
 public:
  void EnterState() override;
  void ExitState() override;
  TextureScene* scene() const { return mScene; }

 private:
  TextureScene* mScene = nullptr;
};

class TitleManager : public GameManager, public Singleton<TitleManager, Tag_Singleton_Manual> {
 public:
  void Initialize() override;
  void Destroy() override;
  void Update(float dt) override;
  void Render() override;
  TitleState* state() const { return mState; }

 private:
  TitleState* mState = nullptr;
  CanvasFactory* mFactory = nullptr;
  CanvasLayer* mOglLayer = nullptr;
  CanvasLayer* mStrip = nullptr;  // the RGBA canvas layer
  CanvasRender* mRender = nullptr;
  std::vector<unsigned char> mStripPixels;
};

// Turns 3D on with the device's context; without one it says so, keeps 3D off and
// ends at its first frame.
class TitleInstance : public ZvWidgetInstance {
 public:
  explicit TitleInstance(void* params) : ZvWidgetInstance(params) {}
  void Enter() override;
  void Exit() override;
  void OnPreExit() override;

 private:
  SolvaOpenGLConfig* mConfig = nullptr;
};

}  // namespace gltitle
