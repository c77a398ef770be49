// What a byte of ASCII is, whatever the locale. Digits and white space lie below 0x40, where no GBK
// character has its trail byte, so both may be asked byte by byte.
#pragma once

namespace zvuti {

/// True for 0 to 9.
constexpr bool IsDigit(char byte) { return byte >= '0' && byte <= '9'; }

/// True for a blank and for 9 to 13, the white space of the "C" locale.
constexpr bool IsSpace(char byte) { return byte == ' ' || (byte >= 9 && byte <= 13); }

}  // namespace zvuti
