// zvuti diff: compares two messages field by field.
#include <algorithm>
#include <iostream>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include "Commands.h"
#include "decode/Layout.h"
#include "decode/Messages.h"
#include "input/Input.h"
#include "shared/Files.h"
#include "shared/GbkText.h"
#include "shared/Terminal.h"

namespace tool {
namespace {

constexpr std::size_t kWidestValue = 40;  // of a column; longer values are not padded

struct Options {
  std::string layout;
  Input a, b;
  bool isJson = false;
};

struct Difference {
  std::string path;
  const zvuti::DumpRow* a = nullptr;  ///< null if only the other one has the field
  const zvuti::DumpRow* b = nullptr;
};

// Bytes that are decoded, and their rows by path. A path occurs more than once if the keys of a map do.
struct Side {
  Side(const Layout& layout, const Input& input)
      : bytes(ReadBytes(input)), messages(ReadMessages(layout, bytes)), rows(RowsOf(messages)) {
    for (const zvuti::DumpRow& row : rows) byPath[row.path].push_back(&row);
  }

  std::string bytes;
  Messages messages;
  std::vector<zvuti::DumpRow> rows;
  std::map<std::string, std::vector<const zvuti::DumpRow*>> byPath;
};

// Returns row number `index` with that path, or null.
const zvuti::DumpRow* RowAt(const Side& side, const std::string& path, std::size_t index) {
  const auto found = side.byPath.find(path);
  return found == side.byPath.end() || index >= found->second.size() ? nullptr : found->second[index];
}

// The fields that differ, in the order of `a`; those that only `b` has come last.
std::vector<Difference> DifferencesOf(const Side& a, const Side& b) {
  std::vector<Difference> differences;
  std::map<std::string, std::size_t> seen;
  for (const zvuti::DumpRow& row : a.rows) {
    const zvuti::DumpRow* const other = RowAt(b, row.path, seen[row.path]++);
    if (!other || other->value != row.value) differences.push_back({row.path, &row, other});
  }
  seen.clear();
  for (const zvuti::DumpRow& row : b.rows) {
    if (!RowAt(a, row.path, seen[row.path]++)) differences.push_back({row.path, nullptr, &row});
  }
  return differences;
}

std::string ValueShown(const zvuti::DumpRow* row) {
  if (!row) return "-";
  std::string date = DateOf(*row);
  if (!date.empty()) return date;
  return row->type.form == zvuti::RowForm::kText ? std::string("\"").append(Shown(row->value)).append("\"")
                                                 : row->value;
}

void PrintTable(const std::vector<Difference>& differences) {
  std::size_t path = 5, value = 1;
  for (const Difference& difference : differences) {
    path = std::max(path, difference.path.size());
    value = std::max(value, std::min(ValueShown(difference.a).size(), kWidestValue));
  }
  std::cout << Styled(Style::kDim, Left("field", path) + "  " + Left("A", value) + "  B") << '\n';
  for (const Difference& difference : differences) {
    std::cout << Styled(Style::kBold, Left(difference.path, path)) << "  "
              << Left(ValueShown(difference.a), value) << "  " << ValueShown(difference.b) << '\n';
  }
}

Json ValueOf(const zvuti::DumpRow* row) {
  if (!row) return nullptr;
  const bool isNumber = row->value.find_first_not_of("-0123456789") == row->value.npos &&
                        row->type.form != zvuti::RowForm::kText &&
                        row->type.form != zvuti::RowForm::kReserved;
  return isNumber && DateOf(*row).empty() ? Json::parse(row->value)
                                          : Json(isNumber ? DateOf(*row) : Shown(row->value));
}

void PrintJson(const std::vector<Difference>& differences) {
  Json all = Json::array();
  for (const Difference& difference : differences) {
    all.push_back({{"path", difference.path}, {"a", ValueOf(difference.a)}, {"b", ValueOf(difference.b)}});
  }
  std::cout << all.dump(2) << '\n';
}

// Says what is missing or left in one of them. Returns true if something is.
bool Report(const Side& side, const Input& input) {
  const std::string name = NameOf(input.file);
  const std::size_t left = side.bytes.size() - side.messages.size;
  if (!side.messages.problem.empty()) Say(name + ": " + side.messages.problem);
  if (side.messages.problem.empty() && left > 0)
    Say(name + ": " + Count(left, "byte") + " left after the decoded ones");
  return !side.messages.problem.empty() || left > 0;
}

int Diff(Options options) {
  const Layout layout = ParseLayout(options.layout);
  const std::vector<std::size_t> packets = options.a.packets;
  if (packets.size() > 2) throw Failure("--packet takes one number, or one for each of A and B");
  if (packets.size() == 2) {
    options.a.packets = {packets[0]};
    options.b.packets = {packets[1]};
  } else {
    options.b.packets = packets;
  }
  options.b.isHex = options.a.isHex;
  const auto isInput = [](const Input& input) { return input.file.empty() || input.file == "-"; };
  if (isInput(options.a) && isInput(options.b)) throw Failure("only one of A and B can be standard input");
  const Side a(layout, options.a), b(layout, options.b);
  const std::vector<Difference> differences = DifferencesOf(a, b);
  if (options.isJson) {
    PrintJson(differences);
  } else if (!differences.empty()) {
    PrintTable(differences);
  }
  const bool isPartA = Report(a, options.a), isPartB = Report(b, options.b);
  return differences.empty() && !isPartA && !isPartB ? kOk : kFound;
}

}  // namespace

void AddDiff(CLI::App& program, int& exitCode) {
  auto options = std::make_shared<Options>();
  CLI::App* command = program.add_subcommand("diff", "compare the bytes of two messages field by field");
  command
      ->add_option("RECORD", options->layout,
                   "name of the record, see 'zvuti records', or a layout as for 'zvuti decode'")
      ->required()
      ->type_name("");
  command->add_option("A", options->a.file, "the bytes of one; - is standard input")
      ->required()
      ->type_name("");
  command->add_option("B", options->b.file, "the bytes of the other")->required()->type_name("");
  AddInputOptions(*command, options->a);
  command->add_flag("--json", options->isJson, "print JSON");
  command->footer(
      "Prints the fields that differ with their values, - where there is no such field, and nothing if none\n"
      "does. Elements are compared by their index, entries of maps by their key. --packet 3,7 compares the\n"
      "payloads of packet 3 of A and packet 7 of B. Exits with 1 if a field differs, or if A or B ends too\n"
      "early or has more bytes.\n\n"
      "  zvuti diff ItemRecord before.bin after.bin\n"
      "  zvuti diff 'u16, ItemRecord*' day.pcap day.pcap --packet 3,7");
  command->callback([options, &exitCode] { exitCode = Diff(*options); });
}

}  // namespace tool
