// Signals kept from a thread, and from the threads and processes that it starts meanwhile. Part of the POSIX platform
// alone.
#pragma once

#ifndef _WIN32

#include <csignal>

namespace vantrelix::platform::posix {

class SignalsHeldBack {
 public:
  SignalsHeldBack() {
    sigset_t all;
    ::sigfillset(&all);
    ::pthread_sigmask(SIG_SETMASK, &all, &former_);
  }
  ~SignalsHeldBack() { ::pthread_sigmask(SIG_SETMASK, &former_, nullptr); }
  SignalsHeldBack(const SignalsHeldBack&) = delete;
  SignalsHeldBack& operator=(const SignalsHeldBack&) = delete;

 private:
  sigset_t former_{};
};

}  // namespace vantrelix::platform::posix

#endif
