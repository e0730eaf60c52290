#pragma once
// A tree of values, as the launch parameters and the metadata files hold them:
// null, bool, integer, real, text, array, or an object whose keys keep their order.
#include <cstdint>
#include <string>
#include <utility>
#include <vector>

namespace Catalog {

class Value {
 public:
  enum Type { kNull, kBool, kInt, kReal, kString, kArray, kObject };

  Value() : mType(kNull), mBool(false), mInt(0), mReal(0) {}
  Value(bool b) : mType(kBool), mBool(b), mInt(0), mReal(0) {}
  Value(int i) : mType(kInt), mBool(false), mInt(i), mReal(0) {}
  Value(unsigned i) : mType(kInt), mBool(false), mInt(i), mReal(0) {}
  Value(int64_t i) : mType(kInt), mBool(false), mInt(i), mReal(0) {}
  Value(double r) : mType(kReal), mBool(false), mInt(0), mReal(r) {}
  Value(const char* s) : mType(kString), mBool(false), mInt(0), mReal(0), mString(s ? s : "") {}
  Value(const std::string& s) : mType(kString), mBool(false), mInt(0), mReal(0), mString(s) {}

  static Value Array() { Value v; v.mType = kArray; return v; }
  static Value Object() { Value v; v.mType = kObject; return v; }

  Type type() const { return mType; }
  bool isNull() const { return mType == kNull; }
  bool isBool() const { return mType == kBool; }
  bool isInt() const { return mType == kInt; }
  bool isNumeric() const { return mType == kInt || mType == kReal; }
  bool isString() const { return mType == kString; }
  bool isArray() const { return mType == kArray; }
  bool isObject() const { return mType == kObject; }

  // Conversions as a reader expects them: numbers convert among themselves, a
  // text or a null gives 0 / false / "" where it is not the type asked for.
  bool asBool() const;
  int asInt() const;
  int64_t asInt64() const;
  double asDouble() const;
  std::string asString() const;

  // Objects. The non-const operator[] makes a null value an object and adds the
  // key if it is missing; the const one gives a null value for a missing key.
  bool isMember(const std::string& key) const;
  Value& operator[](const std::string& key);
  const Value& operator[](const std::string& key) const;
  Value& operator[](const char* key) { return (*this)[std::string(key)]; }
  const Value& operator[](const char* key) const { return (*this)[std::string(key)]; }
  bool removeMember(const std::string& key);
  std::vector<std::string> getMemberNames() const;

  // Arrays. append makes a null value an array.
  size_t size() const;
  Value& append(const Value& item);
  const Value& at(size_t index) const;
  Value& at(size_t index);

  bool operator==(const Value& other) const;
  bool operator!=(const Value& other) const { return !(*this == other); }

 private:
  Type mType;
  bool mBool;
  int64_t mInt;
  double mReal;
  std::string mString;
  std::vector<Value> mArray;
  std::vector<std::pair<std::string, Value> > mObject;
};

}  // namespace Catalog
