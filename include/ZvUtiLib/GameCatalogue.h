// The catalogue of games: code name, display name, seats and kind of every game of the lobby.
//
// Constant data, the same in every process; any thread may call. An id without a row is an unknown
// id, and every question has a defined answer for it.
#pragma once

#include <cstdint>
#include <string>

#include <ZvUtiLib/Export.h>

/// Number of a game. The ids are sparse; 0 is none.
using GameId = std::uint32_t;

/// What sort of game an id stands for.
enum GameKind : std::uint32_t {
  GameKindCard = 0,
  GameKindMahjong = 1,
  GameKindBoard = 2,
  GameKindCasual = 3,
  GameKindHall = 4,
  GameKindUnknown = 999,  ///< of an unknown id only
};

/// Assigns the game's code name, the ASCII name of its folder; an unknown id leaves `name` as it is.
ZVUTILIB_API void FillGameCodeName(GameId id, std::string& name);
/// Assigns the game's display name in GBK; an unknown id leaves `name` as it is.
ZVUTILIB_API void FillGameDisplayName(GameId id, std::string& name);

/// The game's code name, "" for an unknown id.
ZVUTILIB_API std::string GetGameCodeName(GameId id);
/// The game's display name in GBK, "" for an unknown id. Two games may share one.
ZVUTILIB_API std::string GetGameDisplayName(GameId id);

/// Fewest players with whom a table begins, 99999 for an unknown id.
ZVUTILIB_API std::uint32_t GetGameMinPlayers(GameId id);
/// Players that one table holds, 4 for an unknown id.
ZVUTILIB_API std::uint32_t GetGameMaxPlayers(GameId id);
/// 1 when a table of the game needs all its seats taken, else 0; 0 for an unknown id.
ZVUTILIB_API int IsGameFixedPlayers(GameId id);
/// One of GameKind, GameKindUnknown for an unknown id.
ZVUTILIB_API std::uint32_t GetGameKind(GameId id);
/// True for the ids set aside for hall games, 80 to 100, whether or not they have a row.
ZVUTILIB_API bool IsHallGameId(GameId id);
