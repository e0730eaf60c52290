#ifndef SRC_RENDERSYSTEM_IMAGELOADER_H
#define SRC_RENDERSYSTEM_IMAGELOADER_H
// The single way from a picture file to pixels: BMP, TGA or UDI, chosen by the
// three letters after the last dot, in either case.
#include "RenderSystem/BMPData.h"

// 0 loaded; -1 TGA without memory; -2 TGA unreadable or corrupt, UDI failed, BMP
// of another depth or failed conversion; -3 TGA not opened; -4 extension too
// short; -5 extension unknown or BMP not read; -6 null target or empty path.
// BMP rows keep the file's order.
int LoadImageFromFile(const char* path, BMPData* out);

#endif
