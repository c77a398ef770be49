#include "Files.h"
#include "Screens.h"

void ShowTasks(Report& report) {
  report.Section("Tasks");
  constexpr int kTasks = 8;  // task numbers looked up for each game
  for (const GameId game : InstalledGames()) {
    CUtiTaskAuto tasks;
    tasks.Load(game);
    for (int number = 1; number <= kTasks; ++number) {
      const CString name = tasks.GetName(number);
      if (name.IsEmpty()) continue;
      report.Line("%s task %d: %s", Padded(GetGameDisplayName(game), 8).c_str(), number, name.GetString());
      report.Did();
    }
  }
}
