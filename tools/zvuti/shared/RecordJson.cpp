#include "shared/RecordJson.h"

#include <algorithm>
#include <charconv>
#include <cstdint>
#include <string_view>

#include "shared/GbkText.h"
#include "shared/Nearest.h"
#include "shared/PackedTime.h"
#include "shared/Shape.h"
#include "shared/Terminal.h"

namespace tool {
namespace {

using zvuti::RowRole;

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

// Returns true if a row below a map entry starts another entry with the same key: it repeats the first row of
// `entry`.
bool BeginsEntry(const Json& entry, const Shape& shape, std::string_view rest) {
  if (shape.kind == Shape::Kind::kList) return rest == shape.sizePath;
  return shape.kind != Shape::Kind::kRecord || rest.substr(1) == entry.begin().key();
}

// Returns the map entry that a row belongs to, and adds it if it is new. The map is an object as long as its
// keys are in ascending order. The first key that is not turns it into an array of [key, value] pairs.
Json& Entry(Json& map, const std::string& key, const Shape& shape, std::string_view rest) {
  if (map.is_object()) {
    auto& members = map.get_ref<Json::object_t&>();
    if (!members.empty() && members.back().first == key && !BeginsEntry(members.back().second, shape, rest))
      return members.back().second;
    std::int64_t number = 0, last = 0;
    if (members.empty() ||
        (ParseWhole(key, number) && ParseWhole(members.back().first, last) && last < number))
      return members.emplace_back(key, nullptr).second;
    Json pairs = Json::array();
    for (auto& [name, value] : members) pairs.push_back(Json::array({Number(name), std::move(value)}));
    map = std::move(pairs);
  } else if (map.back()[0] == Number(key) && !BeginsEntry(map.back()[1], shape, rest)) {
    return map.back()[1];
  }
  map.push_back(Json::array({Number(key), nullptr}));
  return map.back()[1];
}

Json& Element(Json& list, const std::string& index) {
  std::size_t place = 0;
  ParseWhole(index, place);
  while (list.size() <= place) list.push_back(nullptr);
  return list[place];
}

Json EmptyOf(const Shape& shape) { return shape.kind == Shape::Kind::kList ? Json::array() : Json::object(); }

// Stores the value of one row in the JSON at the row's path. Rows that only frame a record, such as counts,
// do not name a field and are skipped. A negative count is stored in place of its map.
void Put(Json& root, const std::string& record, const zvuti::DumpRow& row) {
  std::string_view path = row.path;
  const auto takeName = [&path] {
    const std::size_t end = std::min(path.find_first_of(".["), path.size());
    std::string name(path.substr(0, end));
    path.remove_prefix(end);
    return name;
  };
  const auto isBelowZero = [&row] { return row.value.substr(0, 1) == "-"; };
  if (row.role == RowRole::kKey) return;
  if (row.role == RowRole::kCount) {
    const Field* const counted = FindCounted(record, row.path);
    if (counted && isBelowZero()) root[counted->name] = Number(row.value);
    return;
  }
  const std::string first = takeName();
  const Field* field = FindField(record, first);
  if (!field) return;
  const Shape* shape = &field->shape;
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
      at = shape->kind == Shape::Kind::kMap ? &Entry(*at, key, element, path) : &Element(*at, key);
      shape = &element;
    } else {
      const std::string name = takeName();
      field = FindField(shape->record, name);
      if (!field) return;
      at = &(*at)[name];
      shape = &field->shape;
    }
  }
  if (shape->kind == Shape::Kind::kMap && isBelowZero()) {
    *at = Number(row.value);
  } else if (shape->kind == Shape::Kind::kList || shape->kind == Shape::Kind::kMap) {
    if (at->is_null() || shape->sizePath.empty()) *at = EmptyOf(*shape);
  } else {
    const std::string date = DateOf(row);
    *at = !date.empty()                         ? Json(date)
          : shape->kind == Shape::Kind::kNumber ? Number(row.value)
                                                : Json(Shown(row.value));
  }
}

// Names of these characters appear unquoted in messages. Others, such as a zero byte, are escaped.
constexpr std::string_view kPlain = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789_ ";

class Values {
 public:
  void Add(const std::string& path, const Shape& shape, const Json& json) {
    switch (shape.kind) {
      case Shape::Kind::kNumber:
        if (json.is_string()) return Push(path, NumberOf(path, shape, json.get_ref<const std::string&>()));
        if (!json.is_number_integer()) Refuse(path, "an integer is needed", json);
        return Push(path, json.dump());
      case Shape::Kind::kText:
        if (!json.is_string()) Refuse(path, "a string is needed", json);
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
        return AddMap(path, shape, json);
    }
  }

  void AddFields(const std::string& prefix, const std::string& record, const Json& json) {
    if (!json.is_object()) {
      Refuse(prefix.empty() ? record : prefix.substr(0, prefix.size() - 1), "an object of fields is needed",
             json);
    }
    for (const auto& [name, value] : json.items()) {
      const Field* field = FindField(record, name);
      if (!field) {
        const bool isPlain = name.find_first_not_of(kPlain) == name.npos;
        std::string message = prefix;
        message.append(isPlain ? name : Json(name).dump()).append(": no such field in ").append(record);
        if (isPlain) message += Suggestion(name, FieldNames(record), "");
        throw Failure(message);
      }
      Add(std::string(prefix).append(name), field->shape, value);
    }
  }

  std::vector<zvuti::NamedValue> Take() { return std::move(values_); }

 private:
  // A number in a string, or a date in its place.
  static std::string NumberOf(const std::string& path, const Shape& shape, const std::string& text) {
    if (!shape.isTime || !IsDate(text)) return text;
    std::string problem;
    const auto word = WordOf(text, problem);
    if (!word) throw Failure(path + ": " + Json(text).dump(-1, ' ', true) + ": " + problem);
    return std::to_string(*word);
  }

  void AddMap(const std::string& path, const Shape& shape, const Json& json) {
    const std::string countPath =
        shape.countPath.empty() ? path : path.substr(0, path.rfind('.') + 1) + shape.countPath;
    if (json.is_number_integer()) return Push(countPath, json.dump());
    if (json.is_array()) {
      Push(countPath, std::to_string(json.size()));
      for (const Json& pair : json) {
        const bool isPair = pair.is_array() && pair.size() == 2;
        if (!isPair || !(pair[0].is_number_integer() || pair[0].is_string()))
          Refuse(path, "pairs of a key and a value are needed", pair);
        AddEntry(path, pair[0].is_string() ? pair[0].get<std::string>() : pair[0].dump(), shape, pair[1]);
      }
      return;
    }
    if (!json.is_object()) Refuse(path, "an object of keys and values is needed", json);
    for (const auto& [key, value] : json.items()) AddEntry(path, key, shape, value);
  }

  void AddEntry(const std::string& path, const std::string& key, const Shape& shape, const Json& json) {
    if (key.find_first_not_of("-0123456789abcdefABCDEFxX") != key.npos)
      Refuse(path, "a number is needed as a key", key);
    const std::string entry = Inside(path, key);
    const std::size_t count = values_.size();
    Add(entry, shape.element[0], json);
    if (values_.size() == count) Refuse(entry, "an object with at least one field is needed", json);
  }

  static std::string Inside(const std::string& path, const std::string& key) {
    return std::string(path).append("[").append(key).append("]");
  }

  void Push(const std::string& path, std::string value) { values_.push_back({path, std::move(value)}); }

  [[noreturn]] static void Refuse(const std::string& path, const char* need, const Json& json) {
    std::string given = json.dump(-1, ' ', true, Json::error_handler_t::replace);
    if (given.size() > 40) given = given.substr(0, 37) + "...";
    throw Failure(path + ": " + need + ", not " + given);
  }

  std::vector<zvuti::NamedValue> values_;
};

}  // namespace

std::string DateOf(const zvuti::DumpRow& row) {
  std::uint32_t word = 0;
  return row.type.isPackedTime && ParseWhole(row.value, word) ? DateOf(word) : "";
}

Json ToJson(const std::string& record, const zvuti::RecordDump& dump) {
  RowsOf(record);
  Json json = Json::object();
  for (const zvuti::DumpRow& row : dump.rows) Put(json, record, row);
  return json;
}

bool IsAsWritten(const std::string& record, const zvuti::RecordDump& dump, std::string_view bytes) {
  std::vector<zvuti::NamedValue> values;
  for (const zvuti::DumpRow& row : dump.rows) {
    const bool isCount = row.type.form == zvuti::RowForm::kMap || row.role == RowRole::kCount;
    if (!isCount && row.role != RowRole::kKey) values.push_back({row.path, row.value});
  }
  std::string again, problem;
  return zvuti::FillRecord(record, values, again, problem) && again == bytes;
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
