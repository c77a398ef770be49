#include "shared/Shape.h"

#include <algorithm>
#include <map>

#include "shared/Nearest.h"
#include "shared/Terminal.h"

namespace tool {
namespace {

using zvuti::RowForm;
using zvuti::RowRole;

Shape ShapeOf(const zvuti::RowType& type);

Shape ShapeOfElements(Shape::Kind kind, const zvuti::RowType& type) {
  zvuti::RowType element;
  element.form = type.element;
  element.name = type.name;
  Shape shape;
  shape.kind = kind;
  shape.element.push_back(ShapeOf(element));
  return shape;
}

Shape ShapeOf(const zvuti::RowType& type) {
  Shape shape;
  switch (type.form) {
    case RowForm::kSequence:
      return ShapeOfElements(Shape::Kind::kList, type);
    case RowForm::kMap:
      return ShapeOfElements(Shape::Kind::kMap, type);
    case RowForm::kInteger:
      shape.isTime = type.isPackedTime;
      [[fallthrough]];
    case RowForm::kByteCode:
    case RowForm::kMapEntry:
      shape.kind = Shape::Kind::kNumber;
      break;
    case RowForm::kTag:
    case RowForm::kText:
    case RowForm::kReserved:
      shape.kind = Shape::Kind::kText;
      break;
    case RowForm::kRecord:
    case RowForm::kBase:
    case RowForm::kBlock:
      shape.kind = Shape::Kind::kRecord;
      shape.record = type.name;
      break;
  }
  return shape;
}

// Adds a row of a record with its own framing to the shape of the map that the row is a part of.
void AddPart(Shape& map, const zvuti::RecordRow& row) {
  map.kind = Shape::Kind::kMap;
  if (row.role == RowRole::kCount) map.countPath = row.name;
  if (row.role == RowRole::kLength) {
    map.element.emplace_back();
    map.element[0].kind = Shape::Kind::kList;
    map.element[0].sizePath = kLengthSuffix;
  }
  if (row.role == RowRole::kElement) map.element[0].element.push_back(ShapeOf(row.type));
  if (row.role == RowRole::kValue) map.element.push_back(ShapeOf(row.type));
}

std::vector<Field> FieldsOf(std::string_view record) {
  std::vector<Field> fields;
  for (const zvuti::RecordRow& row : RowsOf(record)) {
    if (row.type.form == RowForm::kBase) {
      const std::vector<Field> inherited = FieldsOf(row.type.name);
      fields.insert(fields.end(), inherited.begin(), inherited.end());
    } else if (row.role == RowRole::kField) {
      fields.push_back({row.field, ShapeOf(row.type)});
    } else {
      auto map = std::find_if(fields.begin(), fields.end(),
                              [&](const Field& field) { return field.name == row.field; });
      if (map == fields.end()) map = fields.insert(fields.end(), {row.field, {}});
      AddPart(map->shape, row);
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

std::size_t Plus(std::size_t a, std::size_t b) {
  return a == kAnyWidth || b == kAnyWidth ? kAnyWidth : a + b;
}

}  // namespace

const std::vector<zvuti::RecordRow>& RowsOf(std::string_view name) {
  static std::map<std::string, std::vector<zvuti::RecordRow>> listed;
  const std::string record(name);
  const auto found = listed.find(record);
  if (found != listed.end()) return found->second;
  std::vector<zvuti::RecordRow> rows;
  if (!zvuti::ListRecord(record, rows)) {
    throw Failure("there is no record " + record +
                  Suggestion(record, zvuti::RecordNames(), "; 'zvuti records' lists them"));
  }
  return listed[record] = std::move(rows);
}

const Field* FindField(const std::string& record, const std::string& name) {
  return FindIf(record, [&](const Field& field) { return field.name == name; });
}

std::vector<std::string> FieldNames(const std::string& record) {
  std::vector<std::string> names;
  for (const Field& field : FieldsOf(record)) names.push_back(field.name);
  return names;
}

const Field* FindCounted(const std::string& record, const std::string& path) {
  return FindIf(record, [&](const Field& field) { return field.shape.countPath == path; });
}

Width WidthOf(const zvuti::RecordRow& row) {
  const std::size_t bytes = row.type.bits / 8;
  Width width = {bytes, bytes};
  switch (row.type.form) {
    case RowForm::kText:
    case RowForm::kSequence:
      width = {2, kAnyWidth};
      break;
    case RowForm::kMap:
      width = {4, kAnyWidth};
      break;
    case RowForm::kRecord:
    case RowForm::kBase:
      width = WidthOf(row.type.name);
      break;
    default:
      break;
  }
  if (row.condition) width.least = 0;
  // In a record with its own framing a count says how often such a row occurs; it may be never.
  if (row.role != RowRole::kField && row.role != RowRole::kCount) width = {0, kAnyWidth};
  return width;
}

Width WidthOf(std::string_view record) {
  Width sum;
  for (const zvuti::RecordRow& row : RowsOf(record)) {
    const Width width = WidthOf(row);
    sum.least = Plus(sum.least, width.least);
    sum.most = Plus(sum.most, width.most);
  }
  return sum;
}

const char* SignOf(zvuti::RowComparison comparison) {
  static constexpr const char* kSigns[] = {"<", "<=", "==", "!=", ">=", ">"};
  return kSigns[static_cast<std::size_t>(comparison)];
}

std::string ShownForm(const zvuti::RowType& type) {
  const char* const unit = type.isPackedTime ? "-bit time" : "-bit";
  return zvuti::FormText(type) + (type.form == RowForm::kInteger ? unit : "");
}

}  // namespace tool
