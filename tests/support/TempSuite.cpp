#include "support/TempSuite.h"

#include "foundation/errHand.h"
#include "foundation/hostProgram.h"
#include "foundation/suitePaths.h"

namespace vantrelix::test {

TempSuite::TempSuite() {
  resetSuitePaths();
  resetTechSupFile();
  setSuiteDir(folder_.path());
  setUserLogin("");
  setHostProgram({"testhost", 1, 2, 3});
  formerPort_ = setMessagePort([this](const Message& message) {
    messages.push_back(message);
    if (answers.empty()) return defaultAnswer(message);
    const MsgAnswer answer = answers.front();
    answers.pop_front();
    return answer;
  });
}

TempSuite::~TempSuite() {
  setMessagePort(std::move(formerPort_));
  while (currentProcedure() != 0) ProcExit();
  setUserLogin("");
  setSuiteDir("");
  resetSuitePaths();
  resetTechSupFile();
}

}  // namespace vantrelix::test
