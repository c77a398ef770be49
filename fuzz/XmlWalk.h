// A walk over a whole XML document through the wrappers, as a user would do it.
#pragma once

#include <string>

#include <ZvUtiLib/CUtiXmlNodeList.h>
#include <ZvUtiLib/CUtiXmlParser.h>

#include "fuzz/Check.h"

namespace fuzz {

constexpr int kMostWalked = 2000;  // elements of a document

/// Names, attributes and texts of the document, in order; "(none)" where there is no root.
inline std::string Walked(CUtiXmlParser& parser) {
  std::string seen;
  if (!parser.GetRootElement()) return "(none)";
  int left = kMostWalked;
  // Deep documents would need a deep stack here, which the library itself does not.
  const auto walk = [&](const auto& self, const CUtiXmlElement& element, int depth) -> void {
    if (--left < 0 || depth > 200) return;
    seen += "<" + std::string(element.GetNodeName()) + " k=" + element.GetAttribute("k").GetString();
    seen += " n=" + std::to_string(element.GetAttributeInt("n"));
    CUtiXmlNodeList list;
    Check(element.GetChildNodes(&list) == 1, "an element has a list of its nodes");
    Check((list.GetLength() > 0 ? -1 : 0) == element.IsHasChild(nullptr), "a list has all nodes");
    for (int i = 0; i < list.GetLength() && left > 0; ++i) {
      CUtiXmlElement child;
      Check(list.GetItem(i, &child) == 1, "every node of a list can be had");
      if (!child.GetNodeName().IsEmpty()) self(self, child, depth + 1);
    }
    seen += ">";
  };
  walk(walk, *parser.GetRootElement(), 0);
  return seen + parser.GetRootElement()->GetText().GetString();
}

/// Asks the root for what a selection selects.
inline void Select(CUtiXmlParser& parser, const std::string& selection) {
  if (!parser.GetRootElement()) return;
  const CUtiXmlElement root = *parser.GetRootElement();
  const int has = root.IsHasChild(selection.c_str());
  Check(has == 0 || has == 1 || selection.c_str()[0] == 0, "a selection matches or not");
  const CString text = root.GetChildText(selection.c_str());
  const CString value = root.GetChildAttribute(selection.c_str(), "k");
  root.GetChildAttributeInt(selection.c_str(), "n");
  Check(has != 0 || (text.IsEmpty() && value.IsEmpty()), "what matches nothing has no text");
}

}  // namespace fuzz
