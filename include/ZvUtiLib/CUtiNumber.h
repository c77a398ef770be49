// CUtiNumber: formats numbers with separators or in Chinese numerals. Digits are grouped by four.
#pragma once

#include <cstdint>
#include <type_traits>

#include <ZvUtiLib/Export.h>
#include <ZvUtiLib/platform/CString.h>

/// Stateless: any thread may call. Texts are GBK. `text` may point to the text of `result`. Throws
/// std::length_error if a result would exceed 2 GB.
class ZVUTILIB_API CUtiNumber {
 public:
  CUtiNumber();
  CUtiNumber(const CUtiNumber&);
  CUtiNumber& operator=(const CUtiNumber&);
  virtual ~CUtiNumber();

  /// Returns 1 if the text consists of any number of decimal digits after at most one minus sign, else 0.
  /// Returns 0 for an empty or null text. A minus sign alone passes.
  static int CheckNumber(const char* text);
  /// Same as InsertSeparator(value, result).
  static int CheckNumber(std::int64_t value, CString& result);

  /// Sets `result` to the number with a comma between groups of four digits, counted from the right, and
  /// returns 1. Returns 0, with an empty result, if CheckNumber rejects the text. `nullptr` is the null text;
  /// 0 is the number.
  static int InsertSeparator(const char* text, CString& result);
  /// The same for a value; always returns 1.
  static int InsertSeparator(std::int64_t value, CString& result);
  /// The same for the other integer types, so that a literal 0 is not taken as a null text. An unsigned
  /// 64-bit value above the largest std::int64_t is written as the negative number with the same bits.
  template <class Integer, std::enable_if_t<std::is_integral_v<Integer>, int> = 0>
  static int InsertSeparator(Integer value, CString& result) {
    return InsertSeparator(static_cast<std::int64_t>(value), result);
  }

  /// Sets `result` to the text, which may be anything, without its commas. A null text gives an empty result.
  /// Always returns 1.
  static int RemoveSeparator(const char* text, CString& result);

  /// Sets `result` to the spelling of up to 20 decimal digits in Chinese capital numerals and returns 1. Zero
  /// has no spelling and gives an empty result. Returns 0, with `result` unchanged, for a null text and for
  /// more than 20 bytes. Returns 0, with the spelling up to that point, if a byte is not a digit.
  static int ChangeLowerNum2UpperNum(const char* text, CString& result);

  /// Returns the plain Chinese numeral of 0 to 9; "" for any other value.
  static CString GetNumCN(int digit);
};
