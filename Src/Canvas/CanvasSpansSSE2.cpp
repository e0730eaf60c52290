// The spans with SSE2, which every x86-64 has: four pixels a vector.
#include "Canvas/CanvasSpans.h"

#if defined(__SSE2__) && !defined(ZV_CANVAS_PORTABLE_ONLY)
#include <emmintrin.h>

#include "Canvas/CanvasSpansSimd.h"

namespace {

struct Sse2 {
  typedef __m128i V;
  typedef __m128 F;
  static const int kPixels = 4;

  static V Load(const uint8* p) { return _mm_loadu_si128(reinterpret_cast<const __m128i*>(p)); }
  static void Store(uint8* p, V v) { _mm_storeu_si128(reinterpret_cast<__m128i*>(p), v); }
  static V Zero() { return _mm_setzero_si128(); }
  static V Set8(int v) { return _mm_set1_epi8(static_cast<char>(v)); }
  static V Set16(int v) { return _mm_set1_epi16(static_cast<short>(v)); }
  static V Set32(int v) { return _mm_set1_epi32(v); }
  static V And(V a, V b) { return _mm_and_si128(a, b); }
  static V Or(V a, V b) { return _mm_or_si128(a, b); }
  static V Add16(V a, V b) { return _mm_add_epi16(a, b); }
  static V Sub16(V a, V b) { return _mm_sub_epi16(a, b); }
  static V SubSat8u(V a, V b) { return _mm_subs_epu8(a, b); }
  static V MulLo16(V a, V b) { return _mm_mullo_epi16(a, b); }
  static V MulHi16(V a, V b) { return _mm_mulhi_epu16(a, b); }
  static V Shr16By7(V v) { return _mm_srli_epi16(v, 7); }
  static V Shr16By8(V v) { return _mm_srli_epi16(v, 8); }
  static V Shl16By8(V v) { return _mm_slli_epi16(v, 8); }
  static V Shr32By24(V v) { return _mm_srli_epi32(v, 24); }
  static V Shl32By16(V v) { return _mm_slli_epi32(v, 16); }
  static V CmpEq16(V a, V b) { return _mm_cmpeq_epi16(a, b); }
  // Whether every pixel's alpha byte is 255, or every one 0 (bits 3, 7, 11 and 15 of
  // the byte mask are the alpha bytes').
  static bool AllAlphaSet(V v) { return (_mm_movemask_epi8(_mm_cmpeq_epi8(v, Set8(-1))) & 0x8888) == 0x8888; }
  static bool NoAlphaSet(V v) { return (_mm_movemask_epi8(_mm_cmpeq_epi8(v, Zero())) & 0x8888) == 0x8888; }
  // Whether the alpha bytes hold some bits set and some clear: neither of the above.
  static bool AlphaBitsMixed(V v) { return !AllAlphaSet(v) && !NoAlphaSet(v); }
  // Bytes of `ifSet` where `mask` is set, of `ifClear` elsewhere.
  static V Select(V mask, V ifSet, V ifClear) { return Or(And(mask, ifSet), _mm_andnot_si128(mask, ifClear)); }
  // Bytes 0 and 2 of every pixel change places.
  static V SwapRB(V v) {
    const V turned = And(Or(_mm_srli_epi32(v, 16), _mm_slli_epi32(v, 16)), Set32(0x00FF00FF));
    return Or(turned, And(v, Set32(static_cast<int>(0xFF00FF00u))));
  }
  // Each pixel's alpha byte in both 16-bit lanes of its element.
  static V AlphaBoth(V v) {
    const V alpha = Shr32By24(v);
    return Or(alpha, Shl32By16(alpha));
  }
  // Each pixel's alpha byte in both bytes of both 16-bit lanes: 257 x alpha in each.
  static V AlphaTwice(V v) {
    const V both = AlphaBoth(v);
    return Or(both, _mm_slli_epi16(both, 8));
  }
  // Each pixel's bytes 2 and 0, in that order, in the 16-bit lanes of its element.
  static V EvenSwapped(V v) {
    return Or(And(_mm_srli_epi32(v, 16), Set32(0xFF)), And(Shl32By16(v), Set32(0x00FF0000)));
  }
  // Four R, G, B pixels (reading 16 bytes) as words with a zero alpha byte: pixel k's
  // three bytes move up by k places.
  static V ExpandRGB(const uint8* src, bool swapped) {
    const V v = Load(src);
    const V rgb = _mm_set_epi32(0, 0, 0, 0x00FFFFFF);
    V out = And(v, rgb);
    out = Or(out, And(_mm_slli_si128(v, 1), _mm_slli_si128(rgb, 4)));
    out = Or(out, And(_mm_slli_si128(v, 2), _mm_slli_si128(rgb, 8)));
    out = Or(out, And(_mm_slli_si128(v, 3), _mm_slli_si128(rgb, 12)));
    return swapped ? SwapRB(out) : out;
  }
  static F Set1F(float v) { return _mm_set1_ps(v); }
  static F ToFloat(V v) { return _mm_cvtepi32_ps(v); }
  static F MulF(F a, F b) { return _mm_mul_ps(a, b); }
  static V TruncToInt(F v) { return _mm_cvttps_epi32(v); }
};

}  // namespace

const CanvasSpanOps* const gCanvasSpansSSE2 = &CanvasSimdSpans<Sse2>::kOps;
#else
const CanvasSpanOps* const gCanvasSpansSSE2 = 0;
#endif
