// SoundCue and SoundNodeBase on their own.
#include "Sound/SoundNodeLoop.h"
#include "Sound/SoundNodeMixer.h"
#include "Sound/SoundNodeWave.h"
#include "SoundFixture.h"

namespace {

TEST(SoundCue, StartsWithItsDefaults) {
  SoundCue cue;
  EXPECT_EQ("", cue.getName());
  EXPECT_EQ(100, cue.getVolume());
  EXPECT_EQ(0, cue.getPan());
  EXPECT_EQ(nullptr, cue.getFirstNode());
  EXPECT_EQ(0, cue.getNumSoundNodes());
  EXPECT_EQ(0, cue.isMusic());
  EXPECT_EQ(0, cue.isBenSpeaking());
}

TEST(SoundCue, SetVolumeHoldsTheValueIn0To100) {
  SoundCue cue;
  cue.setVolume(101);
  EXPECT_EQ(100, cue.getVolume());
  cue.setVolume(-1);
  EXPECT_EQ(0, cue.getVolume());
  cue.setVolume(42);
  EXPECT_EQ(42, cue.getVolume());
}

TEST(SoundCue, NodesAreFoundByIndexAndIndexByNode) {
  SoundCue cue;
  SoundNodeBase* a = new SoundNodeMixer(cue);
  SoundNodeBase* b = new SoundNodeLoop(cue);
  cue.addSoundNode(a);
  cue.addSoundNode(b);
  EXPECT_EQ(2, cue.getNumSoundNodes());
  EXPECT_EQ(a, cue.getNodeByIndex(0));
  EXPECT_EQ(b, cue.getNodeByIndex(1));
  EXPECT_EQ(nullptr, cue.getNodeByIndex(2));
  EXPECT_EQ(nullptr, cue.getNodeByIndex(-1));
  EXPECT_EQ(1, cue.getNodeIndex(b));
  SoundNodeMixer stranger(cue);
  EXPECT_EQ(-1, cue.getNodeIndex(&stranger));
  EXPECT_EQ(-1, cue.getNodeIndex(nullptr));
}

class SoundCueFileTest : public SoundTest {};

TEST_F(SoundCueFileTest, FileNameIsThatOfTheFirstLeaf) {
  SoundProject project;
  project.loadFromFile(writeProject("<G><C Name='c'><N Name='Loop' Children='2;'/><N Name='Wave' FileName='first.wav'/>"
                                    "<N Name='Wave' FileName='second.wav'/></C></G>"));
  EXPECT_EQ("first.wav", project.getSoundCueByName("c")->getFileName());
}

TEST(SoundCueDeathTest, CueWithoutALeafFailsTheAssertion) {
  SoundCue cue;
  cue.addSoundNode(new SoundNodeMixer(cue));
  EXPECT_DEATH(cue.getFileName(),
               zvtest::Literal("Src/Sound/SoundCue.cpp:") + "[0-9]+" +
                   zvtest::Literal(": std::string SoundCue::getFileName() const: Assertion `!\"This is not a vaild sound "
                                   "cue, please check the sound project!\"' failed."));
}

TEST(SoundNodeBase, ChildSlotsAreSetAndRead) {
  SoundCue cue;
  SoundNodeMixer mixer(cue);
  SoundNodeWave leaf(cue);
  EXPECT_EQ(1, mixer.getNumChild());
  mixer.setChild(0, &leaf);
  EXPECT_EQ(&leaf, mixer.getChild(0));
  EXPECT_EQ(&leaf, mixer.getChildNodes()[0]);
}

TEST(SoundNodeBase, IndexOneTooManyPassesTheCheckAndFindsNothing) {
  SoundCue cue;
  SoundNodeMixer mixer(cue);
  SoundNodeWave leaf(cue);
  EXPECT_EQ(nullptr, mixer.getChild(1));
  mixer.setChild(1, &leaf);
  EXPECT_EQ(1, mixer.getNumChild());
  EXPECT_EQ(nullptr, mixer.getChild(0));
}

TEST(SoundNodeBase, OnlyLeavesAreLeaves) {
  SoundCue cue;
  EXPECT_FALSE(SoundNodeMixer(cue).isLeafNode());
  EXPECT_FALSE(SoundNodeLoop(cue).isLeafNode());
  EXPECT_TRUE(SoundNodeWave(cue).isLeafNode());
}

const char* const kChildCheck = "childIndex >= 0 && childIndex <= (int)mChildNodes.size()";

TEST(SoundNodeBaseDeathTest, IndexTwoTooManyFailsTheAssertion) {
  SoundCue cue;
  SoundNodeMixer mixer(cue);
  EXPECT_DEATH(mixer.getChild(2),
               zvtest::Literal("Src/Sound/SoundNodeBase.cpp:") + "[0-9]+" +
                   zvtest::Literal(std::string(": SoundNodeBase* SoundNodeBase::getChild(int) const: Assertion `") +
                                   kChildCheck + "' failed."));
}

TEST(SoundNodeBaseDeathTest, NegativeIndexFailsTheAssertion) {
  SoundCue cue;
  SoundNodeMixer mixer(cue);
  EXPECT_DEATH(mixer.setChild(-1, nullptr),
               zvtest::Literal("Src/Sound/SoundNodeBase.cpp:") + "[0-9]+" +
                   zvtest::Literal(std::string(": void SoundNodeBase::setChild(int, SoundNodeBase*): Assertion `") +
                                   kChildCheck + "' failed."));
}

TEST(SoundNodeBaseDeathTest, FileNameOfANodeThatIsNoLeafFailsTheAssertion) {
  SoundCue cue;
  SoundNodeLoop loop(cue);
  EXPECT_DEATH(loop.getFileName(),
               zvtest::Literal("Src/Sound/SoundNodeBase.cpp:") + "[0-9]+" +
                   zvtest::Literal(": virtual std::string SoundNodeBase::getFileName() const: Assertion `!\"This node is "
                                   "not a leaf node!\"' failed."));
}

}  // namespace
