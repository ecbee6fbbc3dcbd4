#include "demo/DemoOptions.h"

#include <iostream>

#include <QCommandLineParser>
#include <QRegularExpression>

#include "foundation/extract.h"
#include "foundation/suitePaths.h"
#include "platform/Platform.h"

namespace vantrelix::demo {

namespace {

constexpr double kLeastScale = 0.5;
constexpr double kLargestScale = 8;
constexpr const char* kRemedy = "Make one with 'vantrelix suite init DIR' and name it with --suite DIR.";

void describe(QCommandLineParser& parser) {
  parser.setApplicationDescription("A facility form that holds the antenna lookup control.");
  parser.addOptions({
      {"suite", "The installation folder (else VANTRELIX_SUITE, else as the library finds it).", "DIR"},
      {"library", "Choose this antenna library.", "FILE"},
      {"antenna", "Choose the antenna of this ID.", "ID"},
      {"picture", "Draw the form into a PNG file, without a display, and end.", "FILE"},
      {"scale", "The scale of the picture (default 1).", "N", "1"},
      {"dark", "Use a dark palette."},
      {"print", "Print the values of the antenna shown, and end."},
      {{"h", "help"}, "Show this help."},
      {{"v", "version"}, "Show the version."},
  });
}

// The toolkit learns the program's name from an application, of which there is none yet.
QString helpText(const QCommandLineParser& parser) {
  static const QRegularExpression kUsage("^Usage: .* \\[options\\]");
  return parser.helpText().replace(kUsage, "Usage: vantrelix-demo [options]");
}

CommandLine complain(const QString& message) {
  std::cerr << "vantrelix-demo: " << message.toStdString() << "\n";
  return CommandLine::wrong;
}

}  // namespace

CommandLine readCommandLine(const QStringList& arguments, DemoOptions& options) {
  QCommandLineParser parser;
  describe(parser);
  if (!parser.parse(arguments)) return complain(parser.errorText());
  if (parser.isSet("help")) {
    std::cout << helpText(parser).toStdString();
    return CommandLine::finished;
  }
  if (parser.isSet("version")) {
    std::cout << "vantrelix-demo " VANTRELIX_VERSION "\n";
    return CommandLine::finished;
  }
  if (!parser.positionalArguments().isEmpty()) {
    return complain("'" + parser.positionalArguments().first() + "' is no option. See --help.");
  }
  bool number = false;
  options.scale = parser.value("scale").toDouble(&number);
  if (!number || options.scale < kLeastScale || options.scale > kLargestScale) {
    return complain("The scale must be a number from 0.5 to 8.");
  }
  options.suite = parser.value("suite");
  options.library = parser.value("library");
  options.antenna = parser.value("antenna");
  options.picture = parser.value("picture");
  options.dark = parser.isSet("dark");
  options.print = parser.isSet("print");
  return CommandLine::run;
}

std::string useSuite(const DemoOptions& options) {
  platform::Platform& system = platform::current();
  std::string named = options.suite.toStdString();
  if (named.empty()) named = system.environment("VANTRELIX_SUITE").value_or("");
  if (!named.empty()) setSuiteDir(system.absolute(system.fromMachine(named)));
  const std::string folder = getSuiteDir();
  if (folder.empty()) return std::string("No installation folder was found. ") + kRemedy;
  if (system.folderExists(folder)) return "";
  return "The installation folder " + displayPath(folder) + " does not exist. " + kRemedy;
}

}  // namespace vantrelix::demo
