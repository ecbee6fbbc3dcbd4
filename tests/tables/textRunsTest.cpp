#include <chrono>
#include <filesystem>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "platform/FaultPlatform.h"
#include "support/Processes.h"
#include "support/TempFolder.h"
#include "tables/Database.h"
#include "tables/DbfFile.h"
#include "tables/TextRuns.h"

namespace vantrelix {
namespace {

using platform::File;
using testing::ElementsAre;
using testing::IsEmpty;

// A machine whose clock the test moves, and which counts the bytes read.
class MeasuredPlatform : public platform::FaultPlatform {
 public:
  MeasuredPlatform() : FaultPlatform(platform::operatingSystem()) {}

  // Goes on from one test to the next, as clocks do.
  static inline std::int64_t now = 1000;
  std::size_t bytesRead = 0;

  std::int64_t steadyMilliseconds() override { return now; }
  std::unique_ptr<File> open(const std::string& path, platform::OpenMode mode) override {
    return std::make_unique<MeasuredFile>(FaultPlatform::open(path, mode), bytesRead);
  }

 private:
  class MeasuredFile : public File {
   public:
    MeasuredFile(std::unique_ptr<File> real, std::size_t& bytesRead) : real_(std::move(real)), bytesRead_(bytesRead) {}
    std::size_t readAt(std::uint64_t offset, void* buffer, std::size_t count) override {
      const std::size_t got = real_->readAt(offset, buffer, count);
      bytesRead_ += got;
      return got;
    }
    void writeAt(std::uint64_t offset, const void* bytes, std::size_t count) override {
      real_->writeAt(offset, bytes, count);
    }
    void append(const void* bytes, std::size_t count) override { real_->append(bytes, count); }
    std::uint64_t size() override { return real_->size(); }
    void truncate(std::uint64_t size) override { real_->truncate(size); }
    void sync() override { real_->sync(); }
    platform::FileState state() override { return real_->state(); }
    bool tryLock(std::uint64_t offset, std::uint64_t length, platform::LockKind kind) override {
      return real_->tryLock(offset, length, kind);
    }
    void unlock(std::uint64_t offset, std::uint64_t length) override { real_->unlock(offset, length); }
    std::unique_ptr<platform::MemoryMap> map() override { return real_->map(); }

   private:
    std::unique_ptr<File> real_;
    std::size_t& bytesRead_;
  };
};

// Table CUTS with 20 antennas "ID000" to "ID019" of 50 rows each, PLACE counting within an antenna. 30 bytes a row.
class TextRuns : public testing::Test {
 protected:
  TextRuns() {
    setSmallestRemembered(0);
    DbfFile::create(path(), {{"ID", 'C', 12, 0}, {"PLACE", 'N', 17, 4}});
    const auto table = DbfFile::open(path());
    std::vector<unsigned char> rows;
    for (int antenna = 0; antenna < 20; ++antenna) {
      for (int place = 0; place < 50; ++place) {
        const std::vector<unsigned char> row = record(*table, idOf(antenna), place);
        rows.insert(rows.end(), row.begin(), row.end());
      }
    }
    table->append(rows.data(), 1000);
    age(std::chrono::milliseconds(3600123));
  }
  ~TextRuns() override { setSmallestRemembered(formerSmallest_); }

  static std::string idOf(int antenna) { return (antenna < 10 ? "ID00" : "ID0") + std::to_string(antenna); }
  static std::vector<unsigned char> record(const DbfFile& table, const std::string& id, int place) {
    std::vector<unsigned char> bytes = table.blankRecord();
    table.put(bytes.data(), 0, id);
    table.put(bytes.data(), 1, place);
    return bytes;
  }
  std::string path() const { return folder_.file("CUTS.DBF"); }
  // The last change was at least so long ago, at a time that no other file here has. At no full second where `by` is
  // none.
  void age(std::chrono::milliseconds by) const {
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
  static void wait(int milliseconds) { MeasuredPlatform::now += milliseconds; }
  // The file has been looked at, stands still, and is known.
  void learn() {
    count(isUpper("NONE"));
    wait(5000);
    count(isUpper("NONE"));
  }
  template <class Work>
  void inAnotherProgram(Work work) const {
    ASSERT_EQ(test::exitCode(test::startChild([&] {
                work(*DbfFile::open(path()));
                return true;
              })),
              0);
  }

  static constexpr std::size_t kAll = 30000;
  MeasuredPlatform machine_;

 private:
  platform::Substitute use_{machine_};
  test::TempFolder folder_;
  std::uint64_t formerSmallest_ = smallestRemembered();
};

TEST_F(TextRuns, TheNextQuestionReadsTheRowsOfItsTextAlone) {
  EXPECT_GT(cost(isUpper("ID003")), kAll);
  wait(200);
  EXPECT_GT(cost(isUpper("ID003")), kAll);
  EXPECT_LT(cost(isUpper("ID017")), kAll / 4);
  const RecordsetPtr rows = open(isUpper("ID017"), " order by place desc");
  EXPECT_EQ(rows->rowCount(), 50);
  EXPECT_EQ(rows->value("ID").text(), "ID017       ");
  EXPECT_EQ(rows->value("PLACE"), Value(49));
}

TEST_F(TextRuns, AFileThatHasJustBeenLookedAtForTheFirstTimeIsNotTrusted) {
  for (int question = 0; question < 3; ++question) {
    EXPECT_GT(cost(isUpper("ID003")), kAll);
    wait(33);
  }
  EXPECT_EQ(count(isUpper("ID003")), 50);
}

TEST_F(TextRuns, WhereTimesAreWholeSecondsTheFileHasToStandForLonger) {
  age(std::chrono::hours(1));
  EXPECT_GT(cost(isUpper("ID003")), kAll);
  wait(2000);
  EXPECT_GT(cost(isUpper("ID003")), kAll);
  EXPECT_GT(cost(isUpper("ID003")), kAll);
  wait(200);
  EXPECT_GT(cost(isUpper("ID003")), kAll);
  EXPECT_LT(cost(isUpper("ID003")), kAll / 4);
}

TEST_F(TextRuns, AChangeOfAnotherProgramIsSeenByTheNextQuestion) {
  learn();
  EXPECT_EQ(count(isUpper("ID003")), 50);
  inAnotherProgram(
      [](DbfFile& table) { table.update(999, [&](unsigned char* row) { table.put(row, 0, Value("ID003")); }); });
  EXPECT_EQ(count(isUpper("ID003")), 51);
  EXPECT_EQ(count(isUpper("ID019")), 49);
}

TEST_F(TextRuns, ACursorThatIsOpenSeesItAtItsRequery) {
  learn();
  const RecordsetPtr rows = open(isUpper("ID003"));
  inAnotherProgram(
      [](DbfFile& table) { table.update(0, [&](unsigned char* row) { table.put(row, 0, Value("ID003")); }); });
  rows->Requery();
  EXPECT_EQ(rows->rowCount(), 51);
}

TEST_F(TextRuns, RowsThatAnotherProgramAddsAndDeletesAreSeen) {
  learn();
  inAnotherProgram([](DbfFile& table) {
    table.append(record(table, "ID003", 50).data());
    table.append(record(table, "NEW", 0).data());
    table.markDeleted(0);
  });
  EXPECT_EQ(count(isUpper("ID003")), 51);
  EXPECT_EQ(count(isUpper("NEW")), 1);
  EXPECT_EQ(count(isUpper("ID000")), 49);
}

TEST_F(TextRuns, WhatThisProgramWritesIsSeen) {
  learn();
  const RecordsetPtr rows = open(isUpper("ID003"));
  rows->Edit();
  rows->put("ID", "ID004");
  rows->Update();
  rows->AddNew();
  rows->put("ID", "NEW");
  rows->Update();
  rows->MoveNext();
  rows->Delete();
  EXPECT_EQ(count(isUpper("ID003")), 48);
  EXPECT_EQ(count(isUpper("ID004")), 51);
  EXPECT_EQ(count(isUpper("NEW")), 1);
}

TEST_F(TextRuns, WhatThisProgramHasWrittenIsKnownAfterOneQuestion) {
  learn();
  const RecordsetPtr rows = open(isUpper("ID003"));
  rows->Edit();
  rows->put("PLACE", 77);
  rows->Update();
  wait(5000);
  EXPECT_GT(cost(isUpper("ID003")), kAll);
  EXPECT_LT(cost(isUpper("ID004")), kAll / 4);
}

TEST_F(TextRuns, AFileInThePlaceOfTheTableIsReadAnew) {
  learn();
  EXPECT_EQ(count(isUpper("ID003")), 50);
  const std::string other = path() + ".new";
  DbfFile::create(other, {{"ID", 'C', 12, 0}, {"PLACE", 'N', 17, 4}});
  {
    const auto table = DbfFile::open(other);
    table->append(record(*table, "ID003", 1).data());
  }
  platform::current().rename(other, path());
  EXPECT_EQ(count(isUpper("ID003")), 1);
  EXPECT_EQ(count(isUpper("ID004")), 0);
}

TEST_F(TextRuns, ATextIsFoundInEveryCaseAndWithWhateverBehindIt) {
  inAnotherProgram([](DbfFile& table) {
    table.update(100, [&](unsigned char* row) { table.put(row, 0, Value("Id003")); });
    table.update(200, [](unsigned char* row) { std::copy_n("ID003\0rest  ", 12, row + 1); });
    table.update(300, [](unsigned char* row) { std::copy_n("ID003  \0    ", 12, row + 1); });
    table.update(400, [](unsigned char* row) { std::copy_n(" ID003      ", 12, row + 1); });
  });
  age(std::chrono::milliseconds(1800123));
  const std::vector<std::string> questions = {"ucase(id) = 'ID003'", "id = 'ID003'",         "id = 'Id003'",
                                              "id = 'id003'",        "ucase(id) = 'id003'",  "id = 'ID003  '",
                                              "id = ' ID003'",       "'ID003' = ucase([ID])"};
  std::vector<long> whole, known;
  for (const std::string& question : questions) whole.push_back(count(question));
  learn();
  for (const std::string& question : questions) {
    EXPECT_LT(cost(question), kAll / 4) << question;
    known.push_back(count(question));
  }
  EXPECT_THAT(whole, ElementsAre(53, 52, 1, 0, 0, 52, 1, 53));
  EXPECT_EQ(known, whole);
}

TEST_F(TextRuns, TheOtherConditionsHoldToo) {
  learn();
  EXPECT_EQ(count("ucase(id) = 'ID003' and place < 10"), 10);
  EXPECT_EQ(count("place < 10 and ucase(id) = 'ID003'"), 10);
  EXPECT_EQ(count("ucase(id) = 'ID003' or place = 7"), 69);
  EXPECT_EQ(count("ucase(id) = 'ID003' and id = 'ID004'"), 0);
}

TEST_F(TextRuns, EachFieldHasNotesOfItsOwn) {
  const std::string other = path();
  platform::current().remove(other);
  DbfFile::create(other, {{"ID", 'C', 12, 0}, {"NAME", 'C', 12, 0}});
  {
    const auto table = DbfFile::open(other);
    std::vector<unsigned char> row = table->blankRecord();
    table->put(row.data(), 0, Value("A"));
    table->put(row.data(), 1, Value("B"));
    table->append(row.data());
  }
  age(std::chrono::milliseconds(3600123));
  learn();
  EXPECT_EQ(count("ucase(name) = 'B'"), 1);
  EXPECT_EQ(count("ucase(name) = 'A'"), 0);
  EXPECT_EQ(count("ucase(id) = 'B'"), 0);
  EXPECT_EQ(count("ucase(id) = 'A'"), 1);
}

TEST_F(TextRuns, RowsOfOneTextThatStandApartAreFoundInTheOrderOfTheFile) {
  inAnotherProgram([](DbfFile& table) {
    for (const std::uint32_t row : {900U, 10U, 500U}) {
      table.update(row, [&](unsigned char* bytes) { table.put(bytes, 0, Value("APART")); });
    }
  });
  age(std::chrono::milliseconds(1800123));
  learn();
  const RecordsetPtr rows = open("id = 'APART'");
  std::vector<double> places;
  for (; !rows->Eof(); rows->MoveNext()) places.push_back(rows->value("PLACE").number());
  EXPECT_THAT(places, ElementsAre(10, 0, 0));
  EXPECT_EQ(count("id = 'ID000'"), 49);
}

TEST_F(TextRuns, AFileWithoutATimeIsReadWhole) {
  std::filesystem::last_write_time(platform::current().toMachine(path()),
                                   std::filesystem::file_time_type::clock::from_sys(std::chrono::sys_seconds()));
  learn();
  EXPECT_GT(cost(isUpper("ID003")), kAll);
  EXPECT_EQ(count(isUpper("ID003")), 50);
}

TEST_F(TextRuns, AReadingThatEndsEarlyTeachesNothing) {
  count(isUpper("NONE"));
  wait(5000);
  scanForText(*DbfFile::open(path()), {1, 12, "ID003"}, [](std::uint32_t, const unsigned char*) { return false; });
  EXPECT_EQ(count(isUpper("ID019")), 50);
}

TEST_F(TextRuns, SmallTablesAreReadWhole) {
  setSmallestRemembered(kAll * 2);
  learn();
  EXPECT_GT(cost(isUpper("ID003")), kAll);
  EXPECT_EQ(count(isUpper("ID003")), 50);
}

TEST_F(TextRuns, ATableOfAllDifferentTextsIsStillAnsweredRightly) {
  constexpr std::uint32_t kRows = 300000;
  {
    const auto table = DbfFile::open(path());
    std::vector<unsigned char> rows;
    for (std::uint32_t i = 0; i < kRows; ++i) {
      const std::vector<unsigned char> row = record(*table, "X" + std::to_string(i), 0);
      rows.insert(rows.end(), row.begin(), row.end());
    }
    table->append(rows.data(), kRows);
  }
  age(std::chrono::milliseconds(1800123));
  learn();
  EXPECT_EQ(count(isUpper("X0")), 1);
  EXPECT_EQ(count(isUpper("X299999")), 1);
  EXPECT_EQ(count(isUpper("ID007")), 50);
}

TEST_F(TextRuns, ATableThatHasNoRowsYetIsAskedAgain) {
  platform::current().remove(path());
  DbfFile::create(path(), {{"ID", 'C', 12, 0}, {"PLACE", 'N', 17, 4}});
  age(std::chrono::milliseconds(3600123));
  learn();
  EXPECT_EQ(count(isUpper("ID003")), 0);
  inAnotherProgram([](DbfFile& table) { table.append(record(table, "ID003", 1).data()); });
  EXPECT_EQ(count(isUpper("ID003")), 1);
}

}  // namespace
}  // namespace vantrelix
