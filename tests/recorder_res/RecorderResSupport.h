#pragma once
// Shared by the checks of the recorder's own resources: the title's folder to run
// in, its layouts loaded as the menu loads them, and rectangles to compare.
#include <gtest/gtest.h>

#include <memory>
#include <string>

#include "YGUI/YGUIControl.h"
#include "YGUI/YGUIGrid.h"
#include "ygui/YguiTestSupport.h"

namespace restest {

// The title's folder: res/ below it, as while the title runs.
inline std::string TitleRoot() { return std::string(ZV_SOURCE_DIR); }

struct Box {
  int x, y, w, h;
  bool Contains(const Box& o) const { return o.x >= x && o.y >= y && o.x + o.w <= x + w && o.y + o.h <= y + h; }
  bool Overlaps(const Box& o) const { return o.x < x + w && x < o.x + o.w && o.y < y + h && y < o.y + o.h; }
};

inline std::ostream& operator<<(std::ostream& out, const Box& b) {
  return out << "(" << b.x << ", " << b.y << ") " << b.w << " x " << b.h;
}

inline Box BoxOf(const YGUIControl& c) { return Box{c.GetPositionX(), c.GetPositionY(), c.GetWidth(), c.GetHeight()}; }

// A layout of res/UI/Page/ loaded into a grid the way the menu does it.
struct LoadedGrid {
  explicit LoadedGrid(const std::string& file) : grid(nullptr) {
    ygtest::ScopedWorkDir work(TitleRoot());
    grid.SetSize(480, 272);
    grid.LoadFromXml("res/UI/Page/" + file);
  }
  ~LoadedGrid() { grid.Destroy(); }
  YGUIControl* Find(const std::string& name) const { return grid.GetControlByName(name); }

  ygtest::ScopedTextureManager textures;
  YGUIGrid grid;
};

}  // namespace restest
