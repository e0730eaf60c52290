#include "CLogData.h"

CLogData::CLogData(const char* name) : mName(name) {}

CLogData::~CLogData() {}

void CLogData::AddUnsigned(const char* key, uint64_t value) {
  mFields.push_back(Field{key, kFieldUnsigned, value, 0, false, std::string()});
}

void CLogData::AddSigned(const char* key, int64_t value) {
  mFields.push_back(Field{key, kFieldSigned, 0, value, false, std::string()});
}

void CLogData::AddText(const char* key, const char* value) {
  mFields.push_back(Field{key, kFieldText, 0, 0, value == nullptr, value ? std::string(value) : std::string()});
}
