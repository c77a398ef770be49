#include "data/KeyValueParser.h"

#include <cstring>

#include "gbk/Ascii.h"

namespace zvuti {

namespace {

constexpr unsigned kAllOptions = ParseFoldKeys | ParseFoldValues | ParseTrim;

char* FindOr(char* begin, char* end, char byte, char* otherwise) {
  void* found = std::memchr(begin, byte, static_cast<std::size_t>(end - begin));
  return found ? static_cast<char*>(found) : otherwise;
}

void Fold(char* begin, const char* end) {
  for (; begin != end; ++begin) {
    if (*begin >= 'A' && *begin <= 'Z') *begin = static_cast<char>(*begin + ('a' - 'A'));
  }
}

struct Separators {
  char pairMark;
  char endMark;
};

/// Removes white space on both sides. Keeps `pairMark` at the start even if it is white space: only a value
/// can begin with it, and within a value it is text.
void Trim(char*& begin, char*& end, char pairMark) {
  while (begin != end && IsSpace(*begin) && *begin != pairMark) ++begin;
  while (begin != end && IsSpace(end[-1])) --end;
}

}  // namespace

void ParseKeyValues(CStringDict& dict, const char* text, const char* separators, int length,
                    unsigned options) {
  if (!text || options > kAllOptions) return;
  std::size_t count = 0;
  if (length < 0) {
    count = std::strlen(text);
  } else {
    while (count < static_cast<std::size_t>(length) && text[count] != '\0') ++count;
  }
  // A zero separator never matches and ends the list of separators.
  const Separators marks{separators[0], separators[0] != '\0' ? separators[1] : '\0'};

  // The copy is folded and cut in place, so that keys and values need no further copies.
  CTextString copy(std::string_view(text, count));
  CTextString name;
  char* const end = copy.data() + count;
  for (char* key = copy.data(); key < end;) {
    char* valueEnd = FindOr(key, end, marks.endMark, end);
    char* const next = valueEnd + 1;
    char* keyEnd = FindOr(key, valueEnd, marks.pairMark, nullptr);
    if (keyEnd) {
      char* value = keyEnd + 1;
      if ((options & ParseTrim) != 0) {
        Trim(key, keyEnd, marks.pairMark);
        Trim(value, valueEnd, marks.pairMark);
      }
      if ((options & ParseFoldKeys) != 0) Fold(key, keyEnd);
      if ((options & ParseFoldValues) != 0) Fold(value, valueEnd);
      *valueEnd = '\0';
      if (key != keyEnd) dict.SetValue(name.assign(key, static_cast<unsigned>(keyEnd - key)), value);
    }
    key = next;
  }
}

}  // namespace zvuti
