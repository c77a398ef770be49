// The walks behind Describe.h, open to the record that has a framing of its own.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
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
  void Record(const char* name, const RecordType& type, void* record, Place place) override;
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
  void Record(const char* name, const RecordType& type, void* record, Place place) override;
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

/// Puts a value into the field of a record that `path` names. Returns what is wrong, or nothing.
std::string FillField(const RecordType& type, void* record, std::string_view path, const std::string& value);

/// What a record with a framing of its own supplies instead of a walk.
struct OwnForm {
  void (*list)(ListWalk& rows);
  void (*dump)(DumpWalk& rows);
  std::string (*fill)(void* record, std::string_view path, const std::string& value);
};

}  // namespace zvuti::wire
