// A host in a few lines: a form with the antenna lookup control, an antenna of a library in it, and what the control
// says.
//
//   embedding INSTALLATIONFOLDER LIBRARY ID
#include <iostream>

#include <QApplication>
#include <QVBoxLayout>

#include "foundation/suitePaths.h"
#include "platform/Platform.h"
#include "qt/LookAnt.h"
#include "qt/QtDesktop.h"

int main(int argc, char** argv) {
  QApplication application(argc, argv);
  if (argc != 4) {
    std::cerr << "usage: embedding INSTALLATIONFOLDER LIBRARY ID\n";
    return 2;
  }
  // [host]
  vantrelix::qt::QtDesktop desktop;  // real message boxes
  const vantrelix::DesktopInUse inUse(desktop);
  vantrelix::setSuiteDir(vantrelix::platform::current().fromMachine(argv[1]));

  QWidget form;
  auto* antenna = new vantrelix::qt::LookAnt(&form);
  auto* layout = new QVBoxLayout(&form);
  layout->addWidget(antenna);
  antenna->control().ZORUserLogin("ann");  // the user's own defaults

  antenna->sValueFile(argv[2]);  // "AMSX0001"
  antenna->sValueID(argv[3]);
  antenna->GetAntPat();  // gain, unit and both cuts come from the library
  QObject::connect(antenna, &vantrelix::qt::LookAnt::ChangeAntenna, [antenna] {
    std::cout << antenna->sValueGain().toStdString() << ' ' << antenna->sValueUnit().toStdString() << std::endl;
  });
  form.show();
  // [host]
  return QApplication::exec();
}
