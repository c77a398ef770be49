// zvuti decode: shows bytes as the fields of a record.
#include <algorithm>
#include <iostream>
#include <string>
#include <vector>

#include "Commands.h"
#include "decode/FieldTree.h"
#include "decode/Html.h"
#include "decode/Layout.h"
#include "decode/Messages.h"
#include "input/Input.h"
#include "shared/Files.h"
#include "shared/Terminal.h"

namespace tool {
namespace {

constexpr std::size_t kShownBytes = 8;  // per row, without --all-bytes
constexpr std::size_t kShownRest = 16;  // of the bytes after the record

struct Options {
  std::string layout, html;
  Input input;
  bool isJson = false, hasAllBytes = false;
  std::size_t skip = 0;
};

struct Line {
  std::string offset, bytes, field, type, value;
};

std::string BytesShown(std::string_view bytes, bool hasAll) {
  if (hasAll || bytes.size() <= kShownBytes) return ToHex(bytes);
  return ToHex(bytes.substr(0, kShownBytes)) + " ..";
}

std::vector<Line> Table(const Options& options, const Messages& messages, const std::string& bytes) {
  std::vector<Line> lines;
  for (const FieldLine& line : LinesOf(messages)) {
    const std::string name = std::string(2 * line.depth, ' ') + line.name;
    if (line.isHeading) {
      lines.push_back({"", "", name, line.type, ""});
    } else {
      const std::string_view taken = std::string_view(bytes).substr(line.offset, line.size);
      lines.push_back({std::to_string(options.skip + line.offset), BytesShown(taken, options.hasAllBytes),
                       name, line.type, line.value});
    }
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

// Says what is missing or left. Returns the exit code.
int Report(const Options& options, const Messages& messages, std::string_view bytes) {
  const std::string_view rest = bytes.substr(messages.size);
  const std::string sample = ToHex(rest.substr(0, kShownRest)) + (rest.size() > kShownRest ? " .." : "");
  if (!messages.problem.empty()) {
    Say(messages.problem);
    if (!rest.empty()) Say(Count(rest.size(), "byte") + " not decoded: " + sample);
    return kFound;
  }
  if (!rest.empty()) {
    Say(Count(rest.size(), "byte") + " left after the " + (messages.isLone ? "record" : "messages") +
        ", from offset " + std::to_string(options.skip + messages.size) + ": " + sample);
    return kFound;
  }
  if (options.isJson || !options.html.empty()) return kOk;
  std::cout << "\n" << Count(messages.size, "byte") << ", all decoded\n";
  return kOk;
}

int Decode(const Options& options) {
  const Layout layout = ParseLayout(options.layout);
  std::string bytes = ReadBytes(options.input);
  const std::string name = NameOf(options.input.file);
  if (options.skip > bytes.size()) {
    throw Failure("--skip " + std::to_string(options.skip) + " is beyond the " + Count(bytes.size(), "byte") +
                  " of " + name);
  }
  bytes.erase(0, options.skip);
  const Messages messages = ReadMessages(layout, bytes);
  if (options.isJson) {
    std::cout << ToJson(messages).dump(2) << '\n';
  } else if (!options.html.empty()) {
    WriteAll(options.html, HtmlOf(messages, bytes, options.skip, options.layout, name));
    if (options.html != "-") Say("wrote " + options.html);
  } else {
    PrintTree(Table(options, messages, bytes));
  }
  return Report(options, messages, bytes);
}

}  // namespace

void AddDecode(CLI::App& program, int& exitCode) {
  auto options = std::make_shared<Options>();
  CLI::App* command = program.add_subcommand("decode", "show bytes as a record, field by field");
  command
      ->add_option("RECORD", options->layout,
                   "name of the record, see 'zvuti records', or a layout: 'u16, ItemRecord*'")
      ->required()
      ->type_name("");
  command->add_option("FILE", options->input.file, "the bytes; default is standard input")->type_name("");
  AddInputOptions(*command, options->input);
  CLI::Option* json = command->add_flag("--json", options->isJson, "print JSON, which 'zvuti encode' reads");
  CLI::Option* all = command->add_flag("--all-bytes", options->hasAllBytes,
                                       "show all bytes of each field, not only the first eight");
  command
      ->add_option("--html", options->html,
                   "write a page to FILE that shows the bytes beside the fields instead")
      ->type_name("FILE")
      ->excludes(json)
      ->excludes(all);
  command->add_option("--skip", options->skip, "skip the first N bytes")
      ->check([](const std::string& text) { return text[0] == '-' ? "it must be 0 or more" : ""; }, "")
      ->type_name("N");
  command->footer(
      "A layout lists what the bytes hold, with commas: records, and integers between them (u8 u16 u32 u64,\n"
      "i8 to i64; u16be is big-endian). *3 after one repeats it, * at the end as long as there are bytes,\n"
      "and parentheses group: '(u16, ItemRecord)*'. Messages are numbered from [0].\n\n"
      "Exits with 1 if the bytes end too early, or if some are left.\n\n"
      "  zvuti decode PlayerSnapshot inbox/snapshot.bin\n"
      "  echo 05 00 00 00 02 00 41 42 | zvuti decode --hex --skip 4 NAME\n"
      "  zvuti decode 'u16, ItemRecord*' evening.pcap --packet 12");
  command->callback([options, &exitCode] { exitCode = Decode(*options); });
}

}  // namespace tool
