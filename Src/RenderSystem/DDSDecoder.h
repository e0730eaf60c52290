#ifndef SRC_RENDERSYSTEM_DDSDECODER_H
#define SRC_RENDERSYSTEM_DDSDECODER_H
// Software decoding of block-compressed texture data, for devices whose GL takes
// no compressed textures. Output: `*dst`, the caller's buffer of width x height x 4
// bytes, R, G, B, A, rows top to bottom.
//
// format 0: R, G, B rows (alpha 255); 1: R, G, B, A rows, and `src` is freed;
// 2: DXT1; 4: DXT3; 6: DXT5; any other: 8-byte blocks, colour as DXT1, alpha 255.
// Always returns 1.
int DECODEDDSFormat(int format, unsigned char* src, int width, int height, char** dst);

#endif
