// Tables of others, changed here: not a byte but those of the change, and the date of the last change, is another.
#include <algorithm>
#include <filesystem>
#include <gtest/gtest.h>

#include "cli/CliRun.h"
#include "cli/OtherPrograms.h"
#include "foundation/text.h"
#include "platform/RunTimeFailure.h"
#include "support/TempSuite.h"
#include "tables/Database.h"
#include "tables/DbfFile.h"

namespace vantrelix::test {
namespace {

namespace fs = std::filesystem;

struct Span {
  std::size_t first;
  std::size_t end;
};

constexpr Span kDate{1, 4};
constexpr Span kDateAndCount{1, 8};

// Where two files first differ outside the spans; blank where they do not. One may be longer, in a span of its end.
std::string differenceOutside(const std::string& before, const std::string& after, std::initializer_list<Span> spans) {
  for (std::size_t i = 0; i < std::max(before.size(), after.size()); ++i) {
    const bool allowed = std::any_of(spans.begin(), spans.end(), [&](Span s) { return i >= s.first && i < s.end; });
    if (allowed) continue;
    if (i >= before.size() || i >= after.size()) return "length " + std::to_string(after.size());
    if (before[i] != after[i]) return "byte " + std::to_string(i);
  }
  return "";
}

class RoundTrip : public testing::Test {
 protected:
  // The real tables, each with its companions, as copies that may be written to.
  std::vector<std::string> copies() {
    std::vector<std::string> tables;
    for (const auto& entry : fs::directory_iterator(realData("dbf"))) {
      const std::string copy = suite_.folder().machine(entry.path().filename().string());
      fs::copy_file(entry.path(), copy);
      fs::permissions(copy, fs::perms::owner_read | fs::perms::owner_write);
      if (lowerCase(entry.path().extension().string()) == ".dbf") tables.push_back(copy);
    }
    return tables;
  }

  std::string bytes(const std::string& path) const { return readMachineFile(path); }

  TempSuite suite_;
};

// The table, where it can be read and has a row to change.
std::shared_ptr<DbfFile> openWithRows(const std::string& path) {
  try {
    auto table = DbfFile::open(path);
    return table->recordCount() > 0 ? table : nullptr;
  } catch (const RunTimeFailure&) {
    return nullptr;
  }
}

// The last live record and the first character field that it can be seen in.
struct Place {
  std::uint32_t record = 0;
  int field = -1;
};

Place placeToWrite(DbfFile& table) {
  Place place;
  table.scan([&](std::uint32_t number, const unsigned char* record) {
    if (record[0] != '*') place.record = number;
    return true;
  });
  for (std::size_t i = 0; i < table.fields().size() && place.field < 0; ++i) {
    const DbfField& field = table.fields()[i];
    if (field.type == 'C' && field.width >= 3 && !field.system && field.nullBit < 0) place.field = static_cast<int>(i);
  }
  return place;
}

std::size_t offsetOf(const std::string& bytes, const DbfFile& table, std::uint32_t record) {
  const auto at = [&](std::size_t i) { return static_cast<std::size_t>(static_cast<unsigned char>(bytes[i])); };
  return at(8) + at(9) * 256 + std::size_t{record} * static_cast<std::size_t>(table.recordLength());
}

TEST_F(RoundTrip, AnUpdateChangesTheBytesOfItsFieldAlone) {
  if (realData("dbf").empty()) GTEST_SKIP() << "the shared real files are not here";
  int changed = 0;
  int refused = 0;
  for (const std::string& path : copies()) {
    const auto table = openWithRows(path);
    if (!table) continue;
    const Place place = placeToWrite(*table);
    if (place.field < 0) continue;
    const DbfField& field = table->fields()[static_cast<std::size_t>(place.field)];
    const std::string before = bytes(path);
    try {
      table->update(place.record,
                    [&](unsigned char* record) { table->put(record, static_cast<std::size_t>(place.field), "a z"); });
    } catch (const RunTimeFailure& refusal) {
      EXPECT_TRUE(refusal.number() == failure::readOnlyTable || refusal.number() == failure::recordDeleted)
          << path << ": " << refusal.description();
      EXPECT_EQ(bytes(path), before) << path;
      ++refused;
      continue;
    }
    const std::string after = bytes(path);
    const std::size_t first = offsetOf(before, *table, place.record) + static_cast<std::size_t>(field.offset);
    EXPECT_EQ(differenceOutside(before, after, {kDate, {first, first + static_cast<std::size_t>(field.width)}}), "")
        << path;
    EXPECT_EQ(after.substr(first, 3), "a z") << path;
    ++changed;
  }
  EXPECT_GE(changed, 65);
  EXPECT_LT(refused, 30) << "a table with a structural index is only read, and so is one whose record length is wrong";
}

TEST_F(RoundTrip, ANewRowChangesTheCountAndTheEndOfTheFileAlone) {
  if (realData("dbf").empty()) GTEST_SKIP() << "the shared real files are not here";
  int changed = 0;
  for (const std::string& path : copies()) {
    const auto table = openWithRows(path);
    if (!table) continue;
    const std::string before = bytes(path);
    const std::uint32_t count = table->recordCount();
    try {
      ASSERT_EQ(table->append(table->blankRecord().data()), count) << path;
    } catch (const RunTimeFailure& refusal) {
      EXPECT_EQ(refusal.number(), failure::readOnlyTable) << path << ": " << refusal.description();
      EXPECT_EQ(bytes(path), before) << path;
      continue;
    }
    const std::string after = bytes(path);
    const std::size_t end = offsetOf(before, *table, count);
    const std::size_t added = static_cast<std::size_t>(table->recordLength()) + 1;
    EXPECT_EQ(differenceOutside(before, after, {kDateAndCount, {end, end + added}}), "") << path;
    ++changed;
  }
  EXPECT_GT(changed, 70);
}

// The other programs find in such a table what was there before, and what was put into it here.
TEST_F(RoundTrip, AChangedTableReadsTheSameInTheGisLibrary) {
  if (realData("dbf").empty() || !installed("ogr2ogr")) GTEST_SKIP() << "no real tables, or no ogr2ogr";
  int compared = 0;
  for (const std::string& path : copies()) {
    const Json before = rowsThroughOgr(path);
    const auto table = openWithRows(path);
    if (before.empty() || !table) continue;
    const Place place = placeToWrite(*table);
    if (place.field < 0) continue;
    const std::string name = table->fields()[static_cast<std::size_t>(place.field)].name;
    try {
      table->update(place.record,
                    [&](unsigned char* record) { table->put(record, static_cast<std::size_t>(place.field), "a z"); });
    } catch (const RunTimeFailure&) {
      continue;
    }
    Json expected = before;
    if (!expected.back().contains(name) || expected.size() > table->recordCount()) continue;
    expected.back()[name] = "a z";
    const Json after = rowsThroughOgr(path);
    ASSERT_EQ(after.size(), expected.size()) << path;
    EXPECT_EQ(after, expected) << path;
    ++compared;
  }
  EXPECT_GT(compared, 60);
}

}  // namespace
}  // namespace vantrelix::test
