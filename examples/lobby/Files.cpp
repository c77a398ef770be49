#include "Files.h"

#include <fstream>
#include <iterator>
#include <stdexcept>

#include <ZvUtiLib/ZvUtiLib.h>

namespace {

Fields Split(const std::string& line) {
  Fields fields(1);
  for (const char c : line) {  // byte by byte is safe: a tab is never the trail byte of a GBK character
    if (c == '\t') {
      fields.emplace_back();
    } else {
      fields.back() += c;
    }
  }
  return fields;
}

}  // namespace

std::string AppFile(const std::string& name) { return std::string(CKxIOUti::GetAppPath()) + name; }

std::vector<Fields> ReadTable(const std::string& name, std::size_t fields) {
  std::ifstream in(AppFile(name), std::ios::binary);
  std::vector<Fields> rows;
  std::string line;
  for (int number = 1; std::getline(in, line); ++number) {
    if (!line.empty() && line.back() == '\r') line.pop_back();
    if (line.empty()) continue;
    rows.push_back(Split(line));
    if (rows.back().size() < fields)
      throw std::runtime_error(AppFile(name) + ", line " + std::to_string(number) + ": too few fields");
  }
  if (!in.eof()) throw std::runtime_error("cannot read " + AppFile(name));
  return rows;
}

bool IsInstalled(GameId game) {
  return !GetGameCodeName(game).empty() && CKxIOUti::IsFileExist(CUtiIO::GetGamePath(game, "")) != 0;
}

std::vector<GameId> InstalledGames() {
  constexpr GameId kLastGame = 188;
  std::vector<GameId> games;
  for (GameId game = 1; game <= kLastGame; ++game) {
    if (IsInstalled(game)) games.push_back(game);
  }
  return games;
}

std::string ReadBytes(const std::string& name) {
  std::ifstream in(AppFile(name), std::ios::binary);
  std::string bytes{std::istreambuf_iterator<char>(in), {}};
  if (!in) throw std::runtime_error("cannot read " + AppFile(name));
  return bytes;
}

void WriteBytes(const std::string& name, const void* bytes, std::size_t count) {
  std::ofstream out(AppFile(name), std::ios::binary);
  out.write(static_cast<const char*>(bytes), static_cast<std::streamsize>(count));
  out.close();
  if (!out) throw std::runtime_error("cannot write " + AppFile(name));
}
