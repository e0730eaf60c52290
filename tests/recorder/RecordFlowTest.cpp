// The first recording, step by step, through the whole title.
#include "RecorderFixture.h"

namespace {

using recorder::RecorderTest;
using solva::AudioEventKind;

TEST_F(RecorderTest, EntersWithThePanelAndPlaysTheRecordHintWithRecordLit) {
  Start();
  EXPECT_EQ(&Scene(), Top());
  EXPECT_EQ(RecordVoiceScene::kRecordIdle, Scene().mRecordState);
  EXPECT_EQ(1, CountEvents(AudioEventKind::Start, CuePath("HL_ToRecord")));
  Frame();
  EXPECT_EQ(2, Scene().mCueStep);
  EXPECT_EQ(1, Control("record").mFocus);
  WaitCueEnd("HL_ToRecord");
  Frame();
  EXPECT_EQ(0, Scene().mCueStep);
  EXPECT_EQ(0, Control("record").mFocus);
}

}  // namespace
