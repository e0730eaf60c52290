#include "CatalogValue.h"

#include <cmath>
#include <cstdlib>

namespace Catalog {

namespace {
const Value kNullValue;
}

bool Value::asBool() const {
  switch (mType) {
    case kBool: return mBool;
    case kInt: return mInt != 0;
    case kReal: return mReal != 0.0;
    case kString: return mString == "true";
    default: return false;
  }
}

int Value::asInt() const { return static_cast<int>(asInt64()); }

int64_t Value::asInt64() const {
  switch (mType) {
    case kBool: return mBool ? 1 : 0;
    case kInt: return mInt;
    case kReal: return std::isfinite(mReal) ? static_cast<int64_t>(mReal) : 0;
    default: return 0;
  }
}

double Value::asDouble() const {
  switch (mType) {
    case kBool: return mBool ? 1.0 : 0.0;
    case kInt: return static_cast<double>(mInt);
    case kReal: return mReal;
    default: return 0.0;
  }
}

std::string Value::asString() const {
  switch (mType) {
    case kString: return mString;
    case kBool: return mBool ? "true" : "false";
    case kInt: return std::to_string(mInt);
    default: return std::string();
  }
}

bool Value::isMember(const std::string& key) const {
  if (mType != kObject) return false;
  for (const auto& member : mObject) {
    if (member.first == key) return true;
  }
  return false;
}

Value& Value::operator[](const std::string& key) {
  if (mType == kNull) mType = kObject;
  for (auto& member : mObject) {
    if (member.first == key) return member.second;
  }
  mObject.emplace_back(key, Value());
  return mObject.back().second;
}

const Value& Value::operator[](const std::string& key) const {
  if (mType == kObject) {
    for (const auto& member : mObject) {
      if (member.first == key) return member.second;
    }
  }
  return kNullValue;
}

bool Value::removeMember(const std::string& key) {
  for (auto member = mObject.begin(); member != mObject.end(); ++member) {
    if (member->first == key) {
      mObject.erase(member);
      return true;
    }
  }
  return false;
}

std::vector<std::string> Value::getMemberNames() const {
  std::vector<std::string> names;
  for (const auto& member : mObject) names.push_back(member.first);
  return names;
}

size_t Value::size() const {
  if (mType == kArray) return mArray.size();
  if (mType == kObject) return mObject.size();
  return 0;
}

Value& Value::append(const Value& item) {
  if (mType == kNull) mType = kArray;
  mArray.push_back(item);
  return mArray.back();
}

const Value& Value::at(size_t index) const { return mType == kArray && index < mArray.size() ? mArray[index] : kNullValue; }

Value& Value::at(size_t index) { return mArray.at(index); }

bool Value::operator==(const Value& other) const {
  if (isNumeric() && other.isNumeric()) {
    if (mType == kInt && other.mType == kInt) return mInt == other.mInt;
    return asDouble() == other.asDouble();
  }
  if (mType != other.mType) return false;
  switch (mType) {
    case kNull: return true;
    case kBool: return mBool == other.mBool;
    case kString: return mString == other.mString;
    case kArray: return mArray == other.mArray;
    case kObject: return mObject == other.mObject;
    default: return false;
  }
}

}  // namespace Catalog
