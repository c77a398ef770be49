#include <ZvUtiLib/records/Describe.h>

#include <utility>

#include "records/DescribeTypes.h"
#include "records/DescribeWalks.h"
#include "records/Units.h"

namespace zvuti {

namespace wire {

RecordRow& ListWalk::Add(const char* name, const RowType& type, std::string defaultValue) {
  RecordRow row;
  row.name = row.field = name;
  row.type = type;
  row.defaultValue = std::move(defaultValue);
  row.condition.swap(condition_);
  rows_.push_back(std::move(row));
  return rows_.back();
}

void ListWalk::Part(const char* name, const char* field, RowRole role, const RowType& type) {
  RecordRow& row = Add(name, type, "");
  row.field = field;
  row.role = role;
}

void ListWalk::Number(const char* name, NumberRef field) { Add(name, RowTypeOf(field), Decimal(field)); }
void ListWalk::Code(const char* name, NumberRef field) { Add(name, RowTypeOfCode(), Decimal(field)); }

void ListWalk::Tag(const char* name, NumberRef field, const TagTable& tags) {
  RecordRow& row = Add(name, RowTypeOf(tags), MemberName(tags, static_cast<std::uint32_t>(field.Get())));
  for (std::uint32_t member = 0; member < tags.count; ++member)
    row.tags.push_back({MemberName(tags, member), tags.tags[member]});
  row.skipsUnknownTags = !tags.unknownThrows;
}

void ListWalk::Text(const char* name, std::string& field) { Add(name, RowTypeOfText(), Escaped(field)); }
void ListWalk::List(const char* name, ListRef& items) {
  Add(name, RowTypeOf(items), std::to_string(items.Size()));
}
void ListWalk::Map(const char* name, MapRef& entries) {
  Add(name, RowTypeOf(entries), std::to_string(entries.Size()));
}
void ListWalk::Reserved(const char* name, void* bytes, std::size_t count) {
  Add(name, RowTypeOfReserved(count), Hex(bytes, count));
}
void ListWalk::Record(const char* name, const RecordType& type, void*, Embedding as) {
  Add(as == Embedding::kBase ? "" : name, RowTypeOf(type, as), "");
}

bool ListWalk::OnlyIf(const Condition& condition, bool) {
  condition_ = {condition.field, condition.comparison, condition.constant, TextOf(condition)};
  return true;
}

}  // namespace wire

std::vector<std::string> RecordNames() {
  std::vector<std::string> names;
  for (const wire::RecordType* type : wire::AllRecords()) names.emplace_back(type->name);
  return names;
}

bool ListRecord(const std::string& record, std::vector<RecordRow>& rows) {
  rows.clear();
  const wire::RecordType* type = wire::FindRecord(record);
  if (!type) return false;
  wire::ListWalk walk(rows);
  if (type->framing) {
    type->framing->list(walk);
  } else {
    type->walk(walk, type->make().get());
  }
  return true;
}

bool DumpRecord(const std::string& record, const void* bytes, std::size_t count, RecordDump& dump) {
  dump = {};
  const wire::RecordType* type = wire::FindRecord(record);
  if (!type) return false;
  wire::DumpWalk walk(bytes, count, dump);
  walk.Record("", *type, type->make().get(), wire::Embedding::kBase);
  dump.isWhole = !walk.IsEnded();
  return true;
}

bool FillRecord(const std::string& record, const std::vector<NamedValue>& values, std::string& bytes,
                std::string& problem) {
  bytes.clear();
  problem.clear();
  const wire::RecordType* type = wire::FindRecord(record);
  if (!type) {
    problem = "there is no record " + record;
    return false;
  }
  wire::Values given;
  given.reserve(values.size());
  for (const NamedValue& value : values) given.push_back({value.path, &value});
  try {
    wire::PutRows(*type, type->make().get(), given, bytes);
  } catch (const wire::Refusal& refusal) {
    bytes.clear();
    problem = refusal.problem;
    return false;
  }
  return true;
}

}  // namespace zvuti
