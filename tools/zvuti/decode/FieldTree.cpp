#include "decode/FieldTree.h"

#include <algorithm>
#include <charconv>

#include "shared/GbkText.h"
#include "shared/Shape.h"

namespace tool {
namespace {

// Splits "Items[2].Count" into "Items", "[2]" and "Count".
std::vector<std::string> PartsOf(const std::string& path) {
  std::vector<std::string> parts;
  for (std::size_t at = 0; at < path.size();) {
    const std::size_t end = std::min(path.find_first_of(".[", at + 1), path.size());
    parts.push_back(path.substr(at, end - at));
    at = end < path.size() && path[end] == '.' ? end + 1 : end;
  }
  return parts;
}

// The record at parts[first] to the end, inside `record`.
std::string TypeAt(const std::string& record, const std::vector<std::string>& parts, std::size_t first,
                   std::size_t end) {
  if (first == end) return record;
  const Shape* shape = nullptr;
  for (std::size_t i = first; i < end; ++i) {
    if (parts[i][0] == '[') {
      shape = shape && !shape->element.empty() ? &shape->element[0] : nullptr;
    } else {
      const Field* field = FindField(shape ? shape->record : record, parts[i]);
      shape = field ? &field->shape : nullptr;
    }
    if (!shape) return {};
  }
  return shape->record;
}

std::string ValueShown(const zvuti::DumpRow& row) {
  const zvuti::RowForm form = row.type.form;
  if (form == zvuti::RowForm::kSequence) return row.value == "1" ? "1 element" : row.value + " elements";
  if (form == zvuti::RowForm::kMap) return row.value == "1" ? "1 entry" : row.value + " entries";
  if (form == zvuti::RowForm::kText) return std::string("\"").append(Shown(row.value)).append("\"");
  const std::string date = DateOf(row);
  return date.empty() ? row.value : row.value + ", " + date;
}

void AddMessage(const Message& message, const std::string& path, std::vector<FieldLine>& lines) {
  const std::size_t above = path.empty() ? 0 : 1;  // parts of a path before those in the record
  std::vector<std::string> open;                   // the parts of the last row's path
  for (const zvuti::DumpRow& row : message.dump.rows) {
    std::vector<std::string> parts = PartsOf(row.path);
    if (above > 0) parts.insert(parts.begin(), path);
    std::size_t common = 0;
    while (common < open.size() && common + 1 < parts.size() && open[common] == parts[common]) ++common;
    for (; common + 1 < parts.size(); ++common) {
      lines.push_back({common, parts[common], TypeAt(message.name, parts, above, common + 1), "", true,
                       message.offset + row.offset, 0});
    }
    lines.push_back({parts.size() - 1, parts.back(), message.isRecord ? ShownForm(row.type) : message.name,
                     ValueShown(row), false, message.offset + row.offset, row.size});
    open = std::move(parts);
  }
}

// Gives each heading the bytes of the lines below it.
void SizeHeadings(std::vector<FieldLine>& lines) {
  std::vector<FieldLine*> open;
  for (FieldLine& line : lines) {
    while (!open.empty() && open.back()->depth >= line.depth) open.pop_back();
    for (FieldLine* heading : open) heading->size = line.offset + line.size - heading->offset;
    if (line.isHeading) open.push_back(&line);
  }
}

}  // namespace

std::vector<FieldLine> LinesOf(const Messages& messages) {
  std::vector<FieldLine> lines;
  for (std::size_t i = 0; i < messages.all.size(); ++i) {
    AddMessage(messages.all[i], messages.isLone ? "" : PathOf(i), lines);
  }
  SizeHeadings(lines);
  return lines;
}

}  // namespace tool
