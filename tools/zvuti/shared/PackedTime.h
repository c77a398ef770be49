// Packed times as text, where both forms say the same.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace tool {

/// Returns what is wrong with the date or time of a packed word, or "" if it exists.
std::string OddityOf(std::uint32_t word);

/// Returns "2013-08-29 12:34:56", or "" if the word is 0 (not set) or no date that exists.
std::string DateOf(std::uint32_t word);

/// Returns true if a text is meant as a date: it has a hyphen after a digit.
bool IsDate(const std::string& text);

/// Returns the word of "2013-08-29 12:34:56"; the time or its end may be missing. If the text is not such a
/// date, or the date does not exist, returns nothing and describes it in `problem`.
std::optional<std::uint32_t> WordOf(const std::string& text, std::string& problem);

}  // namespace tool
