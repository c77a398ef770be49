#include <cstdint>
#include <map>
#include <string_view>

#include <ZvUtiLib/platform/CString.h>

#include "check/Report.h"
#include "check/TableTokens.h"
#include "shared/Encoding.h"
#include "shared/GbkText.h"
#include "shared/Terminal.h"

namespace tool {
namespace {

constexpr char kEndWord[] = "[INTRODUCE]";

bool LooksLikeEndWord(const std::string& name) {
  CString folded(name.c_str());
  return folded.MakeUpper().Find("INTRODUCE") >= 0;
}

}  // namespace

void CheckRanks(Report& report, const std::string& file, const std::string& bytes) {
  report.Read("rank table");
  if (!CheckForeign(report, file, bytes)) return;
  std::string_view text = bytes;
  if (HasUtf8Mark(text)) {
    report.Add({file, 1}, "encoding", "the UTF-8 byte order mark becomes part of the first rank's name");
    text.remove_prefix(kUtf8Mark.size());
  }
  CheckEncoding(report, file, text);
  TableTokens tokens(bytes);
  std::map<std::string, std::size_t> lines;  // of the names
  std::size_t ranks = 0, line = 0;
  std::string name, lastName;
  std::int64_t last = 0;
  bool isEnded = false;
  while (tokens.TakeWord(name, line)) {
    isEnded = name == kEndWord;
    if (isEnded) break;
    if (LooksLikeEndWord(name)) {
      report.Add(
          {file, line}, "sentinel",
          Quoted(name) + " does not end the table; only " + kEndWord + ", in capitals and by itself, does");
    }
    const auto threshold = tokens.TakeNumber<std::int64_t>();
    if (!threshold.isThere || !threshold.isNumber) {
      const std::string why = !threshold.isThere ? "the rank " + Quoted(name) + " has no threshold"
                                                 : Quoted(threshold.text) + " after the rank " +
                                                       Quoted(name) + " is not a valid threshold";
      report.Add({file, threshold.isThere ? threshold.line : line}, "cut",
                 why + "; the table ends after " + Count(ranks, "rank"));
      break;
    }
    if (threshold.isRunOn) {
      report.Add({file, threshold.line}, "run-on",
                 "only the number at the start of " + Quoted(threshold.text) +
                     " is the threshold; the rest starts the next name");
    }
    if (ranks > 0 && threshold.value <= last) {
      report.Add({file, threshold.line}, "order",
                 "the threshold " + std::to_string(threshold.value) + " of " + Quoted(name) +
                     " is not above the " + std::to_string(last) + " of " + Quoted(lastName));
    }
    const auto [known, isNew] = lines.emplace(name, line);
    if (!isNew) {
      report.Add({file, line}, "duplicate",
                 "the rank " + Quoted(name) + " is already in line " + std::to_string(known->second));
    }
    last = threshold.value;
    lastName = name;
    ++ranks;
  }
  if (!isEnded) {
    report.Add(
        {file, tokens.LastLine()}, "sentinel",
        std::string("the table has no ") + kEndWord + " at its end: text added here would be read as ranks");
  }
  if (ranks == 0) report.Add({file, 1}, "cut", "this file contains no ranks");
  report.Read("rank", ranks);
}

}  // namespace tool
