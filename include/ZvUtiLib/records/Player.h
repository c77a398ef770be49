// Players: the lobby's record of a player, with balances and attributes, and the records sent with it.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include <ZvUtiLib/Export.h>
#include <ZvUtiLib/data/Containers.h>
#include <ZvUtiLib/data/SizedMap.h>
#include <ZvUtiLib/records/Items.h>
#include <ZvUtiLib/records/RecordOperators.h>
#include <ZvUtiLib/records/Stats.h>
#include <ZvUtiLib/records/WireKinds.h>

/// REQUIRES when writing: Kind is a member of StatusKind; any other value would be missing on the wire.
struct PlayerStatus {
  StatusKind Kind = StatusKind0;
  std::uint16_t Word1 = 0;
  std::uint16_t Word2 = 0;
};

/// Selects a balance. Kinds cannot be combined.
enum PurseKind : std::int32_t { PurseKind1 = 1, PurseKind2 = 2, PurseKind4 = 4, PurseKind8 = 8 };

/// The value of PlayerRecord::Sex for a woman; every other value counts as male.
inline constexpr std::uint32_t SexFemale = 1;

// The kinds of accounts that have a label of their own. Any number up to 15 is a kind.
inline constexpr std::uint32_t AccountKindSupreme = 3;   ///< labelled as supreme
inline constexpr std::uint32_t AccountKindFemale = 4;    ///< counts as female, whatever Sex is
inline constexpr std::uint32_t AccountKindService = 10;  ///< the operator's own staff
/// The bits of PlayerRecord::AccountFlags that hold the kind.
inline constexpr std::uint32_t AccountKindMask = 15;

/// A player. Sex and AccountFlags are cut to their low byte on the wire: 300 is read back as 44.
struct ZVUTILIB_API PlayerRecord {
  /// Values by key.
  using AttributeMap = zvuti::SizedMap<std::int32_t, std::int32_t>;

  std::uint8_t Byte1 = 1;
  std::uint8_t Byte2 = 0;
  std::uint8_t Byte3 = 0;
  std::uint8_t Byte4 = 0;
  std::uint8_t Byte5 = 0;
  std::uint8_t Byte6 = 0;
  std::int16_t SlotA = 0;  ///< -1 if not set
  std::int16_t SlotB = -1;
  std::uint32_t Sex = 0;           ///< SexFemale, or another value
  std::uint32_t AccountFlags = 0;  ///< the account kind in the bits of AccountKindMask
  std::uint32_t Value1 = 0;
  std::uint32_t Value2 = 0;
  std::uint32_t Value3 = 0;
  std::uint32_t Value4 = 0;
  std::uint32_t Value5 = 0;
  std::uint32_t Value6 = 0;
  std::uint32_t Value7 = 0;
  std::uint32_t Value8 = 0;
  std::int32_t Purse2 = 0;
  std::int64_t Wide1 = 0;
  std::int64_t Wide2 = 0;
  std::int64_t Purse8 = 0;
  std::int64_t Purse1 = 0;
  std::int64_t Purse4 = 0;
  PlayerStatus Status;
  std::string Text1;
  std::string Text2;
  AttributeMap Attributes;
  std::uint32_t Value9 = 0;
  std::uint32_t Value10 = 0;

  /// Sets all fields to their defaults except Status, the texts and Attributes, which stay.
  void Reset();

  /// False if SlotA is -1.
  bool HasSlotA() const { return SlotA != -1; }
  /// Whether the low four bits of AccountFlags are `kind`.
  bool IsAccountKind(unsigned kind) const { return (AccountFlags & AccountKindMask) == kind; }
  /// True if Sex is 1, or if the account kind is 4, whatever Sex is.
  bool IsFemale() const;

  /// Adds `amount` to the balance of a PurseKind and returns 1. Returns 0 and changes nothing for an unknown
  /// kind or a charge that exceeds the balance. A sum beyond the balance's width wraps.
  int AddToPurse(std::int64_t amount, int kind);
  /// Returns the balance of a PurseKind; 0 for an unknown kind.
  std::int64_t GetPurse(int kind) const;

  /// Whether there is an attribute with this key.
  bool HasAttribute(int key) const;
  /// Returns the attribute's value, or 0 if there is no such attribute.
  int GetAttribute(int key) const;
  /// Copies the entries of a map of 32-bit numbers; attributes with other keys stay.
  template <class Map = AttributeMap>
  void MergeAttributes(const Map& other) {
    static_assert(zvuti::wire::kIsPlainEntry<typename Map::key_type, typename Map::mapped_type>);
    for (const auto& [key, value] : other) {
      Attributes[static_cast<std::int32_t>(key)] = static_cast<std::int32_t>(value);
    }
  }
};

/// A player's profile; AccountRecord has the same fields.
struct PlayerProfile {
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
};

/// All records of one player.
struct PlayerSnapshot {
  PlayerRecord Player;
  PlayerProfile Profile;
  PlayerGameStats Stats;
  std::vector<ItemRecord> Items;
};

ZVUTILIB_RECORD(PlayerStatus)
ZVUTILIB_RECORD(PlayerRecord)
ZVUTILIB_RECORD(PlayerProfile)
ZVUTILIB_RECORD(PlayerSnapshot)

/// Returns the label, in GBK, shown for an account kind. For kinds without their own label it depends on
/// whether the player is a member (`isMember` not 0).
ZVUTILIB_API std::string GetAccountLabel(int kind, int isMember);
