// Selections: the small query language that finds a node from another one.
//
//   path      = ["/" | "//"] step { ("/" | "//") step } | "/"
//   step      = "." | ".." | ("@" name | "*" | name | "text()" | "comment()" | "node()") { "[" filter "]" }
//   filter    = number from 0 | path | "@" name "=" literal in either kind of quotes
//
// Names are compared as written, with their prefix. Blanks may stand around all of these. Anything else
// is malformed and matches nothing. So are filters more than 32 deep in each other, and such as have more
// than 64 steps together.
#pragma once

#include <optional>
#include <string_view>

#include "platform/xml/XmlTree.h"

namespace zvuti::xml {

/// A node of a tree, or one of its attributes. Sorts in document order: the attributes of an element
/// come after it and before its children.
struct Place {
  NodeId node = kDocumentNode;
  std::uint32_t attribute = 0;  ///< 0 for the node itself, else its index in XmlTree::attributes plus 1

  friend bool operator==(const Place& a, const Place& b) {
    return a.node == b.node && a.attribute == b.attribute;
  }
  friend bool operator<(const Place& a, const Place& b) {
    return a.node < b.node || (a.node == b.node && a.attribute < b.attribute);
  }
};

/// The first match of `selection`, which is UTF-8, in document order, seen from `from`. Takes time in
/// proportion to the nodes it has to look at and the length of the selection, whatever the shape of the tree.
/// Takes up to 8 bytes for each of these nodes, times the steps of the filters that stand in each other.
std::optional<Place> SelectFirst(const XmlTree& tree, Place from, std::string_view selection);

}  // namespace zvuti::xml
