#include "ConfigSystem/ConfigFile.h"

#include <assert.h>
#include <stdint.h>
#include <stdio.h>
#include <string.h>
#include <tinyxml.h>

#include "Base/File.h"
#include "External/waf/waftinyxml.h"

// One macro layer more than assert itself, so that NULL is expanded before the
// expression is turned into the text of the message.
#define CONFIG_ASSERT(expr) assert(expr)

using namespace ConfigDefine;

namespace {

const int kMaxPropertyName = 254;

bool IsText(int type) { return type == eChar || type == eUChar || type == eString; }
bool IsFamily(int type) { return type >= eVector2 && type <= eString; }

// Counts of doubles stored for types 11 to 16.
int DoubleCount(int type) {
  switch (type) {
    case eVector2: return 2;
    case eVector3: return 3;
    case eVector4: return 4;
    case eMatrix2X2: return 4;
    case eMatrix3X3: return 9;
    case eMatrix4X4: return 16;
  }
  return 0;
}

int MatrixSide(int type) {
  switch (type) {
    case eMatrix2X2: return 2;
    case eMatrix3X3: return 3;
    case eMatrix4X4: return 4;
  }
  return 0;
}

void* NewDoubles(int type) {
  switch (type) {
    case eVector2: return new tVector<double, 2>();
    case eVector3: return new tVector<double, 3>();
    case eVector4: return new tVector<double, 4>();
    case eMatrix2X2: return new tMatrix<double, 2, 2>();
    case eMatrix3X3: return new tMatrix<double, 3, 3>();
    case eMatrix4X4: return new tMatrix<double, 4, 4>();
  }
  return 0;
}

char* NewText(const char* text, size_t length) {
  char* copy = new char[length + 1];
  memcpy(copy, text, length);
  copy[length] = 0;
  return copy;
}

// A double narrowed to an integer type as the device's conversion does for the
// values a file should hold; outside them (and for NaN) the result is defined
// here: the integer part wraps to the type's width, and NaN gives 0.
template <class T>
T Narrow(double value) {
  if (!(value == value)) return 0;
  if (value >= 9.2e18 || value <= -9.2e18) return 0;
  return static_cast<T>(static_cast<int64_t>(value));
}

// A stored number of types 4 to 10, narrowed to its in-memory type.
void* NewNumber(int type, double value) {
  switch (type) {
    case eShort: return new int16_t(Narrow<int16_t>(value));
    case eUShort: return new uint16_t(Narrow<uint16_t>(value));
    case eInt:
    case eLong: return new int32_t(Narrow<int32_t>(value));
    case eUInt:
    case eULong: return new uint32_t(Narrow<uint32_t>(value));
    case eFloat: return new float(static_cast<float>(value));
  }
  return 0;
}

// The bytes left between the position and the end of a file of `size` bytes.
unsigned BytesLeft(File& file, unsigned size) {
  const long here = file.tell();
  return here >= 0 && unsigned(here) < size ? size - unsigned(here) : 0;
}

// A 32-bit length, then that many bytes. A length beyond the file is a damaged
// file: false, as at its end.
bool ReadSizedText(File& file, unsigned size, std::string& text, unsigned maxLength) {
  const int length = file.readInt();
  if (file.eof() || length < 0 || unsigned(length) > maxLength || unsigned(length) > BytesLeft(file, size)) {
    return false;
  }
  text.resize(length);
  return length == 0 || file.read(&text[0], length, 1) == 1;
}

}  // namespace

ConfigFile::ConfigFile() : mRoot(0) { memset(mCurrentPath, 0, sizeof mCurrentPath); }

ConfigFile::~ConfigFile() { release(); }

bool ConfigFile::load(const char* path) {
  const char* ending = strrchr(path, '.');
  CONFIG_ASSERT(ending != NULL);
  if (strcmp(ending, ".xml") == 0) return loadFromXMLFile(path);
  if (strcmp(ending, ".par") == 0) return loadFromBinaryFile(path);
  return false;
}

void ConfigFile::release() {
  DeleteConfigNodeChain(mRoot);
  mRoot = 0;
}

bool ConfigFile::remove(ConfigTreeNode* target) {
  ConfigTreeNode* node = target->mParent != 0 ? target->mParent->mFirstChild : mRoot;
  ConfigTreeNode* before = 0;
  while (node != 0 && node != target) {
    before = node;
    node = node->mNextSibling;
  }
  CONFIG_ASSERT(NULL != node);
  if (before != 0) {
    before->mNextSibling = node->mNextSibling;
  } else if (node->mParent != 0) {
    node->mParent->mFirstChild = node->mNextSibling;
  } else {
    mRoot = node->mNextSibling;
  }
  node->mNextSibling = 0;
  delete node;
  return true;
}

ConfigTreeNode* ConfigFile::getTheLastChildItem(ConfigTreeNode* node) {
  ConfigTreeNode* child = node->mFirstChild;
  if (child == 0) return 0;
  while (child->mNextSibling != 0) child = child->mNextSibling;
  return child;
}

void ConfigFile::setCurrentPath(const char* currentPath) {
  CONFIG_ASSERT(currentPath!=NULL&&"currentPath is null!");
  // Bounded: the buffer is 256 bytes and nothing checks the length before here.
  snprintf(mCurrentPath, sizeof mCurrentPath, "%s", currentPath);
}

std::string ConfigFile::getCurrentPath() const { return mCurrentPath; }

// ---------------------------------------------------------------------------
// The binary form

bool ConfigFile::loadFromBinaryFile(const char* path) {
  File file(path, "rb");
  // The file must exist; an unopened one is read as an empty one, not a fault.
  if (!file.isOpened()) return true;

  const unsigned size = file.getFileSize();
  ConfigTreeNode* node = new ConfigTreeNode();
  // The first node is the root whether or not it read well: an empty file gives a
  // root without a name.
  const bool firstRead = readBinaryNode(file, size, node);
  // The tree of an earlier load is lost to the new one; freed, not leaked.
  release();
  mRoot = node;
  ConfigTreeNode* last = node;
  while (firstRead) {
    node = new ConfigTreeNode();
    if (!readBinaryNode(file, size, node)) {
      delete node;
      break;
    }
    last->mNextSibling = node;
    last = node;
  }
  file.close();
  return true;
}

bool ConfigFile::readBinaryNode(File& file, unsigned size, ConfigTreeNode* node) {
  const int nameLength = file.readInt();
  if (file.eof() || nameLength == 0) return false;
  if (nameLength < 0 || unsigned(nameLength) > BytesLeft(file, size)) return false;
  node->mName.resize(nameLength);
  file.read(&node->mName[0], nameLength, 1);

  const int childCount = file.readInt();
  const int propertyCount = file.readInt();
  for (int i = 0; i < propertyCount; ++i) {
    if (!readBinaryProperty(file, size, node)) return false;
  }
  for (int i = 0; i < childCount; ++i) {
    // Counts are not to be trusted past the end of the data.
    if (file.eof() || BytesLeft(file, size) == 0) break;
    ConfigTreeNode* child = new ConfigTreeNode();
    readBinaryNode(file, size, child);
    node->appendChild(child);
  }
  return true;
}

bool ConfigFile::readBinaryProperty(File& file, unsigned size, ConfigTreeNode* node) {
  std::string name;
  if (!ReadSizedText(file, size, name, kMaxPropertyName)) return false;
  const int type = file.readInt();
  if (type < eFirstType || type > eLastType) return false;

  void* value = 0;
  if (type == eBool) {
    value = new bool(file.readUChar() != 0);
  } else if (IsText(type)) {
    std::string text;
    if (!ReadSizedText(file, size, text, size)) return false;
    value = NewText(text.data(), text.size());
  } else if (type <= eFloat) {
    double number = 0.0;
    file.read(&number, sizeof number, 1);
    value = NewNumber(type, number);
  } else {
    value = NewDoubles(type);
    file.read(value, sizeof(double), DoubleCount(type));
  }

  ConfigDataNode* property = new ConfigDataNode();
  property->mType = type;
  property->mName = StringID(name.c_str());
  property->mValue = value;
  node->mProperties.push_back(property);
  return true;
}

// ---------------------------------------------------------------------------
// The XML form

bool ConfigFile::loadFromXMLFile(const char* path) {
  TiXmlDocument document(path);
  if (!document.LoadFile()) return false;
  return readXMLDocument(document);
}

bool ConfigFile::loadFromWafFile(waf_file* file) {
  TiXmlDocument document;
  if (!LoadFile(document, file)) return false;
  return readXMLDocument(document);
}

bool ConfigFile::readXMLDocument(const TiXmlDocument& document) {
  const TiXmlElement* root = document.RootElement();
  if (root == 0) return true;
  const TiXmlElement* element = root->FirstChildElement();
  if (element == 0) return true;

  ConfigTreeNode* node = new ConfigTreeNode();
  if (!readXMLNode(element, node)) {
    delete node;
    return false;
  }
  release();
  mRoot = node;
  ConfigTreeNode* last = node;
  for (element = element->NextSiblingElement(); element != 0; element = element->NextSiblingElement()) {
    node = new ConfigTreeNode();
    last->mNextSibling = node;
    last = node;
    if (!readXMLNode(element, node)) {
      release();
      return false;
    }
  }
  return true;
}

bool ConfigFile::readXMLNode(const TiXmlElement* element, ConfigTreeNode* node) {
  const char* name = element->Attribute("name");
  node->mName = name != 0 ? name : "";
  const char* nodeType = element->Attribute("nodeType");
  if (nodeType == 0 || strcmp(nodeType, "childNode") != 0) return false;

  for (const TiXmlElement* child = element->FirstChildElement(); child != 0; child = child->NextSiblingElement()) {
    const char* childType = child->Attribute("nodeType");
    if (childType == 0) continue;
    if (strcmp(childType, "nodeProperty") == 0) {
      for (const TiXmlElement* property = child->FirstChildElement(); property != 0;
           property = property->NextSiblingElement()) {
        if (!readXMLProperty(property, node)) return false;
      }
    } else if (strcmp(childType, "childNode") == 0) {
      ConfigTreeNode* childNode = new ConfigTreeNode();
      readXMLNode(child, childNode);
      node->appendChild(childNode);
    }
  }
  return true;
}

bool ConfigFile::readXMLProperty(const TiXmlElement* element, ConfigTreeNode* node) {
  const int type = TypeFromName(element->Attribute("type"));
  if (type == 0) return false;

  const char* text = element->Attribute("value");
  void* value = 0;
  switch (type) {
    case eBool:
      if (text != 0 && strcmp(text, "true") == 0) {
        value = new bool(true);
      } else if (text != 0 && strcmp(text, "false") == 0) {
        value = new bool(false);
      } else {
        return false;
      }
      break;
    case eChar:
    case eUChar:
    case eString:
      if (text == 0) text = "";
      value = NewText(text, strlen(text));
      break;
    case eShort:
    case eUShort:
    case eInt:
    case eUInt:
    case eLong:
    case eULong: {
      int number = 0;
      element->QueryIntAttribute("value", &number);
      value = NewNumber(type, number);
      break;
    }
    case eFloat: {
      double number = 0.0;
      element->QueryDoubleAttribute("value", &number);
      value = NewNumber(type, number);
      break;
    }
    case eVector2:
    case eVector3:
    case eVector4: {
      value = NewDoubles(type);
      double* v = static_cast<double*>(value);
      char attribute[32];
      for (int i = 0; i < DoubleCount(type); ++i) {
        snprintf(attribute, sizeof attribute, "v%d", i);
        element->QueryDoubleAttribute(attribute, &v[i]);
      }
      break;
    }
    case eMatrix2X2:
    case eMatrix3X3:
    case eMatrix4X4: {
      value = NewDoubles(type);
      double* m = static_cast<double*>(value);
      const int side = MatrixSide(type);
      char attribute[32];
      for (int row = 0; row < side; ++row) {
        for (int column = 0; column < side; ++column) {
          snprintf(attribute, sizeof attribute, "v%d%d", row, column);
          element->QueryDoubleAttribute(attribute, &m[row * side + column]);
        }
      }
      break;
    }
    default:
      CONFIG_ASSERT(false && "Invalid property type.");
      return false;
  }

  const char* name = element->Attribute("name");
  ConfigDataNode* property = new ConfigDataNode();
  property->mType = type;
  property->mName = StringID(name != 0 ? name : "");
  property->mValue = value;
  node->mProperties.push_back(property);
  return true;
}

// ---------------------------------------------------------------------------
// Look-up

ConfigDataNode* ConfigFile::findPropertyNodeFrom(const char* path) {
  char full[256];
  if (path[0] != 0 && strchr(path + 1, '.') != 0) {
    snprintf(full, sizeof full, "%s", path);
  } else {
    // "%s.%s" of the current path and the name, cut at the buffer as on the device.
    const std::string joined = std::string(mCurrentPath) + "." + path;
    snprintf(full, sizeof full, "%s", joined.c_str());
  }

  // Split at every ".", keeping empty parts: "a..b" has three.
  const char* parts[128];
  int count = 0;
  parts[count++] = full;
  for (char* c = full; *c != 0 && count < 128; ++c) {
    if (*c == '.') {
      *c = 0;
      parts[count++] = c + 1;
    }
  }
  if (count < 2) return 0;

  ConfigTreeNode* node = mRoot;
  while (node != 0 && node->mName != parts[0]) node = node->mNextSibling;
  if (node == 0) return 0;
  for (int i = 1; i < count - 1; ++i) {
    node = node->mFirstChild;
    while (node != 0 && node->mName != parts[i]) node = node->mNextSibling;
    if (node == 0) return 0;
  }
  for (size_t i = 0; i < node->mProperties.size(); ++i) {
    if (node->mProperties[i]->mName == parts[count - 1]) return node->mProperties[i];
  }
  return 0;
}

void* ConfigFile::findScalar(const char* path, int type) {
  ConfigDataNode* property = findPropertyNodeFrom(path);
  if (property == 0 || property->mType != type) return 0;
  return property->mValue;
}

bool ConfigFile::getProperty_Bool(const char* path, bool& result) {
  void* value = findScalar(path, eBool);
  if (value == 0) return false;
  result = *static_cast<bool*>(value);
  return true;
}

bool ConfigFile::getProperty_Char(const char* path, char& result) {
  void* value = findScalar(path, eChar);
  if (value == 0) return false;
  result = *static_cast<char*>(value);
  return true;
}

bool ConfigFile::getProperty_UChar(const char* path, unsigned char& result) {
  void* value = findScalar(path, eUChar);
  if (value == 0) return false;
  result = *static_cast<unsigned char*>(value);
  return true;
}

bool ConfigFile::getProperty_Short(const char* path, short& result) {
  void* value = findScalar(path, eShort);
  if (value == 0) return false;
  result = *static_cast<int16_t*>(value);
  return true;
}

bool ConfigFile::getProperty_UShort(const char* path, unsigned short& result) {
  void* value = findScalar(path, eUShort);
  if (value == 0) return false;
  result = *static_cast<uint16_t*>(value);
  return true;
}

bool ConfigFile::getProperty_Int(const char* path, int& result) {
  void* value = findScalar(path, eInt);
  if (value == 0) return false;
  result = *static_cast<int32_t*>(value);
  return true;
}

bool ConfigFile::getProperty_UInt(const char* path, unsigned int& result) {
  void* value = findScalar(path, eUInt);
  if (value == 0) return false;
  result = *static_cast<uint32_t*>(value);
  return true;
}

bool ConfigFile::getProperty_Long(const char* path, long& result) {
  void* value = findScalar(path, eLong);
  if (value == 0) return false;
  result = *static_cast<int32_t*>(value);
  return true;
}

bool ConfigFile::getProperty_ULong(const char* path, unsigned long& result) {
  void* value = findScalar(path, eULong);
  if (value == 0) return false;
  result = *static_cast<uint32_t*>(value);
  return true;
}

bool ConfigFile::getProperty_Real(const char* path, float& result) {
  void* value = findScalar(path, eFloat);
  if (value == 0) return false;
  result = *static_cast<float*>(value);
  return true;
}

bool ConfigFile::getProperty_Float(const char* path, float& result) { return getProperty_Real(path, result); }

bool ConfigFile::copyFamily(const char* path, void* result, unsigned size) {
  ConfigDataNode* property = findPropertyNodeFrom(path);
  if (property == 0 || !IsFamily(property->mType)) return false;
  // Only the family is checked, so the value may be smaller than the result: copy
  // what the value has and leave the rest, rather than read past it.
  const unsigned have = property->valueSize();
  memcpy(result, property->mValue, have < size ? have : size);
  return true;
}

bool ConfigFile::copyDoubles(const char* path, float* result, int count) {
  double values[16];
  if (!copyFamily(path, values, sizeof(double) * count)) return false;
  const unsigned have = findPropertyNodeFrom(path)->valueSize() / sizeof(double);
  for (int i = 0; i < count && unsigned(i) < have; ++i) result[i] = static_cast<float>(values[i]);
  return true;
}

bool ConfigFile::getProperty_Vec2(const char* path, tVector<double, 2>& result) {
  return copyFamily(path, &result, sizeof result);
}
bool ConfigFile::getProperty_Vec3(const char* path, tVector<double, 3>& result) {
  return copyFamily(path, &result, sizeof result);
}
bool ConfigFile::getProperty_Vec4(const char* path, tVector<double, 4>& result) {
  return copyFamily(path, &result, sizeof result);
}
bool ConfigFile::getProperty_Vec2(const char* path, Math3D::vec2& result) { return copyDoubles(path, &result.x, 2); }
bool ConfigFile::getProperty_Vec3(const char* path, Math3D::vec3& result) { return copyDoubles(path, &result.x, 3); }
bool ConfigFile::getProperty_Vec4(const char* path, Math3D::vec4& result) { return copyDoubles(path, &result.x, 4); }
bool ConfigFile::getProperty_Matrix2X2(const char* path, tMatrix<double, 2, 2>& result) {
  return copyFamily(path, &result, sizeof result);
}
bool ConfigFile::getProperty_Matrix3X3(const char* path, tMatrix<double, 3, 3>& result) {
  return copyFamily(path, &result, sizeof result);
}
bool ConfigFile::getProperty_Matrix4X4(const char* path, tMatrix<double, 4, 4>& result) {
  return copyFamily(path, &result, sizeof result);
}

bool ConfigFile::getProperty_String(const char* path, std::string& result) {
  ConfigDataNode* property = findPropertyNodeFrom(path);
  if (property == 0 || !IsFamily(property->mType)) return false;
  const char* bytes = static_cast<const char*>(property->mValue);
  const size_t have = property->valueSize();
  result.assign(bytes, strnlen(bytes, have));
  return true;
}

void* ConfigFile::getProperty(const char* path) {
  ConfigDataNode* property = findPropertyNodeFrom(path);
  if (property == 0 || !IsFamily(property->mType)) return 0;
  return property->mValue;
}
