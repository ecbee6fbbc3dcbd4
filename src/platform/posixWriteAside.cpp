#include "platform/posixWriteAside.h"

#ifndef _WIN32

#include <array>
#include <cerrno>
#include <sched.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

#include "platform/posixFile.h"
#include "platform/posixSignals.h"

namespace vantrelix::platform::posix {

namespace {

struct Order {
  int descriptor;
  const void* bytes;
  std::size_t count;
  off_t offset;
  long result;
  int error;
};

// Runs in the other process, in this one's memory: nothing but calls, and nothing that a sanitizer would watch. Who
// kills this program's whole group reaches the other process before it writes or not at all.
__attribute__((no_sanitize("address", "undefined"))) int carryOut(void* given) {
  Order& order = *static_cast<Order*>(given);
  ::syscall(SYS_setpgid, 0, 0);
  do {
    order.result = ::syscall(SYS_pwrite64, order.descriptor, order.bytes, order.count, order.offset);
    order.error = errno;
  } while (order.result < 0 && order.error == EINTR);
  return 0;
}

}  // namespace

// The system looks for a kill between two pages of a write. A process of its own is not killed with this one; it shares
// memory, and open files with their locks, which so outlive this program too. This thread sleeps until it is done.
ssize_t writeAside(int descriptor, const void* bytes, std::size_t count, off_t offset) {
  Order order{descriptor, bytes, count, offset, -1, EINTR};
  alignas(16) std::array<char, 16384> stack;
  const SignalsHeldBack heldBack;  // no handler of this program's may run in the other process
  // Without a signal at its end nobody but the waitpid below hears of it.
  const int child = ::clone(carryOut, stack.data() + stack.size(), CLONE_VM | CLONE_VFORK, &order);
  if (child < 0) return retry([&] { return ::pwrite(descriptor, bytes, count, offset); });
  retry([&] { return ::waitpid(child, nullptr, __WALL); });
  errno = order.error;
  return order.result;
}

}  // namespace vantrelix::platform::posix

#endif
