// The walker's texts: a WAF archive as the title finds it, its Texts.xml read
// through the archive into the texts the title shows. Seeds: fuzz/corpus/walker_texts/.
#include <stdint.h>

#include "External/waf/wafexp.h"
#include "FuzzSupport.h"
#include "Texts.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  fuzz::ThrowOnAssertions();
  const std::string path = fuzz::InputFile(data, size, ".waf");
  waf_archive* archive = waf_archive_open(path.c_str(), 0);
  if (archive == nullptr) return 0;
  walker::Texts texts;
  texts.Load(archive, path.c_str());
  waf_archive_close(archive);
  return 0;
}
