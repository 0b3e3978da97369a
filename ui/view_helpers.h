// Small bridges between the logic's state and Qt widgets, shared by the views.
#ifndef ORVANE_UI_VIEW_HELPERS_H
#define ORVANE_UI_VIEW_HELPERS_H

#include <QComboBox>
#include <QLineEdit>
#include <QString>
#include <string>
#include <string_view>

#include "editors/common/dialog.h"

namespace orvane {

inline QString toQString(std::u16string_view text) {
  return QString::fromUtf16(text.data(), static_cast<qsizetype>(text.size()));
}
inline std::u16string toU16(const QString& text) { return text.toStdU16String(); }

// Sets the edit's text only when it differs, so the cursor and selection of an unchanged edit stay.
void showText(QLineEdit* edit, const std::u16string& text);

// Shows a drop-down list's entries, selection and enabled state without reporting a selection.
void showCombo(QComboBox* combo, const ComboState& state);

}  // namespace orvane

#endif
