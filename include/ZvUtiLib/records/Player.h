// Players: the lobby's record of a player with its balances and attributes, and what travels with it.
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

/// REQUIRES, to be written: Kind is a member of StatusKind; another value would be missing on the wire.
struct PlayerStatus {
  StatusKind Kind = StatusKind0;
  std::uint16_t Word1 = 0;
  std::uint16_t Word2 = 0;
};

/// Which balance; kinds are not combined.
enum PurseKind : std::int32_t { PurseKind1 = 1, PurseKind2 = 2, PurseKind4 = 4, PurseKind8 = 8 };

/// A player. Sex and AccountFlags travel as one byte each.
struct ZVUTILIB_API PlayerRecord {
  /// Values by their key.
  using AttributeMap = zvuti::SizedMap<std::int32_t, std::int32_t>;

  std::uint8_t Byte1 = 1;
  std::uint8_t Byte2 = 0;
  std::uint8_t Byte3 = 0;
  std::uint8_t Byte4 = 0;
  std::uint8_t Byte5 = 0;
  std::uint8_t Byte6 = 0;
  std::int16_t SlotA = 0;  ///< -1 for not set
  std::int16_t SlotB = -1;
  std::uint32_t Sex = 0;           ///< 1 for female
  std::uint32_t AccountFlags = 0;  ///< the account kind in the low four bits
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

  /// Sets all fields to their defaults but Status, the texts and Attributes, which stay.
  void Reset();

  /// False while SlotA is -1.
  bool HasSlotA() const { return SlotA != -1; }
  /// Whether the low four bits of AccountFlags are `kind`.
  bool IsAccountKind(unsigned kind) const { return (AccountFlags & 15) == kind; }
  /// True for Sex 1, and for account kind 4 whatever Sex is.
  bool IsFemale() const;

  /// Adds `amount` to the balance of a PurseKind. Returns 0, with nothing changed, for another kind and
  /// for a charge of more than there is, otherwise 1. A sum beyond the balance's width wraps.
  int AddToPurse(std::int64_t amount, int kind);
  /// The balance of a PurseKind; 0 for another kind.
  std::int64_t GetPurse(int kind) const;

  /// Whether there is an attribute of this key.
  bool HasAttribute(int key) const;
  /// Its value; 0 when there is no such attribute.
  int GetAttribute(int key) const;
  /// Copies the entries of a map of 32-bit numbers; attributes that it does not name stay.
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

/// All that there is of a player, in one piece.
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

/// The label, in GBK, that is shown for an account of a kind; kinds without one of their own go by
/// whether the player is a member (`isMember` not 0).
ZVUTILIB_API std::string GetAccountLabel(int kind, int isMember);
