#pragma once
// The panel over the field: three buttons that turn the walker's effects on and
// off (blend, trail, glowing edge), a line of help, the player's tune kits and
// the footsteps counted, all in baked bitmap fonts. It takes the input: a tap on
// a button toggles it, a tap elsewhere sends the walker there, the arrows send
// it a stride that way, "back" ends the title. Held flat the buttons lie along
// the bottom; held upright they stand in a column on the right.
#include "BaseFramework/IScene.h"
#include "FieldScene.h"

namespace walker {

class PanelScene : public IScene {
 public:
  explicit PanelScene(FieldScene& field) : mField(field) {}
  void Update(float dt) override;
  void Render() override;

  struct Rect {
    int x, y, width, height;
    bool Contains(int px, int py) const { return px >= x && px < x + width && py >= y && py < y + height; }
  };
  // Where effect button `effect` stands in the current orientation.
  Rect ButtonRect(EEffect effect) const;
  bool upright() const { return mUpright; }
  int toggles() const { return mToggles; }

 private:
  void Toggle(EEffect effect);

  FieldScene& mField;
  bool mUpright = false;
  int mToggles = 0;
};

}  // namespace walker
