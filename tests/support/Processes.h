// Child processes of a test.
#pragma once

#include <exception>
#include <functional>
#include <sys/wait.h>
#include <unistd.h>

namespace vantrelix::test {

// Starts a process that runs `work` and ends at once with 0 where that gives true. Gives its id.
inline pid_t startChild(const std::function<bool()>& work) {
  const pid_t child = ::fork();
  if (child != 0) return child;
  try {
    ::_exit(work() ? 0 : 1);
  } catch (const std::exception&) {
    ::_exit(2);
  }
}

// Waits for a child; its exit code, -1 where it did not end by itself.
inline int exitCode(pid_t child) {
  int status = 0;
  ::waitpid(child, &status, 0);
  return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

// Runs `work` in a child that has no special rights, even where the tests run as the superuser, for whom no file is
// read-only. Its exit code.
inline int runWithoutPrivilege(const std::function<bool()>& work) {
  return exitCode(startChild([&] {
    constexpr unsigned kNobody = 65534;
    if (::geteuid() == 0 && (::setgid(kNobody) != 0 || ::setuid(kNobody) != 0)) return false;
    return work();
  }));
}

}  // namespace vantrelix::test
