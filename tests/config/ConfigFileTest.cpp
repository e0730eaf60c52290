#include "ConfigSystem/ConfigFile.h"

#include <gtest/gtest.h>

#include <cmath>
#include <string>

#include "config/ParBytes.h"
#include "support/TestSupport.h"

namespace {

using ConfigDefine::tMatrix;
using ConfigDefine::tVector;
using zvtest::ParBytes;
using zvtest::TempDir;
using zvtest::WriteBytes;
using zvtest::WriteText;

// A tree in the XML form, inside a <Config> root.
std::string XmlTree(const std::string& body) { return "<?xml version=\"1.0\"?>\n<Config>\n" + body + "</Config>\n"; }

std::string Prop(const std::string& name, const std::string& type, const std::string& attributes) {
  return "<P name=\"" + name + "\" type=\"" + type + "\" " + attributes + "/>\n";
}

class ConfigFileTest : public testing::Test {
 protected:
  bool LoadXml(const std::string& body) {
    const std::string path = dir.file("tree.xml");
    WriteText(path, XmlTree(body));
    return config.load(path.c_str());
  }
  bool LoadPar(const ParBytes& par) {
    const std::string path = dir.file("tree.par");
    WriteBytes(path, par.bytes);
    return config.load(path.c_str());
  }

  TempDir dir;
  ConfigFile config;
};

// --- look-up by path --------------------------------------------------------

const char* kNested =
    "<N name=\"a\" nodeType=\"childNode\">\n"
    "  <G nodeType=\"nodeProperty\">" "<P name=\"top\" type=\"int\" value=\"1\"/>" "</G>\n"
    "  <N name=\"b\" nodeType=\"childNode\">\n"
    "    <G nodeType=\"nodeProperty\">"
    "<P name=\"c\" type=\"int\" value=\"7\"/><P name=\"c\" type=\"int\" value=\"8\"/>"
    "<P name=\"u\" type=\"unsigned int\" value=\"9\"/></G>\n"
    "    <N name=\"d\" nodeType=\"childNode\"><G nodeType=\"nodeProperty\">"
    "<P name=\"deep\" type=\"string\" value=\"bottom\"/></G></N>\n"
    "  </N>\n"
    "</N>\n"
    "<N name=\"e\" nodeType=\"childNode\"><G nodeType=\"nodeProperty\"><P name=\"f\" type=\"int\" value=\"5\"/></G></N>\n";

TEST_F(ConfigFileTest, AbsolutePathWalksNodesAndNamesAProperty) {
  ASSERT_TRUE(LoadXml(kNested));
  int value = 0;
  EXPECT_TRUE(config.getProperty_Int("a.top", value));
  EXPECT_EQ(1, value);
  EXPECT_TRUE(config.getProperty_Int("e.f", value));
  EXPECT_EQ(5, value);
  std::string text;
  EXPECT_TRUE(config.getProperty_String("a.b.d.deep", text));
  EXPECT_EQ("bottom", text);
}

TEST_F(ConfigFileTest, FirstPropertyOfAGivenNameWins) {
  ASSERT_TRUE(LoadXml(kNested));
  int value = 0;
  EXPECT_TRUE(config.getProperty_Int("a.b.c", value));
  EXPECT_EQ(7, value);
}

TEST_F(ConfigFileTest, RelativePathIsFoundUnderTheCurrentPath) {
  ASSERT_TRUE(LoadXml(kNested));
  config.setCurrentPath("a.b");
  EXPECT_EQ("a.b", config.getCurrentPath());
  int value = 0;
  EXPECT_TRUE(config.getProperty_Int("c", value));
  EXPECT_EQ(7, value);
}

TEST_F(ConfigFileTest, LeadingDotGetsOneDotMoreAndTheEmptyPartFindsNothing) {
  ASSERT_TRUE(LoadXml(kNested));
  config.setCurrentPath("a.b");
  EXPECT_EQ(nullptr, config.findPropertyNodeFrom(".c"));  // "a.b..c"
}

TEST_F(ConfigFileTest, NameWithoutDotAndEmptyCurrentPathFindsNothing) {
  ASSERT_TRUE(LoadXml(kNested));
  EXPECT_EQ("", config.getCurrentPath());
  EXPECT_EQ(nullptr, config.findPropertyNodeFrom("top"));  // ".top"
  EXPECT_EQ(nullptr, config.findPropertyNodeFrom("a"));
}

TEST_F(ConfigFileTest, MissingNodeOrPropertyFindsNothing) {
  ASSERT_TRUE(LoadXml(kNested));
  EXPECT_EQ(nullptr, config.findPropertyNodeFrom("x.top"));
  EXPECT_EQ(nullptr, config.findPropertyNodeFrom("a.x.c"));
  EXPECT_EQ(nullptr, config.findPropertyNodeFrom("a.b.x"));
  EXPECT_EQ(nullptr, config.findPropertyNodeFrom("a.b.d.deep.more"));
}

TEST_F(ConfigFileTest, ScalarGetterDemandsTheExactTypeAndKeepsTheVariable) {
  ASSERT_TRUE(LoadXml(kNested));
  int value = -123;
  EXPECT_FALSE(config.getProperty_Int("a.b.u", value));  // an "unsigned int"
  EXPECT_EQ(-123, value);
  unsigned int unsignedValue = 0;
  EXPECT_TRUE(config.getProperty_UInt("a.b.u", unsignedValue));
  EXPECT_EQ(9u, unsignedValue);
  long longValue = 3;
  EXPECT_FALSE(config.getProperty_Long("a.b.u", longValue));
  EXPECT_EQ(3, longValue);
}

// --- the XML form -------------------------------------------------------------

TEST_F(ConfigFileTest, XmlReadsEveryType) {
  ASSERT_TRUE(LoadXml("<N name=\"t\" nodeType=\"childNode\"><G nodeType=\"nodeProperty\">" +
                      Prop("b", "bool", "value=\"true\"") + Prop("c", "char", "value=\"xyz\"") +
                      Prop("uc", "unsigned char", "value=\"Q\"") + Prop("s", "short", "value=\"-300\"") +
                      Prop("us", "unsigned short", "value=\"65000\"") + Prop("i", "int", "value=\"-70000\"") +
                      Prop("ui", "unsigned int", "value=\"70000\"") + Prop("l", "long", "value=\"-5\"") +
                      Prop("ul", "unsigned long", "value=\"5\"") + Prop("f", "float", "value=\"0.1\"") +
                      Prop("v2", "vector2", "v0=\"1.5\" v1=\"-2\"") +
                      Prop("v3", "vector3", "v0=\"1\" v1=\"2\" v2=\"3\"") +
                      Prop("v4", "vector4", "v0=\"1\" v1=\"2\" v2=\"3\" v3=\"4\"") +
                      Prop("m2", "matrix2X2", "v00=\"1\" v01=\"2\" v10=\"3\" v11=\"4\"") +
                      Prop("m3", "matrix3X3",
                           "v00=\"1\" v01=\"2\" v02=\"3\" v10=\"4\" v11=\"5\" v12=\"6\" v20=\"7\" v21=\"8\" v22=\"9\"") +
                      Prop("m4", "matrix4X4", "v00=\"1\" v11=\"1\" v22=\"1\" v33=\"1\" v03=\"9\" v30=\"-9\"") +
                      Prop("str", "string", "value=\"hello there\"") + "</G></N>"));
  bool b = false;
  EXPECT_TRUE(config.getProperty_Bool("t.b", b));
  EXPECT_TRUE(b);
  char c = 0;
  EXPECT_TRUE(config.getProperty_Char("t.c", c));
  EXPECT_EQ('x', c);
  unsigned char uc = 0;
  EXPECT_TRUE(config.getProperty_UChar("t.uc", uc));
  EXPECT_EQ('Q', uc);
  short s = 0;
  EXPECT_TRUE(config.getProperty_Short("t.s", s));
  EXPECT_EQ(-300, s);
  unsigned short us = 0;
  EXPECT_TRUE(config.getProperty_UShort("t.us", us));
  EXPECT_EQ(65000, us);
  int i = 0;
  EXPECT_TRUE(config.getProperty_Int("t.i", i));
  EXPECT_EQ(-70000, i);
  unsigned ui = 0;
  EXPECT_TRUE(config.getProperty_UInt("t.ui", ui));
  EXPECT_EQ(70000u, ui);
  long l = 0;
  EXPECT_TRUE(config.getProperty_Long("t.l", l));
  EXPECT_EQ(-5, l);
  unsigned long ul = 0;
  EXPECT_TRUE(config.getProperty_ULong("t.ul", ul));
  EXPECT_EQ(5u, ul);
  float f = 0, real = 0;
  EXPECT_TRUE(config.getProperty_Float("t.f", f));
  EXPECT_TRUE(config.getProperty_Real("t.f", real));
  EXPECT_EQ(0.1f, f);
  EXPECT_EQ(f, real);
  tVector<double, 2> v2{};
  EXPECT_TRUE(config.getProperty_Vec2("t.v2", v2));
  EXPECT_EQ(1.5, v2[0]);
  EXPECT_EQ(-2.0, v2[1]);
  Math3D::vec3 v3{};
  EXPECT_TRUE(config.getProperty_Vec3("t.v3", v3));
  EXPECT_EQ(3.0f, v3.z);
  tVector<double, 4> v4{};
  EXPECT_TRUE(config.getProperty_Vec4("t.v4", v4));
  EXPECT_EQ(4.0, v4[3]);
  tMatrix<double, 2, 2> m2{};
  EXPECT_TRUE(config.getProperty_Matrix2X2("t.m2", m2));
  EXPECT_EQ(2.0, m2[0][1]);
  EXPECT_EQ(3.0, m2[1][0]);
  tMatrix<double, 3, 3> m3{};
  EXPECT_TRUE(config.getProperty_Matrix3X3("t.m3", m3));
  EXPECT_EQ(6.0, m3[1][2]);
  EXPECT_EQ(8.0, m3[2][1]);
  tMatrix<double, 4, 4> m4{};
  EXPECT_TRUE(config.getProperty_Matrix4X4("t.m4", m4));
  EXPECT_EQ(9.0, m4[0][3]);
  EXPECT_EQ(-9.0, m4[3][0]);
  EXPECT_EQ(0.0, m4[1][2]);
  std::string str;
  EXPECT_TRUE(config.getProperty_String("t.str", str));
  EXPECT_EQ("hello there", str);
}

TEST_F(ConfigFileTest, CharPropertyAnswersItsFirstLetter) {
  ASSERT_TRUE(LoadXml("<N name=\"t\" nodeType=\"childNode\"><G nodeType=\"nodeProperty\">" +
                      Prop("c", "char", "value=\"xyz\"") + "</G></N>"));
  char c = 0;
  ASSERT_TRUE(config.getProperty_Char("t.c", c));
  EXPECT_EQ('x', c);
  // A text of type "char" is not of the family the string getter takes.
  std::string text;
  EXPECT_FALSE(config.getProperty_String("t.c", text));
}

TEST_F(ConfigFileTest, Vec4OnAVector2IsAcceptedByFamilyAndCopiesWhatTheValueHas) {
  ASSERT_TRUE(LoadXml("<N name=\"t\" nodeType=\"childNode\"><G nodeType=\"nodeProperty\">" +
                      Prop("v", "vector2", "v0=\"1\" v1=\"2\"") + "</G></N>"));
  tVector<double, 4> result{{-1, -1, -1, -1}};
  EXPECT_TRUE(config.getProperty_Vec4("t.v", result));
  EXPECT_EQ(1.0, result[0]);
  EXPECT_EQ(2.0, result[1]);
  // Nothing is read past the two doubles the value holds.
  EXPECT_EQ(-1.0, result[2]);
  EXPECT_EQ(-1.0, result[3]);
  tMatrix<double, 4, 4> matrix{};
  EXPECT_TRUE(config.getProperty_Matrix4X4("t.v", matrix));
  EXPECT_NE(nullptr, config.getProperty("t.v"));
}

TEST_F(ConfigFileTest, FamilyGettersRefuseScalars) {
  ASSERT_TRUE(LoadXml("<N name=\"t\" nodeType=\"childNode\"><G nodeType=\"nodeProperty\">" +
                      Prop("i", "int", "value=\"1\"") + "</G></N>"));
  tVector<double, 2> v{};
  EXPECT_FALSE(config.getProperty_Vec2("t.i", v));
  EXPECT_EQ(nullptr, config.getProperty("t.i"));
}

TEST_F(ConfigFileTest, XmlBoolMustBeTrueOrFalse) {
  EXPECT_FALSE(LoadXml("<N name=\"t\" nodeType=\"childNode\"><G nodeType=\"nodeProperty\">" +
                       Prop("b", "bool", "value=\"yes\"") + "</G></N>"));
  EXPECT_EQ(nullptr, config.getRoot());
}

TEST_F(ConfigFileTest, XmlUnknownTypeFails) {
  EXPECT_FALSE(LoadXml("<N name=\"t\" nodeType=\"childNode\"><G nodeType=\"nodeProperty\">" +
                       Prop("x", "double", "value=\"1\"") + "</G></N>"));
}

TEST_F(ConfigFileTest, XmlFailureInALaterTopNodeReleasesTheTree) {
  EXPECT_FALSE(LoadXml("<N name=\"ok\" nodeType=\"childNode\"/>\n<N name=\"bad\" nodeType=\"other\"/>\n"));
  EXPECT_EQ(nullptr, config.getRoot());
}

TEST_F(ConfigFileTest, XmlTopNodeWithoutChildNodeTypeFails) {
  EXPECT_FALSE(LoadXml("<N name=\"bad\" nodeType=\"leaf\"/>\n"));
}

TEST_F(ConfigFileTest, XmlSkipsElementsOfOtherNodeTypes) {
  ASSERT_TRUE(LoadXml("<N name=\"t\" nodeType=\"childNode\"><Note nodeType=\"comment\"><P name=\"x\" type=\"int\" "
                      "value=\"1\"/></Note><Plain/><G nodeType=\"nodeProperty\">" +
                      Prop("y", "int", "value=\"2\"") + "</G></N>"));
  EXPECT_EQ(nullptr, config.findPropertyNodeFrom("t.x"));
  EXPECT_NE(nullptr, config.findPropertyNodeFrom("t.y"));
}

TEST_F(ConfigFileTest, XmlRootWithoutChildrenIsAnEmptyTree) {
  EXPECT_TRUE(LoadXml(""));
  EXPECT_EQ(nullptr, config.getRoot());
}

TEST_F(ConfigFileTest, XmlMissingOrMalformedFileFails) {
  EXPECT_FALSE(config.load(dir.file("missing.xml").c_str()));
  WriteText(dir.file("broken.xml"), "<Config><N name=\"a\" nodeType=\"childNode\"></Config>");
  EXPECT_FALSE(config.load(dir.file("broken.xml").c_str()));
}

TEST_F(ConfigFileTest, XmlKeepsChildrenInFileOrder) {
  ASSERT_TRUE(LoadXml("<N name=\"p\" nodeType=\"childNode\"><N name=\"one\" nodeType=\"childNode\"/>"
                      "<N name=\"two\" nodeType=\"childNode\"/><N name=\"three\" nodeType=\"childNode\"/></N>"));
  ConfigTreeNode* parent = config.getRoot();
  ASSERT_NE(nullptr, parent);
  EXPECT_EQ("one", parent->mFirstChild->mName);
  EXPECT_EQ(parent, parent->mFirstChild->mParent);
  ConfigTreeNode* last = config.getTheLastChildItem(parent);
  ASSERT_NE(nullptr, last);
  EXPECT_EQ("three", last->mName);
  EXPECT_EQ(nullptr, config.getTheLastChildItem(last));
}

// --- the binary form ----------------------------------------------------------

TEST_F(ConfigFileTest, ParEveryTypeWrittenAndReadBack) {
  ParBytes par;
  par.node("t", 0, 17)
      .boolean("b", 2)  // any non-zero byte is true
      .text("c", 2, "xyz")
      .text("uc", 3, "Q")
      .number("s", 4, -300)
      .number("us", 5, 65000)
      .number("i", 6, -70000)
      .number("ui", 7, 70000)
      .number("l", 8, -5)
      .number("ul", 9, 5)
      .number("f", 10, 0.25)
      .doubles("v2", 11, {1.5, -2})
      .doubles("v3", 12, {1, 2, 3})
      .doubles("v4", 13, {1, 2, 3, 4})
      .doubles("m2", 14, {1, 2, 3, 4})
      .doubles("m3", 15, {1, 2, 3, 4, 5, 6, 7, 8, 9})
      .doubles("m4", 16, {1, 0, 0, 9, 0, 1, 0, 0, 0, 0, 1, 0, -9, 0, 0, 1})
      .text("str", 17, "hello there");
  ASSERT_TRUE(LoadPar(par));
  bool b = false;
  EXPECT_TRUE(config.getProperty_Bool("t.b", b));
  EXPECT_TRUE(b);
  char c = 0;
  EXPECT_TRUE(config.getProperty_Char("t.c", c));
  EXPECT_EQ('x', c);
  unsigned char uc = 0;
  EXPECT_TRUE(config.getProperty_UChar("t.uc", uc));
  EXPECT_EQ('Q', uc);
  short s = 0;
  EXPECT_TRUE(config.getProperty_Short("t.s", s));
  EXPECT_EQ(-300, s);
  unsigned short us = 0;
  EXPECT_TRUE(config.getProperty_UShort("t.us", us));
  EXPECT_EQ(65000, us);
  int i = 0;
  EXPECT_TRUE(config.getProperty_Int("t.i", i));
  EXPECT_EQ(-70000, i);
  unsigned ui = 0;
  EXPECT_TRUE(config.getProperty_UInt("t.ui", ui));
  EXPECT_EQ(70000u, ui);
  long l = 0;
  EXPECT_TRUE(config.getProperty_Long("t.l", l));
  EXPECT_EQ(-5, l);
  unsigned long ul = 0;
  EXPECT_TRUE(config.getProperty_ULong("t.ul", ul));
  EXPECT_EQ(5u, ul);
  float f = 0;
  EXPECT_TRUE(config.getProperty_Float("t.f", f));
  EXPECT_EQ(0.25f, f);
  Math3D::vec2 v2{};
  EXPECT_TRUE(config.getProperty_Vec2("t.v2", v2));
  EXPECT_EQ(1.5f, v2.x);
  EXPECT_EQ(-2.0f, v2.y);
  tVector<double, 3> v3{};
  EXPECT_TRUE(config.getProperty_Vec3("t.v3", v3));
  EXPECT_EQ(3.0, v3[2]);
  Math3D::vec4 v4{};
  EXPECT_TRUE(config.getProperty_Vec4("t.v4", v4));
  EXPECT_EQ(4.0f, v4.w);
  tMatrix<double, 2, 2> m2{};
  EXPECT_TRUE(config.getProperty_Matrix2X2("t.m2", m2));
  EXPECT_EQ(3.0, m2[1][0]);
  tMatrix<double, 3, 3> m3{};
  EXPECT_TRUE(config.getProperty_Matrix3X3("t.m3", m3));
  EXPECT_EQ(6.0, m3[1][2]);
  tMatrix<double, 4, 4> m4{};
  EXPECT_TRUE(config.getProperty_Matrix4X4("t.m4", m4));
  EXPECT_EQ(9.0, m4[0][3]);
  EXPECT_EQ(-9.0, m4[3][0]);
  std::string str;
  EXPECT_TRUE(config.getProperty_String("t.str", str));
  EXPECT_EQ("hello there", str);
}

TEST_F(ConfigFileTest, ParIntStoredAsDoubleIsNarrowedByPlainConversion) {
  ParBytes par;
  par.node("t", 0, 2).number("i", 6, 3.9).number("n", 6, -3.9);
  ASSERT_TRUE(LoadPar(par));
  int value = 0;
  ASSERT_TRUE(config.getProperty_Int("t.i", value));
  EXPECT_EQ(3, value);
  ASSERT_TRUE(config.getProperty_Int("t.n", value));
  EXPECT_EQ(-3, value);
}

TEST_F(ConfigFileTest, ParNumbersBeyondTheirTypeAreNarrowedWithoutFault) {
  ParBytes par;
  par.node("t", 0, 4).number("s", 4, 70000.0).number("u", 7, -1.0).number("big", 6, 1e300).number(
      "nan", 6, std::nan(""));
  ASSERT_TRUE(LoadPar(par));
  short s = 0;
  ASSERT_TRUE(config.getProperty_Short("t.s", s));
  EXPECT_EQ(short(70000 - 65536), s);  // the integer part wraps to 16 bits
  unsigned u = 0;
  ASSERT_TRUE(config.getProperty_UInt("t.u", u));
  EXPECT_EQ(0xFFFFFFFFu, u);
  int i = 7;
  ASSERT_TRUE(config.getProperty_Int("t.big", i));
  EXPECT_EQ(0, i);
  ASSERT_TRUE(config.getProperty_Int("t.nan", i));
  EXPECT_EQ(0, i);
}

TEST_F(ConfigFileTest, ParEndingRightAfterTheLastChildEndsAtEndOfFile) {
  ParBytes par;
  par.node("top", 2, 1).number("x", 6, 1);
  par.node("kid1", 0, 1).number("y", 6, 2);
  par.node("kid2", 0, 1).number("z", 6, 3);
  par.node("next", 0, 1).number("w", 6, 4);  // no end marker after it
  ASSERT_TRUE(LoadPar(par));
  int value = 0;
  EXPECT_TRUE(config.getProperty_Int("top.kid2.z", value));
  EXPECT_EQ(3, value);
  EXPECT_TRUE(config.getProperty_Int("next.w", value));
  EXPECT_EQ(4, value);
  ASSERT_NE(nullptr, config.getRoot()->mNextSibling);
  EXPECT_EQ(nullptr, config.getRoot()->mNextSibling->mNextSibling);
}

TEST_F(ConfigFileTest, ParZeroNameLengthEndsTheReading) {
  ParBytes par;
  par.node("first", 0, 1).number("a", 6, 1).end();
  par.node("hidden", 0, 1).number("b", 6, 2);
  ASSERT_TRUE(LoadPar(par));
  EXPECT_NE(nullptr, config.findPropertyNodeFrom("first.a"));
  EXPECT_EQ(nullptr, config.findPropertyNodeFrom("hidden.b"));
  EXPECT_EQ(nullptr, config.getRoot()->mNextSibling);
}

TEST_F(ConfigFileTest, ParPropertyTypeOutOfRangeStopsTheNode) {
  ParBytes par;
  par.node("good", 0, 1).number("a", 6, 1);
  par.node("bad", 0, 1).head("p", 18);
  ASSERT_TRUE(LoadPar(par));  // the result is true whatever happened
  EXPECT_NE(nullptr, config.findPropertyNodeFrom("good.a"));
  EXPECT_EQ(nullptr, config.getRoot()->mNextSibling);
}

TEST_F(ConfigFileTest, ParPropertyNameMustFit254Bytes) {
  ParBytes fits;
  fits.node("t", 0, 1).number(std::string(254, 'n'), 6, 1);
  ASSERT_TRUE(LoadPar(fits));
  ASSERT_NE(nullptr, config.getRoot());
  ASSERT_EQ(1u, config.getRoot()->mProperties.size());
  EXPECT_TRUE(config.getRoot()->mProperties[0]->mName == std::string(254, 'n').c_str());
  config.release();

  ParBytes tooLong;
  tooLong.node("t", 0, 1).number(std::string(255, 'n'), 6, 1);
  ASSERT_TRUE(LoadPar(tooLong));
  ASSERT_NE(nullptr, config.getRoot());
  EXPECT_EQ("t", config.getRoot()->mName);
  EXPECT_TRUE(config.getRoot()->mProperties.empty());
}

TEST_F(ConfigFileTest, ParDamagedLengthReadsAsTheEndOfTheData) {
  ParBytes par;
  par.node("t", 0, 1).head("s", 17);
  zvtest::PutI32(par.bytes, 1 << 30);  // far beyond the file
  zvtest::PutText(par.bytes, "short");
  ASSERT_TRUE(LoadPar(par));
  ASSERT_NE(nullptr, config.getRoot());
  EXPECT_TRUE(config.getRoot()->mProperties.empty());
  EXPECT_EQ(nullptr, config.findPropertyNodeFrom("t.s"));
}

TEST_F(ConfigFileTest, ParEmptyFileGivesARootWithoutAName) {
  ParBytes empty;
  ASSERT_TRUE(LoadPar(empty));
  ASSERT_NE(nullptr, config.getRoot());
  EXPECT_EQ("", config.getRoot()->mName);
  EXPECT_EQ(nullptr, config.getRoot()->mNextSibling);
  EXPECT_EQ(nullptr, config.getRoot()->mFirstChild);
}

TEST_F(ConfigFileTest, ParFirstNodeThatFailsToReadStaysTheRootAndNothingFollows) {
  ParBytes par;
  par.node("first", 0, 2).number("a", 6, 1).head("p", 18);
  par.node("second", 0, 1).number("b", 6, 2);
  ASSERT_TRUE(LoadPar(par));
  ASSERT_NE(nullptr, config.getRoot());
  EXPECT_EQ("first", config.getRoot()->mName);
  EXPECT_NE(nullptr, config.findPropertyNodeFrom("first.a"));  // read before the failure
  EXPECT_EQ(nullptr, config.getRoot()->mNextSibling);
  EXPECT_EQ(nullptr, config.findPropertyNodeFrom("second.b"));
}

TEST_F(ConfigFileTest, ParFirstNodeThatFailsReplacesTheTreeOfAnEarlierLoad) {
  ParBytes good;
  good.node("old", 0, 1).number("a", 6, 1);
  ASSERT_TRUE(LoadPar(good));
  ParBytes bad;
  bad.node("new", 0, 1).head("p", 0);
  ASSERT_TRUE(LoadPar(bad));
  ASSERT_NE(nullptr, config.getRoot());
  EXPECT_EQ("new", config.getRoot()->mName);
  EXPECT_EQ(nullptr, config.findPropertyNodeFrom("old.a"));
}

TEST_F(ConfigFileTest, ParHugeChildCountStopsAtTheEndOfTheData) {
  ParBytes par;
  par.node("t", 0x7fffffff, 0);
  par.node("only", 0, 0);
  ASSERT_TRUE(LoadPar(par));
  ASSERT_NE(nullptr, config.getRoot());
  ASSERT_NE(nullptr, config.getRoot()->mFirstChild);
  EXPECT_EQ("only", config.getRoot()->mFirstChild->mName);
}

TEST_F(ConfigFileTest, LoadChoosesTheFormByTheLastEnding) {
  WriteText(dir.file("tree.par.bak"), "whatever");
  EXPECT_FALSE(config.load(dir.file("tree.par.bak").c_str()));
  WriteText(dir.file("tree.txt"), "whatever");
  EXPECT_FALSE(config.load(dir.file("tree.txt").c_str()));
  ParBytes par;
  par.node("t", 0, 1).number("i", 6, 2);
  WriteBytes(dir.file("tree.xml.par"), par.bytes);
  EXPECT_TRUE(config.load(dir.file("tree.xml.par").c_str()));
  EXPECT_NE(nullptr, config.findPropertyNodeFrom("t.i"));
}

TEST_F(ConfigFileTest, SecondLoadWithoutReleaseReplacesTheTree) {
  ParBytes one;
  one.node("one", 0, 1).number("i", 6, 1);
  ASSERT_TRUE(LoadPar(one));
  ParBytes two;
  two.node("two", 0, 1).number("i", 6, 2);
  ASSERT_TRUE(LoadPar(two));
  EXPECT_EQ(nullptr, config.findPropertyNodeFrom("one.i"));
  EXPECT_NE(nullptr, config.findPropertyNodeFrom("two.i"));
}

// --- editing ------------------------------------------------------------------

TEST_F(ConfigFileTest, RemoveUnlinksTopNodesAndChildren) {
  ASSERT_TRUE(LoadXml(kNested));
  ConfigTreeNode* a = config.getRoot();
  ConfigTreeNode* b = a->mFirstChild;
  EXPECT_TRUE(config.remove(b));
  EXPECT_EQ(nullptr, a->mFirstChild);
  EXPECT_EQ(nullptr, config.findPropertyNodeFrom("a.b.c"));
  EXPECT_TRUE(config.remove(a));
  ASSERT_NE(nullptr, config.getRoot());
  EXPECT_EQ("e", config.getRoot()->mName);
  EXPECT_TRUE(config.remove(config.getRoot()));
  EXPECT_EQ(nullptr, config.getRoot());
}

TEST_F(ConfigFileTest, ReleaseEmptiesTheTree) {
  ASSERT_TRUE(LoadXml(kNested));
  config.release();
  EXPECT_EQ(nullptr, config.getRoot());
  EXPECT_EQ(nullptr, config.findPropertyNodeFrom("a.top"));
}

using ConfigFileDeathTest = ConfigFileTest;

TEST_F(ConfigFileDeathTest, RemovingANodeThatIsNotInItsListFailsTheAssertion) {
  ASSERT_TRUE(LoadXml(kNested));
  ConfigTreeNode stranger;
  EXPECT_DEATH(config.remove(&stranger),
               "Src/ConfigSystem/ConfigFile\\.cpp:[0-9]+: bool ConfigFile::remove\\(ConfigTreeNode\\*\\): "
                   "Assertion `__null != node' failed\\.");
}

TEST_F(ConfigFileDeathTest, NullCurrentPathFailsTheAssertion) {
  EXPECT_DEATH(config.setCurrentPath(nullptr),
               "Src/ConfigSystem/ConfigFile\\.cpp:[0-9]+: void ConfigFile::setCurrentPath\\(const char\\*\\): "
               "Assertion `currentPath!=__null&&\"currentPath is null!\"' failed\\.");
}

}  // namespace
