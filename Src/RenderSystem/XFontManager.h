#ifndef SRC_RENDERSYSTEM_XFONTMANAGER_H
#define SRC_RENDERSYSTEM_XFONTMANAGER_H
// Text of the 3D path, from glyph sheets. The game manager creates it in every
// title and initialises it only with 3D on; the glyph sheets are not built yet.
#include "Base/singleton.h"

class XFontManager : public Singleton<XFontManager, Tag_Singleton_Manual> {
 public:
  XFontManager() : mInitialized(0) {}
  void initialize() { mInitialized = 1; }
  int isInitialized() const { return mInitialized; }

 private:
  int mInitialized;
};

#endif
