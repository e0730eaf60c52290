#include "RenderSystem/GLTextureManager.h"

#include <GLES/gl.h>
#include <stdio.h>
#include <string.h>

#include "BaseFramework/GameManager.h"
#include "MediaCenter/Archive.h"
#include "RenderSystem/GLTexture.h"
#include "Tamarin/ZvWidgetInstance.h"

namespace {

// A little-endian word of the package; false at the end of the file.
bool ReadWord(FILE* file, unsigned* value) {
  unsigned char bytes[4];
  if (fread(bytes, 1, 4, file) != 4) return false;
  *value = unsigned(bytes[0]) | (unsigned(bytes[1]) << 8) | (unsigned(bytes[2]) << 16) | (unsigned(bytes[3]) << 24);
  return true;
}

// The characters of `path` from `begin` up to `end` are all folder separators.
bool OnlySeparators(const std::string& path, size_t begin, size_t end) {
  for (size_t i = begin; i < end; ++i) {
    if (path[i] != '/' && path[i] != '\\') return false;
  }
  return true;
}

}  // namespace

GLTextureManager* gxGetTextureManager() { return &GLTextureManager::sInstance(); }

GLTextureManager::GLTextureManager()
    : mMinFilter(GL_NEAREST), mMagFilter(GL_NEAREST), mLoadListener(0), mPkgBuffer(0), mTextureBytes(0) {}

GLTextureManager::~GLTextureManager() {
  Clear();
  mPkgIndex.clear();
}

GLTexture* GLTextureManager::LoadTexture(std::string name, unsigned int* outID) {
  std::map<std::string, unsigned int>::iterator known = mNameToID.find(name);
  if (known != mNameToID.end()) {
    std::map<unsigned int, GLTexture*>::iterator entry = mIDToTexture.find(known->second);
    if (entry != mIDToTexture.end() && entry->second != 0) {
      GLTexture* texture = entry->second;
      if (texture->mTextureID != 0) ++texture->mRefCount;
      if (outID != 0) *outID = known->second;
      return texture;
    }
  }

  GLTexture* texture = new GLTexture();
  if (texture->Load(name.c_str(), mMinFilter, mMagFilter) < 0) {
    // Silent: LoadTextureNoExpand tries names that may not exist.
    delete texture;
    if (outID != 0) *outID = 0;
    return 0;
  }
  return Register(texture, outID);
}

GLTexture* GLTextureManager::LoadTexture(void* pixels, unsigned width, unsigned height, unsigned bits,
                                         std::string& name, unsigned int* outID) {
  GLTexture* texture = new GLTexture();
  if (texture->Load(pixels, width, height, bits, name.c_str()) < 0) {
    delete texture;
    if (outID != 0) *outID = 0;
    return 0;
  }
  return Register(texture, outID);
}

GLTexture* GLTextureManager::Register(GLTexture* texture, unsigned int* outID) {
  const unsigned id = texture->mTextureID;
  mIDToTexture.insert(std::make_pair(id, texture));
  mNameToID.insert(std::make_pair(texture->mName, id));  // an older entry of that name stays
  if (id != 0) ++texture->mRefCount;
  texture->mLoadFlag = 0;
  mTextureBytes += texture->mByteSize;

  if (mLoadListener != 0) mLoadListener->OnTextureLoaded(texture->mName, mLoadTimer.getElapsedTime());
  mLoadTimer.start();
  if (outID != 0) *outID = id;
  return texture;
}

GLTexture* GLTextureManager::LoadTextureNoExpand(const char* baseName, unsigned int* outID) {
  // The device formed these with sprintf; a name too long for the buffer is cut
  // here instead of overrunning it.
  char path[256];
  snprintf(path, sizeof path, "%s.udi", baseName);
  GLTexture* texture = LoadTexture(path, outID);
  if (texture == 0) {
    snprintf(path, sizeof path, "%s.tga", baseName);
    texture = LoadTexture(path, outID);
  }
  if (texture == 0) {
    snprintf(path, sizeof path, "%s.bmp", baseName);
    texture = LoadTexture(path, outID);
  }
  return texture;
}

GLTexture* GLTextureManager::FindTextureByID(unsigned id) {
  std::map<unsigned int, GLTexture*>::iterator entry = mIDToTexture.find(id);
  return entry == mIDToTexture.end() ? 0 : entry->second;
}

GLTexture* GLTextureManager::FindTextureByName(const std::string& name) {
  std::map<std::string, unsigned int>::iterator known = mNameToID.find(name);
  return known == mNameToID.end() ? 0 : FindTextureByID(known->second);
}

GLTexture* GLTextureManager::FindTextureByName(const char* name) { return FindTextureByName(std::string(name)); }

void GLTextureManager::ReleaseTexture(GLTexture* texture) {
  if (texture == 0) return;
  // Found by the pointer itself, so that one from elsewhere is never touched.
  for (std::map<unsigned int, GLTexture*>::iterator entry = mIDToTexture.begin(); entry != mIDToTexture.end();
       ++entry) {
    if (entry->second == texture) {
      Release(entry);
      return;
    }
  }
}

void GLTextureManager::ReleaseTextureByName(const std::string& name) {
  std::map<std::string, unsigned int>::iterator known = mNameToID.find(name);
  if (known != mNameToID.end()) ReleaseTextureByID(known->second);
}

void GLTextureManager::ReleaseTextureByName(const char* name) { ReleaseTextureByName(std::string(name)); }

void GLTextureManager::ReleaseTextureByID(unsigned id) {
  std::map<unsigned int, GLTexture*>::iterator entry = mIDToTexture.find(id);
  if (entry != mIDToTexture.end() && entry->second != 0) Release(entry);
}

void GLTextureManager::Release(std::map<unsigned int, GLTexture*>::iterator entry) {
  GLTexture* texture = entry->second;
  // A texture without a GL name was never counted: it goes at once.
  if (texture->Release() != 0) return;
  mNameToID.erase(texture->mName);
  mTextureBytes -= texture->mByteSize;
  delete texture;
  mIDToTexture.erase(entry);
}

void GLTextureManager::Clear() {
  for (std::map<unsigned int, GLTexture*>::iterator entry = mIDToTexture.begin(); entry != mIDToTexture.end();
       ++entry) {
    delete entry->second;
  }
  mIDToTexture.clear();
  mNameToID.clear();
}

void GLTextureManager::LoadPkgFile(const std::string& path, unsigned) {
  mPkgIndex.clear();

  Archive& archive = ZvWidgetInstance::GetActiveInstance()->GetGameManager()->GetArchiver();
  const std::string defaultPath = archive.mTitlePath + "res/UI/" + "UITexture.pkg";
  const unsigned fileSize = unsigned(archive.GetFileSize(defaultPath));
  // The device opened the default file too and dropped the handle; here it is
  // closed again, so that no descriptor leaks.
  FILE* defaultFile = fopen(defaultPath.c_str(), "rb");
  if (defaultFile != 0) fclose(defaultFile);

  FILE* file = fopen(path.c_str(), "rb");
  if (file == 0) return;

  unsigned headerLength = 0;
  unsigned count = 0;
  ReadWord(file, &headerLength);
  // A header that claims to reach beyond the file leaves no data block. An earlier
  // block is freed rather than lost.
  const unsigned blockSize = headerLength < fileSize ? fileSize - headerLength : 0;
  delete[] mPkgBuffer;
  mPkgBuffer = new unsigned char[blockSize];
  ReadWord(file, &count);

  for (unsigned i = 0; i < count; ++i) {
    unsigned length = 0;
    char name[128];
    // A name too long for the buffer, or the end of the file, ends the index as if
    // the file ended there.
    if (!ReadWord(file, &length) || length >= sizeof name || fread(name, 1, length, file) != length) break;
    name[length] = 0;
    unsigned first = 0;
    unsigned second = 0;
    if (!ReadWord(file, &first) || !ReadWord(file, &second)) break;
    mPkgIndex[name] = std::make_pair(first, second);
  }

  // The entries are taken to end where the data block starts. A file shorter than
  // the default one leaves the rest of the block zero.
  const size_t got = fread(mPkgBuffer, 1, blockSize, file);
  memset(mPkgBuffer + got, 0, blockSize - got);
  fclose(file);
  puts("[GLTextureManager][LoadPkgFile] Load UITexture.pkg Success!");
}

void GLTextureManager::ReleasePkgFile() {
  mPkgIndex.clear();
  delete[] mPkgBuffer;
  mPkgBuffer = 0;
  puts("[GLTextureManager][ReleasePkgFile] Release UITexture.pkg Success!");
}

int GLTextureManager::IsInPkgFile(const std::string& path) {
  const size_t res = path.find("res");
  const size_t ui = path.find("UI");
  const size_t texture = path.find("UITexture");
  if (res == std::string::npos || ui == std::string::npos || texture == std::string::npos) return 0;
  if (!OnlySeparators(path, res + 3, ui)) return 0;
  if (!OnlySeparators(path, ui + 2, texture)) return 0;
  return 1;
}
