// The jobs of TablesRun that run in processes of their own.
#include <cstdio>
#include <cstdlib>
#include <fcntl.h>
#include <spawn.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include "TablesRun.h"
#include "benchSupport.h"

namespace vantrelix::bench {

namespace {

std::string readAll(int descriptor) {
  std::string text;
  char buffer[256];
  for (ssize_t got = 0; (got = ::read(descriptor, buffer, sizeof buffer)) > 0;) {
    text.append(buffer, static_cast<std::size_t>(got));
  }
  return text;
}

double milliseconds(const timeval& time) {
  return 1e3 * static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_usec) / 1e3;
}

struct Ended {
  std::string output;    // what it wrote to its standard output
  double processor = 0;  // milliseconds
};

// Runs a program to its end.
Ended runProgram(std::vector<std::string> command) {
  int ends[2];
  require(::pipe2(ends, O_CLOEXEC) == 0, "there is no pipe");
  posix_spawn_file_actions_t actions;
  posix_spawn_file_actions_init(&actions);
  posix_spawn_file_actions_adddup2(&actions, ends[1], STDOUT_FILENO);
  std::vector<char*> arguments;
  arguments.reserve(command.size() + 1);
  for (std::string& argument : command) arguments.push_back(argument.data());
  arguments.push_back(nullptr);
  pid_t child = 0;
  const int started = ::posix_spawn(&child, arguments[0], &actions, nullptr, arguments.data(), environ);
  posix_spawn_file_actions_destroy(&actions);
  ::close(ends[1]);
  Ended ended{started == 0 ? readAll(ends[0]) : "", 0};
  ::close(ends[0]);
  require(started == 0, "cannot start " + command[0]);
  int status = 0;
  rusage usage{};
  require(::wait4(child, &status, 0, &usage) == child && WIFEXITED(status) && WEXITSTATUS(status) == 0,
          command[0] + " failed for " + command[1]);
  ended.processor = milliseconds(usage.ru_utime) + milliseconds(usage.ru_stime);
  return ended;
}

double mebibytes(double kibibytes) { return kibibytes / 1024; }

double sizeOf(const Contender& contender, const std::filesystem::path& folder) {
  double bytes = 0;
  for (const std::string& file : contender.files)
    bytes += static_cast<double>(std::filesystem::file_size(folder / file));
  return bytes / (1024 * 1024);
}

}  // namespace

void TablesRun::runFirst(int size) {
  const Contenders all = taking(job::first);
  interleave(jobName::first, size, titlesOf(all), [&](std::size_t i, int round) {
    const Contender& contender = all[i];
    const std::string place = std::to_string((round * 7919 + size / 3) % size);
    std::vector<std::string> command{(settings_.programs / contender.program).string(), contender.name,
                                     libraryFolder(size).string(), std::to_string(size), place};
    if (clockInUse() == Clock::processor) command.emplace_back("processor");
    Ended ended;
    const Time whole = timeOf([&] { ended = runProgram(command); });
    results_.add(jobName::process, size, contender.title, round,
                 clockInUse() == Clock::processor ? ended.processor : whole.wall);
    return std::atof(ended.output.c_str());
  });
}

void TablesRun::runMemory(int size) {
  for (const Contender& contender : taking(job::memory)) {
    std::fprintf(stderr, "%s, %d: %s\n", jobName::memory, size, contender.title.c_str());
    const std::string output = runProgram({(settings_.programs / contender.program).string(), contender.name,
                                           libraryFolder(size).string(), std::to_string(size), "all"})
                                   .output;
    long peak = 0, own = 0;
    require(std::sscanf(output.c_str(), "%ld %ld", &peak, &own) == 2, contender.program + " told no memory");
    memory_.push_back({size, contender.title, sizeOf(contender, libraryFolder(size)),
                       mebibytes(static_cast<double>(peak)), mebibytes(static_cast<double>(own))});
  }
}

}  // namespace vantrelix::bench
