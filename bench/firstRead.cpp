// firstRead CONTENDER FOLDER ANTENNAS PLACE [processor] : in a process that has read nothing before, opens the library
// and reads the antenna at that place; writes the milliseconds from just before to just behind the job. firstRead
// CONTENDER FOLDER ANTENNAS all : reads every antenna, in a shuffled order, and writes the peak of the process's memory
// and the growth of its own memory, in KiB.
//
// Built once for each contender, so that no other's libraries are loaded. Ends with 1 where an antenna differs from the
// one that was written.
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <fstream>
#include <malloc.h>

#include "Contender.h"
#include "benchSupport.h"

namespace vantrelix::bench {
namespace {

long kibOf(const std::string& name) {
  std::ifstream lines("/proc/self/status");
  for (std::string line; std::getline(lines, line);) {
    if (line.rfind(name + ":", 0) == 0) return std::atol(line.c_str() + name.size() + 1);
  }
  throw std::runtime_error("the system does not tell " + name);
}

void readOne(const Contender& contender, const std::filesystem::path& folder, const MadeAntenna& expected) {
  std::unique_ptr<OpenLibrary> library;
  MadeAntenna antenna;
  const double milliseconds = measured([&] {
    library = contender.open(folder);
    antenna = library->read(expected.master.id);
  });
  require(antenna == expected, contender.name + " reads another antenna than was written");
  std::printf("%.6f\n", milliseconds);
}

void readAll(const Contender& contender, const std::filesystem::path& folder, const MadeLibrary& made) {
  constexpr int kStep = 7919;  // shares no factor with the sizes of the libraries
  const long before = kibOf("RssAnon");
  const std::unique_ptr<OpenLibrary> library = contender.open(folder);
  std::size_t points = 0;
  for (int i = 0, place = 0; i < made.count(); ++i, place = (place + kStep) % made.count()) {
    const MadeAntenna antenna = library->read(idAt(place));
    points += antenna.horizontal.values.size() + antenna.vertical.values.size();
  }
  require(points == std::size_t{2} * kPoints * static_cast<std::size_t>(made.count()),
          contender.name + " reads too few points");
  ::malloc_trim(0);
  std::printf("%ld %ld\n", kibOf("VmHWM"), kibOf("RssAnon") - before);
}

int run(int count, char** arguments) {
  require(count == 5 || count == 6, "usage: firstRead CONTENDER FOLDER ANTENNAS PLACE|all [processor]");
  setClock(count == 6 ? Clock::processor : Clock::wall);
  const Contender& contender = contenderNamed(arguments[1]);
  const MadeLibrary made(std::atoi(arguments[3]));
  if (std::string(arguments[4]) == "all") {
    readAll(contender, arguments[2], made);
  } else {
    readOne(contender, arguments[2], made.at(std::atoi(arguments[4])));
  }
  return 0;
}

}  // namespace
}  // namespace vantrelix::bench

int main(int count, char** arguments) {
  try {
    return vantrelix::bench::run(count, arguments);
  } catch (const std::exception& failure) {
    std::fprintf(stderr, "firstRead: %s\n", failure.what());
    return 1;
  }
}
