#include "cli/Session.h"

#include "foundation/extract.h"
#include "foundation/suitePaths.h"
#include "foundation/text.h"
#include "platform/Platform.h"
#include "platform/RunTimeFailure.h"

namespace vantrelix::cli {

namespace {

constexpr struct {
  MsgButtons buttons;
  const char* text;
} kButtonTexts[] = {
    {MsgButtons::ok, "OK"},
    {MsgButtons::okCancel, "OK/Cancel"},
    {MsgButtons::abortRetryIgnore, "Abort/Retry/Ignore"},
    {MsgButtons::yesNoCancel, "Yes/No/Cancel"},
    {MsgButtons::yesNo, "Yes/No"},
    {MsgButtons::retryCancel, "Retry/Cancel"},
};

constexpr struct {
  MsgAnswer answer;
  const char* text;
} kAnswerTexts[] = {
    {MsgAnswer::ok, "OK"},       {MsgAnswer::cancel, "Cancel"}, {MsgAnswer::abort, "Abort"},
    {MsgAnswer::retry, "Retry"}, {MsgAnswer::ignore, "Ignore"}, {MsgAnswer::yes, "Yes"},
    {MsgAnswer::no, "No"},
};

std::string buttonsText(MsgButtons buttons) {
  for (const auto& row : kButtonTexts) {
    if (row.buttons == buttons) return row.text;
  }
  return "";
}

std::string answerText(MsgAnswer answer) {
  for (const auto& row : kAnswerTexts) {
    if (row.answer == answer) return row.text;
  }
  return "";
}

ScriptedDesktop::Policy policyOf(const std::string& assume) {
  using Assume = ScriptedDesktop::Assume;
  if (assume == "yes") return ScriptedDesktop::assume(Assume::yes);
  return ScriptedDesktop::assume(assume == "cancel" ? Assume::cancel : Assume::no);
}

std::string forTerminal(const std::string& text) { return replaceAll(text, "\r\n", "\n"); }

}  // namespace

void Session::fail(const std::string& reason) { failure_ = AddALine(failure_, reason, "\n"); }

std::string Session::failureShown(std::size_t from) const {
  for (std::size_t i = from; i < desktop_.shown().size(); ++i) {
    const Message& message = desktop_.shown()[i].message;
    const bool failure = message.title.starts_with("Error in ") || message.title == "Antenna File Error";
    if (failure) return message.text.substr(0, message.text.find(kBlankLine));
  }
  return "";
}

void Session::useSuite() const {
  std::string folder = suite;
  if (folder.empty()) folder = platform::current().environment("VANTRELIX_SUITE").value_or("");
  if (folder.empty()) return;
  setSuiteDir(pathFromCommandLine(folder));
}

void Session::needSuite() const {
  const std::string folder = getSuiteDir();
  if (getLenTrim(folder) == 0) {
    throw Refused(
        "No installation folder is known. Name it with --suite DIR or in the environment variable VANTRELIX_SUITE; "
        "\"vantrelix suite init DIR\" makes one.");
  }
  if (!platform::current().folderExists(folder)) {
    throw Refused("The installation folder does not exist: " + displayPath(folder) +
                  "\n\"vantrelix suite init DIR\" makes one.");
  }
}

void Session::progress(const std::string& line) {
  if (!errIsTerminal_ || json) return;
  err_ << "\r\x1b[K" << line << std::flush;
  progressShown_ = true;
}

int Session::run() {
  desktop_.policy = policyOf(assume);
  DesktopInUse inUse(desktop_);
  try {
    useSuite();
    job();
  } catch (const Refused& refusal) {
    fail(refusal.what());
  } catch (const RunTimeFailure& error) {
    fail("Error " + std::to_string(error.number()) + ": " + error.description());
  } catch (const std::exception& error) {
    fail(std::string("Error 51: ") + error.what());
  }
  if (progressShown_) err_ << "\r\x1b[K";
  json ? writeDocument() : writeText();
  return failure_.empty() ? 0 : 1;
}

Json Session::messages() const {
  Json list = Json::array();
  for (const ScriptedDesktop::Shown& shown : desktop_.shown()) {
    list.push_back({{"title", shown.message.title},
                    {"text", shown.message.text},
                    {"buttons", buttonsText(shown.message.buttons)},
                    {"answer", answerText(shown.answer)}});
  }
  return list;
}

void Session::writeDocument() {
  // A procedure's own text, or that it gave none, stays as it is.
  if (!failure_.empty() && !document.contains("error")) document["error"] = failure_;
  document["messages"] = messages();
  // Text of damaged files may hold anything; a reader of JSON must still be able to read it.
  out_ << document.dump(2, ' ', false, Json::error_handler_t::replace) << '\n';
  writeFailure();
}

void Session::writeText() {
  out_ << forTerminal(text.str());
  for (const ScriptedDesktop::Shown& shown : desktop_.shown()) {
    err_ << shown.message.title << ":\n" << forTerminal(shown.message.text) << '\n';
    if (shown.message.buttons != MsgButtons::ok) err_ << "(answered " << answerText(shown.answer) << ")\n";
  }
  writeFailure();
}

void Session::writeFailure() {
  if (!failure_.empty()) err_ << "vantrelix: " << forTerminal(failure_) << '\n';
}

std::string pathFromCommandLine(const std::string& path) {
  platform::Platform& system = platform::current();
  return system.absolute(system.fromMachine(path));
}

std::string counted(std::size_t count, const std::string& what) {
  return std::to_string(count) + " " + what + (count == 1 ? "" : "s");
}

}  // namespace vantrelix::cli
