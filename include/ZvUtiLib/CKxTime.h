// CKxTime: points in local calendar time, packed into 32 bits, as text and as single fields.
#pragma once

#include <ZvUtiLib/Export.h>
#include <ZvUtiLib/platform/CString.h>

/// The packed word has, from the high end: year less 2000 (6 bits), month (4), day (5), hour (5),
/// minute (6), second (6). Within 2000 to 2063 words sort by time. Only the low 32 bits of an
/// `unsigned long` count; fields are not checked against a calendar. Stateless: any thread may call.
class ZVUTILIB_API CKxTime {
 public:
  CKxTime();
  CKxTime(const CKxTime&);
  CKxTime& operator=(const CKxTime&);
  virtual ~CKxTime();

  /// "yyyy-mm-dd hh:mm:ss".
  static CString DWord2String(unsigned long word);
  /// "yyyy-mm-dd hh:mm".
  static CString DWord2StringNoSecond(unsigned long word);
  /// The word of a text of six numbers as DWord2String writes them; each may have a sign, white space
  /// before it and fewer or more digits. Numbers are cut to the width of their fields (the year after
  /// taking off 2000), negative ones by their two's complement bits, however large they are. Fields
  /// from the first on that the text does not supply are 0, and so is the word of a null text.
  static unsigned long String2DWord(const char* text);

  static unsigned long GetYearFromWord(unsigned long word);    ///< 2000 to 2063
  static unsigned long GetMonthFromWord(unsigned long word);   ///< 0 to 15
  static unsigned long GetDayFromWord(unsigned long word);     ///< 0 to 31
  static unsigned long GetHourFromWord(unsigned long word);    ///< 0 to 31
  static unsigned long GetMinuteFromWord(unsigned long word);  ///< 0 to 63
  static unsigned long GetSecondFromWord(unsigned long word);  ///< 0 to 63
};
