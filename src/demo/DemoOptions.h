// What the command line asks of the demo host.
#pragma once

#include <string>

#include <QString>
#include <QStringList>

namespace vantrelix::demo {

struct DemoOptions {
  QString suite;    // the installation folder, in the machine's form; blank where none was named
  QString library;  // file name of a library, with or without its extension
  QString antenna;  // ID of an antenna
  QString picture;  // the PNG file to draw the form into
  double scale = 1;
  bool dark = false;
  bool print = false;

  bool withoutWindow() const { return print || !picture.isEmpty(); }
};

enum class CommandLine { run, finished, wrong };

// Reads the arguments (the program's name first). `finished` after a help or version text, `wrong` after a message.
CommandLine readCommandLine(const QStringList& arguments, DemoOptions& options);

// Puts the installation folder in use: the one named, else VANTRELIX_SUITE, else as the library finds it. Gives blank,
// or what is wrong and how to mend it.
std::string useSuite(const DemoOptions& options);

}  // namespace vantrelix::demo
