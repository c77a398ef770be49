// What a parser that knows namespaces says about a document.
#pragma once

#include <string>

namespace fuzz {

/// False if the document, of ASCII characters, is not well-formed in its namespaces. Always true where there
/// is no second parser to ask.
bool IsWellFormed(const std::string& ascii);

}  // namespace fuzz
