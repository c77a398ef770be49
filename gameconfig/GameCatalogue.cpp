#include <ZvUtiLib/GameCatalogue.h>

#include <algorithm>
#include <iterator>

namespace {

struct Row {
  GameId id;
  const char* codeName;
  const char* displayName;  // GBK
  std::uint16_t minPlayers, maxPlayers;
  std::uint32_t kind;
};

constexpr Row kRows[] = {
    {1, "Maple", "\xB7\xE3\xD2\xB6", 2, 4, GameKindCard},            // 枫叶
    {4, "Birch", "\xB0\xD7\xE8\xEB", 2, 2, GameKindMahjong},         // 白桦
    {9, "Cedar", "\xD1\xA9\xCB\xC9", 4, 4, GameKindCasual},          // 雪松
    {10, "Willow", "\xB4\xB9\xC1\xF8", 2, 4, GameKindCasual},        // 垂柳
    {11, "Aspen", "\xC9\xBD\xD1\xEE", 3, 3, GameKindCard},           // 山杨
    {16, "Walnut", "\xBA\xFA\xCC\xD2", 2, 2, GameKindBoard},         // 胡桃
    {17, "Laurel", "\xD4\xC2\xB9\xF0", 2, 2, GameKindCard},          // 月桂
    {18, "Poplar", "\xB0\xD7\xD1\xEE", 2, 2, GameKindCasual},        // 白杨
    {19, "Cypress", "\xB0\xD8\xCA\xF7", 2, 2, GameKindMahjong},      // 柏树
    {20, "Hazel", "\xD4\xC2\xB9\xF0", 2, 2, GameKindCard},           // 月桂
    {21, "Alder", "\xE8\xE7\xC4\xBE", 2, 2, GameKindCard},           // 桤木
    {22, "Larch", "\xC2\xE4\xD2\xB6\xCB\xC9", 3, 3, GameKindCard},   // 落叶松
    {23, "Juniper", "\xB6\xC5\xCB\xC9", 4, 4, GameKindMahjong},      // 杜松
    {24, "Rowan", "\xBB\xA8\xE9\xB1", 2, 2, GameKindCard},           // 花楸
    {25, "Acacia", "\xBD\xF0\xBA\xCF\xBB\xB6", 2, 4, GameKindCard},  // 金合欢
    {26, "Spruce", "\xD4\xC6\xC9\xBC", 4, 4, GameKindMahjong},       // 云杉
    {27, "Linden", "\xE9\xB2\xCA\xF7", 4, 4, GameKindMahjong},       // 椴树
    {28, "Sequoia", "\xBA\xEC\xC9\xBC", 4, 4, GameKindMahjong},      // 红杉
    {36, "Hawthorn", "\xC9\xBD\xE9\xAB", 4, 4, GameKindCard},        // 山楂
    {37, "Mulberry", "\xC9\xA3\xCA\xF7", 4, 4, GameKindCard},        // 桑树
    {38, "Magnolia", "\xD3\xF1\xC0\xBC", 2, 6, GameKindCard},        // 玉兰
    {60, "Teak", "\xE8\xD6\xC4\xBE", 2, 8, GameKindCard},            // 柚木
    {61, "Ebony", "\xCE\xDA\xC4\xBE", 2, 6, GameKindCard},           // 乌木
    {62, "Teakwood", "\xE8\xD6.\xC4\xBE", 2, 8, GameKindCard},       // 柚.木
    {80, "Bamboo", "\xB4\xE4\xD6\xF1", 1, 1000, GameKindHall},       // 翠竹
    {81, "Pine", "\xC7\xE0\xCB\xC9", 1, 1000, GameKindHall},         // 青松
    {82, "Sandal", "\xCC\xB4\xCF\xE3", 1, 1000, GameKindHall},       // 檀香
    {83, "Camphor", "\xCF\xE3\xD5\xC1", 1, 1000, GameKindHall},      // 香樟
    {188, "Ginkgo", "\xD2\xF8\xD0\xD3", 1, 1000, GameKindCasual},    // 银杏
};

static_assert(std::size(kRows) == 29);
static_assert(std::adjacent_find(std::begin(kRows), std::end(kRows),
                                 [](const Row& a, const Row& b) { return a.id >= b.id; }) == std::end(kRows));
static_assert(std::all_of(std::begin(kRows), std::end(kRows),
                          [](const Row& row) { return row.minPlayers <= row.maxPlayers; }));

const Row* FindRow(GameId id) {
  const Row* row = std::lower_bound(std::begin(kRows), std::end(kRows), id,
                                    [](const Row& r, GameId wanted) { return r.id < wanted; });
  return row != std::end(kRows) && row->id == id ? row : nullptr;
}

}  // namespace

void FillGameCodeName(GameId id, std::string& name) {
  if (const Row* row = FindRow(id)) name = row->codeName;
}

void FillGameDisplayName(GameId id, std::string& name) {
  if (const Row* row = FindRow(id)) name = row->displayName;
}

std::string GetGameCodeName(GameId id) {
  std::string name;
  FillGameCodeName(id, name);
  return name;
}

std::string GetGameDisplayName(GameId id) {
  std::string name;
  FillGameDisplayName(id, name);
  return name;
}

std::uint32_t GetGameMinPlayers(GameId id) {
  const Row* row = FindRow(id);
  return row ? row->minPlayers : 99999;
}

std::uint32_t GetGameMaxPlayers(GameId id) {
  const Row* row = FindRow(id);
  return row ? row->maxPlayers : 4;
}

int IsGameFixedPlayers(GameId id) { return GetGameMaxPlayers(id) == GetGameMinPlayers(id) ? 1 : 0; }

std::uint32_t GetGameKind(GameId id) {
  const Row* row = FindRow(id);
  return row ? row->kind : std::uint32_t{GameKindUnknown};
}

bool IsHallGameId(GameId id) { return id >= 80 && id <= 100; }
