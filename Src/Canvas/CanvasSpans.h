#ifndef SRC_CANVAS_CANVASSPANS_H
#define SRC_CANVAS_CANVASSPANS_H
// The inner loops of the canvas layers: spans of pixels that lie next to each other in
// a buffer, from the lowest address up, with their source pixels in the same order.
// Each exists in three builds that give the same pixels to the bit: portable C++ for
// any machine, SSE2 (every x86-64 has it) and AVX2, and the widest one this machine
// runs is taken.
//
// None of them reads gColorBlendTable: its entry floor(i x j / 255) is worked out by
// forms that are exact for every pair of bytes (the canvas tests go through all of
// them):
//   portable, four channels at once in the 16-bit lanes of a 64-bit word, from the
//     product x = i x j: (x + 1 + (x >> 8)) >> 8;
//   SSE2 and AVX2, 8 or 16 lanes at once: in the blends, the high half of
//     i x (257 j + 1), the factor 257 j + 1 formed once per pixel or per draw (it
//     has no room in 16 bits for j = 255, which the blends meet only in pixels that
//     they copy or leave); elsewhere (the fade, the premultiplication, the plain
//     layer's division of a sum of two products) x x 0x8081 >> 23.
// A channel's product with 255 is the channel itself (T[255][j] = j), which is how the
// alpha byte rides along in the same arithmetic.
#include <stdint.h>

typedef unsigned char uint8;

enum ECanvasSpanPath {
  kCanvasSpanPortable = 0,
  kCanvasSpanSSE2 = 1,
  kCanvasSpanAVX2 = 2,
  kCanvasSpanPathCount = 3,
};

// How a blending form makes the effective alpha a of a pixel from its alpha s and the
// draw's alpha byte b.
enum ECanvasAlphaRule {
  kCanvasAlphaProduct,  // a = s x b / 255
  kCanvasAlphaShifted,  // a = (s x b + 1) >> 8, never 255 for b up to 255
};

// Runs Blend<rule, full>::Run(dst, src, count, b), where `full` tells that b is 255
// and the rule makes a = s: the spans' loops take both as constants.
template <template <ECanvasAlphaRule, bool> class Blend>
void CanvasBlendByRule(uint8* dst, const uint8* src, int count, unsigned b, ECanvasAlphaRule rule) {
  if (rule == kCanvasAlphaShifted) {
    Blend<kCanvasAlphaShifted, false>::Run(dst, src, count, b);
  } else if (b == 255) {
    Blend<kCanvasAlphaProduct, true>::Run(dst, src, count, b);
  } else {
    Blend<kCanvasAlphaProduct, false>::Run(dst, src, count, b);
  }
}

struct CanvasSpanOps {
  // R, G, B, A source pixels laid over B, G, R, A ones as the platform's layers blend:
  // a of 0 leaves the pixel; otherwise d = T[dstA][255 - a], each colour byte becomes
  // T[dst][d] + T[src][a] (the source's bytes turned round) and alpha d + a. At a = 255
  // that is the source itself, which runs of opaque pixels copy straight.
  void (*blendSwapped)(uint8* dst, const uint8* src, int count, unsigned b, ECanvasAlphaRule rule);
  // R, G, B, A over R, G, B, A as the portable layer blends, a = s x b / 255, with one
  // division per channel: d = T[dstA][255 - a], colour (src x a + dst x d) / 255,
  // alpha d + a; a of 0 leaves the pixel.
  void (*blendDivided)(uint8* dst, const uint8* src, int count, unsigned b);
  // R, G, B source pixels written as opaque ones, turned round to B, G, R if `swapped`.
  void (*copyRGB)(uint8* dst, const uint8* src, int count, bool swapped);
  // A layer's pixels into the display at a fraction `factor` (0 to 1) of their alpha:
  // a = (unsigned)(A x factor) in single precision, each colour byte T[c][a], alpha a.
  void (*fade)(uint8* dst, const uint8* src, int count, float factor);
  // Each pixel's colour bytes multiplied by its own alpha, T[c][A]; the alpha stays.
  void (*premultiply)(uint8* pixels, int count);
};

// The operations of `path`, or null where this build or this machine has not got it.
const CanvasSpanOps* CanvasSpanOpsFor(ECanvasSpanPath path);
// The widest path this machine runs.
ECanvasSpanPath CanvasBestSpanPath();
// What the layers draw with: the best path, unless another one was chosen.
const CanvasSpanOps& CanvasSpans();
ECanvasSpanPath CanvasSpanPath();
// Makes the layers draw with `path` (the tests and benchmarks compare the paths);
// false, changing nothing, where that path is not available.
bool CanvasUseSpanPath(ECanvasSpanPath path);

// The three builds, for the choice above (null where not built); the SIMD ones finish
// their spans' last few pixels with the portable one.
extern const CanvasSpanOps gCanvasSpansPortable;
// A pixel at a time, each byte read and written in the order of the first
// pixel-at-a-time drawing: for a draw whose source lies in the layer's own buffer.
extern const CanvasSpanOps gCanvasSpansInOrder;
extern const CanvasSpanOps* const gCanvasSpansSSE2;
extern const CanvasSpanOps* const gCanvasSpansAVX2;

// A layer's pixel buffer, on a 64-byte boundary: rows that start on one (a full-width
// draw, since 4 x width is a multiple of 64 for the screen's widths) are drawn
// without vectors that straddle two cache lines. Freed by DeleteCanvasBuffer alone.
uint8* NewCanvasBuffer(int bytes);
void DeleteCanvasBuffer(uint8* buffer);

#endif
