#include "controls/shownText.h"

#include <optional>

#include "foundation/numbers.h"

namespace vantrelix {

std::string shownText(const Value& value, const char* forNull) {
  return value.isNull() ? std::string(forNull) : value.asText();
}

std::string numberShown(const Value& value, std::string_view format) {
  const std::string text = shownText(value);
  const std::optional<double> number = plainNumber(text);
  return number ? formatNumber(*number, format) : text;
}

}  // namespace vantrelix
