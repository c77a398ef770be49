#include <ZvUtiLib/records/Describe.h>

#include <utility>

#include "records/DescribeWalks.h"
#include "records/Units.h"

namespace zvuti {

namespace wire {

void ListWalk::Add(const char* name, std::string form, const char* type) {
  rows_.push_back({name, std::move(form), type, condition_});
  condition_ = "";
}

void ListWalk::Number(const char* name, NumberRef field) { Add(name, std::to_string(8 * field.bytes)); }
void ListWalk::Code(const char* name, NumberRef) { Add(name, "byte code"); }
void ListWalk::Tag(const char* name, NumberRef, const TagTable& tags) {
  Add(name, std::string(tags.name) + " tag");
}
void ListWalk::Text(const char* name, std::string&) { Add(name, "text"); }

void ListWalk::List(const char* name, ListRef& items) {
  const char* element = items.elements ? items.elements->name : "text";
  Add(name, std::string("sequence of ") + element, items.elements ? element : "");
}

void ListWalk::Map(const char* name, MapRef& entries) {
  if (entries.blocks) {
    Add(name, std::string("map of ") + entries.blocks->name, entries.blocks->name);
  } else {
    Add(name, "map");
  }
}

void ListWalk::Reserved(const char* name, void*, std::size_t count) {
  Add(name, "reserved " + std::to_string(count));
}

void ListWalk::Record(const char* name, const RecordType& type, void*, Embedding as) {
  Add(as == Embedding::kBase ? "" : name,
      as == Embedding::kBlock ? "block of " + std::to_string(type.blockBytes) : type.name, type.name);
}

bool ListWalk::OnlyIf(const char* condition, bool) {
  condition_ = condition;
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
