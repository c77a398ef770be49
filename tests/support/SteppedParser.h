// A reference parser for key-value texts, which cuts copies of its pieces. Tests compare KeyValueParser with
// it.
#pragma once

#include <algorithm>
#include <sstream>
#include <string>
#include <string_view>

#include "data/KeyValueParser.h"

namespace test {

/// Returns "key>value;" for each pair in the text. Neither text nor separators may contain zero bytes.
inline std::string ParsedInSteps(unsigned options, const std::string& text, const std::string& separators) {
  constexpr std::string_view kBlanks = " \t\n\v\f\r";
  // Blanks after a part go; those before it go up to one that is a separator.
  const auto cut = [&](std::string part, unsigned fold) {
    if ((options & ParseTrim) != 0) {
      part.erase(part.find_last_not_of(kBlanks) + 1);
      const auto stays = [&](char byte) {
        return kBlanks.find(byte) == kBlanks.npos || separators.find(byte) != separators.npos;
      };
      part.erase(part.begin(), std::find_if(part.begin(), part.end(), stays));
    }
    for (char& byte : part) {
      if ((options & fold) != 0 && byte >= 'A' && byte <= 'Z') byte += 'a' - 'A';
    }
    return part;
  };
  std::string result;
  std::istringstream pieces(text);
  for (std::string piece; std::getline(pieces, piece, separators[1]);) {
    const std::size_t end = piece.find(separators[0]);
    const std::string key = cut(piece.substr(0, end), ParseFoldKeys);
    if (key.empty() || end == piece.npos) continue;
    result += key + ">" + cut(piece.substr(end + 1), ParseFoldValues) + ";";
  }
  return result;
}

}  // namespace test
