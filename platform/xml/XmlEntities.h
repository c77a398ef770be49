// Entities: finds references in attribute values to entities that are not known.
//
// If a part of the document type is not read, a reference may name an entity that only that part declares. In
// text such a reference becomes a node. In an attribute value the parser silently drops it:
// <!DOCTYPE a SYSTEM 'x'><a k='x&foo;y'/> reads as "xy". The builder refuses such documents. All checks
// together cost no more than reading the values of the entities once.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "platform/xml/XmlTree.h"

namespace zvuti::xml {

/// True if `text`, which follows an ampersand, starts with the name of an entity that XML predefines.
bool IsPredefined(std::string_view text);

/// Throws std::bad_alloc when the heap refuses.
class Entities {
 public:
  /// Takes in an entity that the parser knows from now on. One that stands outside the document has the
  /// value "".
  void Declare(std::string_view name, std::string_view value);
  /// Takes in the value of a parameter entity.
  void DeclareParameter(std::string_view value) { parameterValues_.append(value).append("\n"); }

  /// Whether all entities are known to which a text refers: a start tag as written, or the value of a default
  /// attribute.
  bool AreKnownIn(std::string_view text);
  /// Whether all entities are known to which the start tags in the replacement of entity `name` refer.
  bool AreKnownInTagsOf(std::string_view name);
  /// The same for a default value that comes from a parameter entity. Its bytes are not at hand, so any
  /// unknown name in any parameter entity counts.
  bool AreKnownInParameters();

 private:
  // Nothing is asked twice. An answer under way counts as yes: entities within themselves are the parser's
  // to refuse.
  enum class Answer : std::uint8_t { kNotAsked, kYes, kNo };
  struct Entity {
    std::string value;
    Answer isWhole = Answer::kNotAsked, areTagsWhole = Answer::kNotAsked;
  };

  bool IsWhole(std::string_view name);
  bool AreKnownInTagsWithin(std::string_view content);

  NameTable names_;
  std::vector<Entity> entities_;  // by the numbers of names_
  std::string parameterValues_;
  std::size_t parametersAsked_ = 0;  // how many bytes of them have been found good
};

}  // namespace zvuti::xml
