// XmlTree: a parsed document, in a few arrays that all views of it share.
//
// Nodes are in document order, so a node's descendants are the ids between it and its `end`. The tree is
// walked, searched and freed without recursion, however deep it is. There is no list of children: the first
// child of a node, if it has any, is the node after it, and the next sibling of a node stands at its `end`.
// Texts and names stay in the encoding of the document, if that is GBK, so that answers in GBK are copies.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace zvuti::xml {

using NodeId = std::uint32_t;
using NameId = std::uint32_t;

constexpr NodeId kDocumentNode = 0;
constexpr NameId kNoName = 0xFFFFFFFF;

/// White space as XML has it: blank, tab, line feed, carriage return.
constexpr bool IsXmlSpace(char byte) { return byte == ' ' || byte == '\t' || byte == '\n' || byte == '\r'; }

enum class Encoding : std::uint8_t { kUtf8, kGbk };

enum class NodeKind : std::uint8_t {
  kDocument,
  kElement,
  kText,
  kCData,
  kComment,
  kInstruction,
  kEntityReference
};

/// A stretch of one of the tree's arrays.
struct Span {
  std::uint32_t first = 0, count = 0;
};

struct Node {
  NodeKind kind = NodeKind::kDocument;
  bool preservesSpace = false;       ///< xml:space="preserve" is in scope
  bool followsDroppedSpace = false;  ///< white space that made no node stands between it and the node before
  NameId name = kNoName;
  NodeId parent = kDocumentNode;
  NodeId end = 1;  ///< one past the last descendant
  std::uint32_t children = 0;
  Span content;  ///< attributes of an element, bytes of text of any other kind
};

struct Attribute {
  NameId name = kNoName;
  Span value;
};

/// Names, each stored once. Nobody can choose names that collide: the hash depends on a number that each
/// process draws at random.
class NameTable {
 public:
  NameTable();
  /// The number of `name`, which is added where it is new.
  NameId Intern(std::string_view name);
  /// The number of `name`, or kNoName.
  NameId Find(std::string_view name) const;
  std::string_view At(NameId id) const { return {text_.data() + spans_[id].first, spans_[id].count}; }

 private:
  std::size_t SlotOf(std::string_view name) const;
  void Grow();

  std::uint64_t key_;
  std::string text_;
  std::vector<Span> spans_;
  std::vector<NameId> slots_;  // open addressing; a power of two, never full
};

struct XmlTree {
  std::vector<Node> nodes;  ///< the document first
  std::vector<Attribute> attributes;
  std::string text;
  NameTable names;
  Encoding encoding = Encoding::kUtf8;  ///< of `text` and `names`

  std::string_view Bytes(Span span) const { return {text.data() + span.first, span.count}; }
  bool IsElement(NodeId id) const { return nodes[id].kind == NodeKind::kElement; }
  /// A text of the tree in GBK.
  std::string ToGbk(std::string_view own) const;
  /// Converts a text of the tree into `out`, which must have room for its bytes as units. Returns their
  /// number.
  std::size_t ToUtf16(std::string_view own, char16_t* out) const;
  /// A text as the tree would have it. Nothing if it has no such form, and so equals no text of the tree.
  std::optional<std::string> FromUtf8(std::string_view utf8) const;
  /// The attribute of a node that has the name, or null.
  const Attribute* FindAttribute(NodeId id, NameId name) const;
  /// The same by the name's text. REQUIRES: the node is an element.
  const Attribute* FindAttribute(NodeId element, std::string_view own) const;
  /// Adds a node as the last child of `parent`, whose innermost descendants are closed.
  NodeId Add(NodeKind kind, NameId name, NodeId parent);

  /// Calls `take` with each piece of text in the node, in order: one blank stands for white space that
  /// made no node between two pieces, and white space is cut at both ends, as far as it may be.
  template <class Take>
  void VisitText(NodeId id, Take take) const;
};

template <class Take>
void XmlTree::VisitText(NodeId id, Take take) const {
  const auto mayCut = [this](NodeId piece) {
    return nodes[piece].kind == NodeKind::kText && !nodes[piece].preservesSpace;
  };
  std::string_view waiting;  // the latest piece; whether its end may be cut depends on the next one
  NodeId last = kDocumentNode;
  bool isSpaceDropped = false;
  for (NodeId i = id; i < nodes[id].end; ++i) {
    const Node& node = nodes[i];
    isSpaceDropped |= node.followsDroppedSpace;
    if (node.kind != NodeKind::kText && node.kind != NodeKind::kCData) continue;
    std::string_view piece = Bytes(node.content);
    if (last == kDocumentNode) {
      while (mayCut(i) && !piece.empty() && IsXmlSpace(piece.front())) piece.remove_prefix(1);
    } else {
      take(waiting);
      if (isSpaceDropped) take(std::string_view(" "));
    }
    waiting = piece, last = i, isSpaceDropped = false;
  }
  if (last == kDocumentNode) return;
  while (mayCut(last) && !waiting.empty() && IsXmlSpace(waiting.back())) waiting.remove_suffix(1);
  take(waiting);
}

}  // namespace zvuti::xml
