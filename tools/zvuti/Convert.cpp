// zvuti convert: converts files between GBK, UTF-8 and UTF-16.
#include <algorithm>
#include <iostream>
#include <string>
#include <string_view>
#include <vector>

#include <ZvUtiLib/gbk/Conversion.h>

#include "Commands.h"
#include "shared/Encoding.h"
#include "shared/Files.h"
#include "shared/GbkText.h"
#include "shared/Terminal.h"

namespace tool {
namespace {

constexpr std::size_t kMostNamed = 10;  // problems of one file

struct Options {
  std::vector<std::string> files;
  std::string from, to = "gbk", out;
};

// What cannot be converted in one file. The first places are named, all are counted.
class Losses {
 public:
  explicit Losses(const std::string& file) : file_(NameOf(file)) {}

  void Add(std::size_t line, const std::string& what) {
    if (++count_ <= kMostNamed) Say(file_ + ", line " + std::to_string(line) + ": " + what);
  }
  // Returns true if there are none.
  bool Close() const {
    if (count_ > kMostNamed) Say(file_ + ": " + std::to_string(count_ - kMostNamed) + " more such places");
    if (count_ > 0) Say(file_ + " is not converted");
    return count_ == 0;
  }

 private:
  const std::string file_;
  std::size_t count_ = 0;
};

// Calls visit(line, number) for each line, with its line end.
template <class Visit>
void VisitLines(std::string_view text, Visit visit) {
  for (std::size_t number = 1; !text.empty(); ++number) {
    const std::size_t length = std::min(text.find('\n'), text.size() - 1) + 1;
    visit(text.substr(0, length), number);
    text.remove_prefix(length);
  }
}

// Calls lose(what) for each place of a line that find(line) finds, and goes on after the `length` bytes
// there.
template <class Find, class Lose>
void VisitLost(std::string_view line, Find find, Lose lose) {
  for (std::size_t at; (at = find(line)) != line.npos;) line.remove_prefix(at + lose(line.substr(at)));
}

std::string Utf8Of(std::string_view bytes, const std::string& encoding, Losses& losses) {
  std::string utf8;
  if (encoding == "gbk") {
    VisitLines(bytes, [&](std::string_view line, std::size_t number) {
      VisitLost(line, FindBroken, [&](std::string_view rest) {
        losses.Add(number, "the bytes " + ToHex(rest.substr(0, 2)) + " are not a character of GBK");
        return std::min<std::size_t>(2, rest.size());
      });
    });
    return zvuti::GbkToUtf8(bytes).text;
  }
  if (FromNamed(encoding, bytes, utf8)) return utf8;
  if (encoding != "utf-8") {
    losses.Add(1, "the file is not valid in " + encoding + ", or this system does not know it");
    return {};
  }
  const auto findBroken = [](std::string_view line) {
    return zvuti::IsValidUtf8(line) ? line.npos : zvuti::Utf8ToUtf16(line).lostAt;
  };
  VisitLines(bytes, [&](std::string_view line, std::size_t number) {
    const std::size_t broken = findBroken(line);
    if (broken != line.npos) losses.Add(number, NameOfFirst(line.substr(broken)) + " is not UTF-8");
  });
  return {};
}

std::string GbkOf(std::string_view utf8, Losses& losses) {
  zvuti::Converted<std::string> gbk = zvuti::Utf8ToGbk(utf8);
  if (gbk.IsWhole()) return std::move(gbk.text);
  VisitLines(utf8, [&](std::string_view line, std::size_t number) {
    VisitLost(line, FindForeign, [&](std::string_view rest) {
      const auto lead = static_cast<unsigned char>(rest[0]);
      const std::size_t length = lead < 0xE0 ? 2 : lead < 0xF0 ? 3 : 4;
      losses.Add(number,
                 std::string(rest.substr(0, length)) + " (" + NameOfFirst(rest) + ") has no place in GBK");
      return length;
    });
  });
  return {};
}

std::string Utf16Of(std::string_view utf8) {
  std::string bytes = "\xFF\xFE";
  for (const char16_t unit : zvuti::Utf8ToUtf16(utf8).text) {
    bytes += {static_cast<char>(unit & 0xFF), static_cast<char>(unit >> 8)};
  }
  return bytes;
}

// Returns true if the file is in the target encoding now.
bool ConvertOne(const Options& options, const std::string& file) {
  const std::string bytes = ReadAll(file);
  const std::string from = options.from.empty() ? EncodingOf(bytes) : options.from;
  Losses losses(file);
  const std::string utf8 = Utf8Of(bytes, from, losses);
  if (!losses.Close()) return false;
  const std::string converted = options.to == "gbk"     ? GbkOf(utf8, losses)
                                : options.to == "utf-8" ? utf8
                                                        : Utf16Of(utf8);
  if (!losses.Close()) return false;
  const std::string& target = options.out.empty() ? file : options.out;
  if (target != file || converted != bytes || NameOf(file) != file) ReplaceFile(target, converted);
  return true;
}

int Convert(const Options& options) {
  if (!options.out.empty() && options.files.size() > 1) throw Failure("--output takes the text of one file");
  bool isDone = true;
  for (const std::string& file : options.files.empty() ? std::vector<std::string>{""} : options.files) {
    isDone = ConvertOne(options, file) && isDone;
  }
  return isDone ? kOk : kFound;
}

}  // namespace

void AddConvert(CLI::App& program, int& exitCode) {
  auto options = std::make_shared<Options>();
  CLI::App* command = program.add_subcommand("convert", "convert files between GBK, UTF-8 and UTF-16");
  command
      ->add_option("FILE", options->files,
                   "the files, converted in place; default is standard input to output")
      ->type_name("");
  command
      ->add_option("--from", options->from,
                   "encoding of the files: gbk, utf-8, utf-16, big5; default is what they look like")
      ->check(CLI::IsMember({"gbk", "utf-8", "utf-16", "utf-16le", "utf-16be", "big5"}, CLI::ignore_case)
                  .description(""))
      ->type_name("ENC");
  command->add_option("--to", options->to, "encoding to convert to: gbk (default), utf-8, utf-16")
      ->check(CLI::IsMember({"gbk", "utf-8", "utf-16"}, CLI::ignore_case).description(""))
      ->type_name("ENC");
  command->add_option("-o,--output", options->out, "write to FILE, and leave the source as it is")
      ->type_name("FILE");
  command->footer(
      "Names each character that has no place in the encoding. Such a file, and one that cannot be written\n"
      "as a whole, stays as it was, and the exit code is 1. A byte order mark is dropped; UTF-16 gets "
      "one.\n\n"
      "  zvuti convert words.txt Maple/Rank.ini\n"
      "  zvuti convert --from gbk --to utf-8 lobby.log -o - | less");
  command->callback([options, &exitCode] { exitCode = Convert(*options); });
}

}  // namespace tool
