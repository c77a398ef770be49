// Suggestions for mistyped names.
#pragma once

#include <string>
#include <vector>

namespace tool {

/// Returns the name that is nearest to `wanted` by edit distance, ignoring case; the first of several.
/// Returns
/// "" if more than half of the letters of `wanted` would have to change.
std::string NearestName(const std::string& wanted, const std::vector<std::string>& names);

/// Returns "; did you mean NAME?" for the nearest name, or `otherwise` if none is near.
std::string Suggestion(const std::string& wanted, const std::vector<std::string>& names,
                       const std::string& otherwise);

}  // namespace tool
