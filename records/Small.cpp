#include <ZvUtiLib/records/Small.h>

#include "data/wire/Codec.h"
#include "records/Units.h"
#include "records/WireTags.h"

ZV_EXTERN_RECORD(ItemRecord)

namespace zvuti::wire {

ZV_ROWS(SingleByte) { v.bits8(ZV_ROW(Value)); }

ZV_ROWS(SingleValue) { v.bits32(ZV_ROW(Value)); }

ZV_ROWS(IdValuePair) {
  v.bits32(ZV_ROW(Id));
  v.bits32(ZV_ROW(Value));
}

ZV_ROWS(IdValueAmount) {
  v.base(BaseOf<IdValuePair>(r));
  v.bits32(ZV_ROW(Value2));
  v.bits64(ZV_ROW(Amount));
}

ZV_ROWS(ShortIdValue) {
  v.bits16(ZV_ROW(ShortId));
  v.bits32(ZV_ROW(Value));
}

ZV_ROWS(IdAmounts) {
  v.bits32(ZV_ROW(Id));
  v.bits64(ZV_ROW(Amount1));
  v.bits64(ZV_ROW(Amount2));
}

ZV_ROWS(IdAmountItems) {
  v.base(BaseOf<IdAmounts>(r));
  v.list(ZV_ROW(Items));
}

ZV_ROWS(AmountsAndPairs) {
  v.bits64(ZV_ROW(Amount1));
  v.bits64(ZV_ROW(Amount2));
  v.bits64(ZV_ROW(Amount3));
  v.bits32(ZV_ROW(Value));
  v.bits64(ZV_ROW(Amount4));
  v.list(ZV_ROW(Pairs));
}

ZV_ROWS(CodedAmount) {
  v.bits8(ZV_ROW(Flag));
  v.code(ZV_ROW(Code2));
  v.code(ZV_ROW(Code1));
  v.bits32(ZV_ROW(Value1));
  v.bits32(ZV_ROW(Value2));
  v.bits64(ZV_ROW(Amount));
}

ZV_ROWS(KindEntry) {
  v.bits16(ZV_ROW(ShortId));
  v.tag(ZV_ROW(Kind));
  v.bits8(ZV_ROW(Flag));
}

ZV_ROWS(IdValueMap) {
  v.bits32(ZV_ROW(Id));
  v.map(ZV_ROW(Values));
}

ZV_ROWS(TextPair) {
  v.text(ZV_ROW(Text1));
  v.text(ZV_ROW(Text2));
}

ZV_ROWS(TextValue) {
  v.text(ZV_ROW(Text));
  v.bits32(ZV_ROW(Value));
}

ZV_ROWS(IdTextValue) {
  v.bits32(ZV_ROW(Id));
  v.text(ZV_ROW(Text));
  v.bits32(ZV_ROW(Value));
}

ZV_ROWS(IdsText) {
  v.bits32(ZV_ROW(Value1));
  v.bits32(ZV_ROW(Value2));
  v.text(ZV_ROW(Text));
}

ZV_ROWS(IdsTextB) {
  v.bits32(ZV_ROW(Value1));
  v.bits32(ZV_ROW(Value2));
  v.text(ZV_ROW(Text));
}

ZV_ROWS(TextDetails) {
  v.text(ZV_ROW(Text1));
  v.bits8(ZV_ROW(Flag));
  v.bits32(ZV_ROW(Value1));
  v.bits32(ZV_ROW(Value2));
  v.text(ZV_ROW(Text2));
}

ZV_ROWS(NamedTexts) {
  v.bits32(ZV_ROW(Value1));
  v.bits32(ZV_ROW(Value2));
  v.text(ZV_ROW(Text1));
  v.text(ZV_ROW(Text2));
  v.list(ZV_ROW(TextList));
}

ZV_ROWS(NamedTextsFull) {
  v.base(BaseOf<NamedTexts>(r));
  v.bits32(ZV_ROW(Value3));
  v.text(ZV_ROW(Text3));
}

ZV_ROWS(ShortTextsAmounts) {
  v.bits16(ZV_ROW(ShortId));
  v.text(ZV_ROW(Text1));
  v.text(ZV_ROW(Text2));
  v.bits64(ZV_ROW(Amount1));
  v.bits64(ZV_ROW(Amount2));
  v.bits32(ZV_ROW(Value));
}

ZV_ROWS(ShortTextsValues) {
  v.bits16(ZV_ROW(ShortId));
  v.text(ZV_ROW(Text1));
  v.text(ZV_ROW(Text2));
  v.bits32(ZV_ROW(Value1));
  v.bits32(ZV_ROW(Value2));
  v.bits32(ZV_ROW(Value3));
  v.bits32(ZV_ROW(Value4));
  v.bits32(ZV_ROW(Value5));
}

ZV_ROWS(IdTextsValues) {
  v.bits32(ZV_ROW(Id));
  v.text(ZV_ROW(Text1));
  v.text(ZV_ROW(Text2));
  v.bits32(ZV_ROW(Value1));
  v.bits32(ZV_ROW(Value2));
  v.bits32(ZV_ROW(Value3));
  v.text(ZV_ROW(Text3));
}

ZV_ROWS(ValuesTexts) {
  v.bits32(ZV_ROW(Value1));
  v.bits32(ZV_ROW(Value2));
  v.bits32(ZV_ROW(Value3));
  v.bits32(ZV_ROW(Value4));
  v.text(ZV_ROW(Text1));
  v.text(ZV_ROW(Text2));
}

ZV_ROWS(MixedEntryHead) {
  v.bits8(ZV_ROW(Byte1));
  v.bits8(ZV_ROW(Byte2));
  v.bits8(ZV_ROW(Byte3));
  v.bits8(ZV_ROW(Byte4));
  v.bits8(ZV_ROW(Byte5));
  v.bits32(ZV_ROW(Value1));
  v.bits32(ZV_ROW(Value2));
  v.bits8(ZV_ROW(Byte6));
  v.text(ZV_ROW(Text));
  v.bits32(ZV_ROW(Value3));
  v.bits8(ZV_ROW(Byte7));
  v.bits8(ZV_ROW(Byte8));
  v.bits32(ZV_ROW(Value4));
  v.bits32(ZV_ROW(Value5));
}

ZV_ROWS(MixedEntryTail) {
  v.bits8(ZV_ROW(Byte1));
  v.bits8(ZV_ROW(Byte2));
  v.bits8(ZV_ROW(Byte3));
  v.bits8(ZV_ROW(Byte4));
  v.bits32(ZV_ROW(Value1));
  v.bits32(ZV_ROW(Value2));
}

ZV_ROWS(MixedEntry) {
  v.record(ZV_ROW(Head));
  v.record(ZV_ROW(Tail));
}

ZV_BLOCK_ROWS(AmountEntry, 16) {
  v.bits32(ZV_ROW(Key));
  v.reserved(ZV_ROW(Reserved));
  v.bits64(ZV_ROW(Amount));
}

ZV_ROWS(AmountMap) { v.blockMap("Entries", r, &AmountEntry::Key); }

}  // namespace zvuti::wire

// All records of this unit. A record comes before the records that contain it.
#define SMALL_RECORDS(RECORD) \
  RECORD(SingleByte)          \
  RECORD(SingleValue)         \
  RECORD(IdValuePair)         \
  RECORD(IdValueAmount)       \
  RECORD(ShortIdValue)        \
  RECORD(IdAmounts)           \
  RECORD(IdAmountItems)       \
  RECORD(AmountsAndPairs)     \
  RECORD(CodedAmount)         \
  RECORD(KindEntry)           \
  RECORD(IdValueMap)          \
  RECORD(TextPair)            \
  RECORD(TextValue)           \
  RECORD(IdTextValue)         \
  RECORD(IdsText)             \
  RECORD(IdsTextB)            \
  RECORD(TextDetails)         \
  RECORD(NamedTexts)          \
  RECORD(NamedTextsFull)      \
  RECORD(ShortTextsAmounts)   \
  RECORD(ShortTextsValues)    \
  RECORD(IdTextsValues)       \
  RECORD(ValuesTexts)         \
  RECORD(MixedEntryHead)      \
  RECORD(MixedEntryTail)      \
  RECORD(MixedEntry)          \
  RECORD(AmountEntry)         \
  RECORD(AmountMap)

ZV_UNIT(SmallUnit, SMALL_RECORDS)
