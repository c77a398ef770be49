#include <ctime>
#include <stdexcept>

#include "Files.h"
#include "Screens.h"

namespace {

// The current time as a packed word, the form that the client stores and sends.
unsigned long PackedNow() {
  const std::time_t now = std::time(nullptr);
  char text[32];
  std::strftime(text, sizeof text, "%Y-%m-%d %H:%M:%S", std::localtime(&now));
  return CKxTime::String2DWord(text);
}

}  // namespace

void ShowStart(Report& report) {
  report.Section("Start");
  CDebug::LogInit();
  const unsigned long now = PackedNow();
  CDebug::LogOut("lobby starts, packed time %08lX", now);
  report.Line("log            %slog/lobby.log", CKxIOUti::GetAppPath().GetString());
  report.Line("time now       %s, packed 0x%08lX", CKxTime::DWord2String(now).GetString(), now);

  const unsigned long opening = CKxTime::String2DWord("2013-08-29 12:34:56");
  report.Line("opening day    %s, packed 0x%08lX, year %lu",
              CKxTime::DWord2StringNoSecond(opening).GetString(), opening, CKxTime::GetYearFromWord(opening));

  const std::vector<GameId> games = InstalledGames();
  if (games.empty()) throw std::runtime_error("there are no game folders in " + AppFile(""));
  report.Line("games          %d installed", static_cast<int>(games.size()));
  report.Did(5);
}
