#include "demo/AntennaTable.h"

#include <algorithm>

#include "foundation/numbers.h"
#include "foundation/text.h"
#include "qt/qtText.h"

namespace vantrelix::demo {

using qt::toQt;

namespace {

QString gainText(const AntennaListEntry& antenna) {
  return toQt(formatNumber(antenna.gain, "0.00") + " " + antenna.gainUnits);
}

QString bandText(const AntennaListEntry& antenna) {
  const std::string low = generalText(antenna.fLow);
  const std::string high = generalText(antenna.fHigh);
  return toQt((low == high ? low : low + "\xE2\x80\x93" + high) + " " + antenna.freqUnits);
}

QString cellText(const AntennaListEntry& antenna, int column) {
  switch (column) {
    case AntennaTable::description:
      return toQt(antenna.description);
    case AntennaTable::id:
      return toQt(antenna.id);
    case AntennaTable::gain:
      return gainText(antenna);
    case AntennaTable::band:
      return bandText(antenna);
    default:
      return {};
  }
}

int alignmentOf(int column) {
  const bool number = column == AntennaTable::gain || column == AntennaTable::band;
  return static_cast<int>(Qt::AlignVCenter | (number ? Qt::AlignRight : Qt::AlignLeft));
}

QString tipOf(const AntennaListEntry& antenna) {
  return QString("%1\nID %2\n%3, %4\n%5 azimuth and %6 elevation points")
      .arg(toQt(antenna.description), toQt(antenna.id), gainText(antenna), bandText(antenna))
      .arg(antenna.horizontalPoints)
      .arg(antenna.verticalPoints);
}

}  // namespace

void AntennaTable::setAntennas(std::vector<AntennaListEntry> antennas) {
  beginResetModel();
  antennas_ = std::move(antennas);
  endResetModel();
}

int AntennaTable::rowOf(const std::string& antennaId) const {
  const auto found = std::find_if(antennas_.begin(), antennas_.end(),
                                  [&](const AntennaListEntry& antenna) { return antenna.id == trimRight(antennaId); });
  return found == antennas_.end() ? -1 : static_cast<int>(found - antennas_.begin());
}

int AntennaTable::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(antennas_.size());
}

int AntennaTable::columnCount(const QModelIndex& parent) const { return parent.isValid() ? 0 : columns; }

QVariant AntennaTable::data(const QModelIndex& index, int role) const {
  if (!index.isValid() || index.row() >= rowCount()) return {};
  const AntennaListEntry& antenna = antennas_[static_cast<std::size_t>(index.row())];
  switch (role) {
    case Qt::DisplayRole:
      return cellText(antenna, index.column());
    case Qt::ToolTipRole:
      return tipOf(antenna);
    case Qt::TextAlignmentRole:
      return alignmentOf(index.column());
    default:
      return {};
  }
}

QVariant AntennaTable::headerData(int section, Qt::Orientation orientation, int role) const {
  constexpr const char* kTitles[] = {"Antenna", "ID", "Gain", "Band"};
  if (orientation != Qt::Horizontal || section < 0 || section >= columns) return {};
  if (role == Qt::TextAlignmentRole) return alignmentOf(section);
  if (role != Qt::DisplayRole) return {};
  return QString(kTitles[section]);
}

}  // namespace vantrelix::demo
