// Counters and daily state: an account's small numbers, most of which are discarded when a day ends.
//
// An absent counter or flag reads as 0. Numbers beyond 32 bits wrap. Only GetTodaySeconds uses the calendar;
// the owner of a state decides when a day has ended. One object may be used by one thread at a time.
#pragma once

#include <cstdint>

#include <ZvUtiLib/Export.h>
#include <ZvUtiLib/data/CByteBuffer.h>
#include <ZvUtiLib/data/CStream.h>
#include <ZvUtiLib/data/SizedMap.h>
#include <ZvUtiLib/records/RecordOperators.h>

// A counter's key holds its class in bits 24 to 30 and an index in the low bits.

ZVUTILIB_API int GetKeyClass(int key);    ///< `key` & 0x7F000000; bit 31 is not part of the class
ZVUTILIB_API int GetKeyIndex12(int key);  ///< the low 12 bits
ZVUTILIB_API int GetKeyIndex20(int key);  ///< the low 20 bits

/// Seconds accumulated during the current day, up to the start of the running period.
inline constexpr int KeyDaySeconds = 0x3000001;
/// Number of day changes so far; the only counter that survives a day change.
inline constexpr int KeyDayCount = 0x3000004;

/// Counters by key. An absent counter reads as 0. A table that was moved from is empty.
class ZVUTILIB_API CUtiCounterTable {
 public:
  CUtiCounterTable() = default;
  CUtiCounterTable(const CUtiCounterTable&) = default;
  /// What was moved from is empty.
  CUtiCounterTable(CUtiCounterTable&&) noexcept = default;
  CUtiCounterTable& operator=(const CUtiCounterTable&) = default;
  /// What was moved from is empty.
  CUtiCounterTable& operator=(CUtiCounterTable&&) noexcept = default;
  virtual ~CUtiCounterTable() = default;

  /// The counter's value, 0 for an absent one.
  int GetCounter(int key) const;
  /// Stores the value, even if it is 0.
  void SetCounter(int key, int value);
  /// Adds `delta` and returns the new value; a sum beyond 32 bits wraps.
  int AddCounter(int key, int delta);
  /// Removes all counters.
  void Clear();

  /// Returns the seconds counted for the current local day: those under KeyDaySeconds plus the period that
  /// has been running since `periodStart`, in seconds since 1970-01-01 00:00 UTC. If the period was already
  /// running at midnight, returns only the seconds since midnight, without those under KeyDaySeconds.
  int GetTodaySeconds(unsigned periodStart) const;

  /// Write and read the counters as a map of 32-bit numbers. Reading replaces the counters in the stream and
  /// keeps the rest.
  void Write(CStreamWriter& out) const;
  void Read(CStreamReader& in);

  /// Appends "key=value&" for each counter in key order, without a terminator.
  void AppendAsText(CByteBuffer& buffer) const;
  /// Sets the counters named in a text of that form; the others stay. Keys and values without digits are 0.
  void LoadFromText(const char* text);

  zvuti::SizedMap<std::int32_t, std::int32_t> Counters;
};

/// Call Write and Read.
ZVUTILIB_API CStreamWriter& operator<<(CStreamWriter& out, const CUtiCounterTable& table);
ZVUTILIB_API CStreamReader& operator>>(CStreamReader& in, CUtiCounterTable& table);
ZVUTILIB_VALUE(CUtiCounterTable)

/// Selects a set of flags.
enum FlagScope : std::int32_t {
  FlagScopeLasting = 0,  ///< flags that survive a day change
  FlagScopeDaily = 1,    ///< flags of the current day
};

/// The counters and flags of an account. Some flags apply only to the current day. A state that was moved
/// from is empty.
class ZVUTILIB_API CUtiDailyState {
 public:
  CUtiDailyState() = default;
  CUtiDailyState(const CUtiDailyState&) = default;
  /// What was moved from is empty.
  CUtiDailyState(CUtiDailyState&&) noexcept = default;
  CUtiDailyState& operator=(const CUtiDailyState&) = default;
  /// What was moved from is empty.
  CUtiDailyState& operator=(CUtiDailyState&&) noexcept = default;
  virtual ~CUtiDailyState() = default;
  /// Writes the counters, the daily flags and the lasting flags, each as a map of 32-bit numbers. A derived
  /// class may write and read something else instead, also in records that contain a state.
  virtual void Write(CStreamWriter& out) const;
  /// Replaces the counters and flags in the stream and keeps the rest.
  virtual void Read(CStreamReader& in);

  /// The counters.
  CUtiCounterTable& GetTable() { return Table; }
  const CUtiCounterTable& GetTable() const { return Table; }

  /// Returns the flag's value: 1 for a set flag, unless a stream supplied another value; 0 for an unknown
  /// scope.
  int GetFlag(int key, int scope) const;
  /// Sets the flag to 1; does nothing for an unknown scope.
  void SetFlag(int key, int scope);

  /// Starts a new day: increments KeyDayCount and removes all other counters and the daily flags.
  void RollOverDay();

  CUtiCounterTable Table;
  zvuti::SizedMap<std::int32_t, std::int32_t> LastingFlags;
  zvuti::SizedMap<std::int32_t, std::int32_t> DailyFlags;
};

/// A class derived from CUtiDailyState travels whole, in sequences too.
template <>
inline constexpr bool zvuti::wire::kIsVirtual<CUtiDailyState> = true;

/// Call the virtual Write and Read.
ZVUTILIB_API CStreamWriter& operator<<(CStreamWriter& out, const CUtiDailyState& state);
ZVUTILIB_API CStreamReader& operator>>(CStreamReader& in, CUtiDailyState& state);
ZVUTILIB_VALUE(CUtiDailyState)
