// Layout files of the toolkit: a grid read from the input, then animated and
// touched as a menu does.
#include <rapidxml.hpp>

#include "FuzzSupport.h"
#include "RenderSystem/GLTextureManager.h"
#include "YGUI/YGUIEventObserver.h"
#include "YGUI/YGUIGrid.h"
#include "YGUI/YGUIMessage.h"

namespace {
class Observer : public YGUIEventObserver {
 public:
  void NotifyEventYGUI(ENotifyEventType, void*, void*) override {}
};
}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  if (GLTextureManager::instance_ == nullptr) GLTextureManager::sCreate();  // pictures ask for it
  const std::string path = fuzz::InputFile(data, size, ".xml");
  fuzz::RunOrAssert([&] {
    Observer observer;
    YGUIGrid grid(&observer);
    grid.SetSize(480, 272);
    try {
      grid.LoadFromXml(path);
      for (int i = 0; i < 4; ++i) grid.Update(0.1f);
      YGUIMessage touch;
      touch.mEvent = YGUIMessage::eEvent_StylusDown;
      touch.mX = 100;
      touch.mY = 100;
      grid.DealMessage(touch);
      touch.mEvent = YGUIMessage::eEvent_StylusUp;
      grid.DealMessage(touch);
      grid.IsAnimeFinished();
    } catch (const rapidxml::parse_error&) {
      // broken XML: the documented answer
    }
    grid.Destroy();
  });
  return 0;
}
