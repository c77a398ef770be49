// ZVUTILIB_RECORD: the stream operators of a record, alone and in a sequence.
#pragma once

#include <vector>

#include <ZvUtiLib/Export.h>
#include <ZvUtiLib/data/CStream.h>
#include <ZvUtiLib/data/Containers.h>

// NOLINTBEGIN(bugprone-macro-parentheses): R is a type

/// Declares the operators that write and read an R, field by field in wire order, and a sequence of R: a
/// 16-bit count and the elements. Reading appends to the containers in the target. If the stream ends early,
/// an incomplete number, tag or block leaves its field unchanged, and reading continues with the next field.
/// Some fields are set even then: a text (empty if its length is missing, otherwise of that length), a byte
/// code (0, or the previous code in the record), the Count of a single piece (1), and a sequence or map, by
/// its count. A BinaryKind throws. See docs/wire-format.md, "Bytes that end early".
#define ZVUTILIB_RECORD(R)                                                                   \
  ZVUTILIB_API CStreamWriter& operator<<(CStreamWriter& out, const R& record);               \
  ZVUTILIB_API CStreamReader& operator>>(CStreamReader& in, R& record);                      \
  ZVUTILIB_API CStreamWriter& operator<<(CStreamWriter& out, const std::vector<R>& records); \
  ZVUTILIB_API CStreamReader& operator>>(CStreamReader& in, std::vector<R>& records);

// NOLINTEND(bugprone-macro-parentheses)
