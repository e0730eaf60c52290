// The progress bar on its own: placing, the mask and cursor, hit tests, drawing.
#include <unistd.h>

#include <filesystem>

#include "Canvas/CanvasLayer.h"
#include "RecorderFixture.h"
#include "RenderSystem/GLTextureManager.h"
#include "YGUI/YGUITypes.h"

namespace {

using recorder::WriteTga;

class ProgressBarTest : public testing::Test {
 protected:
  void SetUp() override {
    char here[1000] = {0};
    mWorkingPath = getcwd(here, sizeof here) ? here : "";
    std::filesystem::create_directories(mFolder.file("res/UI/UITexture"));
    WriteTga(mFolder.file("res/UI/UITexture/mic_time_blue.tga"), 210, 14, 0x0000FFFF);
    WriteTga(mFolder.file("res/UI/UITexture/mic_time_yellow.tga"), 210, 12, 0xFFFF00FF);
    WriteTga(mFolder.file("res/UI/UITexture/mic_time_glide_button.tga"), 12, 24, 0xFFFFFFFF);
    ASSERT_EQ(0, chdir(mFolder.path().c_str()));
    // Image loading asks for the texture manager, as in a running title.
    GLTextureManager::sCreate();
    mBar.Initialize();
  }
  void TearDown() override {
    mBar.Destroy();
    delete GLTextureManager::instance_;
    GLTextureManager::instance_ = 0;
    ASSERT_EQ(0, chdir(mWorkingPath.c_str()));
  }

  zvtest::TempDir mFolder;
  std::string mWorkingPath;
  RawImageProgressBar mBar;
};

TEST_F(ProgressBarTest, StartsWithNoProgressAndTheCursorShown) {
  RawImageProgressBar bar;
  EXPECT_EQ(0.0f, bar.mProgress);
  EXPECT_EQ(1, bar.mShowCursor);
  EXPECT_EQ(nullptr, bar.mBase.mImage);
}

TEST_F(ProgressBarTest, InitializeLoadsTheThreeImagesByName) {
  ASSERT_NE(nullptr, mBar.mBase.mImage);
  EXPECT_EQ(210, mBar.mBase.mImage->mWidth);
  EXPECT_EQ(12, mBar.mMask.mImage->mHeight);
  EXPECT_EQ(24, mBar.mCursor.mImage->mHeight);
}

TEST_F(ProgressBarTest, AtProgressZeroTheMaskIsFiveWideAndTheCursorAtX) {
  mBar.mProgress = 0;
  mBar.SetPosition(100, 50);
  EXPECT_EQ(5, mBar.mMask.mWidth);
  EXPECT_EQ(12, mBar.mMask.mHeight);
  EXPECT_EQ(100, mBar.mCursor.mX);
}

TEST_F(ProgressBarTest, AtProgressOneOnABase210WideTheFillIs205AndTheCursorAtXPlus200) {
  mBar.mProgress = 1.0f;
  mBar.SetPosition(100, 50);
  EXPECT_EQ(205, mBar.mMask.mWidth);
  EXPECT_EQ(300, mBar.mCursor.mX);
}

TEST_F(ProgressBarTest, FillIsTruncatedTowardZero) {
  mBar.mProgress = 0.5f;  // 200 * 0.5 + 5
  mBar.Update(0.033f);
  EXPECT_EQ(105, mBar.mMask.mWidth);
  mBar.mProgress = 0.004f;  // 0.8 truncates to 0
  mBar.Update(0);
  EXPECT_EQ(5, mBar.mMask.mWidth);
}

TEST_F(ProgressBarTest, GetLengthOnABase210By14Gives210) {
  mBar.SetPosition(0, 0);
  EXPECT_EQ(210, mBar.mBase.mWidth);
  EXPECT_EQ(14, mBar.mBase.mHeight);
  EXPECT_EQ(210, mBar.GetLength());
}

TEST_F(ProgressBarTest, GetLengthTakesTheLongerSideOfABarOnEnd) {
  mBar.Destroy();
  WriteTga(mFolder.file("res/UI/UITexture/mic_time_blue.tga"), 14, 180, 0x0000FFFF);
  mBar.Initialize();
  mBar.SetPosition(0, 0);
  EXPECT_EQ(180, mBar.GetLength());
}

TEST_F(ProgressBarTest, IsOnProgressBarCountsAllFourEdges) {
  mBar.SetPosition(100, 50);
  EXPECT_TRUE(mBar.IsOnProgressBar(100 + 210, 50));
  EXPECT_TRUE(mBar.IsOnProgressBar(100, 50 + 14));
  EXPECT_TRUE(mBar.IsOnProgressBar(100, 50));
  EXPECT_FALSE(mBar.IsOnProgressBar(99, 55));
  EXPECT_FALSE(mBar.IsOnProgressBar(311, 55));
  EXPECT_FALSE(mBar.IsOnProgressBar(150, 65));
  EXPECT_FALSE(mBar.IsOnProgressBar(150, 49));
}

TEST_F(ProgressBarTest, GetPositionReturnsWhatWasSetAndTheCursorStandsSixHigher) {
  mBar.SetPosition(37, 81);
  int x = -1, y = -1;
  mBar.GetPosition(x, y);
  EXPECT_EQ(37, x);
  EXPECT_EQ(81, y);
  EXPECT_EQ(37, mBar.mMask.mX);
  EXPECT_EQ(81, mBar.mMask.mY);
  EXPECT_EQ(75, mBar.mCursor.mY);
}

TEST_F(ProgressBarTest, IsOnCursorComparesWithTheSizeAloneAsUpperBound) {
  mBar.SetPosition(0, 10);  // cursor at (0, 4), 12 by 24
  EXPECT_TRUE(mBar.IsOnCursor(12, 24));
  EXPECT_FALSE(mBar.IsOnCursor(12, 25));
  mBar.SetPosition(100, 50);  // cursor at (100, 44): x must be <= 12
  EXPECT_FALSE(mBar.IsOnCursor(105, 50));
}

TEST_F(ProgressBarTest, DestroyReleasesAndNullsTheImages) {
  mBar.Destroy();
  EXPECT_EQ(nullptr, mBar.mBase.mImage);
  EXPECT_EQ(nullptr, mBar.mMask.mImage);
  EXPECT_EQ(nullptr, mBar.mCursor.mImage);
}

// A layer that keeps its draw calls.
class RecordingLayer : public CanvasLayer {
 public:
  struct Call {
    int x, y, w, h, srcW, srcH;
    const uint8* src;
    float alpha;
    int orient;
  };
  RecordingLayer() : CanvasLayer() {}
  void Draw_Image_RGBA8888(int x, int y, int w, int h, const uint8* src, int srcW, int srcH, float alpha,
                           int orient) override {
    calls.push_back({x, y, w, h, srcW, srcH, src, alpha, orient});
  }
  std::vector<Call> calls;
};

TEST_F(ProgressBarTest, RenderDrawsBaseMaskAndCursorInOrderWithTheLayersOrientation) {
  RecordingLayer layer;
  mBar.mProgress = 0.5f;
  mBar.SetPosition(10, 20);
  mBar.RenderToLayer(layer, eOS_Vertical);
  ASSERT_EQ(3u, layer.calls.size());
  EXPECT_EQ(mBar.mBase.mImage->mData, layer.calls[0].src);
  EXPECT_EQ(210, layer.calls[0].w);
  EXPECT_EQ(mBar.mMask.mImage->mData, layer.calls[1].src);
  EXPECT_EQ(105, layer.calls[1].w);
  EXPECT_EQ(210, layer.calls[1].srcW);  // the image's own size, clipped, not scaled
  EXPECT_EQ(mBar.mCursor.mImage->mData, layer.calls[2].src);
  EXPECT_EQ(110, layer.calls[2].x);
  EXPECT_EQ(14, layer.calls[2].y);
  for (const auto& call : layer.calls) {
    EXPECT_EQ(1.0f, call.alpha);
    EXPECT_EQ(int(eOS_Vertical), call.orient);
  }
}

TEST_F(ProgressBarTest, RenderLeavesTheCursorOutWhenHidden) {
  RecordingLayer layer;
  mBar.mShowCursor = 0;
  mBar.SetPosition(10, 20);
  mBar.RenderToLayer(layer, eOS_Horizontal);
  EXPECT_EQ(2u, layer.calls.size());
}

}  // namespace
