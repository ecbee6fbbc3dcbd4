#include "foundation/errHand.h"

#include <exception>
#include <vector>

#include "foundation/dateTime.h"
#include "foundation/extract.h"
#include "foundation/getINI.h"
#include "foundation/hostProgram.h"
#include "foundation/messages.h"
#include "foundation/suitePaths.h"
#include "foundation/text.h"
#include "platform/Platform.h"

namespace vantrelix {

namespace {

constexpr const char* kLogName = "QVTECSUP.TXT";
// Beside the host's program, while the installation folder is not known.
constexpr const char* kHostLogName = "QVTechSup.TXT";

struct Level {
  int number;
  long flag;
};

struct ProcedureStack {
  std::vector<Level> levels;
  // Levels that memory did not suffice for; their exits must not take others down.
  std::size_t lost = 0;
};

ProcedureStack& stack() {
  static ProcedureStack instance;
  return instance;
}

std::string& techSupFile() {
  static std::string path;
  return path;
}

std::string nameFile(int number) {
  const std::string digits = std::to_string(number);
  return setPathName(getSystemPath(), "QVEHPR" + std::string(digits.size() < 2 ? "0" : "") + digits + ".INI");
}

constexpr int kNameFiles = 100;  // as many as two digits tell apart

// "Name; Flag 200", or the number where no file names the procedure.
std::string levelText(const Level& level) {
  const std::string name = procedureName(level.number);
  const std::string text = name.empty() ? "Procedure: " + std::to_string(level.number) : name;
  return level.flag > 0 ? text + "; Flag " + std::to_string(level.flag) : text;
}

std::vector<std::string> levelTexts() {
  std::vector<std::string> texts;
  for (const Level& level : stack().levels) texts.push_back(levelText(level));
  return texts;
}

// The text of the exception that is being handled; blank where there is none.
std::string currentErrorText() {
  const std::exception_ptr error = std::current_exception();
  if (!error) return "";
  try {
    std::rethrow_exception(error);
  } catch (const std::exception& known) {
    return known.what();
  } catch (...) {
    return "";
  }
}

std::string errorLine(int number, const std::string& description) {
  return "Error " + std::to_string(number) + ":  " + description;
}

void logFailure(const std::string& line, const std::vector<std::string>& procedures, const std::string& detail) {
  wrtTechSupNoMak("*************************");
  wrtTechSupNoMak(line);
  wrtTechSupNoMak("Procedures:");
  for (const std::string& procedure : procedures) wrtTechSupNoMak(procedure);
  if (getLenTrim(detail) > 0) wrtTechSupNoMak("DETAIL: " + detail);
}

std::string supportText(const std::vector<std::string>& procedures) {
  std::string text;
  for (const std::string& procedure : procedures) text += procedure + kLineBreak;
  text += kLineBreak;
  text += "This information has been written to the log file";
  text += kLineBreak + displayPath(GetTechSupFile()) + kLineBreak;
  text += "Faxing or e-mailing this file to Quorvendal may be helpful in determining the cause of the error.";
  static constexpr const char* kRequests[] = {
      "Additional information you include in your email will help find the specific problem you encountered:",
      "(1) What were you trying to do (such as draw a profile or compute a coverage study)?",
      "(2) What part of the program were you in (which menu selection, etc.)?",
      "(3) Exactly when did the problem happen (e.g., right after clicking a particular button or menu)?",
      "(4) Any other details about the symptom.",
  };
  for (const char* request : kRequests) text.append(kBlankLine).append(request);
  return text;
}

}  // namespace

void ProcEnter(int number) {
  try {
    stack().levels.push_back({number, 0});
  } catch (const std::exception&) {
    ++stack().lost;
  }
}

void SetFlag(long value) {
  if (stack().lost == 0 && !stack().levels.empty()) stack().levels.back().flag = value;
}

long GetFlag() { return stack().levels.empty() ? 0 : stack().levels.back().flag; }

void ProcExit() {
  if (stack().lost > 0) {
    --stack().lost;
  } else if (!stack().levels.empty()) {
    stack().levels.pop_back();
  }
}

int currentProcedure() { return stack().levels.empty() ? 0 : stack().levels.back().number; }

Procedure::Procedure(int number) { ProcEnter(number); }
Procedure::~Procedure() { ProcExit(); }

std::string procedureName(int number) {
  std::string name;
  for (int file = 0; file < kNameFiles && getLenTrim(name) == 0; ++file) {
    const std::string path = nameFile(file);
    if (file > 0 && !getFileExistLEN(path, true)) break;
    getINI("PROC", std::to_string(number), path, "", name);
  }
  name = trim(name);
  return name == ":" ? "" : name;
}

void ErrHand(int number, const std::string& description, const std::string& detail, bool quiet) {
  const std::string line = errorLine(number, getLenTrim(description) > 0 ? description : currentErrorText());
  const std::vector<std::string> procedures = levelTexts();
  try {
    logFailure(line, procedures, detail);
  } catch (const RunTimeFailure& unlogged) {
    // The caller gets the log's failure; what was to be logged must not get lost with it.
    throw RunTimeFailure(unlogged.number(), unlogged.description() + kLineBreak + line);
  }
  if (number == 0 || quiet) return;
  MsgBox({"Error in " + upperCase(hostProgram().name), line + kBlankLine + supportText(procedures), MsgButtons::ok,
          MsgIcon::critical, 1});
}

void ErrHand(const RunTimeFailure& failure, const std::string& detail, bool quiet) {
  ErrHand(failure.number(), failure.description(), detail, quiet);
}

void ErrHand(const std::exception& failure, const std::string& detail, bool quiet) {
  if (const auto* known = dynamic_cast<const RunTimeFailure*>(&failure)) {
    ErrHand(*known, detail, quiet);
    return;
  }
  ErrHand(failure::internalError, failure.what(), detail, quiet);
}

std::string modErrStr(const RunTimeFailure& failure, std::string_view prefix) {
  if (failure.number() == 0) return "";
  const std::string text = "Error " + std::to_string(failure.number()) + ": " + failure.description();
  return getLenTrim(prefix) == 0 ? text : std::string(prefix) + kLineBreak + text;
}

void wrtTechSupNoMak(const std::string& text, bool withHeader) {
  std::string record = generalDate(platform::current().now()) + ":  " + text;
  if (withHeader) {
    const HostProgram host = hostProgram();
    record += "  (" + host.name + " " + std::to_string(host.major) + "." + std::to_string(host.minor) + "." +
              std::to_string(host.revision) + ")";
  }
  record += std::string(kLineBreak) + " " + kLineBreak;
  // One write, so that the records of two programs never mix.
  platform::current().open(GetTechSupFile(), platform::OpenMode::append)->append(record.data(), record.size());
}

void logQuietly(const std::string& text) {
  try {
    wrtTechSupNoMak(text);
  } catch (const RunTimeFailure&) {
    // There is no further place to tell it.
    return;
  }
}

std::string GetTechSupFile() {
  if (!techSupFile().empty()) return techSupFile();
  const std::string folder = getSuiteDir();
  // Not kept: the folder may become known.
  if (getLenTrim(folder) == 0) return setPathName(hostFolder(), kHostLogName);
  return techSupFile() = setPathName(folder, kLogName);
}

void resetTechSupFile() { techSupFile().clear(); }

}  // namespace vantrelix
