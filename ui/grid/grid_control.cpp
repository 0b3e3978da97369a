#include "ui/grid/grid_control.h"

#include <QHeaderView>

#include "ui/grid/grid_delegate.h"
#include "ui/grid/grid_table_model.h"

namespace orvane {

GridControl::GridControl(QWidget* parent) : QTableView(parent), cells_(new GridTableModel(this)) {
  setModel(cells_);
  setItemDelegate(new GridDelegate(this));
  setSelectionMode(QAbstractItemView::SingleSelection);
  setSelectionBehavior(QAbstractItemView::SelectItems);
  // A double click belongs to the dialog, so it must not also start an in-place edit.
  setEditTriggers(QAbstractItemView::SelectedClicked | QAbstractItemView::EditKeyPressed |
                  QAbstractItemView::AnyKeyPressed);
  setWordWrap(false);
  setTextElideMode(Qt::ElideRight);
  verticalHeader()->hide();
  horizontalHeader()->setSectionsClickable(false);
  horizontalHeader()->setHighlightSections(false);
  horizontalHeader()->setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);

  connect(cells_, &GridTableModel::editEnded, this, &GridControl::cellEdited);
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
  cells_->setGrid(grid);
  horizontalHeader()->setVisible(cells_->hasHeader());
  horizontalHeader()->setSectionResizeMode(grid.fillWidth ? QHeaderView::Stretch : QHeaderView::Interactive);
}

QModelIndex GridControl::cellIndex(int row, int column) const { return cells_->index(cells_->tableRow(row), column); }

QRect GridControl::cellRect(int row, int column) const { return visualRect(cellIndex(row, column)); }

}  // namespace orvane
