// Why the library refuses an XML document. Each host system has its own parser.
#pragma once

#include <string>
#include <string_view>

#include "check/Report.h"

namespace tool {

/// Prepares this thread for documents. Call it before the library loads one.
void PrepareForXml();

/// Finds the reason and, if the parser gives it, the position. `utf8` is the text of the file. For a document
/// that the parser takes, says why the library may refuse it all the same.
void ExplainRefusal(const std::string& file, const std::string& utf8, Place& place, std::string& message);

/// The line of the byte at index `at`, and its column in characters. Both are counted from 1.
std::size_t LineAt(std::string_view text, std::size_t at);
std::size_t ColumnAt(std::string_view utf8, std::size_t at);

}  // namespace tool
