// A system that has no thread to give.
#pragma once

#include <gtest/gtest.h>
#include <pthread.h>
#include <system_error>
#include <thread>

namespace vantrelix::test {

// While one lives: threads are asked for with more room than any address space has.
class NoThreads {
 public:
  NoThreads() {
    pthread_attr_t none;
    ::pthread_getattr_default_np(&former_);
    ::pthread_getattr_default_np(&none);
    EXPECT_EQ(::pthread_attr_setstacksize(&none, std::size_t{1} << 60), 0);
    EXPECT_EQ(::pthread_setattr_default_np(&none), 0);
    ::pthread_attr_destroy(&none);
    EXPECT_THROW(std::thread([] {}).join(), std::system_error);
  }
  ~NoThreads() {
    EXPECT_EQ(::pthread_setattr_default_np(&former_), 0);
    ::pthread_attr_destroy(&former_);
  }
  NoThreads(const NoThreads&) = delete;
  NoThreads& operator=(const NoThreads&) = delete;

 private:
  pthread_attr_t former_;
};

}  // namespace vantrelix::test
