#include "Sound/SoundNodeLoop.h"

#include <stdlib.h>

#include <rapidxml.hpp>

SoundNodeLoop::SoundNodeLoop(SoundCue& cue) : SoundNodeBase(cue, 1), mLoopCount(-1) {}

void SoundNodeLoop::parse(SoundParams& params) {
  params.mLoopCount = mLoopCount;
  SoundNodeBase::parse(params);
}

void SoundNodeLoop::doLoad(rapidxml::xml_node<char>* element) {
  rapidxml::xml_attribute<char>* attribute = element->first_attribute("LoopCount");
  mLoopCount = attribute != 0 ? atoi(attribute->value()) : 0;
}
