#include "RenderSystem/AnimatedSpriteData.h"

#include <string.h>

#include "Base/File.h"
#include "Base/FileRecords.h"
#include "RenderSystem/AnimationSet.h"
#include "RenderSystem/GLTextureManager.h"
#include "RenderSystem/SpriteInfo.h"

namespace {
const char kRoot[] = "res/AnimatedSprites/";
// The smallest frame of each form: its header without cells.
const unsigned kWideFrameSize = 16;
const unsigned kCompactFrameSize = 6;
}  // namespace

AnimatedSpriteData::AnimatedSpriteData(const char* name) : ManagedItem(name), mAnimationSet(0) {
  memset(mLayerHeaders, 0, sizeof mLayerHeaders);
}

AnimatedSpriteData::~AnimatedSpriteData() {
  for (int layer = 0; layer < eImageLayer_Num; ++layer) {
    ReleasePages(layer);
    for (size_t i = 0; i < mLayerSprites[layer].size(); ++i) delete mLayerSprites[layer][i];
    mLayerSprites[layer].clear();
  }
  delete mAnimationSet;
}

std::string AnimatedSpriteData::AnimPath(const std::string& name) { return kRoot + name + "/" + name + ".anim"; }

std::string AnimatedSpriteData::AtlasPath(const std::string& name, const std::string& layer) {
  return kRoot + name + "/" + name + "_" + layer + ".tal";
}

std::string AnimatedSpriteData::PagePath(const std::string& name, const std::string& layer, int page) {
  return kRoot + name + "/" + name + "_" + layer + "_page" + std::to_string(page);
}

int AnimatedSpriteData::loadAnimationSet(const char* name) {
  delete mAnimationSet;
  mAnimationSet = new AnimationSet();
  return mAnimationSet->Import0(AnimPath(name).c_str());
}

int AnimatedSpriteData::Load(const char* name) {
  // 1.
  if (loadAnimationSet(name) == 0) return 0;
  // 2.
  const char* layerName = mAnimationSet->mLayerNames[0];
  const std::string layer(layerName, strnlen(layerName, AnimationSet::kLayerNameSize));
  const int pages = ReadAtlas(AtlasPath(name, layer));
  // 6. A page not found stays null, and its tiles draw nothing.
  ReleasePages(0);  // those of an earlier Load
  mLayerTextures[0].resize(pages);
  for (int i = 0; i < pages; ++i) {
    mLayerTextures[0][i] = gxGetTextureManager()->LoadTextureNoExpand(PagePath(name, layer, i).c_str(), 0);
  }
  return 1;
}

void AnimatedSpriteData::ReleasePages(int layer) {
  // A page that was not found holds no texture and asks nothing of the manager.
  for (size_t i = 0; i < mLayerTextures[layer].size(); ++i) {
    if (mLayerTextures[layer][i] != 0) gxGetTextureManager()->ReleaseTexture(mLayerTextures[layer][i]);
  }
  mLayerTextures[layer].clear();
}

int AnimatedSpriteData::ReadAtlas(const std::string& path) {
  // A second Load replaces the frames of the first instead of leaking them.
  for (size_t i = 0; i < mLayerSprites[0].size(); ++i) delete mLayerSprites[0][i];
  mLayerSprites[0].clear();

  File file(path.c_str(), "rb");
  if (!file.isOpened()) return 0;
  const unsigned fileSize = file.getFileSize();
  // 3.
  AnimatedSpriteLayerHeader header;
  header.mMagic = file.readUInt();
  if (header.mMagic != kMagic) return 0;
  // 4. The header is stored once the frames are read, with the number there are.
  header.mSpriteCount = file.readUInt();
  header.mCompactCells = file.readUInt();
  header.mReserved = file.readUInt();
  const unsigned frameSize = header.mCompactCells ? kCompactFrameSize : kWideFrameSize;
  mLayerSprites[0].resize(RecordsLeftInFile(file, fileSize, header.mSpriteCount, frameSize));
  // 5.
  int pages = 0;
  for (size_t f = 0; f < mLayerSprites[0].size(); ++f) {
    // The frame count is trusted only as far as frames begin within the file.
    if (file.tell() >= long(fileSize)) {
      mLayerSprites[0].resize(f);
      break;
    }
    SpriteInfo* sprite = new SpriteInfo();
    mLayerSprites[0][f] = sprite;
    if (header.mCompactCells) {
      sprite->readCompact(file, fileSize);
    } else {
      sprite->readWide(file, fileSize);
    }
    sprite->computeCellRect();
    for (unsigned c = 0; c < sprite->mCellCount; ++c) {
      if (sprite->mCells[c].mPage >= pages) pages = sprite->mCells[c].mPage + 1;
    }
  }
  file.close();
  header.mSpriteCount = uint32_t(mLayerSprites[0].size());
  mLayerHeaders[0] = header;
  return pages;
}

GLTexture* AnimatedSpriteData::GetLayerTexture(eImageLayerDefine layer, int page) const {
  if (layer < 0 || layer >= eImageLayer_Num - 1 || page < 0) return 0;
  const std::vector<GLTexture*>& pages = mLayerTextures[layer];
  return size_t(page) < pages.size() ? pages[page] : 0;
}

SpriteInfo* AnimatedSpriteData::GetSpriteInfo(eImageLayerDefine layer, int frame) const {
  if (layer < 0 || layer >= eImageLayer_Num - 1 || frame < 0) return 0;
  const std::vector<SpriteInfo*>& frames = mLayerSprites[layer];
  return size_t(frame) < frames.size() ? frames[frame] : 0;
}
