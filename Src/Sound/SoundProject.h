#ifndef SRC_SOUND_SOUNDPROJECT_H
#define SRC_SOUND_SOUNDPROJECT_H
// All cues of a title, read from one XML file. Element names are free: a
// node's place and its attributes say what it is (root, groups, cues, nodes).
#include <map>
#include <string>

class SoundCue;

class SoundProject {
 public:
  SoundProject();
  // Deletes the cues, and they their nodes.
  ~SoundProject();

  // Clears the map and loads `path`. Throws std::runtime_error ("cannot open
  // file " and the path) when the file can't be read, and rapidxml::parse_error
  // for broken XML.
  void loadFromFile(const std::string& path);

  // Null when there is no such cue.
  SoundCue* getSoundCueByName(const std::string& name) const;
  // The hash must be one of a loaded cue.
  std::string getSoundCueNameByHashValue(unsigned int hash) const;

  // The key of a cue's name: h = h * 31 + byte, 32-bit.
  static unsigned int getHashValue(const std::string& name);

 private:
  SoundProject(const SoundProject&);
  SoundProject& operator=(const SoundProject&);

  std::map<unsigned int, SoundCue*> mSoundCues;  // owned
};

#endif
