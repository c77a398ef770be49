// What a check has found, and what it has read.
#pragma once

#include <cstddef>
#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace tool {

/// Where a finding stands: a file, in it a line and a column counted from 1, 0 where there is none.
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
  /// Counts things that were read: "rank", "words".
  void Read(const std::string& what, std::size_t count = 1) { read_[what] += count; }

  const std::vector<Finding>& Findings() const { return findings_; }
  std::size_t CountOf(const std::string& what) const;

 private:
  std::vector<Finding> findings_;
  std::map<std::string, std::size_t> read_;
};

/// The kinds of findings, with a few words about each.
struct Kind {
  const char* name;
  const char* meaning;
};
inline constexpr Kind kKinds[] = {
    {"unreadable", "a file that cannot be read"},
    {"missing", "a game's folder without one of its files"},
    {"stray", "a folder or file under a name that the library does not look for"},
    {"encoding", "text that is no GBK"},
    {"cut", "a record that cannot be read whole; it ends its table"},
    {"run-on", "a number that runs into other text"},
    {"order", "a rank or level that does not rise above the one before it"},
    {"duplicate", "a name, key, section or word that stands twice"},
    {"sentinel", "a rank table without its end word"},
    {"task", "a task that no number reaches, or without a name"},
    {"dead-word", "a forbidden word that is never found in sound text"},
    {"odd-word", "a forbidden word with blanks around it, or with half a character"},
    {"hidden-word", "a forbidden word that holds another one"},
    {"xml", "a document that the library refuses, or text in it that GBK has not"},
};

/// Quoted UTF-8 of GBK bytes, cut where they are many.
std::string Quoted(std::string_view gbk);

/// Reports what in the bytes of a file is no GBK, line by line.
void CheckEncoding(Report& report, const std::string& file, std::string_view bytes);

// The checks of single files; `file` is the path as messages have it.
void CheckRanks(Report& report, const std::string& file, const std::string& bytes);
void CheckLevels(Report& report, const std::string& file, const std::string& bytes);
void CheckTasks(Report& report, const std::string& file, const std::string& bytes);
void CheckWords(Report& report, const std::string& file, const std::string& bytes);
void CheckXml(Report& report, const std::string& file, const std::string& bytes);

}  // namespace tool
