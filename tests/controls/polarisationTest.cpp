#include <gtest/gtest.h>
#include <utility>

#include "controls/polarisation.h"

namespace vantrelix {
namespace {

TEST(Polarisation, EachCodeHasItsName) {
  const std::pair<const char*, const char*> pairs[] = {
      {"hor", "Horizontal"}, {"ver", "Vertical"}, {"cir", "Circular"}, {"hel", "Helical"}, {"other", "Other"}};
  for (const auto& [code, name] : pairs) {
    EXPECT_EQ(PolCodeToName(code), name);
    EXPECT_EQ(PolNameToCode(name), code);
  }
}

TEST(Polarisation, BlanksRoundACodeDoNotCount) { EXPECT_EQ(PolCodeToName("  ver  "), "Vertical"); }

TEST(Polarisation, AnyOtherCodeIsNone) {
  for (const char* code : {"", "none", "HOR", "Ver", "h", "horizontal", "ver\t", "others"}) {
    EXPECT_EQ(PolCodeToName(code), "None") << code;
  }
}

TEST(Polarisation, AnyOtherNameIsNone) {
  for (const char* name : {"", "None", "HORIZONTAL", "vertical", " Circular", "hor", "Others"}) {
    EXPECT_EQ(PolNameToCode(name), "none") << name;
  }
}

}  // namespace
}  // namespace vantrelix
