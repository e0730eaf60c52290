#include "ConfigSystem/ConfigDefine.h"

#include <stdint.h>
#include <string.h>

namespace ConfigDefine {

namespace {
const char* const kTypeNames[] = {
    0,       "bool",    "char",    "unsigned char", "short",     "unsigned short", "int",       "unsigned int",
    "long",  "unsigned long", "float", "vector2",   "vector3",   "vector4",        "matrix2X2", "matrix3X3",
    "matrix4X4", "string",
};
}  // namespace

const char* TypeName(int type) { return type >= eFirstType && type <= eLastType ? kTypeNames[type] : 0; }

int TypeFromName(const char* name) {
  if (name == 0) return 0;
  for (int type = eFirstType; type <= eLastType; ++type) {
    if (strcmp(kTypeNames[type], name) == 0) return type;
  }
  return 0;
}

unsigned ConfigDataNode::valueSize() const {
  if (mValue == 0) return 0;
  switch (mType) {
    case eBool: return sizeof(bool);
    case eChar:
    case eUChar:
    case eString: return strlen(static_cast<const char*>(mValue)) + 1;
    case eShort: return sizeof(int16_t);
    case eUShort: return sizeof(uint16_t);
    case eInt:
    case eLong: return sizeof(int32_t);
    case eUInt:
    case eULong: return sizeof(uint32_t);
    case eFloat: return sizeof(float);
    case eVector2: return sizeof(tVector<double, 2>);
    case eVector3: return sizeof(tVector<double, 3>);
    case eVector4: return sizeof(tVector<double, 4>);
    case eMatrix2X2: return sizeof(tMatrix<double, 2, 2>);
    case eMatrix3X3: return sizeof(tMatrix<double, 3, 3>);
    case eMatrix4X4: return sizeof(tMatrix<double, 4, 4>);
  }
  return 0;
}

ConfigDataNode::~ConfigDataNode() {
  switch (mType) {
    case eChar:
    case eUChar:
    case eString: delete[] static_cast<char*>(mValue); break;
    case eBool: delete static_cast<bool*>(mValue); break;
    case eShort: delete static_cast<int16_t*>(mValue); break;
    case eUShort: delete static_cast<uint16_t*>(mValue); break;
    case eInt:
    case eLong: delete static_cast<int32_t*>(mValue); break;
    case eUInt:
    case eULong: delete static_cast<uint32_t*>(mValue); break;
    case eFloat: delete static_cast<float*>(mValue); break;
    case eVector2: delete static_cast<tVector<double, 2>*>(mValue); break;
    case eVector3: delete static_cast<tVector<double, 3>*>(mValue); break;
    case eVector4: delete static_cast<tVector<double, 4>*>(mValue); break;
    case eMatrix2X2: delete static_cast<tMatrix<double, 2, 2>*>(mValue); break;
    case eMatrix3X3: delete static_cast<tMatrix<double, 3, 3>*>(mValue); break;
    case eMatrix4X4: delete static_cast<tMatrix<double, 4, 4>*>(mValue); break;
    default: break;
  }
}

}  // namespace ConfigDefine
