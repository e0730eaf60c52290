#include "support/GLTitle.h"

#include <GLES/gl.h>
#include <stdio.h>

#include "Base/StringID.h"
#include "BaseFramework/InputManager.h"
#include "Canvas/CanvasLayer.h"
#include "Canvas/CanvasRender.h"
#include "Canvas/VT/ZvCanvasFactory.h"
#include "RenderSystem/GLTexture.h"
#include "RenderSystem/GLTextureManager.h"
#include "RenderSystem/AnimatedModel2DRender.h"
#include "RenderSystem/RenderStateStack.h"
#include "RenderSystem/XFontManager.h"
#include "SolvaOpenGLConfig.h"
#include "support/GLQuad.h"

namespace gltitle {

// Five a row, as on the screen.
// clang-format off
const char* const kTextureNames[15] = {
    "r8g8b8a8",    "r5g5b5a1",    "r5g6b5",    "r4g4b4a4",    "l8a8",
    "p4_r8g8b8a8", "p4_r5g5b5a1", "p4_r5g6b5", "p4_r4g4b4a4", "a8r8g8b8",
    "p8_r8g8b8a8", "p8_r5g5b5a1", "p8_r5g6b5", "p8_r4g4b4a4", "tga32",
};
// clang-format on

namespace {

const GLfixed kOne = 1 << 16;
const int kTiles = 15;
const int kTileSize = 64;
const int kStripHeight = 24;

int TileX(int tile) { return 16 + (tile % 5) * 92; }
int TileY(int tile) { return 32 + (tile / 5) * 72; }

// The tile under a screen point, or -1.
int TileAt(int x, int y) {
  for (int tile = 0; tile < kTiles; ++tile) {
    if (x >= TileX(tile) && x < TileX(tile) + kTileSize && y >= TileY(tile) && y < TileY(tile) + kTileSize) return tile;
  }
  return -1;
}

void FillRect(int x, int y, int width, int height) {
  const GLfixed left = x * kOne, top = y * kOne, right = (x + width) * kOne, bottom = (y + height) * kOne;
  const GLfixed vertices[] = {left, top, right, top, left, bottom, right, bottom};
  glEnableClientState(GL_VERTEX_ARRAY);
  glVertexPointer(2, GL_FIXED, 0, vertices);
  glDrawArrays(GL_TRIANGLE_STRIP, 0, 4);
  glDisableClientState(GL_VERTEX_ARRAY);
}

}  // namespace

void TextureScene::EnterScene() {
  // The colour every guarded draw returns to.
  RenderStateStack::GetColorContainer()->push_back(RenderStateStack::Color{1.0f, 1.0f, 1.0f, 1.0f});
  if (!ZvWidgetInstance::GetIsUseOgl()) return;
  for (const char* name : kTextureNames) {
    GLTexture* texture = gxGetTextureManager()->LoadTextureNoExpand((std::string("res/tex/") + name).c_str(), 0);
    mTextures.push_back(texture);
    if (texture != 0) ++loaded;
  }
}

void TextureScene::ExitScene() {
  for (GLTexture* texture : mTextures) gxGetTextureManager()->ReleaseTexture(texture);
  mTextures.clear();
}

void TextureScene::Update(float) {
  ++frames;
  InputManager& input = InputManager::sInstance();
  const int steps[4] = {-5, 5, 1, -1};  // up, down, right, left
  for (int button = 0; button < 4; ++button) {
    if (input.mButtonState[button] != InputManager::eBS_JustPressed) continue;
    const int next = selected + steps[button];
    if (next >= 0 && next < kTiles) selected = next;
  }
  if (input.mTouchPhase == InputManager::eTP_JustDown) {
    const int tile = TileAt(input.mTouchNow.x, input.mTouchNow.y);
    if (tile >= 0) selected = tile;
  }
  if (input.mButtonState[5] == InputManager::eBS_JustPressed) TitleManager::sInstance().SetGameFinished(1);
}

void TextureScene::Render() {
  if (!ZvWidgetInstance::GetIsUseOgl()) return;
  glClearColorx(0x1A00, 0x2600, 0x3300, kOne);
  glClear(GL_COLOR_BUFFER_BIT);
  glEnable(GL_TEXTURE_2D);
  glTexEnvx(GL_TEXTURE_ENV, GL_TEXTURE_ENV_MODE, GL_MODULATE);
  glColor4x(kOne, kOne, kOne, kOne);
  for (int tile = 0; tile < kTiles; ++tile) {
    if (mTextures[tile] != 0)
      zvtest::DrawTexturedQuad(mTextures[tile]->mTextureID, TileX(tile), TileY(tile), kTileSize, kTileSize);
  }
  DrawFrame(selected);
  DrawCaption();
}

// The chosen tile's name in the baked fonts (res/Font/, made by fontbake), white
// and yellow on the GL's colour, each string one draw through the batch renderer.
void TextureScene::DrawCaption() {
  XFontManager& fonts = XFontManager::sInstance();
  char caption[64];
  snprintf(caption, sizeof caption, "%d: %s, %u x %u", selected, kTextureNames[selected],
           mTextures[selected] != 0 ? mTextures[selected]->mWidth : 0u,
           mTextures[selected] != 0 ? mTextures[selected]->mHeight : 0u);
  glColor4x(kOne, kOne, kOne, kOne);
  fonts.drawString(0, 16, 247, caption, false);
  glColor4x(kOne, kOne, 0x6000, kOne);
  fonts.drawStringRight(1, 464, 247, "baked text");
  glColor4x(kOne, kOne, kOne, kOne);
}

// A yellow frame round a tile, drawn flat and opaque; the guard puts texturing,
// blending and the colour back.
void TextureScene::DrawFrame(int tile) {
  RenderStateStack guard;
  glDisable(GL_TEXTURE_2D);
  glDisable(GL_BLEND);
  glColor4x(kOne, kOne, 0, kOne);
  const int x = TileX(tile) - 4, y = TileY(tile) - 4, size = kTileSize + 8;
  FillRect(x, y, size, 3);
  FillRect(x, y + size - 3, size, 3);
  FillRect(x, y, 3, size);
  FillRect(x + size - 3, y, 3, size);
}

void TitleState::EnterState() {
  mScene = new TextureScene();
  PushScene(mScene, eRA_UpdateAndRender);
}

void TitleState::ExitState() {
  GameState::ExitState();
  delete mScene;
  mScene = nullptr;
}

void TitleManager::Initialize() {
  GameManager::Initialize();  // with 3D on, loads the fonts
  // Text draws through the batch renderer, made once the GL context is up.
  if (ZvWidgetInstance::GetIsUseOgl()) AnimatedModel2DRender::sCreate();
  mFactory = new ZvCanvasFactory();
  mOglLayer = mFactory->CreateOglLayer(0, 0, 480, 272);
  mStrip = mFactory->CreateRGBALayer(0, 0, 480, 272);
  mRender = mFactory->CreateRender();
  // The strip: translucent slate, lighter to the right.
  mStripPixels.resize(480 * kStripHeight * 4);
  for (int y = 0; y < kStripHeight; ++y) {
    for (int x = 0; x < 480; ++x) {
      unsigned char* p = &mStripPixels[(y * 480 + x) * 4];
      p[0] = static_cast<unsigned char>(40 + x / 4);
      p[1] = static_cast<unsigned char>(50 + x / 4);
      p[2] = 90;
      p[3] = 200;
    }
  }
  mState = new TitleState();
  LaunchState(mState);
}

void TitleManager::Destroy() {
  GameManager::ExitState();
  StringID::Destroy();
  mStrip->Destroy();
  delete mStrip;
  mOglLayer->Destroy();
  delete mOglLayer;
  delete mRender;
  delete mFactory;
  delete AnimatedModel2DRender::instance_;
  AnimatedModel2DRender::instance_ = nullptr;
  GameManager::Destroy();
  delete mState;
  mState = nullptr;
}

void TitleManager::Update(float dt) {
  InputManager::sInstance().Update(dt);
  GameManager::Update(dt);
}

// The GL picture, then the canvas strip over it, with a white mark under the
// chosen tile's column.
void TitleManager::Render() {
  GameManager::Render();
  if (mState == nullptr || mState->scene() == nullptr) return;
  mStrip->Clear();
  mStrip->Draw_Image_RGBA8888(0, 0, 480, kStripHeight, mStripPixels.data(), 480, kStripHeight, 1.0f, 0);
  const std::vector<unsigned char> mark(16 * 6 * 4, 255);
  const int tile = mState->scene()->selected;
  mStrip->Draw_Image_RGBA8888(TileX(tile) + 24, 9, 16, 6, mark.data(), 16, 6, 1.0f, 0);
  mRender->PreDraw();
  mRender->DrawLayer(mStrip, 1.0f);
  mRender->PostDraw();
}

void TitleInstance::Enter() {
  SetIsUseOgl(1);
  mConfig = Vantrel::Solva::CreateSolvaOpenGLConfig();
  if (mConfig == 0) {
    puts("gltitle: the device has no 3D context; nothing to show");
    SetIsUseOgl(0);
  }
  SetSolvaOpenGLConfig(mConfig);
  TitleManager::sCreate();
  SetGameManager(&TitleManager::sInstance());
  ZvWidgetInstance::Enter();
  if (mConfig == 0) TitleManager::sInstance().SetGameFinished(1);
}

void TitleInstance::Exit() {
  ZvWidgetInstance::Exit();
  Vantrel::Solva::DestroySolvaOpenGLConfig(mConfig);
  mConfig = 0;
  SetIsUseOgl(0);
}

void TitleInstance::OnPreExit() {
  TitleManager& manager = TitleManager::sInstance();
  TextureScene* scene = manager.state() ? manager.state()->scene() : nullptr;
  Catalog::CJSonFile* params = GetParams();
  if (params != nullptr && scene != nullptr) {
    Catalog::Value& root = params->GetRoot();
    root["3d"] = mConfig != 0 ? 1 : 0;
    root["textures"] = scene->loaded;
    root["textureBytes"] = int(gxGetTextureManager()->mTextureBytes);
    int fonts = 0;
    for (GLTexture* sheet : XFontManager::sInstance().mFontTextures) fonts += sheet != 0 ? 1 : 0;
    root["fonts"] = fonts;
    root["selected"] = scene->selected;
    root["frames"] = scene->frames;
    root["finished"] = manager.IsGameFinished();
  }
  manager.Destroy();
  delete TitleManager::instance_;
  TitleManager::instance_ = nullptr;
}

}  // namespace gltitle
