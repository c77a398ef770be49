// The sub-commands. Each adds itself, with its options and its help, to the program; parsing the
// command line runs the one that was named, which leaves the exit code in `exitCode`.
#pragma once

#include <CLI/CLI.hpp>

namespace tool {

void AddDecode(CLI::App& program, int& exitCode);
void AddEncode(CLI::App& program, int& exitCode);
void AddRecords(CLI::App& program, int& exitCode);
void AddGuess(CLI::App& program, int& exitCode);
void AddCheck(CLI::App& program, int& exitCode);
void AddMask(CLI::App& program, int& exitCode);
void AddNumber(CLI::App& program, int& exitCode);
void AddTime(CLI::App& program, int& exitCode);
void AddWheel(CLI::App& program, int& exitCode);

}  // namespace tool
