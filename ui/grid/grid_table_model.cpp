#include "ui/grid/grid_table_model.h"

#include <QBrush>
#include <QColor>
#include <QFont>
#include <QStringList>

namespace orvane {
namespace {

QBrush brushOf(Rgb colour) { return QBrush(QColor(colour.red, colour.green, colour.blue)); }

// Grid cells are one line high: a line feed kept in a value is shown as a space.
QString oneLine(const std::u16string& text) {
  QString shown = QString::fromStdU16String(text);
  shown.replace(QLatin1String("\r\n"), QLatin1String(" "));
  shown.replace(QLatin1Char('\n'), QLatin1Char(' '));
  shown.replace(QLatin1Char('\r'), QLatin1Char(' '));
  return shown;
}

}  // namespace

GridTableModel::GridTableModel(QObject* parent) : QAbstractTableModel(parent) {}

// The same rows in the same columns: the shape, and the first column's texts (the rows' names), so
// another set of as many properties counts as a new grid.
bool GridTableModel::sameShape(const GridModel& grid) const {
  if (grid.rowCount() != grid_.rowCount() || grid.columnCount() != grid_.columnCount() ||
      grid.fixedRowCount() != grid_.fixedRowCount() || grid.fixedColumnCount() != grid_.fixedColumnCount())
    return false;
  for (int row = 0; row < grid.rowCount() && grid.columnCount() > 0; ++row)
    if (grid.cell(row, 0).text != grid_.cell(row, 0).text) return false;
  return true;
}

bool GridTableModel::setGrid(const GridModel& grid) {
  if (!sameShape(grid) || rowCount() == 0 || columnCount() == 0) {
    beginResetModel();
    grid_ = grid;
    endResetModel();
    return true;
  }
  grid_ = grid;
  emit dataChanged(index(0, 0), index(rowCount() - 1, columnCount() - 1));
  if (hasHeader()) emit headerDataChanged(Qt::Horizontal, 0, columnCount() - 1);
  return false;
}

int GridTableModel::headerRows() const {
  return grid_.fixedRowCount() > 0 && grid_.rowCount() > 0 ? 1 : 0;
}

const GridCell* GridTableModel::cellAt(int gridRow, int gridColumn) const {
  return grid_.contains(gridRow, gridColumn) ? &grid_.cell(gridRow, gridColumn) : nullptr;
}

int GridTableModel::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : grid_.rowCount() - headerRows();
}

int GridTableModel::columnCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : grid_.columnCount();
}

QVariant GridTableModel::cellData(const GridCell& cell, int role) {
  switch (role) {
    case Qt::DisplayRole: return oneLine(cell.text);
    case Qt::EditRole: return QString::fromStdU16String(cell.text);
    case Qt::BackgroundRole: return brushOf(cell.background);
    case Qt::ForegroundRole: return brushOf(cell.textColour);
    case Qt::TextAlignmentRole: return QVariant::fromValue(Qt::Alignment(Qt::AlignLeft | Qt::AlignVCenter));
    case DropDownRole: return cell.dropDown;
    case ChoicesRole: {
      QStringList choices;
      for (const std::u16string& choice : cell.choices) choices.append(QString::fromStdU16String(choice));
      return choices;
    }
    default: return {};
  }
}

// Cells the user cannot change are drawn in italics, on the colours the grid gives them.
QVariant GridTableModel::data(const QModelIndex& index, int role) const {
  const GridCell* cell = index.isValid() ? cellAt(gridRow(index.row()), index.column()) : nullptr;
  if (cell == nullptr) return {};
  if (role == Qt::FontRole && !(flags(index) & Qt::ItemIsEditable)) {
    QFont readOnly;
    readOnly.setItalic(true);
    return readOnly;
  }
  return cellData(*cell, role);
}

QVariant GridTableModel::headerData(int section, Qt::Orientation orientation, int role) const {
  if (orientation != Qt::Horizontal || !hasHeader()) return {};
  const GridCell* cell = cellAt(0, section);
  return cell != nullptr ? cellData(*cell, role) : QVariant();
}

// Fixed cells (further fixed rows, fixed columns) are neither selected nor edited.
Qt::ItemFlags GridTableModel::flags(const QModelIndex& index) const {
  const int row = index.isValid() ? gridRow(index.row()) : -1;
  const GridCell* cell = cellAt(row, index.column());
  if (cell == nullptr) return Qt::NoItemFlags;
  if (row < grid_.fixedRowCount() || index.column() < grid_.fixedColumnCount()) return Qt::ItemIsEnabled;
  Qt::ItemFlags flags = Qt::ItemIsEnabled | Qt::ItemIsSelectable;
  if (!cell->readOnly) flags |= Qt::ItemIsEditable;
  return flags;
}

bool GridTableModel::setData(const QModelIndex& index, const QVariant& value, int role) {
  if (role != Qt::EditRole || !(flags(index) & Qt::ItemIsEditable)) return false;
  // A drop-down cell takes only one of its choices, whoever edits it.
  const GridCell& cell = *cellAt(gridRow(index.row()), index.column());
  if (cell.dropDown && !data(index, ChoicesRole).toStringList().contains(value.toString())) return false;
  reportingEdit_ = true;
  emit editEnded(gridRow(index.row()), index.column(), value.toString());
  reportingEdit_ = false;
  return true;
}

}  // namespace orvane
