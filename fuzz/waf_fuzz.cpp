// WAF archives: the directory, every file's chain read in varying chunks, seeks to
// places the input chooses, and each file as an XML document and a configuration
// tree. Seed archives: fuzz/corpus/waf/.
#include <stdint.h>
#include <string.h>

#include <vector>

#include "ConfigSystem/ConfigFile.h"
#include "External/waf/wafexp.h"
#include "External/waf/waftinyxml.h"
#include "FuzzSupport.h"

namespace {

// Bounds the work of one input: chains of tiny blocks can unpack to much more.
const int kMostBytesPerFile = 1 << 20;

void ReadAndSeek(waf_file* file, const uint8_t* data, size_t size) {
  std::vector<unsigned char> buffer(70000);
  int total = 0;
  for (size_t i = 0; total < kMostBytesPerFile; ++i) {
    const int chunk = 1 + int(data[i % size]) * 271;  // 1 to 69106 bytes
    const int got = waf_read(file, buffer.data(), chunk);
    if (got <= 0) break;
    total += got;
  }
  // Seeks to places the input chooses, from the three origins, each followed by
  // a read; never before the start, which is the caller's assertion.
  for (size_t i = 0; i + 2 < size && i < 48; i += 3) {
    const int whence = data[i] % 3;
    const int64_t target = int64_t(data[i + 1]) << 9 | data[i + 2];
    const int64_t origin = whence == 0 ? 0 : whence == 1 ? waf_tell(file) : waf_size(file);
    const int64_t offset = target - origin;
    if (offset < INT32_MIN || offset > INT32_MAX) continue;
    if (waf_seek(file, int(offset), whence) == 0) waf_read(file, buffer.data(), 4096);
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  if (size == 0) return 0;
  fuzz::ThrowOnAssertions();
  const std::string path = fuzz::InputFile(data, size, ".waf");
  // An archive at the start of the file, and one a few bytes in.
  for (int offset : {0, int(data[0] % 16)}) {
    waf_archive* archive = waf_archive_open(path.c_str(), offset);
    if (archive == nullptr) continue;
    for (int i = 0; i < archive->count && i < 16; ++i) {
      char name[WAF_NAME_MAX + 1] = {};
      memcpy(name, archive->entries[i]->name, WAF_NAME_MAX);
      waf_file* file = waf_open(archive, name);
      if (file == nullptr) continue;
      ReadAndSeek(file, data, size);
      if (waf_seekabs(file, 0) == 0 && waf_size(file) <= kMostBytesPerFile) {
        TiXmlDocument document;
        LoadFile(document, file);
        waf_seekabs(file, 0);
        ConfigFile config;
        config.loadFromWafFile(file);
      }
      waf_close(file);
    }
    waf_archive_close(archive);
  }
  return 0;
}
