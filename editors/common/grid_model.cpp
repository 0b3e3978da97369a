#include "editors/common/grid_model.h"

#include <new>

namespace orvane {

GridCell GridModel::blankCell() const {
  GridCell cell;
  cell.background = defaultBackground;
  return cell;
}

void GridModel::clear() {
  for (GridCell& cell : cells_) cell = blankCell();
}

bool GridModel::setShape(int rows, int columns, int fixedRows, int fixedColumns) {
  if (rows < 0 || columns < 0) return false;
  try {
    std::vector<GridCell> cells(static_cast<std::size_t>(rows) * static_cast<std::size_t>(columns),
                                blankCell());
    cells_.swap(cells);
  } catch (const std::bad_alloc&) {
    return false;
  }
  rows_ = rows;
  columns_ = columns;
  fixedRows_ = fixedRows;
  fixedColumns_ = fixedColumns;
  return true;
}

}  // namespace orvane
