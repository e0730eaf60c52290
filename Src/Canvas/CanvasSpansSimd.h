#ifndef SRC_CANVAS_CANVASSPANSSIMD_H
#define SRC_CANVAS_CANVASSPANSSIMD_H
// The spans written once for any vector width: `T` gives the vector type and its
// operations (SSE2 in CanvasSpansSSE2.cpp, AVX2 in CanvasSpansAVX2.cpp). A vector holds
// T::kPixels pixels, one in each 32-bit element; for the products their bytes are
// widened to 16-bit lanes, the first half of the pixels by UnpackLo8 and the other by
// UnpackHi8 (in the same order within each 128-bit block, which is how AVX2 works),
// and narrowed back by PackUS16. The last pixels of a span, fewer than a vector, go
// through the portable build.
//
// Only templates here, instantiated with traits that each file keeps to itself, so no
// function compiled for AVX2 can stand in for one that a machine without it runs.
#include "Canvas/CanvasSpans.h"

template <class T>
struct CanvasSimdSpans {
  typedef typename T::V V;

  // floor(x / 255) in every 16-bit lane (exact for all 16-bit x).
  static V Div255(V x) { return T::Shr16By7(T::MulHi16(x, T::Set16(0x8081))); }

  // A factor held in the low 16 bits of each pixel's element, in all four 16-bit
  // lanes of that pixel: for the pixels UnpackLo8 widens, and for the others.
  static V FactorLo(V f) {
    const V both = T::Or(f, T::Shl32By16(f));
    return T::UnpackLo32(both, both);
  }
  static V FactorHi(V f) {
    const V both = T::Or(f, T::Shl32By16(f));
    return T::UnpackHi32(both, both);
  }

  // Each byte of `pixels` times the factor of its pixel, over 255, and packed again.
  static V Scale(V pixels, V factor) {
    const V zero = T::Zero();
    return T::PackUS16(Div255(T::MulLo16(T::UnpackLo8(pixels, zero), FactorLo(factor))),
                       Div255(T::MulLo16(T::UnpackHi8(pixels, zero), FactorHi(factor))));
  }

  // Source alphas of `s` for which the effective alpha is 0: those up to 254 / b,
  // since a is 0 exactly where s x b < 255, under either rule.
  static V ClearAlphaLimit(unsigned b) { return T::Set8(static_cast<int>(254 / b)); }
  static bool AllClear(V s, V limit) {
    return (T::MoveMask8(T::CmpEq8(T::Max8u(s, limit), limit)) & T::kAlphaBits) == T::kAlphaBits;
  }
  static bool AllOpaque(V s) { return (T::MoveMask8(T::CmpEq8(s, T::Set8(-1))) & T::kAlphaBits) == T::kAlphaBits; }

  template <ECanvasAlphaRule kRule>
  static V EffectiveAlpha(V s, V b) {
    const V product = T::MulLo16(T::Shr32By24(s), b);
    if (kRule == kCanvasAlphaProduct) return Div255(product);
    return T::Shr16By8(T::Add16(product, T::Set32(1)));
  }

  template <ECanvasAlphaRule kRule>
  static void BlendSwappedAs(uint8* dst, const uint8* src, int count, unsigned b) {
    const V limit = ClearAlphaLimit(b);
    const V factor = T::Set32(static_cast<int>(b));
    const V alphaBytes = T::Set32(static_cast<int>(0xFF000000u));
    // Only this rule reaches a = 255, and only at b = 255 and s = 255.
    const bool opaqueCopies = kRule == kCanvasAlphaProduct && b == 255;
    int i = 0;
    for (; i + T::kPixels <= count; i += T::kPixels) {
      const V s = T::Load(src + 4 * i);
      if (AllClear(s, limit)) continue;
      if (opaqueCopies && AllOpaque(s)) {
        T::Store(dst + 4 * i, T::SwapRB(s));
        continue;
      }
      const V d = T::Load(dst + 4 * i);
      const V a = EffectiveAlpha<kRule>(s, factor);
      const V dd = Div255(T::MulLo16(T::Shr32By24(d), T::Sub16(T::Set32(255), a)));
      // With 255 in the alpha bytes the alpha comes out as T[255][dd] + T[255][a] = dd + a.
      const V blended = T::Add8(Scale(T::Or(d, alphaBytes), dd), Scale(T::Or(T::SwapRB(s), alphaBytes), a));
      T::Store(dst + 4 * i, T::Select(T::CmpEq32(a, T::Zero()), d, blended));
    }
    gCanvasSpansPortable.blendSwapped(dst + 4 * i, src + 4 * i, count - i, b, kRule);
  }

  static void BlendSwapped(uint8* dst, const uint8* src, int count, unsigned b, ECanvasAlphaRule rule) {
    if (b == 0) return;  // every a is 0
    if (rule == kCanvasAlphaProduct) {
      BlendSwappedAs<kCanvasAlphaProduct>(dst, src, count, b);
    } else {
      BlendSwappedAs<kCanvasAlphaShifted>(dst, src, count, b);
    }
  }

  static void BlendDivided(uint8* dst, const uint8* src, int count, unsigned b) {
    if (b == 0) return;
    const V limit = ClearAlphaLimit(b);
    const V factor = T::Set32(static_cast<int>(b));
    const V alphaBytes = T::Set32(static_cast<int>(0xFF000000u));
    const V zero = T::Zero();
    int i = 0;
    for (; i + T::kPixels <= count; i += T::kPixels) {
      const V s = T::Load(src + 4 * i);
      if (AllClear(s, limit)) continue;
      if (b == 255 && AllOpaque(s)) {
        T::Store(dst + 4 * i, s);
        continue;
      }
      const V d = T::Load(dst + 4 * i);
      const V a = EffectiveAlpha<kCanvasAlphaProduct>(s, factor);
      const V dd = Div255(T::MulLo16(T::Shr32By24(d), T::Sub16(T::Set32(255), a)));
      // One division of the two products' sum, which stays within 255 x 255 as a + dd
      // does within 255; the alpha bytes at 255 give (255 a + 255 dd) / 255.
      const V s1 = T::Or(s, alphaBytes);
      const V d1 = T::Or(d, alphaBytes);
      const V lo = Div255(
          T::Add16(T::MulLo16(T::UnpackLo8(s1, zero), FactorLo(a)), T::MulLo16(T::UnpackLo8(d1, zero), FactorLo(dd))));
      const V hi = Div255(
          T::Add16(T::MulLo16(T::UnpackHi8(s1, zero), FactorHi(a)), T::MulLo16(T::UnpackHi8(d1, zero), FactorHi(dd))));
      T::Store(dst + 4 * i, T::Select(T::CmpEq32(a, zero), d, T::PackUS16(lo, hi)));
    }
    gCanvasSpansPortable.blendDivided(dst + 4 * i, src + 4 * i, count - i, b);
  }

  static void CopyRGB(uint8* dst, const uint8* src, int count, bool swapped) {
    const V alphaBytes = T::Set32(static_cast<int>(0xFF000000u));
    int i = 0;
    // ExpandRGB reads a few bytes past its pixels: two pixels more must follow.
    for (; i + T::kPixels + 2 <= count; i += T::kPixels) {
      T::Store(dst + 4 * i, T::Or(T::ExpandRGB(src + 3 * i, swapped), alphaBytes));
    }
    gCanvasSpansPortable.copyRGB(dst + 4 * i, src + 3 * i, count - i, swapped);
  }

  static void Fade(uint8* dst, const uint8* src, int count, float factor) {
    const typename T::F scale = T::Set1F(factor);
    const V alphaBytes = T::Set32(static_cast<int>(0xFF000000u));
    int i = 0;
    for (; i + T::kPixels <= count; i += T::kPixels) {
      const V s = T::Load(src + 4 * i);
      // The same single-precision product and truncation as one pixel at a time.
      const V a = T::TruncToInt(T::MulF(T::ToFloat(T::Shr32By24(s)), scale));
      T::Store(dst + 4 * i, Scale(T::Or(s, alphaBytes), a));
    }
    gCanvasSpansPortable.fade(dst + 4 * i, src + 4 * i, count - i, factor);
  }

  static void Premultiply(uint8* pixels, int count) {
    const V alphaBytes = T::Set32(static_cast<int>(0xFF000000u));
    int i = 0;
    for (; i + T::kPixels <= count; i += T::kPixels) {
      const V p = T::Load(pixels + 4 * i);
      const V scaled = Scale(p, T::Shr32By24(p));
      T::Store(pixels + 4 * i, T::Select(alphaBytes, p, scaled));
    }
    gCanvasSpansPortable.premultiply(pixels + 4 * i, count - i);
  }

  static const CanvasSpanOps kOps;
};

template <class T>
const CanvasSpanOps CanvasSimdSpans<T>::kOps = {BlendSwapped, BlendDivided, CopyRGB, Fade, Premultiply};

#endif
