#include "tables/textBytes.h"

#include <algorithm>

#include "tables/fieldBytes.h"

namespace vantrelix::dbf {

TextBytes::TextBytes(const std::vector<DbfField>& all) {
  for (const DbfField& field : all) {
    if (field.type == '0') context_.nullFlagsOffset = field.offset;
  }
}

std::string_view TextBytes::of(const unsigned char* record, const DbfField& field) const {
  if (isNullByFlag(record, field, context_)) return {};
  std::string_view bytes = bytesOf(record, field);
  if (hasLength(record, field, context_) && !bytes.empty()) {
    bytes = bytes.substr(0, std::min<std::size_t>(static_cast<unsigned char>(bytes.back()), bytes.size() - 1));
  }
  return bytes;
}

}  // namespace vantrelix::dbf
