// A day at the lobby: goes through what a client does at its start and on its screens, on the files in
// its application folder, and reports.
#include <cstdio>
#include <exception>
#include <stdexcept>

#include "screens/Screens.h"

int main(int argc, char**) {
  if (argc > 1) {
    std::fprintf(stderr, "lobby: takes no arguments; its files lie beside the program\n");
    return 1;
  }
  try {
    std::printf("Lobby host on ZvUtiLib 1.0.0.1\n");
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
