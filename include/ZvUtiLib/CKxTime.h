// CKxTime: converts local calendar times packed into 32 bits to and from text, and extracts their fields.
#pragma once

#include <ZvUtiLib/Export.h>
#include <ZvUtiLib/platform/CString.h>

/// From the high end, the packed word holds: year minus 2000 (6 bits), month (4), day (5), hour (5), minute
/// (6), second (6). Words from 2000 to 2063 sort by time. Only the low 32 bits of an `unsigned long` are
/// used. Fields are not checked against a calendar. Stateless: any thread may call.
class ZVUTILIB_API CKxTime {
 public:
  CKxTime();
  CKxTime(const CKxTime&);
  CKxTime& operator=(const CKxTime&);
  virtual ~CKxTime();

  /// Returns "yyyy-mm-dd hh:mm:ss".
  static CString DWord2String(unsigned long word);
  /// Returns "yyyy-mm-dd hh:mm".
  static CString DWord2StringNoSecond(unsigned long word);
  /// Parses six numbers in the form that DWord2String writes and returns their word. Each number may have a
  /// sign, leading white space, and fewer or more digits. Each number, however large, is cut to the width of
  /// its field (the year after subtracting 2000); negative numbers are cut in two's complement. Fields are 0
  /// from the first one that the text does not supply. Returns 0 for a null text.
  static unsigned long String2DWord(const char* text);

  static unsigned long GetYearFromWord(unsigned long word);    ///< 2000 to 2063
  static unsigned long GetMonthFromWord(unsigned long word);   ///< 0 to 15
  static unsigned long GetDayFromWord(unsigned long word);     ///< 0 to 31
  static unsigned long GetHourFromWord(unsigned long word);    ///< 0 to 31
  static unsigned long GetMinuteFromWord(unsigned long word);  ///< 0 to 63
  static unsigned long GetSecondFromWord(unsigned long word);  ///< 0 to 63
};
