// The value grid of the assignment editors as data: its shape, the fixed header row, and for each
// cell its text, colours, read-only state and, for drop-down cells, the choices. The Qt view renders
// it on Qt's item views and reports the end of an in-place edit and double-clicks back.
#ifndef ORVANE_EDITORS_COMMON_GRID_MODEL_H
#define ORVANE_EDITORS_COMMON_GRID_MODEL_H

#include <cstdint>
#include <string>
#include <vector>

namespace orvane {

struct Rgb {
  uint8_t red = 0, green = 0, blue = 0;
  friend bool operator==(const Rgb&, const Rgb&) = default;
};

inline constexpr Rgb kBlack{0, 0, 0};
inline constexpr Rgb kWhite{255, 255, 255};
inline constexpr Rgb kHeaderGrey{160, 160, 160};
inline constexpr Rgb kLightYellow{255, 255, 224};

struct GridCell {
  std::u16string text;
  Rgb textColour = kBlack;
  Rgb background = kWhite;
  bool readOnly = false;
  bool dropDown = false;               // edited by choosing one of `choices`, nothing else
  std::vector<std::u16string> choices;
};

class GridModel {
 public:
  // Deletes every cell; the shape stays.
  void clear();
  // Sets the shape; every cell starts empty on the default background. False when there is no
  // memory for it: the grid then keeps what it had.
  bool setShape(int rows, int columns, int fixedRows, int fixedColumns);

  int rowCount() const { return rows_; }
  int columnCount() const { return columns_; }
  int fixedRowCount() const { return fixedRows_; }
  int fixedColumnCount() const { return fixedColumns_; }

  bool contains(int row, int column) const {
    return row >= 0 && row < rows_ && column >= 0 && column < columns_;
  }
  // The cell at (row, column); both must be within the shape.
  GridCell& cell(int row, int column) { return cells_[index(row, column)]; }
  const GridCell& cell(int row, int column) const { return cells_[index(row, column)]; }

  Rgb defaultBackground = kWhite;
  bool compareCellsAsNumbers = false;  // sorting reads the cells' texts as integers
  bool fillWidth = false;              // columns are widened to fill the grid's width

 private:
  GridCell blankCell() const;
  std::size_t index(int row, int column) const {
    return static_cast<std::size_t>(row) * static_cast<std::size_t>(columns_) + static_cast<std::size_t>(column);
  }

  int rows_ = 0, columns_ = 0, fixedRows_ = 0, fixedColumns_ = 0;
  std::vector<GridCell> cells_;
};

}  // namespace orvane

#endif
