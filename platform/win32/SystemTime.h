// SYSTEMTIME: calendar fields of a moment, as the system's clock calls give them.
#pragma once

#if defined(_WIN32)
#  include <ZvUtiLib/platform/Windows.h>
#else
struct SYSTEMTIME {
  unsigned short wYear;       // four digits
  unsigned short wMonth;      // 1 to 12
  unsigned short wDayOfWeek;  // 0 is Sunday
  unsigned short wDay;
  unsigned short wHour;
  unsigned short wMinute;
  unsigned short wSecond;
  unsigned short wMilliseconds;
};
#endif
