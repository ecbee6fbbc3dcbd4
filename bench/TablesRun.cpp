#include "TablesRun.h"

#include <chrono>
#include <cstdio>
#include <thread>

#include "benchSupport.h"
#include "makeLibrary.h"

namespace vantrelix::bench {

namespace {

using OpenLibraries = std::vector<std::unique_ptr<OpenLibrary>>;

OpenLibraries openAll(const std::vector<Contender>& contenders, const std::filesystem::path& folder) {
  OpenLibraries open;
  for (const Contender& contender : contenders) open.push_back(contender.open(folder));
  return open;
}

// A library that is new may need a moment until what is learnt of it is trusted.
void readBefore(OpenLibrary& library, const Contender& contender) {
  for (int i = 0; i < 3 && !contender.scans; ++i) {
    library.read(idAt(0));
    std::this_thread::sleep_for(std::chrono::milliseconds(100));
  }
}

double seconds(std::chrono::steady_clock::time_point since) {
  return std::chrono::duration<double>(std::chrono::steady_clock::now() - since).count();
}

}  // namespace

TablesRun::Contenders TablesRun::taking(unsigned job) {
  Contenders taking;
  for (const Contender& contender : contenders()) {
    if (contender.takesPart(job)) taking.push_back(contender);
  }
  return taking;
}

std::vector<std::string> TablesRun::titlesOf(const Contenders& contenders) {
  std::vector<std::string> titles;
  titles.reserve(contenders.size());
  for (const Contender& contender : contenders) titles.push_back(contender.title);
  return titles;
}

void TablesRun::interleave(const std::string& job, int size, const std::vector<std::string>& titles, const Work& work) {
  std::fprintf(stderr, "%s, %d", job.c_str(), size);
  const auto start = std::chrono::steady_clock::now();
  std::vector<bool> tooSlow(titles.size(), false);
  for (int round = 0; round < settings_.rounds; ++round) {
    if (round >= settings_.fewestRounds && seconds(start) > settings_.seconds) break;
    for (std::size_t i = 0; i < titles.size(); ++i) {
      const std::size_t contender = (i + static_cast<std::size_t>(round)) % titles.size();
      if (tooSlow[contender]) continue;
      const auto begin = std::chrono::steady_clock::now();
      results_.add(job, size, titles[contender], round, work(contender, round));
      tooSlow[contender] = seconds(begin) > settings_.tooSlow;
    }
    std::fputc('.', stderr);
  }
  std::fprintf(stderr, " %.1f s\n", seconds(start));
}

std::filesystem::path TablesRun::libraryFolder(int size) const {
  return settings_.work / ("library" + std::to_string(size));
}

// Each contender's files, once; those of a kept folder are used again.
void TablesRun::prepare(int size) {
  const std::filesystem::path folder = libraryFolder(size);
  std::filesystem::create_directories(folder);
  const MadeLibrary library(size);
  for (const Contender& contender : contenders()) {
    const std::filesystem::path made = folder / (contender.files[0] + ".made");
    if (!std::filesystem::exists(made)) {
      std::fprintf(stderr, "making %s of %d\n", contender.files[0].c_str(), size);
      contender.make(folder, library);
      std::filesystem::create_directory(made);
    }
    for (const std::string& file : contender.files) readFromDisk(folder / file);
  }
}

void TablesRun::runRead(int size) {
  const Contenders all = taking(job::read);
  const OpenLibraries open = openAll(all, libraryFolder(size));
  const MadeLibrary library(size);
  std::vector<MadeAntenna> sought;
  sought.reserve(static_cast<std::size_t>(settings_.reads));
  for (int i = 0; i < settings_.reads; ++i) {
    sought.push_back(library.at(static_cast<int>((static_cast<long>(i) * 7919 + size / 3) % size)));
  }
  for (std::size_t i = 0; i < all.size(); ++i) readBefore(*open[i], all[i]);
  const int scans = std::max(1, 500 / size);
  interleave(jobName::read, size, titlesOf(all), [&](std::size_t contender, int round) {
    const int reads = all[contender].scans ? scans : settings_.reads;
    double total = 0;
    for (int i = 0; i < reads; ++i) {
      const MadeAntenna& wanted = sought[static_cast<std::size_t>(i + round) % sought.size()];
      MadeAntenna antenna;
      total += measured([&] { antenna = open[contender]->read(wanted.master.id); });
      require(antenna == wanted, all[contender].title + " reads another antenna than was written");
    }
    return total / reads;
  });
}

void TablesRun::runList(int size) {
  const Contenders all = taking(job::list);
  const OpenLibraries open = openAll(all, libraryFolder(size));
  const std::vector<MasterRow> expected = MadeLibrary(size).list();
  interleave(jobName::list, size, titlesOf(all), [&](std::size_t contender, int) {
    std::vector<MasterRow> rows;
    const double time = measured([&] { rows = open[contender]->list(); });
    require(rows == expected, all[contender].title + " lists other antennas than were written");
    return time;
  });
}

void TablesRun::runPoints(int size) {
  const Contenders all = taking(job::points);
  const OpenLibraries open = openAll(all, libraryFolder(size));
  std::vector<ListedAntenna> expected;
  for (const MasterRow& row : MadeLibrary(size).list()) expected.push_back({row.id, row.description, kPoints, kPoints});
  interleave(jobName::points, size, titlesOf(all), [&](std::size_t contender, int) {
    std::vector<ListedAntenna> listed;
    const double time = measured([&] { listed = open[contender]->listWithPoints(); });
    require(listed == expected, all[contender].title + " counts other points than were written");
    return time;
  });
}

void TablesRun::runRange(int size) {
  const Contenders all = taking(job::range);
  const OpenLibraries open = openAll(all, libraryFolder(size));
  const Cut expected = MadeLibrary(size).horizontalRange();
  interleave(jobName::range, size, titlesOf(all), [&](std::size_t contender, int) {
    Cut range;
    const double time = measured([&] { range = open[contender]->horizontalRange(); });
    require(range == expected, all[contender].title + " finds another lowest or highest value");
    return time;
  });
}

void TablesRun::run() {
  useSuite(settings_.work / "suite");
  for (const int size : settings_.sizes) {
    prepare(size);
    if (wanted(jobName::read)) runRead(size);
    if (wanted(jobName::first)) runFirst(size);
    if (wanted(jobName::list)) runList(size);
    if (wanted(jobName::points)) runPoints(size);
    if (wanted(jobName::range)) runRange(size);
    if (wanted(jobName::append)) runAppend(size);
    if (wanted(jobName::memory)) runMemory(size);
  }
  if (wanted(jobName::import)) runImport();
  for (const int size : settings_.idSizes) {
    if (!wanted(jobName::newId)) break;
    runNewId(size, false);
    runNewId(size, true);
  }
}

}  // namespace vantrelix::bench
