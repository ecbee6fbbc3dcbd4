#include "demo/demoProgram.h"

#include <iostream>
#include <optional>

#include <QApplication>
#include <QBuffer>
#include <QStyleFactory>

#include "controls/reporting.h"
#include "demo/DemoOptions.h"
#include "demo/DemoWindow.h"
#include "foundation/hostProgram.h"
#include "foundation/text.h"
#include "platform/Platform.h"
#include "platform/RunTimeFailure.h"
#include "qt/QtDesktop.h"
#include "qt/qtText.h"
#include "qt/screenless.h"
#include "ui/ScriptedDesktop.h"

namespace vantrelix::demo {

namespace {

constexpr const char* kTitle = "Vantrelix demo host";

int fail(const std::string& reason) {
  std::cerr << "vantrelix-demo: " << reason << "\n";
  return 1;
}

// A failure that reaches the event loop is told, and does not end the program.
class DemoApplication : public QApplication {
 public:
  using QApplication::QApplication;

  bool notify(QObject* receiver, QEvent* event) override {
    try {
      return QApplication::notify(receiver, event);
    } catch (const std::exception& failure) {
      report(failure);
      return false;
    }
  }
};

bool hasDisplay() {
#ifdef Q_OS_LINUX
  return qEnvironmentVariableIsSet("DISPLAY") || qEnvironmentVariableIsSet("WAYLAND_DISPLAY") ||
         qEnvironmentVariableIsSet("QT_QPA_PLATFORM");
#else
  return true;
#endif
}

// What Qt reads from its environment while the application starts.
void prepareScreen(const DemoOptions& options) {
  if (!options.withoutWindow()) return;
  qt::goScreenless();
  qputenv("QT_SCALE_FACTOR", QByteArray::number(options.scale));
}

QPalette darkPalette() {
  QPalette dark(QColor(62, 66, 72), QColor(50, 53, 58));
  dark.setColor(QPalette::Base, QColor(34, 36, 40));
  dark.setColor(QPalette::AlternateBase, QColor(41, 43, 48));
  dark.setColor(QPalette::Highlight, QColor(46, 110, 190));
  dark.setColor(QPalette::HighlightedText, Qt::white);
  dark.setColor(QPalette::Link, QColor(110, 175, 255));
  dark.setColor(QPalette::ToolTipBase, QColor(60, 63, 68));
  dark.setColor(QPalette::ToolTipText, QColor(235, 235, 235));
  for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText}) {
    dark.setColor(role, QColor(228, 230, 233));
    dark.setColor(QPalette::Disabled, role, QColor(135, 139, 145));
  }
  dark.setColor(QPalette::PlaceholderText, QColor(140, 144, 150));
  return dark;
}

void dress(const DemoOptions& options) {
  if (options.withoutWindow() || options.dark) QApplication::setStyle(QStyleFactory::create("Fusion"));
  if (options.dark) QApplication::setPalette(darkPalette());
}

void savePicture(DemoWindow& window, const QString& path) {
  window.resize(window.sizeHint());
  window.setAttribute(Qt::WA_DontShowOnScreen);
  window.show();
  QApplication::processEvents();
  QByteArray bytes;
  QBuffer buffer(&bytes);
  buffer.open(QIODevice::WriteOnly);
  window.grab().save(&buffer, "PNG");
  platform::replaceWholeFile(platform::current().fromMachine(qt::fromQt(path)),
                             std::string_view(bytes.constData(), static_cast<std::size_t>(bytes.size())));
}

int runWindow(const DemoOptions& options) {
  DemoWindow window;
  const bool named = !options.library.isEmpty() || !options.antenna.isEmpty();
  if (named && !window.choose(options.library, options.antenna)) {
    return fail("There is no antenna '" + qt::fromQt(options.antenna) + "' in the library '" +
                qt::fromQt(options.library) + "'. The form lists what there is.");
  }
  if (!options.withoutWindow()) {
    window.show();
    return QApplication::exec();
  }
  if (!options.picture.isEmpty()) savePicture(window, options.picture);
  if (options.print) std::cout << qt::fromQt(window.values());
  return 0;
}

// What nobody stood before the screen to read.
void printMessages(const ScriptedDesktop& unattended) {
  for (const auto& [message, answer] : unattended.shown()) {
    std::cerr << "vantrelix-demo: " << replaceAll(message.text, kLineBreak, "\n") << "\n";
  }
}

int runWithOptions(const DemoOptions& options, int argc, char** argv) {
  prepareScreen(options);
  if (!hasDisplay()) return fail("There is no display. --picture FILE.png draws the form without one.");
  DemoApplication application(argc, argv);
  application.setApplicationDisplayName(kTitle);
  setHostProgram({"vantrelix-demo", VANTRELIX_VERSION_MAJOR, VANTRELIX_VERSION_MINOR, VANTRELIX_VERSION_PATCH});
  if (const std::string wrong = useSuite(options); !wrong.empty()) return fail(wrong);
  dress(options);
  qt::QtDesktop shown;
  ScriptedDesktop unattended;
  Desktop& chosen = options.withoutWindow() ? static_cast<Desktop&>(unattended) : shown;
  const DesktopInUse inUse(chosen);
  const int status = runWindow(options);
  printMessages(unattended);
  return status;
}

}  // namespace

int runDemo(int argc, char** argv) {
  QStringList arguments;
  for (int i = 0; i < argc; ++i) arguments << QString::fromLocal8Bit(argv[i]);
  DemoOptions options;
  switch (readCommandLine(arguments, options)) {
    case CommandLine::finished:
      return 0;
    case CommandLine::wrong:
      return 2;
    case CommandLine::run:
      break;
  }
  try {
    return runWithOptions(options, argc, argv);
  } catch (const std::exception& failure) {
    return fail(failure.what());
  }
}

}  // namespace vantrelix::demo
