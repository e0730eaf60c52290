#ifndef SRC_RENDERSYSTEM_ANIMATEDSPRITEDATAMANAGER_H
#define SRC_RENDERSYSTEM_ANIMATEDSPRITEDATAMANAGER_H
// Shares the loaded sprites among the models that show them, and knows the title's
// sprite names from "res/AnimatedSprites/AnimatedSpritesList.txt": one name a
// line, each numbered by its place among the lines taken, from 0. A title that
// draws sprites creates it after the texture manager.
#include <map>
#include <string>

#include "Base/singleton.h"
#include "RenderSystem/SimpleManager.h"

class AnimatedSpriteDataManager : public SimpleManager,
                                  public Singleton<AnimatedSpriteDataManager, Tag_Singleton_Manual> {
 public:
  // Reads the list of sprite names.
  AnimatedSpriteDataManager();
  virtual ~AnimatedSpriteDataManager();

  // The ID of the loaded sprite `name`; 0 when its animations can't be loaded.
  unsigned int add(const std::string& name) override;

  // Nonzero when the list could be opened. A line is taken when it has at least
  // 3 characters before its line end; up to two trailing tabs, line feeds or
  // carriage returns are removed; a line holds at most 1023 characters.
  int LoadSpriteName2ID(const char* path);
  int getSpriteIDByName(const std::string& name) const;  // -1 when not listed
  const char* getSpriteNameByID(int id) const;            // null when not listed

  std::map<int, std::string> mIDToSpriteName;
  std::map<std::string, int> mSpriteNameToID;
};

#endif
