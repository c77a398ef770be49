// What a file holds, one after the other: "u16, ItemRecord, ItemRecord*".
#pragma once

#include <cstddef>
#include <string>
#include <vector>

namespace tool {

/// One part of a layout: a record, an integer between records, or a group in parentheses.
struct Part {
  enum class Kind { kRecord, kInteger, kGroup };

  Kind kind = Kind::kRecord;
  std::string name;  ///< of the record or integer: "ItemRecord", "u16be"
  unsigned bytes = 0;
  bool isSigned = false, isBigEndian = false;
  std::vector<Part> group;

  std::size_t times = 1;
  bool isToEnd = false;  ///< repeated as long as there are bytes
};

struct Layout {
  std::vector<Part> parts;
  std::string lone;  ///< the name of the record, if there is only one and it is not repeated
};

/// Parses a layout: parts with commas between them. A part is the name of a record, an integer (u8, u16, u32,
/// u64, i8 to i64, little-endian, or with "be" after it big-endian) or a layout in parentheses. After it may
/// stand *3, or at the end of the whole layout * for as many as there are. Throws a Failure that names the
/// place of an error.
Layout ParseLayout(const std::string& text);

}  // namespace tool
