#include <algorithm>
#include <charconv>
#include <map>
#include <optional>
#include <string_view>

#include <ZvUtiLib/platform/CString.h>

#include "check/Report.h"
#include "shared/Encoding.h"
#include "shared/GbkText.h"
#include "shared/Terminal.h"

namespace tool {
namespace {

constexpr char kSection[] = "AUTOTASK";

std::string_view Trimmed(std::string_view text) {
  constexpr std::string_view kBlanks = " \t\v\f";
  const std::size_t first = text.find_first_not_of(kBlanks);
  if (first == text.npos) return {};
  return text.substr(first, text.find_last_not_of(kBlanks) + 1 - first);
}

std::string Folded(std::string_view text) { return CString(text).MakeUpper().GetString(); }

// Returns true if the key is a number in the form that the library looks up: "1", but not "01" or "+1".
bool IsTaskNumber(std::string_view key) {
  int number = 0;
  const auto [end, error] = std::from_chars(key.data(), key.data() + key.size(), number);
  return error == std::errc() && end == key.data() + key.size() && std::to_string(number) == key;
}

class TaskFile {
 public:
  TaskFile(Report& report, const std::string& file) : report_(report), file_(file) {}

  void Take(std::string_view line, std::size_t number) {
    line = Trimmed(line.substr(0, line.find('\0')));
    if (line.empty() || line.front() == ';') return;
    if (line.front() == '[') return TakeSection(line, number);
    if (!isInside_) return;
    const std::size_t equals = line.find('=');
    if (equals == line.npos) {
      Add(number, "task", Quoted(line) + " has no '=' and is ignored");
      return;
    }
    const std::string key(Trimmed(line.substr(0, equals)));
    const std::string_view value = Trimmed(line.substr(equals + 1));
    if (!IsTaskNumber(key)) {
      Add(number, "task",
          "the key " + Quoted(key) + " is not a task number, so the name " + Quoted(value) +
              " is never shown");
      return;
    }
    const auto [known, isNew] = keys_.emplace(key, number);
    if (!isNew) {
      Add(number, "duplicate",
          "task " + key + " already has a name in line " + std::to_string(known->second) +
              "; this one is never shown");
    } else if (value.empty() || value == "\"\"" || value == "''") {
      Add(number, "task", "task " + key + " has no name");
    }
  }

  void End() {
    if (sectionLine_ == 0) Add(0, "task", "there is no section [AutoTask], so no task has a name");
    report_.Read("task", keys_.size());
  }

 private:
  void TakeSection(std::string_view line, std::size_t number) {
    const CString text(line);
    const int close = text.Find("]");
    const std::string_view name =
        Trimmed(line.substr(1, close < 0 ? line.npos : static_cast<std::size_t>(close) - 1));
    isInside_ = Folded(name) == kSection;
    if (!isInside_) return;
    if (close < 0) Add(number, "task", "the section's name has no closing bracket");
    if (sectionLine_ != 0) {
      Add(number, "duplicate",
          "the section [AutoTask] is already in line " + std::to_string(sectionLine_) +
              "; this one is ignored");
      isInside_ = false;
    } else {
      sectionLine_ = number;
    }
  }

  void Add(std::size_t line, const char* kind, const std::string& message) {
    report_.Add({file_, line}, kind, message);
  }

  Report& report_;
  const std::string& file_;
  std::map<std::string, std::size_t> keys_;  // and the line of each
  std::size_t sectionLine_ = 0;
  bool isInside_ = false;
};

// Returns the text as the library reads it: UTF-16 with a byte order mark becomes GBK, a UTF-8 mark is
// dropped. Returns nothing if it is in another encoding.
std::optional<std::string> TextOf(Report& report, const std::string& file, const std::string& bytes) {
  if (bytes.compare(0, 2, "\xFF\xFE") == 0) {
    std::string utf8;
    const bool isSound = FromNamed("utf-16le", bytes, utf8);
    const std::size_t foreign = isSound ? FindForeign(utf8) : 0;
    if (foreign == utf8.npos) return ToGbk(utf8, file);
    report.Add(
        {file, 1 + static_cast<std::size_t>(
                       std::count(utf8.begin(), utf8.begin() + static_cast<std::ptrdiff_t>(foreign), '\n'))},
        "encoding",
        isSound ? NameOfFirst(std::string_view(utf8).substr(foreign)) + " is not in GBK" : "invalid UTF-16");
    return std::string();
  }
  std::string text = HasUtf8Mark(bytes) ? bytes.substr(kUtf8Mark.size()) : bytes;
  if (!CheckEncoding(report, file, text)) return std::nullopt;
  return text;
}

}  // namespace

void CheckTasks(Report& report, const std::string& file, const std::string& bytes) {
  report.Read("task file");
  const std::optional<std::string> text = TextOf(report, file, bytes);
  if (!text) return;
  TaskFile tasks(report, file);
  std::size_t line = 1;
  for (std::string_view rest = *text; !rest.empty(); ++line) {
    const std::size_t length = std::min(rest.find_first_of("\r\n"), rest.size());
    tasks.Take(rest.substr(0, length), line);
    const bool isPair = rest.substr(length, 2) == "\r\n";
    rest.remove_prefix(std::min(length + (isPair ? 2 : 1), rest.size()));
  }
  tasks.End();
}

}  // namespace tool
