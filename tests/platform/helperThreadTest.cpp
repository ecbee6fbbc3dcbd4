#include <csignal>
#include <gtest/gtest.h>

#include "platform/helperThread.h"

using namespace vantrelix;

namespace {

// The signals kept from the calling thread.
sigset_t heldBack() {
  sigset_t held;
  sigemptyset(&held);
  pthread_sigmask(SIG_SETMASK, nullptr, &held);
  return held;
}

}  // namespace

TEST(HelperThread, TakesNoSignalAndLeavesThoseOfItsStarter) {
  sigset_t inside;
  sigemptyset(&inside);
  platform::startHelper([&] { inside = heldBack(); }).join();
  const sigset_t outside = heldBack();
  for (const int signal : {SIGALRM, SIGCHLD, SIGINT, SIGTERM, SIGUSR1}) {
    EXPECT_EQ(sigismember(&inside, signal), 1) << signal;
    EXPECT_EQ(sigismember(&outside, signal), 0) << signal;
  }
}
