// Formatting: the measuring pass, bounded and whole writing, and the system's own printf where it has a
// say. The first byte picks the arguments; a format follows, and after a zero byte the text that all
// conversions of texts are given.
//
// The format is also given the arguments that the parser says it takes, and the bytes pick heads from a list
// of whole and broken ones with theirs. There a number in the place of a text is no address, so a pass that
// falls out of step with the arguments ends the program.
//
// Otherwise all conversions get the same 8 bytes: the address of a short text, at a
// place where the low half of the address is a small number, so it makes a width, too. That needs the
// argument lists of x86-64, whose rest lies in memory 8 bytes apart.
#include <sys/mman.h>

#include <algorithm>
#include <cstdarg>
#include <cstdio>
#include <cstring>
#include <iterator>
#include <string>
#include <utility>
#include <vector>

#include <ZvUtiLib/data/CTextString.h>
#include <ZvUtiLib/platform/CString.h>

#include "data/FormatMeasure.h"
#include "fuzz/Check.h"
#include "gbk/CodePage936.h"
#include "platform/FormatConversion.h"
#include "platform/Formatter.h"

namespace {

constexpr std::size_t kPage = 4096;
constexpr std::size_t kMostText = 64;

// The middle of two pages; below it the low halves of addresses are small negative numbers.
char* Middle() {
  static char* const middle = [] {
    char* const place = reinterpret_cast<char*>(0x5001'0000'0000);
    void* pages = mmap(place - kPage, 2 * kPage, PROT_READ | PROT_WRITE,
                       MAP_PRIVATE | MAP_ANONYMOUS | MAP_FIXED_NOREPLACE, -1, 0);
    fuzz::Check(pages == place - kPage, "the system gives pages at a chosen place");
    return place;
  }();
  return middle;
}

// An argument list of x86-64, from the System V ABI: how much of the registers is used up, where the
// arguments in memory go on, and where the registers are saved.
struct ListLayout {
  unsigned usedGeneral = 48, usedFloating = 304;
  const void* next = nullptr;
  const void* registers = nullptr;
};
static_assert(sizeof(ListLayout) == sizeof(va_list));

const char* NextOf(const void* list) {
  ListLayout layout;
  std::memcpy(&layout, list, sizeof layout);
  return static_cast<const char*>(layout.next);
}

class Arguments {
 public:
  Arguments(const char* text, std::size_t count)
      : Arguments(std::vector<std::uint64_t>(count, reinterpret_cast<std::uintptr_t>(text))) {}
  explicit Arguments(std::vector<std::uint64_t> slots) : slots_(std::move(slots)) {
    ListLayout layout;
    layout.next = slots_.data();
    std::memcpy(list, &layout, sizeof layout);
  }
  va_list list;

 private:
  std::vector<std::uint64_t> slots_;
};

bool HasLongNumber(const std::string& format) {
  std::size_t digits = 0;
  return std::any_of(format.begin(), format.end(),
                     [&](char c) { return (digits = c >= '0' && c <= '9' ? digits + 1 : 0) > 4; });
}

// True for formats of plain ASCII and of conversions that mean the same everywhere.
bool IsPlain(const std::string& format) {
  const auto skip = [&](std::size_t& at, const char* set) {
    at = std::min(format.find_first_not_of(set, at), format.size());
  };
  for (std::size_t at = 0; at < format.size(); ++at) {
    if (static_cast<unsigned char>(format[at]) >= 0x80) return false;
    if (format[at] != '%' || format.compare(at, 2, "%%") == 0) {
      at += format[at] == '%';
      continue;
    }
    skip(++at, "-+ #0");
    skip(at, "0123456789");
    if (format.compare(at, 1, ".") == 0) skip(++at, "0123456789");
    if (format.compare(at, 1, "l") == 0) {
      at += format.compare(at, 2, "ll") == 0 ? 2 : 1;
      if (at == format.size() || !std::strchr("diuxXo", format[at])) return false;
    } else if (at == format.size() || !std::strchr("diuxXoeEfgGsc", format[at])) {
      return false;
    }
  }
  return true;
}

/// What a head takes, a letter each: s the text "abc", d the number 1.5, i the int 7, w and z the ints 5 and
/// 0, I the 64-bit 7, W the 16-bit text "b". A percent sign always follows.
struct Head {
  const char *format, *takes, *prints;
};
constexpr Head kHeads[] = {
    {"%s", "s", "abc"},
    {"%d", "i", "7"},
    {"%g", "d", "1.5"},
    {"%lld", "I", "7"},
    {"%*.*I64x", "wwI", "00007"},
    {"%zu,", "I", "7,"},
    {"%F", "d", "1.500000"},
    {"%5.1F", "d", "  1.5"},
    {"%FF", "d", "1.500000F"},
    {"%F,", "d", "1.500000,"},
    {"%hF", "d", "1.500000"},
    {"%L", "", "%L"},
    {"%N", "", "%N"},
    {"%NF", "", "%NF"},
    {"%z", "", "%z"},
    {"%#zl", "", "%#zl"},
    {"%-4.2I64", "", "%-4.2I64"},
    {"%I", "", "%I"},
    {"%ll", "", "%ll"},
    {"%z\x81%d", "", "%z\x81%d"},
    {"%5%", "", "%"},
    {"%*%", "w", "%"},
    {"%**s", "iws", "  abc"},
    {"%*-5d", "zi", "7    "},
    {"%*5s", "zs", "  abc"},
    {"%*5s", "w", "%*5s"},
    {"%5*s", "", "%5*s"},
    {"%.*l", "w", "%.*l"},
    {"%lLd", "I", "7"},
    {"%I64Ls", "s", "abc"},
    {"%hls,", "W", "b,"},
    {"%n", "s", ""},
    {"%k", "", "%k"},
};

std::uint64_t SlotOf(char kind) {
  constexpr std::uint64_t kNoAddress = 0x6666'0000'0000'0000;
  switch (kind) {
    case 's':
      return reinterpret_cast<std::uintptr_t>("abc");
    case 'W':
      return reinterpret_cast<std::uintptr_t>(u"b");
    case 'd':
      return 0x3FF8'0000'0000'0000;  // 1.5
    case 'I':
      return 7;
    default:
      return kNoAddress + (kind == 'i' ? 7 : kind == 'w' ? 5 : 0);
  }
}

/// Formats made of heads, of which each takes what is its own.
void CheckHeads(std::string_view choices) {
  std::string format, expected;
  std::vector<std::uint64_t> slots;
  const auto add = [&](const Head& head) {
    format += head.format;
    expected += head.prints;
    for (const char* kind = head.takes; *kind != '\0'; ++kind) slots.push_back(SlotOf(*kind));
  };
  for (const char choice : choices.substr(0, 40)) {
    add(kHeads[static_cast<unsigned char>(choice) % std::size(kHeads)]);
  }
  add(kHeads[0]);
  slots.push_back(SlotOf('z'));

  fuzz::Check(zvuti::FormatWhole(format.c_str(), Arguments(slots).list) == expected,
              "heads take and print what is theirs");
  CTextString text;
  text.FormatV(format.c_str(), Arguments(slots).list);
  fuzz::Check(text == expected.c_str(), "measuring takes the same");
}

/// Any format, with the arguments that the parser says it takes. A long double lies otherwise; formats with
/// one are left out.
void CheckInStep(const char* const format) {
  Arguments stars(std::vector<std::uint64_t>(std::strlen(format) + 1, SlotOf('w')));
  zvuti::FormatArguments list(stars.list);
  std::vector<std::uint64_t> slots;
  for (const char* at = format; *at != '\0';) {
    if (*at != '%') {
      at += zvuti::gbk::CharLength(at);
      continue;
    }
    const char* const before = NextOf(list.list);
    const zvuti::FormatConversion conversion = zvuti::ReadConversion(at + 1, list);
    const auto taken = NextOf(list.list) - before;
    slots.insert(slots.end(), static_cast<std::size_t>(taken) / sizeof slots[0], SlotOf('w'));
    switch (conversion.argument) {
      case zvuti::FormatArgument::kNone:
        break;
      case zvuti::FormatArgument::kLongDouble:
        return;
      case zvuti::FormatArgument::kDouble:
        slots.push_back(SlotOf('d'));
        break;
      case zvuti::FormatArgument::kPointer:
        slots.push_back(SlotOf(conversion.isWide ? 'W' : 's'));
        break;
      default:
        slots.push_back(SlotOf('i'));
        break;
    }
    at = conversion.next;
  }
  slots.push_back(SlotOf('z'));
  const std::string whole = zvuti::FormatWhole(format, Arguments(slots).list);
  CTextString text;
  text.FormatV(format, Arguments(slots).list);
  if (!std::strstr(format, "lld")) fuzz::Check(text == whole.c_str(), "both passes stay in step");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size == 0 || size > 600) return 0;
  std::string_view rest = fuzz::BytesOf(data + 1, size - 1);
  const std::string format(fuzz::TakeUntil(rest, '\0'));
  CheckHeads(fuzz::BytesOf(data, size));
  if (HasLongNumber(format)) return 0;
  CheckInStep(format.c_str());
  char* const text = Middle() + static_cast<std::int8_t>(data[0]);
  const std::size_t length = std::min(rest.size(), kMostText);
  std::memcpy(text, rest.data(), length);
  std::memset(text + length, 0, kMostText + 4 - length);

  const auto arguments = [&] { return Arguments(text, 3 * format.size() + 8); };
  const std::string whole = zvuti::FormatWhole(format.c_str(), arguments().list);

  const std::size_t capacity = data[0] * size / 16;
  std::string room(capacity + 1, '\x7E');
  const std::size_t needed = zvuti::FormatBounded(room.data(), capacity, format.c_str(), arguments().list);
  fuzz::Check(needed == whole.size(), "bounded writing says the whole length");
  fuzz::Check(room[capacity] == '\x7E', "bounded writing stays within its bounds");
  if (capacity > 0) {
    const std::size_t written = std::min(needed, capacity - 1);
    fuzz::Check(room.compare(0, written, whole, 0, written) == 0 && room[written] == '\0',
                "bounded writing writes the beginning and a terminator");
  }

  CString string;
  string.FormatV(format.c_str(), arguments().list);
  fuzz::Check(string == CString(whole.data(), static_cast<int>(whole.size())),
              "CString has the formatted text");

  const zvuti::FormatMeasure measure = zvuti::MeasureFormat(format.c_str(), arguments().list);
  CTextString own("old");
  own.FormatV(format.c_str(), arguments().list);
  fuzz::Check(own.capacity() >= measure.total, "the measured room is made");
  // The string rewrites ll by the letters of the format, wherever they stand.
  std::string rewritten = format;
  if (measure.hasLongLong) {
    for (std::size_t at = 0; (at = rewritten.find("%lld", at)) != std::string::npos;)
      rewritten.replace(at, 4, "%I64d");
  }
  fuzz::Check(std::string_view(own) == zvuti::FormatWhole(rewritten.c_str(), arguments().list).c_str(),
              "CTextString has the formatted text");

  if (IsPlain(format)) {
    std::string system(whole.size() + 1, '\0');
    const int printed = std::vsnprintf(system.data(), system.size(), format.c_str(), arguments().list);
    system.pop_back();
    fuzz::Check(printed >= 0 && static_cast<std::size_t>(printed) == whole.size() && system == whole,
                "plain formats print as the system prints them");
  }
  return 0;
}
