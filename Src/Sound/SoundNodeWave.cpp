#include "Sound/SoundNodeWave.h"

#include <rapidxml.hpp>

#include "Base/colorPrintf.h"
#include "Sound/AudioDevice.h"
#include "Sound/SoundCue.h"

SoundNodeWave::SoundNodeWave(SoundCue& cue) : SoundNodeBase(cue, 0) {}

void SoundNodeWave::parse(SoundParams& params) {
  if (mFileName.empty()) {
    // The console's colour 14; colorPrintf ignores colours anyway.
    colorPrintf(static_cast<EPrintfColor>(14), "Sound cue [%s] did not set any wave\n", mSoundCue.getName().c_str());
    return;
  }
  AudioDevice::sInstance()->playSound(mFileName, params);
}

void SoundNodeWave::doLoad(rapidxml::xml_node<char>* element) {
  rapidxml::xml_attribute<char>* attribute = element->first_attribute("FileName");
  mFileName = attribute != 0 ? attribute->value() : "";
  const std::string::size_type dot = mFileName.rfind('.');
  if (dot == std::string::npos || mFileName.compare(dot, std::string::npos, ".wav") != 0) mFileName.clear();
}
