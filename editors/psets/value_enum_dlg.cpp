#include "editors/psets/value_enum_dlg.h"

#include "editors/common/text_codec.h"
#include "model/numbers.h"

namespace orvane {

CValueEnumDlg::CValueEnumDlg(DialogServices& services, const CIfcNodoEnum& initial)
    : Dialog(services), value(initial) {}

void CValueEnumDlg::start() {
  caption = textoMensaje(3, 38);
  codeLabel = textoMensaje(3, 11);
  textLabel = textoMensaje(3, 10);
  okLabel = textoMensaje(3, 5);
  cancelLabel = textoMensaje(3, 6);
  codeText = fromUtf8(formatInt(value.value).c_str());
  valueText = fromUtf8(value.text);
}

void CValueEnumDlg::ok() {
  if (valueText.empty()) return services().showMessage(u"La descripción no puede estar vacía");
  if (codeText.empty()) return services().showMessage(u"El valor no puede estar vacío");
  value.value = readInt(toUtf8(codeText).c_str());
  encodeUtf8(value.text, valueText);
  end(kDialogOk);
}

}  // namespace orvane
