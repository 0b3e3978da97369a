#include "editors/psets/property_data_dlg.h"

#include <cstring>

#include "editors/assign/property_value_dlg.h"
#include "editors/common/text_codec.h"
#include "editors/psets/list_values_dlg.h"
#include "editors/psets/property_texts.h"
#include "model/names.h"
#include "model/numbers.h"
#include "model/text.h"

namespace orvane {
namespace {

// The texts of a property's record fields go into at most 256 bytes, like the host's records.
constexpr std::size_t kEditedTextSize = 256;

int findEnum(const std::vector<CIfcEnum>& enums, const char* name) {
  for (int i = 0; i < static_cast<int>(enums.size()); ++i)
    if (equalsNoCase(enums[i].name, name)) return i;
  return -1;
}

}  // namespace

CPropertyDataDlg::CPropertyDataDlg(DialogServices& services, int editMode,
                                   const CIfcPropertyName& initial, const std::vector<CIfcEnum>& initialEnums,
                                   const CIfcPropertySet* ownerSet,
                                   const CConjuntoVariableZep* catalogue)
    : Dialog(services),
      property(initial),
      enums(initialEnums),
      mode(editMode),
      ownerSet_(ownerSet),
      catalogue_(catalogue) {}

void CPropertyDataDlg::start() {
  caption = textoMensaje(3, 28);
  setNameLabel = textoMensaje(3, 8);
  nameLabel = u"Nombre";  // the template's own text
  descriptionLabel = textoMensaje(3, 10);
  typeLabel = textoMensaje(3, 20);
  valueListLabel = textoMensaje(3, 30);
  optionalLabel = textoMensaje(3, 31);
  defaultValueLabel = textoMensaje(3, 32);
  ruleLabel = textoMensaje(3, 33);
  unitLabel = textoMensaje(4, 5);
  editLabel = textoMensaje(3, 9);
  okLabel = textoMensaje(3, 5);
  cancelLabel = textoMensaje(3, 6);
  fill();
  updateEnabledState();
}

void CPropertyDataDlg::fill() {
  setName = ownerSet_ != nullptr ? fromUtf8(ownerSet_->name) : std::u16string();
  nameText = fromUtf8(property.name);
  descriptionText = fromUtf8(property.description);
  defaultValueText = fromUtf8(defaultValueShown(property));
  ruleText = fromUtf8(property.rule);
  optionalChecked = property.optional;
  booleanChecked = property.intValue == 1;

  types.entries = {textoMensaje(3, 13), textoMensaje(3, 14), textoMensaje(3, 15),
                   textoMensaje(3, 21), textoMensaje(3, 16), textoMensaje(3, 34)};
  types.selected = validIndex(property.valueType, types.entries.size()) ? property.valueType : -1;

  units.entries.clear();
  for (const char* unit : UnitTable) units.entries.push_back(fromAnsi(unit));
  units.selected = validIndex(property.unit, units.entries.size()) ? property.unit : -1;

  fillValueLists();
}

void CPropertyDataDlg::fillValueLists() {
  valueLists.entries.clear();
  for (const CIfcEnum& type : enums) valueLists.entries.push_back(fromUtf8(type.name));
  valueLists.selected = findEnum(enums, property.enumName);
}

// Enumerated defaults come from the value list, Boolean ones from a check box; the other types
// have no value list.
void CPropertyDataDlg::updateEnabledState() {
  defaultValueVisible = defaultValueEnabled = true;
  booleanCheckVisible = false;
  valueLists.enabled = editValueListEnabled = true;
  switch (property.valueType) {
    case PropertyEnumerated:
      defaultValueEnabled = false;
      break;
    case PropertyBoolean:
      defaultValueVisible = false;
      booleanCheckVisible = true;
      valueLists.enabled = false;
      break;
    default:
      valueLists.enabled = editValueListEnabled = false;
  }
}

void CPropertyDataDlg::changeType(int index) {
  types.selected = index;
  if (validIndex(index, types.entries.size())) property.valueType = index;
  updateEnabledState();
}

bool CPropertyDataDlg::takeEdits() {
  if (nameText.empty()) {
    services().showMessage(textoMensaje(3, 35));
    return false;
  }
  const std::string name = toUtf8Bounded(nameText, kEditedTextSize - 1);
  if (mode == kEditItem && !equalsNoCase(name, property.name)) nameChanged = true;
  copyText(property.name, name);
  encodeUtf8(property.description, kEditedTextSize, descriptionText);
  encodeUtf8(property.rule, kEditedTextSize, ruleText);
  property.optional = optionalChecked;

  const std::string value = toUtf8Bounded(defaultValueText, kEditedTextSize - 1);
  switch (property.valueType) {
    case PropertyInteger:
      property.intValue = readInt(value.c_str());
      copyText(property.textValue, value);
      break;
    case PropertyReal:
      property.realValue = readReal(value.c_str());
      copyText(property.textValue, value);
      break;
    case PropertyBoolean:
      property.intValue = booleanChecked ? 1 : 0;
      break;
    case PropertyEnumerated:
      break;  // set by picking a value of the list
    default:
      copyText(property.textValue, value);
  }
  if (units.hasSelection()) property.unit = units.selected;
  return true;
}

void CPropertyDataDlg::ok() {
  if (!takeEdits()) return;
  const bool needsValue = property.valueType != PropertyBoolean && property.valueType != PropertyString;
  if (!property.optional && defaultValueText.empty() && needsValue)
    return services().showMessage(textoMensaje(3, 36));
  if (ownerSet_ != nullptr && !ownerSet_->properties.empty() && (mode != kEditItem || nameChanged)) {
    for (const CIfcPropertyName& other : ownerSet_->properties)
      if (equalsNoCase(other.name, property.name)) return services().showMessage(textoMensaje(3, 37));
  }
  end(kDialogOk);
}

void CPropertyDataDlg::chooseValueList(int index) {
  if (!takeEdits() || !validIndex(index, enums.size())) return;
  char previous[kTextFieldSize];
  copyText(previous, property.enumName);
  copyText(property.enumName, enums[index].name);

  CListValuesDlg chooser(services(), enums[index], false);
  if (chooser.run() == kDialogOk) {
    enums[index] = chooser.type;
    copyText(property.textValue, enums[index].elements[chooser.currentRow].text);
    defaultValueText = fromUtf8(property.textValue);
    valueLists.selected = index;
  } else {
    copyText(property.enumName, previous);
    fillValueLists();
  }
}

void CPropertyDataDlg::editValueList() {
  if (!takeEdits() || property.valueType != PropertyEnumerated) return;
  const int index = findEnum(enums, property.enumName);
  if (index < 0) return;
  CListValuesDlg editor(services(), enums[index], true);
  if (editor.run() != kDialogOk) return;
  enums[index] = editor.type;
  fill();
}

void CPropertyDataDlg::chooseValue() {
  if (!takeEdits()) return;
  const std::string current = toUtf8Bounded(defaultValueText, kTextFieldSize - 1);
  const CConjuntoVariableZep noVariables;
  CPropiedadesObjetosValorIFCDlg chooser(services(), current.c_str(),
                                         catalogue_ != nullptr ? *catalogue_ : noVariables);
  if (chooser.run() != kDialogOk) return;
  // The chooser's result is shown as ANSI text, as the host's own variable names are.
  defaultValueText = fromAnsi(chooser.value);
}

}  // namespace orvane
