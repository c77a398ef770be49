// Namespaces: holds the names of a document against the rules of namespaces in XML.
//
// The parser below takes any name with colons. Names stay as they are written in the tree; this class only
// says whether every prefix is declared where it is used, and whether names and declarations are as the rules
// have them. Prefixes, local names and the names of namespaces are numbers here, and each of these texts is
// stored and hashed where it is written, so a long one costs no more than its own length wherever it is used.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "platform/xml/XmlTree.h"

namespace zvuti::xml {

/// Throws std::bad_alloc when the heap refuses.
class Namespaces {
 public:
  /// REQUIRES: `tree` lives as long as this object.
  explicit Namespaces(const XmlTree& tree);

  /// Enters an element that stands in the tree with its attributes. False when the name of either, a
  /// declaration among the attributes or a pair of equal attributes breaks the rules.
  bool Enter(NodeId element);
  /// Leaves the innermost element, which ends what it declares.
  void Leave(NodeId element);
  /// Called at the end of the document. True if every local part (after the colon) is a name itself.
  bool AreLocalNamesWhole() const;

 private:
  enum class Kind : std::uint8_t { kNotSeen, kPlain, kPrefixed, kDeclaresDefault, kDeclares, kBroken };
  // What a name is made of. The prefix is the declared one where the name declares one.
  struct Parts {
    Kind kind = Kind::kNotSeen;
    NameId prefix = kNoName, local = kNoName;
  };
  struct Previous {
    NameId prefix, uri;
  };
  struct Scope {
    NodeId element;
    std::size_t previous;  // size of previous_ before its own entries
  };

  const Parts& PartsOf(NameId name);
  Parts Split(std::string_view name);
  NameId Intern(std::string_view text);
  bool Declare(const Parts& parts, std::string_view uri);

  const XmlTree& tree_;
  std::vector<Parts> parts_;   // by the numbers of the tree's names
  NameTable texts_;            // prefixes, local names, names of namespaces
  std::vector<NameId> bound_;  // to which namespace a text is bound that is a prefix
  NameId xmlns_, xml_;
  std::vector<Previous> previous_;  // bindings that inner ones hide
  std::vector<Scope> scopes_;       // elements that declare something
  std::vector<std::uint64_t> expanded_;
  std::string doubtful_;  // an element for each local name whose first character is none of ASCII
};

}  // namespace zvuti::xml
