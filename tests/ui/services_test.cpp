// DialogServices on Qt: the view runModal opens for each dialog class, named controls and mnemonics
// in every view, how a dialog ends, the real message boxes and file picker, and where the model's
// messages go.
#include <QAccessible>
#include <QFileDialog>
#include <QLabel>
#include <QMessageBox>
#include <QRadioButton>
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
// focus without an accessible name, each visible button without a mnemonic of its own.
QStringList unnamedControls(QWidget& window) {
  QStringList missing;
  const std::function<void(QAccessibleInterface*)> walk = [&](QAccessibleInterface* node) {
    const auto* widget = qobject_cast<QWidget*>(node->object());
    if (widget != nullptr && widget->isVisible() && widget->focusPolicy() != Qt::NoFocus &&
        node->text(QAccessible::Name).trimmed().isEmpty())
      missing.append(widget->objectName());
    for (int i = 0; i < node->childCount(); ++i) walk(node->child(i));
  };
  walk(QAccessible::queryAccessibleInterface(&window));
  QStringList mnemonics;
  for (const QLabel* label : window.findChildren<QLabel*>())
    if (label->text().contains('&')) mnemonics.append(QKeySequence::mnemonic(label->text()).toString());
  for (const QAbstractButton* button : window.findChildren<QAbstractButton*>()) {
    const QString key = QKeySequence::mnemonic(button->text()).toString();
    if (!button->isVisible() || !button->text().contains(QRegularExpression("\\w"))) continue;  // "..." has no letter
    if (key.isEmpty() || mnemonics.contains(key)) missing.append(button->objectName() + " " + button->text());
    mnemonics.append(key);
  }
  return missing;
}

class RunModal : public UiTest {
 protected:
  // Runs `logic` through the services: the view must be a `View` titled `title`, with every control
  // named and every button a mnemonic; Esc closes it.
  template <class View>
  void expectView(Dialog&& logic, const char* title) {
    SCOPED_TRACE(title);
    QString shownTitle;
    std::string missing;
    whenDialogOpens<View>([&](View& view) {
      shownTitle = view.windowTitle();
      missing = unnamedControls(view).join(", ").toStdString();
      QTest::keyClick(&view, Qt::Key_Escape);
    });
    EXPECT_EQ(services.runModal(logic), kDialogCancel);
    EXPECT_EQ(shownTitle, QString::fromUtf8(title));
    EXPECT_EQ(missing, "");
  }
  const std::vector<CIfcPropertySet> sets{makeSet("Muros", {makeProperty("Alto")})};
  const std::vector<CIfcEnum> enums{makeEnum("Colores", {{1, "Rojo"}})};
  const CConjuntoVariableZep noVariables;
};

// Titles from the host's message file where the dialog takes them from there, else the template's.
TEST_F(RunModal, OpensTheViewOfEachDialogClassNamesEveryControlAndEscapeCancels) {
  expectView<PropertiesSetView>(CPropertiesSetDlg(services, sets, enums), "Conjunto de Propiedades");
  expectView<PropertiesOfSetView>(CPropertiesOfSetDlg(services, kEditItem, sets[0], enums, &sets, &noVariables), "Conjunto de Propiedades");
  expectView<PropertyDataView>(CPropertyDataDlg(services, kNewItem, {}, enums, &sets[0], &noVariables), "Datos de la Propiedad");
  expectView<ListEnumsView>(CListEnumsDlg(services, enums), "Listas de Valores");
  expectView<ListValuesView>(CListValuesDlg(services, enums[0], true), "Definición de Lista de Valores");
  expectView<ValueEnumView>(CValueEnumDlg(services, {}), "Valor de la lista");
  expectView<PropertyValueView>(CPropiedadesObjetosValorIFCDlg(services, "", noVariables), "Asignación de Propiedades a Objetos IFC");
  expectView<PropertyAssignView>(CPropiedadesObjetosIFCDlg(services, sets, enums, sets), "Asignación de Propiedades a Objetos IFC");
  expectView<QuantitiesOfSetView>(CQuantitiesOfSetDlg(services, kNewItem, {}, nullptr, {}, {}), "Conjunto de Propiedades");
  expectView<QuantityDataView>(CQuantityDataDlg(services, kNewItem, {}, nullptr, {}), "Datos de la Propiedad");
  expectView<QuantityAssignView>(CCuantificadoresObjetosIFCDlg(services, {}, {}, "Eje", nullptr, 0), "Asignación de Cuantificadores a Objetos IFC");
}

TEST_F(RunModal, TheCloseButtonAndCancelEndWithCancelAndADialogWithoutAViewIsCancelled) {
  CListEnumsDlg types(services, {});
  whenDialogOpens<ListEnumsView>([](ListEnumsView& view) { view.close(); });
  EXPECT_EQ(services.runModal(types), kDialogCancel);
  whenDialogOpens<ListEnumsView>([](ListEnumsView& view) { click(view, "cancelButton"); });
  EXPECT_EQ(services.runModal(types), kDialogCancel);
  struct Unknown : Dialog {
    using Dialog::Dialog;
    void start() override { ADD_FAILURE() << "a dialog without a view was started"; }
  } unknown(services);
  EXPECT_EQ(services.runModal(unknown), kDialogCancel);
}

// Typing, Tab to the next edit and Enter for the default button, as a keyboard user does.
TEST_F(RunModal, KeyboardAloneFillsAndAcceptsADialog) {
  CValueEnumDlg value(services, CIfcNodoEnum());
  whenDialogOpens<ValueEnumView>([](ValueEnumView& view) {
    QApplication::setActiveWindow(&view);
    auto* code = child<QLineEdit>(view, "codeEdit");
    code->setFocus();
    QTest::keyClicks(code, "7");
    QTest::keyClick(code, Qt::Key_Tab);
    ASSERT_EQ(QApplication::focusWidget(), child<QLineEdit>(view, "textEdit"));
    QTest::keyClicks(QApplication::focusWidget(), "Siete");
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
  });
  EXPECT_EQ(value.run(), kDialogOk);
  EXPECT_EQ(value.value.value, 7);
  EXPECT_STREQ(value.value.text, "Siete");
}

// The set list is shown again after a save-as: its next showing must not end at the first click.
TEST_F(RunModal, ADialogShownAgainStartsWithoutItsLastResult) {
  CPropertiesSetDlg list(services, sets, {});
  whenDialogOpens<PropertiesSetView>([](PropertiesSetView& view) {
    clickRow(child<ReportList>(view, "sets"), 0);
    click(view, "saveAsButton");
  });
  EXPECT_EQ(list.run(), kDialogSaveAs);
  bool stillOpen = false;
  whenDialogOpens<PropertiesSetView>([&](PropertiesSetView& view) {
    whenDialogOpens<PropertiesOfSetView>([](PropertiesOfSetView& set) { click(set, "cancelButton"); });
    click(view, "insertButton");
    stillOpen = view.isVisible();
    click(view, "okButton");
  });
  EXPECT_EQ(list.run(), kDialogOk);
  EXPECT_TRUE(stillOpen);
}

// What an assistive technology does reaches the dialog as the mouse does.
TEST_F(RunModal, ARowSelectedOrARadioButtonToggledThroughAccessibilityReachesTheDialog) {
  CPropertiesSetDlg list(services, {makeSet("Losas"), makeSet("Muros")}, {});
  PropertiesSetView listView(list);
  open(listView, list);
  QAccessible::queryAccessibleInterface(child<ReportList>(listView, "sets"))->tableInterface()->selectRow(1);
  EXPECT_EQ(list.currentRow, 1);
  CPropiedadesObjetosValorIFCDlg chooser(services, "Eje.PK$", noVariables);
  PropertyValueView chooserView(chooser);
  open(chooserView, chooser);
  QAccessibleActionInterface* literal =
      QAccessible::queryAccessibleInterface(child<QRadioButton>(chooserView, "literalRadio"))->actionInterface();
  ASSERT_TRUE(literal->actionNames().contains(QAccessibleActionInterface::toggleAction()));
  literal->doAction(QAccessibleActionInterface::toggleAction());
  EXPECT_EQ(chooser.mode, kLiteralText);
  EXPECT_TRUE(child<QLineEdit>(chooserView, "valueEdit")->isEnabled());
}

class MessageBoxes : public UiTest {
 protected:
  QtDialogServices screen;  // the real boxes, not the recording ones
};

// A refusal comes with a warning, a report of work done with the information icon.
TEST_F(MessageBoxes, AMessageShowsItsTextWithOneOkButtonAndTheIconThatFits) {
  using Show = void (QtDialogServices::*)(std::u16string_view);
  for (const auto& [show, icon] : {std::pair<Show, QMessageBox::Icon>{&QtDialogServices::showMessage, QMessageBox::Warning},
                                   {&QtDialogServices::showInformation, QMessageBox::Information}}) {
    QString shown;
    whenDialogOpens<QMessageBox>([&, icon = icon](QMessageBox& box) {
      shown = box.text();
      EXPECT_EQ(box.buttons().size(), 1);
      EXPECT_EQ(box.icon(), icon);
      box.button(QMessageBox::Ok)->click();
    });
    (screen.*show)(u"Debe de introducir un nombre válido");
    EXPECT_EQ(shown, QString::fromUtf8("Debe de introducir un nombre válido"));
  }
}

// The delete question: No is the default so Enter alone deletes nothing, and inside an editor
// session Qt's own buttons speak Spanish.
TEST_F(MessageBoxes, AQuestionIsYesOrNoAndEscapeMeansNo) {
  QString text, yes;
  whenDialogOpens<QMessageBox>([&](QMessageBox& box) {
    text = box.text();
    yes = box.button(QMessageBox::Yes)->text().remove(QLatin1Char('&'));
    EXPECT_EQ(box.icon(), QMessageBox::Question);
    EXPECT_EQ(box.defaultButton(), box.button(QMessageBox::No));
    box.button(QMessageBox::Yes)->click();
  });
  bool answer = false;
  ASSERT_TRUE(runEditorSession([&](DialogServices& editors) { answer = editors.askYesNo(kConfirmDelete); }));
  EXPECT_TRUE(answer);
  EXPECT_EQ(yes, QString::fromUtf8("Sí"));
  EXPECT_EQ(text, QString::fromUtf8("Se borrará el elemento seleccionado. ¿Continuar?"));
  whenDialogOpens<QMessageBox>([](QMessageBox& box) {
    EXPECT_EQ(box.button(QMessageBox::Yes)->text(), "&Yes");  // the session's translation is gone
    QTest::keyClick(&box, Qt::Key_Return);
  });
  EXPECT_FALSE(screen.askYesNo(kConfirmDelete));
  whenDialogOpens<QMessageBox>([](QMessageBox& box) { QTest::keyClick(&box, Qt::Key_Escape); });
  EXPECT_FALSE(screen.askYesNo(kConfirmDelete));
}

TEST_F(MessageBoxes, TheFilePickersShowTheFiltersAndGiveTheChosenFileOrNone) {
  TempDir dir;
  const QString folder = QString::fromStdString(dir.path().string()), path = folder + "/sets.csv";
  writeBytes(path.toStdString(), "Muros;Altura;Altura libre;Real;2.75\n");
  const FilePickerOptions csv{{{u"CSV Files (*.csv)", u"*.csv"}, {u"All Files (*.*)", u"*.*"}}, u"csv", true, folder.toStdU16String()};
  whenDialogOpens<QFileDialog>([&](QFileDialog& picker) {
    EXPECT_EQ(entries(picker.findChild<QComboBox*>("fileTypeCombo")), (QStringList{"CSV Files (*.csv)", "All Files (*.*)"}));
    // "*.*" means every file, as it does on Windows, names without a dot included.
    EXPECT_EQ(picker.nameFilters(), (QStringList{"CSV Files (*.csv) (*.csv)", "All Files (*.*) (*)"}));
    EXPECT_EQ(picker.directory().absolutePath(), folder);
    EXPECT_EQ(picker.defaultSuffix(), "csv");
    EXPECT_EQ(picker.fileMode(), QFileDialog::ExistingFile);
    EXPECT_EQ(picker.acceptMode(), QFileDialog::AcceptOpen);
    picker.selectFile(path);
    static_cast<QDialog&>(picker).accept();  // QFileDialog's own accept is protected
  });
  EXPECT_EQ(screen.pickFileToOpen(csv), path.toStdU16String());
  whenDialogOpens<QFileDialog>([](QFileDialog& picker) {
    EXPECT_EQ(picker.acceptMode(), QFileDialog::AcceptSave);
    picker.reject();
  });
  EXPECT_FALSE(screen.pickFileToSave(csv).has_value());
}

TEST(MessageSink, OnlyPlatformsThatShowWindowsGetMessageBoxes) {
  for (const char* shown : {"xcb", "wayland", "vnc", "eglfs", "linuxfb", "windows", "cocoa"})
    EXPECT_TRUE(platformShowsWindows(shown)) << shown;
  for (const char* headless : {"offscreen", "minimal", "minimalegl", ""}) EXPECT_FALSE(platformShowsWindows(headless)) << headless;
}

// Offscreen no box may open (it would wait for ever): the message goes on to the sink that was
// there before, and that sink comes back when the editors put it back.
TEST_F(MessageBoxes, OffscreenTheModelsMessagesGoWhereTheyWentBefore) {
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
