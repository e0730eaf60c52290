// Which build of the spans the layers draw with.
#include <gtest/gtest.h>

#include "CanvasTestSupport.h"

namespace {

TEST(SpanPath, ThePortableBuildIsAlwaysThere) {
  ASSERT_NE(nullptr, CanvasSpanOpsFor(kCanvasSpanPortable));
  EXPECT_EQ(&gCanvasSpansPortable, CanvasSpanOpsFor(kCanvasSpanPortable));
}

TEST(SpanPath, TheLayersStartWithTheWidestBuildThisMachineRuns) {
  ECanvasSpanPath widest = kCanvasSpanPortable;
  for (ECanvasSpanPath path : canvastest::SpanPaths()) widest = path;
  EXPECT_EQ(widest, CanvasBestSpanPath());
  EXPECT_EQ(widest, CanvasSpanPath());
  EXPECT_EQ(CanvasSpanOpsFor(widest), &CanvasSpans());
}

#if defined(__x86_64__) && defined(__SSE2__) && !defined(ZV_CANVAS_PORTABLE_ONLY)
TEST(SpanPath, EveryX86_64HasSSE2AndAVX2WhereTheProcessorSaysSo) {
  EXPECT_NE(nullptr, CanvasSpanOpsFor(kCanvasSpanSSE2));
  __builtin_cpu_init();
  EXPECT_EQ(__builtin_cpu_supports("avx2") != 0, CanvasSpanOpsFor(kCanvasSpanAVX2) != nullptr);
}
#endif

TEST(SpanPath, AnotherBuildCanBeChosenAndTheBestOneTakenBack) {
  for (ECanvasSpanPath path : canvastest::SpanPaths()) {
    ASSERT_TRUE(CanvasUseSpanPath(path));
    EXPECT_EQ(path, CanvasSpanPath());
    EXPECT_EQ(CanvasSpanOpsFor(path), &CanvasSpans());
  }
  ASSERT_TRUE(CanvasUseSpanPath(CanvasBestSpanPath()));
  EXPECT_EQ(CanvasBestSpanPath(), CanvasSpanPath());
}

TEST(SpanPath, ABuildThatIsNotThereChangesNothing) {
  const ECanvasSpanPath before = CanvasSpanPath();
  EXPECT_FALSE(CanvasUseSpanPath(kCanvasSpanPathCount));
  EXPECT_FALSE(CanvasUseSpanPath(ECanvasSpanPath(-1)));
  EXPECT_EQ(before, CanvasSpanPath());
}

}  // namespace
