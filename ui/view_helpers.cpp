#include "ui/view_helpers.h"

#include <QSignalBlocker>

namespace orvane {

void showText(QLineEdit* edit, const std::u16string& text) {
  const QString shown = toQString(text);
  if (edit->text() != shown) edit->setText(shown);
}

void showCombo(QComboBox* combo, const ComboState& state) {
  const QSignalBlocker quiet(combo);
  QStringList entries;
  for (const std::u16string& entry : state.entries) entries.append(toQString(entry));
  QStringList shown;
  for (int i = 0; i < combo->count(); ++i) shown.append(combo->itemText(i));
  if (shown != entries) {
    combo->clear();
    combo->addItems(entries);
  }
  combo->setCurrentIndex(state.hasSelection() ? state.selected : -1);
  combo->setEnabled(state.enabled);
}

}  // namespace orvane
