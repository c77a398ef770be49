// zvuti: shows what ZvUtiLib reads and writes, from a terminal.
#include <exception>
#include <iostream>
#include <new>
#include <string>
#include <vector>

#include "Commands.h"
#include "shared/Terminal.h"

namespace {

// The arguments for the parser. No option starts with a digit, so "-5" is a number: an argument "--" is
// inserted before it, and the parser takes the rest literally.
std::vector<std::string> Arguments(int argc, char** argv) {
  std::vector<std::string> arguments;
  bool isPlain = false;
  for (int i = 1; i < argc; ++i) {
    const std::string argument = argv[i];
    isPlain = isPlain || argument == "--";
    const bool isNumber =
        argument.size() > 1 && argument[0] == '-' && argument[1] >= '0' && argument[1] <= '9';
    if (isNumber && !isPlain && i == 2) {
      arguments.emplace_back("--");
      isPlain = true;
    }
    arguments.push_back(argument);
  }
  return {arguments.rbegin(), arguments.rend()};  // the parser expects them in reverse order
}

int Run(int argc, char** argv) {
  int exitCode = tool::kOk;
  CLI::App program(
      "Shows what ZvUtiLib reads and writes: wire records, a client's folder, words,\n"
      "numbers, times, the prize wheel. Files are in GBK, the terminal is in UTF-8.",
      "zvuti");
  program.set_version_flag("--version", "zvuti " ZVUTI_VERSION);
  program.require_subcommand(1);
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
       {tool::AddDecode, tool::AddEncode, tool::AddRecords, tool::AddGuess, tool::AddExport, tool::AddCheck,
        tool::AddMask, tool::AddConvert, tool::AddNumber, tool::AddTime, tool::AddWheel}) {
    add(program, exitCode);
  }
  try {
    program.parse(Arguments(argc, argv));
  } catch (const CLI::ParseError& e) {
    if (e.get_exit_code() == 0) {
      program.exit(e);  // prints the help or the version
      return tool::kOk;
    }
    const auto named = program.get_subcommands();
    const auto strange = program.remaining();
    const std::string problem = named.empty() && !strange.empty()
                                    ? "there is no command or option " + strange.front()
                                    : std::string(e.what());
    tool::Say(problem + "; see zvuti " + (named.empty() ? "" : named[0]->get_name() + " ") + "--help");
    return tool::kUsage;
  }
  return exitCode;
}

}  // namespace

int main(int argc, char** argv) {
  std::ios_base::sync_with_stdio(false);
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
