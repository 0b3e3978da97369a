#include "model/document_outline.h"

#include <cstdint>

#include "model/text.h"

namespace orvane::xml {
namespace {

using tinyxml2::XMLElement;

// Gathers ranges of reserved room that lie one after another in memory (as lists reserved in a row
// do) and prefaults each run in one call.
class PrefaultRuns {
 public:
  ~PrefaultRuns() { flush(); }

  template <class Record>
  void add(const std::vector<Record>& records) {
    const auto begin = reinterpret_cast<std::uintptr_t>(records.data() + records.size());
    const auto end = reinterpret_cast<std::uintptr_t>(records.data() + records.capacity());
    if (begin == end) return;
    // The heap puts a small header between two blocks it hands out in a row.
    if (begin < end_ || begin > end_ + kHeaderSlack) {
      flush();
      begin_ = begin;
    }
    end_ = end;
  }

  void flush() {
    if (end_ > begin_) prefaultForWriting(reinterpret_cast<const void*>(begin_), end_ - begin_);
    begin_ = end_ = 0;
  }

 private:
  static constexpr std::uintptr_t kHeaderSlack = 64;
  std::uintptr_t begin_ = 0;
  std::uintptr_t end_ = 0;
};

// Reads a list of large sets in place: room for every set and for each set's members is reserved
// and prefaulted first, then each set is read into its room. The first set that fails ends the list.
template <class Set, class Member, std::vector<Member> Set::*Members, class Read>
void readSetsInPlace(const XMLElement& container, const char* setName, const char* memberName,
                     std::vector<Set>& sets, Read read) {
  const std::size_t first = sets.size();
  sets.reserve(first + countChildren(container, setName));
  prefaultRoom(sets);
  try {
    PrefaultRuns runs;
    forEachChild(container, setName, [&](const XMLElement& element) {
      std::vector<Member>& members = sets.emplace_back().*Members;
      members.reserve(countChildren(element, memberName));
      runs.add(members);
      return true;
    });
  } catch (...) {
    // Out of memory for the room: none of these sets was read, so none stays.
    sets.erase(sets.begin() + static_cast<std::ptrdiff_t>(first), sets.end());
    throw;
  }
  std::size_t next = first;
  forEachChild(container, setName, [&](const XMLElement& element) {
    if (read(element, sets[next]) != 1) return false;
    ++next;
    return true;
  });
  sets.erase(sets.begin() + static_cast<std::ptrdiff_t>(next), sets.end());
}

// The outline of a set element, under the set's own rules: its attributes, then every member that
// reads (a member that fails is left out with its message). False, after the set's message, when
// the set fails.
template <class Attributes, class Member, class ReadMember>
bool outlineSet(const XMLElement& element, const char* message, Attributes attributes,
                const char* memberName, ReadMember readMember, std::vector<SetOutline>& sets) {
  return guardedRead(message, [&] {
    SetOutline set;
    set.name = asField(attributes(element).name);
    set.element = &element;
    set.members.reserve(countChildren(element, memberName));
    forEachChild(element, memberName, [&](const XMLElement& child) {
      Member scratch;
      if (readMember(child, scratch) == 1) set.members.push_back(&child);
      return true;
    });
    sets.push_back(std::move(set));
  }) == 1;
}

}  // namespace

std::string_view asField(const char* text) noexcept {
  const std::string_view whole(text);
  return whole.substr(0, cutLength(whole, kTextFieldSize - 1));
}

void readPropertySets(const XMLElement& container, std::vector<CIfcPropertySet>& sets) {
  readSetsInPlace<CIfcPropertySet, CIfcPropertyName, &CIfcPropertySet::properties>(
      container, "PropertySet", "PropertyName", sets, readPropertySet);
}

void readQuantitySets(const XMLElement& container, std::vector<CIfcQuantitySet>& sets) {
  readSetsInPlace<CIfcQuantitySet, CIfcQuantityName, &CIfcQuantitySet::quantities>(
      container, "QuantitySet", "QuantityName", sets, readQuantitySet);
}

int outlinePropertyDocument(const tinyxml2::XMLDocument& tree, PropertyOutline& outline) {
  return readPropertyTree(
      tree, outline.enums,
      [&](const XMLElement& container) {
        outline.sets.reserve(countChildren(container, "PropertySet"));
        forEachChild(container, "PropertySet", [&](const XMLElement& element) {
          return outlineSet<decltype(&propertySetAttributes), CIfcPropertyName>(
              element, "Error lectura XML. CIfcPropertySet", propertySetAttributes, "PropertyName", readProperty,
              outline.sets);
        });
        sortByName(outline.sets);
      },
      [&](const XMLElement& list) {
        forEachChild(list, "RelationIfcElementWithPSet", [&](const XMLElement& item) {
          CIfcRelationProyectPSet_IfcObject scratch;
          if (readRelation(item, scratch) == 1) outline.relations.push_back(&item);
          return true;
        });
      });
}

int outlineQuantityDocument(const tinyxml2::XMLDocument& tree, QuantityOutline& outline) {
  return readQuantityTree(tree, outline.types, outline.objects, [&](const XMLElement& container) {
    outline.sets.reserve(countChildren(container, "QuantitySet"));
    forEachChild(container, "QuantitySet", [&](const XMLElement& element) {
      return outlineSet<decltype(&quantitySetAttributes), CIfcQuantityName>(
          element, "Error lectura XML. CIfcQuantitySet", quantitySetAttributes, "QuantityName", readQuantity,
          outline.sets);
    });
    sortByName(outline.sets);
  });
}

}  // namespace orvane::xml
