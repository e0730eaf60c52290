#ifndef SRC_RENDERSYSTEM_GLTEXTUREMANAGER_H
#define SRC_RENDERSYSTEM_GLTEXTUREMANAGER_H
// Names, shares and counts the textures of the 3D path. The game manager creates
// it in every title; loading textures is not built yet (this title keeps 3D off).
#include "Base/singleton.h"

class GLTextureManager : public Singleton<GLTextureManager, Tag_Singleton_Manual> {
 public:
  GLTextureManager() {}
  virtual ~GLTextureManager() {}
};

#endif
