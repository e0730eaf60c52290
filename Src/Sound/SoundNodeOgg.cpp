#include "Sound/SoundNodeOgg.h"

#include <rapidxml.hpp>

#include "Base/colorPrintf.h"
#include "Sound/AudioDevice.h"
#include "Sound/SoundCue.h"

SoundNodeOgg::SoundNodeOgg(SoundCue& cue) : SoundNodeBase(cue, 0) {}

void SoundNodeOgg::parse(SoundParams& params) {
  if (mFileName.empty()) {
    // The console's colour 14; colorPrintf ignores colours anyway.
    colorPrintf(static_cast<EPrintfColor>(14), "Sound cue [%s] did not set any ogg\n", mSoundCue.getName().c_str());
    return;
  }
  AudioDevice::sInstance()->playSound(mFileName, params);
}

void SoundNodeOgg::doLoad(rapidxml::xml_node<char>* element) {
  rapidxml::xml_attribute<char>* attribute = element->first_attribute("FileName");
  mFileName = attribute != 0 ? attribute->value() : "";
  const std::string::size_type dot = mFileName.rfind('.');
  if (dot == std::string::npos || mFileName.compare(dot, std::string::npos, ".ogg") != 0) mFileName.clear();
}
