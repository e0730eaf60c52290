#pragma once
// One record of a device log: a record name and its arguments, in the order the
// record's constructor takes them. The record classes (LogDataOrrin.h) fill the
// arguments; CLogFile decides how they are written.
#include <cstdint>
#include <string>
#include <vector>

class CLogData {
 public:
  enum FieldKind {
    kFieldUnsigned,
    kFieldSigned,
    kFieldText,
  };
  struct Field {
    std::string key;
    FieldKind kind;
    uint64_t unsignedValue;
    int64_t signedValue;
    // Text arguments may be null; the log keeps that apart from an empty text.
    bool isNull;
    std::string text;
  };

  virtual ~CLogData();

  // The record's name, as its class is named ("CGameStart").
  const std::string& GetName() const { return mName; }
  const std::vector<Field>& GetFields() const { return mFields; }

 protected:
  explicit CLogData(const char* name);

  void AddUnsigned(const char* key, uint64_t value);
  void AddSigned(const char* key, int64_t value);
  // `value` may be null.
  void AddText(const char* key, const char* value);

 private:
  std::string mName;
  std::vector<Field> mFields;
};
