// The digits of four fields at once, for processors that have the vector instructions AVX2. Private to dbfNumber.
#pragma once

#include <cstddef>
#include <optional>

// The compiler for the other system does not keep such vectors where their instructions need them.
#if defined(__GNUC__) && defined(__x86_64__) && !defined(_WIN32)
#define VANTRELIX_DIGIT_FOURS 1
#include <array>
#include <cstdint>
#include <immintrin.h>
#endif

namespace vantrelix::dbf {

#ifdef VANTRELIX_DIGIT_FOURS

// Number fields of the shape that DigitPairs tells, in records that stand behind one another.
class DigitFours {
 public:
  static constexpr std::size_t kFewest = 4;

  // Nothing where fields of that width are not read so, or not by this processor.
  static std::optional<DigitFours> of(int width, int decimals) {
    static const bool hasInstructions = __builtin_cpu_supports("avx2") != 0;
    const int point = decimals > 0 ? 1 : 0;
    if (!hasInstructions || decimals < 0 || decimals > 7 || width < 8 + point || width > 16) return std::nullopt;
    return DigitFours(static_cast<std::size_t>(width), static_cast<std::size_t>(decimals));
  }

  // The numbers of `count` fields, kFewest at least, of which each begins `length` bytes behind the one before it.
  // False, and they are of no meaning, where one of them has another shape.
  __attribute__((target("avx2"))) bool read(const unsigned char* field, std::size_t length, std::size_t count,
                                            double* numbers) const {
    const __m256i order = _mm256_broadcastsi128_si256(_mm_loadu_si128(reinterpret_cast<const __m128i*>(order_.data())));
    const __m256i frame = _mm256_set1_epi64x(static_cast<long long>(frame_));
    const __m256i always = _mm256_set1_epi64x(static_cast<long long>(always_));
    const __m256d unit = _mm256_set1_pd(unit_);
    __m256i refused = _mm256_setzero_si256();
    for (std::size_t row = 0; row < count;) {
      const unsigned char* const at = field + row * length;
      const __m256i front = _mm256_shuffle_epi8(bothEnds(at, at + length), order);
      const __m256i back = _mm256_shuffle_epi8(bothEnds(at + 2 * length, at + 3 * length), order);
      refused = _mm256_or_si256(refused, _mm256_xor_si256(_mm256_unpackhi_epi64(front, back), frame));
      const __m256i bytes = _mm256_unpacklo_epi64(front, back);
      const __m256i values = _mm256_sub_epi8(bytes, _mm256_set1_epi8('0'));
      const __m256i digits = _mm256_cmpeq_epi8(_mm256_min_epu8(values, _mm256_set1_epi8(9)), values);
      const __m256i minus = _mm256_cmpeq_epi8(bytes, _mm256_set1_epi8('-'));
      const __m256i begun = _mm256_or_si256(digits, minus);
      const __m256i known = _mm256_or_si256(begun, _mm256_cmpeq_epi8(bytes, _mm256_set1_epi8(' ')));
      refused = _mm256_or_si256(refused, _mm256_xor_si256(known, _mm256_set1_epi8(-1)));
      // Only a digit stands behind a digit or a sign, and in the places that every number has.
      const __m256i settled = _mm256_or_si256(_mm256_slli_epi64(begun, 8), always);
      refused = _mm256_or_si256(refused, _mm256_andnot_si256(digits, settled));
      const __m128i whole = signedBy(minus, joined(_mm256_and_si256(values, digits)));
      _mm256_storeu_pd(numbers + row, _mm256_div_pd(_mm256_cvtepi32_pd(whole), unit));
      row += kFewest;
      // What is left of them once more with those before.
      if (row < count && row + kFewest > count) row = count - kFewest;
    }
    return _mm256_testz_si256(refused, refused) != 0;
  }

 private:
  DigitFours(std::size_t width, std::size_t decimals) : last_(width - 8) {
    constexpr std::array<double, 8> powers = {1e0, 1e1, 1e2, 1e3, 1e4, 1e5, 1e6, 1e7};
    const std::size_t point = decimals > 0 ? 1 : 0;
    const std::size_t head = width - 8 - point;
    unit_ = powers[decimals];
    always_ = ~std::uint64_t{0} << 8 * (decimals > 0 ? 8 - decimals : 7);
    order_.fill(kNoByte);
    const std::size_t pointPlace = point > 0 ? width - decimals - 1 : width;
    for (std::size_t place = 0, digit = 0, other = 0; place < width; ++place) {
      const bool isDigit = place >= head && place != pointPlace;
      order_[isDigit ? digit++ : 8 + other] = placeOf(place, width);
      if (!isDigit) frame_ |= std::uint64_t{place < head ? 0x20U : 0x2EU} << 8 * other++;
    }
  }

  static constexpr std::uint8_t kNoByte = 0x80;

  // Where a byte of the field stands behind bothEnds.
  static std::uint8_t placeOf(std::size_t place, std::size_t width) {
    return static_cast<std::uint8_t>(place < 8 ? place : place + 16 - width);
  }

  // The first and the last eight bytes of two fields: all that they have.
  __attribute__((target("avx2"))) __m256i bothEnds(const unsigned char* a, const unsigned char* b) const {
    return _mm256_set_epi64x(eight(b + last_), eight(b), eight(a + last_), eight(a));
  }

  static long long eight(const unsigned char* at) {
    long long bytes = 0;
    __builtin_memcpy(&bytes, at, sizeof bytes);
    return bytes;
  }

  // Eight values from 0 to 9 in each quarter as the number that they write, in the order of the records.
  static __attribute__((target("avx2"))) __m128i joined(__m256i values) {
    const __m256i pairs = _mm256_maddubs_epi16(values, _mm256_set1_epi16(1 << 8 | 10));
    const __m256i fours = _mm256_madd_epi16(pairs, _mm256_set1_epi32(1 << 16 | 100));
    const __m256i eights = _mm256_madd_epi16(_mm256_packus_epi32(fours, fours), _mm256_set1_epi32(1 << 16 | 10000));
    return _mm256_castsi256_si128(_mm256_permutevar8x32_epi32(eights, _mm256_setr_epi32(0, 4, 1, 5, 0, 0, 0, 0)));
  }

  // A negative nought is nought.
  static __attribute__((target("avx2"))) __m128i signedBy(__m256i minus, __m128i numbers) {
    const __m256i none = _mm256_cmpeq_epi64(minus, _mm256_setzero_si256());
    const __m256i inOrder = _mm256_permutevar8x32_epi32(none, _mm256_setr_epi32(0, 4, 2, 6, 0, 0, 0, 0));
    const __m128i negative = _mm_xor_si128(_mm256_castsi256_si128(inOrder), _mm_set1_epi32(-1));
    return _mm_sub_epi32(_mm_xor_si128(numbers, negative), negative);
  }

  std::size_t last_;  // place of the field's last eight bytes
  double unit_ = 1;
  std::uint64_t always_ = 0;
  std::array<std::uint8_t, 16> order_;  // of a field's bytes: its eight digits, then those before them and the point
  std::uint64_t frame_ = 0;             // what these last ones have to be
};

#else

// Only processors of that kind read four at once.
class DigitFours {
 public:
  static constexpr std::size_t kFewest = 4;
  static std::optional<DigitFours> of(int, int) { return std::nullopt; }
  bool read(const unsigned char*, std::size_t, std::size_t, double*) const { return false; }
};

#endif

}  // namespace vantrelix::dbf
