// An event: any number of listeners, called in the order in which they came.
#pragma once

#include <algorithm>
#include <cstddef>
#include <functional>
#include <memory>
#include <utility>
#include <vector>

namespace vantrelix {

// Ends its connection when it goes out of scope. May outlive the signal.
class Connection {
 public:
  Connection() = default;
  explicit Connection(std::function<void()> end) : end_(std::move(end)) {}
  Connection(Connection&& other) noexcept : end_(std::exchange(other.end_, nullptr)) {}
  Connection& operator=(Connection&& other) noexcept {
    disconnect();
    end_ = std::exchange(other.end_, nullptr);
    return *this;
  }
  ~Connection() { disconnect(); }
  void disconnect() {
    if (auto end = std::exchange(end_, nullptr)) end();
  }

 private:
  std::function<void()> end_;
};

template <class... Arguments>
class Signal {
 public:
  using Listener = std::function<void(Arguments...)>;

  Signal() = default;
  Signal(const Signal&) = delete;
  Signal& operator=(const Signal&) = delete;
  // A call that is under way goes no further. The listeners end outside the list: the end of one may disconnect
  // another.
  ~Signal() { Slots().swap(*slots_); }

  // Listens for as long as the signal lives.
  void listen(Listener listener) { slots_->push_back({++lastId_, std::move(listener)}); }
  // Listens for as long as the connection lives.
  [[nodiscard]] Connection connect(Listener listener) {
    listen(std::move(listener));
    return Connection([kept = std::weak_ptr<Slots>(slots_), id = lastId_] {
      if (auto alive = kept.lock()) {
        std::erase_if(*alive, [id](const Slot& slot) { return slot.id == id; });
      }
    });
  }

  // Listeners may connect, disconnect, or destroy the signal's owner while they run.
  void operator()(Arguments... arguments) const {
    const std::shared_ptr<Slots> alive = slots_;
    const Slots copy = *alive;
    for (const Slot& slot : copy) {
      const bool still = std::any_of(alive->begin(), alive->end(), [&](const Slot& s) { return s.id == slot.id; });
      if (still) slot.listener(arguments...);
    }
  }

 private:
  struct Slot {
    std::size_t id;
    Listener listener;
  };
  using Slots = std::vector<Slot>;
  std::shared_ptr<Slots> slots_ = std::make_shared<Slots>();
  std::size_t lastId_ = 0;
};

}  // namespace vantrelix
