// The guard of GL state around a special draw, on the real context: what it saves
// when it begins and puts back when it ends, and its ring of colours.
#include <GLES/gl.h>
#include <gtest/gtest.h>

#include "RenderSystem/RenderStateStack.h"
#include "support/GLTestSupport.h"
#include "support/TestSupport.h"

namespace {

class RenderState : public testing::Test {
 protected:
  void SetUp() override {
    ASSERT_TRUE(gl.ok()) << gl.error();
    RenderStateStack::initialize();
  }
  void TearDown() override { RenderStateStack::destory(); }

  static GLint Integer(GLenum name) {
    GLint value = 0;
    glGetIntegerv(name, &value);
    return value;
  }
  static GLfixed TexEnvMode() {
    GLfixed mode = 0;
    glGetTexEnvxv(GL_TEXTURE_ENV, GL_TEXTURE_ENV_MODE, &mode);
    return mode;
  }
  static std::vector<float> CurrentColor() {
    std::vector<float> color(4);
    glGetFloatv(GL_CURRENT_COLOR, color.data());
    return color;
  }

  zvtest::GLContext gl;
};

TEST_F(RenderState, WithBlendOffBlendIsOffWhenItEndsWhateverHappenedBetween) {
  glDisable(GL_BLEND);
  glBlendFunc(GL_ONE, GL_ZERO);
  {
    RenderStateStack guard;
    glEnable(GL_BLEND);
    glBlendFunc(GL_DST_COLOR, GL_SRC_ALPHA);
  }
  EXPECT_EQ(GL_FALSE, glIsEnabled(GL_BLEND));
}

TEST_F(RenderState, WithBlendOnTheFunctionComesBack) {
  glEnable(GL_BLEND);
  glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA);
  {
    RenderStateStack guard;
    glDisable(GL_BLEND);
    glBlendFunc(GL_ONE, GL_ONE);
  }
  EXPECT_EQ(GL_TRUE, glIsEnabled(GL_BLEND));
  EXPECT_EQ(GL_SRC_ALPHA, Integer(GL_BLEND_SRC));
  EXPECT_EQ(GL_ONE_MINUS_SRC_ALPHA, Integer(GL_BLEND_DST));
}

TEST_F(RenderState, TheTextureEnvironmentAndTexturingComeBack) {
  glTexEnvx(GL_TEXTURE_ENV, GL_TEXTURE_ENV_MODE, GL_MODULATE);
  glEnable(GL_TEXTURE_2D);
  {
    RenderStateStack guard;
    glTexEnvx(GL_TEXTURE_ENV, GL_TEXTURE_ENV_MODE, GL_REPLACE);
    glDisable(GL_TEXTURE_2D);
  }
  EXPECT_EQ(GLfixed(GL_MODULATE), TexEnvMode());
  EXPECT_EQ(GL_TRUE, glIsEnabled(GL_TEXTURE_2D));

  glDisable(GL_TEXTURE_2D);
  {
    RenderStateStack guard;
    glEnable(GL_TEXTURE_2D);
  }
  EXPECT_EQ(GL_FALSE, glIsEnabled(GL_TEXTURE_2D));
}

TEST_F(RenderState, TheFirstColourOfTheRingIsSetWhenItEnds) {
  RenderStateStack::ColorRing* ring = RenderStateStack::GetColorContainer();
  ring->push_back(RenderStateStack::Color{0.5f, 0.25f, 1.0f, 0.75f});
  ring->push_back(RenderStateStack::Color{0.1f, 0.1f, 0.1f, 0.1f});
  glColor4x(0, 0, 0, 0);
  { RenderStateStack guard; }
  EXPECT_EQ((std::vector<float>{0.5f, 0.25f, 1.0f, 0.75f}), CurrentColor());
}

TEST_F(RenderState, AnEmptyRingLeavesTheColourAlone) {
  glColor4x(1 << 15, 1 << 14, 1 << 16, 1 << 16);
  {
    RenderStateStack guard;
    EXPECT_TRUE(RenderStateStack::GetColorContainer()->empty());
  }
  EXPECT_EQ((std::vector<float>{0.5f, 0.25f, 1.0f, 1.0f}), CurrentColor());
}

TEST_F(RenderState, DestoryIsSafeWithoutARing) {
  RenderStateStack::destory();
  RenderStateStack::destory();
  RenderStateStack::initialize();
  EXPECT_TRUE(RenderStateStack::GetColorContainer()->empty());
}

// The GL's own threads run beside the test: the child is a fresh process.
class RenderStateDeathTest : public RenderState {
 protected:
  void SetUp() override {
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    RenderState::SetUp();
  }
};

TEST_F(RenderStateDeathTest, ASecondRingFailsTheAssertion) {
  EXPECT_DEATH(RenderStateStack::initialize(),
               "Src/RenderSystem/RenderStateStack\\.cpp:[0-9]+: static void RenderStateStack::initialize\\(\\): "
               "Assertion `mpStack==NULL' failed\\.");
}

TEST_F(RenderStateDeathTest, TheColoursWithoutARingFailTheAssertion) {
  RenderStateStack::destory();
  EXPECT_DEATH(RenderStateStack::GetColorContainer(),
               "Src/RenderSystem/RenderStateStack\\.cpp:[0-9]+: static RenderStateStack::ColorRing\\* "
               "RenderStateStack::GetColorContainer\\(\\): Assertion `mpStack' failed\\.");
  EXPECT_DEATH({ RenderStateStack guard; },
               "Src/RenderSystem/RenderStateStack\\.cpp:[0-9]+: RenderStateStack::~RenderStateStack\\(\\): "
               "Assertion `mpStack' failed\\.");
  RenderStateStack::initialize();
}

}  // namespace
