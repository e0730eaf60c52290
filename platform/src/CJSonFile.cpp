#include "CJSonFile.h"

#include <cstdio>
#include <nlohmann/json.hpp>

#include "WholeFile.h"

namespace Catalog {

namespace {

using Json = nlohmann::ordered_json;

Value FromJson(const Json& json) {
  switch (json.type()) {
    case Json::value_t::boolean: return Value(json.get<bool>());
    case Json::value_t::number_integer: return Value(json.get<int64_t>());
    case Json::value_t::number_unsigned: {
      const uint64_t u = json.get<uint64_t>();
      return u > uint64_t(INT64_MAX) ? Value(static_cast<double>(u)) : Value(static_cast<int64_t>(u));
    }
    case Json::value_t::number_float: return Value(json.get<double>());
    case Json::value_t::string: return Value(json.get<std::string>());
    case Json::value_t::array: {
      Value array = Value::Array();
      for (const Json& item : json) array.append(FromJson(item));
      return array;
    }
    case Json::value_t::object: {
      Value object = Value::Object();
      for (auto member = json.begin(); member != json.end(); ++member) object[member.key()] = FromJson(member.value());
      return object;
    }
    default: return Value();
  }
}

Json ToJson(const Value& value) {
  switch (value.type()) {
    case Value::kBool: return Json(value.asBool());
    case Value::kInt: return Json(value.asInt64());
    case Value::kReal: return Json(value.asDouble());
    case Value::kString: return Json(value.asString());
    case Value::kArray: {
      Json array = Json::array();
      for (size_t i = 0; i < value.size(); ++i) array.push_back(ToJson(value.at(i)));
      return array;
    }
    case Value::kObject: {
      Json object = Json::object();
      for (const std::string& key : value.getMemberNames()) object[key] = ToJson(value[key]);
      return object;
    }
    default: return Json();
  }
}

}  // namespace

CJSonFile::CJSonFile() : mValid(true) {}

CJSonFile::CJSonFile(const std::string& path) : mValid(false) { Load(path); }

bool CJSonFile::Parse(const std::string& text) {
  try {
    mRoot = FromJson(Json::parse(text));
    mValid = true;
    mError.clear();
  } catch (const Json::exception& error) {
    mValid = false;
    mError = error.what();
  }
  return mValid;
}

bool CJSonFile::Load(const std::string& path) {
  std::string text;
  if (!solva::detail::ReadWholeFile(path, &text)) {
    mValid = false;
    mError = "cannot open file " + path;
    return false;
  }
  if (!Parse(text)) {
    mError = path + ": " + mError;
    return false;
  }
  return true;
}

std::string CJSonFile::ToString() const { return ToJson(mRoot).dump(); }

bool CJSonFile::Save(const std::string& path) const {
  return solva::detail::WriteWholeFile(path, ToJson(mRoot).dump(2) + "\n");
}

}  // namespace Catalog
