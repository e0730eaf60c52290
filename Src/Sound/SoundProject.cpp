#include "Sound/SoundProject.h"

#include <assert.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>

#include <rapidxml.hpp>
#include <stdexcept>
#include <vector>

#include "Sound/SoundCue.h"
#include "Sound/SoundNodeLoop.h"
#include "Sound/SoundNodeMixer.h"
#include "Sound/SoundNodeOgg.h"
#include "Sound/SoundNodeRandom.h"
#include "Sound/SoundNodeWave.h"

// One more layer, so that NULL is expanded before the expression is quoted.
#define SOUND_ASSERT(expr) assert(expr)

namespace {

typedef rapidxml::xml_node<char> XmlNode;

// Text between the elements is no node of the project.
XmlNode* firstElement(XmlNode* parent) {
  XmlNode* node = parent->first_node();
  while (node != 0 && node->type() != rapidxml::node_element) node = node->next_sibling();
  return node;
}

XmlNode* nextElement(XmlNode* node) {
  node = node->next_sibling();
  while (node != 0 && node->type() != rapidxml::node_element) node = node->next_sibling();
  return node;
}

const char* attributeText(XmlNode* node, const char* name) {
  rapidxml::xml_attribute<char>* attribute = node->first_attribute(name);
  return attribute != 0 ? attribute->value() : 0;
}

int attributeInt(XmlNode* node, const char* name, int fallback) {
  const char* text = attributeText(node, name);
  return text != 0 ? atoi(text) : fallback;
}

SoundNodeBase* createNode(const char* kind, SoundCue& cue) {
  if (strcmp(kind, "Wave") == 0) return new SoundNodeWave(cue);
  if (strcmp(kind, "Ogg") == 0) return new SoundNodeOgg(cue);
  if (strcmp(kind, "Loop") == 0) return new SoundNodeLoop(cue);
  if (strcmp(kind, "Random") == 0) return new SoundNodeRandom(cue);
  if (strcmp(kind, "Mixer") == 0) return new SoundNodeMixer(cue);
  return NULL;
}

}  // namespace

SoundProject::SoundProject() {}

SoundProject::~SoundProject() {
  for (std::map<unsigned int, SoundCue*>::iterator it = mSoundCues.begin(); it != mSoundCues.end(); ++it) {
    delete it->second;
  }
}

unsigned int SoundProject::getHashValue(const std::string& name) {
  unsigned int h = 0;
  for (size_t i = 0; i < name.size(); ++i) h = h * 31u + (unsigned char)name[i];
  return h;
}

void SoundProject::loadFromFile(const std::string& path) {
  // The project is loaded once; cues of an earlier load are forgotten, not deleted.
  mSoundCues.clear();

  FILE* file = fopen(path.c_str(), "rb");
  if (file == NULL) throw std::runtime_error("cannot open file " + path);
  std::vector<char> text;
  char block[4096];
  size_t got;
  while ((got = fread(block, 1, sizeof block, file)) > 0) text.insert(text.end(), block, block + got);
  fclose(file);
  text.push_back('\0');

  // Parsed in place: every string is copied out before `text` goes.
  rapidxml::xml_document<char> document;
  document.parse<0>(&text[0]);
  XmlNode* root = firstElement(&document);
  if (root == 0) return;

  for (XmlNode* group = firstElement(root); group != 0; group = nextElement(group)) {
    int groupVolume = attributeInt(group, "Volume", 100);
    if (groupVolume > 100) groupVolume = 100;

    for (XmlNode* cueElement = firstElement(group); cueElement != 0; cueElement = nextElement(cueElement)) {
      const char* name = attributeText(cueElement, "Name");
      SoundCue* cue = new SoundCue();
      cue->setName(name != 0 ? name : "");
      const unsigned int hash = getHashValue(cue->getName());
      if (mSoundCues.find(hash) != mSoundCues.end()) {
        // The first of two cues with the same hash stays.
        delete cue;
        continue;
      }
      mSoundCues[hash] = cue;

      const int volume = attributeInt(cueElement, "Volume", 100);
      cue->setVolume(volume * groupVolume / 100);
      cue->setPan(attributeInt(cueElement, "Pan", 0));
      cue->setIsMusic(attributeInt(cueElement, "IsMusic", 0) != 0 ? 1 : 0);
      cue->setIsBenSpeaking(attributeInt(cueElement, "IsBenSpeaking", 0) != 0 ? 1 : 0);

      // First pass: make the nodes, so that "Children" may name any of them.
      std::vector<XmlNode*> nodeElements;
      for (XmlNode* nodeElement = firstElement(cueElement); nodeElement != 0; nodeElement = nextElement(nodeElement)) {
        const char* kind = attributeText(nodeElement, "Name");
        SoundNodeBase* soundNode = createNode(kind != 0 ? kind : "", *cue);
        SOUND_ASSERT(soundNode != NULL);
        cue->addSoundNode(soundNode);
        nodeElements.push_back(nodeElement);
      }

      cue->setFirstNode(cue->getNodeByIndex(attributeInt(cueElement, "FirstNode", 0)));

      // Second pass: children and the kinds' own attributes.
      for (size_t i = 0; i < nodeElements.size(); ++i) cue->getNodeByIndex((int)i)->load(nodeElements[i]);
    }
  }
}

SoundCue* SoundProject::getSoundCueByName(const std::string& name) const {
  std::map<unsigned int, SoundCue*>::const_iterator found = mSoundCues.find(getHashValue(name));
  return found != mSoundCues.end() ? found->second : 0;
}

std::string SoundProject::getSoundCueNameByHashValue(unsigned int hash) const {
  std::map<unsigned int, SoundCue*>::const_iterator found = mSoundCues.find(hash);
  assert(found != mSoundCues.end());
  return found->second->getName();
}
