#include "ui/control_names.h"

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QComboBox>
#include <QFormLayout>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QSet>

namespace orvane {
namespace {

QString withoutMnemonic(QString text) {
  text.replace(QLatin1String("&&"), QLatin1String("\x01"));
  text.remove(QLatin1Char('&'));
  text.replace(QLatin1Char('\x01'), QLatin1Char('&'));
  return text.simplified();
}

// The letter after a single '&', lower-cased; a null character when there is none.
QChar mnemonicOf(const QString& text) {
  for (qsizetype i = 0; i + 1 < text.size(); ++i) {
    if (text[i] != QLatin1Char('&')) continue;
    if (text[i + 1] != QLatin1Char('&')) return text[i + 1].toLower();
    ++i;
  }
  return {};
}

bool isField(const QWidget* widget) {
  return qobject_cast<const QLineEdit*>(widget) != nullptr || qobject_cast<const QComboBox*>(widget) != nullptr;
}

// The property by which a text display knows the label beside it.
constexpr char kNamingLabel[] = "orvaneNamingLabel";

QString buddyText(const QWidget& dialog, const QWidget* field) {
  if (const auto* label = qobject_cast<const QLabel*>(field->property(kNamingLabel).value<QObject*>()))
    return withoutMnemonic(label->text());
  for (const QLabel* label : dialog.findChildren<QLabel*>())
    if (label->buddy() == field) return withoutMnemonic(label->text());
  return {};
}

QString frameTitle(const QWidget* widget) {
  for (const QWidget* up = widget->parentWidget(); up != nullptr; up = up->parentWidget())
    if (const auto* frame = qobject_cast<const QGroupBox*>(up)) return withoutMnemonic(frame->title());
  return {};
}

QString nameFor(const QWidget& dialog, const QWidget* control) {
  QString name = buddyText(dialog, control);
  if (name.isEmpty()) name = frameTitle(control);
  if (name.isEmpty() && qobject_cast<const QAbstractItemView*>(control) != nullptr) name = dialog.windowTitle();
  return name;
}

// The widget a form row's field holds: the field itself, or the first widget of a field that is a
// row of widgets (a drop-down list with its button).
QWidget* fieldWidget(QLayoutItem* field) {
  if (field == nullptr) return nullptr;
  if (field->widget() != nullptr) return field->widget();
  const QLayout* row = field->layout();
  for (int i = 0; row != nullptr && i < row->count(); ++i)
    if (QWidget* widget = row->itemAt(i)->widget()) return widget;
  return nullptr;
}

}  // namespace

void pairLabelsWithFields(QWidget& dialog) {
  for (const QFormLayout* form : dialog.findChildren<QFormLayout*>()) {
    for (int row = 0; row < form->rowCount(); ++row) {
      const QLayoutItem* labelItem = form->itemAt(row, QFormLayout::LabelRole);
      auto* label = labelItem != nullptr ? qobject_cast<QLabel*>(labelItem->widget()) : nullptr;
      QWidget* field = fieldWidget(form->itemAt(row, QFormLayout::FieldRole));
      if (label == nullptr || field == nullptr || label->buddy() != nullptr) continue;
      // A text shown beside its label (the set's name) is named by it; a field is its buddy.
      if (qobject_cast<QLabel*>(field) != nullptr) field->setProperty(kNamingLabel, QVariant::fromValue<QObject*>(label));
      else if (isField(field)) label->setBuddy(field);
    }
  }
}

void nameControls(QWidget& dialog) {
  for (QWidget* control : dialog.findChildren<QWidget*>()) {
    const bool display = control->property(kNamingLabel).isValid();
    if (!isField(control) && !display && qobject_cast<QAbstractItemView*>(control) == nullptr) continue;
    // A drop-down's own list and a combo box's inner edit are named by the combo box.
    if (qobject_cast<QComboBox*>(control->parentWidget()) != nullptr) continue;
    if (control->window() != &dialog) continue;
    const QString name = nameFor(dialog, control);
    if (!name.isEmpty() && control->accessibleName() != name) control->setAccessibleName(name);
  }
}

void giveMnemonics(QWidget& dialog) {
  const QList<QAbstractButton*> buttons = dialog.findChildren<QAbstractButton*>();
  QSet<QChar> used;
  for (const QAbstractButton* button : buttons)
    if (const QChar letter = mnemonicOf(button->text()); !letter.isNull()) used.insert(letter);
  for (const QLabel* label : dialog.findChildren<QLabel*>())
    if (const QChar letter = mnemonicOf(label->text()); !letter.isNull()) used.insert(letter);
  for (QAbstractButton* button : buttons) {
    const QString text = button->text();
    if (text.isEmpty() || !mnemonicOf(text).isNull() || button->isHidden() || button->window() != &dialog) continue;
    for (qsizetype i = 0; i < text.size(); ++i) {
      const QChar letter = text[i].toLower();
      if (!letter.isLetterOrNumber() || used.contains(letter)) continue;
      used.insert(letter);
      button->setText(text.left(i) + QLatin1Char('&') + text.mid(i));
      break;
    }
  }
}

}  // namespace orvane
