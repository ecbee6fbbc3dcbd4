#include <algorithm>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tables/RowNumbers.h"

namespace vantrelix {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

std::vector<std::uint32_t> all(const RowNumbers& rows) { return {rows.begin(), rows.end()}; }

TEST(RowNumbers, AreThoseGivenAndThoseAppended) {
  RowNumbers rows({7, 3});
  rows.append(10, 2);
  rows.append(12, 1);
  EXPECT_THAT(all(rows), ElementsAre(7, 3, 10, 11, 12));
  EXPECT_EQ(rows.size(), 5U);
  EXPECT_EQ(rows[1], 3U);
  EXPECT_EQ(rows[4], 12U);
}

TEST(RowNumbers, TakeARunThatDoesNotFollowTheOneBefore) {
  RowNumbers rows;
  EXPECT_TRUE(rows.empty());
  rows.append(4, 2);
  rows.append(9, 2);
  rows.append(0, 1);
  EXPECT_THAT(all(rows), ElementsAre(4, 5, 9, 10, 0));
}

TEST(RowNumbers, AppendOfNoneChangesNothing) {
  RowNumbers rows;
  rows.append(4, 0);
  EXPECT_TRUE(rows.empty());
  rows.append(6, 1);
  EXPECT_THAT(all(rows), ElementsAre(6));
}

TEST(RowNumbers, LoseOneAtAnyPlace) {
  for (std::size_t place = 0; place < 5; ++place) {
    RowNumbers rows({1, 2});
    rows.append(3, 3);
    std::vector<std::uint32_t> wanted = all(rows);
    wanted.erase(wanted.begin() + static_cast<std::ptrdiff_t>(place));
    rows.erase(place);
    EXPECT_EQ(all(rows), wanted) << place;
    rows.append(6, 2);
    wanted.insert(wanted.end(), {6, 7});
    EXPECT_EQ(all(rows), wanted) << place;
  }
}

TEST(RowNumbers, LoseTheirLastOneAndAreEmpty) {
  RowNumbers rows;
  rows.append(8, 1);
  rows.erase(0);
  EXPECT_THAT(all(rows), IsEmpty());
  rows.append(2, 1);
  EXPECT_THAT(all(rows), ElementsAre(2));
}

TEST(RowNumbers, AreSearchedAsOneOrder) {
  RowNumbers rows({1, 5});
  rows.append(8, 1000);
  EXPECT_EQ(std::lower_bound(rows.begin(), rows.end(), 6U) - rows.begin(), 2);
  EXPECT_EQ(std::lower_bound(rows.begin(), rows.end(), 500U) - rows.begin(), 494);
  EXPECT_EQ(std::find(rows.begin(), rows.end(), 2000U), rows.end());
}

}  // namespace
}  // namespace vantrelix
