// The files below the program's folder: the host's own, lines of tab-separated GBK text, and the games'.
#pragma once

#include <string>
#include <vector>

#include <ZvUtiLib/GameCatalogue.h>

using Fields = std::vector<std::string>;

/// Path of `name` in the program's folder.
std::string AppFile(const std::string& name);

/// The non-empty lines of the file `name` in the program's folder, split at tabs. Throws
/// std::runtime_error when it cannot be read, or when a line has fewer than `fields` fields.
std::vector<Fields> ReadTable(const std::string& name, std::size_t fields);

/// True when a game has its folder; a client need not have them all.
bool IsInstalled(GameId game);

/// The games that have their folders, in the order of their numbers.
std::vector<GameId> InstalledGames();

/// All bytes of the file `name` in the program's folder; throws std::runtime_error when it cannot be read.
std::string ReadBytes(const std::string& name);
/// Writes such a file; throws std::runtime_error when it cannot.
void WriteBytes(const std::string& name, const void* bytes, std::size_t count);
