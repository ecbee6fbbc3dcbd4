#include "benchSupport.h"

#include <cstdlib>
#include <ctime>
#include <fstream>
#include <stdexcept>
#include <sys/utsname.h>
#include <thread>

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
