#pragma once
// RIFF files laid out by hand, for the paths of the video walk that no encoder
// makes, and the ffmpeg-made clips committed under data/avi/.
#include <cstdint>
#include <string>

#include "support/TestSupport.h"

namespace rifftest {

using zvtest::Bytes;

// The words the walk knows, as numbers: each is its four letters read as a
// little-endian word.
const uint32_t kRiff = 0x46464952u;  // "RIFF"
const uint32_t kAvi = 0x20495641u;   // "AVI "
const uint32_t kJunk = 0x4B4E554Au;  // "JUNK"
const uint32_t kList = 0x5453494Cu;  // "LIST"
const uint32_t kMovi = 0x69766F6Du;  // "movi"
const uint32_t kAvih = 0x68697661u;  // "avih"
const uint32_t kFrame00 = 0x63643030u;  // "00dc": high half 0x6364, the letters dc
const uint32_t kAudio01 = 0x62773130u;  // "01wb", a sound chunk

inline Bytes Word(uint32_t word) {
  Bytes out;
  zvtest::PutU32(out, word);
  return out;
}

inline Bytes Cat(std::initializer_list<Bytes> parts) {
  Bytes out;
  for (const Bytes& part : parts) out.insert(out.end(), part.begin(), part.end());
  return out;
}

inline Bytes Text(const std::string& text) { return Bytes(text.begin(), text.end()); }

// A chunk as a RIFF writer makes it: code, size, body, and a pad byte after an
// odd-sized body.
inline Bytes Chunk(uint32_t code, const Bytes& body) {
  Bytes out = Word(code);
  zvtest::PutU32(out, uint32_t(body.size()));
  out.insert(out.end(), body.begin(), body.end());
  if (body.size() % 2 == 1) out.push_back(0);
  return out;
}

// A chunk header whose size says what the test wants, whatever follows.
inline Bytes ChunkHead(uint32_t code, uint32_t size) { return Cat({Word(code), Word(size)}); }

inline Bytes List(uint32_t type, const Bytes& content) { return Chunk(kList, Cat({Word(type), content})); }

inline Bytes Riff(uint32_t form, const Bytes& content) { return Chunk(kRiff, Cat({Word(form), content})); }

// The 56-byte main header with the two fields the store reads; the others hold
// what an encoder would write for a 64 x 48 video.
inline Bytes MainHeader(uint32_t microSecPerFrame, uint32_t totalFrames) {
  Bytes body;
  zvtest::PutU32(body, microSecPerFrame);  // 0
  zvtest::PutU32(body, 500000);            // 4: bytes a second
  zvtest::PutU32(body, 0);                 // 8: padding granularity
  zvtest::PutU32(body, 0x10);              // 12: flags (has an index)
  zvtest::PutU32(body, totalFrames);       // 16
  zvtest::PutU32(body, 0);                 // 20: initial frames
  zvtest::PutU32(body, 1);                 // 24: streams
  zvtest::PutU32(body, 1 << 20);           // 28: suggested buffer size
  zvtest::PutU32(body, 64);                // 32: width
  zvtest::PutU32(body, 48);                // 36: height
  for (int i = 0; i < 4; ++i) zvtest::PutU32(body, 0);  // 40: reserved
  return body;
}

// An AVI with the header list, then `beforeMovi` at the top level, then the frame
// list holding `movi`.
inline Bytes Avi(const Bytes& beforeMovi, const Bytes& movi, uint32_t microSecPerFrame = 40000,
                 uint32_t totalFrames = 1) {
  const Bytes header = List(0x6C726468u /* "hdrl" */, Chunk(kAvih, MainHeader(microSecPerFrame, totalFrames)));
  return Riff(kAvi, Cat({header, beforeMovi, List(kMovi, movi)}));
}

// The ffmpeg-made clips (tools/make-avi-fixtures.sh).
inline std::string Clip(const std::string& name) { return std::string(ZV_SOURCE_DIR) + "/tests/media/data/avi/" + name; }

}  // namespace rifftest
