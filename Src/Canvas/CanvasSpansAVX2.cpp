// The spans with AVX2, eight pixels a vector. This file alone is compiled for AVX2
// (see Src/CMakeLists.txt) and is only called where the processor has it.
#include "Canvas/CanvasSpans.h"

#if defined(__AVX2__) && !defined(ZV_CANVAS_PORTABLE_ONLY)
#include <immintrin.h>

#include "Canvas/CanvasSpansSimd.h"

namespace {

struct Avx2 {
  typedef __m256i V;
  typedef __m256 F;
  static const int kPixels = 8;

  static V Load(const uint8* p) { return _mm256_loadu_si256(reinterpret_cast<const __m256i*>(p)); }
  static void Store(uint8* p, V v) { _mm256_storeu_si256(reinterpret_cast<__m256i*>(p), v); }
  static V Zero() { return _mm256_setzero_si256(); }
  static V Set8(int v) { return _mm256_set1_epi8(static_cast<char>(v)); }
  static V Set16(int v) { return _mm256_set1_epi16(static_cast<short>(v)); }
  static V Set32(int v) { return _mm256_set1_epi32(v); }
  static V And(V a, V b) { return _mm256_and_si256(a, b); }
  static V Or(V a, V b) { return _mm256_or_si256(a, b); }
  static V Add16(V a, V b) { return _mm256_add_epi16(a, b); }
  static V Sub16(V a, V b) { return _mm256_sub_epi16(a, b); }
  static V SubSat8u(V a, V b) { return _mm256_subs_epu8(a, b); }
  static V MulLo16(V a, V b) { return _mm256_mullo_epi16(a, b); }
  static V MulHi16(V a, V b) { return _mm256_mulhi_epu16(a, b); }
  static V Shr16By7(V v) { return _mm256_srli_epi16(v, 7); }
  static V Shr16By8(V v) { return _mm256_srli_epi16(v, 8); }
  static V Shl16By8(V v) { return _mm256_slli_epi16(v, 8); }
  static V Shr32By24(V v) { return _mm256_srli_epi32(v, 24); }
  static V Shl32By16(V v) { return _mm256_slli_epi32(v, 16); }
  static V CmpEq16(V a, V b) { return _mm256_cmpeq_epi16(a, b); }
  // Whether every pixel's alpha byte is 255, or every one 0.
  static bool AllAlphaSet(V v) { return _mm256_testc_si256(v, Set32(static_cast<int>(0xFF000000u))); }
  static bool NoAlphaSet(V v) { return _mm256_testz_si256(v, Set32(static_cast<int>(0xFF000000u))); }
  // Whether the alpha bytes hold some bits set and some clear: neither of the above.
  static bool AlphaBitsMixed(V v) { return _mm256_testnzc_si256(v, Set32(static_cast<int>(0xFF000000u))); }
  // Bytes of `ifSet` where `mask` is set, of `ifClear` elsewhere.
  static V Select(V mask, V ifSet, V ifClear) { return _mm256_blendv_epi8(ifClear, ifSet, mask); }
  // Every pixel's bytes taken again by the pattern `bytes` (its byte k names the pixel's
  // byte that goes to place k; 0x80 puts a zero there).
  static V EachPixel(V v, unsigned bytes) {
    const V pixelOffsets =
        _mm256_setr_epi32(0, 0x04040404, 0x08080808, 0x0C0C0C0C, 0, 0x04040404, 0x08080808, 0x0C0C0C0C);
    return _mm256_shuffle_epi8(v, _mm256_add_epi8(Set32(static_cast<int>(bytes)), pixelOffsets));
  }
  // Bytes 0 and 2 of every pixel change places.
  static V SwapRB(V v) { return EachPixel(v, 0x03000102u); }
  // Each pixel's alpha byte in both 16-bit lanes of its element.
  static V AlphaBoth(V v) { return EachPixel(v, 0x80038003u); }
  // Each pixel's alpha byte in both bytes of both 16-bit lanes: 257 x alpha in each.
  static V AlphaTwice(V v) { return EachPixel(v, 0x03030303u); }
  // Each pixel's bytes 2 and 0, in that order, in the 16-bit lanes of its element.
  static V EvenSwapped(V v) { return EachPixel(v, 0x80008002u); }
  // Eight R, G, B pixels as words with a zero alpha byte: four from each of two
  // 16-byte reads (the second ends four bytes past the pixels), spread by a shuffle.
  static V ExpandRGB(const uint8* src, bool swapped) {
    const __m128i first = _mm_loadu_si128(reinterpret_cast<const __m128i*>(src));
    const __m128i second = _mm_loadu_si128(reinterpret_cast<const __m128i*>(src + 12));
    const V v = _mm256_inserti128_si256(_mm256_castsi128_si256(first), second, 1);
    const V spread = _mm256_setr_epi8(0, 1, 2, -1, 3, 4, 5, -1, 6, 7, 8, -1, 9, 10, 11, -1, 0, 1, 2, -1, 3, 4, 5, -1, 6,
                                      7, 8, -1, 9, 10, 11, -1);
    const V turned = _mm256_setr_epi8(2, 1, 0, -1, 5, 4, 3, -1, 8, 7, 6, -1, 11, 10, 9, -1, 2, 1, 0, -1, 5, 4, 3, -1, 8,
                                      7, 6, -1, 11, 10, 9, -1);
    return _mm256_shuffle_epi8(v, swapped ? turned : spread);
  }
  static F Set1F(float v) { return _mm256_set1_ps(v); }
  static F ToFloat(V v) { return _mm256_cvtepi32_ps(v); }
  static F MulF(F a, F b) { return _mm256_mul_ps(a, b); }
  static V TruncToInt(F v) { return _mm256_cvttps_epi32(v); }
};

}  // namespace

const CanvasSpanOps* const gCanvasSpansAVX2 = &CanvasSimdSpans<Avx2>::kOps;
#else
const CanvasSpanOps* const gCanvasSpansAVX2 = 0;
#endif
