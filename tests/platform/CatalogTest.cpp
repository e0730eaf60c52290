#include <gtest/gtest.h>

#include "CJSonFile.h"
#include "CatalogValue.h"
#include "support/TestSupport.h"

namespace {

using Catalog::CJSonFile;
using Catalog::Value;

TEST(CatalogValue, ObjectsKeepTheirKeysInOrder) {
  Value root;
  root["limittime"] = 30;
  root["folderpath"] = "/a/b/";
  root["viewmode"] = 1;
  EXPECT_TRUE(root.isObject());
  EXPECT_EQ((std::vector<std::string>{"limittime", "folderpath", "viewmode"}), root.getMemberNames());
  EXPECT_TRUE(root.isMember("folderpath"));
  EXPECT_FALSE(root.isMember("audiofilename"));
  EXPECT_EQ(30, root["limittime"].asInt());
  EXPECT_EQ("/a/b/", root["folderpath"].asString());
  EXPECT_TRUE(root.removeMember("viewmode"));
  EXPECT_EQ(2u, root.size());
}

TEST(CatalogValue, ConstLookUpOfAMissingKeyIsNullAndAddsNothing) {
  Value root = Value::Object();
  const Value& constRoot = root;
  EXPECT_TRUE(constRoot["missing"].isNull());
  EXPECT_EQ(0, constRoot["missing"].asInt());
  EXPECT_EQ("", constRoot["missing"].asString());
  EXPECT_EQ(0u, root.size());
}

TEST(CatalogValue, NumbersConvertAmongThemselves) {
  EXPECT_EQ(3, Value(3.9).asInt());
  EXPECT_EQ(2.0, Value(2).asDouble());
  EXPECT_TRUE(Value(1).asBool());
  EXPECT_EQ(0, Value("12").asInt());  // a text is not a number
  EXPECT_EQ(Value(2), Value(2.0));
  EXPECT_NE(Value(2), Value("2"));
}

TEST(CatalogValue, ArraysAppendAndIndex) {
  Value list;
  list.append(1);
  list.append("two");
  EXPECT_TRUE(list.isArray());
  EXPECT_EQ(2u, list.size());
  EXPECT_EQ("two", list.at(1).asString());
  const Value& constList = list;
  EXPECT_TRUE(constList.at(7).isNull());
}

TEST(CJSonFile, ParsesAndPrintsOneLineInKeyOrder) {
  CJSonFile json;
  ASSERT_TRUE(json.Parse(R"({"positionX": 12, "audiofilename": "a.wav", "nested": {"k": [1, 2.5, true, null]}})"));
  EXPECT_EQ(12, json.GetRoot()["positionX"].asInt());
  EXPECT_EQ(R"({"positionX":12,"audiofilename":"a.wav","nested":{"k":[1,2.5,true,null]}})", json.ToString());
}

TEST(CJSonFile, BadTextIsRefusedWithAReason) {
  CJSonFile json;
  EXPECT_FALSE(json.Parse("{\"a\": }"));
  EXPECT_FALSE(json.IsValid());
  EXPECT_NE(std::string::npos, json.GetError().find("parse error"));
}

TEST(CJSonFile, SavesWholeAndLoadsBack) {
  zvtest::TempDir dir;
  CJSonFile json;
  json.GetRoot()["filename"] = "/root/Music/vtwgaudio_1.wav";
  ASSERT_TRUE(json.Save(dir.file("answer.json")));
  CJSonFile back(dir.file("answer.json"));
  ASSERT_TRUE(back.IsValid());
  EXPECT_EQ("/root/Music/vtwgaudio_1.wav", back.GetRoot()["filename"].asString());
  EXPECT_EQ(std::vector<std::string>{"answer.json"}, zvtest::ListFolder(dir.path()));
}

TEST(CJSonFile, MissingFileSaysWhich) {
  CJSonFile json("/no/such/file.json");
  EXPECT_FALSE(json.IsValid());
  EXPECT_EQ("cannot open file /no/such/file.json", json.GetError());
}

}  // namespace
