// measure PROGRAM ARGUMENT... : runs a program and writes what it took to standard error, as one line of JSON.
//
// The peak memory of a child counts what its parent held when it was started, so a small program has to start it: the
// runner itself is larger than what it measures. The child's standard output is thrown away.
#include <cerrno>
#include <chrono>
#include <cstdio>
#include <cstring>
#include <fcntl.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

double seconds(const timeval& time) {
  return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_usec) / 1e6;
}

[[noreturn]] void become(char** command) {
  const int nowhere = ::open("/dev/null", O_WRONLY);
  if (nowhere >= 0) ::dup2(nowhere, STDOUT_FILENO);
  ::execvp(command[0], command);
  std::fprintf(stderr, "measure: %s: %s\n", command[0], std::strerror(errno));
  ::_exit(127);
}

}  // namespace

int main(int count, char** arguments) {
  if (count < 2) {
    std::fputs("usage: measure PROGRAM ARGUMENT...\n", stderr);
    return 2;
  }
  const auto start = std::chrono::steady_clock::now();
  const pid_t child = ::fork();
  if (child == 0) become(arguments + 1);
  int status = 0;
  rusage usage{};
  if (child < 0 || ::wait4(child, &status, 0, &usage) != child) {
    std::perror("measure");
    return 1;
  }
  const std::chrono::duration<double> wall = std::chrono::steady_clock::now() - start;
  std::fprintf(stderr, "{\"wall\": %.6f, \"user\": %.6f, \"system\": %.6f, \"peak_kib\": %ld}\n", wall.count(),
               seconds(usage.ru_utime), seconds(usage.ru_stime), usage.ru_maxrss);
  return WIFEXITED(status) ? WEXITSTATUS(status) : 1;
}
