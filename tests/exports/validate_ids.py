"""Validates an IDS file against buildingSMART's ids.xsd with python3-xmlschema, offline: the W3C
schemas the XSD imports by URL (xml.xsd, XMLSchema.xsd) are the copies xmlschema carries itself,
and allow="local" forbids any fetch from the network. Then prints what the file states, read with
the standard library's ElementTree: "for IFCWALL" or "for set NAME" per specification, then
"set.member TAB DATATYPE TAB values TAB cardinality" per requirement (values joined by "|").
Usage: validate_ids.py IDS.xsd FILE.ids; prints the file's first error and exits 1 if it is invalid."""
import sys
from xml.etree import ElementTree

import xmlschema

NS = {"i": "http://standards.buildingsmart.org/IDS", "xs": "http://www.w3.org/2001/XMLSchema"}


def statements(path):
    for entry in ElementTree.parse(path).getroot().iterfind("i:specifications/i:specification", NS):
        entity = entry.find("i:applicability/i:entity", NS)
        yield "for " + (entity.findtext("i:name/i:simpleValue", "", NS) if entity is not None else
                        "set " + entry.findtext("i:applicability/i:property/i:propertySet/i:simpleValue", "", NS))
        for facet in entry.iterfind("i:requirements/i:property", NS):
            member = (facet.findtext("i:propertySet/i:simpleValue", "", NS) + "." +
                      facet.findtext("i:baseName/i:simpleValue", "", NS))
            enumeration = facet.iterfind("i:value/xs:restriction/xs:enumeration", NS)
            values = "|".join(e.get("value", "(none)") for e in enumeration)
            yield "\t".join([member, facet.get("dataType", "(none)"), values, facet.get("cardinality", "(none)")])


def main(argv):
    error = next(iter(xmlschema.XMLSchema(argv[1], allow="local").iter_errors(argv[2])), None)
    if error is not None:
        print(f"{argv[2]}: {error.reason} (at {error.path})")
        return 1
    sys.stdout.buffer.write("".join(line + "\n" for line in statements(argv[2])).encode("utf-8"))
    return 0


if __name__ == "__main__":
    sys.exit(main(sys.argv))
