#include "ui/grid/grid_delegate.h"

#include <QApplication>
#include <QComboBox>
#include <QKeyEvent>
#include <QPainter>

#include "ui/grid/grid_table_model.h"

namespace orvane {
namespace {

// A drop-down editor that tells a choice picked from its open list (which commits) from one
// reached with the arrows or by typing while it is closed (which does not).
class ChoiceBox : public QComboBox {
 public:
  using QComboBox::QComboBox;
  bool keying() const { return keying_; }

 protected:
  void keyPressEvent(QKeyEvent* event) override {
    keying_ = true;
    QComboBox::keyPressEvent(event);
    keying_ = false;
  }

 private:
  bool keying_ = false;
};

int arrowWidth(const QStyleOptionViewItem& option) { return option.fontMetrics.height(); }

}  // namespace

QWidget* GridDelegate::createEditor(QWidget* parent, const QStyleOptionViewItem& option,
                                    const QModelIndex& index) const {
  if (!index.data(GridTableModel::DropDownRole).toBool()) return QStyledItemDelegate::createEditor(parent, option, index);
  auto* choices = new ChoiceBox(parent);
  choices->setEditable(false);
  choices->addItems(index.data(GridTableModel::ChoicesRole).toStringList());
  choices->setAccessibleName(index.model()->headerData(index.column(), Qt::Horizontal).toString());
  connect(choices, &QComboBox::activated, this, [this, choices] {
    if (!choices->keying()) const_cast<GridDelegate*>(this)->commitAndClose(choices);
  });
  return choices;
}

void GridDelegate::commitAndClose(QWidget* editor) {
  emit commitData(editor);
  emit closeEditor(editor);
}

// Enter is handled here, not left to the editor: a line edit passes an Enter on to its window,
// whose default button would end the dialog.
bool GridDelegate::eventFilter(QObject* watched, QEvent* event) {
  auto* editor = qobject_cast<QWidget*>(watched);
  if (editor != nullptr && event->type() == QEvent::KeyPress) {
    const int key = static_cast<QKeyEvent*>(event)->key();
    if (key == Qt::Key_Return || key == Qt::Key_Enter) {
      commitAndClose(editor);
      emit committedWithEnter();
      return true;
    }
  }
  return QStyledItemDelegate::eventFilter(watched, event);
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

void GridDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const {
  if (!index.data(GridTableModel::DropDownRole).toBool()) return QStyledItemDelegate::paint(painter, option, index);
  const int arrow = arrowWidth(option);
  QStyledItemDelegate::paint(painter, option, index);
  QStyleOption mark;
  mark.initFrom(option.widget);
  mark.rect = QRect(option.rect.right() - arrow, option.rect.top(), arrow, option.rect.height());
  mark.palette.setColor(QPalette::ButtonText, option.palette.color(QPalette::Text));
  const QStyle* style = option.widget != nullptr ? option.widget->style() : QApplication::style();
  style->drawPrimitive(QStyle::PE_IndicatorArrowDown, &mark, painter, option.widget);
}

// A drop-down cell keeps room for its arrow when the columns fit their contents.
QSize GridDelegate::sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const {
  QSize size = QStyledItemDelegate::sizeHint(option, index);
  if (index.data(GridTableModel::DropDownRole).toBool()) size.rwidth() += arrowWidth(option);
  return size;
}

}  // namespace orvane
