// The first lines of a client: what it may hand to LogOut and to the Format operations and what is printed of
// it, literals and null pointers. check.py compiles this with warnings as errors, links it with the shared
// library and runs it. Ends with 1 where a text is wrong.
#include <ZvUtiLib/ZvUtiLib.h>

#include <cstdint>
#include <cstdio>
#include <fstream>
#include <string>

namespace {

enum Plain { kPlain = 3 };
enum class Scoped : std::uint8_t { kScoped = 4 };

struct NickName : CString {
  using CString::CString;
};
class Label : public CTextString {
 public:
  using CTextString::CTextString;
  virtual ~Label() = default;
  int number = 0;
};
struct Bits {
  unsigned low : 3;
  int high : 5;
  std::uint64_t wide : 40;
};
#pragma pack(push, 1)
struct Packed {
  char tag;
  int number;
  double real;
};
#pragma pack(pop)
struct Limits {
  static const int kUndefined = 6;
  static const int kDefined;
  static constexpr int kInline = 9;
};
const int Limits::kDefined = 8;

// A record with a field of the client's own.
struct Slot : ItemRecord {
  int seat = 0;
  friend CStreamWriter& operator<<(CStreamWriter& out, const Slot& slot) {
    return out << static_cast<const ItemRecord&>(slot) << slot.seat;
  }
  friend CStreamReader& operator>>(CStreamReader& in, Slot& slot) {
    return in >> static_cast<ItemRecord&>(slot) >> slot.seat;
  }
};

int Seven() { return 7; }
extern const char kUnbounded[];
const char kUnbounded[] = "unbounded";

int failures = 0;

void Expect(const std::string& text, const std::string& expected) {
  if (text == expected) return;
  std::fprintf(stderr, "accepted: \"%s\" instead of \"%s\"\n", text.c_str(), expected.c_str());
  ++failures;
}

// The same call of both strings.
template <class... Values>
void ExpectBoth(const char* expected, const char* format, const Values&... values) {
  CString string;
  string.Format(format, values...);
  Expect(string.GetString(), expected);
  CTextString own;
  own.Format(format, values...);
  Expect(own.c_str(), expected);
}

const CString name("Lin");

void Strings() {
  const std::string city("Hangzhou, a text of more than fifteen bytes");
  const CTextString table("seven");
  ExpectBoth("Lin|seven|Hangzhou", "%s|%s|%.8s", name, table, city);
  ExpectBoth("Ann|top  |a", "%s|%-5s|%s", NickName("Ann"), Label("top"), std::string("a\0b", 3));
  ExpectBoth("Lin and Lin", "%s", name + " and " + name);

  CString own("Lin");
  own.Format("%s-%s-%d", own, own.Left(1), 7);
  Expect(own.GetString(), "Lin-L-7");
  Label label("Lin, who has a long name");
  label.Format("%s|%.3s|%500d", label, label, 7);
  Expect(label.c_str(), "Lin, who has a long name|Lin|" + std::string(499, ' ') + "7");
  const CString format("%s!");
  own.Format(format, table);
  Expect(own.GetString(), "seven!");
  own.Format(name);
  Expect(own.GetString(), "Lin");
}

void Scalars() {
  const std::int64_t big = -1234567890123;
  ExpectBoth("Lin -1234567890123 1234567890123", "%s %I64d %lld", name, big, static_cast<long long>(-big));
  const volatile int changing = 5;
  const volatile float drifting = 1.5F;
  ExpectBoth("Lin 0.5 0.25 5 1.5", "%s %g %g %d %g", name, 0.5F, 0.25, changing, drifting);
  const short minus = -2;
  const unsigned char byte = 255;
  ExpectBoth("Linx -2 255 1 65", "%s%c %d %u %d %lu", name, 'x', minus, byte, true, 65UL);
  ExpectBoth("Lin 3 4", "%s %d %d", name, kPlain, Scoped::kScoped);

  CString text;
  const Bits bits{5, -7, 1ULL << 39};
  text.Format("%s %u %d %I64u", name, bits.low, bits.high, bits.wide);
  Expect(text.GetString(), "Lin 5 -7 549755813888");
  const Packed packed{'t', 77, 0.125};
  text.Format("%s %c %d %g", name, packed.tag, +packed.number, +packed.real);
  Expect(text.GetString(), "Lin t 77 0.125");
  text.Format("%s %d %d %d", name, +Limits::kUndefined, Limits::kDefined, Limits::kInline);
  Expect(text.GetString(), "Lin 6 8 9");
}

void Pointers() {
  char array[8] = "array";
  const char* const null = nullptr;
  ExpectBoth("Lin array unbounded literal (null) w", "%s %s %s %s %s %S", name, array, kUnbounded, "literal",
             null, u"w");
  CString with, without;
  with.Format("%s %s", name, nullptr);
  Expect(with.GetString(), "Lin (null)");
#if defined(__cpp_char8_t)
  with.Format("%s %s", name, u8"eight");
  Expect(with.GetString(), "Lin eight");
#endif

  // The same numbers, whether a text goes with them or not.
  int number = 0;
  void* const place = &number;
  with.Format("%s%p %p %p", "", place, Seven, &Seven);
  without.Format("%s%p %p %p", CString(), place, Seven, &Seven);
  Expect(without.GetString(), with.GetString());
}

void Log() {
  const std::string file = (CKxIOUti::GetAppPath() + "log/lobby.log").GetString();
  std::remove(file.c_str());
  CDebug::LogInit();
  CDebug::LogOut("%s sits at %s with %d", std::string("Ann"), CTextString("table"), 3);
  CDebug::LogOut(CString("alone"));
  void (*const log)(const char*, ...) = &CDebug::LogOut;
  log("%d %s", 5, "plain");
  std::ifstream in(file);
  for (const char* expected : {"Ann sits at table with 3", "alone", "5 plain"}) {
    std::string line;
    std::getline(in, line);
    Expect(line.substr(24), expected);
  }
}

// Not of formats, but of what else a client writes first.
void FirstLines() {
  CString text;
  for (const int result : {CUtiNumber::InsertSeparator(0, text), CUtiNumber::InsertSeparator(0U, text),
                           CUtiNumber::InsertSeparator(0L, text), CUtiNumber::InsertSeparator(0LL, text)})
    Expect(std::to_string(result) + text.GetString(), "10");
  Expect(std::to_string(CUtiNumber::InsertSeparator(nullptr, text)) + text.GetString(), "0");

  CStreamReader stream;
  stream << text << "" << std::string("a");
  Expect(std::to_string(stream.Length()), "7");

  std::vector<Slot> slots(2);
  slots[1].seat = 5;
  stream = CStreamReader();
  stream << slots;
  std::move(stream) >> slots;
  Expect(std::string(CTextString("seat ")) + std::to_string(slots[3].seat), "seat 5");
}

}  // namespace

int main() {
  Strings();
  Scalars();
  Pointers();
  Log();
  FirstLines();
  if (failures == 0) std::puts("accepted: all texts right");
  return failures == 0 ? 0 : 1;
}
