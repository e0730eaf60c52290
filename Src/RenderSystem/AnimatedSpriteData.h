#ifndef SRC_RENDERSYSTEM_ANIMATEDSPRITEDATA_H
#define SRC_RENDERSYSTEM_ANIMATEDSPRITEDATA_H
// One animated sprite as loaded from its folder under "res/AnimatedSprites/": its
// animations (N/N.anim), its tile atlas (N/N_L.tal, L the set's first layer name)
// and its page images (N/N_L_pageI, the extension found by the texture manager).
//
// A ".tal" file (little-endian): "LATS", frame count, compact flag (0 wide form,
// else compact), a reserved word, then the frames (see SpriteInfo).
#include <stdint.h>

#include <string>
#include <vector>

#include "RenderSystem/ManagedItem.h"

class AnimationSet;
class GLTexture;
class SpriteInfo;

// A layer of a sprite's images. Only layer 0 is ever loaded.
enum eImageLayerDefine {
  eImageLayer_Base = 0,
  eImageLayer_Num = 10,
};

// The ".tal" header as read.
struct AnimatedSpriteLayerHeader {
  uint32_t mMagic;
  uint32_t mSpriteCount;
  uint32_t mCompactCells;
  uint32_t mReserved;
};

class AnimatedSpriteData : public ManagedItem {
 public:
  static constexpr uint32_t kMagic = 0x5354414C;  // "LATS"

  explicit AnimatedSpriteData(const char* name);
  // Gives the page textures back to the texture manager and deletes the frames
  // and animations.
  virtual ~AnimatedSpriteData();

  // 1 when the animations loaded, 0 when they did not. A missing or bad atlas
  // leaves a sprite with animations and no frames, and still gives 1. Pages load
  // through the texture manager (which must exist once an atlas names a page),
  // each found as .udi, .tga or .bmp; a page not found is a null texture.
  int Load(const char* name);
  // The result of AnimationSet::Import0 on the sprite's ".anim" file.
  int loadAnimationSet(const char* name);

  // Null for a layer of 9 or above (the tenth slot can't be reached), a negative
  // index or one past the end.
  GLTexture* GetLayerTexture(eImageLayerDefine layer, int page) const;
  SpriteInfo* GetSpriteInfo(eImageLayerDefine layer, int frame) const;

  // Where the sprite's files are, with `name` its name and `layer` the set's first
  // layer name.
  static std::string AnimPath(const std::string& name);
  static std::string AtlasPath(const std::string& name, const std::string& layer);
  static std::string PagePath(const std::string& name, const std::string& layer, int page);  // no extension

  AnimatedSpriteLayerHeader mLayerHeaders[eImageLayer_Num];
  std::vector<GLTexture*> mLayerTextures[eImageLayer_Num];  // a texture per page, null when not found
  std::vector<SpriteInfo*> mLayerSprites[eImageLayer_Num];  // a frame each, owned
  AnimationSet* mAnimationSet;                              // owned

 private:
  // The page count of the atlas read into layer 0; 0 for a missing or bad one.
  int ReadAtlas(const std::string& path);
  // Gives the layer's page textures back to the texture manager.
  void ReleasePages(int layer);
};

#endif
