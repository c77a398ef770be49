// Parses texts of the form key=value&key=value, with eight combinations of options.
#pragma once

#include <ZvUtiLib/data/CStringDict.h>

/// Options of the parser; the bits may be combined.
enum ParseOption : unsigned {
  ParseFoldKeys = 1,    // letters A to Z of keys become lower case
  ParseFoldValues = 2,  // letters A to Z of values become lower case
  ParseTrim = 4         // white space around keys and values is removed
};

namespace zvuti {

/// Passes each pair of the text to `dict.SetValue`, in text order. The first of the two separators separates
/// a key from its value, the second separates pairs; white space works as a separator too. Parses up to
/// `length` bytes, or the whole text if `length` is negative; a zero byte ends the text in either case. Does
/// nothing for options above 7 or a null text.
void ParseKeyValues(CStringDict& dict, const char* text, const char* separators, int length,
                    unsigned options);

}  // namespace zvuti
