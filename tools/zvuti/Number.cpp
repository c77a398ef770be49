// zvuti number: converts between digits, groups of four digits and Chinese capital numerals.
#include <array>
#include <iostream>
#include <string>
#include <string_view>
#include <vector>

#include <ZvUtiLib/CUtiNumber.h>

#include "Commands.h"
#include "shared/EachArgument.h"
#include "shared/GbkText.h"
#include "shared/Terminal.h"

namespace tool {
namespace {

constexpr std::size_t kMostDigits = 20;  // that the library can spell
constexpr std::size_t kGroup = 4;

std::string Spelled(const std::string& digits) {
  CString spelled;
  return CUtiNumber::ChangeLowerNum2UpperNum(digits.c_str(), spelled) == 1 ? spelled.GetString() : "";
}

// The numeral characters, taken from numbers that the library spells. A spelling of 100 is "one hundred", so
// what follows "one" is the character for hundred.
struct Numerals {
  std::array<std::string, 10> capital, plain;
  std::array<std::string, 4> place;  ///< [1] ten, [2] hundred, [3] thousand
  std::string group, square;         ///< 10^4 and 10^8

  Numerals() {
    for (std::size_t digit = 0; digit < 10; ++digit) {
      plain[digit] = CUtiNumber::GetNumCN(static_cast<int>(digit)).GetString();
      capital[digit] = Spelled(std::to_string(digit));
    }
    const std::string one = capital[1];
    capital[0] = Spelled("101").substr(2 * one.size(), one.size());
    place[1] = Spelled("10");
    place[2] = Spelled("100").substr(one.size());
    place[3] = Spelled("1000").substr(one.size());
    group = Spelled("10000").substr(one.size());
    square = Spelled("100000000").substr(one.size());
  }
};

bool Take(std::string_view& text, const std::string& start) {
  if (start.empty() || text.substr(0, start.size()) != start) return false;
  text.remove_prefix(start.size());
  return true;
}

// Returns the digits of a number in numerals, or "" if the text is not one.
std::string DigitsOf(std::string_view spelling) {
  static const Numerals numerals;
  std::string digits(kMostDigits, '0');
  std::string section(kGroup, '0');
  char digit = 0;
  bool isAny = false;
  const auto close = [&](std::size_t unit) {
    if (digit != 0) section[kGroup - 1] = digit;
    for (std::size_t i = 0; i < kGroup; ++i) {
      char& target = digits[kMostDigits - (unit + 1) * kGroup + i];
      if (section[i] != '0') target = section[i];
    }
    section.assign(kGroup, '0');
    digit = 0;
  };
  while (!spelling.empty()) {
    bool isKnown = false;
    for (std::size_t i = 0; i < 10 && !isKnown; ++i) {
      isKnown = Take(spelling, numerals.capital[i]) || Take(spelling, numerals.plain[i]);
      if (isKnown) digit = static_cast<char>('0' + i);
    }
    for (std::size_t i = 1; i < kGroup && !isKnown; ++i) {
      isKnown = Take(spelling, numerals.place[i]);
      if (isKnown) section[kGroup - 1 - i] = digit == 0 || digit == '0' ? '1' : digit, digit = 0;
    }
    if (!isKnown && Take(spelling, numerals.group)) {
      isKnown = true;
      close(Take(spelling, numerals.square) ? 3 : 1);
    } else if (!isKnown && Take(spelling, numerals.square)) {
      isKnown = true;
      close(Take(spelling, numerals.square) ? 4 : 2);
    }
    if (!isKnown) return {};
    isAny = true;
  }
  close(0);
  const std::size_t first = digits.find_first_not_of('0');
  if (!isAny) return {};
  return first == digits.npos ? "0" : digits.substr(first);
}

// Prints a number; after an empty line if it is not the first.
void Print(const std::string& digits, const std::string& spelled, bool& isFirst) {
  if (!isFirst) std::cout << '\n';
  isFirst = false;
  CString separated;
  CUtiNumber::InsertSeparator(digits.c_str(), separated);
  std::cout << "digits     " << digits << "\nseparated  " << separated.GetString() << "\nnumerals   "
            << spelled << '\n';
}

int Convert(const std::string& given, bool& isFirst) {
  CString plain;
  CUtiNumber::RemoveSeparator(given.c_str(), plain);
  const std::string digits = plain.GetString();
  if (CUtiNumber::CheckNumber(digits.c_str()) == 1 && digits != "-") {
    const bool isLong = digits.size() > kMostDigits;
    const std::string spelled = Spelled(digits);
    Print(digits,
          !spelled.empty()   ? Shown(spelled)
          : digits[0] == '-' ? "(none for negative numbers)"
          : isLong           ? "(none for more than 20 digits)"

                   : "(none for zero)",
          isFirst);
    CString separated;
    CUtiNumber::InsertSeparator(digits.c_str(), separated);
    if (given == digits || given == separated.GetString()) return kOk;
    Say(given + ": the commas are not where the library puts them, between groups of four digits");
    return kFound;
  }
  if (FindForeign(given) != given.npos) throw Failure("'" + given + "' is not a number");
  const std::string spelling = ToGbk(given, given);
  const std::string read = DigitsOf(spelling);
  if (read.empty()) throw Failure("'" + given + "' is neither digits nor numerals");
  const std::string spelled = Spelled(read);
  Print(read, spelled.empty() ? "(none for zero)" : Shown(spelled), isFirst);
  if (spelled == spelling) return kOk;
  Say(given + ": the library spells this number differently");
  return kFound;
}

}  // namespace

void AddNumber(CLI::App& program, int& exitCode) {
  auto given = std::make_shared<std::vector<std::string>>();
  CLI::App* command =
      program.add_subcommand("number", "show numbers as digits, in groups of four and in Chinese numerals");
  command
      ->add_option("NUMBER", *given,
                   "digits with or without commas, or Chinese numerals; default is a\n"
                   "number on each line of standard input")
      ->type_name("");
  command->footer(
      "Exits with 1 if the library would write a number differently. What is no number is reported, the\n"
      "others are shown, and the exit code is 2.\n\n"
      "  zvuti number 1234567\n"
      "  zvuti number 123,4567 -5");
  command->callback([given, &exitCode] {
    bool isFirst = true;
    exitCode = ForEachArgument(*given, "number",
                               [&isFirst](const std::string& text) { return Convert(text, isFirst); });
  });
}

}  // namespace tool
