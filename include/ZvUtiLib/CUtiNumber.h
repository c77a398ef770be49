// CUtiNumber: numbers as text, with separators and in Chinese numerals. All grouping is by four digits.
#pragma once

#include <cstdint>
#include <type_traits>

#include <ZvUtiLib/Export.h>
#include <ZvUtiLib/platform/CString.h>

/// Stateless: any thread may call. Texts are GBK; a result may be the string that the text is taken from.
/// A result beyond 2 GB raises std::length_error.
class ZVUTILIB_API CUtiNumber {
 public:
  CUtiNumber();
  CUtiNumber(const CUtiNumber&);
  CUtiNumber& operator=(const CUtiNumber&);
  virtual ~CUtiNumber();

  /// 1 when the text is decimal digits, of any count, behind at most one minus sign; else 0, as for an
  /// empty or a null text. A minus sign alone passes.
  static int CheckNumber(const char* text);
  /// The same as InsertSeparator of a value.
  static int CheckNumber(std::int64_t value, CString& result);

  /// Sets `result` to the number with a comma between groups of four digits, counted from the right, and
  /// returns 1; returns 0 with an empty result when CheckNumber refuses the text. `nullptr` is the null text,
  /// 0 is the number.
  static int InsertSeparator(const char* text, CString& result);
  /// The same for a value; always 1.
  static int InsertSeparator(std::int64_t value, CString& result);
  /// The same for the other integers, so that a literal 0 is no null text. An unsigned 64-bit value above the
  /// largest std::int64_t is written as the negative number of the same bits.
  template <class Integer, std::enable_if_t<std::is_integral_v<Integer>, int> = 0>
  static int InsertSeparator(Integer value, CString& result) {
    return InsertSeparator(static_cast<std::int64_t>(value), result);
  }

  /// Sets `result` to the text, of any kind, without its commas; null gives an empty result. Always 1.
  static int RemoveSeparator(const char* text, CString& result);

  /// Sets `result` to the spelling of up to 20 decimal digits in Chinese capital numerals and returns 1;
  /// zero has no spelling and gives an empty one. Returns 0 with `result` unchanged for a null text and
  /// for more than 20 bytes, and 0 with the spelling up to there when a byte is no digit.
  static int ChangeLowerNum2UpperNum(const char* text, CString& result);

  /// The plain Chinese numeral of 0 to 9, "" for any other value.
  static CString GetNumCN(int digit);
};
