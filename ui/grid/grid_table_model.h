// orvane::GridModel as a Qt table model. The grid's first fixed row is the table's horizontal
// header, so it stays in place when the rows scroll; the other rows are the table's rows. The model
// shows a copy of the grid taken by setGrid, so the dialog may rebuild its grid at any moment
// without the views ever reading a grid of another shape than the one they were reset to.
#ifndef ORVANE_UI_GRID_GRID_TABLE_MODEL_H
#define ORVANE_UI_GRID_GRID_TABLE_MODEL_H

#include <QAbstractTableModel>

#include "editors/common/grid_model.h"

namespace orvane {

class GridTableModel : public QAbstractTableModel {
  Q_OBJECT

 public:
  // Data roles the delegate reads: whether a cell is edited by choosing, and its choices.
  enum Role { DropDownRole = Qt::UserRole + 1, ChoicesRole };

  explicit GridTableModel(QObject* parent = nullptr);

  // Shows a copy of `grid`. A grid of the rows shown (same shape, same names in the first column) is
  // updated in place, so the views keep their current cell and scroll position; another grid resets
  // them. True when they were reset.
  bool setGrid(const GridModel& grid);
  // True while an edit's end is being reported: the views are committing an editor then, and must
  // not be reset under it.
  bool reportingEdit() const { return reportingEdit_; }

  // The grid's row for a table row, and back. The header row has no table row.
  int gridRow(int tableRow) const { return tableRow + headerRows(); }
  int tableRow(int gridRow) const { return gridRow - headerRows(); }
  bool hasHeader() const { return headerRows() == 1; }

  int rowCount(const QModelIndex& parent = QModelIndex()) const override;
  int columnCount(const QModelIndex& parent = QModelIndex()) const override;
  QVariant data(const QModelIndex& index, int role) const override;
  QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
  Qt::ItemFlags flags(const QModelIndex& index) const override;
  // The end of an in-place edit: the text is reported, not stored. The grid's owner stores it and
  // reloads, as the value it shows may differ from what was typed.
  bool setData(const QModelIndex& index, const QVariant& value, int role) override;

 signals:
  void editEnded(int gridRow, int gridColumn, const QString& text);

 private:
  int headerRows() const;
  const GridCell* cellAt(int gridRow, int gridColumn) const;
  static QVariant cellData(const GridCell& cell, int role);
  bool sameShape(const GridModel& grid) const;

  GridModel grid_;
  bool reportingEdit_ = false;
};

}  // namespace orvane

#endif
