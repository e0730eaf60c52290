#ifndef SRC_EXTERNAL_TINYXML_TINYXMLADD_H
#define SRC_EXTERNAL_TINYXML_TINYXMLADD_H
// Typed reading of a child element's text, for the small XML files the framework
// reads with TinyXML.
#include <assert.h>
#include <tinyxml.h>

#include <sstream>

// Reads the text of the child `keyName` of `elementToGet` into `value` through a
// string stream. False when the child or its text is missing; true otherwise,
// also when the text does not parse as a T (the stream then leaves what it leaves).
template <typename T>
bool GetTextElementValue(TiXmlElement* elementToGet, const char* keyName, T& value) {
  assert(elementToGet);
  assert(keyName);
  TiXmlElement* child = elementToGet->FirstChildElement(keyName);
  if (child == 0) return false;
  const char* text = child->GetText();
  if (text == 0) return false;
  std::istringstream stream(text);
  stream >> value;
  return true;
}

#endif
