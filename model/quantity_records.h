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

void writeQuantity(tinyxml2::XMLPrinter& out, const CIfcQuantityName& record);
void writeQuantitySet(tinyxml2::XMLPrinter& out, const CIfcQuantitySet& record);
void writeType(tinyxml2::XMLPrinter& out, const CIfcType& record);
void writeObject(tinyxml2::XMLPrinter& out, const CIfcObject& record);

}  // namespace orvane::xml

#endif
