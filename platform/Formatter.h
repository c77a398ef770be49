// The one printf-like formatter under CString, CTextString and the log.
#pragma once

#include <cstdarg>
#include <cstddef>
#include <string>

namespace zvuti {

/// Writes `format` and its arguments with the rules of the platform's vsprintf, bounded: at most
/// capacity - 1 bytes and a terminator (nothing at all where capacity is 0). Returns the bytes that
/// the whole text has without its terminator, however many were written. The arguments are consumed.
///
/// Where the platform and the system under it part, the platform's reading holds for these: the format
/// is walked by GBK characters; I64, I32 and I before integers; S, C, ls and lc take 16-bit units and
/// give GBK bytes, h makes them narrow, and a precision counts units; a null text is "(null)"; a
/// conversion that the format ends in prints nothing. For all else the system's vsnprintf decides.
/// %n writes nothing, and a letter that makes no conversion is printed with all before it. A percent sign
/// behind a prefix (as in "%z%d") begins the next conversion; what stands before it is printed.
/// What the system refuses (a width beyond the int range, for one) prints nothing.
std::size_t FormatBounded(char* out, std::size_t capacity, const char* format, va_list arguments);

/// The whole formatted text. The arguments are consumed.
std::string FormatWhole(const char* format, va_list arguments);

}  // namespace zvuti
