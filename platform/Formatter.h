// The one printf-like formatter under CString, CTextString and the log.
#pragma once

#include <cstdarg>
#include <cstddef>
#include <string>

namespace zvuti {

/// Formats by the rules of the platform's vsprintf into at most capacity - 1 bytes and a terminator (nothing
/// at all if capacity is 0). Returns the length of the whole text without its terminator, however much of it
/// was written. The arguments are consumed.
///
/// Where the platform and the host system's vsnprintf differ, the platform's reading holds for these:
///   - the format is walked by GBK characters;
///   - I64, I32 and I before integers;
///   - S, C, ls and lc take 16-bit units and give GBK bytes, h makes them narrow, a precision counts units;
///   - a null text is "(null)";
///   - a conversion that the format ends in prints nothing.
/// Everything else is the host system's. %n writes nothing. A letter that is not a conversion is printed with
/// all before it. A percent sign after a prefix (as in "%z%d") starts the next conversion, and what precedes
/// it is printed. What the host system refuses, such as a width beyond the int range, prints nothing.
std::size_t FormatBounded(char* out, std::size_t capacity, const char* format, va_list arguments);

/// The whole formatted text. The arguments are consumed.
std::string FormatWhole(const char* format, va_list arguments);

}  // namespace zvuti
