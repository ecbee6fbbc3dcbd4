// The antennas of a library as an item model.
#pragma once

#include <vector>

#include <QAbstractTableModel>

#include "antenna/antennaList.h"

namespace vantrelix::demo {

class AntennaTable : public QAbstractTableModel {
  Q_OBJECT

 public:
  enum Column { description, id, gain, band, columns };

  using QAbstractTableModel::QAbstractTableModel;

  void setAntennas(std::vector<AntennaListEntry> antennas);
  const std::vector<AntennaListEntry>& antennas() const { return antennas_; }
  // Row of the antenna of that ID; -1 where there is none.
  int rowOf(const std::string& antennaId) const;

  int rowCount(const QModelIndex& parent = {}) const override;
  int columnCount(const QModelIndex& parent = {}) const override;
  QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
  QVariant headerData(int section, Qt::Orientation orientation, int role = Qt::DisplayRole) const override;

 private:
  std::vector<AntennaListEntry> antennas_;
};

}  // namespace vantrelix::demo
