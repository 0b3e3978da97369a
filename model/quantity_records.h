// Reading and writing the elements of the quantity-set records. Readers return 1, or 0 after
// showing "Error lectura XML. <class>" when the element lacks something the record requires.
#ifndef ORVANE_MODEL_QUANTITY_RECORDS_H
#define ORVANE_MODEL_QUANTITY_RECORDS_H

#include <tinyxml2.h>

#include "orvane/ifc_quantity_set.h"

namespace orvane::xml {

int readQuantity(const tinyxml2::XMLElement& element, CIfcQuantityName& record);    // "QuantityName"
int readQuantitySet(const tinyxml2::XMLElement& element, CIfcQuantitySet& record);  // "QuantitySet"
int readType(const tinyxml2::XMLElement& element, CIfcType& record);                // "TypeQuorsel"
int readObject(const tinyxml2::XMLElement& element, CIfcObject& record);            // "ObjectQuorsel"

// The rules behind the readers, for code that reads these elements into something else than the
// records (the exchange functions). Each throws MissingPart where the record's reader fails; the
// texts are the element's own, not cut.
struct QuantitySetAttributes {
  const char* name;
  const char* description;
  const char* typeZep;
};
QuantitySetAttributes quantitySetAttributes(const tinyxml2::XMLElement& element);
// readQuantity without its message: fills `record`, which starts at its defaults.
void fillQuantity(const tinyxml2::XMLElement& element, CIfcQuantityName& record);

void writeQuantity(tinyxml2::XMLPrinter& out, const CIfcQuantityName& record);
void writeQuantitySet(tinyxml2::XMLPrinter& out, const CIfcQuantitySet& record);
// Opens a "QuantitySet" element with its attributes; its quantities and CloseElement follow.
void openQuantitySet(tinyxml2::XMLPrinter& out, const char* name, const char* description, const char* typeZep);
void writeType(tinyxml2::XMLPrinter& out, const CIfcType& record);
void writeObject(tinyxml2::XMLPrinter& out, const CIfcObject& record);

}  // namespace orvane::xml

#endif
