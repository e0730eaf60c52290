#include "Pack.h"

#include <zlib.h>

#include <algorithm>
#include <cerrno>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <system_error>
#include <vector>

#include "External/waf/wafexp.h"

namespace fs = std::filesystem;

namespace {

// The same bytes for the same folder, whatever the machine: names sorted
// bytewise, one fixed level, nothing else (no times, no owners) recorded.
const int kLevel = Z_BEST_COMPRESSION;
// The reader keeps a name's terminator in its 260 bytes only up to this length.
const size_t kLongestName = WAF_NAME_MAX - 1;

struct Member {
  std::string name;  // relative to the folder, with "/"
  fs::path path;
  int32_t size = 0;
  int32_t dataOffset = 0;
};

void PutI32(std::vector<unsigned char>& out, int32_t value) {
  for (int i = 0; i < 4; ++i) out.push_back(static_cast<unsigned char>(uint32_t(value) >> (8 * i)));
}

void Fail(const std::string& message) { fprintf(stderr, "waf: %s\n", message.c_str()); }

// Every regular file below `folder`, but `out` itself, sorted by name.
bool Collect(const fs::path& folder, const fs::path& out, std::vector<Member>& members) {
  std::error_code error;
  fs::recursive_directory_iterator it(folder, error), end;
  for (; !error && it != end; it.increment(error)) {
    // Not a regular file (folders, broken links and the like), or the archive
    // being replaced: not packed.
    std::error_code ignored;
    if (!it->is_regular_file(ignored) || fs::equivalent(it->path(), out, ignored)) continue;
    Member member;
    member.path = it->path();
    member.name = it->path().lexically_relative(folder).generic_string();
    members.push_back(member);
  }
  if (error) {
    Fail("cannot read the folder " + folder.string() + ": " + error.message());
    return false;
  }
  std::sort(members.begin(), members.end(), [](const Member& a, const Member& b) { return a.name < b.name; });
  return true;
}

void WriteI32(FILE* archive, int32_t value) {
  std::vector<unsigned char> bytes;
  PutI32(bytes, value);
  fwrite(bytes.data(), 1, bytes.size(), archive);
}

// The file's blocks of 65536 bytes, each one zlib stream behind its length, and
// the zero length that ends the chain.
bool WriteChain(FILE* archive, Member& member, int64_t& offset) {
  FILE* in = fopen(member.path.c_str(), "rb");
  if (in == nullptr) {
    Fail("cannot read " + member.path.string() + ": " + strerror(errno));
    return false;
  }
  std::vector<unsigned char> raw(WAF_BLOCK_SIZE), packed(compressBound(WAF_BLOCK_SIZE));
  member.dataOffset = int32_t(offset);
  int64_t size = 0;
  size_t got;
  bool good = true;
  while (good && (got = fread(raw.data(), 1, raw.size(), in)) > 0) {
    uLongf length = uLongf(packed.size());
    if (compress2(packed.data(), &length, raw.data(), uLong(got), kLevel) != Z_OK) {
      Fail("zlib could not compress " + member.name);
      good = false;
      break;
    }
    size += int64_t(got);
    offset += 4 + int64_t(length);
    if (size > INT32_MAX || offset > INT32_MAX) {
      Fail(member.name + ": sizes and offsets in an archive are 32-bit; this one would pass 2 GiB");
      good = false;
      break;
    }
    WriteI32(archive, int32_t(length));
    fwrite(packed.data(), 1, length, archive);
  }
  if (good && ferror(in)) {
    Fail("cannot read " + member.path.string());
    good = false;
  }
  fclose(in);
  if (!good) return false;
  WriteI32(archive, 0);
  offset += 4;
  member.size = int32_t(size);
  return true;
}

bool WriteArchive(FILE* archive, const std::string& path, std::vector<Member>& members) {
  // The directory's size is known from the names; its offsets are written once
  // the chains behind it are.
  int64_t offset = WAF_HEADER_SIZE;
  for (const Member& member : members) offset += 4 + int64_t(member.name.size()) + 4 + 4;
  bool good = fseek(archive, long(offset), SEEK_SET) == 0;
  for (size_t i = 0; good && i < members.size(); ++i) good = WriteChain(archive, members[i], offset);
  if (!good) return false;

  std::vector<unsigned char> head = {'w', 'a', 'f', 0};
  PutI32(head, WAF_VERSION);
  PutI32(head, int32_t(members.size()));
  for (const Member& member : members) {
    PutI32(head, int32_t(member.name.size()));
    head.insert(head.end(), member.name.begin(), member.name.end());
    PutI32(head, member.size);
    PutI32(head, member.dataOffset);
  }
  if (fseek(archive, 0, SEEK_SET) != 0 || fwrite(head.data(), 1, head.size(), archive) != head.size() ||
      fflush(archive) != 0 || ferror(archive)) {
    Fail("cannot write " + path + ": " + strerror(errno));
    return false;
  }
  return true;
}

}  // namespace

int Pack(const std::string& out, const std::string& folder) {
  std::error_code error;
  if (!fs::is_directory(folder, error)) {
    Fail(folder + " is not a folder");
    return 1;
  }
  // "DIR/" names its files as "DIR" does.
  fs::path base(folder);
  if (!base.has_filename() && base.has_parent_path()) base = base.parent_path();
  std::vector<Member> members;
  if (!Collect(base, out, members)) return 1;
  if (members.empty()) {
    Fail("no files below " + folder + ": an archive holds at least one");
    return 1;
  }
  for (const Member& member : members) {
    if (member.name.size() > kLongestName) {
      Fail(member.name + ": a name of " + std::to_string(member.name.size()) + " bytes; " +
           std::to_string(kLongestName) + " at most");
      return 1;
    }
  }

  const std::string temporary = out + ".part";
  FILE* archive = fopen(temporary.c_str(), "wb");
  if (archive == nullptr) {
    Fail("cannot write " + temporary + ": " + strerror(errno));
    return 1;
  }
  bool written = WriteArchive(archive, temporary, members);
  if (fclose(archive) != 0 && written) {
    Fail("cannot write " + temporary + ": " + strerror(errno));
    written = false;
  }
  if (written && rename(temporary.c_str(), out.c_str()) != 0) {
    Fail("cannot replace " + out + ": " + strerror(errno));
    written = false;
  }
  if (!written) {
    remove(temporary.c_str());
    return 1;
  }

  int64_t total = 0;
  for (const Member& member : members) total += member.size;
  printf("%s: %zu files, %lld bytes packed into %lld\n", out.c_str(), members.size(), (long long)total,
         (long long)fs::file_size(out, error));
  return 0;
}
