#include "exports/ifc_export.h"

#include <set>
#include <vector>

#include "exports/measure_types.h"
#include "exports/step_text.h"

namespace orvane::exports {

namespace {

// Writes the DATA section's instances, numbering them from #1.
class StepData {
 public:
  // Appends "#n=ENTITY(arguments);" and returns "#n".
  std::string add(std::string_view entity, const std::string& arguments) {
    const std::string id = "#" + std::to_string(++count_);
    text_ += id + "=" + std::string(entity) + "(" + arguments + ");\n";
    return id;
  }
  void comment(const std::string& note) { text_ += stepComment(note) + "\n"; }
  const std::string& text() const { return text_; }

 private:
  std::string text_;
  unsigned count_ = 0;
};

// GlobalIds from names; a name met twice (sets whose names differ only in case hash apart, but
// two sets of one name do not) gets a counter appended to its key, in file order.
class GlobalIds {
 public:
  std::string operator()(const std::string& key) {
    std::string id = globalIdOf(key);
    for (unsigned n = 2; !used_.insert(id).second; ++n) id = globalIdOf(key + "#" + std::to_string(n));
    return "'" + id + "'";
  }

 private:
  std::set<std::string> used_;
};

std::string optionalString(const std::string& text) { return text.empty() ? "$" : stepString(text); }

std::string list(const std::vector<std::string>& items) {
  std::string joined;
  for (const std::string& item : items) joined += (joined.empty() ? "" : ",") + item;
  return "(" + joined + ")";
}

std::string memberTemplate(StepData& data, GlobalIds& ids, const DefinitionSet& set, const Member& member,
                           const std::vector<std::string>& enumerations) {
  const std::string type = member.quantityKind >= 0 ? std::string(quantityTemplateType(member.quantityKind))
                           : member.enumeration >= 0 ? "P_ENUMERATEDVALUE"
                                                     : "P_SINGLEVALUE";
  const std::string enumerators =
      member.enumeration >= 0 ? enumerations[static_cast<std::size_t>(member.enumeration)] : "$";
  const std::string key = std::string(set.quantities ? "qset|" : "pset|") + set.name + "|" + member.name;
  return data.add("IFCSIMPLEPROPERTYTEMPLATE",
                  ids(key) + ",$," + stepString(member.name) + "," + optionalString(member.description) + ",." +
                      type + ".," + stepString(member.measure) + ",$," + enumerators + ",$,$,$,$");
}

std::string setTemplate(StepData& data, GlobalIds& ids, const DefinitionSet& set,
                        const std::vector<std::string>& enumerations) {
  std::vector<std::string> members;
  for (const Member& member : set.members) members.push_back(memberTemplate(data, ids, set, member, enumerations));
  std::string entities;
  for (const std::string& entity : set.entities) entities += (entities.empty() ? "" : ",") + entity;
  return data.add("IFCPROPERTYSETTEMPLATE",
                  ids(std::string(set.quantities ? "qset|" : "pset|") + set.name) + ",$," + stepString(set.name) +
                      "," + optionalString(set.description) + "," +
                      (set.quantities ? ".QTO_OCCURRENCEDRIVEN." : ".PSET_OCCURRENCEDRIVEN.") + "," +
                      optionalString(entities) + "," + list(members));
}

std::string header(const std::string& title) {
  const std::string system = stepString("Orvane " ORVANE_VERSION);
  return "ISO-10303-21;\nHEADER;\n"
         "FILE_DESCRIPTION(('ViewDefinition [notYetAssigned]','Orvane project library of property set templates'),'2;1');\n"
         "FILE_NAME(" + stepString(title) + ",'1970-01-01T00:00:00',(''),(''),"
         + system + "," + system + ",'');\n"
         "FILE_SCHEMA(('IFC4'));\nENDSEC;\n";
}

}  // namespace

std::string ifcLibraryDocument(const Definitions& definitions, const std::string& title) {
  StepData data;
  GlobalIds ids;
  for (const std::string& note : definitions.notes) data.comment(note);
  const std::string project = data.add("IFCPROJECT", ids("project|" + title) + ",$," + stepString(title) + ",$,$,$,$,$,$");
  const std::string library =
      data.add("IFCPROJECTLIBRARY", ids("library|" + title) + ",$," + stepString(title) + ",$,$,$,$,$,$");
  data.add("IFCRELDECLARES", ids("declares|project|" + title) + ",$,$,$," + project + ",(" + library + ")");
  std::vector<std::string> enumerations;
  for (const Enumeration& enumeration : definitions.enumerations) {
    std::vector<std::string> values;
    for (const std::string& value : enumeration.values) values.push_back("IFCLABEL(" + stepString(value) + ")");
    enumerations.push_back(data.add("IFCPROPERTYENUMERATION", stepString(enumeration.name) + "," + list(values) + ",$"));
  }
  std::vector<std::string> templates;
  for (const DefinitionSet& set : definitions.sets) templates.push_back(setTemplate(data, ids, set, enumerations));
  if (!templates.empty())
    data.add("IFCRELDECLARES", ids("declares|library|" + title) + ",$,$,$," + library + "," + list(templates));
  return header(title) + "DATA;\n" + data.text() + "ENDSEC;\nEND-ISO-10303-21;\n";
}

}  // namespace orvane::exports
