#include "demo/LibraryPanel.h"

#include <algorithm>

#include <QComboBox>
#include <QFormLayout>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QScopedValueRollback>
#include <QSignalBlocker>
#include <QSortFilterProxyModel>
#include <QStyledItemDelegate>
#include <QTableView>
#include <QTimer>
#include <QVBoxLayout>

#include "demo/AntennaTable.h"
#include "foundation/extract.h"
#include "foundation/suitePaths.h"
#include "foundation/text.h"
#include "platform/RunTimeFailure.h"
#include "qt/qtText.h"

namespace vantrelix::demo {

using qt::fromQt;
using qt::toQt;

namespace {

// Of a description; what is longer is cut before the list scrolls.
constexpr int kReadableLetters = 42;

// Room between the columns.
class RoomyDelegate : public QStyledItemDelegate {
 public:
  using QStyledItemDelegate::QStyledItemDelegate;
  QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override {
    return QStyledItemDelegate::sizeHint(option, index) + QSize(2 * option.fontMetrics.averageCharWidth(), 0);
  }
};

void setUpList(QTableView& list) {
  list.setObjectName("antennaList");
  list.setSelectionBehavior(QAbstractItemView::SelectRows);
  list.setSelectionMode(QAbstractItemView::SingleSelection);
  list.setEditTriggers(QAbstractItemView::NoEditTriggers);
  list.setTabKeyNavigation(false);
  list.setItemDelegate(new RoomyDelegate(&list));
  list.setShowGrid(false);
  list.setAlternatingRowColors(true);
  list.setWordWrap(false);
  list.setHorizontalScrollMode(QAbstractItemView::ScrollPerPixel);
  list.verticalHeader()->hide();
  list.verticalHeader()->setDefaultSectionSize(list.fontMetrics().height() * 3 / 2);
  list.horizontalHeader()->setHighlightSections(false);
}

// Columns as wide as what they hold; the description's width is the panel's to give.
void fitColumns(QTableView& list) {
  QHeaderView& header = *list.horizontalHeader();
  header.setSectionResizeMode(QHeaderView::ResizeToContents);
  header.setSectionResizeMode(AntennaTable::description, QHeaderView::Fixed);
  header.setMinimumSectionSize(list.fontMetrics().averageCharWidth() * 8);
}

bool sameLibrary(const std::string& file, const QString& wanted) {
  return equalIgnoringCase(ExtractBaseName(file), ExtractBaseName(ExtractFileName(fromQt(wanted))));
}

}  // namespace

LibraryPanel::LibraryPanel(QWidget* parent)
    : QWidget(parent),
      library_(new QComboBox(this)),
      find_(new QLineEdit(this)),
      list_(new QTableView(this)),
      resized_(new QTimer(this)),
      note_(new QLabel(this)),
      antennas_(new AntennaTable(this)),
      shown_(new QSortFilterProxyModel(this)) {
  build();
  connect(library_, &QComboBox::currentIndexChanged, this, &LibraryPanel::loadAntennas);
  connect(find_, &QLineEdit::textChanged, this, &LibraryPanel::filter);
  connect(list_->selectionModel(), &QItemSelectionModel::selectionChanged, this, [this] {
    if (!quiet_ && antenna()) Q_EMIT antennaChosen();
  });
  resized_->setSingleShot(true);
  connect(resized_, &QTimer::timeout, this, &LibraryPanel::settle);
  connect(list_, &QTableView::doubleClicked, this, &LibraryPanel::antennaActivated);
  loadLibraries();
}

void LibraryPanel::build() {
  library_->setObjectName("libraryList");
  library_->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
  library_->setMinimumContentsLength(16);
  find_->setObjectName("antennaFilter");
  find_->setPlaceholderText("Name, ID, gain or band");
  find_->setClearButtonEnabled(true);
  find_->setToolTip("Shows the antennas that hold this text");
  find_->installEventFilter(this);
  list_->installEventFilter(this);
  shown_->setSourceModel(antennas_);
  shown_->setFilterKeyColumn(-1);
  shown_->setFilterCaseSensitivity(Qt::CaseInsensitive);
  list_->setModel(shown_);
  setUpList(*list_);
  fitColumns(*list_);
  note_->setWordWrap(true);
  note_->setTextFormat(Qt::PlainText);
  note_->setObjectName("libraryNote");
  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins(0, 0, 0, 0);
  auto* fields = new QFormLayout;
  fields->setFieldGrowthPolicy(QFormLayout::AllNonFixedFieldsGrow);
  fields->addRow("Librar&y", library_);
  fields->addRow("&Find antenna", find_);
  layout->addLayout(fields);
  layout->addWidget(list_, 1);
  layout->addWidget(note_);
}

void LibraryPanel::loadLibraries() {
  libraries_ = libraryFiles(LibraryFamily::antenna);
  for (const LibraryEntry& entry : libraries_) {
    const bool named = getLenTrim(entry.description) > 0 && entry.description != "|";
    library_->addItem(toQt(named ? entry.description : entry.file));
    library_->setItemData(library_->count() - 1, toQt(entry.file), Qt::ToolTipRole);
  }
  library_->setEnabled(!libraries_.empty());
  if (libraries_.empty()) loadAntennas();
}

void LibraryPanel::loadAntennas() {
  const QScopedValueRollback<bool> rollback(quiet_, true);
  const LibraryEntry chosen = library();
  library_->setToolTip(toQt(chosen.file));
  failure_.clear();
  std::vector<AntennaListEntry> antennas;
  try {
    if (!chosen.file.empty()) antennas = listAntennas(getAntennasPath(), ExtractBaseName(chosen.file));
  } catch (const RunTimeFailure& failure) {
    failure_ = toQt(failure.description());
  }
  antennas_->setAntennas(std::move(antennas));
  showCount();
}

void LibraryPanel::filter(const QString& text) {
  const QScopedValueRollback<bool> rollback(quiet_, true);
  shown_->setFilterFixedString(text.trimmed());
  showCount();
}

QString LibraryPanel::countText() const {
  if (!failure_.isEmpty()) return failure_;
  if (libraries_.empty()) return "No antenna library in " + toQt(displayPath(getAntennasPath())) + ".";
  const int all = antennas_->rowCount();
  const int seen = shown_->rowCount();
  const QString antennas = QString(all == 1 ? "%1 antenna" : "%1 antennas").arg(all);
  return seen == all ? antennas : QString("%1 of ").arg(seen) + antennas;
}

void LibraryPanel::showCount() {
  note_->setText(countText());
  fitDescription();
  Q_EMIT listed();
}

void LibraryPanel::stand(int proxyRow) {
  if (proxyRow < 0 || proxyRow >= shown_->rowCount()) return;
  list_->selectRow(proxyRow);
  list_->scrollTo(shown_->index(proxyRow, 0));
}

bool LibraryPanel::choose(const QString& library, const QString& antenna) {
  const QScopedValueRollback<bool> rollback(quiet_, true);
  int index = library.isEmpty() && !libraries_.empty() ? 0 : -1;
  for (std::size_t i = 0; i < libraries_.size() && index < 0; ++i) {
    if (sameLibrary(libraries_[i].file, library)) index = static_cast<int>(i);
  }
  if (index < 0) return false;
  library_->setCurrentIndex(index);
  const int row = antenna.isEmpty() ? 0 : antennas_->rowOf(fromQt(antenna));
  if (row < 0 || row >= antennas_->rowCount()) return false;
  find_->clear();
  stand(shown_->mapFromSource(antennas_->index(row, 0)).row());
  return true;
}

void LibraryPanel::reload() {
  const QScopedValueRollback<bool> rollback(quiet_, true);
  const std::string file = library().file;
  const std::optional<AntennaListEntry> chosen = antenna();
  {
    const QSignalBlocker oneByOne(library_);
    library_->clear();
    loadLibraries();
    const auto same = std::find_if(libraries_.begin(), libraries_.end(),
                                   [&](const LibraryEntry& entry) { return entry.file == file; });
    if (same != libraries_.end()) library_->setCurrentIndex(static_cast<int>(same - libraries_.begin()));
  }
  loadAntennas();
  if (!chosen || library().file != file) return;
  const int row = antennas_->rowOf(chosen->id);
  if (row >= 0) stand(shown_->mapFromSource(antennas_->index(row, 0)).row());
}

void LibraryPanel::forget() {
  const QScopedValueRollback<bool> rollback(quiet_, true);
  list_->clearSelection();
}

LibraryEntry LibraryPanel::library() const {
  const int index = library_->currentIndex();
  return index < 0 ? LibraryEntry{} : libraries_[static_cast<std::size_t>(index)];
}

std::optional<AntennaListEntry> LibraryPanel::antenna() const {
  const QModelIndexList rows = list_->selectionModel()->selectedRows();
  if (rows.isEmpty()) return std::nullopt;
  return antennas_->antennas()[static_cast<std::size_t>(shown_->mapToSource(rows.first()).row())];
}

// The description takes what the other columns leave; where that is too little, the list scrolls.
void LibraryPanel::fitDescription() {
  int left = list_->viewport()->width();
  for (int column = 1; column < AntennaTable::columns; ++column) left -= list_->columnWidth(column);
  const int most = list_->fontMetrics().averageCharWidth() * kReadableLetters;
  const QAbstractItemView& view = *list_;
  const int least = std::min(view.sizeHintForColumn(AntennaTable::description), most);
  list_->setColumnWidth(AntennaTable::description, std::max(left, least));
}

// Once the list has its size: what is chosen stays in sight.
void LibraryPanel::settle() {
  fitDescription();
  list_->scrollTo(list_->currentIndex().siblingAtColumn(AntennaTable::description));
}

bool LibraryPanel::eventFilter(QObject* watched, QEvent* event) {
  if (watched == list_ && event->type() == QEvent::Resize) resized_->start();
  if (event->type() != QEvent::KeyPress) return QWidget::eventFilter(watched, event);
  const int key = static_cast<QKeyEvent*>(event)->key();
  const bool enter = key == Qt::Key_Return || key == Qt::Key_Enter;
  if (enter && watched == list_ && antenna()) {
    Q_EMIT antennaActivated();
    return true;
  }
  if (watched == find_ && (key == Qt::Key_Down || (enter && !find_->text().isEmpty()))) {
    list_->setFocus(Qt::OtherFocusReason);
    if (!antenna()) stand(0);
    return true;
  }
  return QWidget::eventFilter(watched, event);
}

}  // namespace vantrelix::demo
