#include "Texts.h"

#include <istream>

#include "External/tinyXml/tinyxmlAdd.h"
#include "External/waf/wafexp.h"
#include "External/waf/waftinyxml.h"

namespace walker {

const char Texts::kFile[] = "Texts.xml";

namespace {
// A text read whole: a stream's >> into a string stops at the first space.
struct WholeText {
  std::string* text;
};
std::istream& operator>>(std::istream& in, WholeText to) { return std::getline(in, *to.text, '\0'); }
}  // namespace

std::string Texts::Load(waf_archive* archive, const char* archivePath) {
  const std::string where = std::string(kFile) + " in " + archivePath;
  waf_file* file = waf_open(archive, kFile);
  if (file == nullptr) return "no " + where;
  TiXmlDocument document;
  const bool parsed = LoadFile(document, file);
  waf_close(file);
  TiXmlElement* root = document.RootElement();
  if (!parsed || root == nullptr) {
    return where + " does not parse (" + (parsed ? "no root element" : document.ErrorDesc()) + " at line " +
           std::to_string(document.ErrorRow()) + ")";
  }
  std::string missing;
  const struct {
    const char* name;
    std::string* text;
  } elements[] = {{"Help", &help},
                  {"Blend", &captions[eEffect_Blend]},
                  {"Trail", &captions[eEffect_Trail]},
                  {"Glow", &captions[eEffect_Glow]},
                  {"TuneKits", &tuneKits},
                  {"NoTuneKits", &noTuneKits},
                  {"Steps", &steps}};
  for (const auto& element : elements) {
    std::string text;
    WholeText whole = {&text};
    if (GetTextElementValue(root, element.name, whole)) {
      *element.text = text;
    } else {
      missing += (missing.empty() ? " <" : ", <") + std::string(element.name) + ">";
    }
  }
  return missing.empty() ? std::string() : where + " has no" + missing;
}

}  // namespace walker
