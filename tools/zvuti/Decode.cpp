// zvuti decode: shows bytes as the fields of a record.
#include <algorithm>
#include <iostream>
#include <string>
#include <vector>

#include <ZvUtiLib/records/Describe.h>

#include "Commands.h"
#include "shared/Files.h"
#include "shared/GbkText.h"
#include "shared/RecordJson.h"
#include "shared/Shape.h"
#include "shared/Terminal.h"

namespace tool {
namespace {

constexpr std::size_t kShownBytes = 8;  // per row, without --all-bytes
constexpr std::size_t kShownRest = 16;  // of the bytes after the record

struct Options {
  std::string record, file;
  bool isHex = false, isJson = false, hasAllBytes = false;
  std::size_t skip = 0;
};

struct Line {
  std::string offset, bytes, field, type, value;
};

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

std::string TypeAt(const std::string& record, const std::vector<std::string>& parts) {
  const Shape* shape = nullptr;
  for (const std::string& part : parts) {
    if (part[0] == '[') {
      shape = shape && !shape->element.empty() ? &shape->element[0] : nullptr;
    } else {
      const Field* field = FindField(shape ? shape->record : record, part);
      shape = field ? &field->shape : nullptr;
    }
    if (!shape) return {};
  }
  return shape ? shape->record : "";
}

std::string BytesShown(std::string_view bytes, bool hasAll) {
  if (hasAll || bytes.size() <= kShownBytes) return ToHex(bytes);
  return ToHex(bytes.substr(0, kShownBytes)) + " ..";
}

std::string ValueShown(const zvuti::DumpRow& row) {
  const zvuti::RowForm form = row.type.form;
  if (form == zvuti::RowForm::kSequence) return row.value == "1" ? "1 element" : row.value + " elements";
  if (form == zvuti::RowForm::kMap) return row.value == "1" ? "1 entry" : row.value + " entries";
  return form == zvuti::RowForm::kText ? "\"" + Shown(row.value) + "\"" : row.value;
}

std::vector<Line> LinesOf(const Options& options, const zvuti::RecordDump& dump, const std::string& bytes) {
  std::vector<Line> lines;
  std::vector<std::string> open;  // the parts of the last row's path
  for (const zvuti::DumpRow& row : dump.rows) {
    const std::vector<std::string> parts = PartsOf(row.path);
    std::size_t common = 0;
    while (common < open.size() && common + 1 < parts.size() && open[common] == parts[common]) ++common;
    for (; common + 1 < parts.size(); ++common) {
      const std::vector<std::string> above(parts.begin(),
                                           parts.begin() + static_cast<std::ptrdiff_t>(common) + 1);
      lines.push_back(
          {"", "", std::string(2 * common, ' ') + parts[common], TypeAt(options.record, above), ""});
    }
    const std::string_view taken = std::string_view(bytes).substr(row.offset, row.size);
    lines.push_back({std::to_string(options.skip + row.offset), BytesShown(taken, options.hasAllBytes),
                     std::string(2 * (parts.size() - 1), ' ') + parts.back(), ShownForm(row.type),
                     ValueShown(row)});
    open = parts;
  }
  return lines;
}

void PrintTree(const std::vector<Line>& lines) {
  Line widths;
  std::size_t offset = 6, hex = 5, field = 5, type = 4;
  for (const Line& line : lines) {
    offset = std::max(offset, line.offset.size());
    hex = std::max(hex, line.bytes.size());
    field = std::max(field, line.field.size());
    type = std::max(type, line.type.size());
  }
  const auto print = [&](const Line& line, Style head) {
    std::string text = Right(line.offset, offset) + "  ";
    text += Styled(head == Style::kPlain ? Style::kDim : head, Left(line.bytes, hex)) + "  ";
    text += Styled(head == Style::kPlain ? Style::kBold : head, Left(line.field, field)) + "  ";
    text += Left(line.type, line.value.empty() ? 0 : type);
    if (!line.value.empty()) text += "  " + line.value;
    text.erase(text.find_last_not_of(' ') + 1);
    std::cout << text << '\n';
  };
  print({"offset", "bytes", "field", "type", "value"}, Style::kDim);
  for (const Line& line : lines) print(line, Style::kPlain);
}

int Decode(const Options& options) {
  RowsOf(options.record);
  std::string bytes = ReadAll(options.file);
  if (options.isHex) bytes = FromHex(bytes, NameOf(options.file));
  if (options.skip > bytes.size()) {
    throw Failure("--skip " + std::to_string(options.skip) + " is beyond the " + Count(bytes.size(), "byte") +
                  " of " + NameOf(options.file));
  }
  bytes.erase(0, options.skip);
  zvuti::RecordDump dump;
  zvuti::DumpRecord(options.record, bytes.data(), bytes.size(), dump);
  if (options.isJson) {
    std::cout << ToJson(options.record, dump).dump(2) << '\n';
  } else {
    PrintTree(LinesOf(options, dump, bytes));
  }
  const std::size_t left = bytes.size() - dump.size;
  const std::string_view rest = std::string_view(bytes).substr(dump.size);
  const std::string sample =
      left == 0 ? "" : ": " + ToHex(rest.substr(0, kShownRest)) + (left > kShownRest ? " .." : "");
  if (!dump.isWhole) {
    Say(options.record + " is incomplete: " + dump.problem);
    if (left > 0) Say(Count(left, "byte") + " not decoded" + sample);
    return kFound;
  }
  if (left > 0) {
    Say(Count(left, "byte") + " left after the record, from offset " +
        std::to_string(options.skip + dump.size) + sample);
    return kFound;
  }
  if (!options.isJson) std::cout << "\n" << Count(dump.size, "byte") << ", all decoded\n";
  return kOk;
}

}  // namespace

void AddDecode(CLI::App& program, int& exitCode) {
  auto options = std::make_shared<Options>();
  CLI::App* command = program.add_subcommand("decode", "show bytes as a record, field by field");
  command->add_option("RECORD", options->record, "name of the record; 'zvuti records' lists them")
      ->required()
      ->type_name("");
  command->add_option("FILE", options->file, "the bytes; default is standard input")->type_name("");
  command->add_flag("--hex", options->isHex, "the input is hexadecimal text: 01 FF 0x2a");
  command->add_flag("--json", options->isJson, "print JSON, which 'zvuti encode' reads");
  command->add_flag("--all-bytes", options->hasAllBytes,
                    "show all bytes of each field, not only the first eight");
  command->add_option("--skip", options->skip, "skip the first N bytes")
      ->check([](const std::string& text) { return text[0] == '-' ? "it must be 0 or more" : ""; }, "")
      ->type_name("N");
  command->footer(
      "Exits with 1 if the bytes end too early, or if some are left after the record.\n\n"
      "  zvuti decode PlayerSnapshot inbox/snapshot.bin\n"
      "  echo 05 00 00 00 02 00 41 42 | zvuti decode --hex --skip 4 NAME");
  command->callback([options, &exitCode] { exitCode = Decode(*options); });
}

}  // namespace tool
