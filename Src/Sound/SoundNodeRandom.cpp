#include "Sound/SoundNodeRandom.h"

#include <stdio.h>
#include <stdlib.h>
#include <string.h>

#include <rapidxml.hpp>

#include "Sound/SoundRandom.h"

SoundNodeRandom::SoundNodeRandom(SoundCue& cue) : SoundNodeBase(cue, 2), mLastIndex(-1) {}

void SoundNodeRandom::parse(SoundParams& params) {
  const int n = (int)mWeights.size();
  int index = gRandom<int>(0, n);
  while (index == mLastIndex) index = gRandom<int>(0, n);
  mLastIndex = index;
  SoundNodeBase* child = getChild(index);
  if (child != 0) {
    child->parse(params);
  } else {
    // An empty slot: draw again.
    parse(params);
  }
}

void SoundNodeRandom::doLoad(rapidxml::xml_node<char>* element) {
  const size_t count = mChildNodes.size();
  rapidxml::xml_attribute<char>* attribute = element->first_attribute("Weights");
  if (attribute == 0) {
    mWeights.resize(count, 1.0f);
    return;
  }
  char buffer[200];
  // Cut at 199 characters rather than run past the buffer.
  snprintf(buffer, sizeof buffer, "%s", attribute->value());
  mWeights.resize(count);
  char* rest = 0;
  char* token = strtok_r(buffer, ";", &rest);
  for (size_t i = 0; i < count; ++i) {
    if (token != 0) {
      mWeights[i] = (float)atof(token);
      token = strtok_r(0, ";", &rest);
    } else {
      mWeights[i] = 1.0f;
    }
  }
}
