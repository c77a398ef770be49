// The encodings of XML files.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "platform/xml/XmlTree.h"

namespace zvuti::xml {

/// Turns the bytes of a document into UTF-8, in place. The encoding is that of its byte order mark, else
/// the one it declares, else UTF-8. GB2312, GBK and their other names mean code page 936. False when the
/// encoding is unknown or the bytes break it; UTF-8 itself is left to the parser to check.
/// Throws std::bad_alloc when the heap refuses.
bool ToUtf8(std::string& bytes);

/// The encoding of a document in bytes where it is UTF-8, ASCII or GBK; a byte order mark of UTF-8 is cut
/// off. Nothing where it is another one. Not a byte is checked.
std::optional<Encoding> CutToPlain(std::string_view& bytes);

/// True when every surrogate of the text has its partner.
bool IsWellFormedUtf16(std::u16string_view text);

}  // namespace zvuti::xml
