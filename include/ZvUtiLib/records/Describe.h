// What the library knows of the form of its records: listing the rows of a record, showing bytes as a
// record, making the bytes of a record from named values.
//
// Paths name a field as the structure does: "Text1", "Status.Kind", "Items[2].Count" (an element of a
// sequence), "Attributes[-5]" (the value under a key of a map), "Block.Amount1". Fields of a record that
// another one extends have no prefix. Numbers are decimal; where they are given, as values or between
// brackets, 0x... will do as well. A tagged enumeration is its member's name, "StatusKind3", or "unknown
// tag 0x01020304" where a reader would leave the field as it was. Texts are GBK bytes as they are, but for
// control bytes, the backslash and half a character before a zero byte, which are `\x` and two digits (a
// backslash may also be given as two of them).
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include <ZvUtiLib/Export.h>

namespace zvuti {

/// One row of a record, in wire order.
struct RecordRow {
  std::string name;  ///< of the field; empty where a whole record is extended
  /// "8", "16", "32", "64", "byte code", "StatusKind tag", "text", "sequence of ItemRecord", "map",
  /// "map of AmountEntry", "block of 64", "reserved 4", or the name of a record
  std::string form;
  std::string type;       ///< the record inside, if there is one
  std::string condition;  ///< when the row travels; empty for always
};

/// One value among the bytes of a record.
struct DumpRow {
  std::size_t offset = 0;  ///< from the first byte of the record
  std::size_t size = 0;    ///< of a sequence or map: its count alone
  std::string path;        ///< of the field
  std::string form;        ///< as in RecordRow, or "map entry"
  std::string value;       ///< of a sequence or map: the count
};

/// The bytes of a record, value by value.
struct RecordDump {
  std::vector<DumpRow> rows;  ///< in wire order, up to where the bytes end
  std::size_t size = 0;       ///< bytes that the rows take; what is left belongs to something else
  bool isWhole = false;       ///< all of the record was there
  std::string problem;        ///< where the bytes end or stop making sense, when the record is not whole
};

/// A value for a field.
struct NamedValue {
  std::string path;   ///< which field
  std::string value;  ///< as a DumpRow shows it
};

/// Names of all records.
ZVUTILIB_API std::vector<std::string> RecordNames();

/// The rows of a record; false when there is no such record.
ZVUTILIB_API bool ListRecord(const std::string& record, std::vector<RecordRow>& rows);

/// Shows bytes as a record, up to the first row that does not fit; false when there is no such record.
ZVUTILIB_API bool DumpRecord(const std::string& record, const void* bytes, std::size_t count,
                             RecordDump& dump);

/// The bytes of a default record with the given values put into its rows. Takes back what DumpRecord shows:
/// the rows of a dump that is whole give the very bytes that were shown, even those that no writer makes.
///
/// A sequence has the size that is given as its value, and default elements where none are given; without
/// a size it ends with its last element, and all before that must be given. The entries of a map go in
/// rising order, one for each key. Where the count of a map is given as its value, they go as they come
/// and a key may come again; a count below 0 stands alone. In a CUtiBundleTable these values are
/// "Groups[5].count", "group count" and "bundle count".
///
/// On a problem, returns false, with no bytes, and says which, beginning with the path. A problem is what
/// would not reach the wire as it is given: an unknown path, a number that does not fit its row (0 to 255
/// for a byte code), a text of more than 65,535 bytes, a row whose condition does not hold, two values for
/// one path, a size or count that does not suit the elements.
ZVUTILIB_API bool FillRecord(const std::string& record, const std::vector<NamedValue>& values,
                             std::string& bytes, std::string& problem);

}  // namespace zvuti
