// What a record looks like from outside, as a tree: made of the rows that Describe.h lists, the only
// source of names, widths and order.
#pragma once

#include <string>
#include <vector>

#include <ZvUtiLib/records/Describe.h>

namespace tool {

struct Shape {
  enum class Kind { kNumber, kText, kRecord, kList, kMap };

  Kind kind = Kind::kNumber;
  std::string record;          ///< name of a record's type
  std::vector<Shape> element;  ///< the one shape of what a list or a map holds
  std::string sizePath;        ///< of a list: what stands behind its path where its size is set
  std::string countPath;       ///< of a map in a framing: where its count is set; otherwise that is its path
};

struct Field {
  std::string name;
  Shape shape;
};

/// The rows of a record. Throws Failure where there is no such record, with names that are near.
const std::vector<zvuti::RecordRow>& RowsOf(const std::string& record);
/// The fields of a record, those of the records that it extends among them. Null where there is none.
const Field* FindField(const std::string& record, const std::string& name);
/// The map whose count stands elsewhere, at `path`. Null where there is none.
const Field* FindCounted(const std::string& record, const std::string& path);

/// Bytes that a row takes: at least, and at most (kAnyWidth where nothing bounds it).
struct Width {
  std::size_t least = 0;
  std::size_t most = 0;
};
inline constexpr std::size_t kAnyWidth = static_cast<std::size_t>(-1);
Width WidthOf(const zvuti::RecordRow& row);
Width WidthOf(const std::string& record);

/// How a form is shown: "32-bit" for "32", the others as they are.
std::string ShownForm(const std::string& form);

}  // namespace tool
