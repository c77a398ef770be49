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
#include <map>
#include <set>
#include <sstream>
#include <stdexcept>
#include <string>
#include <vector>

#include <ZvUtiLib/data/CStream.h>
#include <ZvUtiLib/records/Describe.h>
#include <ZvUtiLib/records/WireKinds.h>

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

std::string Anchored(const std::string& record) {
  std::string anchor;
  for (const char c : record) anchor += c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
  return "[" + record + "](#" + anchor + ")";
}

bool IsAccepted(const std::string& record, const std::string& path, const std::string& value) {
  std::string bytes, problem;
  return zvuti::FillRecord(record, {{path, value}}, bytes, problem);
}

// A field is signed if it accepts a negative value.
const char* SignOf(const std::string& record, const std::string& path) {
  return IsAccepted(record, path, "-1") ? "signed" : "unsigned";
}

std::vector<zvuti::RecordRow> RowsOf(const std::string& record) {
  std::vector<zvuti::RecordRow> rows;
  if (!zvuti::ListRecord(record, rows)) throw std::runtime_error("there is no record " + record);
  return rows;
}

Cell CellOf(const std::string& record, const zvuti::RecordRow& row);

// A bundle table does not have the usual framing; the template explains its own.
bool HasOwnFraming(const std::string& record) { return record == "CUtiBundleTable"; }

Size SizeOf(const std::string& record) {
  if (HasOwnFraming(record)) return {8, 8, true};
  Size sum;
  for (const zvuti::RecordRow& row : RowsOf(record)) {
    const Size size = CellOf(record, row).size;
    if (row.condition.empty()) sum.least += size.least;
    sum.most += size.most;
    sum.isOpen = sum.isOpen || size.isOpen;
  }
  return sum;
}

bool BeginsWith(const std::string& text, const std::string& start) { return text.rfind(start, 0) == 0; }

Cell Number(const std::string& record, const zvuti::RecordRow& row, std::size_t bytes) {
  return {row.form + " bits, " + SignOf(record, row.name), std::to_string(bytes), {bytes, bytes, false}};
}

Cell CellOf(const std::string& record, const zvuti::RecordRow& row) {
  static const std::map<std::string, std::size_t> kNumbers = {{"8", 1}, {"16", 2}, {"32", 4}, {"64", 8}};
  if (const auto number = kNumbers.find(row.form); number != kNumbers.end())
    return Number(record, row, number->second);
  if (row.form == "byte code") return {row.form, "1", {1, 1, false}};
  if (row.form == "text") return {row.form, "2 + length", {2, 2, true}};
  if (row.form == "map") {
    const char* keys = IsAccepted(record, row.name + "[-1]", "0") ? "signed" : "unsigned";
    return {std::string("map of 32 bits, ") + keys + " keys, " + SignOf(record, row.name + "[0]") + " values",
            "4 + 8 each",
            {4, 4, true}};
  }
  const std::string tag = " tag";
  if (row.form.size() > tag.size() && row.form.substr(row.form.size() - tag.size()) == tag)
    return {row.form, "4", {4, 4, false}};
  if (BeginsWith(row.form, "reserved ")) {
    const std::size_t bytes = std::stoul(row.form.substr(9));
    return {"reserved", std::to_string(bytes), {bytes, bytes, false}};
  }
  if (BeginsWith(row.form, "sequence of ")) {
    const std::string each = row.type.empty() ? "text" : SizeOf(row.type).Text();
    return {"sequence of " + (row.type.empty() ? "texts" : Anchored(row.type)),
            row.type.empty() ? "2 + the texts" : "2 + " + each + " each",
            {2, 2, true}};
  }
  if (BeginsWith(row.form, "map of "))
    return {"map of " + Anchored(row.type), "4 + " + SizeOf(row.type).Text() + " each", {4, 4, true}};
  if (row.type.empty()) throw std::runtime_error("unknown form of a row: " + row.form);
  const Size size = SizeOf(row.type);
  return {Anchored(row.type), size.Text(), size};
}

void PutRecord(std::ostream& out, const std::string& record) {
  out << "### " << record << "\n\n";
  if (HasOwnFraming(record)) {
    out << "| Field | Form | Bytes |\n|---|---|---|\n";
    for (const zvuti::RecordRow& row : RowsOf(record)) {
      const Cell cell = row.type.empty()
                            ? Cell{row.form + " bits", std::to_string(std::stoul(row.form) / 8), {}}
                            : CellOf(record, row);
      out << "| `" << row.name << "` | " << cell.form << " | " << cell.bytes << " |\n";
    }
    return;
  }
  const std::vector<zvuti::RecordRow> rows = RowsOf(record);
  const bool hasConditions =
      std::any_of(rows.begin(), rows.end(), [](const auto& row) { return !row.condition.empty(); });
  const Size whole = SizeOf(record);
  out << (whole.isOpen ? "At least " + std::to_string(whole.least) : whole.Text())
      << (whole.IsFixed() && whole.least == 1 ? " byte.\n\n" : " bytes.\n\n")
      << "| At | Field | Form | Bytes |" << (hasConditions ? " Present |\n" : "\n") << "|---|---|---|---|"
      << (hasConditions ? "---|\n" : "\n");
  Size at;
  for (const zvuti::RecordRow& row : rows) {
    const Cell cell = CellOf(record, row);
    const std::string name = row.name.empty() ? "all of " + row.type : "`" + row.name + "`";
    out << "| " << (at.IsFixed() ? std::to_string(at.least) : "") << " | " << name << " | " << cell.form
        << " | " << cell.bytes << " |";
    if (hasConditions) out << (row.condition.empty() ? " always |" : " if `" + row.condition + "` |");
    out << "\n";
    if (row.condition.empty()) at.least += cell.size.least;
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

// Members are numbered from 0. Writing a number that is not a member writes no bytes or throws.
template <class Kind>
void PutTags(std::ostream& out, const std::string& name) {
  out << "| Member | Tag | Bytes |\n|---|---|---|\n";
  for (std::uint32_t member = 0;; ++member) {
    CStreamReader stream;
    try {
      stream << static_cast<Kind>(member);
    } catch (const std::exception&) {
      return;
    }
    if (stream.Length() != 4) return;
    const std::string bytes = Hex(stream.Data(), 4);
    std::uint32_t tag = 0;
    stream >> tag;
    char shown[16];
    std::snprintf(shown, sizeof shown, "0x%08X", tag);
    out << "| `" << name << member << "` | " << shown << " | `" << bytes << "` |\n";
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
    if (what == "tags" && name == "BinaryKind") return PutTags<BinaryKind>(out, name);
    if (what == "tags" && name == "StatusKind") return PutTags<StatusKind>(out, name);
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
