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
    const bool isBase = row.name.empty();
    lines.push_back({std::to_string(lines.size()), Shown(WidthOf(row)), isBase ? "(all of)" : row.name,
                     ShownForm(row.form), row.condition});
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

int PrintJson(const std::string& record) {
  Json all = Json::object();
  for (const std::string& name : record.empty() ? zvuti::RecordNames() : std::vector<std::string>{record}) {
    Json rows = Json::array();
    for (const zvuti::RecordRow& row : RowsOf(name)) {
      rows.push_back(
          {{"name", row.name}, {"form", row.form}, {"type", row.type}, {"condition", row.condition}});
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
