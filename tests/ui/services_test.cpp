// DialogServices on Qt: the view runModal opens for each dialog class, named controls and mnemonics
// in every view, how a dialog ends, the real message boxes and file picker, and where the model's
// messages go.
#include <QAccessible>
#include <QFileDialog>
#include <QMessageBox>
#include <QRegularExpression>

#include "support/message_recorder.h"
#include "support/temp_dir.h"
#include "ui/editor_session.h"
#include "ui/message_box_sink.h"
#include "ui_fixture.h"

using namespace orvane;
using namespace orvane::test;

namespace {

// What a screen reader or a keyboard user would miss in `window`: each visible control that takes
// focus without an accessible name, each visible button with a letter but no mnemonic of its own.
std::string unnamedControls(QWidget& window) {
  QStringList missing, mnemonics;
  const std::function<void(QAccessibleInterface*)> walk = [&](QAccessibleInterface* node) {
    const auto* widget = qobject_cast<QWidget*>(node->object());
    if (widget != nullptr && widget->isVisible() && widget->focusPolicy() != Qt::NoFocus &&
        node->text(QAccessible::Name).trimmed().isEmpty())
      missing.append(widget->objectName());
    for (int i = 0; i < node->childCount(); ++i) walk(node->child(i));
  };
  walk(QAccessible::queryAccessibleInterface(&window));
  for (const QLabel* label : window.findChildren<QLabel*>())
    mnemonics.append(QKeySequence::mnemonic(label->text()).toString());
  for (const QAbstractButton* button : window.findChildren<QAbstractButton*>()) {
    const QString key = QKeySequence::mnemonic(button->text()).toString();
    if (!button->isVisible() || !button->text().contains(QRegularExpression("\\w"))) continue;
    if (key.isEmpty() || mnemonics.contains(key)) missing.append(button->text());
    mnemonics.append(key);
  }
  return missing.join(", ").toStdString();
}

class RunModal : public UiTest {
 protected:
  // Runs `logic` through the services: the view must be a `View` titled `title`, with every control
  // named and every button a mnemonic; Esc, the close button and Cancel (in turn) end it with Cancel.
  template <class View>
  void expectView(Dialog&& logic, const char* title) {
    SCOPED_TRACE(title);
    std::string seen;
    whenDialogOpens<View>([&](View& view) {
      seen = view.windowTitle().toStdString() + " | unnamed: " + unnamedControls(view);
      if (++shown % 3 == 0) QTest::keyClick(&view, Qt::Key_Escape);
      else if (shown % 3 == 1) view.close();
      else click(view, "cancelButton");
    });
    EXPECT_EQ(services.runModal(logic), kDialogCancel);
    EXPECT_EQ(seen, std::string(title) + " | unnamed: ");
  }
  int shown = 0;
  const std::vector<CIfcPropertySet> sets{makeSet("Muros", {makeProperty("Alto")})};
  const std::vector<CIfcEnum> enums{makeEnum("Colores", {{1, "Rojo"}})};
  const CConjuntoVariableZep none;
};

// Titles from the host's message file where the dialog takes them from there, else the template's.
TEST_F(RunModal, OpensTheViewOfEachDialogClassWithEveryControlNamedAndEndsItWithCancel) {
  const char *set = "Conjunto de Propiedades", *data = "Datos de la Propiedad";
  const char* assign = "Asignación de Propiedades a Objetos IFC";
  expectView<PropertiesSetView>(CPropertiesSetDlg(services, sets, enums), set);
  expectView<PropertiesOfSetView>(CPropertiesOfSetDlg(services, kEditItem, sets[0], enums, &sets, &none), set);
  expectView<PropertyDataView>(CPropertyDataDlg(services, kNewItem, {}, enums, &sets[0], &none), data);
  expectView<ListEnumsView>(CListEnumsDlg(services, enums), "Listas de Valores");
  expectView<ListValuesView>(CListValuesDlg(services, enums[0], true), "Definición de Lista de Valores");
  expectView<ValueEnumView>(CValueEnumDlg(services, {}), "Valor de la lista");
  expectView<PropertyValueView>(CPropiedadesObjetosValorIFCDlg(services, "", none), assign);
  expectView<PropertyAssignView>(CPropiedadesObjetosIFCDlg(services, sets, enums, sets), assign);
  expectView<QuantitiesOfSetView>(CQuantitiesOfSetDlg(services, kNewItem, {}, nullptr, {}, {}), set);
  expectView<QuantityDataView>(CQuantityDataDlg(services, kNewItem, {}, nullptr, {}), data);
  expectView<QuantityAssignView>(CCuantificadoresObjetosIFCDlg(services, {}, {}, "Eje", nullptr, 0),
                                 "Asignación de Cuantificadores a Objetos IFC");
  struct Unknown : Dialog {
    using Dialog::Dialog;
    void start() override { ADD_FAILURE() << "a dialog without a view was started"; }
  } unknown(services);
  EXPECT_EQ(services.runModal(unknown), kDialogCancel);
}

// A refusal comes with a warning, a report of work done with the information icon, and a question
// with No as the default so that Enter alone deletes nothing; inside an editor session Qt's own
// buttons speak Spanish, and outside it they no longer do. The file pickers show the filters and give
// the file chosen, or none.
TEST_F(UiTest, MessageBoxesAndFilePickersShowWhatTheyAreGivenAndGiveTheChoice) {
  QtDialogServices screen;  // the real boxes, not the recording ones
  std::vector<std::string> shown;
  const auto record = [&](QMessageBox::StandardButton press) {
    whenDialogOpens<QMessageBox>([&, press](QMessageBox& box) {
      QStringList texts{box.text(), QString::number(box.icon())};
      for (QAbstractButton* button : box.buttons()) texts.append(button->text().remove('&'));
      if (box.defaultButton() != nullptr) texts.append("default " + box.defaultButton()->text().remove('&'));
      shown.push_back(texts.join(" | ").toStdString());
      if (press != QMessageBox::NoButton) box.button(press)->click();
      else QTest::keyClick(&box, Qt::Key_Return);
    });
  };
  record(QMessageBox::Ok);
  screen.showMessage(u"Falta el valor");
  record(QMessageBox::Ok);
  screen.showInformation(u"Copia guardada");
  record(QMessageBox::Yes);
  bool answer = false;
  ASSERT_TRUE(runEditorSession([&](DialogServices& editors) { answer = editors.askYesNo(u"¿Borrar?"); }));
  EXPECT_TRUE(answer);
  record(QMessageBox::NoButton);
  EXPECT_FALSE(screen.askYesNo(u"¿Borrar?"));
  EXPECT_EQ(shown, (std::vector<std::string>{"Falta el valor | 2 | OK", "Copia guardada | 1 | OK",
                                             "¿Borrar? | 4 | Sí | No | default No",
                                             "¿Borrar? | 4 | Yes | No | default No"}));
  TempDir dir;
  const QString folder = QString::fromStdString(dir.path().string()), path = folder + "/sets.csv";
  writeBytes(path.toStdString(), "Muros;Altura;Altura libre;Real;2.75\n");
  const FilePickerOptions csv{
      {{u"CSV Files (*.csv)", u"*.csv"}, {u"All Files (*.*)", u"*.*"}}, u"csv", true, folder.toStdU16String()};
  whenDialogOpens<QFileDialog>([&](QFileDialog& picker) {
    // "*.*" means every file, as it does on Windows, names without a dot included.
    const QStringList offered{entries(picker.findChild<QComboBox*>("fileTypeCombo")).join(", "),
                              picker.nameFilters().join(", "), picker.directory().absolutePath(), picker.defaultSuffix()};
    EXPECT_EQ(offered, (QStringList{"CSV Files (*.csv), All Files (*.*)",
                                    "CSV Files (*.csv) (*.csv), All Files (*.*) (*)", folder, "csv"}));
    EXPECT_EQ(std::pair(picker.fileMode(), picker.acceptMode()),
              std::pair(QFileDialog::ExistingFile, QFileDialog::AcceptOpen));
    picker.selectFile(path);
    static_cast<QDialog&>(picker).accept();  // QFileDialog's own accept is protected
  });
  EXPECT_EQ(screen.pickFileToOpen(csv), path.toStdU16String());
  whenDialogOpens<QFileDialog>([](QFileDialog& picker) { EXPECT_EQ(picker.acceptMode(), QFileDialog::AcceptSave); });
  EXPECT_FALSE(screen.pickFileToSave(csv).has_value());
}

// Offscreen no box may open (it would wait for ever): the message goes on to the sink that was
// there before, and that sink comes back when the editors put it back.
TEST_F(UiTest, OffscreenTheModelsMessagesGoWhereTheyWentBefore) {
  for (const char* shown : {"xcb", "wayland", "vnc", "eglfs", "linuxfb", "windows", "cocoa"})
    EXPECT_TRUE(platformShowsWindows(shown));
  for (const char* headless : {"offscreen", "minimal", "minimalegl", ""})
    EXPECT_FALSE(platformShowsWindows(headless)) << headless;
  EXPECT_FALSE(canShowMessageBoxes());
  MessageRecorder recorder;
  const MessageSink previous = useMessageBoxes();
  showMessage("Error lectura XML. CIfcPropertySet");
  EXPECT_EQ(QApplication::activeModalWidget(), nullptr);
  EXPECT_EQ(recorder.messages(), std::vector<std::string>{"Error lectura XML. CIfcPropertySet"});
  setMessageSink(previous);
  showMessage("Error lectura XML. CIfcEnum");
  EXPECT_EQ(recorder.messages().size(), 2u);
}

}  // namespace
