// Reading and writing the elements of the property-set records.
//
// A reader fills a record that starts at its defaults from one element and returns 1, or 0 when
// the element lacks something the record requires; it then shows "Error lectura XML. <class>"
// (the relation shows nothing). A writer appends the record's element to what `out` prints.
#ifndef ORVANE_MODEL_PROPERTY_RECORDS_H
#define ORVANE_MODEL_PROPERTY_RECORDS_H

#include <tinyxml2.h>


#include "orvane/ifc_property_set.h"

namespace orvane::xml {

int readEnum(const tinyxml2::XMLElement& element, CIfcEnum& record);                // "TypeEnum"
int readPropertySet(const tinyxml2::XMLElement& element, CIfcPropertySet& record);  // "PropertySet"
int readProperty(const tinyxml2::XMLElement& element, CIfcPropertyName& record);    // "PropertyName"
int readRelation(const tinyxml2::XMLElement& element,
                 CIfcRelationProyectPSet_IfcObject& record);  // "RelationIfcElementWithPSet"

// The rules behind the readers, for code that reads these elements into something else than the
// records (the exchange functions fill host records and merge straight from the XML tree). Each
// throws MissingPart where the record's reader fails; the texts are the element's own, not cut.
struct PropertySetAttributes {
  const char* name;
  const char* description;
};
PropertySetAttributes propertySetAttributes(const tinyxml2::XMLElement& element);
// readProperty without its message: fills `record`, which starts at its defaults.
void fillProperty(const tinyxml2::XMLElement& element, CIfcPropertyName& record);

void writeEnum(tinyxml2::XMLPrinter& out, const CIfcEnum& record);
void writePropertySet(tinyxml2::XMLPrinter& out, const CIfcPropertySet& record);
// Opens a "PropertySet" element with its attributes; its properties and CloseElement follow.
void openPropertySet(tinyxml2::XMLPrinter& out, const char* name, const char* description);
void writeProperty(tinyxml2::XMLPrinter& out, const CIfcPropertyName& record);
void writeRelation(tinyxml2::XMLPrinter& out, const CIfcRelationProyectPSet_IfcObject& record);

// The word written to the "Type" attribute for a property (its enumName when Enumerated).
const char* typeWord(const CIfcPropertyName& property);

// The text written to a property's "Value" element; `scratch` holds it when it has to be built.
const char* valueText(const CIfcPropertyName& property, char (&scratch)[kTextFieldSize]);

}  // namespace orvane::xml

#endif
