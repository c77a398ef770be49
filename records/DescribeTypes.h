// The types of rows, as Describe.h shows them, and values as text.
#pragma once

#include <cstddef>
#include <string>

#include <ZvUtiLib/records/Describe.h>

#include "data/wire/RecordType.h"

namespace zvuti::wire {

RowType RowTypeOf(NumberRef field);
RowType RowTypeOfCode();
RowType RowTypeOf(const TagTable& tags);
RowType RowTypeOfText();
RowType RowTypeOf(const ListRef& items);
RowType RowTypeOf(const MapRef& entries);
RowType RowTypeOfEntry(const MapRef& entries);
RowType RowTypeOfReserved(std::size_t bytes);
RowType RowTypeOf(const RecordType& type, Embedding as);

/// The condition in words: "ItemKey < 1000000000".
std::string TextOf(const Condition& condition);

std::string Decimal(NumberRef number);
/// Pairs of digits with spaces between them.
std::string Hex(const void* bytes, std::size_t count);
/// Writes control bytes and the backslash as \x and two digits; a trail byte of 0x5C is not a backslash. Half
/// a character before a zero byte is escaped too, or it would absorb the backslash of the next escape.
std::string Escaped(const std::string& text);
/// The name of a member; empty if there is no such member.
std::string MemberName(const TagTable& tags, std::uint32_t member);

}  // namespace zvuti::wire
