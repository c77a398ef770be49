// The encodings of XML files.
#pragma once

#include <string>

namespace zvuti::xml {

/// Turns the bytes of a document into UTF-8, in place. The encoding is that of its byte order mark, else
/// the one it declares, else UTF-8. GB2312, GBK and their other names mean code page 936. False when the
/// encoding is unknown or the bytes break it; UTF-8 itself is left to the parser to check.
/// Throws std::bad_alloc when the heap refuses.
bool ToUtf8(std::string& bytes);

/// True when every surrogate of the text has its partner.
bool IsWellFormedUtf16(std::u16string_view text);

}  // namespace zvuti::xml
