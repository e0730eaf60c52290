#include "SpriteBuilder.h"

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <map>
#include <sstream>

#include "SpriteDescription.h"
#include "SpriteFiles.h"
#include "TileAtlas.h"

namespace spritebuilder {

namespace fs = std::filesystem;

namespace {

bool ReadText(const std::string& path, std::string* text, std::string* error) {
  std::ifstream in(path, std::ios::binary);
  if (!in) {
    *error = path + ": cannot be read";
    return false;
  }
  std::ostringstream all;
  all << in.rdbuf();
  *text = all.str();
  return true;
}

// Pages of an earlier build past the new count would lie about the sprite.
void RemoveStalePages(const std::string& base, size_t pages) {
  for (size_t i = pages;; ++i) {
    const std::string stale = base + std::to_string(i) + ".udi";
    std::error_code ignored;
    if (!fs::remove(stale, ignored)) break;
  }
}

}  // namespace

bool Build(const Options& options, Report* report, std::string* error) {
  *report = Report();
  std::string text;
  if (!ReadText(options.description, &text, error)) return false;
  Description description;
  if (!ParseDescription(text, options.description, &description, error)) return false;

  // Each PNG is one atlas frame, numbered in order of first use.
  const fs::path folder = fs::path(options.description).parent_path();
  std::map<std::string, uint16_t> frameOf;
  std::vector<Image> images;
  std::vector<std::vector<uint16_t>> spriteOf;
  for (const Animation& anim : description.animations) {
    spriteOf.emplace_back();
    for (const Frame& frame : anim.frames) {
      const std::string path = (folder / frame.png).lexically_normal().string();
      auto found = frameOf.find(path);
      if (found == frameOf.end()) {
        if (images.size() >= 0xFFFF) {
          *error = options.description + ":" + std::to_string(frame.line) + ": more than 65535 different frames";
          return false;
        }
        Image image;
        std::string why;
        if (!ReadPngFrame(path, &image, &why)) {
          *error = options.description + ":" + std::to_string(frame.line) + ": " + why;
          return false;
        }
        ClearTransparentPixels(&image);
        found = frameOf.emplace(path, uint16_t(images.size())).first;
        images.push_back(std::move(image));
      }
      spriteOf.back().push_back(found->second);
    }
    const Frame& first = anim.frames.front();
    if (first.event != 0 || first.value != 0) {
      report->warnings.push_back(options.description + ":" + std::to_string(first.line) +
                                 ": the event or value of an animation's first frame is not reported in forward "
                                 "play (play lands on it without passing it)");
    }
  }

  Atlas atlas;
  std::string why;
  if (!BuildAtlas(images, options.pageSize, &atlas, &why)) {
    *error = options.description + ": " + why;
    return false;
  }

  const fs::path root(options.out);
  const fs::path spriteFolder = root / description.sprite;
  std::error_code made;
  fs::create_directories(spriteFolder, made);
  if (made) {
    *error = spriteFolder.string() + ": " + made.message();
    return false;
  }
  const std::string base = (spriteFolder / description.sprite).string();
  const std::string atlasBase = base + "_" + description.layer;
  auto write = [&](const std::string& path, const Bytes& bytes) {
    if (!WriteFileWhole(path, bytes, error)) return false;
    report->written.push_back(path);
    return true;
  };
  if (!write(base + ".anim", AnimBytes(description, spriteOf))) return false;
  if (!write(atlasBase + ".tal", TalBytes(atlas))) return false;
  for (size_t i = 0; i < atlas.pages.size(); ++i) {
    if (!write(atlasBase + "_page" + std::to_string(i) + ".udi", UdiBytes(atlas.pages[i]))) return false;
  }
  RemoveStalePages(atlasBase + "_page", atlas.pages.size());
  const std::string list = (root / "AnimatedSpritesList.txt").string();
  if (!AddToSpriteList(list, description.sprite, error)) return false;
  report->written.push_back(list);

  std::ostringstream summary;
  summary << description.sprite << ": " << description.animations.size() << " animation(s), " << images.size()
          << " frame(s), " << atlas.cellCount << " cell(s), " << atlas.tileCount << " distinct tile(s) on "
          << atlas.pages.size() << " page(s) of " << options.pageSize << " pixels, in " << spriteFolder.string();
  report->summary = summary.str();
  return true;
}

}  // namespace spritebuilder
