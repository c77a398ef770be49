// AccountRecord: a complete account in one record. The library carries its fields without interpreting them.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include <ZvUtiLib/records/Daily.h>
#include <ZvUtiLib/records/RecordOperators.h>

/// A part of AccountRecord.
struct AccountExtra {
  std::uint8_t Flag = 0;
  std::uint32_t Value = 0;
  std::int64_t Amount = 0;
};

/// An account. Code1 and Code2 are cut to their low byte on the wire: 300 is read back as 44. State is
/// written and read through its virtual Write and Read, so a derived class can override them. A sequence that
/// contains a derived state is written field by field, in time quadratic in its bytes; other sequences take
/// linear time.
struct AccountRecord {
  std::uint32_t Value1 = 0;
  std::uint32_t Value2 = 0;
  std::string Text1;
  std::string Text2;
  std::string Text3;
  std::uint8_t Byte1 = 1;
  std::uint32_t Code1 = 0;
  std::uint32_t Code2 = 0;
  std::uint32_t Value3 = 0;
  std::uint32_t Value4 = 0;
  std::uint32_t Value5 = 0;
  std::int64_t Amount1 = 0;
  std::int64_t Amount2 = 0;
  std::int64_t Amount3 = 0;
  std::int64_t Amount4 = 0;
  std::uint8_t Byte2 = 0;
  std::string Text4;
  std::string Text5;
  std::string Text6;
  std::string Text7;
  std::string LocalText;  ///< not written or read
  std::uint8_t ProfileByte1 = 0;
  std::uint8_t ProfileByte2 = 0;
  std::string ProfileText1;
  std::string ProfileText2;
  std::string ProfileText3;
  std::string ProfileText4;
  std::string ProfileText5;
  std::string ProfileText6;
  std::string ProfileText7;
  std::string ProfileText8;
  std::uint8_t Byte3 = 0;
  std::uint8_t Byte4 = 0;
  std::uint32_t Value6 = 0;
  std::uint32_t Value7 = 0;
  std::vector<std::string> TextList;
  std::int64_t Amount5 = 0;
  CUtiDailyState State;
  AccountExtra Extra;
};

ZVUTILIB_RECORD(AccountExtra)
ZVUTILIB_RECORD(AccountRecord)
