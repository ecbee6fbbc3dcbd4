#include "qt/GridView.h"

#include <algorithm>

#include <QGuiApplication>
#include <QHeaderView>
#include <QScopedValueRollback>
#include <QScrollBar>
#include <QSignalBlocker>

#include "qt/GridDelegate.h"
#include "qt/GridItemModel.h"

namespace vantrelix::qt {

namespace {

// Blank space above and below a line of text, in pixels.
constexpr int kRowMargin = 3;

QString captionsOf(const DataGrid& model) {
  QStringList captions;
  for (const GridColumn& column : model.columns()) {
    if (column.visible) captions << toQt(column.caption);
  }
  return captions.join(QStringLiteral(", "));
}

}  // namespace

GridView::GridView(DataGrid& model, QWidget* parent)
    : View(model, parent),
      items_(new GridItemModel(model, *this)),
      delegate_(new GridDelegate(*this)),
      heldChanged_(model.heldChanged.connect([this] { viewport()->setUpdatesEnabled(!this->model()->held()); })) {
  setModel(items_);
  setItemDelegate(delegate_);
  setEditTriggers(NoEditTriggers);
  setAutoScroll(false);
  setTabKeyNavigation(false);
  setWordWrap(false);
  setCornerButtonEnabled(false);
  setVerticalScrollMode(ScrollPerItem);
  setHorizontalScrollMode(ScrollPerPixel);
  connectHeaders();
  connect(verticalScrollBar(), &QScrollBar::valueChanged, this, [this](int value) {
    if (!showing_) handOver([value](DataGrid& grid) { grid.userScroll(value); });
  });
}

// The table's own doings at a click on a heading give way to the model's.
void GridView::connectHeaders() {
  QHeaderView* columns = horizontalHeader();
  QHeaderView* rows = verticalHeader();
  for (QHeaderView* header : {columns, rows}) {
    disconnect(header, &QHeaderView::sectionPressed, this, nullptr);
    disconnect(header, &QHeaderView::sectionEntered, this, nullptr);
    header->setHighlightSections(false);
    header->setMinimumSectionSize(8);
  }
  rows->setSectionResizeMode(QHeaderView::Fixed);
  connect(columns, &QHeaderView::sectionClicked, this, [this](int column) {
    if (handOver([column](DataGrid& grid) { grid.userHeadClick(column); })) refresh();
  });
  connect(columns, &QHeaderView::sectionResized, this, [this](int column, int, int width) {
    if (showing_ || width == 0) return;
    handOver([&](DataGrid& grid) { grid.userResizeColumn(column, twipsOf(width, logicalDpiX())); });
  });
  const auto select = [this](int row, bool ctrl, bool shift) {
    handOver([&](DataGrid& grid) { grid.userSelectRow(row, ctrl, shift); });
  };
  connect(rows, &QHeaderView::sectionPressed, this, [this, select](int row) {
    const Qt::KeyboardModifiers keys = QGuiApplication::keyboardModifiers();
    if (!held_) select(row, keys.testFlag(Qt::ControlModifier), keys.testFlag(Qt::ShiftModifier));
  });
  connect(rows, &QHeaderView::sectionEntered, this, [select](int row) { select(row, false, true); });
}

// --- Showing.

void GridView::showState(const DataGrid& model) {
  {
    const QScopedValueRollback<bool> showing(showing_, true);
    setPalette(coloursOf(model));
    for (QHeaderView* header : {horizontalHeader(), verticalHeader()}) header->setPalette(parentWidget()->palette());
    setAccessibleName(model.toolTip().empty() ? captionsOf(model) : toQt(model.toolTip()));
    items_->sync();
    showColumns(model);
    showRowHeight(model);
    showSortMark(model);
    showPlace(model);
  }
  tellView();
}

void GridView::showColumns(const DataGrid& model) {
  QHeaderView* header = horizontalHeader();
  for (int column = 0; column < model.columnCount(); ++column) {
    const GridColumn& shown = model.column(column);
    if (header->isSectionHidden(column) == shown.visible) header->setSectionHidden(column, !shown.visible);
    const int width = std::max(pixelsOf(shown.width, logicalDpiX()), header->minimumSectionSize());
    if (shown.visible && header->sectionSize(column) != width) header->resizeSection(column, width);
  }
}

void GridView::showRowHeight(const DataGrid& model) {
  const int byFont = fontMetrics().height() + 2 * kRowMargin;
  const int height = model.rowHeight() > 0 ? pixelsOf(model.rowHeight(), logicalDpiY()) : byFont;
  QHeaderView* header = verticalHeader();
  if (header->defaultSectionSize() != height) header->setDefaultSectionSize(height);
  header->setFixedWidth(fontMetrics().height() + 4 * kRowMargin);
}

void GridView::showSortMark(const DataGrid& model) {
  QHeaderView* header = horizontalHeader();
  const QSignalBlocker quiet(header);
  const int column = model.sortField().empty() ? -1 : model.columnOf(model.sortField());
  header->setSortIndicatorShown(column >= 0);
  header->setSortIndicator(column, model.sortAscending() ? Qt::AscendingOrder : Qt::DescendingOrder);
}

void GridView::showPlace(const DataGrid& model) {
  executeDelayedItemsLayout();
  const QModelIndex wanted = items_->index(model.currentRow(), model.currentColumn());
  if (wanted != currentIndex()) {
    selectionModel()->setCurrentIndex(wanted, QItemSelectionModel::NoUpdate);
    if (wanted.isValid()) scrollTo(wanted);
  }
  items_->markRow(model.currentRow());
  const QItemSelection selection = selectionOf(model);
  if (selection != selectionModel()->selection()) {
    selectionModel()->select(selection, QItemSelectionModel::ClearAndSelect);
  }
  verticalScrollBar()->setValue(model.firstRow());
}

QItemSelection GridView::selectionOf(const DataGrid& model) const {
  std::vector<int> rows;
  for (const std::string& bookmark : model.selBookmarks().items()) rows.push_back(model.rowOf(bookmark));
  const bool alone = rows.empty() && !model.hasRange();
  if (alone && model.marksRow()) rows.push_back(model.currentRow());
  QItemSelection selection = rowsAsSelection(std::move(rows));
  if (model.hasRange() || (alone && !model.marksRow())) {
    const QRect cells = cellsBetween(model.anchor(), model.extent());
    const QModelIndex from = items_->index(cells.top(), cells.left());
    const QModelIndex to = items_->index(cells.bottom(), cells.right());
    if (from.isValid() && to.isValid()) selection.merge(QItemSelection(from, to), QItemSelectionModel::Select);
  }
  return selection;
}

// Neighbouring rows as one range: a selection of thousands of rows is few ranges.
QItemSelection GridView::rowsAsSelection(std::vector<int> rows) const {
  QItemSelection selection;
  const int lastColumn = items_->columnCount() - 1;
  if (lastColumn < 0) return selection;
  std::sort(rows.begin(), rows.end());
  for (std::size_t from = 0; from < rows.size();) {
    std::size_t to = from + 1;
    while (to < rows.size() && rows[to] == rows[to - 1] + 1) ++to;
    const QModelIndex first = items_->index(rows[from], 0);
    const QModelIndex last = items_->index(rows[to - 1], lastColumn);
    if (first.isValid() && last.isValid()) selection.select(first, last);
    from = to;
  }
  return selection;
}

QRect GridView::cellsBetween(GridCell a, GridCell b) const {
  return QRect(QPoint(std::min(a.column, b.column), std::min(a.row, b.row)),
               QPoint(std::max(a.column, b.column), std::max(a.row, b.row)));
}

// What is in view is what the table could do, and the model hears of it; a table that isn't shown yet has no say.
void GridView::tellView() {
  if (!isVisible() || viewport()->height() <= 0) return;
  const int rows = viewport()->height() / std::max(verticalHeader()->defaultSectionSize(), 1);
  const int first = verticalScrollBar()->value();
  if (!handOver([rows](DataGrid& grid) { grid.userVisibleRows(rows); })) return;
  if (model() && model()->firstRow() > first) handOver([first](DataGrid& grid) { grid.userScroll(first); });
}

void GridView::resizeEvent(QResizeEvent* event) {
  QTableView::resizeEvent(event);
  refresh();
}

void GridView::changeEvent(QEvent* event) {
  QTableView::changeEvent(event);
  if (event->type() == QEvent::FontChange && !showing_) refresh();
}

// Moved by other hands than the model's, as by an aid that reads the screen.
void GridView::currentChanged(const QModelIndex& current, const QModelIndex& previous) {
  QTableView::currentChanged(current, previous);
  if (showing_ || items_->shifting() || !current.isValid()) return;
  const bool stands = handOver([&](DataGrid& grid) { grid.userMoveTo(current.row(), current.column()); });
  if (stands) refresh();
}

}  // namespace vantrelix::qt
