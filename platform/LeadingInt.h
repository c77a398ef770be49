// LeadingInt: the number that a text begins with.
#pragma once

#include <charconv>
#include <cstdint>
#include <limits>
#include <string_view>
#include <system_error>

#include "platform/Ascii.h"

namespace zvuti {

/// The decimal number at the beginning of `text`, behind white space and with or without a sign; what
/// follows the digits is ignored. Text without digits gives 0, numbers beyond 32 bits the nearest bound.
inline std::int32_t LeadingInt(std::string_view text) {
  while (!text.empty() && IsSpace(text.front())) text.remove_prefix(1);
  const bool isNegative = !text.empty() && text.front() == '-';
  // from_chars knows no plus, and must not be shown the minus of "+-4".
  if (text.size() > 1 && text.front() == '+' && text[1] != '-') text.remove_prefix(1);
  std::int32_t value = 0;
  if (std::from_chars(text.data(), text.data() + text.size(), value).ec == std::errc::result_out_of_range) {
    using Limits = std::numeric_limits<std::int32_t>;
    return isNegative ? Limits::min() : Limits::max();
  }
  return value;
}

}  // namespace zvuti
