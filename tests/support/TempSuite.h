// An installation folder of its own for one test: QVZOR32.INI, QVDEFAULTS.INI and the data folders appear in it as the
// library makes them. Messages are kept and answered from a queue.
#pragma once

#include <deque>
#include <vector>

#include "foundation/messages.h"
#include "support/TempFolder.h"

namespace vantrelix::test {

class TempSuite {
 public:
  TempSuite();
  ~TempSuite();

  const TempFolder& folder() const { return folder_; }
  std::string path() const { return folder_.path(); }
  std::string file(std::string_view name) const { return folder_.file(name); }
  // The support log so far; empty where none was written.
  std::string log() const { return folder_.exists("QVTECSUP.TXT") ? folder_.read("QVTECSUP.TXT") : std::string(); }

  // Messages shown, in order, and the answers to come (the default button where the queue is empty).
  std::vector<Message> messages;
  std::deque<MsgAnswer> answers;

 private:
  TempFolder folder_;
  MessagePort formerPort_;
};

}  // namespace vantrelix::test
