#include "import/ImportFormat.h"
#include "import/antel.h"
#include "import/bluewave.h"
#include "import/celwave.h"
#include "import/dapa.h"
#include "import/ems.h"
#include "import/generic.h"
#include "import/nsma.h"
#include "import/nsmaFcc.h"
#include "import/scala.h"
#include "import/shively.h"
#include "import/tiltek.h"

namespace vantrelix {

namespace {

// A format with both cuts of one antenna in one file.
template <void (*Read)(TextLines&, ImportedAntenna&)>
void oneFile(ImportSource& source, ImportedAntenna& antenna) {
  Read(source.lines(), antenna);
}

const std::vector<FileFilter> kMsiAndText = {{".msi", "*.MSI"}, {".txt", "*.TXT"}};

}  // namespace

const std::vector<ImportFormat>& importFormats() {
  // clang-format off
  static const std::vector<ImportFormat> formats = {
      {"nsma", "mnuImportNSMA", "NSMA Format", "", "NSMA Files to Read", "Import NSMA", {},
       "NSMA Format ANTENNA", ImportFormat::storesItself | ImportFormat::noPreviewEndsPreviews, readNsma},
      {"nsma-fcc", "mnuImportNSMA_FCC", "NSMA Format (FCC)", "", "NSMA (FCC) Files to Read", "Import NSMA (FCC)", {},
       "NSMA ANTENNA", ImportFormat::plain, oneFile<readNsmaFcc>},
      {"antel", "mnuImportAntel", "Legacy Antel File Format", "Antel", "ANTEL Files to Read", "Import Antel", kMsiAndText,
       "ANTEL ANTENNA", ImportFormat::plain, oneFile<readAntel>},
      {"bluewave", "mnuImportBluewave", "Legacy Bluewave File Format", "Bluewave", "Bluewave Files to Read",
       "Import Bluewave", {}, "BLUEWAVE ANTENNA", ImportFormat::plain, readBluewave},
      {"celwave", "mnuImportCelwave", "Legacy Celwave File Format", "Celwave", "CELWAVE Files to Read",
       "Import Celwave", {}, "CELWAVE ANTENNA", ImportFormat::plain, readCelwave},
      {"dapa", "mnuImportDapa", "Legacy DAPA Communications File Format", "DAPA Communications", "DAPA Files to Read",
       "Import DAPA", {}, "DAPA ANTENNA", ImportFormat::plain, readDapa},
      {"decibel", "mnuImportDecibel", "Legacy Decibel File Format", "Decibel", "Decibel Files to Read",
       "Import Decibel", {}, "Decibel ANTENNA", ImportFormat::plain, readDecibel},
      {"ems", "mnuImportEMS", "Legacy EMS Wireless File Format", "EMS", "EMS Wireless Files to Read",
       "Import EMS Wireless", {}, "EMS Wireless ANTENNA", ImportFormat::keepsPlane, readEms, emsNotice()},
      {"scala", "mnuImportScala", "Legacy Scala File Format", "Scala", "SCALA Files to Read", "Import Scala", {},
       "SCALA ANTENNA", ImportFormat::plain, readScala},
      {"shively", "mnuImportShively", "Legacy Shively File Format", "Shively", "SHIVELY Files to Read",
       "Import Shively", {}, "SHIVELY ANTENNA", ImportFormat::plain, readShively},
      {"sinclair", "mnuImportSinclair", "Legacy Sinclair File Format", "Sinclair", "SINCLAIR Files to Read",
       "Import Sinclair", {}, "SINCLAIR ANTENNA", ImportFormat::plain, readSinclair},
      {"tiltek", "mnuImportTILTEK", "Legacy TIL-TEK File Format", "TIL-TEK", "TIL-TEK Files to Read",
       "Import TIL-TEK", {}, "TIL-TEK ANTENNA", ImportFormat::plain, readTilTek},
      {"txrx", "mnuImportTXRX", "Legacy TX RX Systems File Format", "TXRX", "TX RX Files to Read", "Import TX RX", {},
       "TX RX ANTENNA", ImportFormat::plain, readDecibel},
      {"generic", "mnuImportGeneric", "Generic", "", "GENERIC Files to Read", "Import GENERIC", kMsiAndText,
       "Generic Format ANTENNA", ImportFormat::noPreviewEndsPreviews, oneFile<readGeneric>},
  };
  // clang-format on
  return formats;
}

const ImportFormat* findImportFormat(const std::string& name) {
  for (const ImportFormat& format : importFormats()) {
    if (format.name == name) return &format;
  }
  return nullptr;
}

}  // namespace vantrelix
