#ifndef SRC_RENDERSYSTEM_GLTEXTUREMANAGER_H
#define SRC_RENDERSYSTEM_GLTEXTUREMANAGER_H
// Names, shares and counts the textures of the 3D path, so that a file is uploaded
// once and freed when its last user lets go; also holds the index of the texture
// package UITexture.pkg. The game manager creates it in every title, 3D on or off
// (UDI loading asserts it).
//
//   GLTexture* t = gxGetTextureManager()->LoadTextureNoExpand("res/UI/UITexture/menu", 0);
//   ...  glBindTexture(GL_TEXTURE_2D, t->mTextureID) ...
//   gxGetTextureManager()->ReleaseTexture(t);
#include <map>
#include <string>
#include <utility>

#include "Base/Timer.h"
#include "Base/singleton.h"

class GLTexture;

// Told of every texture the manager loads from a file; the framework sets none.
class ITextureLoadListener {
 public:
  // `seconds` runs from the end of the previous load.
  virtual void OnTextureLoaded(const std::string& name, float seconds) = 0;
  virtual ~ITextureLoadListener() {}
};

class GLTextureManager : public Singleton<GLTextureManager, Tag_Singleton_Manual> {
 public:
  GLTextureManager();
  // Deletes every texture and forgets the package index; the package's data
  // block is ReleasePkgFile's to free.
  virtual ~GLTextureManager();

  // The texture of a BMP, TGA or UDI file, shared: a name loaded before gives the
  // same texture with one more user. Null (and 0 in `outID`) when it cannot be
  // loaded; nothing is printed. `outID` may be null, here and below.
  GLTexture* LoadTexture(std::string name, unsigned int* outID);
  // A new texture from BMP or TGA pixels (24 or 32 bits) every time.
  GLTexture* LoadTexture(void* pixels, unsigned width, unsigned height, unsigned bits, std::string& name,
                         unsigned int* outID);
  // `baseName` + ".udi", else + ".tga", else + ".bmp": what every user calls.
  GLTexture* LoadTextureNoExpand(const char* baseName, unsigned int* outID);

  // Null when unknown; no count changes.
  GLTexture* FindTextureByID(unsigned id);
  GLTexture* FindTextureByName(const std::string& name);
  GLTexture* FindTextureByName(const char* name);

  // One user less; the last one deletes the texture. Unknown textures, names and
  // ids are ignored.
  void ReleaseTexture(GLTexture* texture);
  void ReleaseTextureByName(const std::string& name);
  void ReleaseTextureByName(const char* name);
  void ReleaseTextureByID(unsigned id);

  // Deletes every texture and empties both tables; mTextureBytes stays.
  void Clear();

  // Reads the index of a texture package (the data block's size is taken from the
  // title's res/UI/UITexture.pkg, whatever `path` is). A missing file leaves the
  // index empty, silently.
  void LoadPkgFile(const std::string& path, unsigned ignored);
  void ReleasePkgFile();
  // 1 when `path` names something under res/UI/UITexture (either separator),
  // whether or not a package is loaded.
  int IsInPkgFile(const std::string& path);

  std::map<std::string, unsigned int> mNameToID;
  std::map<unsigned int, GLTexture*> mIDToTexture;  // owning
  unsigned mMinFilter;                              // GL_NEAREST; handed to GLTexture::Load, which ignores it
  unsigned mMagFilter;
  ITextureLoadListener* mLoadListener;
  Timer mLoadTimer;
  unsigned char* mPkgBuffer;  // the package's data block
  // Name to the pair of its entry (place and length in the data block, as
  // written; nothing reads a texture from there yet).
  std::map<std::string, std::pair<unsigned int, unsigned int> > mPkgIndex;
  unsigned mTextureBytes;  // mByteSize of every living texture

 private:
  // Puts a newly loaded texture in the tables under its name, counts it and tells
  // the listener.
  GLTexture* Register(GLTexture* texture, unsigned int* outID);
  // One user less of the texture at `entry`; erases it with the last.
  void Release(std::map<unsigned int, GLTexture*>::iterator entry);
};

// The manager; fails the assertion "instance_" before it exists.
GLTextureManager* gxGetTextureManager();

#endif
