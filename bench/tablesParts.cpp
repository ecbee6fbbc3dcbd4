// tablesParts [options of the benchmark library] : the parts of the table engine, each by itself, over a library of
// 1,000 made-up antennas.
#include <benchmark/benchmark.h>
#include <cstdio>
#include <exception>
#include <memory>

#include "antenna/libraryName.h"
#include "benchSupport.h"
#include "makeLibrary.h"
#include "platform/Platform.h"
#include "tables/DbfFile.h"
#include "tables/SqlParser.h"
#include "tables/dbfNumber.h"
#include "tables/numberDigits.h"

namespace vantrelix::bench {
namespace {

constexpr int kAntennas = 1000;

// The library in its folder, which lasts as long as the program.
class Library {
 public:
  Library() {
    useSuite(work_.path() / "suite");
    folder_ = platform::current().fromMachine(work_.path().string());
    makeLibrary(folder_, kAntennas);
  }
  const std::string& folder() const { return folder_; }
  std::string path(const std::string& table) const { return folder_ + "\\" + table + ".DBF"; }

 private:
  WorkFolder work_{"", "tablesParts"};
  std::string folder_;
};

std::unique_ptr<Library> library;

void openATable(benchmark::State& state) {
  const std::string path = library->path("AHDBENCH");
  for (auto _ : state) benchmark::DoNotOptimize(DbfFile::open(path, true));
}

void readARow(benchmark::State& state) {
  const std::shared_ptr<DbfFile> table = DbfFile::open(library->path("AHDBENCH"), true);
  std::vector<unsigned char> record(static_cast<std::size_t>(table->recordLength()));
  std::uint32_t number = 0;
  for (auto _ : state) {
    table->readRecord(number, record.data());
    for (std::size_t field = 0; field < 3; ++field) benchmark::DoNotOptimize(table->value(record.data(), field));
    number = (number + 1) % (kAntennas * kPoints);
  }
}

void parseANumber(benchmark::State& state) {
  for (auto _ : state) benchmark::DoNotOptimize(dbf::parseNumber("    -12.3400"));
}

void writeANumber(benchmark::State& state) {
  double value = -12.34;
  for (auto _ : state) {
    benchmark::DoNotOptimize(value);
    benchmark::DoNotOptimize(dbf::numberDigits(value, 12, 4));
  }
}

void scanRows(benchmark::State& state) {
  const std::shared_ptr<DbfFile> table = DbfFile::open(library->path("AHDBENCH"), true);
  for (auto _ : state) {
    long live = 0;
    table->scan([&](std::uint32_t, const unsigned char* record) {
      live += record[0] == ' ';
      return true;
    });
    if (live != long{kAntennas} * kPoints) state.SkipWithError("rows are missing");
  }
  state.SetItemsProcessed(state.iterations() * kAntennas * kPoints);
}

void searchRemembered(benchmark::State& state) {
  const DatabasePtr database = DBEngine::OpenDatabase(library->folder(), false, true, "FoxPro 2.6");
  int place = 0;
  for (auto _ : state) {
    const RecordsetPtr rows =
        database->OpenRecordset("Select * from [AHDBENCH] WHERE ATYPE_ID = '" + idAt(place) + "' ORDER BY HOR_AZ");
    if (rows->rowCount() != kPoints) state.SkipWithError("points are missing");
    place = (place + 7) % kAntennas;
  }
}

// A table of its own, so that the others keep their rows.
class Target {
 public:
  Target() : path_(library->path("TARGET")) {
    DbfFile::create(path_, {{"ATYPE_ID", 'C', 12, 0}, {"HOR_AZ", 'N', 10, 4}, {"HOR_FIELD", 'N', 12, 4}});
    table_ = DbfFile::open(path_);
  }
  DbfFile& table() { return *table_; }
  // One file may not grow beyond 2 GB.
  bool full() { return table_->recordCount() > 40000000; }

 private:
  std::string path_;
  std::shared_ptr<DbfFile> table_;
};

void appendRows(benchmark::State& state) {
  const auto count = static_cast<std::uint32_t>(state.range(0));
  Target target;
  std::vector<unsigned char> rows;
  for (std::uint32_t i = 0; i < count; ++i) {
    std::vector<unsigned char> row = target.table().blankRecord();
    target.table().put(row.data(), 0, Value(idAt(1)));
    target.table().put(row.data(), 1, Value(static_cast<double>(i)));
    target.table().put(row.data(), 2, Value(12.34));
    rows.insert(rows.end(), row.begin(), row.end());
  }
  for (auto _ : state) {
    target.table().append(rows.data(), count);
    if (!target.full()) continue;
    state.PauseTiming();
    target = Target();
    state.ResumeTiming();
  }
  state.SetItemsProcessed(state.iterations() * count);
}

void parseSqlText(benchmark::State& state) {
  for (auto _ : state) {
    benchmark::DoNotOptimize(parseSql("Select * from [AHDBENCH] WHERE ATYPE_ID = 'BENCH0000001' ORDER BY HOR_AZ"));
  }
}

void sortByDescription(benchmark::State& state) {
  const DatabasePtr database = DBEngine::OpenDatabase(library->folder(), false, true, "FoxPro 2.6");
  for (auto _ : state) {
    const RecordsetPtr rows = database->OpenRecordset("Select * from [AMSBENCH] Order by [ANTENNA] ASC");
    if (rows->rowCount() != kAntennas) state.SkipWithError("rows are missing");
  }
  state.SetItemsProcessed(state.iterations() * kAntennas);
}

BENCHMARK(openATable);
BENCHMARK(readARow);
BENCHMARK(parseANumber);
BENCHMARK(writeANumber);
BENCHMARK(scanRows);
BENCHMARK(searchRemembered);
BENCHMARK(appendRows)->Arg(1)->Arg(kPoints);
BENCHMARK(parseSqlText);
BENCHMARK(sortByDescription);

}  // namespace
}  // namespace vantrelix::bench

int main(int count, char** arguments) {
  benchmark::Initialize(&count, arguments);
  if (benchmark::ReportUnrecognizedArguments(count, arguments)) return 2;
  try {
    vantrelix::bench::library = std::make_unique<vantrelix::bench::Library>();
    benchmark::RunSpecifiedBenchmarks();
    vantrelix::bench::library.reset();
    return 0;
  } catch (const std::exception& failure) {
    std::fprintf(stderr, "tablesParts: %s\n", failure.what());
    return 1;
  }
}
