// Whether a character field has a text, decided on its bytes. Private to this layer.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "tables/DbfFile.h"
#include "tables/TextRuns.h"

namespace vantrelix {

class TextEquality {
 public:
  // Nothing where the bytes alone do not decide. Trailing blanks of the text do not count, case does; `folded`: the
  // text is compared with the upper case of the field.
  static std::optional<TextEquality> of(const DbfField& field, std::string_view text, bool folded);

  // Whether a field of that width can have the text at all; only then the rest may be asked.
  bool isPossible() const { return wanted_.size() <= width_; }
  bool matches(const unsigned char* record) const;
  // The end of the live rows, from `row` of `count` on, whose field has the same bytes as in the record before them.
  std::uint32_t endOfAlike(const unsigned char* before, std::size_t length, std::uint32_t row,
                           std::uint32_t count) const;
  // What every row that matches has.
  SoughtText sought() const;

 private:
  std::size_t offset_ = 0;
  std::size_t width_ = 0;
  std::string wanted_;  // without padding
  bool folded_ = false;
};

}  // namespace vantrelix
