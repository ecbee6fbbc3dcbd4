#include "foundation/iniText.h"

#include "foundation/encoding.h"
#include "foundation/utf8.h"

namespace vantrelix {

namespace {

constexpr std::string_view kUtf8Mark = "\xEF\xBB\xBF";
constexpr std::string_view kLittleMark = "\xFF\xFE";
constexpr std::string_view kBigMark = "\xFE\xFF";

std::uint32_t unitAt(std::string_view bytes, std::size_t at, bool big) {
  const auto first = static_cast<unsigned char>(bytes[at]);
  const auto second = static_cast<unsigned char>(bytes[at + 1]);
  return big ? first * 256U + second : second * 256U + first;
}

void appendUnit(std::string& bytes, std::uint32_t unit, bool big) {
  const char high = static_cast<char>(unit / 256U);
  const char low = static_cast<char>(unit % 256U);
  bytes += big ? high : low;
  bytes += big ? low : high;
}

bool isHigh(std::uint32_t unit) { return unit >= 0xD800U && unit <= 0xDBFFU; }
bool isLow(std::uint32_t unit) { return unit >= 0xDC00U && unit <= 0xDFFFU; }

void appendThreeBytes(std::string& text, std::uint32_t code) {
  text += static_cast<char>(0xE0U | code >> 12U);
  text += static_cast<char>(0x80U | (code >> 6U & 0x3FU));
  text += static_cast<char>(0x80U | (code & 0x3FU));
}

// A surrogate that stands alone becomes three bytes like any other unit, so that the way back gives the same bytes.
std::string fromUtf16(std::string_view bytes, bool big) {
  std::string text;
  for (std::size_t at = 0; at + 1 < bytes.size(); at += 2) {
    const std::uint32_t unit = unitAt(bytes, at, big);
    const std::uint32_t next = isHigh(unit) && at + 3 < bytes.size() ? unitAt(bytes, at + 2, big) : 0;
    if (isLow(next)) {
      appendUtf8(text, static_cast<char32_t>(0x10000U + (unit - 0xD800U) * 0x400U + (next - 0xDC00U)));
      at += 2;
    } else if (isHigh(unit) || isLow(unit)) {
      appendThreeBytes(text, unit);
    } else {
      appendUtf8(text, static_cast<char32_t>(unit));
    }
  }
  return text;
}

// Whether three bytes of a lone surrogate stand here, as fromUtf16 writes them.
bool surrogateAt(std::string_view text, std::size_t at) {
  return at + 2 < text.size() && static_cast<unsigned char>(text[at]) == 0xEDU &&
         static_cast<unsigned char>(text[at + 1]) >= 0xA0U;
}

std::string toUtf16(std::string_view text, bool big) {
  std::string bytes;
  for (std::size_t at = 0; at < text.size();) {
    const Utf8Character character = utf8CharacterAt(text, at);
    if (!character.valid && surrogateAt(text, at)) {
      const auto middle = static_cast<unsigned char>(text[at + 1]);
      const auto last = static_cast<unsigned char>(text[at + 2]);
      appendUnit(bytes, 0xD000U | (middle & 0x3FU) << 6U | (last & 0x3FU), big);
      at += 3;
      continue;
    }
    const auto code = static_cast<std::uint32_t>(character.code);
    if (code < 0x10000U) {
      appendUnit(bytes, code, big);
    } else {
      appendUnit(bytes, 0xD800U + (code - 0x10000U) / 0x400U, big);
      appendUnit(bytes, 0xDC00U + (code - 0x10000U) % 0x400U, big);
    }
    at += character.length;
  }
  return bytes;
}

}  // namespace

IniText::IniText(std::string_view bytes) {
  if (bytes.starts_with(kLittleMark) || bytes.starts_with(kBigMark)) {
    encoding_ = bytes.starts_with(kBigMark) ? Encoding::utf16Big : Encoding::utf16Little;
    mark_ = bytes.substr(0, 2);
    text_ = fromUtf16(bytes.substr(2), encoding_ == Encoding::utf16Big);
    if (bytes.size() % 2 != 0) oddByte_ = bytes.back();
    return;
  }
  if (bytes.starts_with(kUtf8Mark)) mark_ = kUtf8Mark;
  text_ = bytes.substr(mark_.size());
  if (mark_.empty() && !isValidUtf8(text_)) encoding_ = Encoding::windows1252;
}

void IniText::replace(std::size_t position, std::size_t length, std::string_view with) {
  text_.replace(position, length, with);
  if (encoding_ != Encoding::windows1252 || !isValidUtf8(text_)) return;
  // The bytes of the code page that are left would be read as UTF-8 the next time.
  text_ = CodePage::windows1252().decode(text_);
  encoding_ = Encoding::utf8;
}

std::string IniText::bytes() const {
  const bool big = encoding_ == Encoding::utf16Big;
  if (big || encoding_ == Encoding::utf16Little) return mark_ + toUtf16(text_, big) + oddByte_;
  return mark_ + text_;
}

std::string IniText::decoded(std::string_view raw) const {
  return encoding_ == Encoding::windows1252 ? CodePage::windows1252().decode(raw) : decodeGuessing(raw);
}

std::string IniText::encoded(std::string_view utf8) const {
  return encoding_ == Encoding::windows1252 ? CodePage::windows1252().encode(utf8) : decodeGuessing(utf8);
}

}  // namespace vantrelix
