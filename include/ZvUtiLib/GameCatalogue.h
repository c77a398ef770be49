// The catalogue of games: code name, display name, number of players and kind of every game in the lobby.
//
// Constant data, the same in every process; any thread may call. An id without a row is unknown; every
// function defines its result for unknown ids.
#pragma once

#include <cstdint>
#include <string>

#include <ZvUtiLib/Export.h>

/// Number of a game. Ids are sparse; 0 is not a game.
using GameId = std::uint32_t;

/// The kind of a game.
enum GameKind : std::uint32_t {
  GameKindCard = 0,
  GameKindMahjong = 1,
  GameKindBoard = 2,
  GameKindCasual = 3,
  GameKindHall = 4,
  GameKindUnknown = 999,  ///< returned for unknown ids only
};

/// Stores the game's code name, the ASCII name of its folder, in `name`. An unknown id leaves `name`
/// unchanged.
ZVUTILIB_API void FillGameCodeName(GameId id, std::string& name);
/// Stores the game's display name, in GBK, in `name`. An unknown id leaves `name` unchanged.
ZVUTILIB_API void FillGameDisplayName(GameId id, std::string& name);

/// Returns the game's code name, "" for an unknown id.
ZVUTILIB_API std::string GetGameCodeName(GameId id);
/// Returns the game's display name in GBK, "" for an unknown id. Two games may have the same name.
ZVUTILIB_API std::string GetGameDisplayName(GameId id);

/// Returns the lowest number of players with which a table starts, 99999 for an unknown id.
ZVUTILIB_API std::uint32_t GetGameMinPlayers(GameId id);
/// Returns the number of players that one table holds, 4 for an unknown id.
ZVUTILIB_API std::uint32_t GetGameMaxPlayers(GameId id);
/// Returns 1 if all seats of a table must be taken, else 0; 0 for an unknown id.
ZVUTILIB_API int IsGameFixedPlayers(GameId id);
/// Returns a GameKind, GameKindUnknown for an unknown id.
ZVUTILIB_API std::uint32_t GetGameKind(GameId id);
/// Returns true for the ids reserved for hall games, 80 to 100, whether or not they have a row.
ZVUTILIB_API bool IsHallGameId(GameId id);
