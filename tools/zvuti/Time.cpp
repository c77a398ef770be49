// zvuti time: converts between packed time words and text.
#include <charconv>
#include <cstdint>
#include <cstdio>
#include <ctime>
#include <iostream>
#include <string>
#include <string_view>
#include <vector>

#include <ZvUtiLib/CKxTime.h>

#include "Commands.h"
#include "shared/EachArgument.h"
#include "shared/PackedTime.h"
#include "shared/Terminal.h"

namespace tool {
namespace {

// Parses a packed word: decimal digits, or 0x and hexadecimal digits. Returns false for other text, which may
// be a date. Throws Failure if the word is too large or malformed.
bool ParseWord(std::string_view text, std::uint32_t& word) {
  const bool isHex = text.substr(0, 2) == "0x" || text.substr(0, 2) == "0X";
  if (isHex) text.remove_prefix(2);
  if (text.empty() || (!isHex && text.find_first_not_of("0123456789") != text.npos)) return false;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), word, isHex ? 16 : 10);
  if (error == std::errc::result_out_of_range) throw Failure(std::string(text) + " does not fit in 32 bits");
  if (end != text.data() + text.size()) throw Failure("'" + std::string(text) + "' is not a number");
  return true;
}

std::string NowText() {
  const std::time_t now = std::time(nullptr);
  char text[32];
  std::strftime(text, sizeof text, "%Y-%m-%d %H:%M:%S", std::localtime(&now));
  return text;
}

// Returns the numbers in a text, at most six, as written. The library reads the same ones but may change them
// to fit.
std::vector<long long> NumbersOf(const std::string& text) {
  long long n[6] = {};
  const int count = std::sscanf(text.c_str(), "%18lld-%18lld-%18lld %18lld:%18lld:%18lld", &n[0], &n[1],
                                &n[2], &n[3], &n[4], &n[5]);
  return {n, n + (count < 0 ? 0 : count)};
}

void Print(unsigned long word) {
  char line[160];
  std::snprintf(line, sizeof line, "%s  0x%08lX  %10lu  bytes %02lX %02lX %02lX %02lX",
                CKxTime::DWord2String(word).GetString(), word, word, word & 0xFF, word >> 8 & 0xFF,
                word >> 16 & 0xFF, word >> 24 & 0xFF);
  std::cout << line << '\n';
}

// An argument: a packed word, or a date and time as text.
struct Given {
  explicit Given(const std::string& given)
      : argument(given), isWord(ParseWord(given, word)), text(given == "now" ? NowText() : given) {
    if (!isWord && NumbersOf(text).size() < 3) {
      throw Failure("'" + given + "' is neither a packed word nor a time like \"2013-08-29 12:34:56\"");
    }
  }

  std::string argument;
  std::uint32_t word = 0;
  bool isWord;
  std::string text;
};

int Convert(const Given& time) {
  const std::string& given = time.argument;
  if (time.isWord) {
    Print(time.word);
    const std::string oddity = OddityOf(time.word);
    if (oddity.empty()) return kOk;
    Say(given + ": " + oddity);
    return kFound;
  }
  const std::string& text = time.text;
  const std::vector<long long> numbers = NumbersOf(text);
  const unsigned long word = CKxTime::String2DWord(text.c_str());
  Print(word);
  const std::vector<long long> kept = NumbersOf(CKxTime::DWord2String(word).GetString());
  for (std::size_t i = 0; i < numbers.size(); ++i) {
    if (numbers[i] == kept[i]) continue;
    Say(given + ": " + std::to_string(numbers[i]) + " is out of range and becomes " +
        std::to_string(kept[i]) + (i == 0 ? "; years are 2000 to 2063" : ""));
    return kFound;
  }
  const std::string oddity = OddityOf(static_cast<std::uint32_t>(word));
  if (oddity.empty()) return kOk;
  Say(given + ": " + oddity);
  return kFound;
}

}  // namespace

void AddTime(CLI::App& program, int& exitCode) {
  auto given = std::make_shared<std::vector<std::string>>();
  CLI::App* command = program.add_subcommand("time", "convert packed time words to text, and back");
  command
      ->add_option(
          "TIME", *given,
          "a packed word (decimal, or 0x...), a text like \"2013-08-29 12:34:56\", or now; default is\n"
          "one on each line of standard input")
      ->type_name("");
  command->footer(
      "Prints the text, the word in hexadecimal and in decimal, and its bytes in wire order. Exits with 1\n"
      "if a number does not fit its field, or if the date or time does not exist; with 2, after all others,\n"
      "if an argument is no time.\n\n"
      "  zvuti time 0x363AC8B8\n"
      "  zvuti time '2013-08-29 12:34:56' now");
  command->callback([given, &exitCode] {
    exitCode = ForEachArgument(*given, "time", [](const std::string& text) { return Convert(Given(text)); });
  });
}

}  // namespace tool
