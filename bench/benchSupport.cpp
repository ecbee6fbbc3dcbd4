#include "benchSupport.h"

#include <cstdlib>
#include <ctime>
#include <fcntl.h>
#include <fstream>
#include <stdexcept>
#include <sys/utsname.h>
#include <thread>
#include <unistd.h>
#include <vector>

namespace vantrelix::bench {

namespace {

std::string processorName() {
  std::ifstream lines("/proc/cpuinfo");
  for (std::string line; std::getline(lines, line);) {
    const std::size_t colon = line.find(": ");
    if (line.rfind("model name", 0) == 0 && colon != std::string::npos) return line.substr(colon + 2);
  }
  return "unknown processor";
}

std::string systemName() {
  utsname name{};
  return ::uname(&name) == 0 ? std::string(name.sysname) + " " + name.release : "unknown system";
}

Clock chosenClock = Clock::wall;

double now(clockid_t clock) {
  timespec time{};
  ::clock_gettime(clock, &time);
  return 1e3 * static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_nsec) / 1e6;
}

}  // namespace

Time timeOf(const std::function<void()>& work) {
  const double wall = now(CLOCK_MONOTONIC), processor = now(CLOCK_PROCESS_CPUTIME_ID);
  work();
  return {now(CLOCK_MONOTONIC) - wall, now(CLOCK_PROCESS_CPUTIME_ID) - processor};
}

Clock clockInUse() { return chosenClock; }

void setClock(Clock clock) { chosenClock = clock; }

double measured(const std::function<void()>& work) {
  const clockid_t clock = chosenClock == Clock::wall ? CLOCK_MONOTONIC : CLOCK_PROCESS_CPUTIME_ID;
  const double start = now(clock);
  work();
  return now(clock) - start;
}

void readFromDisk(const std::filesystem::path& file) {
  const int descriptor = ::open(file.c_str(), O_RDONLY | O_CLOEXEC);
  require(descriptor >= 0, "cannot open " + file.string());
  std::vector<char> buffer(std::size_t{1} << 20);
  ::fsync(descriptor);  // what is not on the disk stays in the cache
  ::posix_fadvise(descriptor, 0, 0, POSIX_FADV_DONTNEED);
  while (::read(descriptor, buffer.data(), buffer.size()) > 0) {
  }
  ::close(descriptor);
}

void require(bool holds, const std::string& what) {
  if (!holds) throw std::runtime_error(what);
}

std::string machineName() {
  return processorName() + ", " + std::to_string(std::thread::hardware_concurrency()) + " cores, " + systemName();
}

WorkFolder::WorkFolder(const std::string& named, const std::string& stem) : temporary_(named.empty()) {
  std::string pattern = (std::filesystem::temp_directory_path() / (stem + "XXXXXX")).string();
  if (temporary_) require(::mkdtemp(pattern.data()) != nullptr, "there is no place for temporary files");
  path_ = temporary_ ? std::filesystem::path(pattern) : std::filesystem::absolute(named);
  std::filesystem::create_directories(path_);
}

WorkFolder::~WorkFolder() {
  std::error_code ignored;
  if (temporary_) std::filesystem::remove_all(path_, ignored);
}

}  // namespace vantrelix::bench
