#ifndef SRC_CONFIGSYSTEM_CONFIGDEFINE_H
#define SRC_CONFIGSYSTEM_CONFIGDEFINE_H
// Property types of a configuration tree, and the record of one property.
#include "Base/StringID.h"

namespace ConfigDefine {

enum EDataType {
  eBool = 1,
  eChar = 2,
  eUChar = 3,
  eShort = 4,
  eUShort = 5,
  eInt = 6,
  eUInt = 7,
  eLong = 8,
  eULong = 9,
  eFloat = 10,
  eVector2 = 11,
  eVector3 = 12,
  eVector4 = 13,
  eMatrix2X2 = 14,
  eMatrix3X3 = 15,
  eMatrix4X4 = 16,
  eString = 17,
  eFirstType = eBool,
  eLastType = eString,
};

template <class T, int N>
struct tVector {
  T v[N];
  T& operator[](int i) { return v[i]; }
  const T& operator[](int i) const { return v[i]; }
};

template <class T, int R, int C>
struct tMatrix {
  T m[R][C];
  T* operator[](int row) { return m[row]; }
  const T* operator[](int row) const { return m[row]; }
};

// The type's name in the XML form ("bool" ... "string"), null outside 1 to 17.
const char* TypeName(int type);
// The type for a name of the XML form, 0 for an unknown name.
int TypeFromName(const char* name);

struct ConfigDataNode {
  ConfigDataNode() : mType(0), mValue(0) {}
  ~ConfigDataNode();

  // Bytes held at mValue: a text with its terminator, or the fixed width of the type.
  unsigned valueSize() const;

  int mType;
  StringID mName;
  // Owned. Texts (types 2, 3, 17) are char arrays with a terminator; the others a
  // single value of the in-memory type.
  void* mValue;

 private:
  ConfigDataNode(const ConfigDataNode&);
  ConfigDataNode& operator=(const ConfigDataNode&);
};

}  // namespace ConfigDefine

#endif
