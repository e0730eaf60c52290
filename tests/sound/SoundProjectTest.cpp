// Reading sound projects: groups, cues, nodes, and the bad files.
#include <rapidxml.hpp>
#include <stdexcept>

#include "Sound/SoundNodeLoop.h"
#include "Sound/SoundNodeOgg.h"
#include "Sound/SoundNodeRandom.h"
#include "Sound/SoundNodeWave.h"
#include "SoundFixture.h"

namespace {

class SoundProjectTest : public SoundTest {
 protected:
  SoundProject& load(const std::string& body) {
    mProject.loadFromFile(writeProject(body));
    return mProject;
  }
  SoundProject mProject;
};

TEST_F(SoundProjectTest, NameHashIsTimes31PlusEachByte) {
  EXPECT_EQ(0u, SoundProject::getHashValue(""));
  EXPECT_EQ(97u, SoundProject::getHashValue("a"));
  EXPECT_EQ(97u * 31u + 98u, SoundProject::getHashValue("ab"));
  // Bytes count as unsigned, and the sum wraps at 32 bits.
  EXPECT_EQ(0xE9u, SoundProject::getHashValue("\xE9"));
  unsigned int h = 0;
  for (char c : std::string("SFX_RECORD_A_VERY_LONG_CUE_NAME")) h = h * 31u + (unsigned char)c;
  EXPECT_EQ(h, SoundProject::getHashValue("SFX_RECORD_A_VERY_LONG_CUE_NAME"));
}

TEST_F(SoundProjectTest, CueVolumeIsCueTimesGroupOver100) {
  load("<G Volume='50'><C Name='half' Volume='50'><N Name='Wave' FileName='a.wav'/></C></G>");
  ASSERT_NE(nullptr, mProject.getSoundCueByName("half"));
  EXPECT_EQ(25, mProject.getSoundCueByName("half")->getVolume());
}

TEST_F(SoundProjectTest, GroupVolumeAbove100CountsAs100) {
  load("<G Volume='300'><C Name='loud' Volume='60'/></G>");
  EXPECT_EQ(60, mProject.getSoundCueByName("loud")->getVolume());
}

TEST_F(SoundProjectTest, CueVolumeIsHeldIn0To100) {
  load("<G><C Name='over' Volume='250'/><C Name='under' Volume='-5'/><C Name='odd' Volume='33'/></G>"
       "<G Volume='33'><C Name='third' Volume='50'/></G>");
  EXPECT_EQ(100, mProject.getSoundCueByName("over")->getVolume());
  EXPECT_EQ(0, mProject.getSoundCueByName("under")->getVolume());
  EXPECT_EQ(33, mProject.getSoundCueByName("odd")->getVolume());
  // 50 * 33 / 100 in integers.
  EXPECT_EQ(16, mProject.getSoundCueByName("third")->getVolume());
}

TEST_F(SoundProjectTest, MissingAttributesTakeTheirDefaults) {
  load("<G><C Name='plain'><N Name='Wave' FileName='a.wav'/></C></G>");
  const SoundCue* cue = mProject.getSoundCueByName("plain");
  ASSERT_NE(nullptr, cue);
  EXPECT_EQ(100, cue->getVolume());
  EXPECT_EQ(0, cue->getPan());
  EXPECT_EQ(0, cue->isMusic());
  EXPECT_EQ(0, cue->isBenSpeaking());
  EXPECT_EQ(cue->getNodeByIndex(0), cue->getFirstNode());
}

TEST_F(SoundProjectTest, CueAttributesAreRead) {
  load("<G><C Name='bgm' Pan='-7' IsMusic='5' IsBenSpeaking='1' FirstNode='1'>"
       "<N Name='Wave' FileName='a.wav'/><N Name='Wave' FileName='b.wav'/></C></G>");
  const SoundCue* cue = mProject.getSoundCueByName("bgm");
  EXPECT_EQ(-7, cue->getPan());
  EXPECT_EQ(1, cue->isMusic());
  EXPECT_EQ(1, cue->isBenSpeaking());
  EXPECT_EQ(cue->getNodeByIndex(1), cue->getFirstNode());
  EXPECT_EQ("b.wav", cue->getFirstNode()->getFileName());
}

TEST_F(SoundProjectTest, ElementNamesDoNotMatter) {
  load("<x><y Name='any'><zz Name='Loop' LoopCount='2' Children='1;'/><q Name='Ogg' FileName='t.ogg'/></y></x>");
  const SoundCue* cue = mProject.getSoundCueByName("any");
  ASSERT_NE(nullptr, cue);
  ASSERT_EQ(2, cue->getNumSoundNodes());
  EXPECT_NE(nullptr, dynamic_cast<SoundNodeLoop*>(cue->getNodeByIndex(0)));
  EXPECT_NE(nullptr, dynamic_cast<SoundNodeOgg*>(cue->getNodeByIndex(1)));
}

TEST_F(SoundProjectTest, TwoCuesNamedTheSameKeepTheFirst) {
  load("<G><C Name='twice' Volume='10'/></G><G><C Name='twice' Volume='90'/></G>");
  EXPECT_EQ(10, mProject.getSoundCueByName("twice")->getVolume());
}

TEST_F(SoundProjectTest, UnknownCueNameGivesNull) {
  load("<G><C Name='one'/></G>");
  EXPECT_EQ(nullptr, mProject.getSoundCueByName("two"));
}

TEST_F(SoundProjectTest, NameComesBackFromItsHash) {
  load("<G><C Name='SFX_PLAY'/><C Name='HL_ToSave'/></G>");
  EXPECT_EQ("HL_ToSave", mProject.getSoundCueNameByHashValue(SoundProject::getHashValue("HL_ToSave")));
  EXPECT_EQ("SFX_PLAY", mProject.getSoundCueNameByHashValue(SoundProject::getHashValue("SFX_PLAY")));
}

TEST_F(SoundProjectTest, FirstNodePointingAtNoNodeLeavesNone) {
  load("<G><C Name='lost' FirstNode='5'><N Name='Wave' FileName='a.wav'/></C></G>");
  EXPECT_EQ(nullptr, mProject.getSoundCueByName("lost")->getFirstNode());
}

TEST_F(SoundProjectTest, ChildrenMayNameLaterNodes) {
  load("<G><C Name='c'><N Name='Mixer' Children='2;1;'/><N Name='Wave' FileName='a.wav'/>"
       "<N Name='Wave' FileName='b.wav'/></C></G>");
  const SoundCue* cue = mProject.getSoundCueByName("c");
  SoundNodeBase* mixer = cue->getNodeByIndex(0);
  ASSERT_EQ(2, mixer->getNumChild());
  EXPECT_EQ(cue->getNodeByIndex(2), mixer->getChild(0));
  EXPECT_EQ(cue->getNodeByIndex(1), mixer->getChild(1));
}

TEST_F(SoundProjectTest, TwoIndicesWithOneSemicolonBetweenGiveOneSlotHoldingTheFirst) {
  load("<G><C Name='c'><N Name='Mixer' Children='1;2'/><N Name='Wave' FileName='a.wav'/>"
       "<N Name='Wave' FileName='b.wav'/></C></G>");
  const SoundCue* cue = mProject.getSoundCueByName("c");
  SoundNodeBase* mixer = cue->getNodeByIndex(0);
  ASSERT_EQ(1, mixer->getNumChild());
  EXPECT_EQ(cue->getNodeByIndex(1), mixer->getChild(0));
}

TEST_F(SoundProjectTest, TwoIndicesEachEndedBySemicolonGiveTwoSlots) {
  load("<G><C Name='c'><N Name='Mixer' Children='1;2;'/><N Name='Wave' FileName='a.wav'/>"
       "<N Name='Wave' FileName='b.wav'/></C></G>");
  const SoundCue* cue = mProject.getSoundCueByName("c");
  SoundNodeBase* mixer = cue->getNodeByIndex(0);
  ASSERT_EQ(2, mixer->getNumChild());
  EXPECT_EQ(cue->getNodeByIndex(1), mixer->getChild(0));
  EXPECT_EQ(cue->getNodeByIndex(2), mixer->getChild(1));
}

TEST_F(SoundProjectTest, NoChildrenKeepsTheSlotsOfTheKind) {
  load("<G><C Name='c'><N Name='Random'/><N Name='Loop'/><N Name='Mixer'/><N Name='Wave'/><N Name='Ogg'/></C></G>");
  const SoundCue* cue = mProject.getSoundCueByName("c");
  EXPECT_EQ(2, cue->getNodeByIndex(0)->getNumChild());
  EXPECT_EQ(1, cue->getNodeByIndex(1)->getNumChild());
  EXPECT_EQ(1, cue->getNodeByIndex(2)->getNumChild());
  EXPECT_EQ(0, cue->getNodeByIndex(3)->getNumChild());
  EXPECT_EQ(0, cue->getNodeByIndex(4)->getNumChild());
  for (int i = 0; i < 3; ++i) {
    for (SoundNodeBase* child : cue->getNodeByIndex(i)->getChildNodes()) EXPECT_EQ(nullptr, child);
  }
}

TEST_F(SoundProjectTest, ChildIndexOutOfRangeLeavesTheSlotEmpty) {
  load("<G><C Name='c'><N Name='Mixer' Children='7;1;'/><N Name='Wave' FileName='a.wav'/></C></G>");
  SoundNodeBase* mixer = mProject.getSoundCueByName("c")->getNodeByIndex(0);
  ASSERT_EQ(2, mixer->getNumChild());
  EXPECT_EQ(nullptr, mixer->getChild(0));
  EXPECT_NE(nullptr, mixer->getChild(1));
}

TEST_F(SoundProjectTest, ChildrenOf48BytesAreAccepted) {
  std::string children;
  while (children.size() < 48) children += "0;";
  ASSERT_EQ(48u, children.size());
  load("<G><C Name='c'><N Name='Mixer' Children='" + children + "'/></C></G>");
  EXPECT_EQ(24, mProject.getSoundCueByName("c")->getNodeByIndex(0)->getNumChild());
}

TEST_F(SoundProjectTest, LoopWithoutLoopCountHasZero) {
  load("<G><C Name='c'><N Name='Loop'/><N Name='Loop' LoopCount='-1'/><N Name='Loop' LoopCount='4'/></C></G>");
  const SoundCue* cue = mProject.getSoundCueByName("c");
  EXPECT_EQ(0, static_cast<SoundNodeLoop*>(cue->getNodeByIndex(0))->getLoopCount());
  EXPECT_EQ(-1, static_cast<SoundNodeLoop*>(cue->getNodeByIndex(1))->getLoopCount());
  EXPECT_EQ(4, static_cast<SoundNodeLoop*>(cue->getNodeByIndex(2))->getLoopCount());
}

TEST_F(SoundProjectTest, RandomWithoutWeightsHasOneForEachChild) {
  load("<G><C Name='c'><N Name='Random' Children='1;1;1;'/><N Name='Wave' FileName='a.wav'/></C></G>");
  const auto* random = static_cast<SoundNodeRandom*>(mProject.getSoundCueByName("c")->getNodeByIndex(0));
  EXPECT_EQ(std::vector<float>({1.0f, 1.0f, 1.0f}), random->getWeights());
  EXPECT_EQ(-1, random->getLastIndex());
}

TEST_F(SoundProjectTest, RandomWeightsAreOnePerChildFilledWithOne) {
  load("<G><C Name='c'><N Name='Random' Children='1;1;1;' Weights='0.5;2.25'/>"
       "<N Name='Random' Children='1;' Weights='3;4;5'/><N Name='Wave' FileName='a.wav'/></C></G>");
  const SoundCue* cue = mProject.getSoundCueByName("c");
  EXPECT_EQ(std::vector<float>({0.5f, 2.25f, 1.0f}), static_cast<SoundNodeRandom*>(cue->getNodeByIndex(0))->getWeights());
  EXPECT_EQ(std::vector<float>({3.0f}), static_cast<SoundNodeRandom*>(cue->getNodeByIndex(1))->getWeights());
}

TEST_F(SoundProjectTest, OverLongWeightsAreCutAt199Characters) {
  std::string weights(195, '0');
  weights += "1;2;3";  // 200 characters: the "3" lies past the 199 kept
  load("<G><C Name='c'><N Name='Random' Children='1;1;1;' Weights='" + weights + "'/><N Name='Wave' FileName='a.wav'/></C></G>");
  const auto* random = static_cast<SoundNodeRandom*>(mProject.getSoundCueByName("c")->getNodeByIndex(0));
  EXPECT_EQ(std::vector<float>({1.0f, 2.0f, 1.0f}), random->getWeights());
}

TEST_F(SoundProjectTest, FileNameWithTheWrongEndingIsCleared) {
  load("<G><C Name='c'><N Name='Wave' FileName='a.mp3'/><N Name='Wave' FileName='a.ogg'/><N Name='Ogg' FileName='b.wav'/>"
       "<N Name='Wave' FileName='noending'/><N Name='Wave' FileName='x.wav.bak'/><N Name='Wave' FileName='A.WAV'/>"
       "<N Name='Wave' FileName='dir.v1/a.wav'/><N Name='Ogg' FileName='b.ogg'/></C></G>");
  const SoundCue* cue = mProject.getSoundCueByName("c");
  for (int i = 0; i < 6; ++i) EXPECT_EQ("", cue->getNodeByIndex(i)->getFileName()) << i;
  EXPECT_EQ("dir.v1/a.wav", cue->getNodeByIndex(6)->getFileName());
  EXPECT_EQ("b.ogg", cue->getNodeByIndex(7)->getFileName());
}

TEST_F(SoundProjectTest, TextBetweenElementsIsNoNode) {
  load("<G>stray<C Name='c'>words<N Name='Wave' FileName='a.wav'/>more<N Name='Ogg' FileName='b.ogg'/></C></G>");
  const SoundCue* cue = mProject.getSoundCueByName("c");
  ASSERT_EQ(2, cue->getNumSoundNodes());
  EXPECT_EQ("b.ogg", cue->getNodeByIndex(1)->getFileName());
}

TEST_F(SoundProjectTest, LoadingClearsTheCuesOfTheLoadBefore) {
  // The cues of the first load are forgotten without being deleted; only
  // names that are gone are asked for here.
  SoundProject* project = new SoundProject();
  project->loadFromFile(writeProject("<G><C Name='old'/></G>"));
  SoundCue* old = project->getSoundCueByName("old");
  project->loadFromFile(writeProject("<G><C Name='new'/></G>"));
  EXPECT_EQ(nullptr, project->getSoundCueByName("old"));
  EXPECT_NE(nullptr, project->getSoundCueByName("new"));
  delete old;
  delete project;
}

TEST_F(SoundProjectTest, MissingFileThrowsCannotOpenFile) {
  const std::string path = mTitle.file("res/Sound/absent.soundproject");
  try {
    mProject.loadFromFile(path);
    FAIL() << "no exception";
  } catch (const std::runtime_error& error) {
    EXPECT_EQ("cannot open file " + path, std::string(error.what()));
  }
}

TEST_F(SoundProjectTest, XmlSyntaxErrorThrowsTheParsersError) {
  zvtest::WriteText(projectPath(), "<SoundProject><G><C Name='c'></G></SoundProject>");
  EXPECT_THROW(mProject.loadFromFile(projectPath()), rapidxml::parse_error);
  zvtest::WriteText(projectPath(), "<SoundProject><G Volume='50></G></SoundProject>");
  EXPECT_THROW(mProject.loadFromFile(projectPath()), rapidxml::parse_error);
}

using SoundProjectDeathTest = SoundProjectTest;

// The library's assertion text, with any line of `file`.
std::string AssertPattern(const std::string& file, const std::string& function, const std::string& expr) {
  return zvtest::Literal(file + ":") + "[0-9]+" + zvtest::Literal(": " + function + ": Assertion `" + expr + "' failed.");
}

TEST_F(SoundProjectDeathTest, UnknownNodeKindFailsTheAssertion) {
  writeProject("<G><C Name='c'><N Name='Wave' FileName='a.wav'/><N Name='Flute'/></C></G>");
  EXPECT_DEATH(mProject.loadFromFile(projectPath()),
               AssertPattern("Src/Sound/SoundProject.cpp", "void SoundProject::loadFromFile(const std::string&)",
                             "soundNode != __null"));
}

TEST_F(SoundProjectDeathTest, NodeWithoutAKindFailsTheAssertion) {
  writeProject("<G><C Name='c'><N FileName='a.wav'/></C></G>");
  EXPECT_DEATH(mProject.loadFromFile(projectPath()),
               AssertPattern("Src/Sound/SoundProject.cpp", "void SoundProject::loadFromFile(const std::string&)",
                             "soundNode != __null"));
}

TEST_F(SoundProjectDeathTest, ChildrenOf49BytesFailTheAssertion) {
  std::string children(47, '1');
  children += "1;";
  ASSERT_EQ(49u, children.size());
  writeProject("<G><C Name='c'><N Name='Mixer' Children='" + children + "'/></C></G>");
  EXPECT_DEATH(mProject.loadFromFile(projectPath()),
               AssertPattern("Src/Sound/SoundNodeBase.cpp", "void SoundNodeBase::load(rapidxml::xml_node<char>*)",
                             "(strlen(children) + 1) < 50"));
}

}  // namespace
