#include <map>
#include <string>
#include <vector>

#include "Screens.h"

namespace {

std::string Hex(const CByteBuffer& bytes) {
  std::string text;
  for (int i = 0; i < bytes.Length(); ++i) {
    CString byte;
    byte.Format(i > 0 ? " %02X" : "%02X", bytes.Data()[i]);
    text += byte.GetString();
  }
  return text;
}

// Prints the pairs of a dictionary.
struct PairPrinter {
  Report& report;
  void Print(const char* key, const char* value) {
    report.Line("%s %s", Padded(key, 12).c_str(), value);
    report.Did();
  }
};

}  // namespace

void ShowMessages(Report& report) {
  report.Section("Messages");
  const std::vector<std::string> seats = {"tom_1985", "OldCat"};
  const std::map<std::int32_t, std::int32_t> bets = {{-1, 5}, {2, 100}};
  CStreamReader stream;
  stream << std::uint8_t{7} << std::int32_t{-2} << std::int64_t{1'000'000} << "hello" << seats << bets;
  report.Line("%d bytes: %s", stream.Length(), Hex(stream).c_str());

  std::uint8_t kind = 0;
  std::int32_t change = 0;
  std::int64_t chips = 0;
  CTextString greeting;
  std::vector<std::string> names;
  std::map<std::int32_t, std::int32_t> amounts;
  stream >> kind >> change >> chips >> greeting >> names >> amounts;
  report.Line("read back: %d, %d, %lld, %s, %d names, %d bets, %d bytes left", kind, change,
              static_cast<long long>(chips), greeting.c_str(), static_cast<int>(names.size()),
              static_cast<int>(amounts.size()), stream.Length());
  report.Did(2);

  CStringDict settings;
  settings.Parse("Sound = On & Volume=80&Table=Green Felt&volume=60", "=&");
  PairPrinter printer{report};
  settings.Visit(&printer, &PairPrinter::Print);
}
