#ifndef SRC_SOUND_SOUNDCUE_H
#define SRC_SOUND_SOUNDCUE_H
// A named sound of the project: a small graph of nodes that decides, each time
// the cue plays, which files sound and how.
#include <string>
#include <vector>

class SoundNodeBase;

class SoundCue {
 public:
  SoundCue();
  // Deletes the cue's nodes.
  ~SoundCue();

  const std::string& getName() const { return mName; }
  void setName(const std::string& name) { mName = name; }
  int getVolume() const { return mVolume; }
  // Held in 0 to 100.
  void setVolume(int volume);
  int getPan() const { return mPan; }
  void setPan(int pan) { mPan = pan; }
  SoundNodeBase* getFirstNode() const { return mFirstNode; }
  void setFirstNode(SoundNodeBase* node) { mFirstNode = node; }
  int isMusic() const { return mIsMusic; }
  void setIsMusic(int isMusic) { mIsMusic = isMusic; }
  int isBenSpeaking() const { return mIsBenSpeaking; }
  void setIsBenSpeaking(int isBenSpeaking) { mIsBenSpeaking = isBenSpeaking; }

  // The cue takes ownership.
  void addSoundNode(SoundNodeBase* node) { mNodes.push_back(node); }
  int getNumSoundNodes() const { return (int)mNodes.size(); }
  // Null for an index outside the list.
  SoundNodeBase* getNodeByIndex(int index) const;
  // -1 for a node that isn't the cue's.
  int getNodeIndex(SoundNodeBase* node) const;
  // The file of the first leaf node; a cue without one is a broken project.
  std::string getFileName() const;

 private:
  SoundCue(const SoundCue&);
  SoundCue& operator=(const SoundCue&);

  std::string mName;
  int mVolume;
  int mPan;
  SoundNodeBase* mFirstNode;  // one of mNodes
  std::vector<SoundNodeBase*> mNodes;
  int mIsMusic;
  int mIsBenSpeaking;
};

#endif
