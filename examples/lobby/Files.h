// Files below the program's folder: tables (tab-separated GBK text), records and the folders of the games.
#pragma once

#include <string>
#include <vector>

#include <ZvUtiLib/GameCatalogue.h>

using Fields = std::vector<std::string>;

/// Path of `name` in the program's folder.
std::string AppFile(const std::string& name);

/// The non-empty lines of the file `name` in the program's folder, split at tabs. Throws
/// std::runtime_error if the file cannot be read or a line has fewer than `fields` fields.
std::vector<Fields> ReadTable(const std::string& name, std::size_t fields);

/// True if the game's folder exists; a client need not have all games.
bool IsInstalled(GameId game);

/// The games whose folders exist, sorted by id.
std::vector<GameId> InstalledGames();

/// All bytes of the file `name` in the program's folder. Throws std::runtime_error if it cannot be read.
std::string ReadBytes(const std::string& name);
/// Replaces the file `name` in the program's folder. Throws std::runtime_error if it cannot be written.
void WriteBytes(const std::string& name, const void* bytes, std::size_t count);
