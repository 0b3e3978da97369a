// In-place editors of the grid's cells: a line edit for a text cell, and for a drop-down cell a
// QComboBox that offers exactly the cell's choices and takes no typing.
#ifndef ORVANE_UI_GRID_GRID_DELEGATE_H
#define ORVANE_UI_GRID_GRID_DELEGATE_H

#include <QStyledItemDelegate>

namespace orvane {

class GridDelegate : public QStyledItemDelegate {
  Q_OBJECT

 public:
  using QStyledItemDelegate::QStyledItemDelegate;

  QWidget* createEditor(QWidget* parent, const QStyleOptionViewItem& option, const QModelIndex& index) const override;
  void setEditorData(QWidget* editor, const QModelIndex& index) const override;
  void setModelData(QWidget* editor, QAbstractItemModel* model, const QModelIndex& index) const override;

 private slots:
  void commitAndClose();
};

}  // namespace orvane

#endif
