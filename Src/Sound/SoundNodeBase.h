#ifndef SRC_SOUND_SOUNDNODEBASE_H
#define SRC_SOUND_SOUNDNODEBASE_H
// A node of a cue's graph. Nodes are made in a first pass over the cue's
// elements and loaded in a second, so that a node's children may be any nodes
// of the cue, later ones too.
#include <string>
#include <vector>

#include "Sound/SoundParams.h"

namespace rapidxml {
template <class Ch>
class xml_node;
}

class SoundCue;

class SoundNodeBase {
 public:
  // `numChildSlots` empty child slots until load says otherwise.
  SoundNodeBase(SoundCue& cue, int numChildSlots);
  virtual ~SoundNodeBase();

  // Plays the node with `params`: here, each child in turn.
  virtual void parse(SoundParams& params);
  // Only leaf nodes have a file.
  virtual std::string getFileName() const;
  virtual bool isLeafNode() const { return false; }
  // Reads the kind's own attributes.
  virtual void doLoad(rapidxml::xml_node<char>* element) = 0;

  int getNumChild() const { return (int)mChildNodes.size(); }
  const std::vector<SoundNodeBase*>& getChildNodes() const { return mChildNodes; }
  SoundNodeBase* getChild(int childIndex) const;
  void setChild(int childIndex, SoundNodeBase* child);

  // Reads "Children", then the kind's own attributes.
  void load(rapidxml::xml_node<char>* element);

 protected:
  std::vector<SoundNodeBase*> mChildNodes;  // borrowed from the cue
  SoundCue& mSoundCue;

 private:
  SoundNodeBase(const SoundNodeBase&);
  SoundNodeBase& operator=(const SoundNodeBase&);
};

#endif
