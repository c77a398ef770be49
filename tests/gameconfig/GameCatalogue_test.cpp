#include <ZvUtiLib/GameCatalogue.h>
#include <gtest/gtest.h>

#include <set>
#include <string>
#include <vector>

#include "gbk/CodePage936.h"

namespace {

TEST(GameCatalogue, NamesGames) {
  EXPECT_EQ(GetGameCodeName(1), "Maple");
  EXPECT_EQ(GetGameCodeName(188), "Ginkgo");
  EXPECT_EQ(GetGameDisplayName(1), "\xB7\xE3\xD2\xB6");    // U+67AB U+53F6
  EXPECT_EQ(GetGameDisplayName(62), "\xE8\xD6.\xC4\xBE");  // U+67DA . U+6728
  EXPECT_EQ(GetGameDisplayName(188), "\xD2\xF8\xD0\xD3");  // U+94F6 U+674F
  EXPECT_EQ(GetGameDisplayName(17), GetGameDisplayName(20));
}

void ExpectGames(GameKind kind, std::uint32_t fewest, std::uint32_t seats, const std::vector<GameId>& games) {
  for (const GameId id : games) {
    EXPECT_EQ(GetGameKind(id), kind) << id;
    EXPECT_EQ(GetGameMinPlayers(id), fewest) << id;
    EXPECT_EQ(GetGameMaxPlayers(id), seats) << id;
    EXPECT_EQ(IsGameFixedPlayers(id), fewest == seats) << id;
  }
}

TEST(GameCatalogue, SortsGamesByKindAndSeats) {
  ExpectGames(GameKindCard, 2, 2, {17, 20, 21, 24});
  ExpectGames(GameKindCard, 2, 4, {1, 25});
  ExpectGames(GameKindCard, 2, 6, {38, 61});
  ExpectGames(GameKindCard, 2, 8, {60, 62});
  ExpectGames(GameKindCard, 3, 3, {11, 22});
  ExpectGames(GameKindCard, 4, 4, {36, 37});
  ExpectGames(GameKindMahjong, 2, 2, {4, 19});
  ExpectGames(GameKindMahjong, 4, 4, {23, 26, 27, 28});
  ExpectGames(GameKindBoard, 2, 2, {16});
  ExpectGames(GameKindCasual, 2, 2, {18});
  ExpectGames(GameKindCasual, 2, 4, {10});
  ExpectGames(GameKindCasual, 4, 4, {9});
  ExpectGames(GameKindCasual, 1, 1000, {188});
  ExpectGames(GameKindHall, 1, 1000, {80, 81, 82, 83});
}

TEST(GameCatalogue, HoldsTwentyNineGamesInFoldersOfTheirOwn) {
  std::set<std::string> folders;
  for (GameId id = 0; id <= 1000; ++id) {
    const std::string name = GetGameCodeName(id);
    if (name.empty()) continue;
    EXPECT_TRUE(folders.insert(name).second) << name;
    // A mistyped byte would decode to something other than a Chinese character.
    for (const char16_t unit : zvuti::gbk::ToUtf16(GetGameDisplayName(id))) {
      EXPECT_TRUE(unit == u'.' || (unit >= 0x4E00 && unit <= 0x9FA5)) << id;
    }
  }
  EXPECT_EQ(folders.size(), 29u);
}

TEST(GameCatalogue, UnknownIdsHaveDefinedAnswers) {
  for (const GameId id : {0u, 2u, 63u, 84u, 187u, 189u, 256u + 1u, 65536u + 1u, 0x80000001u, 0xFFFFFFFFu}) {
    std::string name = "kept";
    FillGameCodeName(id, name);
    FillGameDisplayName(id, name);
    EXPECT_EQ(name, "kept") << id;
    EXPECT_EQ(GetGameCodeName(id) + GetGameDisplayName(id), "") << id;
    EXPECT_EQ(GetGameMinPlayers(id), 99999u) << id;
    EXPECT_EQ(GetGameMaxPlayers(id), 4u) << id;
    EXPECT_EQ(IsGameFixedPlayers(id), 0) << id;
    EXPECT_EQ(GetGameKind(id), GameKindUnknown) << id;
  }
}

TEST(GameCatalogue, HallIdsAreARange) {
  for (GameId id = 0; id <= 300; ++id) EXPECT_EQ(IsHallGameId(id), id >= 80 && id <= 100) << id;
  EXPECT_FALSE(IsHallGameId(0xFFFFFFFFu));
}

}  // namespace
