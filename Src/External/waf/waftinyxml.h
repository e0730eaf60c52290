#ifndef SRC_EXTERNAL_WAF_WAFTINYXML_H
#define SRC_EXTERNAL_WAF_WAFTINYXML_H
// Loading a TinyXML document from a file inside a WAF archive, in the steps of the
// library's own loading from a stream.
#include <tinyxml.h>

struct waf_file;

// TinyXML is used as the system ships it, so its one addition is this free
// function beside the reader rather than a member of TiXmlDocument.
// Reads `waf_size(file)` bytes from where the file stands. False with the
// document's error set: "Failed to open file" for a null file or a short read,
// "Error document empty." for an empty file; otherwise the parser's own.
bool LoadFile(TiXmlDocument& document, waf_file* file, TiXmlEncoding encoding = TIXML_DEFAULT_ENCODING);

#endif
