// A host in a few lines: a form with the antenna lookup control, bound to a row of the host's own table.
//
//   embedding INSTALLATIONFOLDER
//
// The table is FACILITY.DBF in that folder; vantrelix-demo makes one.
#include <iostream>

#include <QApplication>
#include <QMessageBox>
#include <QPushButton>
#include <QVBoxLayout>

#include "foundation/suitePaths.h"
#include "platform/Platform.h"
#include "qt/LookAnt.h"
#include "qt/QtDesktop.h"

namespace {

int showRecord(const char* folder) {
  // [host]
  vantrelix::qt::QtDesktop desktop;  // real message boxes
  const vantrelix::DesktopInUse inUse(desktop);
  vantrelix::setSuiteDir(vantrelix::platform::current().fromMachine(folder));

  QWidget form;
  auto* layout = new QVBoxLayout(&form);
  auto* antenna = new vantrelix::qt::LookAnt(&form);
  auto* save = new QPushButton("&Save", &form);
  layout->addWidget(antenna);
  layout->addWidget(save);

  using Ant = vantrelix::scLookAnt;
  const std::pair<vantrelix::DBFSlot Ant::*, const char*> fields[] = {
      {&Ant::HookDBFFile, "TX_A1FNM"},     {&Ant::HookDBFID, "TX_A1TID"},      {&Ant::HookDBFDesc, "TX_A1TYP"},
      {&Ant::HookDBFGain, "TX_A1GAIN"},    {&Ant::HookDBFUnit, "TX_A1GNUN"},   {&Ant::HookDBFOrient, "TX_A1ORIEN"},
      {&Ant::HookDBFETilt, "TX_A1ETILT"},  {&Ant::HookDBFMTilt, "TX_A1MTILT"}, {&Ant::HookDBFMAzim, "TX_A1MDIR"},
      {&Ant::HookDBFInvert, "TX_A1INVRT"}, {&Ant::HookDBFPol, "TX_A1Pol"},     {&Ant::HookDBFFreq, "TX_FREQMHZ"},
  };
  const auto database = vantrelix::DBEngine::OpenDatabase(vantrelix::getSuiteDir());
  const auto record = database->OpenRecordset("Select * From [FACILITY]");
  for (const auto& [slot, field] : fields) {
    const auto hook = std::make_shared<vantrelix::IOHooksDBF>();
    hook->DBFRS(record);  // one cursor, so that all values are those of its row
    hook->DBFField(field);
    (antenna->control().*slot)(hook);
  }
  antenna->Update();  // after every move of the cursor, too

  QObject::connect(save, &QPushButton::clicked, antenna, [antenna] {
    const QString errors = antenna->Save();  // blank: every value stands in the table
    if (!errors.isEmpty()) QMessageBox::warning(antenna, "Save", errors);
  });
  form.show();
  // [host]
  return QApplication::exec();
}

}  // namespace

int main(int argc, char** argv) {
  const QApplication application(argc, argv);
  if (argc != 2) {
    std::cerr << "usage: embedding INSTALLATIONFOLDER\n";
    return 2;
  }
  try {
    return showRecord(argv[1]);
  } catch (const std::exception& failure) {
    std::cerr << "embedding: " << failure.what() << "\n";
    return 1;
  }
}
