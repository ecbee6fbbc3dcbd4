// The tables of the single-byte code pages beside those of this machine's iconv.
#include <gtest/gtest.h>

#if __has_include(<iconv.h>)

#include <iconv.h>

#include "foundation/encoding.h"

namespace vantrelix {
namespace {

class Iconv {
 public:
  explicit Iconv(int page) : handle_(::iconv_open("UTF-8", ("CP" + std::to_string(page)).c_str())) {}
  ~Iconv() {
    if (valid()) ::iconv_close(handle_);
  }
  Iconv(const Iconv&) = delete;
  Iconv& operator=(const Iconv&) = delete;

  bool valid() const { return reinterpret_cast<std::intptr_t>(handle_) != -1; }

  // The byte's character; blank where the page leaves it open.
  std::string character(char byte) const {
    char room[8] = {};
    char* from = &byte;
    char* to = room;
    std::size_t fromLeft = 1;
    std::size_t toLeft = sizeof room;
    ::iconv(handle_, nullptr, nullptr, nullptr, nullptr);
    const std::size_t result = ::iconv(handle_, &from, &fromLeft, &to, &toLeft);
    if (result == static_cast<std::size_t>(-1)) return "";
    ::iconv(handle_, nullptr, nullptr, &to, &toLeft);  // a letter that waits for an accent
    return {room, to};
  }

 private:
  iconv_t handle_;
};

class CodePageTables : public ::testing::TestWithParam<int> {};

TEST_P(CodePageTables, AgreeWithThoseOfTheSystem) {
  const Iconv system(GetParam());
  if (!system.valid()) GTEST_SKIP() << "no page " << GetParam() << " on this machine";
  const auto page = CodePage::find(GetParam());
  ASSERT_TRUE(page);
  int compared = 0;
  for (int byte = 0x80; byte < 0x100; ++byte) {
    const std::string expected = system.character(static_cast<char>(byte));
    if (expected.empty()) continue;
    EXPECT_EQ(page->decode(std::string(1, static_cast<char>(byte))), expected) << "byte " << byte;
    ++compared;
  }
  EXPECT_GT(compared, 90);
}

INSTANTIATE_TEST_SUITE_P(Pages, CodePageTables,
                         ::testing::Values(437, 737, 850, 852, 857, 860, 861, 863, 865, 866, 1250, 1251, 1252, 1253,
                                           1254, 1255, 1256, 1257));

}  // namespace
}  // namespace vantrelix

#endif
