// Collects what a check finds and counts what it reads.
#pragma once

#include <cstddef>
#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace tool {

/// The position of a finding. Line and column are counted from 1; 0 means none.
struct Place {
  std::string file;
  std::size_t line = 0;
  std::size_t column = 0;
};

struct Finding {
  Place place;
  std::string kind;
  std::string message;
};

class Report {
 public:
  void Add(const Place& place, const std::string& kind, const std::string& message);
  /// Adds to the number of things read, for example of kind "rank".
  void Read(const std::string& what, std::size_t count = 1) { read_[what] += count; }

  const std::vector<Finding>& Findings() const { return findings_; }
  std::size_t CountOf(const std::string& what) const;

 private:
  std::vector<Finding> findings_;
  std::map<std::string, std::size_t> read_;
};

/// A kind of finding, and what it means.
struct Kind {
  const char* name;
  const char* meaning;
};
inline constexpr Kind kKinds[] = {
    {"unreadable", "a file that cannot be read"},
    {"missing", "a game's folder without one of its files"},
    {"stray", "a folder or file whose name the library does not look for"},
    {"encoding", "text that is not GBK"},
    {"cut", "a table that ends early or is empty"},
    {"run-on", "a number with other text directly after it"},
    {"order", "ranks or levels that are not in ascending order"},
    {"duplicate", "a name, key, section or word that occurs twice"},
    {"sentinel", "a rank table without its end word"},
    {"task", "a task without a name or a valid number"},
    {"dead-word", "a forbidden word that valid text never contains"},
    {"odd-word", "a forbidden word with spaces around it, or with half a character"},
    {"hidden-word", "a forbidden word that contains another one"},
    {"xml", "a document that the library refuses, or text in it that is not in GBK"},
};

/// Converts GBK to UTF-8 in quotes, shortened if it is long.
std::string Quoted(std::string_view gbk);

/// Reports that the whole file is in another encoding, and returns false, or returns true.
bool CheckForeign(Report& report, const std::string& file, std::string_view bytes);
/// Reports each line that is not GBK. If the whole file is in another encoding, reports that once and returns
/// false; nothing else in it needs to be reported.
bool CheckEncoding(Report& report, const std::string& file, std::string_view bytes);

// Each of these checks one file. `file` is its path, `bytes` its content.
void CheckRanks(Report& report, const std::string& file, const std::string& bytes);
void CheckLevels(Report& report, const std::string& file, const std::string& bytes);
void CheckTasks(Report& report, const std::string& file, const std::string& bytes);
void CheckWords(Report& report, const std::string& file, const std::string& bytes);
void CheckXml(Report& report, const std::string& file, const std::string& bytes);

}  // namespace tool
