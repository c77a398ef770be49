// LeadingInt: parses the number at the start of a text.
#pragma once

#include <charconv>
#include <cstdint>
#include <limits>
#include <string_view>
#include <system_error>

#include "gbk/Ascii.h"

namespace zvuti {

/// The decimal number at the start of `text`, after optional white space and an optional sign. The text after
/// the digits is ignored. Returns 0 if there are no digits, the nearest bound if 32 bits are not enough.
inline std::int32_t LeadingInt(std::string_view text) {
  while (!text.empty() && IsSpace(text.front())) text.remove_prefix(1);
  const bool isNegative = !text.empty() && text.front() == '-';
  // from_chars does not accept a plus sign. In "+-4" keep it, so that from_chars does not see the minus.
  if (text.size() > 1 && text.front() == '+' && text[1] != '-') text.remove_prefix(1);
  std::int32_t value = 0;
  if (std::from_chars(text.data(), text.data() + text.size(), value).ec == std::errc::result_out_of_range) {
    using Limits = std::numeric_limits<std::int32_t>;
    return isNegative ? Limits::min() : Limits::max();
  }
  return value;
}

}  // namespace zvuti
