// The enumerated-type editors: values, one type, the list of types.
#include "editors/psets/list_enums_dlg.h"
#include "editors/psets/list_values_dlg.h"
#include "editors/psets/value_enum_dlg.h"
#include "editor_fixture.h"

using namespace orvane;
using namespace orvane::test;

namespace {

class EnumEditors : public EditorTest {};

TEST_F(EnumEditors, ValueEditorRefusesAnEmptyLiteralThenAnEmptyCode) {
  CValueEnumDlg dlg(services, CIfcNodoEnum());
  dlg.start();
  EXPECT_EQ(dlg.caption, u"Valor de la lista");
  dlg.codeText = u"";
  dlg.valueText = u"";
  dlg.ok();
  dlg.valueText = u"Rojo";
  dlg.ok();
  EXPECT_EQ(services.messages,
            (std::vector<std::u16string>{u"La descripción no puede estar vacía", u"El valor no puede estar vacío"}));
  EXPECT_FALSE(dlg.ended());
}

TEST_F(EnumEditors, ValueEditorStoresTheCodeLikeAtoiAndTheLiteralAsUtf8) {
  CValueEnumDlg dlg(services, CIfcNodoEnum());
  dlg.start();
  dlg.codeText = u"abc";
  dlg.valueText = u"Año";
  dlg.ok();
  ASSERT_EQ(dlg.result(), kDialogOk);
  EXPECT_EQ(dlg.value.value, 0);
  EXPECT_STREQ(dlg.value.text, "A\xC3\xB1o");
}

TEST_F(EnumEditors, ValuesRepeatingAnotherByLiteralOrCodeAreRefused) {
  CListValuesDlg dlg(services, makeEnum("Colores", {{1, "Rojo"}}), true);
  dlg.start();
  services.expectDialog<CValueEnumDlg>([](CValueEnumDlg& d) { d.codeText = u"2"; d.valueText = u"ROJO"; d.ok(); });
  services.expectDialog<CValueEnumDlg>([](CValueEnumDlg& d) { d.codeText = u"1"; d.valueText = u"Azul"; d.ok(); });
  services.expectDialog<CValueEnumDlg>([](CValueEnumDlg& d) { d.codeText = u"2"; d.valueText = u"Azul"; d.ok(); });
  dlg.insert();
  dlg.insert();
  dlg.insert();
  EXPECT_EQ(services.messages, (std::vector<std::u16string>{u"Elemento repetido", u"Elemento repetido"}));
  ASSERT_EQ(dlg.type.elements.size(), 2u);
  EXPECT_EQ(dlg.values.rows.back(), (std::vector<std::u16string>{u"2", u"Azul"}));
}

TEST_F(EnumEditors, EditingAValueMayKeepItsOwnLiteralAndCode) {
  CListValuesDlg dlg(services, makeEnum("Colores", {{1, "Rojo"}, {2, "Azul"}}), true);
  dlg.start();
  dlg.selectRow(1);
  services.expectDialog<CValueEnumDlg>([](CValueEnumDlg& d) {
    EXPECT_EQ(d.valueText, u"Azul");
    EXPECT_EQ(d.codeText, u"2");
    d.ok();
  });
  services.expectDialog<CValueEnumDlg>([](CValueEnumDlg& d) { d.valueText = u"rojo"; d.ok(); });
  dlg.edit();
  dlg.edit();
  EXPECT_EQ(services.messages, std::vector<std::u16string>{u"Elemento repetido"});
  EXPECT_STREQ(dlg.type.elements[1].text, "Azul");
}

TEST_F(EnumEditors, TypeEditorOkChecksNameValuesAndPickedValue) {
  CListValuesDlg picker(services, makeEnum("", {}), false);
  picker.start();
  EXPECT_EQ(picker.caption, u"Definición de Lista de Valores");
  picker.ok();
  picker.nameText = u"Colores";
  picker.ok();
  picker.type.elements.push_back(makeEnum("x", {{1, "Rojo"}}).elements[0]);
  picker.ok();
  EXPECT_EQ(services.messages,
            (std::vector<std::u16string>{u"Debe de introducir un nombre válido", u"Debe de existir al menos un elemento",
                                         u"Debe seleccionar un elemento"}));
  EXPECT_FALSE(picker.ended());
  picker.selectRow(0);
  picker.ok();
  EXPECT_EQ(picker.result(), kDialogOk);
  EXPECT_STREQ(picker.type.name, "Colores");

  CListValuesDlg editor(services, makeEnum("Colores", {{1, "Rojo"}}), true);
  editor.start();
  editor.ok();  // editing a type needs no chosen value
  EXPECT_EQ(editor.result(), kDialogOk);
}

TEST_F(EnumEditors, RemovingAValueAsksFirst) {
  CListValuesDlg dlg(services, makeEnum("Colores", {{1, "Rojo"}, {2, "Azul"}}), true);
  dlg.start();
  dlg.remove();  // no row: nothing, no question
  dlg.selectRow(0);
  services.answers = {false, true};
  dlg.remove();
  EXPECT_EQ(dlg.type.elements.size(), 2u);
  dlg.remove();
  ASSERT_EQ(dlg.type.elements.size(), 1u);
  EXPECT_STREQ(dlg.type.elements[0].text, "Azul");
  EXPECT_EQ(services.questions, std::vector<std::u16string>(2, u"Se borrará el elemento seleccionado. ¿Continuar?"));
}

// After an insert no row is current, so none may still be shown selected.
TEST_F(EnumEditors, NewTypesAreSortedByNameIgnoringCase) {
  CListEnumsDlg dlg(services, {makeEnum("beta", {{1, "b"}}), makeEnum("Zona", {{1, "z"}})});
  dlg.start();
  dlg.selectRow(1);
  EXPECT_EQ(dlg.caption, u"Listas de Valores");
  services.expectDialog<CListValuesDlg>([this](CListValuesDlg& d) {
    d.nameText = u"alfa";
    d.descriptionText = u"Primera";
    services.expectDialog<CValueEnumDlg>([](CValueEnumDlg& v) { v.codeText = u"1"; v.valueText = u"Sí"; v.ok(); });
    d.insert();
    d.ok();
  });
  dlg.insert();
  ASSERT_EQ(dlg.enums.size(), 3u);
  EXPECT_STREQ(dlg.enums[0].name, "alfa");
  EXPECT_STREQ(dlg.enums[0].elements.at(0).text, "S\xC3\xAD");
  EXPECT_EQ(dlg.types.rows[0], (std::vector<std::u16string>{u"alfa", u"Primera"}));
  EXPECT_EQ(dlg.currentRow, -1);
  EXPECT_EQ(dlg.types.revealRow, -1);
}

TEST_F(EnumEditors, EditingATypeResortsAndRemovingOneAsks) {
  CListEnumsDlg dlg(services, {makeEnum("Acabado", {{1, "a"}}), makeEnum("Color", {{1, "c"}})});
  dlg.start();
  dlg.selectRow(0);
  services.expectDialog<CListValuesDlg>([](CListValuesDlg& d) { d.nameText = u"Zocalo"; d.ok(); });
  dlg.edit();
  EXPECT_STREQ(dlg.enums[0].name, "Color");
  EXPECT_STREQ(dlg.enums[1].name, "Zocalo");
  services.answers = {true};
  dlg.remove();  // the current row still says 0: now "Color"
  ASSERT_EQ(dlg.enums.size(), 1u);
  EXPECT_STREQ(dlg.enums[0].name, "Zocalo");
}

}  // namespace
