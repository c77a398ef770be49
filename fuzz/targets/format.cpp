// Formatting: the measuring pass, bounded and whole writing, and the system's own printf where it has a
// say. The first byte picks the arguments; a format follows, and behind a zero byte the text that all
// conversions of texts are given.
//
// Whatever a format asks for, it gets the same 8 bytes: the address of a short text, at a place where the
// low half of the address is a small number, so it makes a width, too. That needs the argument lists of
// x86-64, whose rest lies in memory 8 bytes apart.
#include <sys/mman.h>

#include <algorithm>
#include <cstdarg>
#include <cstdio>
#include <cstring>
#include <string>
#include <vector>

#include <ZvUtiLib/data/CTextString.h>
#include <ZvUtiLib/platform/CString.h>

#include "data/FormatMeasure.h"
#include "fuzz/Check.h"
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

class Arguments {
 public:
  Arguments(const char* text, std::size_t count) : slots_(count, text) {
    list[0].gp_offset = 48;  // registers are used up
    list[0].fp_offset = 304;
    list[0].overflow_arg_area = slots_.data();
    list[0].reg_save_area = nullptr;
  }
  va_list list;

 private:
  std::vector<const char*> slots_;
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

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size == 0 || size > 600) return 0;
  std::string_view rest = fuzz::BytesOf(data + 1, size - 1);
  const std::string format(fuzz::TakeUntil(rest, '\0'));
  if (HasLongNumber(format)) return 0;
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
