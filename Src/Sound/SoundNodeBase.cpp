#include "Sound/SoundNodeBase.h"

#include <assert.h>
#include <stdlib.h>
#include <string.h>

#include <rapidxml.hpp>

#include "Sound/SoundCue.h"

SoundNodeBase::SoundNodeBase(SoundCue& cue, int numChildSlots) : mChildNodes(numChildSlots, (SoundNodeBase*)0), mSoundCue(cue) {}

SoundNodeBase::~SoundNodeBase() {}

void SoundNodeBase::parse(SoundParams& params) {
  for (size_t i = 0; i < mChildNodes.size(); ++i) {
    if (mChildNodes[i] != 0) mChildNodes[i]->parse(params);
  }
}

std::string SoundNodeBase::getFileName() const {
  assert(!"This node is not a leaf node!");
  return std::string();
}

SoundNodeBase* SoundNodeBase::getChild(int childIndex) const {
  assert(childIndex >= 0 && childIndex <= (int)mChildNodes.size());
  // The check lets the index one past the end through; there is no slot there.
  if (childIndex == (int)mChildNodes.size()) return 0;
  return mChildNodes[childIndex];
}

void SoundNodeBase::setChild(int childIndex, SoundNodeBase* child) {
  assert(childIndex >= 0 && childIndex <= (int)mChildNodes.size());
  // The check lets the index one past the end through; there is no slot there.
  if (childIndex == (int)mChildNodes.size()) return;
  mChildNodes[childIndex] = child;
}

void SoundNodeBase::load(rapidxml::xml_node<char>* element) {
  const char* children = "";
  rapidxml::xml_attribute<char>* attribute = element->first_attribute("Children");
  if (attribute != 0) children = attribute->value();
  assert((strlen(children) + 1) < 50);

  char buffer[50];
  strcpy(buffer, children);
  int count = 0;
  for (const char* c = buffer; *c != '\0'; ++c) {
    if (*c == ';') ++count;
  }
  // Each index ends with ";": a list without the last one loses its last entry.
  if (count != 0) mChildNodes.resize(count, (SoundNodeBase*)0);

  char* rest = 0;
  char* token = strtok_r(buffer, ";", &rest);
  for (size_t i = 0; i < mChildNodes.size(); ++i) {
    if (token != 0) {
      mChildNodes[i] = mSoundCue.getNodeByIndex(atoi(token));
      token = strtok_r(0, ";", &rest);
    } else {
      mChildNodes[i] = 0;
    }
  }
  doLoad(element);
}
