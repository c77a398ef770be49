// A reference parser for key-value texts that advances byte by byte. Tests compare KeyValueParser with it.
#pragma once

#include <string>

#include "data/KeyValueParser.h"

namespace test {

/// Returns "key>value;" for each pair in the text. Neither text nor separators may contain zero bytes.
inline std::string ParsedInSteps(unsigned options, std::string text, const std::string& separators) {
  const bool isTrimming = (options & ParseTrim) != 0;
  const auto isBlank = [](char byte) { return byte == ' ' || (byte >= '\t' && byte <= '\r'); };
  std::string result;
  const char* const none = nullptr;
  const char* key = none;
  const char* value = none;
  char* blanks = nullptr;
  char* at = text.data();
  const auto skip = [&] {
    while (isTrimming && isBlank(*at) && separators.find(*at) == std::string::npos) ++at;
  };
  const auto cut = [&] {
    *at = '\0';
    if (blanks) *blanks = '\0';
    blanks = nullptr;
  };
  const auto deliver = [&] {
    if (*key != '\0' && value) ((((result += key) += '>') += value) += ';');
  };
  skip();
  key = at;
  while (*at != '\0') {
    if (*at == separators[1]) {
      cut();
      deliver();
      ++at;
      skip();
      key = at;
      value = none;
    } else if (*at == separators[0] && !value) {
      cut();
      ++at;
      skip();
      value = at;
    } else {
      if (isTrimming && !isBlank(*at)) {
        blanks = nullptr;
      } else if (isTrimming && !blanks) {
        blanks = at;
      }
      if ((options & (value ? ParseFoldValues : ParseFoldKeys)) != 0 && *at >= 'A' && *at <= 'Z')
        *at += 'a' - 'A';
      ++at;
    }
  }
  cut();
  deliver();
  return result;
}

}  // namespace test
