// Small records, named after their layout. The library carries them without interpreting them. Fields are
// in wire order, except in CodedAmount. Numbers are 0 and texts are empty by default.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <map>
#include <string>
#include <vector>

#include <ZvUtiLib/Export.h>
#include <ZvUtiLib/data/Cursor.h>
#include <ZvUtiLib/data/SizedMap.h>
#include <ZvUtiLib/records/Items.h>
#include <ZvUtiLib/records/RecordOperators.h>
#include <ZvUtiLib/records/WireKinds.h>

struct SingleByte {
  std::uint8_t Value = 0;
};

struct SingleValue {
  std::uint32_t Value = 0;
};

struct IdValuePair {
  std::uint32_t Id = 0;
  std::uint32_t Value = 0;
};

struct IdValueAmount : IdValuePair {
  std::uint32_t Value2 = 0;
  std::int64_t Amount = 0;
};

struct ShortIdValue {
  std::uint16_t ShortId = 0;
  std::uint32_t Value = 0;
};

struct IdAmounts {
  std::uint32_t Id = 0;
  std::int64_t Amount1 = 0;
  std::int64_t Amount2 = 0;
};

struct IdAmountItems : IdAmounts {
  std::vector<ItemRecord> Items;
};

struct AmountsAndPairs {
  std::int64_t Amount1 = 0;
  std::int64_t Amount2 = 0;
  std::int64_t Amount3 = 0;
  std::uint32_t Value = 0;
  std::int64_t Amount4 = 0;
  std::vector<IdValuePair> Pairs;
};

/// Code1 and Code2 are swapped on the wire. Each is cut to its low byte: 300 is read back as 44.
struct CodedAmount {
  std::uint8_t Flag = 0;
  std::uint32_t Code1 = 0;
  std::uint32_t Code2 = 0;
  std::uint32_t Value1 = 0;
  std::uint32_t Value2 = 0;
  std::int64_t Amount = 0;
};

struct KindEntry {
  std::uint16_t ShortId = 0;
  BinaryKind Kind = BinaryKind0;
  std::uint8_t Flag = 0;
};

struct IdValueMap {
  std::uint32_t Id = 0;
  zvuti::SizedMap<std::int32_t, std::uint32_t> Values;
};

struct TextPair {
  std::string Text1;
  std::string Text2;
};

struct TextValue {
  std::string Text;
  std::uint32_t Value = 0;
};

struct IdTextValue {
  std::uint32_t Id = 0;
  std::string Text;
  std::uint32_t Value = 0;
};

struct IdsText {
  std::uint32_t Value1 = 0;
  std::uint32_t Value2 = 0;
  std::string Text;
};

/// A separate record with the layout of IdsText.
struct IdsTextB {
  std::uint32_t Value1 = 0;
  std::uint32_t Value2 = 0;
  std::string Text;
};

struct TextDetails {
  std::string Text1;
  std::uint8_t Flag = 0;
  std::uint32_t Value1 = 0;
  std::uint32_t Value2 = 0;
  std::string Text2;
};

struct NamedTexts {
  std::uint32_t Value1 = 0;
  std::uint32_t Value2 = 0;
  std::string Text1;
  std::string Text2;
  std::vector<std::string> TextList;
};

struct NamedTextsFull : NamedTexts {
  std::uint32_t Value3 = 0;
  std::string Text3;
};

struct ShortTextsAmounts {
  std::uint16_t ShortId = 0;
  std::string Text1;
  std::string Text2;
  std::int64_t Amount1 = 0;
  std::int64_t Amount2 = 0;
  std::uint32_t Value = 0;
};

struct ShortTextsValues {
  std::uint16_t ShortId = 0;
  std::string Text1;
  std::string Text2;
  std::uint32_t Value1 = 0;
  std::uint32_t Value2 = 0;
  std::uint32_t Value3 = 0;
  std::uint32_t Value4 = 0;
  std::uint32_t Value5 = 0;
};

struct IdTextsValues {
  std::uint32_t Id = 0;
  std::string Text1;
  std::string Text2;
  std::uint32_t Value1 = 0;
  std::uint32_t Value2 = 0;
  std::uint32_t Value3 = 0;
  std::string Text3;
};

struct ValuesTexts {
  std::uint32_t Value1 = 0;
  std::uint32_t Value2 = 0;
  std::uint32_t Value3 = 0;
  std::uint32_t Value4 = 0;
  std::string Text1;
  std::string Text2;
};

struct MixedEntryHead {
  std::uint8_t Byte1 = 0;
  std::uint8_t Byte2 = 0;
  std::uint8_t Byte3 = 0;
  std::uint8_t Byte4 = 0;
  std::uint8_t Byte5 = 0;
  std::uint32_t Value1 = 0;
  std::uint32_t Value2 = 0;
  std::uint8_t Byte6 = 0;
  std::string Text;
  std::uint32_t Value3 = 0;
  std::uint8_t Byte7 = 0;
  std::uint8_t Byte8 = 0;
  std::uint32_t Value4 = 0;
  std::uint32_t Value5 = 0;
};

struct MixedEntryTail {
  std::uint8_t Byte1 = 0;
  std::uint8_t Byte2 = 0;
  std::uint8_t Byte3 = 0;
  std::uint8_t Byte4 = 0;
  std::uint32_t Value1 = 0;
  std::uint32_t Value2 = 0;
};

struct MixedEntry {
  MixedEntryHead Head;
  MixedEntryTail Tail;
};

/// An entry of AmountMap. Written as a block of 16 bytes.
struct AmountEntry {
  std::int32_t Key = 0;
  std::uint8_t Reserved[4] = {};
  std::int64_t Amount = 0;
};
static_assert(sizeof(AmountEntry) == 16 && offsetof(AmountEntry, Reserved) == 4 &&
              offsetof(AmountEntry, Amount) == 8);

/// Amounts by key. Each entry also stores its key; only the entries' blocks are written. SetAmount keeps both
/// keys equal. Two maps that differ in reserved bytes only are equal, but their checksums differ.
using AmountMap = zvuti::SizedMap<int, AmountEntry>;

ZVUTILIB_RECORD(SingleByte)
ZVUTILIB_RECORD(SingleValue)
ZVUTILIB_RECORD(IdValuePair)
ZVUTILIB_RECORD(IdValueAmount)
ZVUTILIB_RECORD(ShortIdValue)
ZVUTILIB_RECORD(IdAmounts)
ZVUTILIB_RECORD(IdAmountItems)
ZVUTILIB_RECORD(AmountsAndPairs)
ZVUTILIB_RECORD(CodedAmount)
ZVUTILIB_RECORD(KindEntry)
ZVUTILIB_RECORD(IdValueMap)
ZVUTILIB_RECORD(TextPair)
ZVUTILIB_RECORD(TextValue)
ZVUTILIB_RECORD(IdTextValue)
ZVUTILIB_RECORD(IdsText)
ZVUTILIB_RECORD(IdsTextB)
ZVUTILIB_RECORD(TextDetails)
ZVUTILIB_RECORD(NamedTexts)
ZVUTILIB_RECORD(NamedTextsFull)
ZVUTILIB_RECORD(ShortTextsAmounts)
ZVUTILIB_RECORD(ShortTextsValues)
ZVUTILIB_RECORD(IdTextsValues)
ZVUTILIB_RECORD(ValuesTexts)
ZVUTILIB_RECORD(MixedEntryHead)
ZVUTILIB_RECORD(MixedEntryTail)
ZVUTILIB_RECORD(MixedEntry)
ZVUTILIB_RECORD(AmountEntry)
ZVUTILIB_RECORD(AmountMap)

/// The same for a plain std::map, and for one with another order or allocator.
template <class Order, class Allocator>
CStreamWriter& operator<<(CStreamWriter& out, const std::map<int, AmountEntry, Order, Allocator>& amounts) {
  // Reserves once. If that fails, each entry is appended as far as memory allows.
  constexpr std::size_t kMost = std::numeric_limits<int>::max() / sizeof(AmountEntry) - 1;
  out.Reserve(static_cast<int>(4 + sizeof(AmountEntry) * std::min(kMost, amounts.size())), GrowRounded);
  out << static_cast<std::uint32_t>(amounts.size());
  for (const auto& [key, entry] : amounts) out.Write(&entry, sizeof entry);
  return out;
}
/// Reads a map as << writes it.
template <class Order, class Allocator>
CStreamReader& operator>>(CStreamReader& in, std::map<int, AmountEntry, Order, Allocator>& amounts) {
  zvuti::wire::Cursor cursor(in);
  zvuti::wire::TakeBlockMap(cursor, amounts, &AmountEntry::Key);
  return in;
}

/// Stores an amount in a map and its key in the entry, in place of any earlier entry of the key. The entry's
/// reserved bytes are 0. Returns the entry.
template <class Order, class Allocator>
AmountEntry& SetAmount(std::map<int, AmountEntry, Order, Allocator>& amounts, int key, std::int64_t amount) {
  return amounts[key] = {key, {}, amount};
}

/// Returns the CRC-16/XMODEM of the map's wire form, 0 to 65535. It covers the entries' reserved bytes.
ZVUTILIB_API int GetAmountMapChecksum(const AmountMap& amounts);

/// Returns `id` + 65535.
ZVUTILIB_API unsigned ToHighId(unsigned id);
/// Returns `id` - 65535 if `id` is above 65535, otherwise 0.
ZVUTILIB_API unsigned FromHighId(unsigned id);
