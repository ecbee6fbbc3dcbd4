#include "tables/dbfText.h"

#include <algorithm>
#include <cctype>
#include <vector>

namespace vantrelix::dbf {

namespace {

struct Mark {
  unsigned char mark;
  short page;
};

// The published list of language driver marks of the dBase and FoxPro family.
constexpr Mark kMarks[] = {
    {0x01, 437},  {0x02, 850},  {0x03, 1252}, {0x08, 865},  {0x09, 437},  {0x0A, 850},  {0x0B, 437},  {0x0D, 437},
    {0x0E, 850},  {0x0F, 437},  {0x10, 850},  {0x11, 437},  {0x12, 850},  {0x13, 932},  {0x14, 850},  {0x15, 437},
    {0x16, 850},  {0x17, 865},  {0x18, 437},  {0x19, 437},  {0x1A, 850},  {0x1B, 437},  {0x1C, 863},  {0x1D, 850},
    {0x1F, 852},  {0x22, 852},  {0x23, 852},  {0x24, 860},  {0x25, 850},  {0x26, 866},  {0x37, 850},  {0x40, 852},
    {0x4D, 936},  {0x4E, 949},  {0x4F, 950},  {0x50, 874},  {0x57, 1252}, {0x58, 1252}, {0x59, 1252}, {0x64, 852},
    {0x65, 866},  {0x66, 865},  {0x67, 861},  {0x6A, 737},  {0x6B, 857},  {0x6C, 863},  {0x78, 950},  {0x79, 949},
    {0x7A, 936},  {0x7B, 932},  {0x7C, 874},  {0x7D, 1255}, {0x7E, 1256}, {0x86, 737},  {0x87, 852},  {0x88, 857},
    {0xC8, 1250}, {0xC9, 1251}, {0xCA, 1254}, {0xCB, 1253}, {0xCC, 1257},
};

std::vector<int> numbersIn(std::string_view text) {
  std::vector<int> numbers;
  bool inside = false;
  for (const char character : text) {
    const bool digit = character >= '0' && character <= '9';
    if (digit && !inside) numbers.push_back(0);
    if (digit && numbers.back() < 1'000'000) numbers.back() = numbers.back() * 10 + (character - '0');
    inside = digit;
  }
  return numbers;
}

// Windows-1252 is what files marked as Latin-1 hold, and the only page of that kind here.
int pageOfNumbers(const std::vector<int>& numbers) {
  for (const int number : numbers) {
    if (number == 8859 || number == 88591) return number == 88591 || numbers.back() == 1 ? 1252 : 0;
    if (number == kUtf8) return kUtf8;
    if (CodePage::find(number)) return number;
  }
  return 0;
}

}  // namespace

int codePageOfMark(unsigned char mark) {
  for (const Mark& known : kMarks) {
    if (known.mark == mark) return CodePage::find(known.page) ? known.page : 0;
  }
  return 0;
}

int codePageOfName(std::string_view name) {
  std::string upper(name.substr(0, 64));
  std::transform(upper.begin(), upper.end(), upper.begin(),
                 [](unsigned char character) { return static_cast<char>(std::toupper(character)); });
  if (upper.find("UTF-8") != std::string::npos || upper.find("UTF8") != std::string::npos) return kUtf8;
  return pageOfNumbers(numbersIn(upper));
}

TextCodec::TextCodec(int codePage)
    : page_(CodePage::find(codePage).value_or(CodePage::windows1252())), utf8_(codePage == kUtf8) {}

std::string TextCodec::decode(std::string_view bytes) const {
  // A value that is not valid UTF-8 was written by a program of another mind; its bytes are not thrown away.
  return utf8_ ? decodeGuessing(bytes) : page_.decode(bytes);
}

std::string TextCodec::encode(std::string_view text) const { return utf8_ ? std::string(text) : page_.encode(text); }

std::string TextCodec::cut(std::string_view text, std::size_t width) const {
  if (!utf8_) return page_.cut(text, width);
  if (text.size() <= width) return std::string(text);
  while (width > 0 && (static_cast<unsigned char>(text[width]) & 0xC0) == 0x80) --width;
  return std::string(text.substr(0, width));
}

}  // namespace vantrelix::dbf
