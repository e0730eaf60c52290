// A TinyXML document loaded from a file inside an archive, in the steps of the
// library's own loading from a stream.
#include <gtest/gtest.h>

#include "External/waf/waftinyxml.h"
#include "WafTestSupport.h"

namespace {

using namespace waftest;

std::string Printed(const TiXmlDocument& document) {
  TiXmlPrinter printer;
  document.Accept(&printer);
  return printer.Str();
}

class WafTinyXmlTest : public testing::Test {
 protected:
  // An archive holding `text` as "doc.xml", and that file opened.
  FilePtr OpenText(const std::string& text) {
    archive = OpenBytes(dir.file("xml.waf"), LayArchive({{"doc.xml", Bytes(text.begin(), text.end())}}));
    EXPECT_NE(nullptr, archive);
    return archive ? Open(archive, "doc.xml") : FilePtr();
  }
  // The same text loaded by the library from a plain file.
  void LoadPlain(TiXmlDocument& document, const std::string& text) {
    zvtest::WriteText(dir.file("doc.xml"), text);
    document.LoadFile(dir.file("doc.xml").c_str());
  }

  zvtest::TempDir dir;
  ArchivePtr archive;
};

TEST_F(WafTinyXmlTest, DocumentFromAnArchiveIsTheDocumentFromAPlainFile) {
  const std::string text =
      "<?xml version=\"1.0\"?>\n<!-- settings -->\n<Root a=\"1\">\n  <Child name=\"x\">text &amp; more</Child>\n"
      "  <Empty/>\n</Root>\n";
  FilePtr file = OpenText(text);
  ASSERT_NE(nullptr, file);
  TiXmlDocument archived, plain;
  ASSERT_TRUE(LoadFile(archived, file.get()));
  LoadPlain(plain, text);
  ASSERT_FALSE(plain.Error());
  EXPECT_FALSE(archived.Error());
  EXPECT_EQ(Printed(plain), Printed(archived));
  ASSERT_NE(nullptr, archived.RootElement());
  EXPECT_STREQ("Root", archived.RootElement()->Value());
  EXPECT_EQ(3, archived.RootElement()->Row());
}

TEST_F(WafTinyXmlTest, NullFileFailsWithError2) {
  TiXmlDocument document;
  EXPECT_FALSE(LoadFile(document, nullptr));
  EXPECT_TRUE(document.Error());
  EXPECT_EQ(2, document.ErrorId());
  EXPECT_STREQ("Failed to open file", document.ErrorDesc());
}

// The library's own code for an empty document; its number is that of the
// library as the system ships it.
TEST_F(WafTinyXmlTest, EmptyFileFailsWithTheEmptyDocumentError) {
  FilePtr file = OpenText("");
  ASSERT_NE(nullptr, file);
  TiXmlDocument document;
  EXPECT_FALSE(LoadFile(document, file.get()));
  EXPECT_EQ(TiXmlBase::TIXML_ERROR_DOCUMENT_EMPTY, document.ErrorId());
  EXPECT_STREQ("Error document empty.", document.ErrorDesc());
}

// The file reads fewer bytes than its size: freed, error 2.
TEST_F(WafTinyXmlTest, ShortReadFailsWithError2) {
  const std::string text = "<a>abc</a>";
  Bytes bytes;
  PutHeader(bytes, 1);
  PutRecord(bytes, "doc.xml", int32_t(text.size()) + 5, 12 + RecordSize("doc.xml"));
  PutChain(bytes, Bytes(text.begin(), text.end()));
  archive = OpenBytes(dir.file("short.waf"), bytes);
  ASSERT_NE(nullptr, archive);
  FilePtr file = Open(archive, "doc.xml");
  ASSERT_NE(nullptr, file);
  TiXmlDocument document;
  EXPECT_FALSE(LoadFile(document, file.get()));
  EXPECT_EQ(2, document.ErrorId());
}

// Loading first empties the document and resets its location; a failure after
// that leaves it empty.
TEST_F(WafTinyXmlTest, LoadingDeletesTheOldContentAndResetsTheLocation) {
  TiXmlDocument document;
  document.Parse("<old/>\n<older/>");
  ASSERT_NE(nullptr, document.FirstChild());
  ASSERT_EQ(1, document.Row());
  FilePtr file = OpenText("");
  ASSERT_NE(nullptr, file);
  EXPECT_FALSE(LoadFile(document, file.get()));
  EXPECT_EQ(nullptr, document.FirstChild());
  EXPECT_EQ(0, document.Row());
  EXPECT_EQ(0, document.Column());

  FilePtr next = OpenText("<new/>");
  ASSERT_NE(nullptr, next);
  EXPECT_TRUE(LoadFile(document, next.get()));
  EXPECT_STREQ("new", document.RootElement()->Value());
  EXPECT_EQ(nullptr, document.RootElement()->NextSibling());
}

// CR LF and a lone CR each end one line, as the library counts them from a
// stream; the rows of the elements tell.
TEST_F(WafTinyXmlTest, CarriageReturnsBecomeLineFeedsAsInTheLibrarysOwnLoading) {
  const std::string text = "<r>\r\n<a/>\r<b/>\n<c/>\r\r\n<d/></r>";
  FilePtr file = OpenText(text);
  ASSERT_NE(nullptr, file);
  TiXmlDocument archived, plain;
  ASSERT_TRUE(LoadFile(archived, file.get()));
  LoadPlain(plain, text);
  const int rows[] = {2, 3, 4, 6};
  const TiXmlElement* mine = archived.RootElement()->FirstChildElement();
  const TiXmlElement* theirs = plain.RootElement()->FirstChildElement();
  for (int row : rows) {
    ASSERT_NE(nullptr, mine);
    ASSERT_NE(nullptr, theirs);
    EXPECT_EQ(row, mine->Row()) << mine->Value();
    EXPECT_EQ(theirs->Row(), mine->Row()) << mine->Value();
    mine = mine->NextSiblingElement();
    theirs = theirs->NextSiblingElement();
  }
}

// With white space kept as it stands, the text shows the line ends themselves.
TEST_F(WafTinyXmlTest, CarriageReturnsInTextBecomeLineFeeds) {
  const std::string text = "<a>x\r\ny\rz\n</a>";
  FilePtr file = OpenText(text);
  ASSERT_NE(nullptr, file);
  TiXmlBase::SetCondenseWhiteSpace(false);
  TiXmlDocument archived, plain;
  const bool loaded = LoadFile(archived, file.get());
  LoadPlain(plain, text);
  TiXmlBase::SetCondenseWhiteSpace(true);
  ASSERT_TRUE(loaded);
  EXPECT_STREQ("x\ny\nz\n", archived.RootElement()->GetText());
  EXPECT_STREQ(plain.RootElement()->GetText(), archived.RootElement()->GetText());
}

TEST_F(WafTinyXmlTest, AZeroByteEndsTheText) {
  const std::string text("<a>x</a>\0<broken", 16);
  FilePtr file = OpenText(text);
  ASSERT_NE(nullptr, file);
  TiXmlDocument document;
  EXPECT_TRUE(LoadFile(document, file.get()));
  EXPECT_STREQ("x", document.RootElement()->GetText());
}

TEST_F(WafTinyXmlTest, ParseErrorsAreTheParsersOwn) {
  FilePtr file = OpenText("<a><b></a>");
  ASSERT_NE(nullptr, file);
  TiXmlDocument archived, plain;
  EXPECT_FALSE(LoadFile(archived, file.get()));
  LoadPlain(plain, "<a><b></a>");
  EXPECT_TRUE(plain.Error());
  EXPECT_EQ(plain.ErrorId(), archived.ErrorId());
  EXPECT_EQ(plain.ErrorRow(), archived.ErrorRow());
  EXPECT_EQ(plain.ErrorCol(), archived.ErrorCol());
}

// A character reference becomes UTF-8 in one encoding and one byte in the other.
TEST_F(WafTinyXmlTest, TheEncodingIsPassedToTheParser) {
  FilePtr file = OpenText("<a>&#233;</a>");
  ASSERT_NE(nullptr, file);
  TiXmlDocument legacy;
  ASSERT_TRUE(LoadFile(legacy, file.get(), TIXML_ENCODING_LEGACY));
  EXPECT_STREQ("\xe9", legacy.RootElement()->GetText());
  ASSERT_EQ(0, waf_seek(file.get(), 0, 0));
  TiXmlDocument utf8;
  ASSERT_TRUE(LoadFile(utf8, file.get(), TIXML_ENCODING_UTF8));
  EXPECT_STREQ("\xc3\xa9", utf8.RootElement()->GetText());
}

}  // namespace
