// The sprite builder: its description, its atlas, and what it writes, read back
// through the framework's own readers and compared with the source frames pixel
// for pixel.
#include <gtest/gtest.h>

#include <memory>

#include "RenderSystem/AnimatedSpriteData.h"
#include "RenderSystem/AnimatedSpriteDataManager.h"
#include "RenderSystem/AnimationController.h"
#include "RenderSystem/AnimationSet.h"
#include "RenderSystem/BMPData.h"
#include "RenderSystem/ImageLoader.h"
#include "RenderSystem/SpriteInfo.h"
#include "SpriteBuilder.h"
#include "SpriteDescription.h"
#include "SpriteGL.h"
#include "SpriteTestSupport.h"
#include "TileAtlas.h"
#include "support/PngImage.h"
#include "ygui/YguiTestSupport.h"

namespace {

namespace sb = spritebuilder;
using spritetest::RecordingHandler;

// ---- the description

bool Parse(const std::string& text, sb::Description* out, std::string* error) {
  return sb::ParseDescription(text, "hero.sprite", out, error);
}

std::string ParseError(const std::string& text) {
  sb::Description description;
  std::string error;
  EXPECT_FALSE(Parse(text, &description, &error)) << text;
  return error;
}

TEST(SpriteDescription, NamesBoxesAnimationsAndFramesAreRead) {
  const std::string text =
      "# a comment\n"
      "sprite hero\n"
      "layer body   # the atlas's layer\n"
      "box feet -8 -2 8 0\n"
      "box sword 4 -20 24 -12\n"
      "\n"
      "animation idle loop\n"
      "  frame idle0.png 0.25\n"
      "  frame idle1.png 0.5 offset -3 4 align feet collision feet\n"
      "animation swing once\n"
      "  frame a.png 0.125 event 7 value 0x10 attack sword extra feet\n"
      "animation bob pingpong\n"
      "  frame b.png 1\n";
  sb::Description d;
  std::string error;
  ASSERT_TRUE(Parse(text, &d, &error)) << error;
  EXPECT_EQ("hero", d.sprite);
  EXPECT_EQ("body", d.layer);
  ASSERT_EQ(2u, d.boxes.size());
  EXPECT_EQ("sword", d.boxes[1].name);
  EXPECT_EQ(4, d.boxes[1].left);
  EXPECT_EQ(-20, d.boxes[1].top);
  EXPECT_EQ(24, d.boxes[1].right);
  EXPECT_EQ(-12, d.boxes[1].bottom);
  ASSERT_EQ(3u, d.animations.size());
  EXPECT_EQ(1, d.animations[0].mode);
  EXPECT_EQ(0, d.animations[1].mode);
  EXPECT_EQ(2, d.animations[2].mode);
  const sb::Frame& f = d.animations[0].frames[1];
  EXPECT_EQ("idle1.png", f.png);
  EXPECT_EQ(0.5f, f.seconds);
  EXPECT_EQ(-3, f.offsetX);
  EXPECT_EQ(4, f.offsetY);
  EXPECT_EQ(0, f.boxes[0]);
  EXPECT_EQ(0, f.boxes[1]);
  EXPECT_EQ(-1, f.boxes[2]);
  EXPECT_EQ(9, f.line);
  const sb::Frame& s = d.animations[1].frames[0];
  EXPECT_EQ(7, s.event);
  EXPECT_EQ(16u, s.value);
  EXPECT_EQ(1, s.boxes[2]);
  EXPECT_EQ(0, s.boxes[3]);
}

TEST(SpriteDescription, TheLayerIsBaseUnlessNamed) {
  sb::Description d;
  std::string error;
  ASSERT_TRUE(Parse("sprite hero\nanimation a loop\nframe x.png 1\n", &d, &error)) << error;
  EXPECT_EQ("base", d.layer);
}

TEST(SpriteDescription, MistakesAreNamedWithTheirLine) {
  const std::string head = "sprite hero\nbox b 0 0 1 1\nanimation a loop\n";
  EXPECT_EQ("hero.sprite:4: unknown keyword \"frames\" (sprite, layer, box, animation or frame)",
            ParseError(head + "frames x.png 1\n"));
  EXPECT_EQ("hero.sprite:1: a frame before any animation", ParseError("frame x.png 1\n"));
  EXPECT_EQ("hero.sprite:3: \"twice\" is no way of playing (once, loop or pingpong)",
            ParseError("sprite hero\n\nanimation a twice\n"));
  EXPECT_EQ("hero.sprite:4: no box \"c\" defined before this line", ParseError(head + "frame x.png 1 align c\n"));
  EXPECT_EQ("hero.sprite:4: a value is a number from 1 to 4294967295, but not 2439591, which reads as none",
            ParseError(head + "frame x.png 1 value 2439591\n"));
  EXPECT_EQ("hero.sprite:4: an event is a number from 1 to 255", ParseError(head + "frame x.png 1 event 256\n"));
  EXPECT_EQ("hero.sprite:4: \"0\" is not a time in seconds above 0", ParseError(head + "frame x.png 0\n"));
  EXPECT_EQ("hero.sprite:4: \"offset\" needs two values", ParseError(head + "frame x.png 1 offset 3\n"));
  EXPECT_EQ("hero.sprite:4: unknown frame option \"speed\" (offset, event, value, align, collision, attack, extra)",
            ParseError(head + "frame x.png 1 speed 2\n"));
  EXPECT_EQ("hero.sprite:3: box \"b\" is defined twice", ParseError("sprite hero\nbox b 0 0 1 1\nbox b 0 0 1 1\n"));
  EXPECT_EQ("hero.sprite:1: \"40000\" is not a whole number of pixels", ParseError("box b 0 0 40000 1\n"));
  EXPECT_EQ("hero.sprite:1: a sprite name has 3 to 31 letters, digits, '_' or '-'", ParseError("sprite ab\n"));
  EXPECT_EQ("hero.sprite:1: a layer name has 1 to 15 letters, digits, '_' or '-'",
            ParseError("layer abcdefghijklmnop\n"));
  EXPECT_EQ("hero.sprite:2: an animation name has 1 to 15 letters, digits, '_' or '-'",
            ParseError("sprite hero\nanimation abcdefghijklmnop loop\n"));
  EXPECT_EQ("hero.sprite: no \"sprite NAME\" line", ParseError("animation a loop\nframe x.png 1\n"));
  EXPECT_EQ("hero.sprite:3: animation \"a\" has no frame", ParseError(head));
}

TEST(SpriteDescription, ASpriteHasAtMost100AnimationsOf254Frames) {
  std::string text = "sprite hero\n";
  for (int a = 0; a < 100; ++a) text += "animation a" + std::to_string(a) + " loop\nframe x.png 1\n";
  sb::Description d;
  std::string error;
  ASSERT_TRUE(Parse(text, &d, &error)) << error;
  EXPECT_EQ("hero.sprite:202: a sprite has at most 100 animations", ParseError(text + "animation more loop\n"));

  std::string frames = "sprite hero\nanimation a loop\n";
  for (int f = 0; f < 254; ++f) frames += "frame x.png 1\n";
  ASSERT_TRUE(Parse(frames, &d, &error)) << error;
  EXPECT_EQ("hero.sprite:257: an animation has at most 254 frames", ParseError(frames + "frame x.png 1\n"));
}

// ---- the atlas

// A frame of `w` x `h` pixels, each from `pixel(x, y)` as R, G, B, A.
template <typename F>
sb::Image MakeImage(int w, int h, F pixel) {
  sb::Image image;
  image.width = w;
  image.height = h;
  for (int y = 0; y < h; ++y) {
    for (int x = 0; x < w; ++x) {
      const uint32_t p = pixel(x, y);
      image.rgba.insert(image.rgba.end(), {uint8_t(p >> 24), uint8_t(p >> 16), uint8_t(p >> 8), uint8_t(p)});
    }
  }
  return image;
}

TEST(TileAtlas, EqualTilesAreStoredOnceAndClearOnesNotAtAll) {
  // 48 x 16: a red tile, a clear tile, a red tile again.
  const sb::Image frame = MakeImage(48, 16, [](int x, int) { return x < 16 || x >= 32 ? 0xFF0000FFu : 0u; });
  sb::Atlas atlas;
  std::string error;
  ASSERT_TRUE(sb::BuildAtlas({frame, frame}, 256, &atlas, &error)) << error;
  EXPECT_EQ(1u, atlas.tileCount);
  EXPECT_EQ(4u, atlas.cellCount);
  ASSERT_EQ(2u, atlas.frames.size());
  ASSERT_EQ(2u, atlas.frames[0].cells.size());
  EXPECT_EQ(0, atlas.frames[0].cells[0].cellColumn);
  EXPECT_EQ(2, atlas.frames[0].cells[1].cellColumn);
  EXPECT_EQ(0, atlas.frames[0].cells[1].tileColumn);
  ASSERT_EQ(1u, atlas.pages.size());
  EXPECT_EQ(256, atlas.pages[0].width);
  EXPECT_EQ(16, atlas.pages[0].height);  // one row of tiles
}

TEST(TileAtlas, ColourUnderFullTransparencyDoesNotMakeATileDifferent) {
  sb::Image a = MakeImage(16, 16, [](int x, int) { return x == 0 ? 0x12345600u : 0x00FF00FFu; });
  sb::Image b = MakeImage(16, 16, [](int x, int) { return x == 0 ? 0x65432100u : 0x00FF00FFu; });
  sb::ClearTransparentPixels(&a);
  sb::ClearTransparentPixels(&b);
  EXPECT_EQ(a.rgba, b.rgba);
  EXPECT_EQ(0, a.rgba[0]);
  sb::Atlas atlas;
  std::string error;
  ASSERT_TRUE(sb::BuildAtlas({a, b}, 256, &atlas, &error)) << error;
  EXPECT_EQ(1u, atlas.tileCount);
}

TEST(TileAtlas, TilesFillPagesRowByRowAndTheLastPageIsOnlyAsHighAsItNeeds) {
  // Six different tiles on pages of 32 x 32 (four tiles): a full page and one of
  // two tiles, 32 x 16.
  const sb::Image frame = MakeImage(96, 16, [](int x, int) { return 0x000000FFu | uint32_t(x / 16 + 1) << 24; });
  sb::Atlas atlas;
  std::string error;
  ASSERT_TRUE(sb::BuildAtlas({frame}, 32, &atlas, &error)) << error;
  ASSERT_EQ(2u, atlas.pages.size());
  EXPECT_EQ(32, atlas.pages[0].height);
  EXPECT_EQ(32, atlas.pages[1].width);
  EXPECT_EQ(16, atlas.pages[1].height);
  const std::vector<sb::Cell>& cells = atlas.frames[0].cells;
  ASSERT_EQ(6u, cells.size());
  const int expected[6][3] = {{0, 0, 0}, {0, 1, 0}, {0, 0, 1}, {0, 1, 1}, {1, 0, 0}, {1, 1, 0}};
  for (int i = 0; i < 6; ++i) {
    EXPECT_EQ(expected[i][0], cells[i].page) << i;
    EXPECT_EQ(expected[i][1], cells[i].tileColumn) << i;
    EXPECT_EQ(expected[i][2], cells[i].tileRow) << i;
    EXPECT_EQ(i, cells[i].cellColumn);
    // The tile's first pixel has the tile's red.
    const sb::Image& page = atlas.pages[cells[i].page];
    EXPECT_EQ(i + 1, page.rgba[(size_t(cells[i].tileRow) * 16 * page.width + cells[i].tileColumn * 16) * 4]);
  }
}

TEST(TileAtlas, AFrameOfNoWholeTilesIsPaddedWithTransparency) {
  const sb::Image frame = MakeImage(20, 5, [](int, int) { return 0xFFFFFFFFu; });
  sb::Atlas atlas;
  std::string error;
  ASSERT_TRUE(sb::BuildAtlas({frame}, 64, &atlas, &error)) << error;
  EXPECT_EQ(20, atlas.frames[0].width);
  EXPECT_EQ(5, atlas.frames[0].height);
  ASSERT_EQ(2u, atlas.frames[0].cells.size());
  const sb::Image& page = atlas.pages[0];
  const sb::Cell& second = atlas.frames[0].cells[1];
  auto alpha = [&](int x, int y) {
    return page.rgba[(size_t(second.tileRow * 16 + y) * page.width + second.tileColumn * 16 + x) * 4 + 3];
  };
  EXPECT_EQ(255, alpha(3, 4));
  EXPECT_EQ(0, alpha(4, 4));
  EXPECT_EQ(0, alpha(3, 5));
}

TEST(TileAtlas, FramesAndPagesOutsideTheLimitsAreRefused) {
  sb::Atlas atlas;
  std::string error;
  const sb::Image big = MakeImage(513, 16, [](int, int) { return 0xFFu; });
  EXPECT_FALSE(sb::BuildAtlas({big}, 256, &atlas, &error));
  EXPECT_EQ("frame 0 is 513 x 16 pixels; a frame is at most 512 x 512", error);
  const sb::Image small = MakeImage(16, 16, [](int, int) { return 0xFFu; });
  EXPECT_FALSE(sb::BuildAtlas({small}, 48, &atlas, &error));
  EXPECT_EQ("the page size must be a power of two from 16 to 4096", error);
  // 257 different tiles on pages of one tile.
  std::vector<sb::Image> many;
  for (uint32_t i = 0; i < 257; ++i) many.push_back(MakeImage(16, 16, [i](int, int) { return (i + 1) << 8 | 0xFFu; }));
  EXPECT_FALSE(sb::BuildAtlas(many, 16, &atlas, &error));
  EXPECT_EQ("257 distinct tiles need more than 256 pages of 16 x 16; choose a larger page size", error);
}

// ---- the whole builder, read back through the framework

// The frames of the test sprite, as 0xAARRGGBB for the PNG writer.
std::vector<uint32_t> Pattern(int w, int h, int seed) {
  std::vector<uint32_t> pixels(size_t(w) * h);
  for (int y = 0; y < h; ++y) {
    for (int x = 0; x < w; ++x) {
      const bool clear = (x + seed) % 7 == 0 || (x < 16 && y < 16 && seed == 2);  // a clear tile in frame 2
      const uint32_t alpha = clear ? 0 : (y * 16 + x * 3 + seed * 40) % 256;
      // Equal halves, so that some tiles repeat.
      const int hx = x % 16;
      pixels[size_t(y) * w + x] = alpha << 24 | uint32_t(hx * 13 + seed) << 16 | uint32_t(y * 7) << 8 | uint32_t(seed * 50);
    }
  }
  return pixels;
}

// The source with its fully transparent pixels cleared, as the builder stores it.
std::vector<uint32_t> Visible(std::vector<uint32_t> pixels) {
  for (uint32_t& p : pixels) {
    if (p >> 24 == 0) p = 0;
  }
  return pixels;
}

class SpriteBuilderTest : public testing::Test {
 protected:
  void SetUp() override {
    ASSERT_TRUE(gl.gl.ok()) << gl.gl.error();
    sources = dir.file("src");
    mkdir(sources.c_str(), 0755);
    out = dir.file("res/AnimatedSprites");
    sizes = {{40, 24}, {40, 24}, {16, 16}, {33, 17}};
    for (size_t i = 0; i < sizes.size(); ++i) {
      frames.push_back(Pattern(sizes[i].first, sizes[i].second, int(i)));
      ASSERT_TRUE(zvtest::WritePng(sources + "/f" + std::to_string(i) + ".png", sizes[i].first, sizes[i].second,
                                   frames.back()));
    }
    Describe(
        "sprite hero\n"
        "layer body\n"
        "box feet -8 -2 8 0\n"
        "box sword 4 -20 24 -12\n"
        "animation walk loop\n"
        "  frame f0.png 0.25 align feet\n"
        "  frame f1.png 0.25 offset 2 -1 event 3 align feet\n"
        "  frame f2.png 0.5 value 77 collision feet attack sword\n"
        "animation fall once\n"
        "  frame f3.png 0.125\n"
        "  frame f0.png 0.125\n");
  }
  // Each frame drawn on the GL context, tile by tile from the page textures, and
  // read back, equals its source PNG.
  void ExpectDrawnFramesEqualSources(const AnimatedSpriteData& sprite, const std::string& name) {
    for (size_t f = 0; f < frames.size(); ++f) {
      SCOPED_TRACE(f);
      const SpriteInfo* info = sprite.GetSpriteInfo(eImageLayer_Base, int(f));
      ASSERT_NE(nullptr, info);
      EXPECT_EQ(sizes[f].first, info->mWidth);
      EXPECT_EQ(sizes[f].second, info->mHeight);
      spritetest::ClearScreen();
      EXPECT_EQ(info->mCellCount, spritetest::DrawFrame(sprite, int(f), 7, 5));
      EXPECT_TRUE(zvtest::SamePixels(name + "_frame" + std::to_string(f), Visible(frames[f]),
                                     zvtest::ReadPixels(7, 5, info->mWidth, info->mHeight), info->mWidth,
                                     info->mHeight));
    }
  }
  void Describe(const std::string& text) { zvtest::WriteText(sources + "/hero.sprite", text); }
  std::string Run(const std::string& arguments) {
    return zvtest::RunCommand(std::string(SPRITE_BUILDER) + " " + arguments + " 2>&1; echo \"exit $?\"");
  }
  bool Build(std::string* error, int pageSize = 256) {
    sb::Options options;
    options.description = sources + "/hero.sprite";
    options.out = out;
    options.pageSize = pageSize;
    return sb::Build(options, &report, error);
  }

  spritetest::SpriteGL gl;  // loading a sprite loads its pages as textures
  zvtest::TempDir dir;
  std::string sources, out;
  std::vector<std::pair<int, int>> sizes;
  std::vector<std::vector<uint32_t>> frames;
  sb::Report report;
};

TEST_F(SpriteBuilderTest, TheBuiltSpriteLoadsThroughTheFrameworkAndItsDrawnFramesEqualTheSources) {
  std::string error;
  ASSERT_TRUE(Build(&error)) << error;
  EXPECT_TRUE(report.warnings.empty());
  ygtest::ScopedWorkDir work(dir.path());

  AnimatedSpriteDataManager manager;
  EXPECT_EQ(0, manager.getSpriteIDByName("hero"));
  const unsigned id = manager.add("hero");
  ASSERT_NE(0u, id);
  const AnimatedSpriteData& sprite = *static_cast<AnimatedSpriteData*>(manager.mItems[id]);

  // Four distinct PNGs, four atlas frames, in order of first use.
  ASSERT_EQ(4u, sprite.mLayerSprites[0].size());
  EXPECT_EQ(1u, sprite.mLayerHeaders[0].mCompactCells);
  ASSERT_GE(sprite.mLayerTextures[0].size(), 1u);
  for (size_t i = 0; i < sprite.mLayerTextures[0].size(); ++i) {
    // Pages are R8G8B8A8 UDI files, what GL takes as it is, 256 wide and a power
    // of two high.
    const std::string path = AnimatedSpriteData::PagePath("hero", "body", int(i)) + ".udi";
    BMPData page;
    ASSERT_EQ(0, LoadImageFromFile(path.c_str(), &page)) << path;
    EXPECT_EQ(1, page.pixelFormat);
    EXPECT_EQ(32, page.bitsPerPixel);
    EXPECT_EQ(0, page.paletteType);
    UnloadBMPData(&page);
    const GLTexture* texture = sprite.GetLayerTexture(eImageLayer_Base, int(i));
    ASSERT_NE(nullptr, texture) << path;
    EXPECT_EQ(path, texture->mName);
    EXPECT_EQ(256u, texture->mWidth);
    EXPECT_EQ(0u, texture->mHeight & (texture->mHeight - 1));
  }
  ExpectDrawnFramesEqualSources(sprite, "built");
  // Clear tiles are left out: frame 2 is one, and the third column of frame 3's
  // cells holds only x = 32, which is clear.
  EXPECT_EQ(0, sprite.GetSpriteInfo(eImageLayer_Base, 2)->mCellCount);
  EXPECT_EQ(4, sprite.GetSpriteInfo(eImageLayer_Base, 3)->mCellCount);
}

TEST_F(SpriteBuilderTest, FramesSpreadOverSmallPagesDrawTheSame) {
  std::string error;
  ASSERT_TRUE(Build(&error, 32)) << error;  // four tiles a page
  ygtest::ScopedWorkDir work(dir.path());
  AnimatedSpriteData sprite("hero");
  ASSERT_EQ(1, sprite.Load("hero"));
  ASSERT_GT(sprite.mLayerTextures[0].size(), 2u);
  for (size_t i = 0; i < sprite.mLayerTextures[0].size(); ++i) {
    ASSERT_NE(nullptr, sprite.GetLayerTexture(eImageLayer_Base, int(i))) << i;
  }
  ExpectDrawnFramesEqualSources(sprite, "small_pages");
}

TEST_F(SpriteBuilderTest, TheAnimationsHoldTheDescribedKeysTimesEventsAndBoxes) {
  std::string error;
  ASSERT_TRUE(Build(&error)) << error;
  ygtest::ScopedWorkDir work(dir.path());
  AnimatedSpriteData sprite("hero");
  ASSERT_EQ(1, sprite.Load("hero"));
  const AnimationSet& set = *sprite.mAnimationSet;
  EXPECT_STREQ("hero", set.mSetName);
  EXPECT_STREQ("body", set.mLayerNames[0]);
  ASSERT_EQ(2u, set.mAnimCount);
  ASSERT_EQ(2, set.mBoxCount);
  EXPECT_EQ(4, set.mBoxes[1].mLeft);
  EXPECT_EQ(-20, set.mBoxes[1].mTop);
  EXPECT_EQ(24, set.mBoxes[1].mRight);
  EXPECT_EQ(-12, set.mBoxes[1].mBottom);

  const AnimationData& walk = set.mAnimations[set.GetAnimIndexByName("walk")];
  EXPECT_EQ(1, walk.mPlayMode);
  EXPECT_EQ(1.0f, walk.mDuration);
  ASSERT_EQ(4u, walk.mKeyCount);  // three frames and the closing key
  const float times[] = {0.0f, 0.25f, 0.5f, 1.0f};
  const int sprites[] = {0, 1, 2, 2};
  for (int k = 0; k < 4; ++k) {
    EXPECT_EQ(times[k], walk.mKeys[k].mTime) << k;
    EXPECT_EQ(sprites[k], walk.mKeys[k].mSpriteIndex) << k;
  }
  EXPECT_EQ(0, walk.mKeys[0].mBoxIndex[0]);
  EXPECT_EQ(0xFFFF, walk.mKeys[0].mBoxIndex[1]);
  EXPECT_EQ(2, walk.mKeys[1].mOffsetX);
  EXPECT_EQ(-1, walk.mKeys[1].mOffsetY);
  EXPECT_EQ(3, walk.mKeys[1].mEvent);
  EXPECT_EQ(77u, walk.mKeys[2].mValue);
  EXPECT_EQ(0, walk.mKeys[2].mBoxIndex[1]);
  EXPECT_EQ(1, walk.mKeys[2].mBoxIndex[2]);
  EXPECT_EQ(0u, walk.mKeys[3].mValue);  // the closing key reports nothing
  EXPECT_EQ(1, walk.mKeys[3].mBoxIndex[2]);

  const AnimationData& fall = set.mAnimations[set.GetAnimIndexByName("fall")];
  EXPECT_EQ(0, fall.mPlayMode);
  EXPECT_EQ(0.25f, fall.mDuration);
  ASSERT_EQ(3u, fall.mKeyCount);
  EXPECT_EQ(3, fall.mKeys[0].mSpriteIndex);
  EXPECT_EQ(0, fall.mKeys[1].mSpriteIndex);
}

TEST_F(SpriteBuilderTest, EachFrameShowsForItsTimeAndReportsWhenPlayReachesIt) {
  std::string error;
  ASSERT_TRUE(Build(&error)) << error;
  ygtest::ScopedWorkDir work(dir.path());
  AnimatedSpriteData sprite("hero");
  ASSERT_EQ(1, sprite.Load("hero"));
  std::unique_ptr<AnimationController> controller(AnimationController::CreateAnimationController(sprite.mAnimationSet));
  RecordingHandler handler;
  controller->mHandler = &handler;
  AnimationTrack track;
  track.mEnable = 1;
  track.mAnimIndex = 0;
  track.mMode = 1;
  controller->SetTrackDesc(&track);
  handler.told.clear();
  // Steps of 1/16 s over two loops: the frame that shows at each step.
  std::string shown;
  for (int step = 0; step < 32; ++step) {
    controller->AdvanceTime(0.0625f, false);
    shown += char('0' + controller->mCurrent.mSpriteIndex);
  }
  // A key's own time still shows the frame before; the loop wraps at 1 s.
  EXPECT_EQ("00001111222222200000111122222220", shown);
  ASSERT_EQ(std::vector<int>({3, 4, 3, 4}), handler.codes());
  EXPECT_EQ(3, handler.told[0].track.mEvent);
  EXPECT_EQ(77u, handler.told[1].track.mEventValue);
}

TEST_F(SpriteBuilderTest, AnEventOnAFirstFrameIsBuiltWithAWarning) {
  Describe("sprite hero\nanimation a loop\nframe f0.png 1 event 2\n");
  std::string error;
  ASSERT_TRUE(Build(&error)) << error;
  ASSERT_EQ(1u, report.warnings.size());
  EXPECT_NE(std::string::npos, report.warnings[0].find("hero.sprite:3: the event or value of an animation's first frame"));
}

TEST_F(SpriteBuilderTest, BuildingAgainKeepsTheListAndDropsStalePages) {
  std::string error;
  ASSERT_TRUE(Build(&error, 16)) << error;
  const std::string page = out + "/hero/hero_body_page";
  const size_t many = report.written.size() - 3;  // all but .anim, .tal and the list
  ASSERT_GT(many, 2u);
  EXPECT_TRUE(zvtest::Exists(page + std::to_string(many - 1) + ".udi"));
  zvtest::WriteText(out + "/AnimatedSpritesList.txt", "slime\r\nhero\r\nboss");
  ASSERT_TRUE(Build(&error, 256)) << error;
  EXPECT_EQ(4u, report.written.size());
  EXPECT_TRUE(zvtest::Exists(page + "0.udi"));
  EXPECT_FALSE(zvtest::Exists(page + "1.udi"));
  EXPECT_FALSE(zvtest::Exists(page + std::to_string(many - 1) + ".udi"));
  EXPECT_EQ("slime\r\nhero\r\nboss", zvtest::ReadText(out + "/AnimatedSpritesList.txt"));

  Describe("sprite knight\nanimation a loop\nframe f0.png 1\n");
  ASSERT_TRUE(Build(&error)) << error;
  EXPECT_EQ("slime\r\nhero\r\nboss\nknight\n", zvtest::ReadText(out + "/AnimatedSpritesList.txt"));
  ygtest::ScopedWorkDir work(dir.path());
  AnimatedSpriteDataManager manager;
  EXPECT_EQ(3, manager.getSpriteIDByName("knight"));
}

TEST_F(SpriteBuilderTest, AMissingFrameStopsTheBuildBeforeAnythingIsWritten) {
  Describe("sprite hero\nanimation a loop\nframe f0.png 1\nframe nothere.png 1\n");
  std::string error;
  EXPECT_FALSE(Build(&error));
  EXPECT_EQ(0u, error.find(sources + "/hero.sprite:4: " + sources + "/nothere.png: ")) << error;
  EXPECT_FALSE(zvtest::Exists(out));
}

TEST_F(SpriteBuilderTest, TheProgramSaysHowToUseItAndFailsClearly) {
  const std::string help = Run("--help");
  EXPECT_NE(std::string::npos, help.find("--page-size")) << help;
  EXPECT_NE(std::string::npos, help.find("exit 0")) << help;
  EXPECT_NE(std::string::npos, Run("").find("exit 2"));
  EXPECT_NE(std::string::npos, Run("--bogus x").find("exit 2"));
  EXPECT_NE(std::string::npos, Run("--page-size big " + sources + "/hero.sprite").find("exit 2"));

  Describe("sprite hero\nanimation a sometimes\n");
  const std::string bad = Run(sources + "/hero.sprite --out " + out);
  EXPECT_NE(std::string::npos, bad.find("sprite-builder: " + sources + "/hero.sprite:2: \"sometimes\" is no way of playing")) << bad;
  EXPECT_NE(std::string::npos, bad.find("exit 1")) << bad;
}

TEST_F(SpriteBuilderTest, TheProgramWritesTheSpriteAndSaysWhatItMade) {
  const std::string made = Run(sources + "/hero.sprite --out " + out + " --page-size 64");
  EXPECT_NE(std::string::npos, made.find("exit 0")) << made;
  EXPECT_NE(std::string::npos, made.find("hero: 2 animation(s), 4 frame(s), ")) << made;
  EXPECT_TRUE(zvtest::Exists(out + "/hero/hero.anim"));
  EXPECT_TRUE(zvtest::Exists(out + "/hero/hero_body.tal"));
  EXPECT_TRUE(zvtest::Exists(out + "/hero/hero_body_page0.udi"));
  EXPECT_EQ("hero\n", zvtest::ReadText(out + "/AnimatedSpritesList.txt"));
}

}  // namespace
