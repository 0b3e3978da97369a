#include "ui/grid/grid_delegate.h"

#include <QComboBox>

#include "ui/grid/grid_table_model.h"

namespace orvane {

QWidget* GridDelegate::createEditor(QWidget* parent, const QStyleOptionViewItem& option,
                                    const QModelIndex& index) const {
  if (!index.data(GridTableModel::DropDownRole).toBool()) return QStyledItemDelegate::createEditor(parent, option, index);
  auto* choices = new QComboBox(parent);
  choices->setEditable(false);
  choices->addItems(index.data(GridTableModel::ChoicesRole).toStringList());
  // Picking a choice ends the edit at once, as a drop-down list does.
  connect(choices, &QComboBox::activated, this, &GridDelegate::commitAndClose);
  return choices;
}

void GridDelegate::commitAndClose() {
  auto* editor = qobject_cast<QWidget*>(sender());
  emit commitData(editor);
  emit closeEditor(editor);
}

void GridDelegate::setEditorData(QWidget* editor, const QModelIndex& index) const {
  if (auto* choices = qobject_cast<QComboBox*>(editor)) {
    choices->setCurrentIndex(choices->findText(index.data(Qt::EditRole).toString(), Qt::MatchExactly));
    return;
  }
  QStyledItemDelegate::setEditorData(editor, index);
}

// A drop-down left without a choice changes nothing.
void GridDelegate::setModelData(QWidget* editor, QAbstractItemModel* model, const QModelIndex& index) const {
  if (auto* choices = qobject_cast<QComboBox*>(editor)) {
    if (choices->currentIndex() >= 0) model->setData(index, choices->currentText(), Qt::EditRole);
    return;
  }
  QStyledItemDelegate::setModelData(editor, model, index);
}

}  // namespace orvane
