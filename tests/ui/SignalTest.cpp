#include <gtest/gtest.h>
#include <memory>
#include <string>

#include "ui/Signal.h"

namespace vantrelix {
namespace {

TEST(Signal, ListenersAreCalledInTheOrderInWhichTheyCame) {
  Signal<int> signal;
  std::string heard;
  signal.listen([&](int number) { heard += "a" + std::to_string(number); });
  signal.listen([&](int number) { heard += "b" + std::to_string(number); });
  signal(1);
  signal(2);
  EXPECT_EQ(heard, "a1b1a2b2");
}

TEST(Signal, AConnectionEndsWithItsScope) {
  Signal<> signal;
  int heard = 0;
  {
    const Connection connection = signal.connect([&] { ++heard; });
    signal();
  }
  signal();
  EXPECT_EQ(heard, 1);
}

TEST(Signal, AMovedConnectionStillListensAndEndsOnce) {
  Signal<> signal;
  int heard = 0;
  Connection kept;
  {
    Connection first = signal.connect([&] { ++heard; });
    kept = std::move(first);
  }
  signal();
  EXPECT_EQ(heard, 1);
  kept.disconnect();
  kept.disconnect();
  signal();
  EXPECT_EQ(heard, 1);
}

TEST(Signal, AConnectionMayOutliveItsSignal) {
  Connection connection;
  {
    Signal<> signal;
    connection = signal.connect([] {});
  }
  EXPECT_NO_THROW(connection.disconnect());
}

TEST(Signal, AListenerThatDisconnectsAnotherKeepsItFromBeingCalled) {
  Signal<> signal;
  Connection second;
  int heard = 0;
  signal.listen([&] { second.disconnect(); });
  second = signal.connect([&] { ++heard; });
  signal();
  EXPECT_EQ(heard, 0);
}

TEST(Signal, AListenerThatConnectsAnotherDuringACallDoesNotHaveItCalledAtOnce) {
  Signal<> signal;
  int heard = 0;
  bool added = false;
  signal.listen([&] {
    if (!std::exchange(added, true)) signal.listen([&] { ++heard; });
  });
  signal();
  EXPECT_EQ(heard, 0);
  signal();
  EXPECT_EQ(heard, 1);
}

TEST(Signal, AListenerMayDestroyTheSignalsOwner) {
  struct Owner {
    Signal<> signal;
  };
  auto owner = std::make_unique<Owner>();
  std::string heard;
  owner->signal.listen([&] {
    owner.reset();
    heard += "a";
  });
  owner->signal();
  EXPECT_EQ(heard, "a");
  EXPECT_FALSE(owner);
}

TEST(Signal, NoListenerIsCalledBehindTheOneThatDestroyedTheSignal) {
  auto signal = std::make_unique<Signal<>>();
  int heard = 0;
  signal->listen([&] { signal.reset(); });
  signal->listen([&] { ++heard; });
  (*signal)();
  EXPECT_EQ(heard, 0);
}

TEST(Signal, AListenerThatEndsWithTheSignalMayDisconnectAnother) {
  auto signal = std::make_unique<Signal<>>();
  auto second = std::make_shared<Connection>();
  const auto atEnd = [second](int* end) {
    second->disconnect();
    delete end;
  };
  signal->listen([kept = std::shared_ptr<int>(new int(0), atEnd)] {});
  *second = signal->connect([] {});
  EXPECT_NO_THROW(signal.reset());
}

}  // namespace
}  // namespace vantrelix
