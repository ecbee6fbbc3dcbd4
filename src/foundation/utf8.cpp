#include "foundation/utf8.h"

#include <cstdint>
#include <cstring>

namespace vantrelix {

namespace {

// Bytes that a lead byte announces; 0 where it can lead nothing.
std::size_t announcedLength(unsigned char lead) {
  if (lead < 0x80) return 1;
  if (lead >= 0xC2 && lead <= 0xDF) return 2;
  if (lead >= 0xE0 && lead <= 0xEF) return 3;
  if (lead >= 0xF0 && lead <= 0xF4) return 4;
  return 0;
}

bool isCharacter(char32_t code) { return code <= 0x10FFFF && (code < 0xD800 || code > 0xDFFF); }

char continuation(char32_t code, int shift) { return static_cast<char>(0x80 | ((code >> shift) & 0x3F)); }

}  // namespace

Utf8Character utf8CharacterAt(std::string_view text, std::size_t at) {
  static constexpr char32_t kLeast[] = {0, 0, 0x80, 0x800, 0x10000};
  static constexpr unsigned char kLeadBits[] = {0, 0x7F, 0x1F, 0x0F, 0x07};
  const auto lead = static_cast<unsigned char>(text[at]);
  const Utf8Character invalid{lead, 1, false};
  const std::size_t length = announcedLength(lead);
  if (length == 0 || at + length > text.size()) return invalid;
  char32_t code = lead & kLeadBits[length];
  for (std::size_t i = 1; i < length; ++i) {
    const auto byte = static_cast<unsigned char>(text[at + i]);
    if ((byte & 0xC0) != 0x80) return invalid;
    code = (code << 6) | (byte & 0x3F);
  }
  if (code < kLeast[length] || !isCharacter(code)) return invalid;
  return {code, length, true};
}

void appendUtf8(std::string& text, char32_t code) {
  if (!isCharacter(code)) code = 0xFFFD;
  if (code < 0x80) {
    text += static_cast<char>(code);
  } else if (code < 0x800) {
    text += static_cast<char>(0xC0 | (code >> 6));
    text += continuation(code, 0);
  } else if (code < 0x10000) {
    text += static_cast<char>(0xE0 | (code >> 12));
    text += continuation(code, 6);
    text += continuation(code, 0);
  } else {
    text += static_cast<char>(0xF0 | (code >> 18));
    text += continuation(code, 12);
    text += continuation(code, 6);
    text += continuation(code, 0);
  }
}

std::size_t asciiPrefix(std::string_view text) {
  std::size_t at = 0;
  for (std::uint64_t eight = 0; at + sizeof eight <= text.size(); at += sizeof eight) {
    std::memcpy(&eight, text.data() + at, sizeof eight);
    if ((eight & 0x8080808080808080ULL) != 0) break;
  }
  while (at < text.size() && static_cast<unsigned char>(text[at]) < 0x80) ++at;
  return at;
}

}  // namespace vantrelix
