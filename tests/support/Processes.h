// Child processes of a test, and what they share with it.
#pragma once

#include <csignal>
#include <cstdlib>
#include <exception>
#include <fcntl.h>
#include <functional>
#include <new>
#include <string>
#include <sys/mman.h>
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

// A process that is killed with the object, unless it has ended before.
class Child {
 public:
  explicit Child(const std::function<bool()>& work) : id_(startChild(work)) {}
  ~Child() { kill(); }
  Child(const Child&) = delete;
  Child& operator=(const Child&) = delete;

  void kill() {
    if (id_ <= 0) return;
    ::kill(id_, SIGKILL);
    wait();
  }
  // A child that has made a group of its own, and all that it has started.
  void killGroup() {
    ::kill(-id_, SIGKILL);
    wait();
  }
  // Waits for its end; its exit code, -1 where it was killed.
  int wait() {
    const int code = exitCode(id_);
    id_ = 0;
    return code;
  }

 private:
  pid_t id_;
};

// A value that this process and the children it starts from then on see and change together; for atomics.
template <class T>
class SharedMemory {
 public:
  SharedMemory() {
    void* const place = ::mmap(nullptr, sizeof(T), PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0);
    if (place == MAP_FAILED) throw std::bad_alloc();
    value_ = new (place) T{};
  }
  ~SharedMemory() { ::munmap(value_, sizeof(T)); }
  SharedMemory(const SharedMemory&) = delete;
  SharedMemory& operator=(const SharedMemory&) = delete;

  T* operator->() const { return value_; }
  T& operator*() const { return *value_; }

 private:
  T* value_;
};

// Locks of bytes as any other program takes them, by the system's own call.
class RawLocks {
 public:
  explicit RawLocks(const std::string& machinePath) : descriptor_(::open(machinePath.c_str(), O_RDWR | O_CLOEXEC)) {}
  ~RawLocks() { ::close(descriptor_); }
  RawLocks(const RawLocks&) = delete;
  RawLocks& operator=(const RawLocks&) = delete;

  // Whether the range could be locked exclusively, at once.
  bool lock(off_t offset, off_t length) const { return set(F_WRLCK, offset, length); }
  bool lockShared(off_t offset, off_t length) const { return set(F_RDLCK, offset, length); }
  bool unlock(off_t offset, off_t length) const { return set(F_UNLCK, offset, length); }
  // Whether nobody else holds a lock of any kind in the range.
  bool isFree(off_t offset, off_t length) const {
    struct flock range = rangeOf(F_WRLCK, offset, length);
    return ::fcntl(descriptor_, F_OFD_GETLK, &range) == 0 && range.l_type == F_UNLCK;
  }
  void write(off_t offset, const std::string& bytes) const {
    if (::pwrite(descriptor_, bytes.data(), bytes.size(), offset) != static_cast<ssize_t>(bytes.size())) std::abort();
  }

 private:
  static struct flock rangeOf(short kind, off_t offset, off_t length) {
    struct flock range {};
    range.l_type = kind;
    range.l_whence = SEEK_SET;
    range.l_start = offset;
    range.l_len = length;
    return range;
  }
  bool set(short kind, off_t offset, off_t length) const {
    struct flock range = rangeOf(kind, offset, length);
    return ::fcntl(descriptor_, F_OFD_SETLK, &range) == 0;
  }

  int descriptor_;
};

}  // namespace vantrelix::test
