// zvuti: shows what ZvUtiLib reads and writes, from a terminal.
#include <exception>
#include <iostream>
#include <new>
#include <string>
#include <vector>

#include "Commands.h"
#include "shared/Nearest.h"
#include "shared/Terminal.h"

namespace {

// Describes a command line that the parser refuses, with a suggestion for a mistyped command or option.
std::string ProblemOf(const CLI::App& program, const CLI::ParseError& error) {
  const auto named = program.get_subcommands();
  const std::string help = "; see zvuti " + (named.empty() ? "" : named[0]->get_name() + " ") + "--help";
  const std::vector<std::string> strange = program.remaining(true);
  if (strange.empty()) return error.what() + help;
  std::vector<std::string> names;
  for (const CLI::App* app : {&program, named.empty() ? &program : named[0]}) {
    for (const CLI::Option* option : app->get_options()) {
      for (const std::string& name : option->get_lnames()) names.push_back("--" + name);
    }
  }
  if (named.empty()) {
    for (const CLI::App* command : program.get_subcommands({})) names.push_back(command->get_name());
    return "there is no command or option " + strange[0] + tool::Suggestion(strange[0], names, help);
  }
  const bool isOption = strange[0].rfind("--", 0) == 0;
  return isOption ? named[0]->get_name() + " has no option " + strange[0] +
                        tool::Suggestion(strange[0].substr(0, strange[0].find('=')), names, help)
                  : error.what() + help;
}

int Run(int argc, char** argv) {
  int exitCode = tool::kOk;
  CLI::App program(
      "Shows what ZvUtiLib reads and writes: wire records, a client's folder, words,\n"
      "numbers, times, the prize wheel. Files are in GBK, the terminal is in UTF-8.",
      "zvuti");
  program.set_version_flag("--version", "zvuti " ZVUTI_VERSION);
  program.require_subcommand(1);
  program.fallthrough();  // --color may also stand after the command
  program.option_defaults()->always_capture_default(false);
  std::string color = "auto";
  program
      .add_option("--color", color, "colours: auto (on a terminal, unless NO_COLOR is set), always, never")
      ->check(CLI::IsMember({"auto", "always", "never"}, CLI::ignore_case).description(""))
      ->type_name("WHEN")
      ->each([](const std::string& when) { tool::UseColor(when); });
  program.footer(
      "Exit codes: 0 success; 1 something was found, or the input is incomplete; 2 wrong usage, or a\n"
      "file that cannot be read.\n\n"
      "  zvuti COMMAND --help     shows the options of a command, and examples");
  for (const auto add :
       {tool::AddDecode, tool::AddEncode, tool::AddDiff, tool::AddRecords, tool::AddGuess, tool::AddExport,
        tool::AddCheck, tool::AddMask, tool::AddConvert, tool::AddNumber, tool::AddTime, tool::AddWheel}) {
    add(program, exitCode);
  }
  try {
    program.parse(argc, argv);
  } catch (const CLI::ParseError& e) {
    if (e.get_exit_code() == 0) {
      program.exit(e);  // prints the help or the version
      return tool::kOk;
    }
    tool::Say(ProblemOf(program, e));
    return tool::kUsage;
  }
  return exitCode;
}

}  // namespace

int main(int argc, char** argv) {
  tool::StartTerminal(argc, argv);
  int exitCode = tool::kUsage;
  try {
    exitCode = Run(argc, argv);
  } catch (const std::bad_alloc&) {
    tool::Say("not enough memory");
  } catch (const std::exception& e) {
    tool::Say(e.what());
  }
  if (!std::cout.flush()) {
    tool::Say("cannot write to standard output");
    return tool::kUsage;
  }
  return exitCode;
}
