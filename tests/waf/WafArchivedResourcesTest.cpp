// Resources read through an archive give what the same files give read as plain
// files: layouts into grids, and configuration trees.
#include <gtest/gtest.h>

#include <iomanip>
#include <sstream>
#include <stdexcept>

#include "ConfigSystem/ConfigFile.h"
#include "YGUI/YGUIAnimation.h"
#include "YGUI/YGUIAnimeSet.h"
#include "YGUI/YGUIGrid.h"
#include "YGUI/YGUIImage.h"
#include "YGUI/YGUIImageButton.h"
#include "YGUI/YGUILabel.h"
#include "WafTestSupport.h"
#include "ygui/YguiTestSupport.h"

namespace {

using namespace waftest;

// --- what a grid holds, as text ---------------------------------------------

void DescribeAnimation(std::ostream& out, const YGUIAnimation* animation) {
  if (animation == nullptr) {
    out << " no-animation";
    return;
  }
  out << " animation " << animation->mNumAnimeSet << "/" << animation->mAnimeSetIndex;
  for (int s = 0; s < animation->mAnimeSetIndex; ++s) {
    const YGUIAnimeSet* set = animation->mAnimeSetBuffer[s];
    out << " [" << set->mName << " " << set->mNumKeyFrame << "/" << set->mKeyFrameIndex;
    for (int k = 0; k < set->mKeyFrameIndex; ++k) {
      const YGUIAnimeFrame* f = set->mKeyFrameBuffer[k];
      out << " (" << f->mX << "," << f->mY << "," << f->mWidth << "," << f->mHeight << "," << f->mAngle << ","
          << f->mTime << "," << f->mScaleX << "," << f->mScaleY << "," << f->mOpacity << ")";
    }
    out << "]";
  }
}

void DescribeImage(std::ostream& out, const YGUIRawImage& image) {
  out << " image " << image.mWidth << "x" << image.mHeight << " type " << image.mType;
  if (image.mData == nullptr) return;
  const size_t bytes = size_t(image.mWidth) * size_t(image.mHeight) * (image.mType == eImage_RGB888 ? 3 : 4);
  uint64_t hash = 1469598103934665603ull;
  for (size_t i = 0; i < bytes; ++i) hash = (hash ^ image.mData[i]) * 1099511628211ull;
  out << " pixels " << std::hex << hash << std::dec;
}

std::string Describe(const YGUIGrid& grid) {
  std::ostringstream out;
  out << "grid " << grid.mX << "," << grid.mY << " " << grid.mWidth << "x" << grid.mHeight;
  DescribeAnimation(out, grid.mAnimation);
  out << "\n";
  for (const YGUIFrame* frame : grid.mFrames) {
    out << "frame '" << frame->mName << "' at " << frame->mPositionX << "," << frame->mPositionY << " "
        << frame->mWidth << "x" << frame->mHeight << " visible " << frame->mVisible << " focus '"
        << frame->mFocusAnimation << "' '" << frame->mFocusOffAnimation << "'";
    DescribeAnimation(out, frame->mAnimation);
    if (const YGUIControl* control = dynamic_cast<const YGUIControl*>(frame)) {
      out << " id " << control->mId << " nav " << control->mNavigate.mUp << "," << control->mNavigate.mDown << ","
          << control->mNavigate.mLeft << "," << control->mNavigate.mRight << " enabled " << control->mEnabled;
    }
    if (const YGUIImageButton* button = dynamic_cast<const YGUIImageButton*>(frame)) {
      out << " button";
      for (const YGUIRawImage& image : button->mImages) DescribeImage(out, image);
    } else if (const YGUIImage* image = dynamic_cast<const YGUIImage*>(frame)) {
      out << " image role " << image->mRole;
      DescribeImage(out, image->mImage);
    } else if (const YGUILabel* label = dynamic_cast<const YGUILabel*>(frame)) {
      out << " label '" << label->mContent << "'";
    }
    out << "\n";
  }
  return out.str();
}

// --- what a configuration tree holds, as text -------------------------------

void DescribeNodes(std::ostream& out, const ConfigTreeNode* node, int depth) {
  for (; node != nullptr; node = node->mNextSibling) {
    out << std::string(size_t(depth) * 2, ' ') << "node '" << node->mName << "'\n";
    for (const ConfigDefine::ConfigDataNode* property : node->mProperties) {
      out << std::string(size_t(depth) * 2 + 2, ' ') << property->mName.c_str() << " type " << property->mType << " =";
      const unsigned char* value = static_cast<const unsigned char*>(property->mValue);
      for (unsigned i = 0; i < property->valueSize(); ++i) out << " " << std::hex << int(value[i]) << std::dec;
      out << "\n";
    }
    DescribeNodes(out, node->mFirstChild, depth + 1);
  }
}

std::string Describe(const ConfigFile& config) {
  std::ostringstream out;
  DescribeNodes(out, config.getRoot(), 0);
  return out.str();
}

Bytes FileBytes(const std::string& path) { return zvtest::ReadBytes(path); }

// --- layouts ------------------------------------------------------------------

class WafArchivedLayoutTest : public testing::Test {
 protected:
  // Each layout loaded from `folder`/`page`, and from an archive of the same
  // files, into grids of the menu's size, with the pictures found from `folder`.
  void ExpectSameGrids(const std::string& folder, const std::vector<std::string>& pages) {
    std::vector<Member> members;
    for (const std::string& page : pages) members.push_back({page, FileBytes(folder + "/res/UI/Page/" + page)});
    // The archive begins inside a host file, as it may.
    Bytes host = Noise(300, 1);
    const Bytes archive = LayArchive(members);
    host.insert(host.end(), archive.begin(), archive.end());
    ArchivePtr opened = OpenBytes(dir.file("layouts.bin"), host, 300);
    ASSERT_NE(nullptr, opened);

    ygtest::ScopedWorkDir work(folder);
    for (const std::string& page : pages) {
      YGUIGrid plain(nullptr), archived(nullptr);
      plain.SetSize(480, 272);
      archived.SetSize(480, 272);
      plain.LoadFromXml("res/UI/Page/" + page);
      FilePtr file = Open(opened, page);
      ASSERT_NE(nullptr, file) << page;
      archived.LoadFromXml(file.get());
      const std::string expected = Describe(plain);
      EXPECT_GT(plain.GetControlNum(), 0) << page;
      EXPECT_EQ(expected, Describe(archived)) << page;
      plain.Destroy();
      archived.Destroy();
    }
  }

  zvtest::TempDir dir;
  ygtest::ScopedTextureManager textures;
};

TEST_F(WafArchivedLayoutTest, TheToolkitsTestLayoutsGiveTheSameGrids) {
  ExpectSameGrids(ygtest::LayoutRoot(), {"TestMenuH.xml", "TestMenuV.xml"});
}

TEST_F(WafArchivedLayoutTest, TheRecordersLayoutsGiveTheSameGrids) {
  ExpectSameGrids(ZV_SOURCE_DIR, {"menu_mic_widget.xml", "menu_mic_widget_vert.xml", "menu_paint_save.xml",
                                  "menu_pop_up_gall_full_hori.xml", "menu_pop_up_gall_full_vert.xml"});
}

TEST_F(WafArchivedLayoutTest, NoFileOrAFileThatReadsShortThrows) {
  YGUIGrid grid(nullptr);
  EXPECT_THROW(grid.LoadFromXml(static_cast<waf_file*>(nullptr)), std::runtime_error);
  Bytes bytes;
  PutHeader(bytes, 1);
  PutRecord(bytes, "page.xml", 500, 12 + RecordSize("page.xml"));
  const std::string text = "<Grid><Image Name='a'/></Grid>";
  PutChain(bytes, Bytes(text.begin(), text.end()));
  ArchivePtr archive = OpenBytes(dir.file("short.waf"), bytes);
  ASSERT_NE(nullptr, archive);
  FilePtr file = Open(archive, "page.xml");
  ASSERT_NE(nullptr, file);
  try {
    grid.LoadFromXml(file.get());
    ADD_FAILURE() << "no exception";
  } catch (const std::runtime_error& error) {
    EXPECT_STREQ("cannot read file page.xml of the archive", error.what());
  }
  EXPECT_EQ(0, grid.GetControlNum());
  grid.Destroy();
}

// --- configuration trees ------------------------------------------------------

class WafArchivedConfigTest : public testing::Test {
 protected:
  // The tree of `text` loaded from a plain file and through an archive; the
  // results of both loads must agree too.
  void ExpectSameTrees(const std::string& text, bool loads) {
    const std::string path = dir.file("tree.xml");
    zvtest::WriteText(path, text);
    ArchivePtr archive = OpenBytes(dir.file("tree.waf"), LayArchive({{"tree.xml", Bytes(text.begin(), text.end())}}));
    ASSERT_NE(nullptr, archive);
    FilePtr file = Open(archive, "tree.xml");
    ASSERT_NE(nullptr, file);
    ConfigFile plain, archived;
    EXPECT_EQ(loads, plain.loadFromXMLFile(path.c_str()));
    EXPECT_EQ(loads, archived.loadFromWafFile(file.get()));
    EXPECT_EQ(Describe(plain), Describe(archived));
  }
  zvtest::TempDir dir;
};

TEST_F(WafArchivedConfigTest, TheTitlesConfigurationGivesTheSameTree) {
  const Bytes bytes = FileBytes(std::string(ZV_SOURCE_DIR) + "/res/CamCfg.xml");
  const std::string text(bytes.begin(), bytes.end());
  ExpectSameTrees(text, true);

  ArchivePtr archive = OpenBytes(dir.file("cfg.waf"), LayArchive({{"CamCfg.xml", bytes}}));
  FilePtr file = Open(archive, "CamCfg.xml");
  ASSERT_NE(nullptr, file);
  ConfigFile config;
  ASSERT_TRUE(config.loadFromWafFile(file.get()));
  int seconds = 0;
  EXPECT_TRUE(config.getProperty_Int("Recorder.MaxSeconds", seconds));
  EXPECT_EQ(100, seconds);
  Math3D::vec2 size;
  EXPECT_TRUE(config.getProperty_Vec2("Panel.Size", size));
  EXPECT_EQ(480.0f, size.x);
}

TEST_F(WafArchivedConfigTest, EveryTypeWithWindowsLineEndsGivesTheSameTree) {
  ExpectSameTrees(
      "<?xml version=\"1.0\"?>\r\n<Config>\r\n<N name=\"a\" nodeType=\"childNode\">\r\n"
      "<G nodeType=\"nodeProperty\">\r\n"
      "<P name=\"b\" type=\"bool\" value=\"true\"/>\r<P name=\"c\" type=\"char\" value=\"xyz\"/>\r\n"
      "<P name=\"s\" type=\"short\" value=\"-7\"/><P name=\"u\" type=\"unsigned int\" value=\"9\"/>\r\n"
      "<P name=\"f\" type=\"float\" value=\"0.25\"/><P name=\"v\" type=\"vector3\" v0=\"1\" v1=\"2\" v2=\"3\"/>\r\n"
      "<P name=\"m\" type=\"matrix2X2\" v00=\"1\" v01=\"2\" v10=\"3\" v11=\"4\"/>\r\n"
      "<P name=\"t\" type=\"string\" value=\"line one\"/>\r\n</G>\r\n"
      "<N name=\"child\" nodeType=\"childNode\"><G nodeType=\"nodeProperty\">"
      "<P name=\"deep\" type=\"long\" value=\"-3\"/></G></N>\r\n"
      "</N>\r\n<N name=\"second\" nodeType=\"childNode\"/>\r\n</Config>\r\n",
      true);
}

TEST_F(WafArchivedConfigTest, AFailingTreeFailsTheSameWay) {
  ExpectSameTrees(
      "<Config><N name=\"a\" nodeType=\"childNode\"><G nodeType=\"nodeProperty\">"
      "<P name=\"b\" type=\"bool\" value=\"maybe\"/></G></N></Config>",
      false);
  ExpectSameTrees("<Config><N name=\"a\" nodeType=\"childNode\">", false);
}

TEST_F(WafArchivedConfigTest, NoFileLoadsNothing) {
  ConfigFile config;
  EXPECT_FALSE(config.loadFromWafFile(nullptr));
  EXPECT_EQ(nullptr, config.getRoot());
}

}  // namespace
