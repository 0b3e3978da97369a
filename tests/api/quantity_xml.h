// Quantity elements of a quantity-set document, for the host-interface and tool tests.
#pragma once

#include <string>

namespace orvane::test {

inline std::string quantity(const std::string& name, const std::string& kind, const std::string& value,
                            const std::string& exported = "Yes") {
  return "<QuantityName Name=\"" + name + "\" TypeQuorsel=\"" + kind + "\" Export=\"" + exported +
         "\"><Description>d</Description><Value>" + value + "</Value></QuantityName>";
}

inline std::string quantitySet(const std::string& name, const std::string& quantities, const std::string& linked = "") {
  return "<QuantitySet Name=\"" + name + "\" Description=\"\" typeZep=\"" + linked + "\">" + quantities +
         "</QuantitySet>";
}

}  // namespace orvane::test
