// The walks behind Describe.h, open to the record that has a framing of its own.
#pragma once

#include <cstddef>
#include <cstdint>
#include <exception>
#include <map>
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
  bool OnlyIf(const char* condition, bool holds) override;

  void Add(const char* name, std::string form, const char* type = "");

 private:
  std::vector<RecordRow>& rows_;
  const char* condition_ = "";
};

/// Shows bytes row by row. The values go into the records that are walked, so that conditions hold as
/// they do for a reader. After the first row that does not fit, nothing is shown any more.
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
  bool OnlyIf(const char* condition, bool holds) override;

  bool IsEnded() const { return isEnded_; }

 private:
  bool Take(const std::string& name, void* out, std::size_t count);
  void Show(std::size_t size, const std::string& name, std::string form, std::string value);
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

/// How a dump shows a tag without a member: this, and 0x with eight digits.
inline constexpr std::string_view kUnknownTag = "unknown tag ";

/// A value on its way into a record, and what is left of its path at the place that was reached:
/// of "Items[2].Count" first all, then "[2].Count" for the row Items, then "Count" for its element.
struct Given {
  std::string_view rest;
  const NamedValue* named;
};
using Values = std::vector<Given>;

/// Ends the filling; FillRecord reports the problem, which begins with the whole path of the value.
struct Refusal : std::exception {
  explicit Refusal(std::string problem_) : problem(std::move(problem_)) {}
  const char* what() const noexcept override { return problem.c_str(); }
  std::string problem;
};
[[noreturn]] void Refuse(const Given& value, const std::string& reason);

/// The number that a value gives to a field of `bytes` bytes, extended by its sign.
std::int64_t NumberOf(const Given& value, unsigned bytes, bool isSigned);
/// The one value for a field that has no fields itself, or null. Refuses two that differ, and one whose
/// path goes on, with `problem`.
const Given* OnlyOne(const Values& values, const std::string& problem);
/// The values below a point; refuses a path that does not go on with one.
Values BehindPoint(Values values, const std::string& problem);

/// The values for a record by the name that comes next in their paths.
class Fields {
 public:
  explicit Fields(const Values& values);
  Values Take(std::string_view name);
  /// Refuses what nobody has taken.
  void RefuseRest(const char* record) const;

 private:
  std::map<std::string_view, Values> byName_;
};

/// The values for one element of a sequence, or for one entry of a map.
struct Entry {
  std::int64_t key;
  std::string_view first;  ///< what was left of the path of the first of them
  Values values;
};

/// The values of a sequence or a map by the number in brackets that comes next, in rising order.
std::vector<Entry> ByNumber(const Values& values, unsigned bytes, bool isSigned);
/// The elements of a sequence. Their number is the one that is given as `sizes`, up to `most`, or follows
/// from the elements, which then must not have a gap.
std::size_t SizeOf(const std::vector<Entry>& elements, const Values& sizes, std::size_t most);

/// The entries of a map, and its count on the wire. Without a given count they are one for each key, in
/// rising order, as a writer puts them. With one they are put as they come, and a key may come again: the
/// field that its last entry began with begins the next one.
struct Entries {
  Entries(const Values& values, const Values& counts, bool hasSignedKeys);

  std::int32_t count;
  std::vector<Entry> entries;
};

/// Appends the rows of a record in wire order, with the values given for them and the others as `record`,
/// a default one, has them. Refuses what would not reach the wire.
void PutRows(const RecordType& type, void* record, const Values& values, std::string& bytes);

/// What a record with a framing of its own supplies instead of a walk.
struct CustomFraming {
  void (*list)(ListWalk& rows);
  void (*dump)(DumpWalk& rows);
  void (*fill)(const Values& values, std::string& bytes);
};

}  // namespace zvuti::wire
