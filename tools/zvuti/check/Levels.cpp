#include <cstdint>

#include "check/Report.h"
#include "check/TableTokens.h"
#include "shared/Encoding.h"
#include "shared/GbkText.h"
#include "shared/Terminal.h"

namespace tool {

void CheckLevels(Report& report, const std::string& file, const std::string& bytes) {
  report.Read("level table");
  if (!CheckForeign(report, file, bytes)) return;
  const std::string table = HasUtf8Mark(bytes) ? bytes.substr(kUtf8Mark.size()) : bytes;
  TableTokens tokens(table);
  std::size_t levels = 0;
  std::int64_t last = 0;
  for (;;) {
    const auto level = tokens.TakeNumber<int>();
    if (!level.isThere) break;
    const std::string before = "; the table ends after " + Count(levels, "level");
    if (!level.isNumber) {
      report.Add({file, level.line}, "cut", Quoted(level.text) + " is not a valid level" + before);
      break;
    }
    const auto exp = tokens.TakeNumber<std::int64_t>();
    if (!exp.isThere || !exp.isNumber) {
      report.Add({file, exp.isThere ? exp.line : level.line}, "cut",
                 (exp.isThere ? Quoted(exp.text) + " is not a valid experience for level " +
                                    std::to_string(level.value)
                              : "level " + std::to_string(level.value) + " has no experience") +
                     before);
      break;
    }
    for (const std::string& text : {level.isRunOn ? level.text : "", exp.isRunOn ? exp.text : ""}) {
      if (!text.empty()) report.Add({file, level.line}, "run-on", Quoted(text) + " is read as two tokens");
    }
    if (static_cast<std::size_t>(level.value) != levels + 1) {
      report.Add({file, level.line}, "order",
                 "level " + std::to_string(level.value) + " is where level " + std::to_string(levels + 1) +
                     " should be");
    }
    if (levels > 0 && exp.value <= last) {
      report.Add({file, exp.line}, "order",
                 "the experience " + std::to_string(exp.value) + " of level " + std::to_string(level.value) +
                     " is not above the " + std::to_string(last) + " before it");
    }
    last = exp.value;
    ++levels;
  }
  if (levels == 0) report.Add({file, 1}, "cut", "this file contains no levels");
  report.Read("level", levels);
}

}  // namespace tool
