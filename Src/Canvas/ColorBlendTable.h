#ifndef SRC_CANVAS_COLORBLENDTABLE_H
#define SRC_CANVAS_COLORBLENDTABLE_H
// Products of two bytes over 255, for blending without a division:
// gColorBlendTable[i * 256 + j] = floor(i * j / 255).

extern unsigned char gColorBlendTable[65536];

// Fills the table; also done while the program's static objects are constructed.
void InitColorBlendTable();

#endif
