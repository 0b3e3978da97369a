#include "ui/grid/grid_control.h"

#include <QComboBox>
#include <QHeaderView>
#include <QKeyEvent>
#include <QScrollBar>

#include "ui/grid/grid_delegate.h"
#include "ui/grid/grid_table_model.h"

namespace orvane {

GridControl::GridControl(QWidget* parent) : QTableView(parent), cells_(new GridTableModel(this)) {
  setModel(cells_);
  auto* delegate = new GridDelegate(this);
  setItemDelegate(delegate);
  setSelectionMode(QAbstractItemView::SingleSelection);
  setSelectionBehavior(QAbstractItemView::SelectItems);
  // A double click belongs to the dialog, so it must not also start an in-place edit.
  setEditTriggers(QAbstractItemView::SelectedClicked | QAbstractItemView::EditKeyPressed |
                  QAbstractItemView::AnyKeyPressed);
  setTabKeyNavigation(false);  // Tab leaves the grid; the arrows move inside it
  setWordWrap(false);
  setTextElideMode(Qt::ElideRight);
  verticalHeader()->hide();
  horizontalHeader()->setSectionsClickable(false);
  horizontalHeader()->setHighlightSections(false);
  horizontalHeader()->setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
  horizontalHeader()->setSectionResizeMode(QHeaderView::Interactive);
  horizontalHeader()->setStretchLastSection(true);

  connect(cells_, &GridTableModel::editEnded, this, &GridControl::cellEdited);
  // Queued, so the cell below is reached after the grid the commit produced is shown.
  connect(delegate, &GridDelegate::committedWithEnter, this, &GridControl::moveDown, Qt::QueuedConnection);
  connect(this, &QAbstractItemView::doubleClicked, this, [this](const QModelIndex& index) {
    emit cellDoubleClicked(cells_->gridRow(index.row()), index.column());
  });
}

// The dialog rebuilds its grid from inside the end of an edit, while the view is still committing
// the editor: resetting the model then would pull the editor from under the view.
void GridControl::display(const GridModel& grid) {
  if (!cells_->reportingEdit()) return presentNow(grid);
  pending_ = grid;
  if (pendingQueued_) return;
  pendingQueued_ = true;
  QMetaObject::invokeMethod(this, &GridControl::presentPending, Qt::QueuedConnection);
}

void GridControl::presentPending() {
  pendingQueued_ = false;
  presentNow(pending_);
}

void GridControl::presentNow(const GridModel& grid) {
  const QModelIndex current = currentIndex();
  const int row = current.row(), column = current.column();
  const int across = horizontalScrollBar()->value(), down = verticalScrollBar()->value();
  if (!cells_->setGrid(grid)) return;  // updated in place: nothing moved
  horizontalHeader()->setVisible(cells_->hasHeader());
  resizeColumnsToContents();
  if (row >= 0 && column >= 0 && cells_->rowCount() > 0) {
    const QModelIndex kept = cells_->index(std::min(row, cells_->rowCount() - 1), std::min(column, cells_->columnCount() - 1));
    selectionModel()->setCurrentIndex(kept, QItemSelectionModel::ClearAndSelect);
  }
  horizontalScrollBar()->setValue(across);
  verticalScrollBar()->setValue(down);
}

void GridControl::moveDown() {
  const QModelIndex below = currentIndex().siblingAtRow(currentIndex().row() + 1);
  if (below.isValid()) {
    selectionModel()->setCurrentIndex(below, QItemSelectionModel::ClearAndSelect);
    scrollTo(below);
  }
}

void GridControl::keyPressEvent(QKeyEvent* event) {
  if (state() == EditingState) return QTableView::keyPressEvent(event);
  if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) {
    moveDown();
    return event->accept();
  }
  // Alt+Down and F4 open a drop-down cell's list, as they open a drop-down list's.
  const bool openList = event->key() == Qt::Key_F4 || (event->key() == Qt::Key_Down && (event->modifiers() & Qt::AltModifier));
  if (openList && currentIndex().data(GridTableModel::DropDownRole).toBool()) {
    if (edit(currentIndex(), EditKeyPressed, event))
      if (auto* choices = qobject_cast<QComboBox*>(indexWidget(currentIndex()))) choices->showPopup();
    return event->accept();
  }
  QTableView::keyPressEvent(event);
}

// Tab in an editor commits it and goes on to the dialog's next control, as Tab does outside one.
void GridControl::closeEditor(QWidget* editor, QAbstractItemDelegate::EndEditHint hint) {
  const bool next = hint == QAbstractItemDelegate::EditNextItem;
  const bool leaving = next || hint == QAbstractItemDelegate::EditPreviousItem;
  QTableView::closeEditor(editor, leaving ? QAbstractItemDelegate::NoHint : hint);
  if (leaving) QWidget::focusNextPrevChild(next);
}

QModelIndex GridControl::cellIndex(int row, int column) const { return cells_->index(cells_->tableRow(row), column); }

QRect GridControl::cellRect(int row, int column) const { return visualRect(cellIndex(row, column)); }

}  // namespace orvane
