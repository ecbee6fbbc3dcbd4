#include "tables/descriptorsPastDamage.h"

#include <algorithm>

namespace vantrelix::dbf {

namespace {

bool makeUp(const Descriptors& found, std::uint32_t recordLength) {
  return sumOfWidths(found.fields, false) == recordLength || sumOfWidths(found.fields, true) == recordLength;
}

// Makes a description out of the bytes at which the list ends.
void mend(unsigned char* descriptor) {
  if (*descriptor == 0 || *descriptor == kHeaderEnd) *descriptor = descriptor[1] == 0 ? ' ' : '_';
  if (isFieldType(descriptor[11])) return;
  descriptor[11] = 'C';
  descriptor[17] = 0;
  descriptor[18] = static_cast<unsigned char>((descriptor[18] & kFlagNullable) | kFlagBinary);
}

}  // namespace

std::optional<Descriptors> readPastDamage(std::string bytes, std::uint64_t limit, std::uint32_t recordLength) {
  constexpr std::size_t widthPlace = 16;
  for (bool mended = false;; mended = true) {
    const Descriptors found = readDescriptors(bytes, limit);
    if (makeUp(found, recordLength)) {
      if (!mended || (!found.terminated && found.end != limit)) return std::nullopt;
      return found;
    }
    if (found.end + kDescriptor > std::min<std::uint64_t>(limit, bytes.size())) return std::nullopt;
    auto* const at = reinterpret_cast<unsigned char*>(bytes.data()) + found.end;
    if (at[widthPlace] == 0) return std::nullopt;
    mend(at);
  }
}

}  // namespace vantrelix::dbf
