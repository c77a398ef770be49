// zvuti mask: masks the forbidden words in a text, or counts them.
#include <algorithm>
#include <iostream>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include <ZvUtiLib/CUtiBlackList.h>
#include <ZvUtiLib/gbk/Conversion.h>

#include "Commands.h"
#include "shared/Encoding.h"
#include "shared/Files.h"
#include "shared/GbkText.h"
#include "shared/Progress.h"
#include "shared/Terminal.h"
#include "shared/WordFile.h"

namespace tool {
namespace {

struct Options {
  std::string words, file, out, from;
  bool hasCounts = false;
};

bool IsFile(const Options& options) { return !options.file.empty() && options.file != "-"; }

// Returns the text in GBK. Without --from, a file is GBK and standard input is UTF-8.
std::string ReadText(const Options& options) {
  std::string text = ReadAll(options.file);
  if (options.from.empty() ? IsFile(options) : options.from == "gbk") return text;
  std::string gbk;
  std::size_t line = 0;
  for (std::string_view rest = text; !rest.empty();) {
    const std::size_t length = std::min(rest.find('\n'), rest.size() - 1) + 1;
    const std::string where = NameOf(options.file) + ", line " + std::to_string(++line);
    if (!zvuti::IsValidUtf8(rest.substr(0, length)))
      throw Failure(where + ": not UTF-8; use --from gbk if the text is GBK");
    gbk += ToGbk(rest.substr(0, length), where);
    rest.remove_prefix(length);
  }
  return gbk;
}

// Calls visit(line, end) for each line; `end` is the line end, a zero byte or empty.
template <class Visit>
void VisitLines(std::string_view text, Visit visit) {
  constexpr std::string_view kEnds("\n\0", 2);
  Progress progress(text.size());
  for (std::size_t at = 0; at < text.size();) {
    const std::size_t end = std::min(text.find_first_of(kEnds, at), text.size());
    const std::size_t next = std::min(end + 1, text.size());
    visit(std::string(text.substr(at, end - at)), text.substr(end, next - end));
    at = next;
    progress.Reach(at);
  }
}

int PrintCounts(const CUtiBlackList& list, const WordFile& file, std::string_view text) {
  struct Tally {
    std::string shown;
    std::size_t count = 0;
  };
  std::map<CString, Tally> tallies;
  for (const Word& word : file.words) {
    if (!word.text.empty()) tallies.try_emplace(word.folded, Tally{Shown(word.text), 0});
  }
  std::size_t lines = 0, hitLines = 0, all = 0;
  VisitLines(text, [&](const std::string& line, std::string_view) {
    ++lines;
    if (list.IsMatched(line.c_str()) == 0) return;
    ++hitLines;
    CString folded(line.c_str());
    folded.MakeUpper();
    for (auto& [word, tally] : tallies) tally.count += Occurrences(folded, word);
  });
  std::vector<Tally> found;
  for (const auto& [word, tally] : tallies) {
    if (tally.count > 0) found.push_back(tally);
    all += tally.count;
  }
  std::stable_sort(found.begin(), found.end(),
                   [](const Tally& a, const Tally& b) { return a.count > b.count; });
  for (const Tally& tally : found)
    std::cout << Right(std::to_string(tally.count), 8) << "  " << tally.shown << '\n';
  std::cout << Right(std::to_string(all), 8) << "  in total, of " << Count(found.size(), "word") << ", in "
            << hitLines << " of " << Count(lines, "line") << '\n';
  return kOk;
}

int MaskText(const CUtiBlackList& list, const Options& options, std::string_view text) {
  std::string all;
  VisitLines(text, [&](const std::string& line, std::string_view end) {
    CString masked;
    list.ReplaceBlackWord(line.c_str(), masked);
    const std::string_view result(masked.GetString(), static_cast<std::size_t>(masked.GetLength()));
    if (!options.out.empty()) {
      all.append(result).append(end);
    } else {
      std::cout << Shown(result) << end;
    }
  });
  if (!options.out.empty()) WriteAll(options.out, all);
  return kOk;
}

// Says that a list or a text is not what the library reads. Returns true if it said so.
bool IsForeign(const std::string& name, const std::string& problem) {
  if (!problem.empty()) Say(name + " " + problem);
  return !problem.empty();
}

int Mask(const Options& options) {
  const std::string bytes = ReadAll(options.words);  // its failure gives the reason; the library's does not
  CUtiBlackList list;
  if (list.Load(LibraryFile(options.words, bytes).Path()) == 0)
    throw Failure(options.words + " is not a regular file");
  bool isForeign = IsForeign(options.words, ForeignEncoding(bytes));
  const std::string text = ReadText(options);
  if (!isForeign && HasUtf8Mark(bytes)) {
    isForeign =
        IsForeign(options.words, "starts with a UTF-8 byte order mark, which becomes part of the first word");
  }
  if (options.from.empty() && IsFile(options) && IsForeign(options.file, ForeignEncoding(text)))
    isForeign = true;
  if (list.IsLoaded() == 0) Say(options.words + " contains no words");
  const int code =
      options.hasCounts ? PrintCounts(list, ParseWords(bytes), text) : MaskText(list, options, text);
  return list.IsLoaded() == 0 || isForeign ? int{kFound} : code;
}

}  // namespace

void AddMask(CLI::App& program, int& exitCode) {
  auto options = std::make_shared<Options>();
  CLI::App* command = program.add_subcommand("mask", "mask forbidden words in text, or count them");
  command->add_option("WORDS", options->words, "the forbidden words: GBK, one per line")
      ->required()
      ->type_name("");
  command->add_option("FILE", options->file, "the text in GBK; default is standard input, in UTF-8")
      ->type_name("");
  command->add_flag("--count", options->hasCounts, "print how often each word occurs, most frequent first");
  command->add_option("--from", options->from, "encoding of the text, gbk or utf-8")
      ->check(CLI::IsMember({"gbk", "utf-8"}, CLI::ignore_case))
      ->type_name("ENC");
  CLI::Option* out =
      command->add_option("-o,--output", options->out, "write to FILE, in GBK")->type_name("FILE");
  out->excludes("--count");
  command->footer(
      "Masks each line separately, like a chat message. Bytes that are not text are shown as \\x and two\n"
      "digits; -o writes them unchanged. Exits with 1 if the list or the file is not in GBK.\n\n"
      "  zvuti mask words.txt chat.txt\n"
      "  zvuti mask words.txt --count < evening.txt");
  command->callback([options, &exitCode] { exitCode = Mask(*options); });
}

}  // namespace tool
