#include "input/HexDump.h"

#include <charconv>
#include <cstdint>
#include <limits>
#include <vector>

#include "input/Cursor.h"

namespace tool {
namespace {

constexpr std::size_t kMostRepeated = std::size_t{64} << 20;
constexpr std::size_t kHalfLine = 8;  // bytes, after which some tools leave a wider gap
constexpr std::size_t kAnyCount = std::numeric_limits<std::size_t>::max();
constexpr std::string_view kBlanks = " \t\r";

struct Line {
  std::size_t at = 0;       ///< of the offset, in the text
  std::string_view number;  ///< the offset as written
  std::string_view body;    ///< what follows it
  std::uint64_t offset = 0;
  bool hasColon = false;
  bool isStar = false;  ///< lines like the one before are left out before this one
};

// Splits a line into its offset and the rest. Returns false if it does not start with an offset.
bool Split(std::string_view text, std::size_t at, Line& line) {
  Cursor cursor(text, "");
  cursor.SkipAll(kBlanks);
  line.at = at + cursor.At();
  if (!cursor.Take("0x")) cursor.Take("0X");
  const std::size_t start = cursor.At();
  while (DigitOf(cursor.Peek()) >= 0) cursor.Skip();
  line.number = text.substr(start, cursor.At() - start);
  line.hasColon = cursor.Take(":");
  line.body = cursor.Rest();
  // od prints offsets of seven octal digits.
  const int radix = line.number.size() == 7 && !line.hasColon ? 8 : 16;
  const char* const end = line.number.data() + line.number.size();
  const auto [stop, error] = std::from_chars(line.number.data(), end, line.offset, radix);
  return line.number.size() >= 4 && error == std::errc() && stop == end &&
         (line.body.empty() || kBlanks.find(line.body[0]) != kBlanks.npos);
}

bool IsPair(std::string_view text) {
  return text.size() >= 2 && DigitOf(text[0]) >= 0 && DigitOf(text[1]) >= 0;
}
// Is this two digits and no more?
bool IsLonePair(std::string_view text) {
  return IsPair(text) && (text.size() == 2 || kBlanks.find(text[2]) != kBlanks.npos);
}

// Appends at most `most` bytes of a line and returns how many it has. Stops at the characters at its end:
// after "|" or ">", after three spaces, and after two, unless these are the gap in the middle of a line.
std::size_t TakeBytes(const Line& line, std::size_t most, std::string& bytes) {
  std::size_t count = 0;
  for (std::string_view rest = line.body; count < most;) {
    const std::size_t blanks = std::min(rest.find_first_not_of(kBlanks), rest.size());
    rest.remove_prefix(blanks);
    const bool isMiddle = !line.hasColon && count == kHalfLine && IsLonePair(rest);
    if (count > 0 && most == kAnyCount && blanks == 2 && !isMiddle) break;
    if ((count > 0 && blanks > 2) || !IsPair(rest)) break;
    bytes += static_cast<char>(DigitOf(rest[0]) << 4 | DigitOf(rest[1]));
    rest.remove_prefix(2);
    ++count;
  }
  return count;
}

std::vector<Line> LinesOf(std::string_view text, Cursor& cursor) {
  std::vector<Line> lines;
  bool isStar = false;
  while (!cursor.IsAtEnd()) {
    const std::size_t at = cursor.At();
    const std::string_view written = cursor.Word("\n");
    cursor.Skip();
    const std::size_t first = written.find_first_not_of(kBlanks);
    if (first == written.npos) continue;
    if (written.substr(first, written.find_last_not_of(kBlanks) + 1 - first) == "*") {
      if (lines.empty()) cursor.Refuse(at + first, "*", "has no line before it");
      isStar = true;
      continue;
    }
    Line line;
    if (!Split(written, at, line)) {
      const std::size_t end = std::min(written.find_first_of(kBlanks, first), written.size());
      cursor.Refuse(at + first, written.substr(first, end - first), "is not the offset of a line");
    }
    line.isStar = isStar;
    isStar = false;
    if (!lines.empty() && line.offset <= lines.back().offset) {
      cursor.Refuse(line.at, line.number, "does not follow the offset " + std::string(lines.back().number));
    }
    lines.push_back(line);
  }
  if (isStar) cursor.Refuse(text.size(), "", "needs a line with an offset after '*'");
  return lines;
}

}  // namespace

bool IsHexDump(std::string_view text) {
  Cursor cursor(text, "");
  cursor.SkipAll(" \t\r\n");
  Line line;
  if (!Split(cursor.Word("\n"), 0, line)) return false;
  const std::size_t blanks = std::min(line.body.find_first_not_of(kBlanks), line.body.size());
  const std::string_view rest = line.body.substr(blanks);
  if (line.hasColon) return IsPair(rest);
  return IsLonePair(rest) && (blanks > 1 || (line.number.size() >= 6 && line.offset == 0));
}

std::string FromHexDump(std::string_view text, const std::string& what) {
  std::string bytes;
  Cursor cursor(text, what);
  const std::vector<Line> lines = LinesOf(text, cursor);
  for (std::size_t i = 0; i < lines.size(); ++i) {
    const Line& line = lines[i];
    const bool isLast = i + 1 == lines.size();
    if (isLast || lines[i + 1].isStar) {
      const std::size_t count = TakeBytes(line, kAnyCount, bytes);
      if (isLast) break;
      const Line& next = lines[i + 1];
      const std::uint64_t repeated = next.offset - line.offset;
      if (count == 0 || repeated % count != 0) {
        cursor.Refuse(next.at, next.number, "is not a whole number of lines after the one before '*'");
      }
      if (repeated > kMostRepeated) cursor.Refuse(next.at, next.number, "repeats more than 64 MB");
      const std::string pattern = bytes.substr(bytes.size() - count);
      for (std::uint64_t done = count; done < repeated; done += count) bytes += pattern;
      continue;
    }
    const Line& next = lines[i + 1];
    const std::uint64_t size = next.offset - line.offset;
    const std::size_t most = size < text.size() ? static_cast<std::size_t>(size) : text.size();
    const std::size_t count = TakeBytes(line, most, bytes);
    if (count != size) {
      cursor.Refuse(next.at, next.number,
                    "does not follow: the line at " + std::string(line.number) + " has " +
                        std::to_string(count) + (count == 1 ? " byte" : " bytes"));
    }
  }
  return bytes;
}

}  // namespace tool
