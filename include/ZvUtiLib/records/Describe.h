// Describes the format of the library's records: lists the rows of a record with their types, shows bytes as
// a record, and builds the bytes of a record from named values.
//
// A path names a field as in the structure: "Text1", "Status.Kind", "Items[2].Count" (an element of a
// sequence), "Attributes[-5]" (the value under a key of a map), "Block.Amount1". Fields inherited from a
// base record have no prefix. Numbers are decimal; as input, in values and in brackets, 0x... is accepted
// too. A tagged enumeration is shown as its member's name, "StatusKind3", or as "unknown tag 0x01020304"
// where a reader would leave the field unchanged. Texts are GBK bytes. Control bytes, the backslash and half
// a character before a zero byte are written as `\x` and two digits; as input, a backslash may also be
// doubled.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include <ZvUtiLib/Export.h>
#include <ZvUtiLib/data/RowComparison.h>

namespace zvuti {

/// What the bytes of a row are.
enum class RowForm : std::uint8_t {
  kInteger,   ///< 8, 16, 32 or 64 bits, little-endian, in two's complement if signed
  kByteCode,  ///< a 32-bit field of which only the low byte travels: 0 to 255
  kTag,       ///< a member of an enumeration, as the 32-bit constant that belongs to it
  kText,      ///< a 16-bit length and that many bytes of GBK
  kSequence,  ///< a 16-bit count and that many elements
  kMap,       ///< a signed 32-bit count and that many entries, none if it is below 0
  kMapEntry,  ///< in a dump only: a 32-bit key and a 32-bit value
  kRecord,    ///< the rows of another record
  kBase,      ///< the rows of the record that this one extends; its fields are also fields of this one
  kBlock,     ///< the rows of another record, which are its image in memory
  kReserved,  ///< bytes without a meaning
};

/// The type of a row.
struct RowType {
  RowForm form = RowForm::kInteger;  ///< what the bytes are
  /// Width of a row that always has the same: an integer, a byte code (8), a tag (32), a map entry (64), a
  /// block or reserved bytes (8 for each byte). Otherwise 0.
  std::uint16_t bits = 0;
  bool isSigned = false;       ///< of an integer, or of the values in a map of integers
  bool isPackedTime = false;   ///< of an integer: a local time, packed as in CKxTime; 0 if it is not set
  bool hasSignedKeys = false;  ///< of a map or a map entry; keys have 32 bits
  /// In a sequence kText or kRecord. In a map kInteger, of 32 bits, or kRecord: a record that holds its key.
  RowForm element = RowForm::kInteger;
  /// Of the record inside, also if it is an element; of a tag: of its enumeration. Valid while the library is
  /// loaded.
  std::string_view name;
};

/// What a row is there for. CUtiBundleTable has maps whose counts stand apart from their entries. The rows of
/// one field from kKey on are together an entry. All other records have rows of kind kField only.
enum class RowRole : std::uint8_t {
  kField,    ///< a field
  kCount,    ///< the number of entries of a map: a signed integer; there are none if it is below 0
  kKey,      ///< the key of an entry
  kLength,   ///< the number of elements in the entry
  kElement,  ///< each element in the entry
  kValue,    ///< the record in the entry
};

/// When a row is present: if `field` compares like that with `constant`.
struct RowCondition {
  std::string field;                                ///< an integer, earlier in the same record
  RowComparison comparison = RowComparison::kLess;  ///< the field on its left side
  std::int64_t constant = 0;                        ///< on its right side
  std::string text;                                 ///< the same in words, "ItemKey < 1000000000"
};

/// A member of a tagged enumeration.
struct RowTag {
  std::string name;       ///< "StatusKind3"
  std::uint32_t tag = 0;  ///< on the wire
};

/// One row of a record, in wire order.
struct RecordRow {
  /// Of the field, empty for a base record. In a CUtiBundleTable the path of the row, in which [key] and
  /// [index] stand for the numbers: "group count", "Groups.key", "Groups[key].count", "Groups[key][index]".
  std::string name;
  std::string field;  ///< the field that the row is a part of: `name`, or "Groups" for all of these
  RowRole role = RowRole::kField;
  RowType type;
  std::string defaultValue;  ///< in a new record, as DumpRow shows it; empty for records and parts of a map
  std::vector<RowTag> tags;  ///< of a tag: the members, in their order
  bool skipsUnknownTags = false;  ///< of a tag: a reader skips others and leaves the field, or else throws
  std::optional<RowCondition> condition;  ///< none if the row is always present
};

/// One value in the bytes of a record.
struct DumpRow {
  std::size_t offset = 0;          ///< from the first byte of the record
  std::size_t size = 0;            ///< for a sequence or map: of its count only
  std::string path;                ///< of the field
  RowType type;                    ///< as in RecordRow, or a map entry
  RowRole role = RowRole::kField;  ///< as in RecordRow
  bool isUnknownTag = false;       ///< a tag that no member of its enumeration has
  std::string value;               ///< for a sequence or map: the count
};

/// The bytes of a record, value by value.
struct RecordDump {
  std::vector<DumpRow> rows;  ///< in wire order, up to the end of the bytes
  std::size_t size = 0;       ///< bytes used by the rows; the rest is not part of the record
  bool isWhole = false;       ///< the record is complete
  std::string problem;        ///< if not whole: where the bytes end or become invalid
};

/// A value for a field.
struct NamedValue {
  std::string path;   ///< which field
  std::string value;  ///< as shown in a DumpRow
};

/// Returns the names of all records.
ZVUTILIB_API std::vector<std::string> RecordNames();

/// Returns the type in words: "8", "16", "32", "64", "byte code", "StatusKind tag", "text",
/// "sequence of ItemRecord", "map", "map of AmountEntry", "map entry", "block of 64", "reserved 4", or the
/// name of the record inside.
ZVUTILIB_API std::string FormText(const RowType& type);

/// Lists the rows of a record. Returns false if there is no such record.
ZVUTILIB_API bool ListRecord(const std::string& record, std::vector<RecordRow>& rows);

/// Shows bytes as a record, up to the first row that does not fit. Returns false if there is no such record.
ZVUTILIB_API bool DumpRecord(const std::string& record, const void* bytes, std::size_t count,
                             RecordDump& dump);

/// Builds the bytes of a default record with the given values in its rows. This is the inverse of DumpRecord:
/// the rows of a whole dump produce exactly the bytes that were shown, even bytes that no writer produces.
///
/// The value of a sequence is its size; elements that are not given have default values. Without a size, the
/// sequence ends at its last given element, and no element before that may be missing. The entries of a map
/// are written in ascending order, one for each key. The value of a map is its count. If it is given, the
/// entries are written in the given order and keys may repeat; a count below 0 has no entries. In a
/// CUtiBundleTable these values are "Groups[5].count" (at most 1,000,000), "group count" and "bundle count".
///
/// On an error, returns false and no bytes, and sets `problem` to a description that begins with the path.
/// Any value that could not be written exactly as given is an error: an unknown path, a number that does not
/// fit its row (0 to 255 for a byte code), a text of more than 65,535 bytes, a row whose condition does not
/// hold, two different values for one path, a size or count that does not match the elements.
ZVUTILIB_API bool FillRecord(const std::string& record, const std::vector<NamedValue>& values,
                             std::string& bytes, std::string& problem);

}  // namespace zvuti
