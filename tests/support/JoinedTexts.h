// Several short texts in one string literal, joined by " ~ ".
#pragma once

#include <algorithm>
#include <string>
#include <string_view>
#include <vector>

namespace test {

/// Splits `text` at each " ~ ".
inline std::vector<std::string> Rows(std::string_view text) {
  std::vector<std::string> rows;
  for (std::size_t begin = 0, end; begin < text.size(); begin = end + 3) {
    end = std::min(text.find(" ~ ", begin), text.size());
    rows.emplace_back(text.substr(begin, end - begin));
  }
  return rows;
}

}  // namespace test
