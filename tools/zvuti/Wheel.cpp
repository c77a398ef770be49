// zvuti wheel: shows a spin of the prize wheel as numbers or as a picture.
#include <cmath>
#include <cstdio>
#include <iostream>
#include <string>

#include "Commands.h"
#include "shared/Files.h"
#include "shared/Terminal.h"
#include "wheel/Spin.h"
#include "wheel/Svg.h"

namespace tool {
namespace {

struct Options {
  SpinOptions spin;
  std::string svg;
  bool isCsv = false;
  int every = 40;
};

void PrintCsv(const Spin& spin) {
  std::cout << "tick,angle,turned,speed\n";
  char line[128];
  for (std::size_t i = 0; i < spin.ticks.size(); ++i) {
    const Tick& tick = spin.ticks[i];
    std::snprintf(line, sizeof line, "%zu,%.17g,%.17g,%.17g\n", i, tick.angle, tick.turned, tick.speed);
    std::cout << line;
  }
}

void PrintTable(const Options& options, const Spin& spin) {
  const std::size_t last = spin.ticks.size() - 1;
  std::cout << Styled(Style::kDim, "  tick   angle     turns   speed") << '\n';
  for (std::size_t i = 0; i <= last; ++i) {
    const char* const note = i == last            ? "stop"
                             : i == spin.runOutAt ? "slot chosen"
                             : i == spin.evenAt   ? "top speed"
                                                  : "";
    if (*note == '\0' && i % static_cast<std::size_t>(options.every) != 0) continue;
    const Tick& tick = spin.ticks[i];
    char line[128];
    std::snprintf(line, sizeof line, "%6zu  %6.4f  %8.4f  %6.4f", i, tick.angle, tick.turned / kFullTurn,
                  tick.speed);
    std::cout << line << (*note ? "  " : "") << Styled(Style::kBold, note) << '\n';
  }
  // Because of rounding, the wheel may stop just before the bound. For slot 0 that is just below a full turn.
  const double beyond = std::remainder(spin.ticks.back().angle - spin.slotLow, kFullTurn);
  char line[256];
  std::snprintf(line, sizeof line,
                "\nslot %d of %d is %.4f to %.4f rad; the wheel stops at %.4f, %.6f %s the slot's low\n"
                "bound%s, after losing %.6f of speed per tick\n",
                options.spin.slot, options.spin.slots, spin.slotLow, spin.slotHigh, spin.ticks.back().angle,
                std::fabs(beyond), beyond < 0 ? "before" : "past",
                beyond < spin.slotHigh - spin.slotLow ? "" : " and outside the slot", spin.deceleration);
  std::cout << line;
}

int Turn(const Options& options) {
  if (options.every < 1) throw Failure("--every must be 1 or more");
  const Spin spin = MakeSpin(options.spin);
  if (!options.svg.empty()) {
    WriteAll(options.svg, DrawSpin(options.spin, spin));
    if (options.svg != "-") Say("wrote " + options.svg);
  } else if (options.isCsv) {
    PrintCsv(spin);
  } else {
    PrintTable(options, spin);
  }
  return kOk;
}

}  // namespace

void AddWheel(CLI::App& program, int& exitCode) {
  auto options = std::make_shared<Options>();
  SpinOptions& spin = options->spin;
  CLI::App* command =
      program.add_subcommand("wheel", "show a spin of the prize wheel as numbers or as a picture");
  command->add_option("--slot", spin.slot, "the slot to stop in, counted from 0")->required()->type_name("N");
  command->add_option("--slots", spin.slots, "number of slots (12)")->type_name("N");
  command->add_option("--top-speed", spin.topSpeed, "radians per tick (0.8)")->type_name("V");
  command->add_option("--gain", spin.gain, "speed gained per tick (0.004)")->type_name("V");
  command->add_option("--start", spin.start, "angle at the start, in radians (0)")->type_name("A");
  command->add_option("--even", spin.even, "ticks at top speed before the slot is chosen (60)")
      ->type_name("N");
  CLI::Option* every =
      command->add_option("--every", options->every, "ticks between the lines of the table (40)")
          ->type_name("N");
  CLI::Option* csv =
      command->add_flag("--csv", options->isCsv, "print every tick with full precision, as CSV");
  CLI::Option* svg =
      command->add_option("--svg", options->svg, "write a picture to FILE instead")->type_name("FILE");
  csv->excludes(every)->excludes(svg);
  svg->excludes(every);
  command->footer(
      "  zvuti wheel --slot 5\n"
      "  zvuti wheel --slot 5 --svg spin.svg\n"
      "  zvuti wheel --slot 2 --slots 8 --top-speed 0.5 --csv");
  command->callback([options, &exitCode] { exitCode = Turn(*options); });
}

}  // namespace tool
