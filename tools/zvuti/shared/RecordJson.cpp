#include "shared/RecordJson.h"

#include <charconv>
#include <cstdint>
#include <string_view>

#include "shared/GbkText.h"
#include "shared/Shape.h"
#include "shared/Terminal.h"

namespace tool {
namespace {

template <class T>
bool ParseWhole(std::string_view text, T& value) {
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
  return error == std::errc() && end == text.data() + text.size();
}

Json Number(const std::string& text) {
  std::int64_t number = 0;
  if (ParseWhole(text, number)) return number;
  std::uint64_t large = 0;
  if (ParseWhole(text, large)) return large;
  return text;
}

// The member of a map under a key. Keys mostly come in rising order: a key above the last one is new,
// and needs no search.
Json& Entry(Json& map, const std::string& key) {
  auto& members = map.get_ref<Json::object_t&>();
  if (!members.empty()) {
    const std::string& last = members.back().first;
    if (last == key) return members.back().second;
    std::int64_t number = 0, lastNumber = 0;
    const bool isNew = ParseWhole(key, number) && ParseWhole(last, lastNumber) && number > lastNumber;
    if (!isNew) return map[key];
  }
  members.emplace_back(key, nullptr);
  return members.back().second;
}

Json& Element(Json& list, const std::string& index, bool isRecord) {
  std::size_t place = 0;
  ParseWhole(index, place);
  // A group that comes twice goes on where its first part ended.
  if (!isRecord && place < list.size()) place = list.size();
  while (list.size() <= place) list.push_back(nullptr);
  return list[place];
}

Json EmptyOf(const Shape& shape) { return shape.kind == Shape::Kind::kList ? Json::array() : Json::object(); }

// Puts the value of one row where its path leads. Rows of a framing name no field, and are passed by.
void Put(Json& root, const std::string& record, const zvuti::DumpRow& row) {
  std::string_view path = row.path;
  const auto takeName = [&path] {
    const std::size_t end = std::min(path.find_first_of(".["), path.size());
    std::string name(path.substr(0, end));
    path.remove_prefix(end);
    return name;
  };
  const std::string first = takeName();
  const Field* field = FindField(record, first);
  if (!field) return;
  const Shape* shape = &field->shape;
  if (shape->kind == Shape::Kind::kMap && path.substr(0, 1) == ".") return;  // "Groups.key"
  Json* at = &root[first];
  while (!path.empty() && path != shape->sizePath) {
    if (at->is_null()) *at = EmptyOf(*shape);
    const bool isElement = path[0] == '[';
    path.remove_prefix(1);
    if (isElement) {
      const std::size_t close = path.find(']');
      const std::string key(path.substr(0, close));
      path.remove_prefix(close + 1);
      const Shape& element = shape->element[0];
      at = shape->kind == Shape::Kind::kMap ? &Entry(*at, key)
                                            : &Element(*at, key, element.kind == Shape::Kind::kRecord);
      shape = &element;
    } else {
      const std::string name = takeName();
      field = FindField(shape->record, name);
      if (!field) return;
      at = &(*at)[name];
      shape = &field->shape;
    }
  }
  if (shape->kind == Shape::Kind::kList || shape->kind == Shape::Kind::kMap) {
    if (at->is_null() || shape->sizePath.empty()) *at = EmptyOf(*shape);
  } else {
    *at = shape->kind == Shape::Kind::kNumber ? Number(row.value) : Json(Shown(row.value));
  }
}

class Values {
 public:
  void Add(const std::string& path, const Shape& shape, const Json& json) {
    switch (shape.kind) {
      case Shape::Kind::kNumber:
        if (json.is_string()) return Push(path, json.get<std::string>());
        if (!json.is_number_integer()) Refuse(path, "a whole number is needed", json);
        return Push(path, json.dump());
      case Shape::Kind::kText:
        if (!json.is_string()) Refuse(path, "a text in quotes is needed", json);
        return Push(path, ToGbk(json.get_ref<const std::string&>(), path));
      case Shape::Kind::kRecord:
        return AddFields(path + ".", shape.record, json);
      case Shape::Kind::kList:
        if (!json.is_array()) Refuse(path, "an array is needed", json);
        Push(path + shape.sizePath, std::to_string(json.size()));
        for (std::size_t i = 0; i < json.size(); ++i) {
          Add(Inside(path, std::to_string(i)), shape.element[0], json[i]);
        }
        return;
      case Shape::Kind::kMap:
        if (!json.is_object()) Refuse(path, "an object of keys and values is needed", json);
        for (const auto& [key, value] : json.items()) {
          const std::string entry = Inside(path, key);
          const std::size_t count = values_.size();
          Add(entry, shape.element[0], value);
          if (values_.size() == count) Refuse(entry, "an entry needs at least one field", value);
        }
        return;
    }
  }

  void AddFields(const std::string& prefix, const std::string& record, const Json& json) {
    if (!json.is_object()) {
      Refuse(prefix.empty() ? record : prefix.substr(0, prefix.size() - 1), "an object of fields is needed",
             json);
    }
    for (const auto& [name, value] : json.items()) {
      const Field* field = FindField(record, name);
      if (!field)
        throw Failure(std::string(prefix).append(name).append(": there is no such field in ").append(record));
      Add(std::string(prefix).append(name), field->shape, value);
    }
  }

  std::vector<zvuti::NamedValue> Take() { return std::move(values_); }

 private:
  static std::string Inside(const std::string& path, const std::string& key) {
    return std::string(path).append("[").append(key).append("]");
  }

  void Push(const std::string& path, std::string value) { values_.push_back({path, std::move(value)}); }

  [[noreturn]] static void Refuse(const std::string& path, const char* need, const Json& json) {
    std::string given = json.dump(-1, ' ', false, Json::error_handler_t::replace);
    if (given.size() > 40) given = given.substr(0, 37) + "...";
    throw Failure(path + ": " + need + ", not " + given);
  }

  std::vector<zvuti::NamedValue> values_;
};

}  // namespace

Json ToJson(const std::string& record, const zvuti::RecordDump& dump) {
  RowsOf(record);
  Json json = Json::object();
  for (const zvuti::DumpRow& row : dump.rows) Put(json, record, row);
  return json;
}

std::vector<zvuti::NamedValue> ToValues(const std::string& record, const Json& json) {
  RowsOf(record);
  Values values;
  values.AddFields("", record, json);
  return values.Take();
}

std::string ToBytes(const std::string& record, const Json& json) {
  std::string bytes, problem;
  if (!zvuti::FillRecord(record, ToValues(record, json), bytes, problem)) throw Failure(Shown(problem));
  return bytes;
}

}  // namespace tool
