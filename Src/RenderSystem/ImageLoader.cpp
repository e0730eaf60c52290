#include "RenderSystem/ImageLoader.h"

#include <string.h>

#include "RenderSystem/BMPFile.h"
#include "RenderSystem/TGAFile.h"
#include "RenderSystem/UDImage.h"

namespace {

bool Is(const char* ext, const char* upper, const char* lower) {
  for (int i = 0; i < 3; ++i)
    if (ext[i] != upper[i] && ext[i] != lower[i]) return false;
  return true;
}

}  // namespace

int LoadImageFromFile(const char* path, BMPData* out) {
  if (out == 0 || path == 0 || path[0] == 0) return -6;
  const long length = long(strlen(path));
  const char* dot = strrchr(path, '.');
  // Without a dot the test starts one character before the path, so the path's
  // own first three characters are what is compared.
  const long at = dot ? long(dot - path) : -1;
  if (length - at < 4) return -4;
  const char* ext = path + at + 1;

  if (Is(ext, "BMP", "bmp")) {
    BMPFile file;
    memset(&file, 0, sizeof file);
    if (LoadBMPFile(path, &file) != 0) {
      UnloadBMPFile(&file);
      return -5;
    }
    int done = 0;
    if (file.infoHeader.biBitCount == 24) {
      done = LoadBMPDataBit24(&file, out);
    } else if (file.infoHeader.biBitCount == 32) {
      done = LoadBMPDataBit32(&file, out);
    }
    UnloadBMPFile(&file);
    return done ? 0 : -2;
  }
  if (Is(ext, "TGA", "tga")) return LoadTGAFile(path, out);
  if (Is(ext, "UDI", "udi")) return LoadUDIFile(path, out);
  return -5;
}
