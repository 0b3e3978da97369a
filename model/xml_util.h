// Small helpers over tinyxml2 for the record readers: a record that lacks a required attribute,
// child or text fails as a whole, so the lookups throw and the reader's catch turns that into the
// record's message and a result of 0.
#ifndef ORVANE_MODEL_XML_UTIL_H
#define ORVANE_MODEL_XML_UTIL_H

#include <tinyxml2.h>

#include "model/message_sink.h"

namespace orvane::xml {

struct MissingPart {};

// Runs a record reader's body: 1 when it ends, 0 when it throws (a missing part, exhausted memory),
// after showing `message` when there is one.
template <class Body>
int guardedRead(const char* message, Body body) {
  try {
    body();
    return 1;
  } catch (...) {
    if (message != nullptr) showMessage(message);
    return 0;
  }
}

inline const char* requiredAttribute(const tinyxml2::XMLElement& element, const char* name) {
  const char* value = element.Attribute(name);
  if (value == nullptr) throw MissingPart{};
  return value;
}

inline const tinyxml2::XMLElement& requiredChild(const tinyxml2::XMLElement& element, const char* name) {
  const tinyxml2::XMLElement* child = element.FirstChildElement(name);
  if (child == nullptr) throw MissingPart{};
  return *child;
}

// The element's text (its first child when that is a text node), or "" when it has none.
inline const char* textOrEmpty(const tinyxml2::XMLElement& element) {
  const char* text = element.GetText();
  return text != nullptr ? text : "";
}

inline const char* requiredText(const tinyxml2::XMLElement& element) {
  const char* text = element.GetText();
  if (text == nullptr) throw MissingPart{};
  return text;
}

// Calls `visit` for each child element named `name`, in document order, until it returns false.
template <class Visit>
void forEachChild(const tinyxml2::XMLElement& parent, const char* name, Visit visit) {
  for (const tinyxml2::XMLElement* child = parent.FirstChildElement(name); child != nullptr;
       child = child->NextSiblingElement(name)) {
    if (!visit(*child)) return;
  }
}

// How many children named `name` `parent` has: lists reserve their room before reading.
inline std::size_t countChildren(const tinyxml2::XMLElement& parent, const char* name) {
  std::size_t count = 0;
  for (const tinyxml2::XMLElement* child = parent.FirstChildElement(name); child != nullptr;
       child = child->NextSiblingElement(name))
    ++count;
  return count;
}

// Writes one element holding only a text node, as <name>text</name>.
inline void writeTextElement(tinyxml2::XMLPrinter& out, const char* name, const char* text) {
  out.OpenElement(name);
  out.PushText(text);
  out.CloseElement();
}

}  // namespace orvane::xml

#endif
