#include <ZvUtiLib/records/Small.h>

#include "data/wire/Codec.h"
#include "records/Units.h"
#include "records/WireTags.h"

ZV_FOREIGN(ItemRecord)

namespace zvuti::wire {

ZV_ROWS(SingleByte) { v.i8(ZV_ROW(Value)); }

ZV_ROWS(SingleValue) { v.i32(ZV_ROW(Value)); }

ZV_ROWS(IdValuePair) {
  v.i32(ZV_ROW(Id));
  v.i32(ZV_ROW(Value));
}

ZV_ROWS(IdValueAmount) {
  v.base(BaseOf<IdValuePair>(r));
  v.i32(ZV_ROW(Value2));
  v.i64(ZV_ROW(Amount));
}

ZV_ROWS(ShortIdValue) {
  v.i16(ZV_ROW(ShortId));
  v.i32(ZV_ROW(Value));
}

ZV_ROWS(IdAmounts) {
  v.i32(ZV_ROW(Id));
  v.i64(ZV_ROW(Amount1));
  v.i64(ZV_ROW(Amount2));
}

ZV_ROWS(IdAmountItems) {
  v.base(BaseOf<IdAmounts>(r));
  v.list(ZV_ROW(Items));
}

ZV_ROWS(AmountsAndPairs) {
  v.i64(ZV_ROW(Amount1));
  v.i64(ZV_ROW(Amount2));
  v.i64(ZV_ROW(Amount3));
  v.i32(ZV_ROW(Value));
  v.i64(ZV_ROW(Amount4));
  v.list(ZV_ROW(Pairs));
}

ZV_ROWS(CodedAmount) {
  v.i8(ZV_ROW(Flag));
  v.code(ZV_ROW(Code2));
  v.code(ZV_ROW(Code1));
  v.i32(ZV_ROW(Value1));
  v.i32(ZV_ROW(Value2));
  v.i64(ZV_ROW(Amount));
}

ZV_ROWS(KindEntry) {
  v.i16(ZV_ROW(ShortId));
  v.tag(ZV_ROW(Kind));
  v.i8(ZV_ROW(Flag));
}

ZV_ROWS(IdValueMap) {
  v.i32(ZV_ROW(Id));
  v.map(ZV_ROW(Values));
}

ZV_ROWS(TextPair) {
  v.text(ZV_ROW(Text1));
  v.text(ZV_ROW(Text2));
}

ZV_ROWS(TextValue) {
  v.text(ZV_ROW(Text));
  v.i32(ZV_ROW(Value));
}

ZV_ROWS(IdTextValue) {
  v.i32(ZV_ROW(Id));
  v.text(ZV_ROW(Text));
  v.i32(ZV_ROW(Value));
}

ZV_ROWS(IdsText) {
  v.i32(ZV_ROW(Value1));
  v.i32(ZV_ROW(Value2));
  v.text(ZV_ROW(Text));
}

ZV_ROWS(IdsTextB) {
  v.i32(ZV_ROW(Value1));
  v.i32(ZV_ROW(Value2));
  v.text(ZV_ROW(Text));
}

ZV_ROWS(TextDetails) {
  v.text(ZV_ROW(Text1));
  v.i8(ZV_ROW(Flag));
  v.i32(ZV_ROW(Value1));
  v.i32(ZV_ROW(Value2));
  v.text(ZV_ROW(Text2));
}

ZV_ROWS(NamedTexts) {
  v.i32(ZV_ROW(Value1));
  v.i32(ZV_ROW(Value2));
  v.text(ZV_ROW(Text1));
  v.text(ZV_ROW(Text2));
  v.list(ZV_ROW(TextList));
}

ZV_ROWS(NamedTextsFull) {
  v.base(BaseOf<NamedTexts>(r));
  v.i32(ZV_ROW(Value3));
  v.text(ZV_ROW(Text3));
}

ZV_ROWS(ShortTextsAmounts) {
  v.i16(ZV_ROW(ShortId));
  v.text(ZV_ROW(Text1));
  v.text(ZV_ROW(Text2));
  v.i64(ZV_ROW(Amount1));
  v.i64(ZV_ROW(Amount2));
  v.i32(ZV_ROW(Value));
}

ZV_ROWS(ShortTextsValues) {
  v.i16(ZV_ROW(ShortId));
  v.text(ZV_ROW(Text1));
  v.text(ZV_ROW(Text2));
  v.i32(ZV_ROW(Value1));
  v.i32(ZV_ROW(Value2));
  v.i32(ZV_ROW(Value3));
  v.i32(ZV_ROW(Value4));
  v.i32(ZV_ROW(Value5));
}

ZV_ROWS(IdTextsValues) {
  v.i32(ZV_ROW(Id));
  v.text(ZV_ROW(Text1));
  v.text(ZV_ROW(Text2));
  v.i32(ZV_ROW(Value1));
  v.i32(ZV_ROW(Value2));
  v.i32(ZV_ROW(Value3));
  v.text(ZV_ROW(Text3));
}

ZV_ROWS(ValuesTexts) {
  v.i32(ZV_ROW(Value1));
  v.i32(ZV_ROW(Value2));
  v.i32(ZV_ROW(Value3));
  v.i32(ZV_ROW(Value4));
  v.text(ZV_ROW(Text1));
  v.text(ZV_ROW(Text2));
}

ZV_ROWS(MixedEntryHead) {
  v.i8(ZV_ROW(Byte1));
  v.i8(ZV_ROW(Byte2));
  v.i8(ZV_ROW(Byte3));
  v.i8(ZV_ROW(Byte4));
  v.i8(ZV_ROW(Byte5));
  v.i32(ZV_ROW(Value1));
  v.i32(ZV_ROW(Value2));
  v.i8(ZV_ROW(Byte6));
  v.text(ZV_ROW(Text));
  v.i32(ZV_ROW(Value3));
  v.i8(ZV_ROW(Byte7));
  v.i8(ZV_ROW(Byte8));
  v.i32(ZV_ROW(Value4));
  v.i32(ZV_ROW(Value5));
}

ZV_ROWS(MixedEntryTail) {
  v.i8(ZV_ROW(Byte1));
  v.i8(ZV_ROW(Byte2));
  v.i8(ZV_ROW(Byte3));
  v.i8(ZV_ROW(Byte4));
  v.i32(ZV_ROW(Value1));
  v.i32(ZV_ROW(Value2));
}

ZV_ROWS(MixedEntry) {
  v.record(ZV_ROW(Head));
  v.record(ZV_ROW(Tail));
}

ZV_ROWS(AmountEntry) {
  v.i32(ZV_ROW(Key));
  v.reserved(ZV_ROW(Reserved));
  v.i64(ZV_ROW(Amount));
}

ZV_ROWS(AmountMap) { v.blockMap("Entries", r, &AmountEntry::Key); }

}  // namespace zvuti::wire

ZV_RECORD(SingleByte)
ZV_RECORD(SingleValue)
ZV_RECORD(IdValuePair)
ZV_RECORD(IdValueAmount)
ZV_RECORD(ShortIdValue)
ZV_RECORD(IdAmounts)
ZV_RECORD(IdAmountItems)
ZV_RECORD(AmountsAndPairs)
ZV_RECORD(CodedAmount)
ZV_RECORD(KindEntry)
ZV_RECORD(IdValueMap)
ZV_RECORD(TextPair)
ZV_RECORD(TextValue)
ZV_RECORD(IdTextValue)
ZV_RECORD(IdsText)
ZV_RECORD(IdsTextB)
ZV_RECORD(TextDetails)
ZV_RECORD(NamedTexts)
ZV_RECORD(NamedTextsFull)
ZV_RECORD(ShortTextsAmounts)
ZV_RECORD(ShortTextsValues)
ZV_RECORD(IdTextsValues)
ZV_RECORD(ValuesTexts)
ZV_RECORD(MixedEntryHead)
ZV_RECORD(MixedEntryTail)
ZV_RECORD(MixedEntry)
ZV_BLOCK(AmountEntry, 16)
ZV_RECORD(AmountMap)

namespace zvuti::wire {

RecordUnit SmallUnit() {
  return {&Codec<SingleByte>::kType,     &Codec<SingleValue>::kType,       &Codec<IdValuePair>::kType,
          &Codec<IdValueAmount>::kType,  &Codec<ShortIdValue>::kType,      &Codec<IdAmounts>::kType,
          &Codec<IdAmountItems>::kType,  &Codec<AmountsAndPairs>::kType,   &Codec<CodedAmount>::kType,
          &Codec<KindEntry>::kType,      &Codec<IdValueMap>::kType,        &Codec<TextPair>::kType,
          &Codec<TextValue>::kType,      &Codec<IdTextValue>::kType,       &Codec<IdsText>::kType,
          &Codec<IdsTextB>::kType,       &Codec<TextDetails>::kType,       &Codec<NamedTexts>::kType,
          &Codec<NamedTextsFull>::kType, &Codec<ShortTextsAmounts>::kType, &Codec<ShortTextsValues>::kType,
          &Codec<IdTextsValues>::kType,  &Codec<ValuesTexts>::kType,       &Codec<MixedEntryHead>::kType,
          &Codec<MixedEntryTail>::kType, &Codec<MixedEntry>::kType,        &Codec<AmountEntry>::kType,
          &Codec<AmountMap>::kType};
}

}  // namespace zvuti::wire
