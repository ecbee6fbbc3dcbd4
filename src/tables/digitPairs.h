// The digits of two fields at once, by the vector instructions that every x86-64 processor has. Private to dbfNumber.
#pragma once

#include <optional>

#if defined(__SSE2__) || defined(_M_X64)
#define VANTRELIX_DIGIT_PAIRS 1
#include <array>
#include <cstdint>
#include <emmintrin.h>
#endif

namespace vantrelix::dbf {

#ifdef VANTRELIX_DIGIT_PAIRS

// A number field of one shape: blanks, a minus sign or none, digits up to the point, the field's decimals; no more than
// eight digits and signs in all. What is read of fields of any other shape is of no meaning, and areUsual() tells so.
class DigitPairs {
 public:
  // Nothing where fields of that width are not read so.
  static std::optional<DigitPairs> of(int width, int decimals) {
    constexpr int kMostDecimals = 7;
    const int point = decimals > 0 ? 1 : 0;
    const int head = width - 8 - point;
    if (decimals < 0 || decimals > kMostDecimals || head < 0 || head > 8) return std::nullopt;
    return DigitPairs(head, point, decimals);
  }

  // The numbers of the fields that begin at `a` and `b`.
  void read(const unsigned char* a, const unsigned char* b, double* two) {
    const __m128i tail = eightOfEach(a + tail_, b + tail_);
    refuse(_mm_and_si128(_mm_xor_si128(tail, _mm_set1_epi8('.')), point_));
    refuse(_mm_and_si128(_mm_xor_si128(eightOfEach(a, b), _mm_set1_epi8(' ')), blanks_));
    const __m128i bytes =
        _mm_or_si128(_mm_and_si128(eightOfEach(a + head_, b + head_), whole_), _mm_and_si128(tail, decimals_));
    const __m128i values = _mm_sub_epi8(bytes, _mm_set1_epi8('0'));
    const __m128i digits = _mm_cmpeq_epi8(_mm_min_epu8(values, _mm_set1_epi8(9)), values);
    const __m128i minus = _mm_cmpeq_epi8(bytes, _mm_set1_epi8('-'));
    const __m128i begun = _mm_or_si128(digits, minus);
    const __m128i known = _mm_or_si128(begun, _mm_cmpeq_epi8(bytes, _mm_set1_epi8(' ')));
    refuse(_mm_xor_si128(known, _mm_set1_epi8(-1)));
    // Only a digit stands behind a digit or a sign, and in the places that every number has.
    refuse(_mm_andnot_si128(digits, _mm_or_si128(_mm_slli_epi64(begun, 8), always_)));
    const __m128d numbers = _mm_cvtepi32_pd(signedBy(minus, joined(_mm_and_si128(values, digits))));
    _mm_storeu_pd(two, _mm_div_pd(numbers, _mm_set1_pd(unit_)));
  }

  // Whether all fields read had that shape.
  bool areUsual() const { return _mm_movemask_epi8(_mm_cmpeq_epi8(refused_, _mm_setzero_si128())) == 0xFFFF; }

 private:
  DigitPairs(int head, int point, int decimals) : head_(head), tail_(head + point) {
    constexpr std::array<double, 8> powers = {1e0, 1e1, 1e2, 1e3, 1e4, 1e5, 1e6, 1e7};
    unit_ = powers[static_cast<std::size_t>(decimals)];
    blanks_ = places(0, head);
    whole_ = places(0, 8 - decimals);
    decimals_ = places(8 - decimals, 8);
    point_ = places(8 - decimals - point, 8 - decimals);
    always_ = places(decimals > 0 ? 8 - decimals : 7, 8);
  }

  // All bits of the bytes from one place to before another, in each of the two eights.
  static __m128i places(int from, int to) {
    const auto before = [](int place) { return place == 0 ? 0 : ~std::uint64_t{0} >> (64 - 8 * place); };
    return _mm_set1_epi64x(static_cast<long long>(before(to) & ~before(from)));
  }

  static __m128i eightOfEach(const unsigned char* a, const unsigned char* b) {
    return _mm_unpacklo_epi64(_mm_loadl_epi64(reinterpret_cast<const __m128i*>(a)),
                              _mm_loadl_epi64(reinterpret_cast<const __m128i*>(b)));
  }

  // Eight values from 0 to 9 in each half as the number that they write, in the lowest two of four integers.
  static __m128i joined(__m128i values) {
    const __m128i first = _mm_and_si128(values, _mm_set1_epi16(0xFF));
    const __m128i pairs = _mm_add_epi16(_mm_mullo_epi16(first, _mm_set1_epi16(10)), _mm_srli_epi16(values, 8));
    const __m128i fours = _mm_madd_epi16(pairs, _mm_set1_epi32(1 << 16 | 100));
    const __m128i eights = _mm_add_epi32(_mm_mul_epu32(fours, _mm_set1_epi32(10000)), _mm_srli_epi64(fours, 32));
    return _mm_shuffle_epi32(eights, _MM_SHUFFLE(3, 1, 2, 0));
  }

  // A negative nought is nought.
  static __m128i signedBy(__m128i minus, __m128i numbers) {
    const __m128i found = _mm_shuffle_epi32(_mm_sad_epu8(minus, _mm_setzero_si128()), _MM_SHUFFLE(3, 1, 2, 0));
    const __m128i negative = _mm_cmpgt_epi32(found, _mm_setzero_si128());
    return _mm_sub_epi32(_mm_xor_si128(numbers, negative), negative);
  }

  void refuse(__m128i bytes) { refused_ = _mm_or_si128(refused_, bytes); }

  int head_;  // bytes that the field has more than eight digits and a point
  int tail_;
  double unit_ = 1;
  __m128i blanks_, whole_, decimals_, point_, always_;
  __m128i refused_ = _mm_setzero_si128();
};

#else

// No processor of this kind reads two at once.
class DigitPairs {
 public:
  static std::optional<DigitPairs> of(int, int) { return std::nullopt; }
  void read(const unsigned char*, const unsigned char*, double*) {}
  bool areUsual() const { return false; }
};

#endif

}  // namespace vantrelix::dbf
