// tablesBench [--quick] [--markdown] [--processor] [--rounds N] [--job NAME]... [--work FOLDER] : times the table
// engine against its rivals, all of them in one run, and tells times and ratios: those of the wall clock or, for a
// machine that is busy otherwise, of the processor. A work folder keeps its libraries for the next run; without one a
// folder in the place for temporary files is used and removed.
#include <cstdio>
#include <cstdlib>
#include <exception>

#include "benchSupport.h"
#include "report.h"

namespace vantrelix::bench {
namespace {

constexpr const char* kUsage =
    "usage: tablesBench [--quick] [--markdown] [--processor] [--rounds N] [--job NAME]... [--work FOLDER]\n"
    "jobs: read first list list-points range append memory import new-id";

struct Options {
  Settings settings;
  bool markdown = false;
  std::string work;
};

void makeQuick(Settings& settings) {
  settings.sizes = {100, 1000};
  settings.idSizes = {100, 1000, 10000};
  settings.rounds = 3;
  settings.seconds = 1;
  settings.fewestRounds = 2;
  settings.tooSlow = 0.8;
  settings.appends = 100;
  settings.reads = 100;
}

Options optionsOf(int count, char** arguments) {
  Options options;
  int rounds = 0;
  for (int i = 1; i < count; ++i) {
    const std::string name = arguments[i];
    const auto value = [&] {
      require(++i < count, kUsage);
      return std::string(arguments[i]);
    };
    if (name == "--quick") {
      makeQuick(options.settings);
    } else if (name == "--markdown") {
      options.markdown = true;
    } else if (name == "--processor") {
      setClock(Clock::processor);
    } else if (name == "--rounds") {
      rounds = std::atoi(value().c_str());
      require(rounds > 0, kUsage);
    } else if (name == "--job") {
      options.settings.jobs.insert(value());
    } else if (name == "--work") {
      options.work = value();
    } else {
      require(false, kUsage);
    }
  }
  if (rounds > 0) options.settings.rounds = rounds;
  options.settings.programs = std::filesystem::absolute(arguments[0]).parent_path();
  return options;
}

void run(Options options) {
  const WorkFolder work(options.work, "tablesBench");
  options.settings.work = work.path();
  TablesRun measured(std::move(options.settings));
  measured.run();
  std::fputs(reportOf(measured, options.markdown).c_str(), stdout);
}

}  // namespace
}  // namespace vantrelix::bench

int main(int count, char** arguments) {
  try {
    vantrelix::bench::run(vantrelix::bench::optionsOf(count, arguments));
    return 0;
  } catch (const std::exception& failure) {
    std::fprintf(stderr, "tablesBench: %s\n", failure.what());
    return 1;
  }
}
