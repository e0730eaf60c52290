#ifndef SRC_CANVAS_CANVASSPANSSIMD_H
#define SRC_CANVAS_CANVASSPANSSIMD_H
// The spans written once for any vector width: `T` gives the vector type and its
// operations (SSE2 in CanvasSpansSSE2.cpp, AVX2 in CanvasSpansAVX2.cpp). A vector holds
// T::kPixels pixels, one in each 32-bit element. For the products a pixel's bytes 0
// and 2 are masked into the two 16-bit lanes of its element, and bytes 1 and 3 shifted
// there, so that no unpacking or packing moves bytes across elements; the factor of a
// pixel stands in both lanes. The last pixels of a span, fewer than a vector, go
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

  // A pixel's bytes 0 and 2 in the two 16-bit lanes of its element, and bytes 1 and 3:
  // the products are taken there, with no unpacking, and put together by Join.
  static V Even(V pixels) { return T::And(pixels, T::Set32(0x00FF00FF)); }
  static V Odd(V pixels) { return T::Shr16By8(pixels); }
  static V Join(V even, V odd) { return T::Or(even, T::Shl16By8(odd)); }
  // The odd lanes with 255 for the alpha byte: its product with a factor is the factor.
  static V OddOpaque(V pixels) { return T::Or(Odd(pixels), T::Set32(0x00FF0000)); }

  // Each byte of `pixels` times the factor of its pixel (in both 16-bit lanes of the
  // pixel's element), over 255.
  static V Scale(V pixels, V factor) {
    return Join(Div255(T::MulLo16(Even(pixels), factor)), Div255(T::MulLo16(Odd(pixels), factor)));
  }
  // A factor in the low 16 bits of each element, in both lanes.
  static V BothLanes(V f) { return T::Or(f, T::Shl32By16(f)); }

  // Source alphas of `s` for which the effective alpha is 0: those up to 254 / b,
  // since a is 0 exactly where s x b < 255, under either rule.
  static V ClearAlphaLimit(unsigned b) { return T::Set8(static_cast<int>(254 / b)); }
  static bool AllClear(V s, V limit) { return T::NoAlphaSet(T::SubSat8u(s, limit)); }

  // Whether a vector of source pixels `s` needs no blending: every alpha 255 at full
  // draw alpha (kFull), where the source is stored as it is or, kSwapped, turned
  // round, or every effective alpha 0, where the destination stays.
  template <bool kFull, bool kSwapped>
  static bool TakenWhole(uint8* dst, V s, V limit) {
    if (!kFull) return AllClear(s, limit);
    if (T::AlphaBitsMixed(s)) return false;  // the common case of a blend, one test
    if (T::AllAlphaSet(s)) T::Store(dst, kSwapped ? T::SwapRB(s) : s);
    return true;
  }

  // The blends' products: floor(c x f / 255) for bytes c and f is the high half of
  // c x (257 f + 1), one multiplication with a factor formed once per pixel (exact for
  // every pair; the canvas tests go through all of them). Only f = 255 has no such
  // factor in 16 bits: 257 f + 1 wraps to 0 there, whose products are 0 and not c.
  static V Twice(V f) { return T::Or(f, T::Shl16By8(f)); }  // 257 f
  static V FactorOf257(V f257) { return T::Add16(f257, T::Set16(1)); }

  // 257 a for the effective alpha a, in both 16-bit lanes of each pixel; kFull where b
  // is 255 and the rule makes a = s (T[s][255] = s).
  template <ECanvasAlphaRule kRule, bool kFull>
  static V EffectiveAlpha257(V s, V b257) {
    if (kFull) return T::AlphaTwice(s);
    const V alpha = T::AlphaBoth(s);
    if (kRule == kCanvasAlphaProduct) return Twice(T::MulHi16(alpha, FactorOf257(b257)));  // b < 255 here
    return Twice(T::Shr16By8(T::Add16(T::MulLo16(alpha, T::Shr16By8(b257)), T::Set16(1))));
  }

  template <ECanvasAlphaRule kRule, bool kFull>
  struct SwappedBlend {
    static void Run(uint8* dst, const uint8* src, int count, unsigned b) {
      const V limit = ClearAlphaLimit(b);
      const V b257 = T::Set16(static_cast<int>(257 * b));
      int i = 0;
      for (; i + T::kPixels <= count; i += T::kPixels) {
        const V s = T::Load(src + 4 * i);
        // Only the product rule reaches a = 255, and only at b = 255 and s = 255.
        if (TakenWhole<kFull, true>(dst + 4 * i, s, limit)) continue;
        const V d = T::Load(dst + 4 * i);
        const V a257 = EffectiveAlpha257<kRule, kFull>(s, b257);
        // dd = T[dstA][255 - a]: the factor of 255 - a is 65,536 - 257 a, in 16 bits
        // 0 - 257 a (and 0 where a is 0, but those pixels stay as they are).
        const V fd = FactorOf257(Twice(T::MulHi16(T::AlphaBoth(d), T::Sub16(T::Zero(), a257))));
        const V fa = FactorOf257(a257);
        // Two products of each byte summed: at most dd + a, within a byte. The alpha
        // lanes take 255 x dd and 255 x a, which come out as dd + a.
        const V even = T::Add16(T::MulHi16(Even(d), fd), T::MulHi16(T::EvenSwapped(s), fa));
        const V odd = T::Add16(T::MulHi16(OddOpaque(d), fd), T::MulHi16(OddOpaque(s), fa));
        V blended = T::Select(T::CmpEq16(a257, T::Zero()), d, Join(even, odd));
        // a = 255, which has no factor, is the source itself.
        if (kFull) blended = T::Select(T::CmpEq16(a257, T::Set16(-1)), T::SwapRB(s), blended);
        T::Store(dst + 4 * i, blended);
      }
      gCanvasSpansPortable.blendSwapped(dst + 4 * i, src + 4 * i, count - i, b, kRule);
    }
  };

  static void BlendSwapped(uint8* dst, const uint8* src, int count, unsigned b, ECanvasAlphaRule rule) {
    if (b != 0) CanvasBlendByRule<SwappedBlend>(dst, src, count, b, rule);  // b = 0 makes every a 0
  }

  template <bool kFull>
  static void BlendDividedAs(uint8* dst, const uint8* src, int count, unsigned b) {
    const V limit = ClearAlphaLimit(b);
    const V b257 = T::Set16(static_cast<int>(257 * b));
    int i = 0;
    for (; i + T::kPixels <= count; i += T::kPixels) {
      const V s = T::Load(src + 4 * i);
      if (TakenWhole<kFull, false>(dst + 4 * i, s, limit)) continue;
      const V d = T::Load(dst + 4 * i);
      const V a = kFull ? T::AlphaBoth(s) : T::MulHi16(T::AlphaBoth(s), FactorOf257(b257));
      const V dd = Div255(T::MulLo16(T::AlphaBoth(d), T::Sub16(T::Set16(255), a)));
      // One division of the two products' sum, which stays within 255 x 255 as a + dd
      // does within 255; the alpha lanes give (255 a + 255 dd) / 255.
      const V even = Div255(T::Add16(T::MulLo16(Even(s), a), T::MulLo16(Even(d), dd)));
      const V odd = Div255(T::Add16(T::MulLo16(OddOpaque(s), a), T::MulLo16(OddOpaque(d), dd)));
      T::Store(dst + 4 * i, T::Select(T::CmpEq16(a, T::Zero()), d, Join(even, odd)));
    }
    gCanvasSpansPortable.blendDivided(dst + 4 * i, src + 4 * i, count - i, b);
  }

  static void BlendDivided(uint8* dst, const uint8* src, int count, unsigned b) {
    if (b == 0) return;
    if (b == 255) {
      BlendDividedAs<true>(dst, src, count, b);
    } else {
      BlendDividedAs<false>(dst, src, count, b);
    }
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
      T::Store(dst + 4 * i, Scale(T::Or(s, alphaBytes), BothLanes(a)));
    }
    gCanvasSpansPortable.fade(dst + 4 * i, src + 4 * i, count - i, factor);
  }

  static void Premultiply(uint8* pixels, int count) {
    const V alphaBytes = T::Set32(static_cast<int>(0xFF000000u));
    int i = 0;
    for (; i + T::kPixels <= count; i += T::kPixels) {
      const V p = T::Load(pixels + 4 * i);
      const V scaled = Scale(p, T::AlphaBoth(p));
      T::Store(pixels + 4 * i, T::Select(alphaBytes, p, scaled));
    }
    gCanvasSpansPortable.premultiply(pixels + 4 * i, count - i);
  }

  static const CanvasSpanOps kOps;
};

template <class T>
const CanvasSpanOps CanvasSimdSpans<T>::kOps = {BlendSwapped, BlendDivided, CopyRGB, Fade, Premultiply};

#endif
