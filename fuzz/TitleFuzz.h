#pragma once
// The recorder title, in-process on a fresh simulated device with its real
// resources, started with launch parameters and run to its first drawn frames.
#include <unistd.h>

#include <boost/shared_ptr.hpp>
#include <string>

#include "CJSonFile.h"
#include "FuzzSupport.h"
#include "RenderSystem/XFontManager.h"
#include "VT/ZvMicrophoneWidgetInstance.h"
#include "solva/Audio.h"
#include "solva/Capture.h"
#include "solva/Clock.h"
#include "solva/Device.h"
#include "solva/Display.h"
#include "solva/Events.h"

namespace fuzz {

// `params` is JSON text that parses; each run gets its own tree, which the title
// writes its answer into.
inline void RunTitle(const std::string& params) {
  RunOrAssert([&] {
    boost::shared_ptr<Catalog::CJSonFile> tree(new Catalog::CJSonFile());
    tree->Parse(params);
    FreshDevice(ZV_SOURCE_DIR);
    solva::SetMicSource(solva::MicSource::Tone);
    solva::SetDisplayBackend("headless");
    ZvMicrophoneWidgetInstance app(&tree);
    app.Enter();
    // The scene is pushed at the second frame and draws from the third.
    for (int frame = 0; frame < 3; ++frame) {
      solva::DeliverEvents();
      solva::AdvanceClockMicros(33333);
      solva::PumpCapture();
      solva::PumpAudio();
      app.Update();
    }
    app.Exit();
    // Without 3D the font manager outlives the title, as on the device, where the
    // process ends with it; here the next run starts another title.
    delete XFontManager::instance_;
    XFontManager::instance_ = nullptr;
  });
}

}  // namespace fuzz
