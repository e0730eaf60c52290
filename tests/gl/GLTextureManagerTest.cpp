// The texture manager: shared, counted loads by name, the search of
// LoadTextureNoExpand, loads from pixels, finding, releasing and the byte count.
#include <EGL/egl.h>

#include "TextureFixture.h"
#include "solva/Clock.h"
#include "support/TestSupport.h"

namespace {

using gltest::Bytes;
using gltest::Pattern;

class TextureManager : public gltest::TextureTest {
 protected:
  // A 4 x 4 R8G8B8A8 UDI (64 bytes uploaded) named `base`.udi.
  std::string Udi(const std::string& base, unsigned seed = 1) {
    return WriteUdi(base + ".udi", 4, 4, 1, 32, 0, Pattern(64, seed));
  }
  // A 2 x 2 TGA of 24 bits (16 bytes uploaded) named `base`.tga.
  std::string Tga(const std::string& base) { return WriteTga(base + ".tga", 2, 2, 24, Pattern(12, 9)); }
};

TEST_F(TextureManager, ANewManagerFiltersNearestAndHoldsNothing) {
  GLTextureManager& manager = Manager();
  EXPECT_EQ(9728u, manager.mMinFilter);
  EXPECT_EQ(9728u, manager.mMagFilter);
  EXPECT_EQ(nullptr, manager.mLoadListener);
  EXPECT_EQ(nullptr, manager.mPkgBuffer);
  EXPECT_EQ(0u, manager.mTextureBytes);
  EXPECT_TRUE(manager.mNameToID.empty());
  EXPECT_TRUE(manager.mIDToTexture.empty());
}

TEST_F(TextureManager, TwoLoadsOfOneNameShareOneUploadAndTwoReleasesDeleteIt) {
  const std::string path = Udi("a");
  unsigned first = 0, second = 0;
  GLTexture* a = Manager().LoadTexture(path, &first);
  GLTexture* b = Manager().LoadTexture(path, &second);
  ASSERT_NE(nullptr, a);
  EXPECT_EQ(a, b);
  EXPECT_EQ(2u, a->mRefCount);
  EXPECT_EQ(a->mTextureID, first);
  EXPECT_EQ(first, second);
  EXPECT_EQ(0, a->mLoadFlag);
  // One upload: one GL texture, counted once.
  EXPECT_EQ(1u, Manager().mIDToTexture.size());
  EXPECT_EQ(64u, Manager().mTextureBytes);
  GLuint next = 0;
  glGenTextures(1, &next);
  EXPECT_EQ(first + 1, next) << "no second texture name was made";
  glDeleteTextures(1, &next);

  Manager().ReleaseTexture(a);
  EXPECT_EQ(a, Manager().FindTextureByName(path));
  EXPECT_EQ(1u, a->mRefCount);
  EXPECT_EQ(GL_TRUE, glIsTexture(first));
  Manager().ReleaseTexture(a);
  EXPECT_EQ(nullptr, Manager().FindTextureByName(path));
  EXPECT_EQ(nullptr, Manager().FindTextureByID(first));
  EXPECT_EQ(GL_FALSE, glIsTexture(first));
  EXPECT_EQ(0u, Manager().mTextureBytes);
  EXPECT_TRUE(Manager().mNameToID.empty());
}

TEST_F(TextureManager, AReleaseOfAPointerNotInTheTablesChangesNothing) {
  GLTexture* kept = Manager().LoadTexture(Udi("a"), nullptr);
  GLTexture stranger(Udi("b").c_str());
  stranger.mRefCount = 1;
  const unsigned strangerID = stranger.mTextureID;
  Manager().ReleaseTexture(&stranger);
  Manager().ReleaseTexture(nullptr);
  EXPECT_EQ(1u, stranger.mRefCount);
  EXPECT_EQ(strangerID, stranger.mTextureID);
  EXPECT_EQ(GL_TRUE, glIsTexture(strangerID));
  EXPECT_EQ(1u, kept->mRefCount);
  EXPECT_EQ(1u, Manager().mIDToTexture.size());
  EXPECT_EQ(64u, Manager().mTextureBytes);
}

TEST_F(TextureManager, NoExpandPrefersTheUdiOverTheTga) {
  Udi("pic");
  Tga("pic");
  const std::string base = dir.file("pic");
  GLTexture* texture = Manager().LoadTextureNoExpand(base.c_str(), nullptr);
  ASSERT_NE(nullptr, texture);
  EXPECT_EQ(base + ".udi", texture->mName);
  EXPECT_EQ(4u, texture->mWidth);
  EXPECT_EQ(1u, Manager().mNameToID.size());
}

TEST_F(TextureManager, NoExpandPrefersTheTgaOverTheBmp) {
  Tga("pic");
  zvtest::WriteText(dir.file("pic.bmp"), "a picture the search never reaches");
  GLTexture* texture = Manager().LoadTextureNoExpand(dir.file("pic").c_str(), nullptr);
  ASSERT_NE(nullptr, texture);
  EXPECT_EQ(dir.file("pic.tga"), texture->mName);
  EXPECT_EQ(16u, Manager().mTextureBytes);
}

TEST_F(TextureManager, NoExpandOfAMissingNameReturnsNullSilentlyAndLeavesTheBytes) {
  Manager().LoadTexture(Udi("a"), nullptr);
  unsigned id = 99;
  GLTexture* texture = nullptr;
  const std::string out =
      zvtest::CapturedStdout([&] { texture = Manager().LoadTextureNoExpand(dir.file("none").c_str(), &id); });
  EXPECT_EQ(nullptr, texture);
  EXPECT_EQ(0u, id);
  EXPECT_EQ("", out);
  EXPECT_EQ(64u, Manager().mTextureBytes);
  EXPECT_EQ(1u, Manager().mIDToTexture.size());
}

TEST_F(TextureManager, AFailedLoadGivesNullAndIdZero) {
  unsigned id = 5;
  EXPECT_EQ(nullptr, Manager().LoadTexture(dir.file("missing.tga"), &id));
  EXPECT_EQ(0u, id);
  EXPECT_EQ(nullptr, Manager().LoadTexture(dir.file("missing.tga"), nullptr));
  EXPECT_TRUE(Manager().mNameToID.empty());
}

TEST_F(TextureManager, TheByteCountFollowsTheLivingTextures) {
  GLTexture* a = Manager().LoadTexture(Udi("a"), nullptr);
  GLTexture* b = Manager().LoadTexture(Tga("b"), nullptr);
  const std::string paletted = WriteUdi("p.udi", 8, 8, 2, 16, 2, Pattern(512 + 64, 3));
  GLTexture* c = Manager().LoadTexture(paletted, nullptr);
  ASSERT_NE(nullptr, c);
  EXPECT_EQ(512u + 64u, c->mByteSize);
  EXPECT_EQ(64u + 16u + 576u, Manager().mTextureBytes);
  Manager().ReleaseTexture(b);
  EXPECT_EQ(64u + 576u, Manager().mTextureBytes);
  Manager().ReleaseTexture(a);
  Manager().ReleaseTexture(c);
  EXPECT_EQ(0u, Manager().mTextureBytes);
}

TEST_F(TextureManager, LoadsFromPixelsAreAlwaysNewTexturesAndTheFirstKeepsTheName) {
  uint8_t rgb[2 * 2 * 3] = {1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12};
  std::string name = "made";
  unsigned first = 0, second = 0;
  GLTexture* a = Manager().LoadTexture(rgb, 2, 2, 24, name, &first);
  GLTexture* b = Manager().LoadTexture(rgb, 2, 2, 24, name, &second);
  ASSERT_NE(nullptr, a);
  ASSERT_NE(nullptr, b);
  EXPECT_NE(a, b);
  EXPECT_NE(first, second);
  EXPECT_EQ(1u, a->mRefCount);
  EXPECT_EQ(1u, b->mRefCount);
  EXPECT_EQ("made", b->mName);
  EXPECT_EQ(a, Manager().FindTextureByName("made"));
  EXPECT_EQ(b, Manager().FindTextureByID(second));
  EXPECT_EQ(32u, Manager().mTextureBytes);
  // A load by file of that name finds the first one.
  EXPECT_EQ(a, Manager().LoadTexture(std::string("made"), nullptr));
  EXPECT_EQ(2u, a->mRefCount);
}

TEST_F(TextureManager, ALoadFromPixelsOfAnUnsupportedDepthGivesNull) {
  uint8_t pixels[8] = {};
  std::string name = "grey";
  unsigned id = 4;
  EXPECT_EQ(nullptr, Manager().LoadTexture(pixels, 2, 2, 16, name, &id));
  EXPECT_EQ(0u, id);
  EXPECT_TRUE(Manager().mIDToTexture.empty());
}

TEST_F(TextureManager, FindingChangesNoCount) {
  const std::string path = Udi("a");
  unsigned id = 0;
  GLTexture* texture = Manager().LoadTexture(path, &id);
  EXPECT_EQ(texture, Manager().FindTextureByID(id));
  EXPECT_EQ(texture, Manager().FindTextureByName(path));
  EXPECT_EQ(texture, Manager().FindTextureByName(path.c_str()));
  EXPECT_EQ(nullptr, Manager().FindTextureByID(id + 100));
  EXPECT_EQ(nullptr, Manager().FindTextureByName("nothing"));
  EXPECT_EQ(1u, texture->mRefCount);
}

TEST_F(TextureManager, ReleaseByNameAndByIdCountDownAndIgnoreTheUnknown) {
  const std::string path = Udi("a");
  unsigned id = 0;
  Manager().LoadTexture(path, &id);
  Manager().LoadTexture(path, nullptr);
  Manager().LoadTexture(path, nullptr);
  Manager().ReleaseTextureByName("nothing");
  Manager().ReleaseTextureByID(id + 100);
  ASSERT_NE(nullptr, Manager().FindTextureByID(id));
  EXPECT_EQ(3u, Manager().FindTextureByID(id)->mRefCount);
  Manager().ReleaseTextureByName(path);
  Manager().ReleaseTextureByName(path.c_str());
  ASSERT_NE(nullptr, Manager().FindTextureByID(id));
  EXPECT_EQ(1u, Manager().FindTextureByID(id)->mRefCount);
  Manager().ReleaseTextureByID(id);
  EXPECT_EQ(nullptr, Manager().FindTextureByID(id));
  EXPECT_EQ(GL_FALSE, glIsTexture(id));
  EXPECT_EQ(0u, Manager().mTextureBytes);
}

TEST_F(TextureManager, ATextureWithoutAGLNameIsNotCountedAndGoesAtItsFirstRelease) {
  // Without a current context the GL hands out no texture names.
  SolvaOpenGLConfig* config = gl.config();
  eglMakeCurrent(config->eglDisplay, EGL_NO_SURFACE, EGL_NO_SURFACE, EGL_NO_CONTEXT);
  const std::string path = Udi("a");
  GLTexture* texture = Manager().LoadTexture(path, nullptr);
  ASSERT_NE(nullptr, texture);
  EXPECT_EQ(0u, texture->mTextureID);
  EXPECT_EQ(0u, texture->mRefCount);
  EXPECT_EQ(texture, Manager().LoadTexture(path, nullptr));
  EXPECT_EQ(0u, texture->mRefCount);
  EXPECT_EQ(64u, Manager().mTextureBytes);
  Manager().ReleaseTexture(texture);
  EXPECT_EQ(nullptr, Manager().FindTextureByName(path));
  EXPECT_EQ(0u, Manager().mTextureBytes);
  eglMakeCurrent(config->eglDisplay, config->eglSurface, config->eglSurface, config->eglContext);
}

TEST_F(TextureManager, ClearDeletesEveryTextureAndKeepsTheByteCount) {
  unsigned a = 0, b = 0;
  Manager().LoadTexture(Udi("a"), &a);
  Manager().LoadTexture(Tga("b"), &b);
  Manager().Clear();
  EXPECT_TRUE(Manager().mIDToTexture.empty());
  EXPECT_TRUE(Manager().mNameToID.empty());
  EXPECT_EQ(GL_FALSE, glIsTexture(a));
  EXPECT_EQ(GL_FALSE, glIsTexture(b));
  EXPECT_EQ(80u, Manager().mTextureBytes);
}

TEST_F(TextureManager, TheManagerGoneDeletesItsTextures) {
  unsigned id = 0;
  Manager().LoadTexture(Udi("a"), &id);
  delete GLTextureManager::instance_;
  GLTextureManager::instance_ = nullptr;
  EXPECT_EQ(GL_FALSE, glIsTexture(id));
  GLTextureManager::sCreate();
}

// A listener is told the name and the seconds since the previous load ended.
struct LoadLog : ITextureLoadListener {
  void OnTextureLoaded(const std::string& name, float seconds) override {
    names.push_back(name);
    times.push_back(seconds);
  }
  std::vector<std::string> names;
  std::vector<float> times;
};

TEST_F(TextureManager, TheLoadListenerHearsOfEveryUploadAndTheTimeBetween) {
  LoadLog log;
  Manager().mLoadListener = &log;
  const std::string a = Udi("a"), b = Udi("b");
  Manager().LoadTexture(a, nullptr);
  clock.advance(250);
  Manager().LoadTexture(b, nullptr);
  Manager().LoadTexture(a, nullptr);                  // shared: no upload
  Manager().LoadTexture(dir.file("x.tga"), nullptr);  // failed: no upload
  ASSERT_EQ((std::vector<std::string>{a, b}), log.names);
  EXPECT_FLOAT_EQ(0.25f, log.times[1]);
}

TEST(TextureManagerDeathTest, TheManagerBeforeItExistsFailsTheAssertion) {
  ASSERT_EQ(nullptr, GLTextureManager::instance_);
  EXPECT_DEATH(
      gxGetTextureManager(),
      zvtest::Literal(zvtest::AssertText(
          "Src/Base/singleton.h", 40,
          "static T& Singleton<T, Tag_Singleton_Manual>::sInstance() [with T = GLTextureManager]", "instance_")));
}

}  // namespace
