// wire_format: generates docs/wire-format.md from a template and the records' lists of rows.
//
//   wire_format TEMPLATE               prints the page
//   wire_format TEMPLATE --check FILE  exits with 1 if FILE does not contain that page
//
// Lines of the template that start with "@" are replaced:
//   @record NAME                       the rows of a record
//   @tags NAME                         the tags of an enumeration
//   @example NAME PATH=VALUE ...       the bytes of a record with these values, field by field
// The template must contain each record exactly once.
#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <exception>
#include <fstream>
#include <iomanip>
#include <iostream>
#include <set>
#include <sstream>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include <ZvUtiLib/records/Describe.h>

namespace {

/// A range of sizes in bytes, from `least` to `most`. `isOpen` means that there is no upper limit.
struct Size {
  std::size_t least = 0;
  std::size_t most = 0;
  bool isOpen = false;

  bool IsFixed() const { return !isOpen && least == most; }
  std::string Text() const {
    if (isOpen) return std::to_string(least) + " or more";
    return IsFixed() ? std::to_string(least) : std::to_string(least) + " or " + std::to_string(most);
  }
};

/// The cells of a row in the page's tables.
struct Cell {
  std::string form;
  std::string bytes;
  Size size;
};

std::string Anchored(std::string_view record) {
  std::string anchor;
  for (const char c : record) anchor += c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
  return std::string("[").append(record).append("](#").append(anchor).append(")");
}

const char* SignOf(bool isSigned) { return isSigned ? "signed" : "unsigned"; }

std::vector<zvuti::RecordRow> RowsOf(std::string_view record) {
  std::vector<zvuti::RecordRow> rows;
  const std::string name(record);
  if (!zvuti::ListRecord(name, rows)) throw std::runtime_error("there is no record " + name);
  return rows;
}

Cell CellOf(const zvuti::RecordRow& row);

// The template explains the framing of a record that has its own.
bool HasOwnFraming(const std::vector<zvuti::RecordRow>& rows) {
  return std::any_of(rows.begin(), rows.end(),
                     [](const auto& row) { return row.role != zvuti::RowRole::kField; });
}

Size SizeOf(std::string_view record) {
  Size sum;
  for (const zvuti::RecordRow& row : RowsOf(record)) {
    const Size size = CellOf(row).size;
    if (!row.condition) sum.least += size.least;
    sum.most += size.most;
    sum.isOpen = sum.isOpen || size.isOpen;
  }
  return sum;
}

bool BeginsWith(const std::string& text, const std::string& start) { return text.rfind(start, 0) == 0; }

Cell CellOf(const zvuti::RecordRow& row) {
  using zvuti::RowForm;
  const zvuti::RowType& type = row.type;
  const std::size_t bytes = type.bits / 8;
  const Size fixed = {bytes, bytes, false};
  switch (type.form) {
    case RowForm::kInteger:
      return {std::to_string(type.bits) + " bits, " + SignOf(type.isSigned), std::to_string(bytes), fixed};
    case RowForm::kByteCode:
    case RowForm::kTag:
      return {zvuti::FormText(type), std::to_string(bytes), fixed};
    case RowForm::kReserved:
      return {"reserved", std::to_string(bytes), fixed};
    case RowForm::kText:
      return {"text", "2 + length", {2, 2, true}};
    case RowForm::kSequence:
      if (type.element == RowForm::kText) return {"sequence of texts", "2 + the texts", {2, 2, true}};
      return {
          "sequence of " + Anchored(type.name), "2 + " + SizeOf(type.name).Text() + " each", {2, 2, true}};
    case RowForm::kMap:
      if (type.element == RowForm::kInteger) {
        return {std::string("map of 32 bits, ") + SignOf(type.hasSignedKeys) + " keys, " +
                    SignOf(type.isSigned) + " values",
                "4 + 8 each",
                {4, 4, true}};
      }
      return {"map of " + Anchored(type.name), "4 + " + SizeOf(type.name).Text() + " each", {4, 4, true}};
    case RowForm::kRecord:
    case RowForm::kBase:
    case RowForm::kBlock:
      break;
    case RowForm::kMapEntry:
      throw std::runtime_error("a map entry is not a row of a record");
  }
  const Size size = SizeOf(type.name);
  return {Anchored(type.name), size.Text(), size};
}

void PutRecord(std::ostream& out, const std::string& record) {
  out << "### " << record << "\n\n";
  const std::vector<zvuti::RecordRow> rows = RowsOf(record);
  if (HasOwnFraming(rows)) {
    out << "| Field | Form | Bytes |\n|---|---|---|\n";
    for (const zvuti::RecordRow& row : rows) {
      Cell cell = CellOf(row);
      if (row.role != zvuti::RowRole::kValue) cell.form = zvuti::FormText(row.type) + " bits";
      out << "| `" << row.name << "` | " << cell.form << " | " << cell.bytes << " |\n";
    }
    return;
  }
  const bool hasConditions =
      std::any_of(rows.begin(), rows.end(), [](const auto& row) { return row.condition.has_value(); });
  const Size whole = SizeOf(record);
  out << (whole.isOpen ? "At least " + std::to_string(whole.least) : whole.Text())
      << (whole.IsFixed() && whole.least == 1 ? " byte.\n\n" : " bytes.\n\n")
      << "| At | Field | Form | Bytes |" << (hasConditions ? " Present |\n" : "\n") << "|---|---|---|---|"
      << (hasConditions ? "---|\n" : "\n");
  Size at;
  for (const zvuti::RecordRow& row : rows) {
    const Cell cell = CellOf(row);
    const std::string name = row.name.empty() ? "all of " + std::string(row.type.name) : "`" + row.name + "`";
    out << "| " << (at.IsFixed() ? std::to_string(at.least) : "") << " | " << name << " | " << cell.form
        << " | " << cell.bytes << " |";
    if (hasConditions) out << (row.condition ? " if `" + row.condition->text + "` |" : " always |");
    out << "\n";
    if (!row.condition) at.least += cell.size.least;
    at.most += cell.size.most;
    at.isOpen = at.isOpen || cell.size.isOpen;
  }
}

std::string Hex(const unsigned char* bytes, std::size_t count) {
  std::string text;
  for (std::size_t i = 0; i < count; ++i) {
    char digits[4];
    std::snprintf(digits, sizeof digits, "%s%02X", i > 0 ? " " : "", bytes[i]);
    text += digits;
  }
  return text;
}

// The first row that has tags of that enumeration.
zvuti::RecordRow TagRowOf(const std::string& enumeration) {
  for (const std::string& record : zvuti::RecordNames()) {
    for (const zvuti::RecordRow& row : RowsOf(record)) {
      if (row.type.form == zvuti::RowForm::kTag && row.type.name == enumeration) return row;
    }
  }
  throw std::runtime_error("no record has tags of " + enumeration);
}

void PutTags(std::ostream& out, const std::string& enumeration) {
  out << "| Member | Tag | Bytes |\n|---|---|---|\n";
  for (const zvuti::RowTag& tag : TagRowOf(enumeration).tags) {
    unsigned char bytes[4];
    for (int i = 0; i < 4; ++i) bytes[i] = static_cast<unsigned char>(tag.tag >> (8 * i));
    char shown[16];
    std::snprintf(shown, sizeof shown, "0x%08X", tag.tag);
    out << "| `" << tag.name << "` | " << shown << " | `" << Hex(bytes, 4) << "` |\n";
  }
}

void PutExample(std::ostream& out, std::istream& words) {
  std::string record;
  words >> record;
  std::vector<zvuti::NamedValue> values;
  for (std::string word; words >> word;) {
    const std::size_t mark = word.find('=');
    if (mark == word.npos) throw std::runtime_error("an example needs PATH=VALUE, not " + word);
    values.push_back({word.substr(0, mark), word.substr(mark + 1)});
  }
  std::string bytes, problem;
  if (!zvuti::FillRecord(record, values, bytes, problem)) throw std::runtime_error(problem);
  zvuti::RecordDump dump;
  zvuti::DumpRecord(record, bytes.data(), bytes.size(), dump);
  std::size_t longestSize = 0, longestPath = 0;
  for (const zvuti::DumpRow& row : dump.rows) {
    longestSize = std::max(longestSize, row.size);
    longestPath = std::max(longestPath, row.path.size());
  }
  out << "```text\n";
  for (const zvuti::DumpRow& row : dump.rows) {
    const std::string shown =
        Hex(reinterpret_cast<const unsigned char*>(bytes.data()) + row.offset, row.size);
    out << std::right << std::setw(4) << row.offset << "  " << std::left
        << std::setw(static_cast<int>(3 * longestSize + 1)) << shown
        << std::setw(static_cast<int>(longestPath + 2)) << row.path << row.value << "\n";
  }
  out << "```\n";
}

class Page {
 public:
  std::string Make(std::istream& from) {
    std::ostringstream out;
    for (std::string line; std::getline(from, line);) {
      if (BeginsWith(line, "@")) {
        std::istringstream words(line.substr(1));
        Replace(out, words, line);
      } else {
        out << line << "\n";
      }
    }
    for (const std::string& record : zvuti::RecordNames()) {
      if (shown_.count(record) == 0)
        throw std::runtime_error("the template does not contain the record " + record);
    }
    return out.str();
  }

 private:
  void Replace(std::ostream& out, std::istream& words, const std::string& line) {
    std::string what, name;
    words >> what;
    if (what == "example") return PutExample(out, words);
    words >> name;
    if (what == "record") {
      if (!shown_.insert(name).second)
        throw std::runtime_error("the template contains the record " + name + " twice");
      return PutRecord(out, name);
    }
    if (what == "tags") return PutTags(out, name);
    throw std::runtime_error("unknown command in the template: " + line);
  }

  std::set<std::string> shown_;
};

std::string ContentOf(std::istream& file) { return {std::istreambuf_iterator<char>(file), {}}; }

int Run(const std::vector<std::string>& arguments) {
  if (arguments.size() != 1 && !(arguments.size() == 3 && arguments[1] == "--check"))
    throw std::runtime_error("usage: wire_format TEMPLATE [--check FILE]");
  std::ifstream from(arguments[0]);
  if (!from) throw std::runtime_error("cannot read " + arguments[0]);
  const std::string page = Page().Make(from);
  if (arguments.size() == 1) {
    std::cout << page;
    return 0;
  }
  std::ifstream stored(arguments[2], std::ios::binary);
  if (stored && ContentOf(stored) == page) return 0;
  std::cerr << "wire_format: " << arguments[2] << " is out of date; ./run docs rewrites it\n";
  return 1;
}

}  // namespace

int main(int count, char** arguments) {
  try {
    return Run({arguments + 1, arguments + count});
  } catch (const std::exception& problem) {
    std::cerr << "wire_format: " << problem.what() << "\n";
    return 2;
  }
}
