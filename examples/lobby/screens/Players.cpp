#include <charconv>
#include <stdexcept>
#include <system_error>

#include "Files.h"
#include "Screens.h"

namespace {

std::string WithSeparators(long long value) {
  CString text;
  CUtiNumber::InsertSeparator(value, text);
  return text.GetString();
}

std::string InCapitals(const std::string& digits) {
  CString text;
  return CUtiNumber::ChangeLowerNum2UpperNum(digits.c_str(), text) ? text.GetString() : "";
}

long long Number(const std::string& text) {
  long long value = 0;
  const char* const end = text.data() + text.size();
  const auto [stop, error] = std::from_chars(text.data(), end, value);
  if (error != std::errc() || stop != end)
    throw std::runtime_error(AppFile("players.txt") + ": not a number: " + text);
  return value;
}

// An installed game must have all its files.
[[noreturn]] void FailToRead(GameId game, const char* file) {
  throw std::runtime_error("cannot read " + std::string(CUtiIO::GetGamePath(game, file)));
}

}  // namespace

void ShowPlayers(Report& report) {
  report.Section("Players");
  report.Line("%s %s %s %s %s %s", Padded("nick", 12).c_str(), Padded("game", 10).c_str(),
              Padded("score", 16).c_str(), Padded("rank", 12).c_str(), Padded("level", 6).c_str(),
              "score in capitals");
  for (const Fields& row : ReadTable("players.txt", 5)) {
    const auto game = static_cast<GameId>(Number(row[2]));
    const long long score = Number(row[3]);
    const long long experience = Number(row[4]);

    CUtiRank ranks;
    CUtiExpLevel levels;
    if (IsInstalled(game)) {
      if (!ranks.LoadRankConfig(game)) FailToRead(game, "Rank.ini");
      if (!levels.LoadLevelConfig(CUtiIO::GetGamePath(game, "level.txt").GetString()))
        FailToRead(game, "level.txt");
      report.Did(2);
    }
    report.Line("%s %s %s %s %s %s", Padded(row[1], 12).c_str(), Padded(GetGameDisplayName(game), 10).c_str(),
                Padded(WithSeparators(score), 16).c_str(), Padded(ranks.GetRank(score), 12).c_str(),
                Padded(std::to_string(levels.GetLevelByExp(experience)), 6).c_str(),
                InCapitals(row[3]).c_str());
    report.Did(2);
  }
}
