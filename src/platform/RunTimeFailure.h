// A run-time failure: the one exception type of the library. It stands in the lowest layer so that all may throw it.
//
// A failure has a number and a description. The numbers are the conventional ones of the platform the system's texts
// come from, so that a support log reads the same wherever it was written.
#pragma once

#include <stdexcept>
#include <string>

namespace vantrelix {

namespace failure {
// Language.
inline constexpr int overflow = 6;
inline constexpr int subscript = 9;
inline constexpr int divisionByZero = 11;
inline constexpr int typeMismatch = 13;
inline constexpr int internalError = 51;
inline constexpr int fileNotFound = 53;
inline constexpr int deviceIO = 57;
inline constexpr int fileExists = 58;
inline constexpr int diskFull = 61;
inline constexpr int inputPastEnd = 62;
inline constexpr int permissionDenied = 70;
inline constexpr int pathAccess = 75;
inline constexpr int pathNotFound = 76;
inline constexpr int objectNotSet = 91;
inline constexpr int invalidUseOfNull = 94;
// Table engine.
inline constexpr int noSuchTable = 3011;
inline constexpr int updateWithoutEdit = 3020;
inline constexpr int noCurrentRecord = 3021;
inline constexpr int readOnlyTable = 3027;
inline constexpr int badPath = 3044;
inline constexpr int cannotOpen = 3051;
inline constexpr int badQuery = 3061;
inline constexpr int notABookmark = 3159;
inline constexpr int fieldTooSmall = 3163;
inline constexpr int recordDeleted = 3167;
inline constexpr int dataChanged = 3197;
inline constexpr int locked = 3211;
inline constexpr int noSuchField = 3265;
inline constexpr int damagedTable = 3343;
}  // namespace failure

class RunTimeFailure : public std::runtime_error {
 public:
  RunTimeFailure(int number, const std::string& description) : std::runtime_error(description), number_(number) {}

  int number() const { return number_; }
  std::string description() const { return what(); }

 private:
  int number_;
};

}  // namespace vantrelix
