// The enumerated types, one type's values and one value on screen: nested creation through three
// windows, and the fixed refusal texts.
#include <QLabel>
#include <QLineEdit>

#include "editors/editor_fixture.h"
#include "ui/list_enums_view.h"
#include "ui/list_values_view.h"
#include "ui/value_enum_view.h"
#include "ui_fixture.h"

using namespace orvane;
using namespace orvane::test;

namespace {

// Adds a value through the value window that `insertButton` of `values` opens.
void addValue(ListValuesView& values, const char* code, const char* text) {
  whenDialogOpens<ValueEnumView>([=](ValueEnumView& value) {
    typeInto(value, "codeEdit", code);
    typeInto(value, "textEdit", QString::fromUtf8(text));
    click(value, "okButton");
  });
  click(values, "insertButton");
}

TEST_F(UiTest, ATypeMadeThroughThreeWindowsLandsInTheListInNameOrder) {
  CListEnumsDlg logic(services, {makeEnum("Colores", {{1, "Rojo"}})});
  ListEnumsView view(logic);
  open(view, logic);
  auto* types = child<ReportList>(view, "types");
  EXPECT_EQ(columnTitles(types), (QStringList{"Nombre", QString::fromUtf8("Descripción")}));
  whenDialogOpens<ListValuesView>([](ListValuesView& values) {
    typeInto(values, "nameEdit", "Acabados");
    addValue(values, "1", "Lacado");
    addValue(values, "2", "Barniz");
    EXPECT_EQ(rowTexts(child<ReportList>(values, "values"), 1), (QStringList{"2", "Barniz"}));
    click(values, "okButton");
  });
  click(view, "insertButton");
  ASSERT_EQ(types->rowCount(), 2);
  EXPECT_EQ(rowTexts(types, 0).front(), "Acabados");
  ASSERT_EQ(logic.enums[0].elements.size(), 2u);
  EXPECT_STREQ(logic.enums[0].elements[1].text, "Barniz");
}

class ListValuesViewTest : public UiTest {
 protected:
  CListValuesDlg logic{services, makeEnum("Colores", {{1, "Rojo"}, {2, "Azul"}}), false};
  ListValuesView view{logic};
};

TEST_F(ListValuesViewTest, KeepsTheTemplatesTextsAndShowsTheValues) {
  open(view, logic);
  EXPECT_EQ(view.windowTitle(), QString::fromUtf8("Definición de Lista de Valores"));
  EXPECT_EQ(child<QLabel>(view, "nameLabel")->text(), "Lista de Valores");
  EXPECT_EQ(child<QLineEdit>(view, "nameEdit")->text(), "Colores");
  auto* values = child<ReportList>(view, "values");
  EXPECT_EQ(columnTitles(values), (QStringList{"Valor", QString::fromUtf8("Descripción")}));
  EXPECT_EQ(rowTexts(values, 1), (QStringList{"2", "Azul"}));
}

TEST_F(ListValuesViewTest, ARepeatedValueAndAnUnchosenValueAreRefused) {
  open(view, logic);
  addValue(view, "3", "ROJO");
  EXPECT_EQ(child<ReportList>(view, "values")->rowCount(), 2);
  click(view, "okButton");
  EXPECT_EQ(services.messages, (std::vector<std::u16string>{u"Elemento repetido", u"Debe seleccionar un elemento"}));
  clickRow(child<ReportList>(view, "values"), 1);
  click(view, "okButton");
  EXPECT_EQ(logic.result(), kDialogOk);
  EXPECT_EQ(logic.currentRow, 1);
}

TEST_F(ListValuesViewTest, ATypeWithoutANameIsRefused) {
  open(view, logic);
  typeInto(view, "nameEdit", "");
  click(view, "okButton");
  EXPECT_EQ(services.messages, std::vector<std::u16string>{u("Debe de introducir un nombre válido")});
}

TEST_F(UiTest, AValueNeedsItsTextAndItsCode) {
  CValueEnumDlg logic(services, CIfcNodoEnum());
  ValueEnumView view(logic);
  open(view, logic);
  EXPECT_EQ(child<QLabel>(view, "codeLabel")->text(), "Listas de Valores");
  typeInto(view, "codeEdit", "");
  click(view, "okButton");
  typeInto(view, "textEdit", "Verde");
  click(view, "okButton");
  EXPECT_EQ(services.messages, (std::vector<std::u16string>{u("La descripción no puede estar vacía"),
                                                            u("El valor no puede estar vacío")}));
  typeInto(view, "codeEdit", "abc");
  click(view, "okButton");
  EXPECT_EQ(logic.result(), kDialogOk);
  EXPECT_EQ(logic.value.value, 0);
}

}  // namespace
