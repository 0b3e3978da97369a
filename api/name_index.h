// Finding sets and their members by name, ignoring ASCII case, in constant time, for the merges of
// host records into documents. A merge of n records into a document of m sets would otherwise walk
// the sets for every record; with 100,000 records that dwarfs loading and saving the file.
//
// Every lookup keeps what a walk in list order would find: the FIRST record of a name.
#ifndef ORVANE_API_NAME_INDEX_H
#define ORVANE_API_NAME_INDEX_H

#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <type_traits>
#include <unordered_map>
#include <vector>

#include "model/text.h"

namespace orvane::api {

// Hashing and comparing names as compareNoCase does.
struct FoldedHash {
  using is_transparent = void;
  std::size_t operator()(std::string_view name) const noexcept;
};
struct FoldedEqual {
  using is_transparent = void;
  bool operator()(std::string_view a, std::string_view b) const noexcept;
};

// Positions in one list by name. `Key` is std::string, a copy of each name, or std::string_view
// when the names are views of text that outlives the index (less memory per name).
template <class Key>
class BasicNameIndex {
 public:
  // The position of the first name equal to `name`, if any.
  std::optional<std::size_t> find(std::string_view name) const {
    const auto found = positions_.find(name);
    if (found == positions_.end()) return std::nullopt;
    return found->second;
  }

  // Records that the list holds `name` at `position`. A name already indexed keeps its earlier
  // position, so adding in list order indexes the first of each name.
  void add(std::string_view name, std::size_t position) {
    if (positions_.find(name) == positions_.end()) positions_.emplace(Key(name), position);
  }

  void reserve(std::size_t count) { positions_.reserve(count); }

 private:
  std::unordered_map<Key, std::size_t, FoldedHash, FoldedEqual> positions_;
};

using NameIndex = BasicNameIndex<std::string>;

// A record's name, whether it keeps it in a fixed field or as a view of text that outlives it.
template <std::size_t N>
std::string_view nameText(const char (&field)[N]) noexcept {
  return fieldText(field);
}
inline std::string_view nameText(std::string_view name) noexcept { return name; }

template <std::size_t N>
void setName(char (&field)[N], std::string_view name) noexcept {
  copyText(field, name);
}
inline void setName(std::string_view& view, std::string_view name) noexcept { view = name; }

// A list of sets (each with a `name` and a list of members reached through `Members`) with an
// index of the sets and, for a set with many members, one of its members.
// The list may only grow through this object while it lives, so the indices stay true. A name kept
// as a view must outlive the object.
template <class Set, class Member, std::vector<Member> Set::*Members>
class IndexedSets {
  // Names kept in a record's own field move when its list grows, so the index copies them.
  template <class Record>
  using IndexOf = BasicNameIndex<std::conditional_t<std::is_same_v<decltype(Record::name), std::string_view>,
                                                    std::string_view, std::string>>;
  using SetIndex = IndexOf<Set>;
  using MemberIndex = IndexOf<Member>;

 public:
  explicit IndexedSets(std::vector<Set>& sets) : sets_(sets) {
    sets_index_.reserve(sets.size());
    for (std::size_t i = 0; i < sets.size(); ++i) sets_index_.add(nameText(sets[i].name), i);
  }

  // The position of the first set named `name`; a new empty set of that name is appended first
  // when there is none.
  std::size_t findOrAppend(std::string_view name) {
    if (std::optional<std::size_t> found = sets_index_.find(name)) return *found;
    Set set;
    setName(set.name, name);
    sets_.push_back(std::move(set));
    sets_index_.add(nameText(sets_.back().name), sets_.size() - 1);
    return sets_.size() - 1;
  }

  Set& at(std::size_t set) { return sets_[set]; }

  // The first member of set `set` named `name`, or null.
  Member* findMember(std::size_t set, std::string_view name) {
    std::vector<Member>& members = sets_[set].*Members;
    if (const MemberIndex* index = memberIndex(set)) {
      const std::optional<std::size_t> found = index->find(name);
      return found ? &members[*found] : nullptr;
    }
    for (Member& member : members)
      if (FoldedEqual()(nameText(member.name), name)) return &member;
    return nullptr;
  }

  void appendMember(std::size_t set, const Member& member) {
    MemberIndex* index = memberIndex(set);
    std::vector<Member>& members = sets_[set].*Members;
    members.push_back(member);
    if (index != nullptr) index->add(nameText(members.back().name), members.size() - 1);
  }

 private:
  // A set's members are searched in order until it holds this many: a document's sets hold tens of
  // entries, and below this a walk is faster than a hash index, which costs an allocation a member.
  static constexpr std::size_t kIndexedFrom = 32;

  // The index of a set's members, made the first time it is asked for once the set is large
  // enough; null for a smaller set.
  MemberIndex* memberIndex(std::size_t set) {
    if (member_indices_.size() <= set) member_indices_.resize(sets_.size());
    std::unique_ptr<MemberIndex>& index = member_indices_[set];
    const std::vector<Member>& members = sets_[set].*Members;
    if (!index && members.size() >= kIndexedFrom) {
      index = std::make_unique<MemberIndex>();
      index->reserve(members.size());
      for (std::size_t i = 0; i < members.size(); ++i) index->add(nameText(members[i].name), i);
    }
    return index.get();
  }

  std::vector<Set>& sets_;
  SetIndex sets_index_;
  std::vector<std::unique_ptr<MemberIndex>> member_indices_;
};

}  // namespace orvane::api

#endif
