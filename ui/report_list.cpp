#include "ui/report_list.h"

#include <QHeaderView>
#include <QKeyEvent>
#include <QMouseEvent>
#include <algorithm>

#include "ui/view_helpers.h"

namespace orvane {
namespace {

bool sameColumns(const std::vector<ListColumn>& a, const std::vector<ListColumn>& b) {
  return std::equal(a.begin(), a.end(), b.begin(), b.end(), [](const ListColumn& x, const ListColumn& y) {
    return x.title == y.title && x.widthDivisor == y.widthDivisor;
  });
}

bool sameContents(const ListViewState& a, const ListViewState& b) {
  return sameColumns(a.columns, b.columns) && a.rows == b.rows && a.fitColumnsToContents == b.fitColumnsToContents;
}

}  // namespace

ReportList::ReportList(QWidget* parent) : QTableWidget(parent) {
  setShowGrid(true);
  setSelectionBehavior(QAbstractItemView::SelectRows);
  setSelectionMode(QAbstractItemView::SingleSelection);
  setEditTriggers(QAbstractItemView::NoEditTriggers);
  setWordWrap(false);
  setMouseTracking(true);  // hover highlight of the row under the pointer
  setAttribute(Qt::WA_Hover);
  verticalHeader()->hide();
  horizontalHeader()->setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
  horizontalHeader()->setHighlightSections(false);
  horizontalHeader()->setSectionsClickable(false);
  setTabKeyNavigation(false);  // Tab leaves the list; the arrows move inside it
  connect(selectionModel(), &QItemSelectionModel::selectionChanged, this,
          [this](const QItemSelection& selected) { followSelection(selected); });
}

void ReportList::setKeyButtons(QAbstractButton* insert, QAbstractButton* edit, QAbstractButton* remove) {
  insertButton_ = insert;
  editButton_ = edit;
  removeButton_ = remove;
}

void ReportList::allowSeveralRows(bool several) {
  setSelectionMode(several ? QAbstractItemView::ExtendedSelection : QAbstractItemView::SingleSelection);
}

void ReportList::showState(const ListViewState& state) {
  showing_ = true;
  const bool rebuilt = !sameContents(state, shown_);
  if (rebuilt) rebuild(state);
  if (rebuilt || state.revealRow != shown_.revealRow) reveal(state.revealRow);
  shown_.revealRow = state.revealRow;
  showing_ = false;
}

void ReportList::rebuild(const ListViewState& state) {
  clear();
  setColumnCount(static_cast<int>(state.columns.size()));
  QStringList titles;
  for (const ListColumn& column : state.columns) titles.append(toQString(column.title));
  setHorizontalHeaderLabels(titles);
  setRowCount(static_cast<int>(state.rows.size()));
  for (int row = 0; row < rowCount(); ++row) {
    const std::vector<std::u16string>& texts = state.rows[static_cast<std::size_t>(row)];
    for (int column = 0; column < std::min(columnCount(), static_cast<int>(texts.size())); ++column)
      setItem(row, column, new QTableWidgetItem(toQString(texts[static_cast<std::size_t>(column)])));
  }
  shown_ = state;
  sizeColumns();
}

// Every column takes the wider of its contents and its title, as resizeColumnToContents measures
// them, so no title starts off-screen; the user can resize them, and the last fills the rest.
void ReportList::sizeColumns() {
  sizedWhileVisible_ = isVisible();
  resizeColumnsToContents();
  lastColumnFitted_ = columnCount() > 0 ? columnWidth(columnCount() - 1) : 0;
  fillWithLastColumn();
}

// Qt's own stretching of the last section is not redone when the other columns are fitted after
// it, so the last column is widened here, never below the width its contents need.
void ReportList::fillWithLastColumn() {
  const int last = columnCount() - 1;
  if (last < 0) return;
  int others = 0;
  for (int column = 0; column < last; ++column) others += columnWidth(column);
  setColumnWidth(last, std::max(lastColumnFitted_, viewport()->width() - others));
}

void ReportList::resizeEvent(QResizeEvent* event) {
  QTableWidget::resizeEvent(event);
  fillWithLastColumn();
}

// The widths taken before the dialog was first laid out were measured on a list of no real size.
void ReportList::showEvent(QShowEvent* event) {
  QTableWidget::showEvent(event);
  if (!sizedWhileVisible_) sizeColumns();
}

// A list whose dialog has no current row shows none selected.
void ReportList::reveal(int row) {
  if (row < 0) {
    selectionModel()->clear();
    return;
  }
  if (row >= rowCount()) return;
  const QModelIndex index = model()->index(row, 0);
  selectionModel()->setCurrentIndex(index, QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
  scrollTo(index);
  setFocus();
}

std::vector<int> ReportList::selectedRows() const {
  std::vector<int> rows;
  for (const QModelIndex& index : selectionModel()->selectedRows()) rows.push_back(index.row());
  std::sort(rows.begin(), rows.end());
  return rows;
}

int ReportList::rowAt(const QPoint& position) const {
  const QModelIndex index = indexAt(position);
  return index.isValid() ? index.row() : -1;
}

// The user's own click already shows the row selected: it must not be revealed again, which would
// undo a multiple selection.
void ReportList::reportClick(int row) {
  shown_.revealRow = row;
  emit rowClicked(row);
}

// What a selection change reports when no click made it: the current row if it is selected, else the
// first row that became selected. A row that only left the selection changes nothing.
void ReportList::followSelection(const QItemSelection& selected) {
  if (showing_ || mouseDown_) return;
  const QModelIndex current = currentIndex();
  if (current.isValid() && selectionModel()->isRowSelected(current.row(), QModelIndex())) return reportClick(current.row());
  if (!selected.isEmpty()) reportClick(selected.indexes().constFirst().row());
}

void ReportList::mousePressEvent(QMouseEvent* event) {
  mouseDown_ = true;
  QTableWidget::mousePressEvent(event);
}

void ReportList::mouseReleaseEvent(QMouseEvent* event) {
  mouseDown_ = false;
  QTableWidget::mouseReleaseEvent(event);
  if (event->button() == Qt::LeftButton) reportClick(rowAt(event->position().toPoint()));
}

void ReportList::mouseDoubleClickEvent(QMouseEvent* event) {
  QTableWidget::mouseDoubleClickEvent(event);
  if (event->button() == Qt::LeftButton || event->button() == Qt::RightButton)
    emit rowDoubleClicked(rowAt(event->position().toPoint()), event->button());
}

void ReportList::keyPressEvent(QKeyEvent* event) {
  QAbstractButton* pressed = nullptr;
  switch (event->key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
    case Qt::Key_F2: pressed = editButton_; break;
    case Qt::Key_Delete: pressed = removeButton_; break;
    case Qt::Key_Insert: pressed = insertButton_; break;
    case Qt::Key_Home:
    case Qt::Key_End:
      // A table takes Home and End along the row; in a list of whole rows they go to the first and
      // the last row.
      if (rowCount() > 0) {
        const QModelIndex row = model()->index(event->key() == Qt::Key_Home ? 0 : rowCount() - 1, 0);
        selectionModel()->setCurrentIndex(row, QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
        scrollTo(row);
      }
      return event->accept();
    default: return QTableWidget::keyPressEvent(event);
  }
  event->accept();  // also when there is no such button: Enter must not end the dialog
  if (pressed != nullptr && pressed->isEnabled() && pressed->isVisible()) pressed->click();
}

}  // namespace orvane
