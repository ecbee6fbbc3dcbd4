#include "dialogs/PrtOutUtils.h"

#include "foundation/extract.h"
#include "foundation/getINI.h"
#include "foundation/messages.h"
#include "foundation/suitePaths.h"
#include "foundation/text.h"
#include "platform/Platform.h"
#include "platform/RunTimeFailure.h"

namespace vantrelix {

namespace {

constexpr const char* kSection = "CONFIG";
constexpr const char* kKey = "PrintProgram";

std::string& sharedName() {
  static std::string name;
  return name;
}

std::string printProgram() {
  std::string name;
  getINI(kSection, kKey, getSuiteINI(), "", name);
  if (getLenTrim(name) > 0) return trim(name);
  if (getLenTrim(sharedName()) == 0) sharedName() = "NOTEPAD";
  return sharedName();
}

void showNotStarted(const std::string& program, const std::string& file, const std::string& reason) {
  std::string text = "The program that prints text files could not be started: ";
  text += displayPath(program) + kLineBreak + reason + kBlankLine;
  text += std::string("The text to print is in the file") + kLineBreak + displayPath(file) + kBlankLine;
  text += std::string("To print with another program, name it under the key \"") + kKey + "\" in section \"" +
          kSection + "\" of the file" + kLineBreak + displayPath(getSuiteINI());
  MsgBox({"Print", text, MsgButtons::ok, MsgIcon::exclamation, 1});
}

}  // namespace

void setPrintProgram(const std::string& program) { sharedName() = trim(program); }

void PrtOutUtils(const std::string& file, const std::string& /*mode*/) {
  const std::string program = printProgram();
  try {
    platform::current().runProgram(program, {platform::current().toMachine(file)});
  } catch (const RunTimeFailure& failure) {
    showNotStarted(program, file, failure.description());
  }
}

}  // namespace vantrelix
