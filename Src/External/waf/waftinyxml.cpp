#include "External/waf/waftinyxml.h"

#include <string>

#include "External/waf/wafexp.h"

namespace {

// The document's location is the library's protected field. A class derived from
// the document may name it, and the member pointer it names applies to any
// document.
struct DocumentLocation : TiXmlDocument {
  static TiXmlCursor& Of(TiXmlDocument& document) { return document.*(&DocumentLocation::location); }
};

}  // namespace

bool LoadFile(TiXmlDocument& document, waf_file* file, TiXmlEncoding encoding) {
  if (file == 0) {
    document.SetError(TiXmlBase::TIXML_ERROR_OPENING_FILE, 0, 0, TIXML_ENCODING_UNKNOWN);
    return false;
  }

  // The existing content goes.
  document.Clear();
  DocumentLocation::Of(document).Clear();

  const int size = waf_size(file);
  if (size < 1) {
    document.SetError(TiXmlBase::TIXML_ERROR_DOCUMENT_EMPTY, 0, 0, TIXML_ENCODING_UNKNOWN);
    return false;
  }

  // The whole file in one read.
  std::string data;
  data.reserve(size_t(size));
  char* buffer = new char[size_t(size) + 1];
  buffer[0] = 0;
  if (waf_read(file, buffer, size) != size) {
    delete[] buffer;
    document.SetError(TiXmlBase::TIXML_ERROR_OPENING_FILE, 0, 0, TIXML_ENCODING_UNKNOWN);
    return false;
  }
  buffer[size] = 0;

  // Line ends as the library's stream loading makes them: CR LF and a lone CR
  // each become LF; a zero byte ends the text.
  for (const char* p = buffer; *p != 0; ++p) {
    if (*p == '\r') {
      data += '\n';
      if (p[1] == '\n') ++p;
    } else {
      data += *p;
    }
  }
  delete[] buffer;

  document.Parse(data.c_str(), 0, encoding);
  return !document.Error();
}
