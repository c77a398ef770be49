// A day in the lobby: does what a client does at its start and on each of its screens, with the files in its
// application folder, and prints a report.
#include <ZvUtiLib/Version.h>

#include <cstdio>
#include <exception>
#include <stdexcept>

#include "screens/Screens.h"

int main(int argc, char**) {
  if (argc > 1) {
    std::fprintf(stderr, "lobby: no arguments are allowed; the program reads the files in its own folder\n");
    return 1;
  }
  try {
    std::printf("Lobby program with ZvUtiLib " ZVUTILIB_VERSION "\n");
    Report report;
    ShowStart(report);
    ShowSignIn(report);
    ShowChat(report);
    ShowPlayers(report);
    ShowTasks(report);
    ShowMessages(report);
    ShowRecords(report);
    ShowBoard(report);
    ShowWorker(report);
    ShowAdapters(report);
    CDebug::LogOut("lobby done, %d things", report.Done());
    std::printf("\nThe lobby did %d things.\n", report.Done());
    if (std::fflush(stdout) != 0 || std::ferror(stdout)) throw std::runtime_error("cannot write the report");
    return 0;
  } catch (const std::exception& e) {
    std::fprintf(stderr, "lobby: %s\n", e.what());
    return 1;
  }
}
