#include "records/DescribeTypes.h"

#include <cstdio>
#include <iterator>

#include "gbk/CodePage936.h"

namespace zvuti {

std::string FormText(const RowType& type) {
  std::string name(type.name);
  switch (type.form) {
    case RowForm::kInteger:
      return std::to_string(type.bits);
    case RowForm::kByteCode:
      return "byte code";
    case RowForm::kTag:
      return name + " tag";
    case RowForm::kText:
      return "text";
    case RowForm::kSequence:
      return "sequence of " + (type.element == RowForm::kText ? "text" : name);
    case RowForm::kMap:
      return type.element == RowForm::kInteger ? "map" : "map of " + name;
    case RowForm::kMapEntry:
      return "map entry";
    case RowForm::kRecord:
    case RowForm::kBase:
      break;
    case RowForm::kBlock:
      return "block of " + std::to_string(type.bits / 8);
    case RowForm::kReserved:
      return "reserved " + std::to_string(type.bits / 8);
  }
  return name;
}

namespace wire {

namespace {

RowType FixedType(RowForm form, std::size_t bytes) {
  RowType type;
  type.form = form;
  type.bits = static_cast<std::uint16_t>(8 * bytes);
  return type;
}

RowType TypeWithElements(RowForm form, RowForm otherElement, const RecordType* elements) {
  RowType type;
  type.form = form;
  type.element = elements ? RowForm::kRecord : otherElement;
  if (elements) type.name = elements->name;
  return type;
}

}  // namespace

RowType RowTypeOf(NumberRef field) {
  RowType type = FixedType(RowForm::kInteger, field.bytes);
  type.isSigned = field.isSigned;
  type.isPackedTime = field.isPackedTime;
  return type;
}

RowType RowTypeOfCode() { return FixedType(RowForm::kByteCode, 1); }

RowType RowTypeOf(const TagTable& tags) {
  RowType type = FixedType(RowForm::kTag, sizeof *tags.tags);
  type.name = tags.name;
  return type;
}

RowType RowTypeOfText() { return FixedType(RowForm::kText, 0); }

RowType RowTypeOf(const ListRef& items) {
  return TypeWithElements(RowForm::kSequence, RowForm::kText, items.elements);
}

RowType RowTypeOf(const MapRef& entries) {
  RowType type = TypeWithElements(RowForm::kMap, RowForm::kInteger, entries.blocks);
  type.isSigned = !entries.blocks && entries.hasSignedValues;
  type.hasSignedKeys = entries.hasSignedKeys;
  return type;
}

RowType RowTypeOfEntry(const MapRef& entries) {
  RowType type = FixedType(RowForm::kMapEntry, 8);
  type.isSigned = entries.hasSignedValues;
  type.hasSignedKeys = entries.hasSignedKeys;
  return type;
}

RowType RowTypeOfReserved(std::size_t bytes) { return FixedType(RowForm::kReserved, bytes); }

RowType RowTypeOf(const RecordType& record, Embedding as) {
  RowType type = FixedType(RowForm::kRecord, as == Embedding::kBlock ? record.blockBytes : 0);
  if (as == Embedding::kBase) type.form = RowForm::kBase;
  if (as == Embedding::kBlock) type.form = RowForm::kBlock;
  type.name = record.name;
  return type;
}

std::string TextOf(const Condition& condition) {
  static constexpr const char* kSigns[] = {" < ", " <= ", " == ", " != ", " >= ", " > "};
  static_assert(std::size(kSigns) == static_cast<std::size_t>(RowComparison::kGreater) + 1);
  return std::string(condition.field)
      .append(kSigns[static_cast<std::size_t>(condition.comparison)])
      .append(std::to_string(condition.constant));
}

std::string Decimal(NumberRef number) {
  const std::int64_t value = number.Get();
  return number.isSigned ? std::to_string(value) : std::to_string(static_cast<std::uint64_t>(value));
}

std::string Hex(const void* bytes, std::size_t count) {
  std::string text;
  for (std::size_t i = 0; i < count; ++i) {
    char digits[4];
    std::snprintf(digits, sizeof digits, "%02X ", static_cast<const unsigned char*>(bytes)[i]);
    text += digits;
  }
  if (!text.empty()) text.pop_back();
  return text;
}

std::string Escaped(const std::string& text) {
  std::string shown;
  for (std::size_t i = 0; i < text.size();) {
    const std::size_t length = gbk::CharLength(text, i);
    const auto byte = static_cast<unsigned char>(text[i]);
    const bool isHalf = length == 1 && gbk::IsLeadByte(text[i]) && i + 1 < text.size();
    if (isHalf || (length == 1 && (byte < 0x20 || byte == 0x7F || byte == '\\'))) {
      shown.append("\\x").append(Hex(&byte, 1));
    } else {
      shown.append(text, i, length);
    }
    i += length;
  }
  return shown;
}

std::string MemberName(const TagTable& tags, std::uint32_t member) {
  return member < tags.count ? tags.name + std::to_string(member) : "";
}

}  // namespace wire
}  // namespace zvuti
