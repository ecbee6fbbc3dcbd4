// A data grid's rows and columns as an item model. It follows what the grid tells of its rows one change at a time, and
// starts anew where the grid changed otherwise.
#pragma once

#include <QAbstractTableModel>

#include "qt/ModelLink.h"
#include "ui/DataGrid.h"

class QWidget;

namespace vantrelix::qt {

class GridItemModel : public QAbstractTableModel {
  Q_OBJECT

 public:
  // The view that shows it, whose palette the colours come from; it owns the model.
  GridItemModel(DataGrid& grid, QWidget& view);

  int rowCount(const QModelIndex& parent = {}) const override { return parent.isValid() ? 0 : rows_; }
  int columnCount(const QModelIndex& parent = {}) const override { return parent.isValid() ? 0 : columns_; }
  QVariant data(const QModelIndex& index, int role) const override;
  QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
  Qt::ItemFlags flags(const QModelIndex& index) const override;
  // The user's entry; false where the grid refuses it.
  bool setData(const QModelIndex& index, const QVariant& value, int role = Qt::EditRole) override;

  // Starts anew where the grid has changed otherwise than told.
  void sync();
  // Moves the mark at the row headers.
  void markRow(int row);

  // Rows are being taken in or out at this moment: what the table then makes current is not its user's doing.
  bool shifting() const { return shift_ != 0; }

 private:
  void follow(const GridChange& change);
  void startAnew();
  int gridRow(int row) const;
  QVariant cellData(const DataGrid& grid, GridCell cell, int role) const;
  QVariant rowMark(const DataGrid& grid, int row, int role) const;

  QWidget& view_;
  ModelLink<DataGrid> link_;
  Connection rowsChanged_;
  int rows_ = 0;
  int columns_ = 0;
  long revision_ = 0;
  int markedRow_ = -1;
  // While a change is announced the grid has made it already and this model has not: from this row on, the grid's rows
  // stand further down by so many.
  int shiftFrom_ = 0;
  int shift_ = 0;
};

}  // namespace vantrelix::qt
