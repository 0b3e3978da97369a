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
}

void ReportList::allowSeveralRows(bool several) {
  setSelectionMode(several ? QAbstractItemView::ExtendedSelection : QAbstractItemView::SingleSelection);
}

void ReportList::showState(const ListViewState& state) {
  const bool rebuilt = !sameContents(state, shown_);
  if (rebuilt) rebuild(state);
  if (rebuilt || state.revealRow != shown_.revealRow) reveal(state.revealRow);
  shown_.revealRow = state.revealRow;
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

// Columns start at a share of the list's width; a fitted column then takes the wider of its
// contents and its title, as resizeColumnToContents measures them.
void ReportList::sizeColumns() {
  sizedWhileVisible_ = isVisible();
  for (int column = 0; column < columnCount(); ++column) {
    if (shown_.fitColumnsToContents) {
      resizeColumnToContents(column);
    } else {
      const int divisor = std::max(1, shown_.columns[static_cast<std::size_t>(column)].widthDivisor);
      setColumnWidth(column, viewport()->width() / divisor);
    }
  }
}

// The widths taken before the dialog was first laid out were measured on a list of no real size.
void ReportList::showEvent(QShowEvent* event) {
  QTableWidget::showEvent(event);
  if (!sizedWhileVisible_) sizeColumns();
}

void ReportList::reveal(int row) {
  if (row < 0 || row >= rowCount()) return;
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

void ReportList::mouseReleaseEvent(QMouseEvent* event) {
  QTableWidget::mouseReleaseEvent(event);
  if (event->button() == Qt::LeftButton) reportClick(rowAt(event->position().toPoint()));
}

void ReportList::mouseDoubleClickEvent(QMouseEvent* event) {
  QTableWidget::mouseDoubleClickEvent(event);
  if (event->button() == Qt::LeftButton || event->button() == Qt::RightButton)
    emit rowDoubleClicked(rowAt(event->position().toPoint()), event->button());
}

// Moving through the rows with the keyboard counts as clicking the row reached.
void ReportList::keyPressEvent(QKeyEvent* event) {
  const int before = currentRow();
  QTableWidget::keyPressEvent(event);
  if (currentRow() != before) reportClick(currentRow());
}

}  // namespace orvane
