// The title's manager: its canvas layer slots and the step-load stack.
#include <gtest/gtest.h>

#include "Canvas/CanvasLayer.h"
#include "recorder/RecorderFixture.h"

namespace {

using recorder::RecorderTest;

TEST_F(RecorderTest, CreateCanvasLayerWithItsSlotFilledGivesTheLayerThereWhateverTheGeometry) {
  Start();
  MicManager& manager = MicManager::sInstance();
  CanvasLayer* const layer = manager.GetCanvasLayer(kCanvasLayerRGBA);
  ASSERT_NE(nullptr, layer);
  EXPECT_EQ(layer, manager.CreateCanvasLayer(kCanvasLayerRGBA, 12, 34, 100, 50));
  EXPECT_EQ(0, layer->GetPosX());
  EXPECT_EQ(0, layer->GetPosY());
  EXPECT_EQ(480, layer->GetWidth());
  EXPECT_EQ(272, layer->GetHeight());
  EXPECT_EQ(layer, manager.GetCanvasLayer(kCanvasLayerRGBA));
}

TEST_F(RecorderTest, TheStepLoadStackHoldsSevenFromStartAndZeroOnTopOnceTheRecorderIsIn) {
  Start();
  MicManager& manager = MicManager::sInstance();
  ASSERT_EQ(2u, manager.StepLoadDepth());
  EXPECT_EQ(0, manager.stepLoadFrequency());
  manager.resumeStepLoadFrequency();
  EXPECT_EQ(7, manager.stepLoadFrequency());
}

TEST_F(RecorderTest, TheStepLoadStackGivesBackTheLastValuePushed) {
  Start();
  MicManager& manager = MicManager::sInstance();
  const size_t depth = manager.StepLoadDepth();
  manager.setStepLoadFrequency(4);
  manager.setStepLoadFrequency(5);
  EXPECT_EQ(5, manager.stepLoadFrequency());
  manager.resumeStepLoadFrequency();
  EXPECT_EQ(4, manager.stepLoadFrequency());
  EXPECT_EQ(depth + 1, manager.StepLoadDepth());
}

TEST_F(RecorderTest, ThreePushesAndFourPopsLeaveAnEmptyStackWithoutAFault) {
  Start();
  MicManager& manager = MicManager::sInstance();
  while (manager.StepLoadDepth() > 0) manager.resumeStepLoadFrequency();
  manager.setStepLoadFrequency(1);
  manager.setStepLoadFrequency(2);
  manager.setStepLoadFrequency(3);
  for (int i = 0; i < 4; ++i) manager.resumeStepLoadFrequency();
  EXPECT_EQ(0u, manager.StepLoadDepth());
  manager.setStepLoadFrequency(9);  // and it works on from empty
  EXPECT_EQ(9, manager.stepLoadFrequency());
}

}  // namespace
