// Decimal digits of numbers.
#pragma once

#include <cstdint>
#include <type_traits>

namespace zvuti {

/// Writes the digits of a number so that they end at `end`; returns where they start. 0 has one digit.
///
/// A 32-bit processor divides 64-bit numbers by calling a function. So these are divided once for nine
/// digits.
template <class Unsigned>
char* WriteDigits(char* end, Unsigned number) {
  static_assert(std::is_unsigned_v<Unsigned>);
  if constexpr (sizeof(Unsigned) > sizeof(std::uint32_t)) {
    constexpr std::uint32_t kNineDigits = 1'000'000'000;
    while (number >= kNineDigits) {
      auto piece = static_cast<std::uint32_t>(number % kNineDigits);
      number /= kNineDigits;
      for (int i = 0; i < 9; ++i, piece /= 10) *--end = static_cast<char>('0' + piece % 10);
    }
    return WriteDigits(end, static_cast<std::uint32_t>(number));
  } else {
    do *--end = static_cast<char>('0' + number % 10);
    while ((number /= 10) != 0);
    return end;
  }
}

}  // namespace zvuti
