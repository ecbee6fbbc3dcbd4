#include "qt/GridItemModel.h"

#include <QScopedValueRollback>
#include <QWidget>

#include "qt/failures.h"
#include "qt/qtText.h"

namespace vantrelix::qt {

namespace {

constexpr Qt::Alignment kAlignments[] = {Qt::AlignLeft, Qt::AlignRight, Qt::AlignHCenter};

Qt::Alignment alignmentOf(const GridColumn& column) {
  return kAlignments[static_cast<int>(column.alignment)] | Qt::AlignVCenter;
}

}  // namespace

GridItemModel::GridItemModel(DataGrid& grid, QWidget& view)
    : QAbstractTableModel(&view),
      view_(view),
      link_(
          grid, [this] { sync(); }, [this] { startAnew(); }),
      rowsChanged_(grid.rowsChanged.connect([this](const GridChange& change) { follow(change); })) {
  startAnew();
}

void GridItemModel::sync() {
  const DataGrid* grid = link_.get();
  if (grid && grid->revision() != revision_) startAnew();
}

void GridItemModel::startAnew() {
  beginResetModel();
  const DataGrid* grid = link_.get();
  rows_ = grid ? grid->rowCount() : 0;
  columns_ = grid ? grid->columnCount() : 0;
  revision_ = grid ? grid->revision() : 0;
  markedRow_ = grid ? grid->currentRow() : -1;
  endResetModel();
}

void GridItemModel::follow(const GridChange& change) {
  const DataGrid* grid = link_.get();
  if (!grid || grid->revision() != revision_ + 1) return sync();
  revision_ = grid->revision();
  const int count = change.last - change.first + 1;
  if (change.kind == GridChange::Kind::insert) {
    {
      const QScopedValueRollback<int> from(shiftFrom_, change.first);
      const QScopedValueRollback<int> by(shift_, count);
      beginInsertRows({}, change.first, change.last);
    }
    rows_ += count;
    endInsertRows();
  } else if (change.kind == GridChange::Kind::remove) {
    {
      const QScopedValueRollback<int> from(shiftFrom_, change.first);
      const QScopedValueRollback<int> by(shift_, -count);
      beginRemoveRows({}, change.first, change.last);
    }
    rows_ -= count;
    endRemoveRows();
  } else if (change.first >= 0 && change.last < rows_ && columns_ > 0) {
    emit dataChanged(index(change.first, 0), index(change.last, columns_ - 1));
    emit headerDataChanged(Qt::Vertical, change.first, change.last);
  }
}

// -1 for a row that the grid no longer has.
int GridItemModel::gridRow(int row) const {
  if (row < shiftFrom_) return row;
  return row + shift_ < shiftFrom_ ? -1 : row + shift_;
}

QVariant GridItemModel::data(const QModelIndex& index, int role) const {
  const DataGrid* grid = link_.get();
  if (!grid || !index.isValid() || index.column() >= grid->columnCount()) return {};
  const GridCell cell{gridRow(index.row()), index.column()};
  // A failure must not travel through the painting of the view; it stands in the cell instead.
  try {
    return cellData(*grid, cell, role);
  } catch (const std::exception& failure) {
    if (role == Qt::DisplayRole) return QStringLiteral("#Error");
    return role == Qt::ToolTipRole ? QVariant(QString::fromUtf8(failure.what())) : QVariant();
  }
}

QVariant GridItemModel::cellData(const DataGrid& grid, GridCell cell, int role) const {
  switch (role) {
    case Qt::DisplayRole:
    case Qt::EditRole:
      return toQt(grid.cellText(cell.row, cell.column));
    case Qt::ToolTipRole:
      grid.cellText(cell.row, cell.column);
      return {};
    case Qt::TextAlignmentRole:
      return QVariant(alignmentOf(grid.column(cell.column)));
    case Qt::BackgroundRole: {
      const GridRowStyle style = grid.rowStyle(cell.row);
      return style.back ? QVariant(toQt(*style.back, view_.palette())) : QVariant();
    }
    case Qt::ForegroundRole: {
      const GridRowStyle style = grid.rowStyle(cell.row);
      if (style.fore) return toQt(*style.fore, view_.palette());
      return style.back ? QVariant(readableOn(toQt(*style.back, view_.palette()))) : QVariant();
    }
    default:
      return {};
  }
}

QVariant GridItemModel::headerData(int section, Qt::Orientation orientation, int role) const {
  const DataGrid* grid = link_.get();
  if (!grid || section < 0) return {};
  if (orientation == Qt::Vertical) return rowMark(*grid, gridRow(section), role);
  if (section >= grid->columnCount()) return {};
  const GridColumn& column = grid->column(section);
  if (role == Qt::DisplayRole) return toQt(column.caption);
  if (role == Qt::TextAlignmentRole) return QVariant(alignmentOf(column));
  return {};
}

// What stands at the selection button of a row: an entry under way, the current row, the row to be added.
QVariant GridItemModel::rowMark(const DataGrid& grid, int row, int role) const {
  struct Mark {
    const char* sign;
    const char* spoken;
  };
  constexpr Mark kNone{"", ""}, kEntry{"\u270E", "Row being edited"}, kCurrent{"\u25B8", "Current row"},
      kNew{"*", "New row"};
  const bool current = row >= 0 && row == grid.currentRow();
  const Mark mark = current && grid.dataChanged() ? kEntry : current ? kCurrent : grid.isAddRow(row) ? kNew : kNone;
  if (role == Qt::DisplayRole) return QString::fromUtf8(mark.sign);
  if (role == Qt::AccessibleTextRole) return QString::fromUtf8(mark.spoken);
  return role == Qt::TextAlignmentRole ? QVariant(Qt::AlignCenter) : QVariant();
}

Qt::ItemFlags GridItemModel::flags(const QModelIndex& index) const {
  const DataGrid* grid = link_.get();
  if (!grid || !index.isValid()) return Qt::NoItemFlags;
  const Qt::ItemFlags plain = Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemNeverHasChildren;
  return grid->editable(gridRow(index.row()), index.column()) ? plain | Qt::ItemIsEditable : plain;
}

bool GridItemModel::setData(const QModelIndex& index, const QVariant& value, int role) {
  DataGrid* grid = link_.get();
  if (!grid || !index.isValid() || role != Qt::EditRole) return false;
  bool taken = false;
  runGuarded([&] { taken = grid->userEdit(index.row(), index.column(), fromQt(value.toString())); });
  return taken;
}

void GridItemModel::markRow(int row) {
  const int former = std::exchange(markedRow_, row);
  if (former == row) return;
  for (const int section : {former, row}) {
    if (section >= 0 && section < rows_) emit headerDataChanged(Qt::Vertical, section, section);
  }
}

}  // namespace vantrelix::qt
