// What makes a dialog usable without a mouse and by assistive technologies: every control has an
// accessible name and every button a mnemonic.
#ifndef ORVANE_UI_CONTROL_NAMES_H
#define ORVANE_UI_CONTROL_NAMES_H

class QWidget;

namespace orvane {

// Makes each label of a form row the buddy of the edit box or drop-down list beside it, so Alt plus
// the label's mnemonic reaches the field and the field is named by the label.
void pairLabelsWithFields(QWidget& dialog);

// Names each edit box, drop-down list, list and grid after its buddy label, else the frame around
// it, else (lists and grids) the dialog's caption. Call again after the captions change.
void nameControls(QWidget& dialog);

// Gives each button, check box and radio button whose text has no mnemonic one: the first letter of
// its text that no other control of the dialog uses yet.
void giveMnemonics(QWidget& dialog);

}  // namespace orvane

#endif
