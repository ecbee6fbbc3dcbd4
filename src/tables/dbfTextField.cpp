#include "tables/dbfTextField.h"

#include <algorithm>

#include "foundation/utf8.h"

namespace vantrelix::dbf {

std::optional<TextField> TextField::of(const DbfField& field, const std::vector<DbfField>& all) {
  const auto isFlags = [](const DbfField& other) { return other.type == '0'; };
  if (field.type != 'C' || field.width <= 0 || field.nullBit >= 0 || field.lengthBit >= 0) return std::nullopt;
  if (std::any_of(all.begin(), all.end(), isFlags)) return std::nullopt;
  TextField result;
  result.offset_ = static_cast<std::size_t>(field.offset);
  result.width_ = static_cast<std::size_t>(field.width);
  return result;
}

bool TextField::isBlank(std::string_view text) { return text.find_first_not_of(' ') == std::string_view::npos; }

bool TextField::endsAtNul(std::string_view& text) {
  text = text.substr(0, text.find('\0'));
  return isAscii(text);
}

}  // namespace vantrelix::dbf
