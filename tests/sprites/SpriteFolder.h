#pragma once
// A title's folder with sprites under res/AnimatedSprites/, made in a temporary
// folder that is the working directory while it lives.
#include <sys/stat.h>

#include <string>

#include "SpriteTestSupport.h"
#include "ygui/YguiTestSupport.h"

namespace spritetest {

class SpriteFolder {
 public:
  SpriteFolder() : mWork(mDir.path()) {
    mkdir(mDir.file("res").c_str(), 0755);
    mkdir(Root().c_str(), 0755);
  }
  std::string Root() const { return mDir.file("res/AnimatedSprites"); }
  // The folder of sprite `name`, made if missing.
  std::string Folder(const std::string& name) const {
    const std::string folder = Root() + "/" + name;
    mkdir(folder.c_str(), 0755);
    return folder;
  }
  void WriteAnim(const std::string& name, const AnimFileLayout& file) const {
    zvtest::WriteBytes(Folder(name) + "/" + name + ".anim", MakeAnim(file));
  }
  void WriteTal(const std::string& name, const std::string& layer, const Bytes& bytes) const {
    zvtest::WriteBytes(Folder(name) + "/" + name + "_" + layer + ".tal", bytes);
  }
  // A sprite with one animation and atlas layer "base".
  void WriteSprite(const std::string& name, const TalLayout& tal) const {
    WriteAnim(name, OneAnimation("base"));
    WriteTal(name, "base", MakeTal(tal));
  }
  void WriteList(const std::string& text) const { zvtest::WriteText(Root() + "/AnimatedSpritesList.txt", text); }

  static AnimFileLayout OneAnimation(const std::string& layer) {
    AnimFileLayout file;
    file.anims.resize(1);
    file.anims[0].name = "idle";
    file.anims[0].keys = KeysAt({0.0f, 1.0f});
    file.layers[0] = layer;
    return file;
  }

 private:
  zvtest::TempDir mDir;
  ygtest::ScopedWorkDir mWork;
};

}  // namespace spritetest
