#pragma once
// Shared by the archive tests: archives laid out byte by byte from the format's
// tables, handles that close themselves, test data, and reading a file whole.
#include <gtest/gtest.h>
#include <zlib.h>

#include <algorithm>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "External/waf/wafexp.h"
#include "support/TestSupport.h"

namespace waftest {

using zvtest::Bytes;
using zvtest::PutI32;
using zvtest::PutText;
using zvtest::PutU32;

// One zlib stream of `raw`, as uncompress takes it.
inline Bytes Deflate(const Bytes& raw, int level = Z_DEFAULT_COMPRESSION) {
  uLongf length = compressBound(uLong(raw.size()));
  Bytes out(length);
  EXPECT_EQ(Z_OK, compress2(out.data(), &length, raw.data(), uLong(raw.size()), level));
  out.resize(length);
  return out;
}

// Header: magic 'w' 'a' 'f' `fourth`, version, file count.
inline void PutHeader(Bytes& out, int32_t count, uint32_t version = 0x00010000, uint8_t fourth = 0) {
  PutText(out, "waf");
  out.push_back(fourth);
  PutU32(out, version);
  PutI32(out, count);
}

// Directory record: name length, name, size, data offset.
inline void PutRecord(Bytes& out, const std::string& name, int32_t size, int32_t dataOffset) {
  PutI32(out, int32_t(name.size()));
  PutText(out, name);
  PutI32(out, size);
  PutI32(out, dataOffset);
}
inline int32_t RecordSize(const std::string& name) { return 4 + int32_t(name.size()) + 4 + 4; }

// Block: compressed length, then the zlib stream.
inline void PutBlock(Bytes& out, const Bytes& stream) {
  PutI32(out, int32_t(stream.size()));
  out.insert(out.end(), stream.begin(), stream.end());
}
inline void PutEnd(Bytes& out) { PutI32(out, 0); }

// The blocks of `data`, 65536 bytes each, and the zero length that ends them.
inline void PutChain(Bytes& out, const Bytes& data) {
  for (size_t at = 0; at < data.size(); at += WAF_BLOCK_SIZE) {
    const size_t end = std::min(data.size(), at + WAF_BLOCK_SIZE);
    PutBlock(out, Deflate(Bytes(data.begin() + long(at), data.begin() + long(end))));
  }
  PutEnd(out);
}

// Where block `block` of a one-file archive laid out by LayArchive begins.
inline size_t BlockStart(const std::string& name, const Bytes& data, int block) {
  size_t at = WAF_HEADER_SIZE + size_t(RecordSize(name));
  for (int i = 0; i < block; ++i) {
    const size_t from = size_t(i) * WAF_BLOCK_SIZE;
    const size_t to = std::min(data.size(), from + WAF_BLOCK_SIZE);
    at += 4 + Deflate(Bytes(data.begin() + long(from), data.begin() + long(to))).size();
  }
  return at;
}

struct Member {
  std::string name;
  Bytes data;
};

// A well-formed archive: header, directory, then each member's chain in
// directory order.
inline Bytes LayArchive(const std::vector<Member>& members) {
  int32_t dataOffset = WAF_HEADER_SIZE;
  for (const Member& member : members) dataOffset += RecordSize(member.name);
  Bytes chains;
  Bytes out;
  PutHeader(out, int32_t(members.size()));
  for (const Member& member : members) {
    PutRecord(out, member.name, int32_t(member.data.size()), dataOffset + int32_t(chains.size()));
    PutChain(chains, member.data);
  }
  out.insert(out.end(), chains.begin(), chains.end());
  return out;
}

// `size` bytes of something like text: compressible, but not to nothing.
inline Bytes TextLike(size_t size, uint32_t seed) {
  Bytes out(size);
  uint32_t state = seed * 2654435761u + 1;
  for (size_t i = 0; i < size; ++i) {
    state = state * 1664525u + 1013904223u;
    out[i] = uint8_t(' ' + (state >> 26));
  }
  return out;
}

// `size` bytes that zlib can't shrink.
inline Bytes Noise(size_t size, uint32_t seed) {
  Bytes out(size);
  uint64_t state = seed + 0x9e3779b97f4a7c15ull;
  for (size_t i = 0; i < size; ++i) {
    state ^= state << 13;
    state ^= state >> 7;
    state ^= state << 17;
    out[i] = uint8_t(state >> 32);
  }
  return out;
}

struct ArchiveCloser {
  void operator()(waf_archive* archive) const { waf_archive_close(archive); }
};
struct FileCloser {
  void operator()(waf_file* file) const { waf_close(file); }
};
using ArchivePtr = std::unique_ptr<waf_archive, ArchiveCloser>;
using FilePtr = std::unique_ptr<waf_file, FileCloser>;

// Writes `bytes` to `path` and opens it as an archive at `offset`.
inline ArchivePtr OpenBytes(const std::string& path, const Bytes& bytes, int offset = 0) {
  zvtest::WriteBytes(path, bytes);
  return ArchivePtr(waf_archive_open(path.c_str(), offset));
}

inline FilePtr Open(const ArchivePtr& archive, const std::string& name) {
  return FilePtr(waf_open(archive.get(), name.c_str()));
}

// Everything the file gives from where it stands, in reads of `chunk` bytes;
// `status` gets the last result of waf_read (0 at a clean end, -1 on a failure).
inline Bytes ReadAll(waf_file* file, int chunk, int* status = nullptr) {
  Bytes out;
  Bytes buffer(size_t(chunk) + 1);
  int got;
  while ((got = waf_read(file, buffer.data(), chunk)) > 0) out.insert(out.end(), buffer.begin(), buffer.begin() + got);
  if (status) *status = got;
  return out;
}

// One read of `count` bytes; its result in `got`, or expected not to fail.
inline Bytes ReadSome(waf_file* file, int count, int* got = nullptr) {
  Bytes out(static_cast<size_t>(count) + 1, 0xee);
  const int result = waf_read(file, out.data(), count);
  if (got) *got = result;
  else EXPECT_GE(result, 0);
  out.resize(result > 0 ? size_t(result) : 0);
  return out;
}

inline Bytes Slice(const Bytes& data, size_t at, size_t count) {
  at = std::min(at, data.size());
  count = std::min(count, data.size() - at);
  return Bytes(data.begin() + long(at), data.begin() + long(at + count));
}

}  // namespace waftest
