#ifndef SRC_CONFIGSYSTEM_CONFIGFILE_H
#define SRC_CONFIGSYSTEM_CONFIGFILE_H
// A tree of named nodes with typed properties, loaded from its XML form (for
// editing) or its binary .par form (for shipping), read by dotted path.
#include <string>

#include "Base/Math3D.h"
#include "ConfigSystem/ConfigDefine.h"
#include "ConfigSystem/ConfigTreeNode.h"

class File;
class TiXmlDocument;
class TiXmlElement;
struct waf_file;

class ConfigFile {
 public:
  ConfigFile();
  ~ConfigFile();

  // By the ending from the last ".": ".xml" or ".par"; anything else is false.
  bool load(const char* path);
  bool loadFromXMLFile(const char* path);
  bool loadFromBinaryFile(const char* path);
  // The XML form from a file inside a WAF archive, read from where it stands.
  bool loadFromWafFile(waf_file* file);
  void release();

  bool remove(ConfigTreeNode* node);
  ConfigTreeNode* getTheLastChildItem(ConfigTreeNode* node);
  ConfigTreeNode* getRoot() const { return mRoot; }

  void setCurrentPath(const char* currentPath);
  std::string getCurrentPath() const;

  ConfigDefine::ConfigDataNode* findPropertyNodeFrom(const char* path);

  bool getProperty_Bool(const char* path, bool& result);
  bool getProperty_Char(const char* path, char& result);
  bool getProperty_UChar(const char* path, unsigned char& result);
  bool getProperty_Short(const char* path, short& result);
  bool getProperty_UShort(const char* path, unsigned short& result);
  bool getProperty_Int(const char* path, int& result);
  bool getProperty_UInt(const char* path, unsigned int& result);
  bool getProperty_Long(const char* path, long& result);
  bool getProperty_ULong(const char* path, unsigned long& result);
  bool getProperty_Real(const char* path, float& result);
  bool getProperty_Float(const char* path, float& result);

  bool getProperty_Vec2(const char* path, ConfigDefine::tVector<double, 2>& result);
  bool getProperty_Vec3(const char* path, ConfigDefine::tVector<double, 3>& result);
  bool getProperty_Vec4(const char* path, ConfigDefine::tVector<double, 4>& result);
  bool getProperty_Vec2(const char* path, Math3D::vec2& result);
  bool getProperty_Vec3(const char* path, Math3D::vec3& result);
  bool getProperty_Vec4(const char* path, Math3D::vec4& result);
  bool getProperty_Matrix2X2(const char* path, ConfigDefine::tMatrix<double, 2, 2>& result);
  bool getProperty_Matrix3X3(const char* path, ConfigDefine::tMatrix<double, 3, 3>& result);
  bool getProperty_Matrix4X4(const char* path, ConfigDefine::tMatrix<double, 4, 4>& result);
  bool getProperty_String(const char* path, std::string& result);
  // The raw value of a property of types 11 to 17, null for the others.
  void* getProperty(const char* path);

 private:
  ConfigFile(const ConfigFile&);
  ConfigFile& operator=(const ConfigFile&);

  // `size` is the file's size: counts and lengths are not trusted past it.
  bool readBinaryNode(File& file, unsigned size, ConfigTreeNode* node);
  bool readBinaryProperty(File& file, unsigned size, ConfigTreeNode* node);
  bool readXMLDocument(const TiXmlDocument& document);
  bool readXMLNode(const TiXmlElement* element, ConfigTreeNode* node);
  bool readXMLProperty(const TiXmlElement* element, ConfigTreeNode* node);

  // The value of a property of `type` exactly, or null.
  void* findScalar(const char* path, int type);
  // Copies up to `size` bytes of a property of types 11 to 17; false otherwise.
  bool copyFamily(const char* path, void* result, unsigned size);
  bool copyDoubles(const char* path, float* result, int count);

  ConfigTreeNode* mRoot;
  char mCurrentPath[256];
};

#endif
