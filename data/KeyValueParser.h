// Takes pairs out of texts of the form key=value&key=value, in eight ways.
#pragma once

#include <ZvUtiLib/data/CStringDict.h>

/// What a parser does besides cutting; the bits may be added up.
enum ParseOption : unsigned {
  ParseFoldKeys = 1,    // letters A to Z of keys become small
  ParseFoldValues = 2,  // letters A to Z of values become small
  ParseTrim = 4         // white space before and after keys and values is dropped
};

namespace zvuti {

/// Hands each pair of the text to `dict.SetValue`, in the order of the text. The first of the two
/// separators stands between a key and its value, the second between pairs; one that is white space
/// itself still separates. Looks at the first `length` bytes up to a zero byte, at all of the text for
/// a negative length. Options above 7, or a null text, give nothing.
void ParseKeyValues(CStringDict& dict, const char* text, const char* separators, int length,
                    unsigned options);

}  // namespace zvuti
