#include "SpriteFiles.h"

#include <png.h>
#include <zlib.h>

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <fstream>
#include <sstream>

namespace spritebuilder {

namespace {

void PutU8(Bytes& out, uint8_t v) { out.push_back(v); }
void PutU16(Bytes& out, uint16_t v) {
  out.push_back(uint8_t(v));
  out.push_back(uint8_t(v >> 8));
}
void PutU32(Bytes& out, uint32_t v) {
  for (int i = 0; i < 4; ++i) out.push_back(uint8_t(v >> (8 * i)));
}
void PutF32(Bytes& out, float v) {
  uint32_t bits;
  memcpy(&bits, &v, 4);
  PutU32(out, bits);
}
// `text` in a zero-filled field of `size` bytes; names are checked to leave room
// for a terminator.
void PutName(Bytes& out, const std::string& text, size_t size) {
  for (size_t i = 0; i < size; ++i) out.push_back(i < text.size() && i + 1 < size ? uint8_t(text[i]) : 0);
}

const uint16_t kNoBox = 0xFFFF;  // past any table: an empty box

void PutKey(Bytes& out, const Frame& frame, uint16_t sprite, float time, bool closing) {
  PutU32(out, sprite);
  PutU32(out, uint32_t(int32_t(frame.offsetX)));
  PutU32(out, uint32_t(int32_t(frame.offsetY)));
  PutF32(out, time);
  for (int slot = 0; slot < 4; ++slot) PutU16(out, frame.boxes[slot] < 0 ? kNoBox : uint16_t(frame.boxes[slot]));
  // The closing key repeats the last frame without its event: backwards play
  // passes it.
  PutU32(out, closing ? 0 : frame.event);
  PutU32(out, closing ? 0 : frame.value);
}

}  // namespace

Bytes AnimBytes(const Description& description, const std::vector<std::vector<uint16_t>>& spriteOf) {
  Bytes out;
  PutU32(out, 0x414E494D);  // "MINA"
  PutU8(out, 0);            // read and dropped
  PutU32(out, uint32_t(description.animations.size()));
  PutName(out, description.sprite, 32);
  for (size_t a = 0; a < description.animations.size(); ++a) {
    const Animation& anim = description.animations[a];
    // Times are summed in float, as the framework's clock counts.
    float duration = 0.0f;
    for (const Frame& frame : anim.frames) duration += frame.seconds;
    PutU32(out, uint32_t(anim.frames.size() + 1));
    PutU32(out, anim.mode);
    PutF32(out, duration);
    PutF32(out, 1.0f);  // scale, read by nothing
    PutName(out, anim.name, 16);
    float start = 0.0f;
    for (size_t f = 0; f < anim.frames.size(); ++f) {
      PutKey(out, anim.frames[f], spriteOf[a][f], start, false);
      start += anim.frames[f].seconds;
    }
    PutKey(out, anim.frames.back(), spriteOf[a].back(), duration, true);
  }
  PutName(out, description.layer, 16);
  for (int layer = 1; layer < 10; ++layer) PutName(out, "", 16);
  PutU32(out, uint32_t(description.boxes.size()));
  for (const Box& box : description.boxes) {
    PutU32(out, uint32_t(int32_t(box.left)));
    PutU32(out, uint32_t(int32_t(box.top)));
    PutU32(out, uint32_t(int32_t(box.right)));
    PutU32(out, uint32_t(int32_t(box.bottom)));
  }
  return out;
}

Bytes TalBytes(const Atlas& atlas) {
  Bytes out;
  PutU32(out, 0x5354414C);  // "LATS"
  PutU32(out, uint32_t(atlas.frames.size()));
  PutU32(out, 1);  // compact
  PutU32(out, 0);  // reserved
  for (const AtlasFrame& frame : atlas.frames) {
    PutU16(out, frame.width);
    PutU16(out, frame.height);
    PutU16(out, uint16_t(frame.cells.size()));
    for (const Cell& cell : frame.cells) {
      out.insert(out.end(), {cell.page, cell.tileColumn, cell.tileRow, cell.cellColumn, cell.cellRow});
    }
  }
  return out;
}

Bytes UdiBytes(const Image& page) {
  const uLong raw = uLong(page.rgba.size());
  uLongf packedSize = compressBound(raw);
  Bytes packed(packedSize);
  const bool pack = compress2(packed.data(), &packedSize, page.rgba.data(), raw, 9) == Z_OK && packedSize < raw;
  const Bytes& payload = pack ? packed : page.rgba;
  const uint32_t stored = pack ? uint32_t(packedSize) : uint32_t(raw);

  Bytes out;
  out.insert(out.end(), {'U', 'D', 'I', 0});
  PutU32(out, 0);                   // not read
  PutU32(out, 36 + uint32_t(raw));  // header and unpacked payload
  PutU32(out, 36 + stored);         // the file's length
  PutU16(out, uint16_t(page.width));
  PutU16(out, uint16_t(page.height));
  out.insert(out.end(), {uint8_t(pack ? 1 : 0), 0, 0, 0});  // compression
  out.insert(out.end(), {1, 32, 0, 0});                      // R8G8B8A8, 32 bits, -, no palette
  PutU32(out, 0);
  PutU32(out, 0);
  out.insert(out.end(), payload.begin(), payload.begin() + stored);
  return out;
}

bool ReadPngFrame(const std::string& path, Image* out, std::string* error) {
  png_image png;
  memset(&png, 0, sizeof png);
  png.version = PNG_IMAGE_VERSION;
  if (!png_image_begin_read_from_file(&png, path.c_str())) {
    *error = path + ": " + png.message;
    return false;
  }
  png.format = PNG_FORMAT_RGBA;
  out->width = int(png.width);
  out->height = int(png.height);
  out->rgba.assign(PNG_IMAGE_SIZE(png), 0);
  if (!png_image_finish_read(&png, nullptr, out->rgba.data(), 0, nullptr)) {
    *error = path + ": " + png.message;
    png_image_free(&png);
    return false;
  }
  return true;
}

bool WriteFileWhole(const std::string& path, const Bytes& bytes, std::string* error) {
  const std::string temporary = path + ".part";
  FILE* file = fopen(temporary.c_str(), "wb");
  if (file == nullptr) {
    *error = temporary + ": " + strerror(errno);
    return false;
  }
  const bool written = fwrite(bytes.data(), 1, bytes.size(), file) == bytes.size();
  const bool closed = fclose(file) == 0;
  if (!written || !closed || rename(temporary.c_str(), path.c_str()) != 0) {
    *error = path + ": " + strerror(errno);
    remove(temporary.c_str());
    return false;
  }
  return true;
}

bool AddToSpriteList(const std::string& path, const std::string& name, std::string* error) {
  std::string text;
  std::ifstream in(path, std::ios::binary);
  if (in) {
    std::ostringstream all;
    all << in.rdbuf();
    text = all.str();
  }
  std::istringstream lines(text);
  for (std::string line; std::getline(lines, line);) {
    while (!line.empty() && (line.back() == '\r' || line.back() == '\t')) line.pop_back();
    if (line == name) return true;
  }
  if (!text.empty() && text.back() != '\n') text += '\n';
  text += name + "\n";
  return WriteFileWhole(path, Bytes(text.begin(), text.end()), error);
}

}  // namespace spritebuilder
