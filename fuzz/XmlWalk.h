// Walks a whole XML document through CUtiXmlElement and CUtiXmlNodeList, as a user would.
#pragma once

#include <string>

#include <ZvUtiLib/CUtiXmlNodeList.h>
#include <ZvUtiLib/CUtiXmlParser.h>

#include "fuzz/Check.h"

namespace fuzz {

constexpr int kMaxElements = 2000;  // visited per document
constexpr int kMaxDepth = 200;

/// Names, attributes and texts of the document, in document order; "(none)" if it has no root.
inline std::string Walked(CUtiXmlParser& parser) {
  std::string seen;
  if (!parser.GetRootElement()) return "(none)";
  int left = kMaxElements;
  // The depth is limited because this walk recurses; the library itself does not.
  const auto walk = [&](const auto& self, const CUtiXmlElement& element, int depth) -> void {
    if (--left < 0 || depth > kMaxDepth) return;
    seen.append("<").append(element.GetNodeName()).append(" k=").append(element.GetAttribute("k"));
    seen.append(" n=").append(std::to_string(element.GetAttributeInt("n")));
    CUtiXmlNodeList list;
    Check(element.GetChildNodes(&list) == 1, "an element has a list of child nodes");
    Check((list.GetLength() > 0 ? -1 : 0) == element.IsHasChild(nullptr),
          "the list is empty exactly if there are no children");
    for (int i = 0; i < list.GetLength() && left > 0; ++i) {
      CUtiXmlElement child;
      Check(list.GetItem(i, &child) == 1, "every node of a list can be read");
      if (!child.GetNodeName().IsEmpty()) self(self, child, depth + 1);
    }
    seen += ">";
  };
  walk(walk, *parser.GetRootElement(), 0);
  return seen + parser.GetRootElement()->GetText().GetString();
}

/// Runs `selection` on the root with each operation that takes one.
inline void Select(CUtiXmlParser& parser, const std::string& selection) {
  if (!parser.GetRootElement()) return;
  const CUtiXmlElement root = *parser.GetRootElement();
  const int has = root.IsHasChild(selection.c_str());
  Check(has == 0 || has == 1 || selection.c_str()[0] == 0, "IsHasChild returns 0 or 1 for a selection");
  const CString text = root.GetChildText(selection.c_str());
  const CString value = root.GetChildAttribute(selection.c_str(), "k");
  root.GetChildAttributeInt(selection.c_str(), "n");
  Check(has != 0 || (text.IsEmpty() && value.IsEmpty()), "a selection that matches nothing gives no text");
}

}  // namespace fuzz
