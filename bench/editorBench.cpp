// editorBench [--antennas N]... [--work FOLDER] : times the antenna editor over libraries of N antennas, 360 points in
// each cut, through its models without a window. A work folder keeps its libraries for the next run; without one a
// folder in the place for temporary files is used and removed.
#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <exception>
#include <filesystem>
#include <functional>
#include <optional>
#include <random>
#include <stdexcept>
#include <string>
#include <vector>

#include "antenna/hdWrtAntDBF.h"
#include "antenna/makeAntFiles.h"
#include "editor/frmHDAntEditor.h"
#include "foundation/suitePaths.h"
#include "foundation/text.h"
#include "platform/Platform.h"
#include "tables/installSuite.h"
#include "ui/ScriptedDesktop.h"

namespace vantrelix {
namespace {

constexpr const char* kCode = "BENCH";
constexpr const char* kLibrary = "AMSBENCH.DBF";
constexpr std::int16_t kPoints = 360;
constexpr int kClicks = 100;
constexpr const char* kEditor = " ";

// Milliseconds. Those of the processor tell what a busy machine adds to the wall clock's.
struct Time {
  double wall = 0;
  double processor = 0;
};

Time timeOf(const std::function<void()>& work) {
  const std::clock_t used = std::clock();
  const auto start = std::chrono::steady_clock::now();
  work();
  const std::chrono::duration<double, std::milli> wall = std::chrono::steady_clock::now() - start;
  return {wall.count(), 1000.0 * static_cast<double>(std::clock() - used) / CLOCKS_PER_SEC};
}

void tell(int antennas, const char* what, Time time) {
  std::printf("%6d  %-40s %9.2f %9.2f\n", antennas, what, time.wall, time.processor);
  std::fflush(stdout);
}

void require(bool holds, const std::string& what) {
  if (!holds) throw std::runtime_error(what);
}

std::string nameOf(int antenna) {
  const std::string number = std::to_string(antenna);
  return "Panel " + std::string(5 - std::min<std::size_t>(number.size(), 5), '0') + number;
}

// Antennas in an order of names that is not that of the table.
void makeLibrary(int antennas) {
  MakeAntFiles(kCode);
  LibraryTables tables = openLibraryTables(getAntennasPath(), kCode);
  require(tables.rsAVD != nullptr, "the tables of the library cannot be made");
  std::vector<double> azimuths, elevations, gains;
  for (int i = 0; i < kPoints; ++i) {
    azimuths.push_back(i);
    elevations.push_back(i * 0.5 - 90);
    gains.push_back(12.5 - std::abs(i - 180) * 0.1);
  }
  std::vector<int> order(static_cast<std::size_t>(antennas));
  for (int i = 0; i < antennas; ++i) order[static_cast<std::size_t>(i)] = i;
  std::shuffle(order.begin(), order.end(), std::mt19937(1));
  for (const int antenna : order) {
    const std::string reason = HDwrtAntDBF(kCode, nameOf(antenna), 12.5, "dBd", kPoints, azimuths, gains, kPoints,
                                           elevations, gains, 824, 896, tables.rsAMS, tables.rsAHD, tables.rsAVD);
    require(reason.empty(), reason);
  }
}

void prepare(const std::filesystem::path& folder, int antennas) {
  const bool isNew = !std::filesystem::exists(folder / "made");
  if (isNew) {
    std::filesystem::remove_all(folder);
    std::filesystem::create_directories(folder);
  }
  const std::string library = platform::current().fromMachine(folder.string());
  if (isNew) installSuite(library);
  resetSuitePaths();
  setSuiteDir(library);
  if (!isNew) return;
  makeLibrary(antennas);
  std::filesystem::create_directory(folder / "made");
}

// A session of its own each time, as a user opens it.
Time timeOpening(std::optional<frmHDAntEditor>& form, const std::string& mode, const std::string& id, int antennas) {
  form.reset();
  form.emplace();
  const Time time = timeOf([&] { form->InitForm(kLibrary, "Bench", mode, 860, "Bench", id); });
  require(form->SessionResult != sessionResult::cancelled, "the session did not open");
  require(form->DataAMS.RecordCount() == antennas, "the library has other antennas than were written");
  return time;
}

Time timeClick(frmHDAntEditor& form, int row) {
  const Time time = timeOf([&] { form.TDBGridAMS.userSelectRow(row); });
  require(form.selectedRow() == row, "the click selected nothing");
  require(form.DataAHD.RecordCount() == kPoints && form.DataAVD.RecordCount() == kPoints, "a cut is not whole");
  return time;
}

void tellClicks(frmHDAntEditor& form, int antennas) {
  std::mt19937 random(7);
  std::uniform_int_distribution<int> anyRow(0, antennas - 1);
  std::vector<Time> times;
  for (int i = 0; i < kClicks; ++i) times.push_back(timeClick(form, anyRow(random)));
  std::sort(times.begin(), times.end(), [](Time a, Time b) { return a.wall < b.wall; });
  tell(antennas, "a click at random, median of 100", times[kClicks / 2]);
  tell(antennas, "  95th of 100", times[kClicks * 95 / 100]);
  tell(antennas, "  slowest", times.back());
}

void tellEdit(frmHDAntEditor& form, int antennas) {
  DataGrid& grid = form.TDBGridAHD;
  const int gain = form.azimuth.colGain();
  const std::string text = grid.cellText(3, gain) == "-7.250" ? "-8.250" : "-7.250";
  tell(antennas, "an edit of a pattern value",
       timeOf([&] { require(grid.userEdit(3, gain, text) && grid.update(), "the edit was refused"); }));
  tell(antennas, "the click after it", timeClick(form, antennas / 2));
}

void tellAll(int antennas) {
  std::optional<frmHDAntEditor> form;
  tell(antennas, "opening the look-up", timeOpening(form, kLookupMode, "", antennas));
  tell(antennas, "opening the look-up once more", timeOpening(form, kLookupMode, "", antennas));
  tell(antennas, "opening the editor", timeOpening(form, kEditor, "", antennas));
  tell(antennas, "the first click", timeClick(*form, antennas / 3));
  tellClicks(*form, antennas);
  const int name = form->TDBGridAMS.columnOf("ANTENNA"), low = form->TDBGridAMS.columnOf("F_LOW");
  tell(antennas, "sorting by name, a heading", timeOf([&] { form->TDBGridAMS.userHeadClick(name); }));
  tell(antennas, "sorting by low frequency, a heading", timeOf([&] { form->TDBGridAMS.userHeadClick(low); }));
  tell(antennas, "finding the last row by its typed name",
       timeOf([&] { require(form->TDBGridAMS.userFind(nameOf(antennas - 1), false), "the name was not found"); }));
  tellEdit(*form, antennas);
}

struct Options {
  std::vector<int> antennas;
  std::string work;
};

Options optionsOf(int count, char** arguments) {
  Options options;
  for (int i = 1; i + 1 < count; i += 2) {
    const std::string name = arguments[i];
    if (name == "--antennas") {
      options.antennas.push_back(std::atoi(arguments[i + 1]));
      require(options.antennas.back() > 0 && options.antennas.back() < 100000, "--antennas takes a number from 1 on");
    } else if (name == "--work") {
      options.work = arguments[i + 1];
    } else {
      throw std::runtime_error("usage: editorBench [--antennas N]... [--work FOLDER]");
    }
  }
  require(count % 2 == 1, "each option needs a value");
  if (options.antennas.empty()) options.antennas = {100, 1000, 10000};
  return options;
}

// Removed at the end where the caller named none.
class WorkFolder {
 public:
  explicit WorkFolder(const std::string& named) : path_(named), temporary_(named.empty()) {
    if (!temporary_) return;
    std::string pattern = (std::filesystem::temp_directory_path() / "editorBenchXXXXXX").string();
    require(::mkdtemp(pattern.data()) != nullptr, "there is no place for temporary files");
    path_ = pattern;
  }
  ~WorkFolder() {
    std::error_code ignored;
    if (temporary_) std::filesystem::remove_all(path_, ignored);
  }
  WorkFolder(const WorkFolder&) = delete;
  WorkFolder& operator=(const WorkFolder&) = delete;
  const std::filesystem::path& path() const { return path_; }

 private:
  std::filesystem::path path_;
  bool temporary_;
};

void run(const Options& options) {
  const WorkFolder work(options.work);
  ScriptedDesktop screen;
  const DesktopInUse use(screen);
  std::printf("%6s  %-40s %9s %9s\n", "", "", "wall ms", "CPU ms");
  for (const int antennas : options.antennas) {
    prepare(std::filesystem::absolute(work.path()) / ("library" + std::to_string(antennas)), antennas);
    tellAll(antennas);
  }
}

}  // namespace
}  // namespace vantrelix

int main(int count, char** arguments) {
  try {
    vantrelix::run(vantrelix::optionsOf(count, arguments));
    return 0;
  } catch (const std::exception& failure) {
    std::fprintf(stderr, "editorBench: %s\n", failure.what());
    return 1;
  }
}
