// The walks that implement Describe.h; also used by the record that has its own framing.
#pragma once

#include <cstddef>
#include <cstdint>
#include <exception>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include <ZvUtiLib/records/Describe.h>

#include "data/wire/RecordType.h"

namespace zvuti::wire {

/// Lists rows.
class ListWalk : public RowVisitor {
 public:
  explicit ListWalk(std::vector<RecordRow>& rows) : rows_(rows) {}

  void Number(const char* name, NumberRef field) override;
  void Code(const char* name, NumberRef field) override;
  void Tag(const char* name, NumberRef field, const TagTable& tags) override;
  void Text(const char* name, std::string& field) override;
  void List(const char* name, ListRef& items) override;
  void Map(const char* name, MapRef& entries) override;
  void Reserved(const char* name, void* bytes, std::size_t count) override;
  void Record(const char* name, const RecordType& type, void* record, Embedding as) override;
  bool OnlyIf(const Condition& condition, bool holds) override;

  /// Adds a row of a record with its own framing: a part of `field`.
  void Part(const char* name, const char* field, RowRole role, const RowType& type);

 private:
  RecordRow& Add(const char* name, const RowType& type, std::string defaultValue);

  std::vector<RecordRow>& rows_;
  std::optional<RowCondition> condition_;
};

/// Shows bytes row by row. Stores the values in the walked records, so that conditions hold as they do for a
/// reader. Shows nothing after the first row that does not fit.
class DumpWalk : public RowVisitor {
 public:
  DumpWalk(const void* bytes, std::size_t count, RecordDump& dump)
      : bytes_(static_cast<const unsigned char*>(bytes)), count_(count), dump_(dump) {}

  void Number(const char* name, NumberRef field) override;
  void Code(const char* name, NumberRef field) override;
  void Tag(const char* name, NumberRef field, const TagTable& tags) override;
  void Text(const char* name, std::string& field) override;
  void List(const char* name, ListRef& items) override;
  void Map(const char* name, MapRef& entries) override;
  void Reserved(const char* name, void* bytes, std::size_t count) override;
  void Record(const char* name, const RecordType& type, void* record, Embedding as) override;
  bool OnlyIf(const Condition& condition, bool holds) override;

  /// Shows an integer of a record with its own framing.
  void Part(const std::string& name, RowRole role, NumberRef field);

  bool IsEnded() const { return isEnded_; }

 private:
  bool Take(const std::string& name, void* out, std::size_t count);
  DumpRow& Show(std::size_t size, const std::string& name, const RowType& type, std::string value);
  void Stop(const std::string& problem);
  void Inside(const std::string& name, const RecordType& type, void* record);
  std::string Path(const std::string& name) const { return prefix_ + name; }

  const unsigned char* bytes_;
  std::size_t count_;
  RecordDump& dump_;
  std::size_t at_ = 0;
  std::string prefix_;
  bool isEnded_ = false;
};

/// A dump shows a tag that no member has as this text, followed by 0x and eight digits.
inline constexpr std::string_view kUnknownTag = "unknown tag ";

/// A value to be stored in a record, with the part of its path not yet resolved. For "Items[2].Count" that is
/// first the whole path, then "[2].Count" for the row Items, then "Count" for its element.
struct Given {
  std::string_view rest;
  const NamedValue* named;
};
using Values = std::vector<Given>;

/// Thrown to end the filling. FillRecord reports the problem, which starts with the full path of the value.
struct Refusal : std::exception {
  explicit Refusal(std::string problem_) : problem(std::move(problem_)) {}
  const char* what() const noexcept override { return problem.c_str(); }
  std::string problem;
};
[[noreturn]] void Refuse(const Given& value, const std::string& reason);

/// Parses a value for a field of `bytes` bytes. Returns the number, extended by its sign.
std::int64_t NumberOf(const Given& value, unsigned bytes, bool isSigned);
/// Returns the only value for a field without subfields, or null. Refuses two values that differ. Refuses a
/// value whose path continues, with `problem`.
const Given* OnlyOne(const Values& values, const std::string& problem);
/// Removes the point at the front of each path; refuses a path that does not continue with a point.
Values BehindPoint(Values values, const std::string& problem);

/// The values for a record, grouped by the next name in their paths.
class Fields {
 public:
  explicit Fields(const Values& values);
  Values Take(std::string_view name);
  /// Refuses values that were not taken.
  void RefuseRest(const char* record) const;

 private:
  std::map<std::string_view, Values> byName_;
};

/// The values for one element of a sequence, or for one entry of a map.
struct Entry {
  std::int64_t key;
  std::string_view first;  ///< the unresolved path of the first value
  Values values;
};

/// Groups the values of a sequence or a map by the next number in brackets, in ascending order.
std::vector<Entry> ByNumber(const Values& values, unsigned bytes, bool isSigned);
/// Returns the number of elements of a sequence: the value in `sizes`, at most `most`. Without one, it is the
/// number of `elements`, which must then have no gap.
std::size_t SizeOf(const std::vector<Entry>& elements, const Values& sizes, std::size_t most);

/// The entries of a map and its count on the wire. Without a given count there is one entry for each key, in
/// ascending order, as a writer would write them. With a count, the entries keep the given order and a key
/// may repeat: a new entry of a key starts at the field with which its previous entry started.
struct Entries {
  Entries(const Values& values, const Values& counts, bool hasSignedKeys);

  std::int32_t count;
  std::vector<Entry> entries;
};

/// Appends the rows of a record in wire order. Rows without a given value get the value in `record`, which is
/// a default record. Refuses values that would not be written.
void PutRows(const RecordType& type, void* record, const Values& values, std::string& bytes);

/// The functions that a record with its own framing supplies instead of a walk.
struct CustomFraming {
  void (*list)(ListWalk& rows);
  void (*dump)(DumpWalk& rows);
  void (*fill)(const Values& values, std::string& bytes);
};

}  // namespace zvuti::wire
