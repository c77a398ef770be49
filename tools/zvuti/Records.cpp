// zvuti records: lists the records and their layout on the wire.
#include <algorithm>
#include <array>
#include <iostream>
#include <string>
#include <vector>

#include <ZvUtiLib/records/Describe.h>

#include "Commands.h"
#include "shared/RecordJson.h"
#include "shared/Shape.h"
#include "shared/Terminal.h"

namespace tool {
namespace {

using zvuti::RowForm;

const char* TextOf(RowForm form) {
  static constexpr const char* kNames[] = {"integer",   "byte code", "tag",  "text",  "sequence", "map",
                                           "map entry", "record",    "base", "block", "reserved"};
  return kNames[static_cast<std::size_t>(form)];
}

const char* TextOf(zvuti::RowRole role) {
  static constexpr const char* kNames[] = {"field", "count", "key", "length", "element", "value"};
  return kNames[static_cast<std::size_t>(role)];
}

struct Options {
  std::string record;
  bool hasNamesOnly = false, isJson = false;
};

std::string Shown(Width width) {
  const std::string least = std::to_string(width.least);
  if (width.most == kAnyWidth) return least + "+";
  return width.least == width.most ? least : least + "-" + std::to_string(width.most);
}

int PrintNames(bool hasNamesOnly) {
  std::vector<std::string> names = zvuti::RecordNames();
  if (hasNamesOnly) {
    for (const std::string& name : names) std::cout << name << '\n';
    return kOk;
  }
  std::size_t width = 6;
  for (const std::string& name : names) width = std::max(width, name.size());
  std::cout << Styled(Style::kDim, Left("record", width) + "  rows  bytes") << '\n';
  for (const std::string& name : names) {
    std::cout << Styled(Style::kBold, Left(name, width)) << "  "
              << Right(std::to_string(RowsOf(name).size()), 4) << "  " << Right(Shown(WidthOf(name)), 5)
              << '\n';
  }
  return kOk;
}

int PrintRows(const std::string& record) {
  std::array<std::size_t, 3> widths = {3, 5, 5};
  std::vector<std::array<std::string, 5>> lines;
  lines.push_back({"row", "bytes", "field", "form", ""});
  for (const zvuti::RecordRow& row : RowsOf(record)) {
    const bool isBase = row.type.form == zvuti::RowForm::kBase;
    lines.push_back({std::to_string(lines.size()), Shown(WidthOf(row)), isBase ? "(all of)" : row.name,
                     ShownForm(row.type), row.condition ? row.condition->text : ""});
    for (std::size_t i = 0; i < widths.size(); ++i) widths[i] = std::max(widths[i], lines.back()[i].size());
  }
  for (const auto& line : lines) {
    const Style style = &line == lines.data() ? Style::kDim : Style::kPlain;
    std::cout << Styled(style, Right(line[0], widths[0]) + "  " + Right(line[1], widths[1])) << "  "
              << Styled(style == Style::kDim ? style : Style::kBold, Left(line[2], widths[2])) << "  "
              << Styled(style, line[3]) << (line[4].empty() ? "" : ", if " + line[4]) << '\n';
  }
  const Width width = WidthOf(record);
  std::cout << '\n' << record << ": " << Shown(width) << " bytes\n";
  return kOk;
}

// "form", "type" and "condition" are for readers; the other members say the same in parts.
Json JsonOf(const zvuti::RecordRow& row) {
  const zvuti::RowType& type = row.type;
  const bool isContainer = type.form == RowForm::kSequence || type.form == RowForm::kMap;
  Json json = {{"name", row.name},
               {"form", zvuti::FormText(type)},
               {"type", type.form == RowForm::kTag ? "" : type.name},
               {"condition", row.condition ? row.condition->text : ""},
               {"field", row.field},
               {"role", TextOf(row.role)},
               {"kind", TextOf(type.form)}};
  if (type.bits > 0) json["bits"] = type.bits;
  if (type.form == RowForm::kInteger) json["signed"] = type.isSigned;
  if (type.isPackedTime) json["packed time"] = true;
  if (isContainer) json["element"] = TextOf(type.element);
  if (type.form == RowForm::kMap) json["signed keys"] = type.hasSignedKeys;
  if (type.form == RowForm::kMap && type.element == RowForm::kInteger) json["signed values"] = type.isSigned;
  if (!row.defaultValue.empty() || type.form == RowForm::kText) json["default"] = row.defaultValue;
  if (type.form == RowForm::kTag) {
    json["enumeration"] = type.name;
    json["unknown tags"] = row.skipsUnknownTags ? "skipped" : "refused";
    for (const zvuti::RowTag& tag : row.tags) json["tags"][tag.name] = tag.tag;
  }
  if (row.condition) {
    json["present if"] = {{"field", row.condition->field},
                          {"comparison", SignOf(row.condition->comparison)},
                          {"constant", row.condition->constant}};
  }
  return json;
}

int PrintJson(const std::string& record) {
  Json all = Json::object();
  for (const std::string& name : record.empty() ? zvuti::RecordNames() : std::vector<std::string>{record}) {
    Json rows = Json::array();
    for (const zvuti::RecordRow& row : RowsOf(name)) {
      rows.push_back(JsonOf(row));
    }
    all[name] = std::move(rows);
  }
  std::cout << all.dump(2) << '\n';
  return kOk;
}

}  // namespace

void AddRecords(CLI::App& program, int& exitCode) {
  auto options = std::make_shared<Options>();
  CLI::App* command = program.add_subcommand("records", "list all records, or the rows of one in wire order");
  command->add_option("RECORD", options->record, "the record whose rows to list")->type_name("");
  command->add_flag("--names", options->hasNamesOnly, "print only the names of the records");
  command->add_flag("--json", options->isJson, "print JSON");
  command->footer(
      "The bytes are the size of a row or record: 2+ means two or more, 22-26 means 22 to 26.\n\n"
      "  zvuti records\n"
      "  zvuti records ItemRecord");
  command->callback([options, &exitCode] {
    exitCode = options->isJson           ? PrintJson(options->record)
               : options->record.empty() ? PrintNames(options->hasNamesOnly)
                                         : PrintRows(options->record);
  });
}

}  // namespace tool
