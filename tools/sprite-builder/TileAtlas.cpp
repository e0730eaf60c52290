#include "TileAtlas.h"

#include <cstring>
#include <unordered_map>

namespace spritebuilder {

namespace {

const int kMaxFrameSide = 512;
const size_t kMaxPages = 256;  // a cell's page is one byte
const size_t kTileBytes = kTile * kTile * 4;

using Tile = std::string;  // the tile's pixels, as bytes, so it can be a key

// The tile at cell (cx, cy) of `image`, padded with transparency past its edges.
Tile CutTile(const Image& image, int cx, int cy) {
  Tile tile(kTileBytes, '\0');
  for (int y = 0; y < kTile; ++y) {
    const int sy = cy * kTile + y;
    if (sy >= image.height) break;
    const int sx = cx * kTile;
    const int width = std::min(kTile, image.width - sx);
    memcpy(&tile[size_t(y) * kTile * 4], &image.rgba[(size_t(sy) * image.width + sx) * 4], size_t(width) * 4);
  }
  return tile;
}

bool IsClear(const Tile& tile) {
  for (size_t i = 3; i < tile.size(); i += 4) {
    if (tile[i] != 0) return false;
  }
  return true;
}

int PowerOfTwoAtLeast(int n) {
  int p = 1;
  while (p < n) p *= 2;
  return p;
}

}  // namespace

void ClearTransparentPixels(Image* image) {
  for (size_t i = 0; i + 3 < image->rgba.size(); i += 4) {
    if (image->rgba[i + 3] == 0) memset(&image->rgba[i], 0, 4);
  }
}

bool BuildAtlas(const std::vector<Image>& frames, int pageSize, Atlas* out, std::string* error) {
  *out = Atlas();
  if (pageSize < kTile || pageSize > 4096 || (pageSize & (pageSize - 1)) != 0) {
    *error = "the page size must be a power of two from 16 to 4096";
    return false;
  }
  const int perRow = pageSize / kTile;
  const size_t perPage = size_t(perRow) * perRow;

  std::unordered_map<Tile, size_t> known;
  std::vector<const Tile*> stored;  // in order of first use; keys of `known` stay put
  for (size_t f = 0; f < frames.size(); ++f) {
    const Image& image = frames[f];
    if (image.width < 1 || image.height < 1 || image.width > kMaxFrameSide || image.height > kMaxFrameSide) {
      *error = "frame " + std::to_string(f) + " is " + std::to_string(image.width) + " x " +
               std::to_string(image.height) + " pixels; a frame is at most 512 x 512";
      return false;
    }
    AtlasFrame frame;
    frame.width = uint16_t(image.width);
    frame.height = uint16_t(image.height);
    const int columns = (image.width + kTile - 1) / kTile;
    const int rows = (image.height + kTile - 1) / kTile;
    for (int cy = 0; cy < rows; ++cy) {
      for (int cx = 0; cx < columns; ++cx) {
        Tile tile = CutTile(image, cx, cy);
        if (IsClear(tile)) continue;
        auto found = known.find(tile);
        if (found == known.end()) {
          found = known.emplace(std::move(tile), stored.size()).first;
          stored.push_back(&found->first);
        }
        const size_t index = found->second;
        const size_t inPage = index % perPage;
        frame.cells.push_back({uint8_t(index / perPage), uint8_t(inPage % perRow), uint8_t(inPage / perRow),
                               uint8_t(cx), uint8_t(cy)});
      }
    }
    if (frame.cells.size() > 0xFFFF) {
      *error = "frame " + std::to_string(f) + " has more than 65535 cells";
      return false;
    }
    out->cellCount += frame.cells.size();
    out->frames.push_back(std::move(frame));
  }
  if (stored.size() > kMaxPages * perPage) {
    *error = std::to_string(stored.size()) + " distinct tiles need more than 256 pages of " +
             std::to_string(pageSize) + " x " + std::to_string(pageSize) + "; choose a larger page size";
    return false;
  }
  out->tileCount = stored.size();

  for (size_t first = 0; first < stored.size(); first += perPage) {
    const size_t count = std::min(perPage, stored.size() - first);
    const int rowsUsed = int((count + perRow - 1) / perRow);
    Image page;
    page.width = pageSize;
    page.height = std::min(pageSize, PowerOfTwoAtLeast(rowsUsed * kTile));
    page.rgba.assign(size_t(page.width) * page.height * 4, 0);
    for (size_t i = 0; i < count; ++i) {
      const Tile& tile = *stored[first + i];
      const int px = int(i % perRow) * kTile;
      const int py = int(i / perRow) * kTile;
      for (int y = 0; y < kTile; ++y) {
        memcpy(&page.rgba[(size_t(py + y) * page.width + px) * 4], &tile[size_t(y) * kTile * 4], kTile * 4);
      }
    }
    out->pages.push_back(std::move(page));
  }
  return true;
}

}  // namespace spritebuilder
