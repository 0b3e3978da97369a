// In-place editors of the grid's cells: a line edit for a text cell, and for a drop-down cell a
// QComboBox that offers exactly the cell's choices and takes no typing. Enter commits either and
// tells the grid, which then moves down a row; the arrows and typing only move through a
// drop-down's choices, and a choice picked from its open list commits at once. Drop-down cells are
// drawn with an arrow at their right end.
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
  void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override;
  QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;

 signals:
  // An edit ended with Enter, after its text was handed to the model.
  void committedWithEnter();

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void commitAndClose(QWidget* editor);
};

}  // namespace orvane

#endif
