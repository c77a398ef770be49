#include "shared/Nearest.h"

#include <algorithm>
#include <cstddef>

namespace tool {
namespace {

constexpr std::size_t kMostLetters = 64;  // no name is longer

// The edit distance: how many letters to change, insert or remove to turn one name into the other. Ignores
// case.
std::size_t Distance(const std::string& a, const std::string& b) {
  std::vector<std::size_t> row(b.size() + 1);
  for (std::size_t i = 0; i < row.size(); ++i) row[i] = i;
  for (std::size_t i = 1; i <= a.size(); ++i) {
    std::size_t diagonal = row[0];
    row[0] = i;
    for (std::size_t j = 1; j <= b.size(); ++j) {
      const bool isSame = (a[i - 1] | 0x20) == (b[j - 1] | 0x20);
      const std::size_t here = std::min({row[j] + 1, row[j - 1] + 1, diagonal + (isSame ? 0 : 1)});
      diagonal = row[j];
      row[j] = here;
    }
  }
  return row[b.size()];
}

}  // namespace

std::string NearestName(const std::string& wanted, const std::vector<std::string>& names) {
  std::string nearest;
  if (wanted.size() > kMostLetters) return nearest;
  std::size_t least = wanted.size() / 2 + 1;
  for (const std::string& name : names) {
    const std::size_t distance = Distance(wanted, name);
    if (distance < least) least = distance, nearest = name;
  }
  return nearest;
}

std::string Suggestion(const std::string& wanted, const std::vector<std::string>& names,
                       const std::string& otherwise) {
  const std::string nearest = NearestName(wanted, names);
  return nearest.empty() ? otherwise : "; did you mean " + nearest + "?";
}

}  // namespace tool
