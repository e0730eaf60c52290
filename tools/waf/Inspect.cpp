#include "Inspect.h"

#include <cerrno>
#include <cinttypes>
#include <cstdio>
#include <cstring>
#include <set>
#include <vector>

#include "External/waf/wafexp.h"

namespace {

void Fail(const std::string& message) { fprintf(stderr, "waf: %s\n", message.c_str()); }

// An entry's name as text: one of 260 bytes has no terminator of its own.
std::string NameOf(const waf_entry* entry) { return std::string(entry->name, strnlen(entry->name, WAF_NAME_MAX)); }

uint32_t GetU32(const unsigned char* bytes) {
  return uint32_t(bytes[0]) | uint32_t(bytes[1]) << 8 | uint32_t(bytes[2]) << 16 | uint32_t(bytes[3]) << 24;
}

// Why the reader would not open the archive: it answers only with a null, so
// the header is looked at here to say more.
std::string WhyNotOpened(const std::string& path, int offset) {
  FILE* file = fopen(path.c_str(), "rb");
  if (file == nullptr) return "cannot open " + path + ": " + strerror(errno);
  unsigned char header[WAF_HEADER_SIZE];
  const bool whole = fseek(file, offset, SEEK_SET) == 0 && fread(header, 1, sizeof header, file) == sizeof header;
  fclose(file);
  const std::string where = path + (offset != 0 ? " at offset " + std::to_string(offset) : std::string());
  if (!whole) return where + ": too short for a WAF header (12 bytes)";
  if (memcmp(header, "waf", 4) != 0) return where + ": not a WAF archive (no \"waf\" and a zero byte)";
  char text[96];
  if (GetU32(header + 4) != WAF_VERSION) {
    snprintf(text, sizeof text, ": version 0x%08" PRIx32 "; this reader takes 0x00010000", GetU32(header + 4));
    return where + text;
  }
  const int32_t count = int32_t(GetU32(header + 8));
  if (count < 1) return where + ": a file count of " + std::to_string(count) + "; an archive holds at least one";
  return where + ": the directory is damaged (a name length outside 1 to 260, or records cut short)";
}

waf_archive* OpenArchive(const std::string& path, int offset) {
  waf_archive* archive = waf_archive_open(path.c_str(), offset);
  if (archive == nullptr) Fail(WhyNotOpened(path, offset));
  return archive;
}

// What a walk over a file's whole chain found.
struct Chain {
  int64_t unpacked = 0;
  int64_t compressed = 0;  // the zlib streams, without their length fields
  std::string fault;       // the first one, empty when none
};

// Loads every block of the file from its first, as sequential reads do.
Chain WalkChain(waf_file* file) {
  Chain chain;
  int32_t shortBlock = -1;  // a block before the last must hold 65536 bytes
  for (int index = 0;; ++index) {
    const int32_t at = file->next_block;
    const int status = waf_next_block(file);
    if (status == 2) break;
    if (status == 1) {
      chain.fault = "block " + std::to_string(index) + " at offset " + std::to_string(at) +
                    " does not load (cut short, a length outside 0 to 69632, or data that does not inflate)";
      break;
    }
    if (shortBlock >= 0) {
      chain.fault = "block " + std::to_string(index - 1) + " unpacks to " + std::to_string(shortBlock) +
                    " bytes; every block but the last holds 65536";
      break;
    }
    if (file->buffer_len != WAF_BLOCK_SIZE) shortBlock = file->buffer_len;
    chain.unpacked += file->buffer_len;
    chain.compressed += int64_t(file->next_block) - at - 4;
  }
  return chain;
}

// The entry as the reader finds it by name: null when another entry of the same
// name comes first, or the name can't be found at all.
waf_file* OpenEntry(waf_archive* archive, const waf_entry* entry) {
  waf_file* file = waf_open(archive, NameOf(entry).c_str());
  if (file != nullptr && file->entry != entry) {
    waf_close(file);
    return nullptr;
  }
  return file;
}

}  // namespace

int List(const std::string& path, int offset) {
  waf_archive* archive = OpenArchive(path, offset);
  if (archive == nullptr) return 1;
  int status = 0;
  printf("%12s %12s  %s\n", "size", "compressed", "name");
  for (int32_t i = 0; i < archive->count; ++i) {
    const waf_entry* entry = archive->entries[i];
    std::string compressed = "-";
    waf_file* file = OpenEntry(archive, entry);
    if (file == nullptr) {
      compressed = "unreadable";
      status = 1;
    } else {
      const Chain chain = WalkChain(file);
      compressed = chain.fault.empty() ? std::to_string(chain.compressed) : "damaged";
      if (!chain.fault.empty()) status = 1;
      waf_close(file);
    }
    printf("%12" PRId32 " %12s  %s\n", entry->size, compressed.c_str(), NameOf(entry).c_str());
  }
  waf_archive_close(archive);
  if (status != 0) Fail(path + ": some files can't be read; waf check tells why");
  return status;
}

int Cat(const std::string& path, int offset, const std::string& name) {
  waf_archive* archive = OpenArchive(path, offset);
  if (archive == nullptr) return 1;
  waf_file* file = waf_open(archive, name.c_str());
  if (file == nullptr) {
    Fail(path + ": no file named " + name);
    waf_archive_close(archive);
    return 1;
  }
  std::vector<char> buffer(WAF_BLOCK_SIZE);
  int64_t total = 0;
  int got;
  std::string fault;
  while ((got = waf_read(file, buffer.data(), int(buffer.size()))) > 0) {
    if (fwrite(buffer.data(), 1, size_t(got), stdout) != size_t(got)) {
      fault = "cannot write to standard output";
      break;
    }
    total += got;
  }
  if (fault.empty() && got < 0) {
    fault = path + ": " + name + ": a block does not load after " + std::to_string(total) + " bytes";
  } else if (fault.empty() && total != waf_size(file)) {
    fault = path + ": " + name + ": " + std::to_string(total) + " bytes read, the directory says " +
            std::to_string(waf_size(file));
  }
  if (fflush(stdout) != 0 && fault.empty()) fault = "cannot write to standard output";
  waf_close(file);
  waf_archive_close(archive);
  if (!fault.empty()) {
    Fail(fault);
    return 1;
  }
  return 0;
}

int Check(const std::string& path, int offset) {
  waf_archive* archive = OpenArchive(path, offset);
  if (archive == nullptr) return 1;
  std::string fault;
  std::set<std::string> names;
  for (int32_t i = 0; i < archive->count && fault.empty(); ++i) {
    const waf_entry* entry = archive->entries[i];
    const std::string name = NameOf(entry);
    const std::string what = "entry " + std::to_string(i) + " (" + name + "): ";
    if (!names.insert(name).second) {
      fault = what + "the name comes twice; only the first can be read";
      break;
    }
    if (entry->size < 0) {
      fault = what + "a size of " + std::to_string(entry->size);
      break;
    }
    waf_file* file = OpenEntry(archive, entry);
    if (file == nullptr) {
      fault = what + "can't be opened by its name (a name of 260 bytes has no room for its end)";
      break;
    }
    const Chain chain = WalkChain(file);
    waf_close(file);
    if (!chain.fault.empty()) {
      fault = what + chain.fault;
    } else if (chain.unpacked != entry->size) {
      fault = what + "the blocks hold " + std::to_string(chain.unpacked) + " bytes, the directory says " +
              std::to_string(entry->size);
    }
  }
  const int32_t count = archive->count;
  waf_archive_close(archive);
  if (!fault.empty()) {
    Fail(path + ": " + fault);
    return 1;
  }
  printf("%s: %" PRId32 " files; every block inflates and every size agrees\n", path.c_str(), count);
  return 0;
}
