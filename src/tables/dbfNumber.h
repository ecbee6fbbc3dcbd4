// Numbers read from the digits of a fixed-width field. Private to the table-file sources.
#pragma once

#include <bit>
#include <cstdint>
#include <cstring>
#include <optional>
#include <span>
#include <string_view>
#include <vector>

#include "tables/DbfFile.h"

namespace vantrelix::dbf {

class DigitFours;
class DigitPairs;

// The nearest double to the digits of a field: blanks and NULs around, one sign, digits with at most one point, an
// exponent. Nothing where the field is blank, full of asterisks or holds anything else.
std::optional<double> parseNumber(std::string_view bytes);

// A number field whose digits alone decide its value, made ready for being read in many records.
class DigitsField {
 public:
  // Nothing for a field of another type, and for one that can be null by flag.
  static std::optional<DigitsField> of(const DbfField& field);

  // parseNumber of the field's bytes. False, and the number is of no meaning, where there is none.
  bool read(const unsigned char* record, double& number) const {
    const unsigned char* const at = record + offset_;
    return (usual_ && readShort(at, number)) || readAny(at, number);
  }

  // The same for records of `length` bytes that stand behind one another: as many numbers. False, and some are of no
  // meaning, where one of them has none.
  bool readEach(const unsigned char* records, std::size_t length, std::span<double> numbers) const;
  // The same for any records; adds those numbers that there are.
  void readAll(const std::vector<const unsigned char*>& records, std::vector<double>& numbers) const;

 private:
  static constexpr std::uint64_t kEachByte = 0x0101010101010101;

  static std::uint64_t eightBytes(const unsigned char* at) {
    std::uint64_t bytes = 0;
    std::memcpy(&bytes, at, sizeof bytes);
    return bytes;
  }

  // The highest bit of each byte that is above 9.
  static std::uint64_t above9(std::uint64_t bytes) {
    constexpr std::uint64_t low = 0x7F * kEachByte;
    return (((bytes & low) + (0x7F - 9) * kEachByte) | bytes) & ~low;
  }

  // Eight bytes from 0 to 9, the first in the lowest byte, as the number that they write.
  static std::uint64_t joined(std::uint64_t digits) {
    constexpr std::uint64_t pairs = 0x000000FF000000FF;
    digits = digits * 10 + (digits >> 8);
    const std::uint64_t high = (digits & pairs) * (100 + (std::uint64_t{1000000} << 32));
    const std::uint64_t low = (digits >> 16 & pairs) * (1 + (std::uint64_t{10000} << 32));
    return (high + low) >> 32;
  }

  // A number as fields usually hold it: blanks, a minus sign, digits up to the point, the field's decimals; no more
  // than eight digits and signs in all. False for any other.
  bool readShort(const unsigned char* at, double& number) const {
    if (decimals_ > 0 && at[whole_] != '.') return false;
    for (unsigned i = 0; i < skipped_; ++i) {
      if (at[i] != ' ') return false;
    }
    // The eight bytes before the point, blanks in the place of those that the field does not have.
    const std::uint64_t whole = eightBytes(at + skipped_) << shift_ | padding_;
    if (((whole ^ ' ' * kEachByte) & blankBytes_) != 0) return false;
    const std::uint64_t bytes = whole >> (8 * decimals_) | (eightBytes(at + width_ - 8) & decimalBytes_);
    std::uint64_t digits = bytes ^ '0' * kEachByte;
    bool negative = false;
    if (const std::uint64_t others = above9(digits); others != 0) {
      const int behind = std::countl_zero(others);  // bits of the digits behind the last other byte
      const std::uint64_t before = (bytes ^ ' ' * kEachByte) << behind;
      negative = before == std::uint64_t{' ' ^ '-'} << 56;
      if ((before != 0 && !negative) || behind < leastBehind_) return false;
      digits = digits >> 1 >> (63 - behind) << 1 << (63 - behind);
    }
    const double size = static_cast<double>(static_cast<std::int64_t>(joined(digits))) / divisor_;
    number = negative ? 0 - size : size;  // a negative nought is nought
    return true;
  }

  bool readAny(const unsigned char* at, double& number) const;
  std::optional<DigitFours> fours() const;
  std::optional<DigitPairs> pairs() const;
  template <class RecordAt>
  bool readUsual(DigitPairs pair, const RecordAt& recordAt, std::size_t count, double* numbers) const;

  std::size_t offset_ = 0;
  std::size_t width_ = 0;
  bool usual_ = false;  // wide enough for readShort, and all that follows is set
  int leastBehind_ = 0;
  unsigned whole_ = 0;  // bytes before the point
  unsigned skipped_ = 0;
  unsigned shift_ = 0;
  unsigned decimals_ = 0;
  std::uint64_t padding_ = 0;
  std::uint64_t blankBytes_ = 0;
  std::uint64_t decimalBytes_ = 0;
  double divisor_ = 1;
};

}  // namespace vantrelix::dbf
