#pragma once
// A JSON document: read from and written to a file or a text, with its tree of
// Catalog::Value. Writing a file replaces it whole.
#include <string>

#include "CatalogValue.h"

namespace Catalog {

class CJSonFile {
 public:
  CJSonFile();
  // Loads `path`; IsValid() tells whether that worked.
  explicit CJSonFile(const std::string& path);

  bool Load(const std::string& path);
  bool Save(const std::string& path) const;
  bool Parse(const std::string& text);
  // The document as one line of JSON.
  std::string ToString() const;

  bool IsValid() const { return mValid; }
  // Why the last Load or Parse failed.
  const std::string& GetError() const { return mError; }

  Value& GetRoot() { return mRoot; }
  const Value& GetRoot() const { return mRoot; }

 private:
  Value mRoot;
  bool mValid;
  std::string mError;
};

}  // namespace Catalog
