#include "demo/valueTexts.h"

#include "qt/LookAnt.h"
#include "qt/LookLine.h"

namespace vantrelix::demo {

QString antennaText(const qt::LookAnt& ant) {
  QString text = ant.sValueGain().isEmpty() ? "no gain" : ant.sValueGain() + " " + ant.sValueUnit();
  if (!ant.sValueDesc().isEmpty()) text.prepend(ant.sValueDesc() + ", ");
  if (!ant.sValueFile().isEmpty()) text += QString(" (%1, %2)").arg(ant.sValueFile(), ant.sValueID());
  return text;
}

QString mountingText(const qt::LookAnt& ant) {
  return QString("orientation %1, tilts %2 and %3, azimuth %4, %5%6")
      .arg(ant.sValueOrient(), ant.sValueEtilt(), ant.sValueMtilt(), ant.sValueMazim(), ant.sValuePol(),
           ant.sValueInvert() ? ", inverted" : "");
}

QString lineText(const qt::LookLine& line) {
  const QString loss = line.sValueLoss().isEmpty() ? "no loss" : line.sValueLoss() + " dB";
  QString text = loss;
  if (!line.sValueLen().isEmpty()) text = line.sValueLen() + " " + line.sValueUnit() + ", " + loss;
  if (!line.sValueDesc().isEmpty()) text.prepend(line.sValueDesc() + ", ");
  if (!line.sValueFile().isEmpty()) text += QString(" (%1, %2)").arg(line.sValueFile(), line.sValueID());
  return text;
}

QString recordText(const qt::LookAnt& ant, const qt::LookLine& line) {
  const std::pair<const char*, QString> rows[] = {
      {"Library", ant.sValueFile()},
      {"ID", ant.sValueID()},
      {"Antenna", ant.sValueDesc()},
      {"Gain", (ant.sValueGain() + " " + ant.sValueUnit()).trimmed()},
      {"Orientation", ant.sValueOrient()},
      {"Electrical tilt", ant.sValueEtilt()},
      {"Mechanical tilt", ant.sValueMtilt()},
      {"Tilt azimuth", ant.sValueMazim()},
      {"Polarisation", ant.sValuePol()},
      {"Inverted", ant.sValueInvert() ? "yes" : "no"},
      {"Azimuth cut", ant.bPatAz() ? "yes" : "no"},
      {"Elevation cut", ant.bPatEl() ? "yes" : "no"},
      {"Line library", line.sValueFile()},
      {"Line ID", line.sValueID()},
      {"Line", line.sValueDesc()},
      {"Length", (line.sValueLen() + " " + line.sValueUnit()).trimmed()},
      {"Loss", line.sValueLoss().isEmpty() ? "" : line.sValueLoss() + " dB"},
  };
  QString text;
  for (const auto& [caption, value] : rows) text += QString("%1 %2\n").arg(QString(caption) + ":", -16).arg(value);
  return text;
}

}  // namespace vantrelix::demo
