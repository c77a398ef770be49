// The plain reader: a fast way into the tree for documents as most people write them.
//
// It can only accept. Where it meets an error, or anything that it does not know, it returns false, and the
// builder reads the same bytes again and decides. So it cannot refuse a document wrongly; what it accepts has
// to be well-formed, and its tree has to equal the builder's. A document is plain if it has
//
// - no document type, no entities but the five that XML predefines, references only to ASCII characters,
// - no colon in a name and no attribute "xmlns"; names are ASCII and U+4E00 to U+9FA5,
// - version 1.0, if it states one, and at most 64 attributes in each element,
// - no broken character; in GBK only ASCII and double-byte characters.
#pragma once

#include <string_view>

#include "platform/xml/XmlTree.h"

namespace zvuti::xml {

/// Reads a document into an empty tree, whose text stays in the document's encoding: `text` is in `encoding`,
/// whatever it declares. Returns false if it is not plain or not well-formed; the tree is then unusable.
/// Takes time in proportion to the length, and no stack in proportion to the depth. Throws std::bad_alloc
/// when the heap refuses.
bool ReadPlain(std::string_view text, Encoding encoding, XmlTree& tree);

}  // namespace zvuti::xml
