// One run of the command line: what it was asked, what it answers.
#pragma once

#include <functional>
#include <nlohmann/json.hpp>
#include <ostream>
#include <sstream>
#include <stdexcept>
#include <string>

#include "preview/svgPlot.h"
#include "ui/ScriptedDesktop.h"

namespace vantrelix::cli {

using Json = nlohmann::ordered_json;

// The job was refused or failed: the reason, for people. Ends the command with status 1.
class Refused : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

// Writes a page to a .png or .pdf file at a path of the machine.
using PictureWriter = std::function<void(const PlotPage& page, const std::string& machinePath)>;

class Session {
 public:
  Session(std::ostream& out, std::ostream& err, bool errIsTerminal)
      : out_(out), err_(err), errIsTerminal_(errIsTerminal) {}

  // Options before the command.
  std::string suite;
  bool json = false;
  std::string assume = "no";

  // What the command fills: members of the JSON document, and the text for people.
  Json document = Json::object();
  std::ostringstream text;
  // A failure that leaves a result to show all the same: the status becomes 1 and the reason is told.
  void fail(const std::string& reason);

  PictureWriter pictureWriter;
  // What the command line asks for, set while it is parsed.
  std::function<void()> job;

  // The first paragraph of the first box that the system has shown behind the first `from` boxes and that tells of a
  // failure; blank where there is none.
  std::string failureShown(std::size_t from) const;
  std::size_t boxesShown() const { return desktop_.shown().size(); }
  // The text of the last box; blank where none was shown.
  std::string lastBox() const { return desktop_.shown().empty() ? "" : desktop_.shown().back().message.text; }

  // Fails where no installation folder can be found.
  void needSuite() const;
  // A line on standard error that replaces itself, where that is a terminal.
  void progress(const std::string& line);

  // Runs the job and writes the answer; gives the exit status.
  int run();

 private:
  void useSuite() const;
  void writeDocument();
  void writeText();
  void writeFailure();
  Json messages() const;

  std::ostream& out_;
  std::ostream& err_;
  bool errIsTerminal_;
  bool progressShown_ = false;
  std::string failure_;
  ScriptedDesktop desktop_;
};

// A path of the command line in the library's form.
std::string pathFromCommandLine(const std::string& path);
// "1 antenna", "2 antennas".
std::string counted(std::size_t count, const std::string& what);

}  // namespace vantrelix::cli
