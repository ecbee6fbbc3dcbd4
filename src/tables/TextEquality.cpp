#include "tables/TextEquality.h"

#include <algorithm>
#include <cstring>

#include "tables/SqlCompare.h"
#include "tables/sameBytes.h"

namespace vantrelix {

namespace {

// In every encoding of a table such a text has the same bytes, and no other bytes are read as it.
bool isPlain(std::string_view text) {
  return std::all_of(text.begin(), text.end(),
                     [](char c) { return c != '\0' && static_cast<unsigned char>(c) < 0x80; });
}

}  // namespace

std::optional<TextEquality> TextEquality::of(const DbfField& field, std::string_view text, bool folded) {
  if (field.type != 'C' || field.nullBit >= 0 || field.lengthBit >= 0) return std::nullopt;
  TextEquality equality;
  equality.wanted_ = withoutPadding(text);
  if (equality.wanted_.empty() || !isPlain(equality.wanted_)) return std::nullopt;
  equality.offset_ = static_cast<std::size_t>(field.offset);
  equality.width_ = static_cast<std::size_t>(field.width);
  equality.folded_ = folded;
  return equality;
}

bool TextEquality::matches(const unsigned char* record) const {
  const unsigned char* const bytes = record + offset_;
  if (!folded_) {
    if (std::memcmp(bytes, wanted_.data(), wanted_.size()) != 0) return false;
  } else {
    for (std::size_t i = 0; i < wanted_.size(); ++i) {
      if (upperByte(bytes[i]) != static_cast<unsigned char>(wanted_[i])) return false;
    }
  }
  // A NUL ends a text, whatever stands behind it.
  const unsigned char* const end = bytes + width_;
  const unsigned char* const rest = std::find_if(bytes + wanted_.size(), end, [](unsigned char c) { return c != ' '; });
  return rest == end || *rest == '\0';
}

std::uint32_t TextEquality::endOfAlike(const unsigned char* before, std::size_t length, std::uint32_t row,
                                       std::uint32_t count) const {
  const unsigned char* const alike = before + offset_;
  for (const unsigned char* record = before + length; row < count; ++row, record += length) {
    if (record[0] == '*' || !sameBytes(record + offset_, alike, width_)) break;
  }
  return row;
}

SoughtText TextEquality::sought() const {
  SoughtText sought{offset_, width_, wanted_};
  for (char& c : sought.text) c = static_cast<char>(upperByte(static_cast<unsigned char>(c)));
  return sought;
}

}  // namespace vantrelix
