#include <stdexcept>

#include "Files.h"
#include "Screens.h"

namespace {
constexpr int kShown = 12;  // number of masked lines printed
}

void ShowChat(Report& report) {
  report.Section("Chat");
  CUtiBlackList words;
  if (!words.Load(AppFile("words.txt").c_str()))
    throw std::runtime_error("cannot read " + AppFile("words.txt"));

  int lines = 0;
  int masked = 0;
  for (const Fields& row : ReadTable("chat.txt", 2)) {
    ++lines;
    if (!words.IsMatched(row[1].c_str())) continue;
    CString clean;
    words.ReplaceBlackWord(row[1].c_str(), clean);
    if (++masked <= kShown) report.Line("%s %s", Padded(row[0], 14).c_str(), clean.GetString());
    CDebug::LogOut("chat of %s masked: %s", row[0].c_str(), clean.GetString());
  }
  report.Line("%d lines read, %d of them masked (the first %d are shown above)", lines, masked, kShown);
  report.Did(lines);
}
