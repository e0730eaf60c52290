// The spans in plain C++ for any machine: a pixel at a time, its four channels side
// by side in the 16-bit lanes of a 64-bit word, so one multiplication serves all four
// (a channel times a byte stays below 65,536 and never carries into the next lane).
#include <string.h>

#include "Canvas/CanvasSpans.h"

namespace {

const uint32_t kAlpha = 0xFF000000u;
const uint64_t kLaneBytes = 0x00FF00FF00FF00FFull;

// The pixel words are little-endian, as the display reads them.
static_assert(__BYTE_ORDER__ == __ORDER_LITTLE_ENDIAN__, "layer pixels are little-endian words");

inline uint32_t LoadPixel(const uint8* p) {
  uint32_t word;
  memcpy(&word, p, 4);
  return word;
}
inline void StorePixel(uint8* p, uint32_t word) { memcpy(p, &word, 4); }

// floor(x / 255) for x up to 255 x 255.
inline unsigned Div255(unsigned x) { return (x + 1 + (x >> 8)) >> 8; }

// A pixel's bytes 0, 2, 1, 3 in the lanes 0 to 3 of a word (the bytes 0 and 2 stay
// where they are, 1 and 3 move up by 24 bits), and back.
inline uint64_t Spread(uint32_t pixel) { return (pixel & 0x00FF00FFu) | (uint64_t(pixel & 0xFF00FF00u) << 24); }
inline uint32_t Pack(uint64_t lanes) { return static_cast<uint32_t>(lanes | (lanes >> 24)); }
const uint64_t kAlphaLane = 0x00FF000000000000ull;  // 255 in the alpha lane
// The lanes of an R, G, B, A pixel in the order of a B, G, R, A one, alpha taken as 255.
inline uint64_t SpreadSwappedOpaque(uint32_t pixel) {
  return ((pixel >> 16) & 0xFFu) | ((pixel & 0xFFu) << 16) | (uint64_t(pixel & 0x0000FF00u) << 24) | kAlphaLane;
}

// Div255 in each lane.
inline uint64_t Div255Lanes(uint64_t x) {
  return ((x + ((x >> 8) & kLaneBytes) + 0x0001000100010001ull) >> 8) & kLaneBytes;
}

// Bytes 0 and 2 change places: R, G, B, A to B, G, R, A.
inline uint32_t SwapRB(uint32_t word) { return (word & 0xFF00FF00u) | ((word >> 16) & 0xFFu) | ((word & 0xFFu) << 16); }

inline unsigned EffectiveAlpha(unsigned s, unsigned b, ECanvasAlphaRule rule) {
  return rule == kCanvasAlphaProduct ? Div255(s * b) : (s * b + 1) >> 8;
}

// kFull where b is 255 and the rule makes a = s.
template <ECanvasAlphaRule kRule, bool kFull>
struct SwappedBlend {
  static void Run(uint8* dst, const uint8* src, int count, unsigned b) {
    for (int i = 0; i < count; ++i, dst += 4, src += 4) {
      const uint32_t source = LoadPixel(src);
      const unsigned a = kFull ? source >> 24 : EffectiveAlpha(source >> 24, b, kRule);
      if (a == 0) continue;
      if (a == 255) {
        StorePixel(dst, SwapRB(source));
        continue;
      }
      const uint32_t destination = LoadPixel(dst);
      const unsigned d = Div255((destination >> 24) * (255 - a));
      // The alpha lanes hold 255, so they come out as d + a.
      StorePixel(dst, Pack(Div255Lanes((Spread(destination) | kAlphaLane) * d) +
                           Div255Lanes(SpreadSwappedOpaque(source) * a)));
    }
  }
};

void BlendSwapped(uint8* dst, const uint8* src, int count, unsigned b, ECanvasAlphaRule rule) {
  CanvasBlendByRule<SwappedBlend>(dst, src, count, b, rule);
}

template <bool kFull>
void BlendDividedAs(uint8* dst, const uint8* src, int count, unsigned b) {
  for (int i = 0; i < count; ++i, dst += 4, src += 4) {
    const uint32_t source = LoadPixel(src);
    const unsigned a = kFull ? source >> 24 : Div255((source >> 24) * b);
    if (a == 0) continue;
    const uint32_t destination = LoadPixel(dst);
    const unsigned d = Div255((destination >> 24) * (255 - a));
    // Both products of a lane together stay within 255 x 255, since d + a <= 255.
    StorePixel(dst, Pack(Div255Lanes((Spread(source) | kAlphaLane) * a + (Spread(destination) | kAlphaLane) * d)));
  }
}

void BlendDivided(uint8* dst, const uint8* src, int count, unsigned b) {
  if (b == 255) {
    BlendDividedAs<true>(dst, src, count, b);
  } else {
    BlendDividedAs<false>(dst, src, count, b);
  }
}

void CopyRGB(uint8* dst, const uint8* src, int count, bool swapped) {
  for (int i = 0; i < count; ++i, dst += 4, src += 3) {
    const uint32_t word = uint32_t(src[0]) | (uint32_t(src[1]) << 8) | (uint32_t(src[2]) << 16);
    StorePixel(dst, (swapped ? SwapRB(word) : word) | kAlpha);
  }
}

void Fade(uint8* dst, const uint8* src, int count, float factor) {
  for (int i = 0; i < count; ++i, dst += 4, src += 4) {
    const uint32_t source = LoadPixel(src);
    const unsigned a = static_cast<unsigned>(static_cast<float>(source >> 24) * factor);
    StorePixel(dst, Pack(Div255Lanes((Spread(source) | kAlphaLane) * a)));
  }
}

void Premultiply(uint8* pixels, int count) {
  for (int i = 0; i < count; ++i, pixels += 4) {
    const uint32_t pixel = LoadPixel(pixels);
    const uint32_t alpha = pixel & kAlpha;
    StorePixel(pixels, (Pack(Div255Lanes(Spread(pixel) * (alpha >> 24))) & ~kAlpha) | alpha);
  }
}

// One pixel after another, each byte read and written in the order of the first
// pixel-at-a-time drawing, for a source that lies in the destination itself: there a
// byte written may be read again as the source of a later one.
inline unsigned T(unsigned i, unsigned j) { return Div255(i * j); }

void BlendSwappedInOrder(uint8* dst, const uint8* src, int count, unsigned b, ECanvasAlphaRule rule) {
  for (int i = 0; i < count; ++i, dst += 4, src += 4) {
    const unsigned a = EffectiveAlpha(src[3], b, rule);
    if (a == 0) continue;
    if (a == 255) {
      StorePixel(dst, SwapRB(LoadPixel(src)));
      continue;
    }
    const unsigned d = T(dst[3], 255 - a);
    dst[2] = static_cast<uint8>(T(dst[2], d) + T(src[0], a));
    dst[1] = static_cast<uint8>(T(dst[1], d) + T(src[1], a));
    dst[0] = static_cast<uint8>(T(dst[0], d) + T(src[2], a));
    dst[3] = static_cast<uint8>(d + a);
  }
}

void BlendDividedInOrder(uint8* dst, const uint8* src, int count, unsigned b) {
  for (int i = 0; i < count; ++i, dst += 4, src += 4) {
    const unsigned a = T(src[3], b);
    if (a == 0) continue;
    if (a == 255) {
      for (int c = 0; c < 4; ++c) dst[c] = src[c];
      continue;
    }
    const unsigned d = T(dst[3], 255 - a);
    for (int c = 0; c < 3; ++c) dst[c] = static_cast<uint8>(Div255(src[c] * a + dst[c] * d));
    dst[3] = static_cast<uint8>(d + a);
  }
}

void CopyRGBInOrder(uint8* dst, const uint8* src, int count, bool swapped) {
  for (int i = 0; i < count; ++i, dst += 4, src += 3) {
    if (swapped) {
      CopyRGB(dst, src, 1, true);  // the three bytes read before the word is written
      continue;
    }
    for (int c = 0; c < 3; ++c) dst[c] = src[c];
    dst[3] = 255;
  }
}

}  // namespace

const CanvasSpanOps gCanvasSpansPortable = {BlendSwapped, BlendDivided, CopyRGB, Fade, Premultiply};
const CanvasSpanOps gCanvasSpansInOrder = {BlendSwappedInOrder, BlendDividedInOrder, CopyRGBInOrder, Fade, Premultiply};
