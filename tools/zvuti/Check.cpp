// zvuti check: reads a client's folder as the library does, and reports what the library does not.
#include <strings.h>

#include <algorithm>
#include <filesystem>
#include <iostream>
#include <map>
#include <set>
#include <string>
#include <tuple>
#include <vector>

#include <ZvUtiLib/GameCatalogue.h>

#include "Commands.h"
#include "check/Report.h"
#include "shared/Files.h"
#include "shared/HostFiles.h"
#include "shared/Terminal.h"

namespace tool {
namespace {

namespace fs = std::filesystem;

constexpr GameId kMostGames = 4096;  // ids looked up in the catalogue

struct Options {
  std::string folder;
  std::vector<std::string> words, ignored;
  std::string levels = "level.txt";
};

using CheckFile = void (*)(Report&, const std::string& file, const std::string& bytes);

bool IsSameButCase(const std::string& a, const std::string& b) {
  return strcasecmp(a.c_str(), b.c_str()) == 0;
}

std::vector<fs::path> EntriesOf(const fs::path& folder) {
  std::vector<fs::path> entries;
  std::error_code error;
  for (fs::directory_iterator it(folder, error), end; !error && it != end; it.increment(error))
    entries.push_back(it->path());
  if (error) throw Failure("cannot read " + TextOf(folder) + ": " + error.message());
  std::sort(entries.begin(), entries.end());
  return entries;
}

void CheckOne(Report& report, const std::string& file, CheckFile check) {
  std::error_code error;
  const fs::file_status status = fs::status(PathOf(file), error);
  if (fs::exists(status) && !fs::is_regular_file(status) && !fs::is_directory(status)) {
    // Reading a pipe would wait, and a device may never end.
    report.Add({file}, "unreadable", "this is a pipe or a device; the library reads only regular files");
    return;
  }
  std::string bytes;
  try {
    bytes = ReadAll(file);
  } catch (const Failure& e) {
    report.Add({file}, "unreadable", e.what());
    return;
  }
  check(report, file, bytes);
}

class AppFolder {
 public:
  AppFolder(const Options& options, Report& report) : options_(options), report_(report) {
    for (GameId id = 0; id < kMostGames; ++id) {
      if (GetGameKind(id) != GameKindUnknown) games_.insert(GetGameCodeName(id));
    }
  }

  void Check() {
    const fs::path root = PathOf(options_.folder);
    for (const fs::path& entry : EntriesOf(root)) {
      if (!fs::is_directory(entry)) continue;
      const std::string name = TextOf(entry.filename());
      if (games_.count(name) != 0) {
        CheckGame(entry);
      } else {
        CheckStranger(entry, name);
      }
    }
    if (options_.words.empty() && fs::exists(root / "words.txt"))
      CheckOne(report_, Named(root / "words.txt"), CheckWords);
    for (const std::string& words : options_.words)
      CheckOne(report_, Named(root / PathOf(words)), CheckWords);
    CheckDocuments(root);
  }

 private:
  // The name of a file in findings. On Windows it has the separators that the user wrote.
  std::string Named(const fs::path& path) const {
    const bool isNative = options_.folder.find('\\') != std::string::npos;
    return isNative ? TextOf(path) : TextOf(path.generic_string<fs::path::value_type>());
  }

  std::map<std::string, CheckFile> GameFiles() const {
    return {{"Rank.ini", CheckRanks}, {options_.levels, CheckLevels}, {"Task.ini", CheckTasks}};
  }

  void CheckGame(const fs::path& folder) {
    report_.Read("game");
    const std::vector<fs::path> entries = EntriesOf(folder);
    for (const auto& [name, check] : GameFiles()) {
      const fs::path path = folder / PathOf(name);
      if (fs::exists(path)) {
        CheckOne(report_, Named(path), check);
        continue;
      }
      const auto near = std::find_if(entries.begin(), entries.end(), [&wanted = name](const fs::path& entry) {
        return IsSameButCase(TextOf(entry.filename()), wanted);
      });
      if (near != entries.end()) {
        report_.Add({Named(*near)}, "stray",
                    "the library looks for " + name + "; on Linux it does not find this file");
      } else {
        report_.Add({Named(folder)}, "missing",
                    "there is no " + name + "; the library acts as if it were empty");
      }
    }
  }

  void CheckStranger(const fs::path& folder, const std::string& name) {
    const auto near = std::find_if(games_.begin(), games_.end(),
                                   [&](const std::string& game) { return IsSameButCase(game, name); });
    if (near != games_.end()) {
      report_.Add({Named(folder)}, "stray",
                  "the library looks for " + *near + "; on Linux it does not find this folder");
      return;
    }
    for (const auto& [file, check] : GameFiles()) {
      if (!fs::exists(folder / PathOf(file))) continue;
      report_.Add({Named(folder)}, "stray",
                  "no game has this code name, so the library never reads this folder");
      return;
    }
  }

  void CheckDocuments(const fs::path& root) {
    std::vector<std::string> documents;
    std::error_code error;
    for (fs::recursive_directory_iterator it(root, fs::directory_options::skip_permission_denied, error), end;
         !error && it != end; it.increment(error)) {
      if (it->is_regular_file() && IsSameButCase(TextOf(it->path().extension()), ".xml"))
        documents.push_back(Named(it->path()));
    }
    std::sort(documents.begin(), documents.end());
    for (const std::string& document : documents) CheckOne(report_, document, CheckXml);
  }

  const Options& options_;
  Report& report_;
  std::set<std::string> games_;
};

void Print(const Finding& finding) {
  const Place& place = finding.place;
  std::string where = place.file;
  if (place.line > 0) where += ":" + std::to_string(place.line);
  if (place.column > 0) where += ":" + std::to_string(place.column);
  std::cout << Styled(Style::kBold, where + ":") << " " << finding.message << " "
            << Styled(Style::kDim, "[" + finding.kind + "]") << '\n';
}

std::string SummaryOf(const Report& report) {
  const auto both = [&](const char* table, const char* row) {
    return ", " + Count(report.CountOf(table), table) + " (" + Count(report.CountOf(row), row) + ")";
  };
  return Count(report.CountOf("game"), "game") + both("rank table", "rank") + both("level table", "level") +
         both("task file", "task") + both("word list", "word") + ", " +
         Count(report.CountOf("XML document"), "XML document");
}

int Check(const Options& options) {
  if (!fs::is_directory(PathOf(options.folder))) throw Failure("there is no folder " + options.folder);
  Report report;
  AppFolder(options, report).Check();
  std::vector<Finding> findings;
  for (const Finding& finding : report.Findings()) {
    const auto& ignored = options.ignored;
    if (std::find(ignored.begin(), ignored.end(), finding.kind) == ignored.end()) findings.push_back(finding);
  }
  std::stable_sort(findings.begin(), findings.end(), [](const Finding& a, const Finding& b) {
    return std::tie(a.place.file, a.place.line, a.place.column) <
           std::tie(b.place.file, b.place.line, b.place.column);
  });
  for (const Finding& finding : findings) Print(finding);
  const std::size_t tables =
      report.CountOf("game") + report.CountOf("word list") + report.CountOf("XML document");
  if (tables == 0 && findings.empty()) {
    throw Failure(options.folder +
                  " contains nothing that a client reads: no game folder, no words.txt, no XML");
  }
  std::cout << SummaryOf(report) << ": "
            << (findings.empty() ? "nothing found" : Count(findings.size(), "finding")) << '\n';
  return findings.empty() ? kOk : kFound;
}

}  // namespace

void AddCheck(CLI::App& program, int& exitCode) {
  auto options = std::make_shared<Options>();
  CLI::App* command = program.add_subcommand(
      "check", "report what the library silently accepts or drops in a client's folder");
  command->add_option("APPDIR", options->folder, "the folder of the client's program")
      ->required()
      ->type_name("");
  command
      ->add_option("--words", options->words,
                   "a file of forbidden words in APPDIR (words.txt); may be repeated")
      ->type_name("NAME")
      ->expected(1)
      ->take_all();
  command->add_option("--levels", options->levels, "name of the games' level tables (level.txt)")
      ->type_name("NAME");
  std::set<std::string> kinds;
  std::string list;
  for (const Kind& kind : kKinds) {
    kinds.insert(kind.name);
    list += std::string("  ") + Left(kind.name, 13) + kind.meaning + "\n";
  }
  command->add_option("--ignore", options->ignored, "do not report this kind of finding; may be repeated")
      ->check(CLI::IsMember(kinds).description(""))
      ->type_name("KIND")
      ->expected(1)
      ->take_all();
  command->footer(
      "Reads Rank.ini, the level table and Task.ini of each game, the forbidden words, and the XML\n"
      "documents in all folders. Prints file:line: message [kind]. Exits with 1 if something was found.\n\n"
      "Kinds of findings:\n\n" +
      list + "\n  zvuti check /srv/lobby\n  zvuti check . --words chat.txt --ignore hidden-word");
  command->callback([options, &exitCode] { exitCode = Check(*options); });
}

}  // namespace tool
