// Describes the format of the library's records: lists the rows of a record, shows bytes as a record, and
// builds the bytes of a record from named values.
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
#include <string>
#include <vector>

#include <ZvUtiLib/Export.h>

namespace zvuti {

/// One row of a record, in wire order.
struct RecordRow {
  std::string name;  ///< of the field; empty for a base record
  /// "8", "16", "32", "64", "byte code", "StatusKind tag", "text", "sequence of ItemRecord", "map",
  /// "map of AmountEntry", "block of 64", "reserved 4", or the name of a record
  std::string form;
  std::string type;       ///< the record type inside, if any
  std::string condition;  ///< when the row is present; empty if always
};

/// One value in the bytes of a record.
struct DumpRow {
  std::size_t offset = 0;  ///< from the first byte of the record
  std::size_t size = 0;    ///< for a sequence or map: of its count only
  std::string path;        ///< of the field
  std::string form;        ///< as in RecordRow, or "map entry"
  std::string value;       ///< for a sequence or map: the count
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
