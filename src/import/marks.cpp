#include "import/marks.h"

#include <cwchar>

#include "import/messages.h"

namespace tessel {
namespace {

constexpr wchar_t markName[] = L"_tessel_import_mark";

pugi::xml_node firstElement(pugi::xml_node node) {
  while (node && node.type() != pugi::node_element) node = node.next_sibling();
  return node;
}

}  // namespace

void markRead(pugi::xml_node element) {
  if (!element) return;
  pugi::xml_attribute mark = element.attribute(markName);
  if (!mark) mark = element.append_attribute(markName);
  mark.set_value(L"1");
}

void reportUnknownProperties(const ImportContext& run, const pugi::xml_node& element, const ElementContext& object) {
  for (const pugi::xml_node& child : element.children()) {
    if (child.type() != pugi::node_element) continue;
    if (child.attribute(markName).as_int() == 0) warnOfUnknownProperty(run, object, child);
  }
}

// Without recursion: a tree may be deeper than any stack.
void clearMarks(const pugi::xml_node& element) {
  pugi::xml_node node = element;
  while (node) {
    node.remove_attribute(markName);
    pugi::xml_node next = firstElement(node.first_child());
    while (!next && node != element) {
      next = firstElement(node.next_sibling());
      if (!next) node = node.parent();
    }
    node = next;
  }
}

bool isMark(const pugi::xml_attribute& attribute) { return std::wcscmp(attribute.name(), markName) == 0; }

}  // namespace tessel
