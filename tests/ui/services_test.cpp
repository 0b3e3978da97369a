// DialogServices on Qt: which view runModal opens for each dialog class, how a dialog ends (OK,
// Esc, the close button, the keyboard), the real message boxes and file picker, and where the
// model's messages go.
#include <QAccessible>
#include <QCheckBox>
#include <QComboBox>
#include <QFileDialog>
#include <QLineEdit>
#include <QMessageBox>
#include <QRadioButton>
#include <functional>

#include "editors/assign/property_assign_dlg.h"
#include "editors/assign/property_value_dlg.h"
#include "editors/psets/list_enums_dlg.h"
#include "editors/psets/list_values_dlg.h"
#include "editors/psets/properties_of_set_dlg.h"
#include "editors/psets/properties_set_dlg.h"
#include "editors/psets/property_data_dlg.h"
#include "editors/psets/value_enum_dlg.h"
#include "editors/qsets/quantities_of_set_dlg.h"
#include "editors/qsets/quantity_assign_dlg.h"
#include "editors/qsets/quantity_data_dlg.h"
#include "editors/editor_fixture.h"
#include "support/message_recorder.h"
#include "support/temp_dir.h"
#include "ui/list_enums_view.h"
#include "ui/list_values_view.h"
#include "ui/editor_session.h"
#include "ui/message_box_sink.h"
#include "ui/properties_of_set_view.h"
#include "ui/properties_set_view.h"
#include "ui/property_assign_view.h"
#include "ui/property_data_view.h"
#include "ui/property_value_view.h"
#include "ui/quantities_of_set_view.h"
#include "ui/quantity_assign_view.h"
#include "ui/quantity_data_view.h"
#include "ui/value_enum_view.h"
#include "ui_fixture.h"

using namespace orvane;
using namespace orvane::test;

namespace {

// The controls of `window` that a screen reader or a GUI test tool would find without a name, by a
// walk of its accessibility tree: every visible widget that takes focus must have one.
QStringList unnamedControls(QWidget& window) {
  QStringList unnamed;
  const std::function<void(QAccessibleInterface*)> walk = [&](QAccessibleInterface* node) {
    if (node == nullptr) return;
    const auto* widget = qobject_cast<QWidget*>(node->object());
    if (widget != nullptr && widget->isVisible() && widget->focusPolicy() != Qt::NoFocus &&
        node->text(QAccessible::Name).trimmed().isEmpty())
      unnamed.append(widget->objectName());
    for (int i = 0; i < node->childCount(); ++i) walk(node->child(i));
  };
  walk(QAccessible::queryAccessibleInterface(&window));
  return unnamed;
}

class RunModal : public UiTest {
 protected:
  // Runs `logic` through the services: the view must be a `View` titled `title` whose every control
  // has an accessible name; Esc closes it.
  template <class View>
  void expectViewClosedByEscape(Dialog& logic, const char* title) {
    QString shownTitle;
    QStringList unnamed;
    whenDialogOpens<View>([&](View& view) {
      shownTitle = view.windowTitle();
      unnamed = unnamedControls(view);
      QTest::keyClick(&view, Qt::Key_Escape);
    });
    EXPECT_EQ(services.runModal(logic), kDialogCancel) << title;
    EXPECT_EQ(shownTitle, QString::fromUtf8(title));
    EXPECT_EQ(unnamed, QStringList()) << title;
  }

  const std::vector<CIfcPropertySet> noSets;
  const std::vector<CIfcEnum> noEnums;
  const CConjuntoVariableZep noVariables;
};

// Titles from the host's message file where the dialog takes them from there, else the template's.
TEST_F(RunModal, OpensTheViewOfEachDialogClassNamesEveryControlAndEscapeCancels) {
  CPropertiesSetDlg setList(services, noSets, noEnums);
  expectViewClosedByEscape<PropertiesSetView>(setList, "Conjunto de Propiedades");
  CPropertiesOfSetDlg set(services, kNewItem, CIfcPropertySet(), noEnums, &noSets, &noVariables);
  expectViewClosedByEscape<PropertiesOfSetView>(set, "Conjunto de Propiedades");
  CPropertyDataDlg property(services, kNewItem, CIfcPropertyName(), noEnums, nullptr, &noVariables);
  expectViewClosedByEscape<PropertyDataView>(property, "Datos de la Propiedad");
  CListEnumsDlg types(services, noEnums);
  expectViewClosedByEscape<ListEnumsView>(types, "Listas de Valores");
  CListValuesDlg values(services, CIfcEnum(), true);
  expectViewClosedByEscape<ListValuesView>(values, "Definición de Lista de Valores");
  CValueEnumDlg value(services, CIfcNodoEnum());
  expectViewClosedByEscape<ValueEnumView>(value, "Valor de la lista");
  CPropiedadesObjetosValorIFCDlg chooser(services, "", noVariables);
  expectViewClosedByEscape<PropertyValueView>(chooser, "Asignación de Propiedades a Objetos IFC");
  CPropiedadesObjetosIFCDlg assignment(services, noSets, noEnums, noSets);
  expectViewClosedByEscape<PropertyAssignView>(assignment, "Asignación de Propiedades a Objetos IFC");
  CQuantitiesOfSetDlg quantitySet(services, kNewItem, CIfcQuantitySet(), nullptr, {}, {});
  expectViewClosedByEscape<QuantitiesOfSetView>(quantitySet, "Conjunto de Propiedades");
  CQuantityDataDlg quantity(services, kNewItem, CIfcQuantityName(), nullptr, {});
  expectViewClosedByEscape<QuantityDataView>(quantity, "Datos de la Propiedad");
  CCuantificadoresObjetosIFCDlg quantities(services, {}, {}, "Eje", nullptr, 0);
  expectViewClosedByEscape<QuantityAssignView>(quantities, "Asignación de Cuantificadores a Objetos IFC");
}

TEST_F(RunModal, TheWindowsCloseButtonAndCancelEndWithCancel) {
  CListEnumsDlg types(services, noEnums);
  whenDialogOpens<ListEnumsView>([](ListEnumsView& view) { view.close(); });
  EXPECT_EQ(services.runModal(types), kDialogCancel);
  whenDialogOpens<ListEnumsView>([](ListEnumsView& view) { click(view, "cancelButton"); });
  EXPECT_EQ(services.runModal(types), kDialogCancel);
}

// Typing, Tab to the next edit and Enter for the default button, as a keyboard user does.
TEST_F(RunModal, KeyboardAloneFillsAndAcceptsADialog) {
  CValueEnumDlg value(services, CIfcNodoEnum());
  whenDialogOpens<ValueEnumView>([](ValueEnumView& view) {
    QApplication::setActiveWindow(&view);
    auto* code = child<QLineEdit>(view, "codeEdit");
    code->setFocus();
    code->clear();
    QTest::keyClicks(code, "7");
    QTest::keyClick(code, Qt::Key_Tab);
    QWidget* next = QApplication::focusWidget();
    ASSERT_EQ(next, child<QLineEdit>(view, "textEdit"));
    QTest::keyClicks(next, "Siete");
    QTest::keyClick(next, Qt::Key_Return);
  });
  EXPECT_EQ(value.run(), kDialogOk);
  EXPECT_EQ(value.value.value, 7);
  EXPECT_STREQ(value.value.text, "Siete");
}

// The set list is shown again after a save-as: its next showing must not end at the first click.
TEST_F(RunModal, ADialogShownAgainStartsWithoutItsLastResult) {
  CPropertiesSetDlg list(services, {CIfcPropertySet()}, noEnums);
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
  CPropertiesSetDlg list(services, {makeSet("Losas"), makeSet("Muros")}, noEnums);
  PropertiesSetView listView(list);
  list.start();
  listView.showState();
  listView.show();
  QAccessibleTableInterface* table =
      QAccessible::queryAccessibleInterface(child<ReportList>(listView, "sets"))->tableInterface();
  ASSERT_NE(table, nullptr);
  table->selectRow(1);
  EXPECT_EQ(list.currentRow, 1);

  CPropiedadesObjetosValorIFCDlg chooser(services, "Eje.PK$", noVariables);
  PropertyValueView chooserView(chooser);
  chooser.start();
  chooserView.showState();
  chooserView.show();
  QAccessibleActionInterface* literal =
      QAccessible::queryAccessibleInterface(child<QRadioButton>(chooserView, "literalRadio"))->actionInterface();
  ASSERT_NE(literal, nullptr);
  ASSERT_TRUE(literal->actionNames().contains(QAccessibleActionInterface::toggleAction()));
  literal->doAction(QAccessibleActionInterface::toggleAction());
  EXPECT_EQ(chooser.mode, kLiteralText);
  EXPECT_TRUE(child<QLineEdit>(chooserView, "valueEdit")->isEnabled());
}

TEST_F(RunModal, ADialogWithoutAViewIsCancelled) {
  struct Unknown : Dialog {
    using Dialog::Dialog;
    void start() override { ADD_FAILURE() << "a dialog without a view was started"; }
  } unknown(services);
  EXPECT_EQ(services.runModal(unknown), kDialogCancel);
}

class MessageBoxes : public UiTest {
 protected:
  QtDialogServices screen;  // the real boxes, not the recording ones
};

// A refusal comes with a warning, a report of work done with the information icon.
TEST_F(MessageBoxes, AMessageShowsItsTextWithOneOkButtonAndTheIconThatFits) {
  using Show = void (QtDialogServices::*)(std::u16string_view);
  const std::pair<Show, QMessageBox::Icon> cases[] = {{&QtDialogServices::showMessage, QMessageBox::Warning},
                                                     {&QtDialogServices::showInformation, QMessageBox::Information}};
  for (const auto& [show, icon] : cases) {
    QString text;
    QList<QAbstractButton*> buttons;
    QMessageBox::Icon shownIcon = QMessageBox::NoIcon;
    whenDialogOpens<QMessageBox>([&](QMessageBox& box) {
      text = box.text();
      buttons = box.buttons();
      shownIcon = box.icon();
      box.button(QMessageBox::Ok)->click();
    });
    (screen.*show)(u"Debe de introducir un nombre válido");
    EXPECT_EQ(text, QString::fromUtf8("Debe de introducir un nombre válido"));
    EXPECT_EQ(buttons.size(), 1);
    EXPECT_EQ(shownIcon, icon);
  }
}

// The delete question: a question icon, No as the default button so Enter alone deletes nothing,
// and inside an editor session Qt's own buttons speak Spanish.
TEST_F(MessageBoxes, AQuestionIsYesOrNoAndEscapeMeansNo) {
  QString text, yes;
  QMessageBox::Icon icon = QMessageBox::NoIcon;
  whenDialogOpens<QMessageBox>([&](QMessageBox& box) {
    text = box.text();
    icon = box.icon();
    yes = box.button(QMessageBox::Yes)->text().remove(QLatin1Char('&'));
    EXPECT_EQ(box.defaultButton(), box.button(QMessageBox::No));
    box.button(QMessageBox::Yes)->click();
  });
  bool answer = false;
  ASSERT_TRUE(runEditorSession([&](DialogServices& editors) { answer = editors.askYesNo(kConfirmDelete); }));
  EXPECT_TRUE(answer);
  EXPECT_EQ(yes, QString::fromUtf8("Sí"));
  EXPECT_EQ(icon, QMessageBox::Question);
  EXPECT_EQ(text, QString::fromUtf8("Se borrará el elemento seleccionado. ¿Continuar?"));
  whenDialogOpens<QMessageBox>([](QMessageBox& box) {
    EXPECT_EQ(box.button(QMessageBox::Yes)->text(), "&Yes");  // the session's translation is gone
    QTest::keyClick(&box, Qt::Key_Return);
  });
  EXPECT_FALSE(screen.askYesNo(kConfirmDelete));
  whenDialogOpens<QMessageBox>([](QMessageBox& box) { QTest::keyClick(&box, Qt::Key_Escape); });
  EXPECT_FALSE(screen.askYesNo(kConfirmDelete));
}

const FilePickerOptions kCsvOptions{
    {{u"CSV Files (*.csv)", u"*.csv"}, {u"All Files (*.*)", u"*.*"}}, u"csv", true, {}};

TEST_F(MessageBoxes, TheOpenPickerShowsTheFiltersAndReturnsTheChosenFile) {
  TempDir dir;
  const std::string path = dir.file("sets.csv");
  writeBytes(path, "Muros;Altura;Altura libre;Real;2.75\n");
  QStringList shownFilters;
  QStringList filters;
  whenDialogOpens<QFileDialog>([&](QFileDialog& picker) {
    auto* types = picker.findChild<QComboBox*>(QStringLiteral("fileTypeCombo"));
    for (int i = 0; types != nullptr && i < types->count(); ++i) shownFilters.append(types->itemText(i));
    filters = picker.nameFilters();
    EXPECT_EQ(picker.directory().absolutePath(), QString::fromStdString(dir.path().string()));
    EXPECT_EQ(picker.defaultSuffix(), QStringLiteral("csv"));
    EXPECT_EQ(picker.fileMode(), QFileDialog::ExistingFile);
    EXPECT_EQ(picker.acceptMode(), QFileDialog::AcceptOpen);
    picker.selectFile(QString::fromStdString(path));
    static_cast<QDialog&>(picker).accept();  // QFileDialog's own accept is protected
  });
  FilePickerOptions inTheFolder = kCsvOptions;
  inTheFolder.startFolder = QString::fromStdString(dir.path().string()).toStdU16String();
  const std::optional<std::u16string> chosen = screen.pickFileToOpen(inTheFolder);
  ASSERT_TRUE(chosen.has_value());
  EXPECT_EQ(QString::fromStdU16String(*chosen), QString::fromStdString(path));
  EXPECT_EQ(shownFilters, (QStringList{"CSV Files (*.csv)", "All Files (*.*)"}));
  // "*.*" means every file, as it does on Windows, names without a dot included.
  EXPECT_EQ(filters, (QStringList{"CSV Files (*.csv) (*.csv)", "All Files (*.*) (*)"}));
}

TEST_F(MessageBoxes, ACancelledPickerGivesNoFile) {
  whenDialogOpens<QFileDialog>([](QFileDialog& picker) {
    EXPECT_EQ(picker.acceptMode(), QFileDialog::AcceptSave);
    picker.reject();
  });
  EXPECT_FALSE(screen.pickFileToSave(kCsvOptions).has_value());
}

TEST(MessageSink, OnlyPlatformsThatShowWindowsGetMessageBoxes) {
  for (const char* shown : {"xcb", "wayland", "vnc", "eglfs", "linuxfb", "windows", "cocoa"})
    EXPECT_TRUE(platformShowsWindows(shown)) << shown;
  for (const char* headless : {"offscreen", "minimal", "minimalegl", ""})
    EXPECT_FALSE(platformShowsWindows(headless)) << headless;
}

// The tests run offscreen: no box may open (it would wait for ever), the message goes on to the
// sink that was there before, and that sink comes back when the editors put it back.
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
