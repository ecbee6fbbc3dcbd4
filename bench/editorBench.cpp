// editorBench [--antennas N]... [--work FOLDER] : times the antenna editor over libraries of N antennas, 360 points in
// each cut, through its models without a window. A work folder keeps its libraries for the next run; without one a
// folder in the place for temporary files is used and removed.
#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <optional>
#include <random>
#include <stdexcept>
#include <string>
#include <vector>

#include "benchSupport.h"
#include "editor/frmHDAntEditor.h"
#include "foundation/suitePaths.h"
#include "makeLibrary.h"
#include "ui/ScriptedDesktop.h"

namespace vantrelix {
namespace {

using namespace bench;

constexpr const char* kMasterTable = "AMSBENCH.DBF";
constexpr int kClicks = 100;
constexpr const char* kEditor = " ";

void tell(int antennas, const char* what, Time time) {
  std::printf("%6d  %-40s %9.2f %9.2f\n", antennas, what, time.wall, time.processor);
  std::fflush(stdout);
}

// The editor reads the libraries of an installation.
void prepare(const std::filesystem::path& folder, int antennas) {
  const bool isNew = !std::filesystem::exists(folder / "made");
  if (isNew) std::filesystem::remove_all(folder);
  useSuite(folder);
  if (!isNew) return;
  makeLibrary(getAntennasPath(), antennas);
  std::filesystem::create_directory(folder / "made");
}

// A session of its own each time, as a user opens it.
Time timeOpening(std::optional<frmHDAntEditor>& form, const std::string& mode, const std::string& id, int antennas) {
  form.reset();
  form.emplace();
  const Time time = timeOf([&] { form->InitForm(kMasterTable, "Bench", mode, 860, "Bench", id); });
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
  times.reserve(kClicks);
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

void run(const Options& options) {
  const WorkFolder work(options.work, "editorBench");
  ScriptedDesktop screen;
  const DesktopInUse use(screen);
  std::printf("%6s  %-40s %9s %9s\n", "", "", "wall ms", "CPU ms");
  for (const int antennas : options.antennas) {
    prepare(work.path() / ("library" + std::to_string(antennas)), antennas);
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
