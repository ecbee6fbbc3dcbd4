// A table of pattern points whose questions are counted in bytes, on a machine whose clock the test moves.
#pragma once

#include <chrono>
#include <filesystem>
#include <functional>
#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "support/MeasuredPlatform.h"
#include "support/Processes.h"
#include "support/TempFolder.h"
#include "tables/Database.h"
#include "tables/DbfFile.h"
#include "tables/TextRuns.h"
#include "tables/learnTexts.h"

namespace vantrelix::test {

// Table CUTS with 20 antennas "ID000" to "ID019" of 50 rows each, PLACE counting within an antenna. 30 bytes a row.
class CutsTable : public testing::Test {
 protected:
  CutsTable() {
    setSmallestRemembered(0);
    create();
    append(
        1000, [](int row) { return idOf(row / 50); }, 50);
    age();
  }
  ~CutsTable() override { setSmallestRemembered(formerSmallest_); }

  static std::string idOf(int antenna) { return (antenna < 10 ? "ID00" : "ID0") + std::to_string(antenna); }
  static std::vector<unsigned char> record(const DbfFile& table, const std::string& id, int place) {
    std::vector<unsigned char> bytes = table.blankRecord();
    table.put(bytes.data(), 0, id);
    table.put(bytes.data(), 1, place);
    return bytes;
  }
  // An empty table, of those fields or of its own, in the place of the one there is.
  void create(const std::vector<DbfNewField>& fields = {{"ID", 'C', 12, 0}, {"PLACE", 'N', 17, 4}}) const {
    if (platform::current().fileExists(path())) platform::current().remove(path());
    DbfFile::create(path(), fields);
  }
  // Adds so many rows at once; PLACE counts them, and begins anew after so many.
  void append(int count, const std::function<std::string(int row)>& id, int places = 1 << 30) const {
    const auto table = DbfFile::open(path());
    std::vector<unsigned char> rows;
    for (int i = 0; i < count; ++i) {
      const std::vector<unsigned char> row = record(*table, id(i), i % places);
      rows.insert(rows.end(), row.begin(), row.end());
    }
    table->append(rows.data(), static_cast<std::uint32_t>(count));
  }
  const std::string& folder() const { return folder_.path(); }
  std::string path() const { return folder_.file("CUTS.DBF"); }
  std::string otherPath() const { return folder_.file("OTHER.DBF"); }
  // The last change was at least so long ago, at a time that no other file here has. At no full second where `by` is
  // none.
  void age(std::chrono::milliseconds by = std::chrono::milliseconds(3600123)) const {
    using std::filesystem::file_time_type;
    static int calls = 0;
    const auto now = std::chrono::floor<std::chrono::seconds>(file_time_type::clock::now());
    std::filesystem::last_write_time(platform::current().toMachine(path()), now - by - std::chrono::hours(++calls));
  }
  RecordsetPtr open(const std::string& where, const std::string& rest = "") const {
    return DBEngine::OpenDatabase(folder_.path())->OpenRecordset("select * from [CUTS] where " + where + rest);
  }
  long count(const std::string& where) const { return open(where)->rowCount(); }
  static std::string isUpper(const std::string& id) { return "ucase(id) = '" + id + "'"; }
  // The bytes that a question reads.
  std::size_t cost(const std::string& where) {
    machine_.bytesRead = 0;
    count(where);
    return machine_.bytesRead;
  }
  // A file that has just changed is read whole until so many milliseconds have gone by and it has been read once more,
  // and not only until the first of them have.
  void expectTrustAfter(int tooSoon, int rest) {
    EXPECT_GT(cost(isUpper("ID003")), kAll);
    wait(tooSoon);
    EXPECT_GT(cost(isUpper("ID003")), kAll);
    EXPECT_GT(cost(isUpper("ID003")), kAll);
    wait(rest);
    EXPECT_GT(cost(isUpper("ID003")), kAll);
    EXPECT_LT(cost(isUpper("ID003")), kAll / 4);
  }
  static void wait(int milliseconds) { MeasuredPlatform::now += milliseconds; }
  // The file has been looked at, stands still, and is known.
  void learn() {
    count(isUpper("NONE"));
    wait(5000);
    count(isUpper("NONE"));
  }
  // What the file says of its last change.
  std::filesystem::file_time_type changed() const {
    return std::filesystem::last_write_time(platform::current().toMachine(path()));
  }
  void setChanged(std::filesystem::file_time_type time) const {
    std::filesystem::last_write_time(platform::current().toMachine(path()), time);
  }
  // Another program gives a row another ID.
  void putIdInAnotherProgram(std::uint32_t row, const std::string& id) const {
    inAnotherProgram(
        [&](DbfFile& table) { table.update(row, [&](unsigned char* bytes) { table.put(bytes, 0, id); }); });
  }
  // Another program makes a row one of antenna 3. The file keeps its size, and its time as far as its clock shows.
  void giveRowTo3(std::uint32_t row) const {
    const auto time = changed();
    putIdInAnotherProgram(row, "ID003");
    setChanged(time);
  }
  // This program changes a number in a row of an antenna.
  void writeOwn(const std::string& id) const {
    const RecordsetPtr rows = open(isUpper(id));
    rows->Edit();
    rows->put("PLACE", 77);
    rows->Update();
  }
  std::size_t costOfLearning(const std::string& field) {
    machine_.bytesRead = 0;
    learnTexts(path(), field);
    return machine_.bytesRead;
  }
  template <class Work>
  void inAnotherProgram(Work work) const {
    ASSERT_EQ(exitCode(startChild([&] {
                work(*DbfFile::open(path()));
                return true;
              })),
              0);
  }

  static constexpr std::size_t kAll = 30000;
  MeasuredPlatform machine_;

 private:
  platform::Substitute use_{machine_};
  TempFolder folder_;
  std::uint64_t formerSmallest_ = smallestRemembered();
};

}  // namespace vantrelix::test
