#include "shared/Shape.h"

#include <algorithm>
#include <map>

#include "shared/Terminal.h"

namespace tool {
namespace {

bool BeginsWith(const std::string& text, const char* start) { return text.rfind(start, 0) == 0; }
bool EndsWith(const std::string& text, const std::string& end) {
  return text.size() >= end.size() && text.compare(text.size() - end.size(), end.size(), end) == 0;
}
bool IsNumber(const std::string& form) { return form.find_first_not_of("0123456789") == form.npos; }

Shape ShapeOf(const std::string& form, const std::string& type) {
  Shape shape;
  if (BeginsWith(form, "sequence of ")) {
    shape.kind = Shape::Kind::kList;
    shape.element.push_back(type.empty() ? ShapeOf("text", "") : ShapeOf(type, type));
  } else if (form == "map" || BeginsWith(form, "map of ")) {
    shape.kind = Shape::Kind::kMap;
    shape.element.push_back(ShapeOf(type.empty() ? "32" : type, type));
  } else if (!type.empty()) {
    shape.kind = Shape::Kind::kRecord;
    shape.record = type;
  } else {
    shape.kind = IsNumber(form) || form == "byte code" ? Shape::Kind::kNumber : Shape::Kind::kText;
  }
  return shape;
}

// Builds the shape for the bracketed part of a row's name. A record with its own framing lists a list within
// a map as "Groups[key][index]", the size of that list as "Groups[key].count", and the count of the map in a
// row of its own without brackets.
Shape BracketedShape(const std::string& brackets, const zvuti::RecordRow& row) {
  if (brackets.empty()) return ShapeOf(row.form, row.type);
  Shape shape;
  const std::size_t close = brackets.find(']');
  const bool isList = BeginsWith(brackets, "[index]");
  shape.kind = isList ? Shape::Kind::kList : Shape::Kind::kMap;
  if (isList) shape.sizePath = ".count";
  shape.element.push_back(BracketedShape(brackets.substr(close + 1), row));
  return shape;
}

std::vector<Field> FieldsOf(const std::string& record) {
  std::vector<Field> fields;
  const auto& rows = RowsOf(record);
  const bool isFramed = std::any_of(rows.begin(), rows.end(), [](const zvuti::RecordRow& row) {
    return row.name.find('[') != row.name.npos;
  });
  std::vector<std::string> counts;  // of the maps, in their order; only in a record with its own framing
  for (const zvuti::RecordRow& row : rows) {
    const std::size_t bracket = row.name.find('[');
    if (isFramed && row.name.find_first_of(".[") == row.name.npos) {
      counts.push_back(row.name);
    } else if (row.name.empty()) {
      const std::vector<Field> inherited = FieldsOf(row.type);
      fields.insert(fields.end(), inherited.begin(), inherited.end());
    } else if (!isFramed) {
      fields.push_back({row.name, ShapeOf(row.form, row.type)});
    } else if (bracket != row.name.npos && !EndsWith(row.name, ".count")) {
      fields.push_back({row.name.substr(0, bracket), BracketedShape(row.name.substr(bracket), row)});
      if (fields.size() <= counts.size()) fields.back().shape.countPath = counts[fields.size() - 1];
    }
  }
  return fields;
}

template <class Wanted>
const Field* FindIf(const std::string& record, Wanted isWanted) {
  static std::map<std::string, std::vector<Field>> known;
  auto fields = known.find(record);
  if (fields == known.end()) fields = known.emplace(record, FieldsOf(record)).first;
  const auto found = std::find_if(fields->second.begin(), fields->second.end(), isWanted);
  return found == fields->second.end() ? nullptr : &*found;
}

// The edit distance: how many letters to change, insert or remove to turn one name into the other. Ignores
// case.
std::size_t Distance(const std::string& a, const std::string& b) {
  std::vector<std::size_t> row(b.size() + 1);
  for (std::size_t i = 0; i < row.size(); ++i) row[i] = i;
  for (std::size_t i = 1; i <= a.size(); ++i) {
    std::size_t diagonal = row[0];
    row[0] = i;
    for (std::size_t j = 1; j <= b.size(); ++j) {
      const bool isSame = (a[i - 1] | 0x20) == (b[j - 1] | 0x20);
      const std::size_t here = std::min({row[j] + 1, row[j - 1] + 1, diagonal + (isSame ? 0 : 1)});
      diagonal = row[j];
      row[j] = here;
    }
  }
  return row[b.size()];
}

std::string NearestName(const std::string& wanted) {
  std::string nearest;
  std::size_t least = wanted.size() / 2 + 1;
  for (const std::string& name : zvuti::RecordNames()) {
    const std::size_t distance = Distance(wanted, name);
    if (distance < least) least = distance, nearest = name;
  }
  return nearest;
}

std::size_t Plus(std::size_t a, std::size_t b) {
  return a == kAnyWidth || b == kAnyWidth ? kAnyWidth : a + b;
}

}  // namespace

const std::vector<zvuti::RecordRow>& RowsOf(const std::string& record) {
  static std::map<std::string, std::vector<zvuti::RecordRow>> listed;
  const auto found = listed.find(record);
  if (found != listed.end()) return found->second;
  std::vector<zvuti::RecordRow> rows;
  if (!zvuti::ListRecord(record, rows)) {
    const std::string nearest = NearestName(record);
    throw Failure("there is no record " + record +
                  (nearest.empty() ? "; 'zvuti records' lists them" : "; did you mean " + nearest + "?"));
  }
  return listed[record] = std::move(rows);
}

const Field* FindField(const std::string& record, const std::string& name) {
  return FindIf(record, [&](const Field& field) { return field.name == name; });
}

const Field* FindCounted(const std::string& record, const std::string& path) {
  return FindIf(record, [&](const Field& field) { return field.shape.countPath == path; });
}

Width WidthOf(const zvuti::RecordRow& row) {
  const std::string& form = row.form;
  Width width;
  if (form.empty()) return width;
  if (IsNumber(form)) {
    width.least = width.most = std::stoul(form) / 8;
  } else if (form == "byte code") {
    width.least = width.most = 1;
  } else if (EndsWith(form, " tag")) {
    width.least = width.most = 4;
  } else if (BeginsWith(form, "reserved ") || BeginsWith(form, "block of ")) {
    width.least = width.most = std::stoul(form.substr(form.rfind(' ') + 1));
  } else if (form == "text" || BeginsWith(form, "sequence of ")) {
    width = {2, kAnyWidth};
  } else if (form == "map" || BeginsWith(form, "map of ")) {
    width = {4, kAnyWidth};
  } else {
    width = WidthOf(row.type);
  }
  if (!row.condition.empty()) width.least = 0;
  // In a record with its own framing, a count says how often this row occurs; it may be never.
  if (row.name.find("key") != row.name.npos) width = {0, kAnyWidth};
  return width;
}

Width WidthOf(const std::string& record) {
  Width sum;
  for (const zvuti::RecordRow& row : RowsOf(record)) {
    const Width width = WidthOf(row);
    sum.least = Plus(sum.least, width.least);
    sum.most = Plus(sum.most, width.most);
  }
  return sum;
}

std::string ShownForm(const std::string& form) { return IsNumber(form) ? form + "-bit" : form; }

}  // namespace tool
