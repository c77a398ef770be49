// From the bytes of a document to its tree.
#pragma once

#include <string_view>

#include "platform/xml/XmlTree.h"

namespace zvuti::xml {

/// Parses a document in UTF-8, whatever encoding it declares, into an empty tree. True when it is
/// well-formed, also in its namespaces, and within the bounds on entities and default attributes. An unknown
/// entity in the value of an attribute makes it false, also where a part of the document type is not read.
/// Nothing outside the document is read. Throws std::bad_alloc when the heap refuses.
bool Build(std::string_view utf8, XmlTree& tree);

}  // namespace zvuti::xml
