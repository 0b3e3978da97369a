// The value grid of the assignment editors on a QTableView: the cells of a GridModel with their
// colours, the fixed first row as the header, read-only cells (in italics) and editable ones,
// in-place text and drop-down editors (marked by an arrow).
//
// Keyboard: the grid is one stop of the dialog's Tab chain and the arrows move inside it. Typing or
// F2 starts an edit (Alt+Down opens a drop-down's list), Enter commits it and moves to the cell
// below, Esc drops it; Enter outside an edit also moves down and never reaches the dialog's default
// button. A click on the selected cell starts an edit too; a double click is left to the dialog,
// which opens its value chooser.
//
// The dialog shows its grid again after every change; the grid keeps its current cell and scroll
// position across that. Columns fit their contents and titles when the grid takes a new shape, the
// user can resize them, and the last one fills the rest of the width.
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

 protected:
  void keyPressEvent(QKeyEvent* event) override;
  void closeEditor(QWidget* editor, QAbstractItemDelegate::EndEditHint hint) override;

 private:
  void presentNow(const GridModel& grid);
  void presentPending();
  void moveDown();

  GridTableModel* cells_;
  // A grid given while an edit was ending, shown once the editor has closed.
  GridModel pending_;
  bool pendingQueued_ = false;
};

}  // namespace orvane

#endif
