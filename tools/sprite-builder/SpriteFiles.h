#pragma once
// The files the framework reads, as bytes: the ".anim" animations, the compact
// ".tal" atlas, UDI page images, and the sprite list; and PNG frames in.
#include <cstdint>
#include <string>
#include <vector>

#include "SpriteDescription.h"
#include "TileAtlas.h"

namespace spritebuilder {

using Bytes = std::vector<uint8_t>;

// The animations of `description`. `spriteOf[a][f]` is the atlas frame of frame
// f of animation a. Each animation gets one key per frame, at the time the frame
// starts, and a last key at its end that only closes the time line (the
// framework's key search never stops on the last key).
Bytes AnimBytes(const Description& description, const std::vector<std::vector<uint16_t>>& spriteOf);

// The atlas in the compact form: 5 bytes a cell, only the cells that show.
Bytes TalBytes(const Atlas& atlas);

// A page as a UDI image in format R8G8B8A8 (1), 32 bits a pixel, no palette,
// zlib-packed unless packing makes it larger: uploaded to GL as it is.
Bytes UdiBytes(const Image& page);

// Reads a PNG file of any colour type into RGBA. False with a message.
bool ReadPngFrame(const std::string& path, Image* out, std::string* error);

// Replaces `path` with `bytes` whole (a temporary file, then a rename).
bool WriteFileWhole(const std::string& path, const Bytes& bytes, std::string* error);

// Adds `name` as a line of the sprite list at `path` unless it is listed: the
// lines already there keep their places, and so the sprites their IDs.
bool AddToSpriteList(const std::string& path, const std::string& name, std::string* error);

}  // namespace spritebuilder
