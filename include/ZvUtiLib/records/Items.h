// Items: what a player owns besides money, the rules for expiry and refunds, and the bands of item ids.
//
// An item is permanent, running or expired, depending only on its fields and the system clock. Sums and
// products beyond their width wrap. The time rules use the calendar of the system's time zone. Families of
// items are bands of ids: each IsIdBand function returns 1 for an id in its band, otherwise 0.
#pragma once

#include <cstdint>

#include <ZvUtiLib/Export.h>
#include <ZvUtiLib/data/CTextString.h>
#include <ZvUtiLib/records/RecordOperators.h>

/// An item id and a count.
struct ItemCount {
  std::int32_t ItemId = 0;  ///< which item
  std::int32_t Count = 0;   ///< how many of them

  /// Each gets or sets one field.
  int GetId() const { return ItemId; }
  int GetCount() const { return Count; }
  void SetId(int id) { ItemId = id; }
  void SetCount(int count) { Count = count; }
  /// Adds to Count; a sum beyond 32 bits wraps.
  void AddCount(int delta) {
    Count = static_cast<std::int32_t>(static_cast<std::uint32_t>(Count) + static_cast<std::uint32_t>(delta));
  }
};

/// An item. With an ItemKey of 1,000,000,000 or more it is a single piece, which has no count on the wire: it
/// takes 22 bytes instead of 26 and is read with a Count of 1.
struct ZVUTILIB_API ItemRecord : ItemCount {
  std::uint32_t StartTime = 0;  ///< packed local time; 0 if not set
  /// Days from StartTime; 0 for no limit. The days are converted to seconds in 32 bits and wrap above 24,855,
  /// so such an item can end before it starts.
  std::int32_t ValidDays = 0;
  std::uint32_t DailyValue = 0;  ///< worth of one day of the item
  std::uint8_t Tag = 0;
  std::uint32_t ItemKey = 0;
  std::uint8_t TailByte = 0;

  /// False for a single piece.
  bool HasCountOnWire() const { return ItemKey < 1'000'000'000; }
  /// Whether the item has this ItemKey.
  bool HasKey(unsigned key) const { return ItemKey == key; }
  /// Whether the item has the id 7101.
  bool IsId7101() const { return ItemId == 7101; }

  /// True if the item can expire: StartTime and ValidDays are both set.
  bool HasExpiry() const { return StartTime != 0 && ValidDays != 0; }
  /// Returns the end of validity in local time, such as "2024-05-31 08:00:00". For a permanent item, returns
  /// the Chinese word for "permanent" in GBK.
  CTextString GetExpiryText() const;
  /// Returns the end of validity in seconds since 1970-01-01 00:00 UTC. REQUIRES: HasExpiry.
  std::int64_t GetExpiryTime() const;
  /// Returns the whole days left until the end of validity, after adding the arguments to that end. Returns 0
  /// for a permanent item and once the end is reached.
  int GetRemainingDays(int hours, int minutes, int seconds) const;
  /// True from the second at which validity ends; never for a permanent item.
  bool IsExpired() const;
  /// Returns 40 percent of the worth of the remaining whole days, truncated to a whole number.
  std::int64_t GetRefundValue() const;
  /// Returns 40 percent of an amount, truncated toward zero.
  std::int64_t GetRefundOf(std::int64_t amount) const;
};

/// An item with a price.
struct PricedItem : ItemRecord {
  std::uint32_t ExtraValue = 0;
  std::int64_t ExtraAmount = 0;
};

ZVUTILIB_RECORD(ItemRecord)
ZVUTILIB_RECORD(PricedItem)

ZVUTILIB_API int IsIdBand20(int id);        ///< 20 to 29
ZVUTILIB_API int IsIdBand4101(int id);      ///< 4101 to 4109
ZVUTILIB_API int IsIdBand20Or4101(int id);  ///< either of these two bands
ZVUTILIB_API int IsIdBand200Upper(int id);  ///< 250 to 299, 350 to 399 and so on to 950 to 999
ZVUTILIB_API int IsIdBand5001(int id);      ///< 5001 to 5999
ZVUTILIB_API int IsIdBand7201(int id);      ///< 7201 to 8999
ZVUTILIB_API int IsIdBand9000(int id);      ///< 9000 to 9099
ZVUTILIB_API int IsIdBand100000(int id);    ///< 100000 to 199999
ZVUTILIB_API int IsIdBand200001(int id);    ///< 200001 to 209999, and 7022
ZVUTILIB_API int IsIdBand210001(int id);    ///< 210001 to 210999
ZVUTILIB_API int IsIdBand211001(int id);    ///< 211001 to 211999, and 7117

/// Maps an id of band 4101 to band 20: returns `id` - 4081. The id is not checked.
ZVUTILIB_API unsigned ToBand20(unsigned id);
