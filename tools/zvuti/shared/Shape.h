// The structure of a record as a tree, made from the rows that Describe.h lists. These rows are the only
// source of names, widths and order.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include <ZvUtiLib/records/Describe.h>

namespace tool {

/// The path of a sequence with this suffix sets the length of one in a record with its own framing.
inline constexpr const char* kLengthSuffix = ".count";

struct Shape {
  enum class Kind { kNumber, kText, kRecord, kList, kMap };

  Kind kind = Kind::kNumber;
  bool isTime = false;         ///< of a number: a packed time
  std::string record;          ///< of a record: the name of its type
  std::vector<Shape> element;  ///< of a list or map: the shape of its elements, as the only item
  std::string sizePath;        ///< of a list: the suffix of the path that sets its size: "" or ".count"
  std::string countPath;       ///< of a map: the path that sets its count, if that is not its own path
};

struct Field {
  std::string name;
  Shape shape;
};

/// Returns the rows of a record. If there is no such record, throws a Failure that suggests the nearest name.
const std::vector<zvuti::RecordRow>& RowsOf(std::string_view record);
/// Returns a field of a record or of the records that it extends, or null.
const Field* FindField(const std::string& record, const std::string& name);
/// Returns the names of all fields of a record and of the records that it extends.
std::vector<std::string> FieldNames(const std::string& record);
/// Returns the map whose count is set by the separate path `path`, or null.
const Field* FindCounted(const std::string& record, const std::string& path);

/// The size of a row in bytes. `most` is kAnyWidth if there is no limit.
struct Width {
  std::size_t least = 0;
  std::size_t most = 0;
};
inline constexpr std::size_t kAnyWidth = static_cast<std::size_t>(-1);
Width WidthOf(const zvuti::RecordRow& row);
Width WidthOf(std::string_view record);

/// "<", "<=", "==", "!=", ">=" or ">".
const char* SignOf(zvuti::RowComparison comparison);

/// The form as shown to the user: FormText, but "32-bit" for "32", and "32-bit time".
std::string ShownForm(const zvuti::RowType& type);

}  // namespace tool
