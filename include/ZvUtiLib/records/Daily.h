// Counters and daily state: an account's small numbers, most of which are forgotten when a day ends.
//
// An absent counter or flag reads as 0. Numbers beyond 32 bits wrap. Nothing here looks at the calendar
// but GetTodaySeconds: the owner of a state decides when a day has ended. One object serves one thread
// at a time.
#pragma once

#include <cstdint>

#include <ZvUtiLib/Export.h>
#include <ZvUtiLib/data/CByteBuffer.h>
#include <ZvUtiLib/data/CStream.h>
#include <ZvUtiLib/data/SizedMap.h>

// A counter's key has its class in the bits 24 to 30 and an index in the low bits.

ZVUTILIB_API int GetKeyClass(int key);    ///< `key` & 0x7F000000, so bit 31 is no part of the class
ZVUTILIB_API int GetKeyIndex12(int key);  ///< the low 12 bits
ZVUTILIB_API int GetKeyIndex20(int key);  ///< the low 20 bits

/// Seconds gathered during the current day, up to the start of the running period.
inline constexpr int KeyDaySeconds = 0x3000001;
/// Changes of day so far; the one counter that outlives them.
inline constexpr int KeyDayCount = 0x3000004;

/// Counters by their key. An absent one reads as 0.
class ZVUTILIB_API CUtiCounterTable {
 public:
  virtual ~CUtiCounterTable() = default;

  /// The counter's value, 0 for an absent one.
  int GetCounter(int key) const;
  /// Stores the value, 0 as well.
  void SetCounter(int key, int value);
  /// Adds `delta` and returns the new value; beyond 32 bits it wraps.
  int AddCounter(int key, int delta);
  /// Removes all counters.
  void Clear();

  /// Seconds of the current day by local time: those under KeyDaySeconds and the period that runs since
  /// `periodStart`, in seconds since 1970-01-01 00:00 UTC. Of a period that was running at midnight only
  /// the seconds since then count, and those under KeyDaySeconds do not.
  int GetTodaySeconds(unsigned periodStart) const;

  /// The counters as a map of 32-bit numbers. Reading replaces the counters that the stream names.
  void Write(CStreamWriter& out) const;
  void Read(CStreamReader& in);

  /// Adds "key=value&" for each counter in the order of keys, without a terminator.
  void AppendAsText(CByteBuffer& buffer) const;
  /// Takes counters from a text of that form; the others stay. Keys and values without digits are 0.
  void LoadFromText(const char* text);

  zvuti::SizedMap<std::int32_t, std::int32_t> Counters;
};

/// Call Write and Read.
ZVUTILIB_API CStreamWriter& operator<<(CStreamWriter& out, const CUtiCounterTable& table);
ZVUTILIB_API CStreamReader& operator>>(CStreamReader& in, CUtiCounterTable& table);

/// Which flags.
enum FlagScope : std::int32_t {
  FlagScopeLasting = 0,  ///< those that stay over a change of day
  FlagScopeDaily = 1,    ///< those of the current day
};

/// The counters of an account and its flags, some of which are those of the current day.
class ZVUTILIB_API CUtiDailyState {
 public:
  virtual ~CUtiDailyState() = default;
  /// The counters, then the daily flags, then the lasting ones, each as a map of 32-bit numbers. A
  /// derived class writes and reads what it likes in their place, in records that hold a state as well.
  virtual void Write(CStreamWriter& out) const;
  /// Replaces what the stream names and keeps the rest.
  virtual void Read(CStreamReader& in);

  /// The counters.
  CUtiCounterTable& GetTable() { return Table; }
  const CUtiCounterTable& GetTable() const { return Table; }

  /// The flag's value, which is 1 for a set flag unless a stream brought another one; 0 for an unknown
  /// scope.
  int GetFlag(int key, int scope) const;
  /// Sets the flag to 1; does nothing for an unknown scope.
  void SetFlag(int key, int scope);

  /// Begins a new day: counts it under KeyDayCount and drops all other counters and the daily flags.
  void RollOverDay();

  CUtiCounterTable Table;
  zvuti::SizedMap<std::int32_t, std::int32_t> LastingFlags;
  zvuti::SizedMap<std::int32_t, std::int32_t> DailyFlags;
};

/// These make the virtual call.
ZVUTILIB_API CStreamWriter& operator<<(CStreamWriter& out, const CUtiDailyState& state);
ZVUTILIB_API CStreamReader& operator>>(CStreamReader& in, CUtiDailyState& state);
