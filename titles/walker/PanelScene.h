#pragma once
// The panel over the field: three buttons that turn the walker's effects on and
// off (blend, trail, glowing edge), a line of help, the player's tune kits and
// the footsteps counted, all in baked bitmap fonts. It takes the input: a tap on
// a button toggles it, a tap elsewhere sends the walker there, the arrows send
// it a stride that way, "back" ends the title. Everything is laid out on the
// screen as held (Screen): the buttons in a row at the bottom right, narrower
// upright, the texts wrapped to the width.
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
  // Where effect button `effect` stands on the screen as held, in logical coordinates.
  Rect ButtonRect(EEffect effect) const;
  int toggles() const { return mToggles; }

 private:
  void Toggle(EEffect effect);

  FieldScene& mField;
  int mToggles = 0;
};

}  // namespace walker
