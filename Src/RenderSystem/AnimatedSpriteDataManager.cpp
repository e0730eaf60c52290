#include "RenderSystem/AnimatedSpriteDataManager.h"

#include <string.h>

#include "Base/File.h"
#include "RenderSystem/AnimatedSpriteData.h"

namespace {
// Built once, kept for the life of the process.
const std::string& ListPath() {
  static const std::string root("res/AnimatedSprites/");
  static const std::string path(root + "AnimatedSpritesList.txt");
  return path;
}

bool IsLineEnd(char c) { return c == '\t' || c == '\n' || c == '\r'; }
}  // namespace

AnimatedSpriteDataManager::AnimatedSpriteDataManager() { LoadSpriteName2ID(ListPath().c_str()); }

AnimatedSpriteDataManager::~AnimatedSpriteDataManager() {}

int AnimatedSpriteDataManager::LoadSpriteName2ID(const char* path) {
  mIDToSpriteName.clear();
  File file;
  if (!file.open(path, "r")) return 0;
  char line[1024];
  int id = 0;
  while (file.gets(line, sizeof line) != 0) {
    size_t length = strlen(line);
    for (int removed = 0; removed < 2 && length > 0 && IsLineEnd(line[length - 1]); ++removed) line[--length] = 0;
    // Shorter lines, blank ones among them, are skipped and take no number.
    if (length < 3) continue;
    mIDToSpriteName[id] = line;
    mSpriteNameToID[line] = id;
    ++id;
  }
  return 1;
}

unsigned int AnimatedSpriteDataManager::add(const std::string& name) {
  // 1.
  std::map<std::string, unsigned int>::iterator known = mNameToID.find(name);
  if (known != mNameToID.end()) {
    std::map<unsigned int, ManagedItem*>::iterator item = mItems.find(known->second);
    if (item != mItems.end()) {
      ++item->second->mRefCount;
      return known->second;
    }
  }
  // 2.
  AnimatedSpriteData* sprite = new AnimatedSpriteData(name.c_str());
  if (sprite->Load(name.c_str()) == 0) {
    delete sprite;
    return 0;
  }
  // 3.
  const unsigned int id = ++mLastID;
  mNameToID[name] = id;
  mItems[id] = sprite;
  ++sprite->mRefCount;
  return id;
}

int AnimatedSpriteDataManager::getSpriteIDByName(const std::string& name) const {
  std::map<std::string, int>::const_iterator found = mSpriteNameToID.find(name);
  return found == mSpriteNameToID.end() ? -1 : found->second;
}

const char* AnimatedSpriteDataManager::getSpriteNameByID(int id) const {
  std::map<int, std::string>::const_iterator found = mIDToSpriteName.find(id);
  return found == mIDToSpriteName.end() ? 0 : found->second.c_str();
}
