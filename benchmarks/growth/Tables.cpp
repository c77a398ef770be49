// The files of a client's folder.
#include <memory>

#include <ZvUtiLib/CUtiExpLevel.h>
#include <ZvUtiLib/CUtiRank.h>
#include <ZvUtiLib/CUtiTaskAuto.h>
#include <ZvUtiLib/GameCatalogue.h>
#include <ZvUtiLib/platform/CKxIniFileReader.h>

#include "benchmarks/growth/Growth.h"

namespace growth {
namespace {

constexpr GameId kGame = 1;

Work LoadLevels(const std::string& bytes) {
  const std::string path = WriteFile("level.txt", bytes);
  return {bytes.size(), [path] { CUtiExpLevel().LoadLevelConfig(path); }};
}

std::string Levels(std::size_t count) {
  std::string text;
  for (std::size_t i = 1; i <= count; ++i) text += std::to_string(i) + " " + std::to_string(i * 10) + "\n";
  return text;
}

Work FindLevel(std::size_t count) {
  auto levels = std::make_shared<CUtiExpLevel>();
  levels->LoadLevelConfig(WriteFile("level.txt", Levels(count)));
  return {count * 8, [levels] {
            if (levels->GetLevelByExp(INT64_MAX) < 0 || levels->GetExpByLevel(-1) < 0)
              levels->LoadLevelConfig("");
          }};
}

Work LoadRanks(const std::string& bytes) {
  WriteFile(GetGameCodeName(kGame) + "/Rank.ini", bytes);
  return {bytes.size(), [] { CUtiRank().LoadRankConfig(kGame); }};
}

Work FindRank(std::size_t bytes) {
  WriteFile(GetGameCodeName(kGame) + "/Rank.ini", Filled("name 10\n", bytes));
  auto ranks = std::make_shared<CUtiRank>();
  ranks->LoadRankConfig(kGame);
  return {bytes, [ranks] { ranks->GetRank(0); }};
}

Work LoadTasks(const std::string& bytes) {
  WriteFile(GetGameCodeName(kGame) + "/Task.ini", bytes);
  return {bytes.size(), [] { CUtiTaskAuto().Load(kGame); }};
}

Work ReadIni(const std::string& bytes) {
  const std::string path = WriteFile("some.ini", bytes);
  return {bytes.size(), [path] { CKxIniFileReaderSuite().FindIniFileReader(path.c_str()); }};
}

std::string Keys(std::size_t bytes, const char* before, const char* after) {
  std::string text = "[Task]\n";
  for (std::size_t i = 0; text.size() < bytes; ++i) text += before + std::to_string(i) + after;
  return text;
}

}  // namespace

std::vector<Shape> TableShapes() {
  constexpr std::size_t kText = 20'000;
  return {
      {"CUtiExpLevel::LoadLevelConfig/levels", 1000, [](std::size_t n) { return LoadLevels(Levels(n)); }},
      {"CUtiExpLevel::LoadLevelConfig/digits", kText,
       [](std::size_t n) { return LoadLevels(std::string(n, '1')); }},
      {"CUtiExpLevel::LoadLevelConfig/blanks", kText,
       [](std::size_t n) { return LoadLevels(std::string(n, ' ')); }},
      {"CUtiExpLevel::GetLevelByExp/last", 1000, FindLevel},
      {"CUtiRank::LoadRankConfig/ranks", kText,
       [](std::size_t n) { return LoadRanks(Filled("name 10\n", n)); }},
      {"CUtiRank::LoadRankConfig/one-name", kText,
       [](std::size_t n) { return LoadRanks(std::string(n, 'n')); }},
      {"CUtiRank::GetRank/none", kText, FindRank},
      {"CUtiTaskAuto::Load/keys", kText, [](std::size_t n) { return LoadTasks(Keys(n, "", "=name\n")); }},
      {"CKxIniFileReaderSuite::FindIniFileReader/sections", kText,
       [](std::size_t n) { return ReadIni(Keys(n, "[s", "]\nk=v\n")); }},
      {"CKxIniFileReaderSuite::FindIniFileReader/open-sections", kText,
       [](std::size_t n) { return ReadIni(std::string(n, '[')); }},
      {"CKxIniFileReaderSuite::FindIniFileReader/equal-keys", kText,
       [](std::size_t n) { return ReadIni("[a]\n" + Filled("k=v\n", n)); }},
      {"CKxIniFileReaderSuite::FindIniFileReader/line-ends", kText,
       [](std::size_t n) { return ReadIni(std::string(n, '\n')); }},
      {"CKxIniFileReaderSuite::FindIniFileReader/half-characters", kText,
       [](std::size_t n) { return ReadIni(Filled("\x81=\x81\n", n)); }},
  };
}

}  // namespace growth
