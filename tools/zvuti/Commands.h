// The subcommands. Each function adds one, with its options and help, to the program. Parsing the command
// line runs the subcommand that it names, which stores the exit code in `exitCode`.
#pragma once

#include <CLI/CLI.hpp>

namespace tool {

void AddDecode(CLI::App& program, int& exitCode);
void AddEncode(CLI::App& program, int& exitCode);
void AddDiff(CLI::App& program, int& exitCode);
void AddRecords(CLI::App& program, int& exitCode);
void AddExport(CLI::App& program, int& exitCode);
void AddGuess(CLI::App& program, int& exitCode);
void AddCheck(CLI::App& program, int& exitCode);
void AddMask(CLI::App& program, int& exitCode);
void AddConvert(CLI::App& program, int& exitCode);
void AddNumber(CLI::App& program, int& exitCode);
void AddTime(CLI::App& program, int& exitCode);
void AddWheel(CLI::App& program, int& exitCode);

}  // namespace tool
