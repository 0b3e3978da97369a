// The value grid of the assignment editors on a QTableView: the cells of a GridModel with their
// colours, the fixed first row as the header, read-only and editable cells, in-place text and
// drop-down editors, columns filling the width. An edit is started by F2, by typing, or by a click
// on the selected cell; a double click is left to the dialog, which opens its value chooser.
#ifndef ORVANE_UI_GRID_GRID_CONTROL_H
#define ORVANE_UI_GRID_GRID_CONTROL_H

#include <QTableView>

#include "editors/common/grid_model.h"

namespace orvane {

class GridTableModel;

class GridControl : public QTableView {
  Q_OBJECT

 public:
  explicit GridControl(QWidget* parent = nullptr);

  // Shows `grid` as it is now; call again after every change to it.
  void display(const GridModel& grid);

  // Where the grid's cell (row, column) is drawn, in viewport coordinates; empty for a cell with no
  // table cell (the header row).
  QRect cellRect(int row, int column) const;
  QModelIndex cellIndex(int row, int column) const;

 signals:
  // In the grid's own rows, the header row being row 0.
  void cellEdited(int row, int column, const QString& text);
  void cellDoubleClicked(int row, int column);

 private:
  void presentNow(const GridModel& grid);
  void presentPending();

  GridTableModel* cells_;
  // A grid given while an edit was ending, shown once the editor has closed.
  GridModel pending_;
  bool pendingQueued_ = false;
};

}  // namespace orvane

#endif
