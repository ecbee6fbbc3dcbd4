// Failure reporting: the stack of active procedures, the handler and the support log.
//
// A procedure of weight holds a Procedure guard. Its number is a fixed constant; its flag tells how far it came. The
// stack is one for the process and belongs to its user-interface thread.
#pragma once

#include <string>
#include <string_view>

#include "platform/RunTimeFailure.h"

namespace vantrelix {

void ProcEnter(int number);
void SetFlag(long value);
long GetFlag();
// Harmless on an empty stack.
void ProcExit();
int currentProcedure();  // 0 on an empty stack

// Enters a procedure and leaves it on every path.
class Procedure {
 public:
  explicit Procedure(int number);
  ~Procedure();
  Procedure(const Procedure&) = delete;
  Procedure& operator=(const Procedure&) = delete;
};

// The name of a procedure from the QVEHPR??.INI files of the system folder; blank where none names it.
std::string procedureName(int number);

// Logs the failure with the stack and, unless quiet or the number is 0, shows one message. Does not stop anything.
void ErrHand(int number, const std::string& description, const std::string& detail = "", bool quiet = false);
void ErrHand(const RunTimeFailure& failure, const std::string& detail = "", bool quiet = false);
// For a failure that is not of the library's own type (out of memory, the standard library): number 51.
void ErrHand(const std::exception& failure, const std::string& detail = "", bool quiet = false);

// "Error 53: text", behind the prefix and a line break where the prefix is not blank.
std::string modErrStr(const RunTimeFailure& failure, std::string_view prefix = "");

// Appends a record to the log: one dated line and one line with a blank. Throws where the log cannot be written.
void wrtTechSupNoMak(const std::string& text, bool withHeader = true);
// The same where a failure to log must not stop what the user is doing.
void logQuietly(const std::string& text);
// The path of the log: "QVTECSUP.TXT" in the installation folder, found once; "QVTechSup.TXT" in the host's folder
// while there is none.
std::string GetTechSupFile();
void resetTechSupFile();

}  // namespace vantrelix
