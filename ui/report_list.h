// A report-style list: the columns and rows of a ListViewState in a table with grid lines, whole-row
// selection and hover highlight. Clicks and double clicks report the row under the pointer, -1 off
// the rows, which is what the dialogs' selectRow and edit operations take. A row selected any other
// way (the arrow keys, an assistive technology) is reported as clicked too.
//
// Keyboard: the list is one stop of the dialog's Tab chain and the arrows move through its rows.
// Enter or F2 press the dialog's edit button, Delete its delete button and Insert its insert button,
// where it has them; Enter never reaches the dialog's default button.
#ifndef ORVANE_UI_REPORT_LIST_H
#define ORVANE_UI_REPORT_LIST_H

#include <QAbstractButton>
#include <QTableWidget>
#include <vector>

#include "editors/common/dialog.h"

namespace orvane {

class ReportList : public QTableWidget {
  Q_OBJECT

 public:
  explicit ReportList(QWidget* parent = nullptr);

  // Shows `state`. Columns and rows are rebuilt only when they changed, so a selection the user
  // made survives operations that leave the list alone; then the state's row is revealed.
  void showState(const ListViewState& state);

  // The set list lets several rows be selected for "Guardar como...".
  void allowSeveralRows(bool several);
  // The selected rows, from the top.
  std::vector<int> selectedRows() const;
  // The buttons the Insert, Enter/F2 and Delete keys press; null for a key the list leaves alone.
  void setKeyButtons(QAbstractButton* insert, QAbstractButton* edit, QAbstractButton* remove);

 signals:
  void rowClicked(int row);
  void rowDoubleClicked(int row, Qt::MouseButton button);  // the left or the right button

 protected:
  void mousePressEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void mouseDoubleClickEvent(QMouseEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void showEvent(QShowEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;

 private:
  void rebuild(const ListViewState& state);
  void sizeColumns();
  void fillWithLastColumn();
  void reveal(int row);
  int rowAt(const QPoint& position) const;
  void reportClick(int row);
  void followSelection(const QItemSelection& selected);

  ListViewState shown_;
  bool sizedWhileVisible_ = false;
  int lastColumnFitted_ = 0;  // the width the last column's contents and title need
  bool showing_ = false;    // the dialog's state is being shown: selections are not the user's
  bool mouseDown_ = false;  // a click reports its row when the button is released
  QAbstractButton* insertButton_ = nullptr;
  QAbstractButton* editButton_ = nullptr;
  QAbstractButton* removeButton_ = nullptr;
};

}  // namespace orvane

#endif
